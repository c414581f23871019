#include "host/scenes/HostShading.h"

#include "host/runtime/HostDevice.h"
#include "host/scenes/HostShaderCode.h"

namespace
{

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
    D3DDDIARG_CREATEVERTEXSHADERFUNC vertex = {sizeof(kHostVertexShader), nullptr};
    HostCheck(
        functions.pfnCreateVertexShaderFunc(device.Handle(), &vertex, kHostVertexShader), "pfnCreateVertexShaderFunc");
    m_hVertexShader = vertex.ShaderHandle;
    D3DDDIARG_CREATEPIXELSHADER pixel = {sizeof(kHostPixelShader), nullptr};
    HostCheck(functions.pfnCreatePixelShader(device.Handle(), &pixel, kHostPixelShader), "pfnCreatePixelShader");
    m_hPixelShader = pixel.ShaderHandle;
    D3DDDIARG_CREATEVERTEXSHADERDECL declaration = {static_cast<UINT>(std::size(kHostElements)), nullptr};
    HostCheck(
        functions.pfnCreateVertexShaderDecl(device.Handle(), &declaration, kHostElements), "pfnCreateVertexShaderDecl");
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
    SetVertexConstants(kHostRegisterPlace, place.m[0], 4);
    SetVertexConstants(kHostRegisterTurn, turn.m[0], 3);
    const float color[4] = {static_cast<float>(tint >> 16 & 0xFF) / 255, static_cast<float>(tint >> 8 & 0xFF) / 255,
        static_cast<float>(tint & 0xFF) / 255, 1};
    const D3DDDIARG_SETPIXELSHADERCONST arg = {0, 1};
    HostCheck(m_Device.Functions().pfnSetPixelShaderConst(m_Device.Handle(), &arg, color), "pfnSetPixelShaderConst");
}

void HostShading::SetFullLight()
{
    SetVertexConstants(kHostRegisterLamp, kHostFullLight, 2);
}

void HostShading::SetLamp()
{
    SetVertexConstants(kHostRegisterLamp, kHostLamp, 2);
}

void HostShading::SetVertexConstants(UINT first, const float* pValues, UINT count)
{
    const D3DDDIARG_SETVERTEXSHADERCONST arg = {first, count};
    HostCheck(
        m_Device.Functions().pfnSetVertexShaderConst(m_Device.Handle(), &arg, pValues), "pfnSetVertexShaderConst");
}
