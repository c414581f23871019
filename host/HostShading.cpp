#include "HostShading.h"

#include "HostDevice.h"

namespace
{

// Vertex shader constants.
constexpr UINT kRegisterPlace = 0;  // c0..c3: position to the screen
constexpr UINT kRegisterTurn = 4;   // c4..c6: normal to the world
constexpr UINT kRegisterLamp = 7;   // c7: to the lamp; c8: x = 0, y = the lamp's share, z = the share of all round

// Byte code of shader model 2.0, one line an instruction, the assembly behind it.
constexpr UINT kVertexShader[] = {
    0xFFFE0200,                                                  // vs_2_0
    0x0200001F, 0x80000000, 0x900F0000,                          // dcl_position v0
    0x0200001F, 0x80000003, 0x900F0001,                          // dcl_normal v1
    0x0200001F, 0x80000005, 0x900F0002,                          // dcl_texcoord v2
    0x03000014, 0xC00F0000, 0x90E40000, 0xA0E40000,              // m4x4 oPos, v0, c0
    0x03000017, 0x80070000, 0x90E40001, 0xA0E40004,              // m3x3 r0.xyz, v1, c4
    0x03000008, 0x80010000, 0x80E40000, 0xA0E40007,              // dp3 r0.x, r0, c7
    0x0300000B, 0x80010000, 0x80000000, 0xA0000008,              // max r0.x, r0.x, c8.x
    0x04000004, 0x80010000, 0x80000000, 0xA0550008, 0xA0AA0008,  // mad r0.x, r0.x, c8.y, c8.z
    0x02000001, 0xD00F0000, 0x80000000,                          // mov oD0, r0.x
    0x02000001, 0xE0030000, 0x90E40002,                          // mov oT0.xy, v2
    0x0000FFFF,                                                  // end
};

constexpr UINT kPixelShader[] = {
    0xFFFF0200,                                      // ps_2_0
    0x0200001F, 0x80000000, 0xB0030000,              // dcl t0.xy
    0x0200001F, 0x80000000, 0x900F0000,              // dcl v0
    0x0200001F, 0x90000000, 0xA00F0800,              // dcl_2d s0
    0x03000042, 0x800F0000, 0xB0E40000, 0xA0E40800,  // texld r0, t0, s0
    0x03000005, 0x800F0000, 0x80E40000, 0x90E40000,  // mul r0, r0, v0
    0x03000005, 0x800F0000, 0x80E40000, 0xA0E40000,  // mul r0, r0, c0
    0x02000001, 0x800F0800, 0x80E40000,              // mov oC0, r0
    0x0000FFFF,                                      // end
};

constexpr D3DDDIVERTEXELEMENT kElements[] = {
    {0, 0, D3DDECLTYPE_FLOAT3, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITION, 0},
    {0, 12, D3DDECLTYPE_FLOAT3, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_NORMAL, 0},
    {0, 24, D3DDECLTYPE_FLOAT2, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_TEXCOORD, 0},
};

constexpr D3DDDIARG_RENDERSTATE kStates[] = {
    {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_ZENABLE), D3DZB_TRUE},
    {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_ZWRITEENABLE), TRUE},
    {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_ZFUNC), D3DCMP_LESSEQUAL},
    {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_CULLMODE), D3DCULL_NONE},
    {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_ALPHABLENDENABLE), FALSE},
};

}  // namespace

HostShading::HostShading(HostDevice& device) : m_Device(device)
{
    const D3DDDI_DEVICEFUNCS& functions = device.Functions();
    D3DDDIARG_CREATEVERTEXSHADERFUNC vertex = {sizeof(kVertexShader), nullptr};
    HostCheck(
        functions.pfnCreateVertexShaderFunc(device.Handle(), &vertex, kVertexShader), "pfnCreateVertexShaderFunc");
    m_hVertexShader = vertex.ShaderHandle;
    D3DDDIARG_CREATEPIXELSHADER pixel = {sizeof(kPixelShader), nullptr};
    HostCheck(functions.pfnCreatePixelShader(device.Handle(), &pixel, kPixelShader), "pfnCreatePixelShader");
    m_hPixelShader = pixel.ShaderHandle;
    D3DDDIARG_CREATEVERTEXSHADERDECL declaration = {static_cast<UINT>(std::size(kElements)), nullptr};
    HostCheck(
        functions.pfnCreateVertexShaderDecl(device.Handle(), &declaration, kElements), "pfnCreateVertexShaderDecl");
    m_hDeclaration = declaration.ShaderHandle;
}

HostShading::~HostShading()
{
    const D3DDDI_DEVICEFUNCS& functions = m_Device.Functions();
    functions.pfnDeleteVertexShaderDecl(m_Device.Handle(), m_hDeclaration);
    functions.pfnDeletePixelShader(m_Device.Handle(), m_hPixelShader);
    functions.pfnDeleteVertexShaderFunc(m_Device.Handle(), m_hVertexShader);
}

void HostShading::Bind()
{
    const D3DDDI_DEVICEFUNCS& functions = m_Device.Functions();
    HostCheck(functions.pfnSetVertexShaderDecl(m_Device.Handle(), m_hDeclaration), "pfnSetVertexShaderDecl");
    HostCheck(functions.pfnSetVertexShaderFunc(m_Device.Handle(), m_hVertexShader), "pfnSetVertexShaderFunc");
    HostCheck(functions.pfnSetPixelShader(m_Device.Handle(), m_hPixelShader), "pfnSetPixelShader");
    for (const D3DDDIARG_RENDERSTATE& state : kStates)
        HostCheck(functions.pfnSetRenderState(m_Device.Handle(), &state), "pfnSetRenderState");
}

void HostShading::SetTexture(const HostResource& texture)
{
    HostCheck(m_Device.Functions().pfnSetTexture(m_Device.Handle(), 0, texture.Handle()), "pfnSetTexture");
}

void HostShading::SetPlace(const HostMatrix& projection, const HostMatrix& turn, UINT tint)
{
    const HostMatrix place = projection * turn;
    SetVertexConstants(kRegisterPlace, place.m[0], 4);
    SetVertexConstants(kRegisterTurn, turn.m[0], 3);
    const float color[4] = {static_cast<float>(tint >> 16 & 0xFF) / 255, static_cast<float>(tint >> 8 & 0xFF) / 255,
        static_cast<float>(tint & 0xFF) / 255, 1};
    const D3DDDIARG_SETPIXELSHADERCONST arg = {0, 1};
    HostCheck(m_Device.Functions().pfnSetPixelShaderConst(m_Device.Handle(), &arg, color), "pfnSetPixelShaderConst");
}

void HostShading::SetFullLight()
{
    static constexpr float kFull[8] = {0, 0, 0, 0, 0, 0, 1, 0};
    SetVertexConstants(kRegisterLamp, kFull, 2);
}

void HostShading::SetLamp()
{
    static constexpr float kLamp[8] = {-0.4f, 0.6f, -0.69f, 0, 0, 0.8f, 0.2f, 0};
    SetVertexConstants(kRegisterLamp, kLamp, 2);
}

void HostShading::SetVertexConstants(UINT first, const float* pValues, UINT count)
{
    const D3DDDIARG_SETVERTEXSHADERCONST arg = {first, count};
    HostCheck(
        m_Device.Functions().pfnSetVertexShaderConst(m_Device.Handle(), &arg, pValues), "pfnSetVertexShaderConst");
}
