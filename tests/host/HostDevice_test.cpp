// What the host asks of a device beyond its own scenes, through the built driver on a real Direct3D 9Ex device.
#include "SamePixels.h"
#include "host/runtime/HostSession.h"

#include <array>
#include <utility>

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr UINT kSize = 32;
constexpr UINT kBackground = 0x102030;
constexpr UINT kFirst = 0xFF8000;
constexpr UINT kSecond = 0x00C0FF;
constexpr RECT kLeft = {0, 0, 12, 32};
constexpr RECT kRight = {20, 0, 32, 32};

struct Corner
{
    float m_X, m_Y, m_Z, m_W;
    UINT m_Color;
};
using Quad = std::array<Corner, 4>;
constexpr UINT kQuadBytes = sizeof(Quad);

Quad QuadOf(const RECT& rect, UINT color)
{
    const float left = static_cast<float>(rect.left) - 0.5f, top = static_cast<float>(rect.top) - 0.5f;
    const float right = static_cast<float>(rect.right) - 0.5f, bottom = static_cast<float>(rect.bottom) - 0.5f;
    return {{{left, top, 0, 1, color}, {right, top, 0, 1, color}, {left, bottom, 0, 1, color},
        {right, bottom, 0, 1, color}}};
}

HostImage Picture(const std::vector<std::pair<RECT, UINT>>& rects)
{
    HostImage image(kSize, kSize);
    image.Fill({0, 0, kSize, kSize}, kBackground);
    for (const auto& [rect, color] : rects)
        image.Fill(rect, color);
    return image;
}

class HostDeviceTest : public testing::Test
{
protected:
    HostDeviceTest() : m_pTarget(m_Device.CreateRenderTarget(kSize, kSize))
    {
        m_Device.SetRenderTarget(*m_pTarget);
        m_Device.Clear(kBackground);
        SetState(D3DRS_CULLMODE, D3DCULL_NONE);
    }

    void SetState(D3DRENDERSTATETYPE state, UINT value)
    {
        const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(state), value};
        HOST_CALL(m_Device, pfnSetRenderState, &arg);
    }

    void Declare()
    {
        constexpr D3DDDIVERTEXELEMENT kElements[] = {
            {0, 0, D3DDECLTYPE_FLOAT4, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITIONT, 0},
            {0, 16, D3DDECLTYPE_D3DCOLOR, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_COLOR, 0}};
        D3DDDIARG_CREATEVERTEXSHADERDECL arg = {static_cast<UINT>(std::size(kElements)), nullptr};
        HOST_CALL(m_Device, pfnCreateVertexShaderDecl, &arg, kElements);
        HOST_CALL(m_Device, pfnSetVertexShaderDecl, arg.ShaderHandle);
    }

    /// A dynamic vertex buffer for two quads, bound.
    std::unique_ptr<HostResource> MakeBuffer()
    {
        HostResourceDescription description{.m_Width = 2 * kQuadBytes, .m_Format = D3DFMT_VERTEXDATA};
        description.m_Flags.VertexBuffer = 1;
        description.m_Flags.Dynamic = 1;
        description.m_Flags.WriteOnly = 1;
        auto pBuffer = std::make_unique<HostResource>(m_Device, description);
        const D3DDDIARG_SETSTREAMSOURCE arg = {0, pBuffer->Handle(), 0, sizeof(Corner)};
        HOST_CALL(m_Device, pfnSetStreamSource, &arg);
        return pBuffer;
    }

    void WriteQuad(const HostResource& buffer, UINT quad, const Quad& corners, D3DDDI_LOCKFLAGS flags)
    {
        m_Device.WriteBuffer(buffer, quad * kQuadBytes, corners.data(), kQuadBytes, flags);
    }

    void DrawQuad(UINT quad)
    {
        const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_TRIANGLESTRIP, quad * 4, 2};
        HOST_CALL(m_Device, pfnDrawPrimitive, &arg, nullptr);
    }

    HostSession m_Session{{L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0}};
    HostDevice& m_Device = m_Session.Device();
    std::unique_ptr<HostResource> m_pTarget;
};

}  // namespace

TEST_F(HostDeviceTest, Call_StatesSet_WhatFollowsIsDrawnWithThem)
{
    constexpr RECT kPart = {4, 5, 20, 21};
    SetState(D3DRS_SCISSORTESTENABLE, TRUE);
    HOST_CALL(m_Device, pfnSetScissorRect, &kPart);
    m_Device.Clear(kFirst);
    EXPECT_TRUE(SamePixels(m_Device.ReadBack(*m_pTarget), Picture({{kPart, kFirst}})));
}

TEST_F(HostDeviceTest, Call_EntryRefuses_ThrowsItsName)
{
    const D3DDDIARG_SETSTREAMSOURCEUM arg = {1, 16};
    try
    {
        HOST_CALL(m_Device, pfnSetStreamSourceUm, &arg, &arg);
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const HostError& error)
    {
        EXPECT_NE(std::string(error.what()).find("pfnSetStreamSourceUm"), std::string::npos) << error.what();
    }
}

TEST_F(HostDeviceTest, WatchCalls_OperationsAndCalls_EachIsTold)
{
    std::vector<std::string> calls;
    m_Device.WatchCalls([&](const char* pEntry) { calls.push_back(pEntry); });
    m_Device.Clear(kFirst);
    SetState(D3DRS_ZENABLE, FALSE);
    m_Device.WatchCalls({});
    m_Device.Flush();
    EXPECT_EQ(calls, (std::vector<std::string>{"pfnClear", "pfnSetRenderState"}));
}

