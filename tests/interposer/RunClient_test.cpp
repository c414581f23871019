// The delegated device that the client library of a run supplies: what the driver carries as stage states from 13 on
// are sampler states there. Levels of textures show it.
#include "host/runtime/HostSession.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace
{

constexpr UINT kSize = 16;
constexpr UINT kLevelColors[] = {0x204060, 0x60C020};

class RunClientTest : public testing::Test
{
protected:
    /// A picture of two levels, each of one colour, brought there from the runtime's memory.
    std::unique_ptr<HostResource> MakeTexture()
    {
        HostResourceDescription description{.m_Width = kSize, .m_Height = kSize, .m_MipLevels = 2};
        description.m_Flags.Texture = 1;
        auto pTexture = std::make_unique<HostResource>(m_Device, description);
        description.m_Pool = D3DDDIPOOL_SYSTEMMEM;
        description.m_LevelMemory = {{kSize * 4, kSize}, {kSize * 2, kSize / 2}};
        HostResource memory(m_Device, description);
        for (UINT level = 0; level < 2; ++level)
            std::fill_n(
                reinterpret_cast<UINT*>(memory.SystemMemory(level)), kSize * kSize >> 2 * level, kLevelColors[level]);
        D3DDDIARG_TEXBLT arg{};
        arg.hDstResource = pTexture->Handle();
        arg.hSrcResource = memory.Handle();
        arg.SrcRect = memory.Rect();
        HOST_CALL(m_Device, pfnTexBlt, &arg);
        return pTexture;
    }

    void SetStage(UINT state, UINT value)
    {
        const D3DDDIARG_TEXTURESTAGESTATE arg = {0, static_cast<D3DDDITEXTURESTAGESTATETYPE>(state), value};
        HOST_CALL(m_Device, pfnSetTextureStageState, &arg);
    }

    /// The target's first pixel, when the texture was drawn over all of it.
    UINT Drawn()
    {
        struct Corner
        {
            float m_X, m_Y, m_Z, m_W, m_U, m_V;
        };
        constexpr float kEnd = kSize - 0.5f;
        constexpr Corner kCorners[] = {
            {-0.5f, -0.5f, 0, 1, 0, 0}, {kEnd, -0.5f, 0, 1, 1, 0}, {-0.5f, kEnd, 0, 1, 0, 1}, {kEnd, kEnd, 0, 1, 1, 1}};
        const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, sizeof(Corner)};
        const D3DDDIARG_DRAWPRIMITIVE draw = {D3DPT_TRIANGLESTRIP, 0, 2};
        HOST_CALL(m_Device, pfnSetStreamSourceUm, &stream, kCorners);
        HOST_CALL(m_Device, pfnDrawPrimitive, &draw, nullptr);
        return m_Device.ReadBack(*m_pTarget).At(0, 0);
    }

    void Declare()
    {
        constexpr D3DDDIVERTEXELEMENT kElements[] = {
            {0, 0, D3DDECLTYPE_FLOAT4, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITIONT, 0},
            {0, 16, D3DDECLTYPE_FLOAT2, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_TEXCOORD, 0}};
        D3DDDIARG_CREATEVERTEXSHADERDECL arg = {static_cast<UINT>(std::size(kElements)), nullptr};
        HOST_CALL(m_Device, pfnCreateVertexShaderDecl, &arg, kElements);
        HOST_CALL(m_Device, pfnSetVertexShaderDecl, arg.ShaderHandle);
    }

    // Found by its path first: the driver looks it up by its short name.
    HMODULE m_hClient = LoadLibraryW(L"interposer\\TessloClientDllRun.dll");
    HostSession m_Session{{L"TessloWddmUmode.dll", L"TessloClientDllRun.dll", 0}};
    HostDevice& m_Device = m_Session.Device();
    std::unique_ptr<HostResource> m_pTarget = m_Device.CreateRenderTarget(kSize, kSize);
};

}  // namespace

TEST_F(RunClientTest, SetTextureStageState_LevelsByPoint_TheSmallerLevelIsRead)
{
    const auto pTexture = MakeTexture();
    m_Device.SetRenderTarget(*m_pTarget);
    Declare();
    HOST_CALL(m_Device, pfnSetTexture, 0u, pTexture->Handle());
    EXPECT_EQ(Drawn(), kLevelColors[0]);
    SetStage(D3DDDITSS_MIPFILTER, D3DTEXF_POINT);
    SetStage(D3DDDITSS_MAXMIPLEVEL, 1);
    EXPECT_EQ(Drawn(), kLevelColors[1]);
}