TEST_F(HostDeviceTest, Clear_Rectangles_OnlyTheyAreFilled)
{
    constexpr RECT kRects[] = {{1, 2, 9, 10}, {16, 20, 30, 31}};
    m_Device.Clear(kSecond, kRects);
    EXPECT_TRUE(SamePixels(m_Device.ReadBack(*m_pTarget), Picture({{kRects[0], kSecond}, {kRects[1], kSecond}})));
}

TEST_F(HostDeviceTest, Clear_ColourAndDepth_NothingBehindTheDepthIsDrawn)
{
    const auto pDepth = m_Device.CreateDepthStencil(kSize, kSize);
    m_Device.SetDepthStencil(pDepth.get());
    Declare();
    SetState(D3DRS_ZENABLE, TRUE);
    const auto draw = [&](float depth) {
        m_Device.ClearAll(kBackground, depth);
        Quad corners = QuadOf(kLeft, kFirst);
        for (Corner& corner : corners)
            corner.m_Z = 0.5f;
        const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, sizeof(Corner)};
        HOST_CALL(m_Device, pfnSetStreamSourceUm, &stream, corners.data());
        DrawQuad(0);
        return m_Device.ReadBack(*m_pTarget);
    };
    EXPECT_TRUE(SamePixels(draw(0.4f), Picture({})));
    EXPECT_TRUE(SamePixels(draw(0.6f), Picture({{kLeft, kFirst}})));
    m_Device.SetDepthStencil(nullptr);
}

TEST_F(HostDeviceTest, WriteBuffer_PartBehindAnother_TheFirstStays)
{
    Declare();
    const auto pBuffer = MakeBuffer();
    D3DDDI_LOCKFLAGS discard{}, noOverwrite{};
    discard.Discard = 1;
    noOverwrite.NoOverwrite = 1;
    WriteQuad(*pBuffer, 0, QuadOf(kLeft, kFirst), discard);
    WriteQuad(*pBuffer, 1, QuadOf(kRight, kSecond), noOverwrite);
    DrawQuad(0);
    DrawQuad(1);
    EXPECT_TRUE(SamePixels(m_Device.ReadBack(*m_pTarget), Picture({{kLeft, kFirst}, {kRight, kSecond}})));
}

TEST_F(HostDeviceTest, WriteBuffer_DiscardBehindADraw_TheDrawShowsWhatWasThere)
{
    Declare();
    const auto pBuffer = MakeBuffer();
    D3DDDI_LOCKFLAGS discard{};
    discard.Discard = 1;
    WriteQuad(*pBuffer, 0, QuadOf(kLeft, kFirst), discard);
    DrawQuad(0);
    WriteQuad(*pBuffer, 0, QuadOf(kRight, kSecond), discard);
    DrawQuad(0);
    EXPECT_TRUE(SamePixels(m_Device.ReadBack(*m_pTarget), Picture({{kLeft, kFirst}, {kRight, kSecond}})));
}

TEST_F(HostDeviceTest, WriteBuffer_RangeAndFlags_ReachTheDriver)
{
    static D3DDDIARG_LOCK seen;
    static PFND3DDDI_LOCK pLock;
    const auto pBuffer = MakeBuffer();
    auto& functions = const_cast<D3DDDI_DEVICEFUNCS&>(m_Device.Functions());
    pLock = std::exchange(functions.pfnLock, [](HANDLE hDevice, D3DDDIARG_LOCK* pArg) {
        seen = *pArg;
        return pLock(hDevice, pArg);
    });
    D3DDDI_LOCKFLAGS flags{};
    flags.NoOverwrite = 1;
    WriteQuad(*pBuffer, 1, QuadOf(kLeft, kFirst), flags);
    functions.pfnLock = pLock;
    EXPECT_EQ(seen.Range.Offset, kQuadBytes);
    EXPECT_EQ(seen.Range.Size, kQuadBytes);
    EXPECT_TRUE(seen.Flags.RangeValid);
    EXPECT_TRUE(seen.Flags.NoOverwrite);
    EXPECT_FALSE(seen.Flags.Discard);
}

TEST_F(HostDeviceTest, TexBlt_Rectangle_OnlyItIsUploaded)
{
    constexpr RECT kPart = {8, 4, 24, 20};
    HostImage whole(kSize, kSize);
    whole.Fill({0, 0, kSize, kSize}, kBackground);
    const auto pTexture = m_Device.CreateTexture(whole);
    HostResourceDescription description = pTexture->Description();
    description.m_Pool = D3DDDIPOOL_SYSTEMMEM;
    description.m_SystemMemoryPitch = kSize * 4;
    HostResource memory(m_Device, description);
    std::fill_n(reinterpret_cast<UINT*>(memory.SystemMemory()), kSize * kSize, kSecond);
    D3DDDIARG_TEXBLT arg{};
    arg.hDstResource = pTexture->Handle();
    arg.hSrcResource = memory.Handle();
    arg.SrcRect = kPart;
    arg.DstPoint = {kPart.left, kPart.top};
    HOST_CALL(m_Device, pfnTexBlt, &arg);
    m_Device.Blt(*pTexture, pTexture->Rect(), *m_pTarget, m_pTarget->Rect());
    EXPECT_TRUE(SamePixels(m_Device.ReadBack(*m_pTarget), Picture({{kPart, kSecond}})));
}
