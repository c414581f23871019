// Blits whose source is a surface: the way that each pair of pools takes, and every call on it failing.
#include "ResourceFixture.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"
#include "resources/UMDRscVertexBuffer.h"

#include <memory>

using namespace tesslo::test;

namespace
{
const RECT kSrcRect = {1, 2, 5, 6};
const RECT kDstRect = {3, 4, 7, 8};

class UMDRscSurfaceBltTest : public ResourceFixture
{
protected:
    /// Makes the pair anew. The surfaces of both are 16 wide and 16 high unless told otherwise.
    void Prepare(UINT srcFlags, D3DDDI_POOL srcPool, UINT dstFlags, D3DDDI_POOL dstPool, UINT dstEdge = 16,
        D3DDDIFORMAT dstFormat = D3DDDIFMT_A8R8G8B8)
    {
        m_pSrcRequest = std::make_unique<CreateRequest>(srcFlags, srcPool, D3DDDIFMT_A8R8G8B8, 16, 16);
        m_pSrcRequest->WithMemory(4, 4);
        m_pDstRequest = std::make_unique<CreateRequest>(dstFlags, dstPool, dstFormat, dstEdge, dstEdge);
        m_pDstRequest->WithMemory(4, 4);
        m_pSrc = Create<UMDRscSurface>(*m_pSrcRequest);
        m_pDst = Create<UMDRscRenderTargetCapable>(*m_pDstRequest);
        ForgetCalls();
    }

    HRESULT Blt() { return m_pSrc->Blt(&kSrcRect, m_pDst, &kDstRect); }

    std::unique_ptr<CreateRequest> m_pSrcRequest, m_pDstRequest;
    UMDRscSurface* m_pSrc = nullptr;
    UMDRscRenderTargetCapable* m_pDst = nullptr;
};
}  // namespace

TEST_F(UMDRscSurfaceBltTest, EveryPairOfPools_TakesItsWay)
{
    const struct
    {
        UINT SrcFlags;
        D3DDDI_POOL SrcPool;
        UINT DstFlags;
        D3DDDI_POOL DstPool;
        UINT DstEdge;
        Lines Traces;
        Lines Calls;
    } rows[] = {
        {kFlagRenderTarget, kVideo, kFlagRenderTarget, kVideo, 16, {"UMDRscSurface::Blt VIDEO TO VIDEO\n"},
            {"StretchRect(surface#1, 1,2,5,6, surface#2, 3,4,7,8, 0)"}},
        {kFlagRenderTarget, kVideo, kFlagTexture, kVideo, 16, {"UMDRscSurface::Blt VIDEO TO VIDEO\n"},
            {"StretchRect(surface#1, 1,2,5,6, texture#1[0], 3,4,7,8, 0)"}},
        {kFlagRenderTarget, kVideo, 0, kVideo, 16, {"UMDRscSurface::Blt VIDEO TO VIDEO plain\n"},
            {"surface#1.GetDesc(out)", "CreateOffscreenPlainSurface(16, 16, 21, 2, out, null)",
                "GetRenderTargetData(surface#1, surface#3)", "UpdateSurface(surface#3, null, surface#2, null)"}},
        {0, kVideo, kFlagRenderTarget, kVideo, 16, {"UMDRscSurface::Blt VIDEO TO VIDEO plain NEW\n"},
            {"StretchRect(surface#1, 1,2,5,6, surface#2, 3,4,7,8, 0)"}},
        {0, kVideo, 0, kVideo, 16, {"UMDRscSurface::Blt VIDEO TO VIDEO plain NEW\n"},
            {"StretchRect(surface#1, 1,2,5,6, surface#2, 3,4,7,8, 0)"}},
        {0, kSystem, kFlagRenderTarget, kVideo, 16,
            {"UMDRscSurface::Blt SYSTEM TO VIDEO\n", "UMDRscSurface::Blt SYSTEM TO VIDEO similar 21 21\n",
                "UMDRscSurface::WriteToDelegated 0\n"},
            {"surface#1.LockRect(out, null, 0)", "surface#1.UnlockRect()",
                "UpdateSurface(surface#1, 1,2,5,6, surface#2, 3,4)"}},
        {kFlagRenderTarget, kVideo, 0, kSystem, 16, {"UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n"},
            {"surface#2.GetDesc(out)", "surface#1.GetDesc(out)", "GetRenderTargetData(surface#1, surface#2)"}},
        {0, kSystem, 0, kSystem, 16, {"UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n"},
            {"surface#2.GetDesc(out)", "surface#1.GetDesc(out)", "GetRenderTargetData(surface#1, surface#2)"}},
        {kFlagRenderTarget, kVideo, 0, kSystem, 8, {"UMDRscSurface::Blt VIDEO TO SYSTEM different resolution\n"},
            {"surface#2.GetDesc(out)", "surface#1.GetDesc(out)", "CreateRenderTarget(8, 8, 21, 0, 0, 0, out, null)",
                "StretchRect(surface#1, 1,2,5,6, surface#3, 3,4,7,8, 0)", "GetRenderTargetData(surface#3, surface#2)"}},
        // The destination texture's memory is not refreshed: no lock behind the read-back.
        {kFlagRenderTarget, kVideo, kFlagTexture, kSystem, 16,
            {"UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n"},
            {"texture#1[0].GetDesc(out)", "surface#1.GetDesc(out)", "GetRenderTargetData(surface#1, texture#1[0])"}},
    };
    int number = 0;
    for (const auto& row : rows)
    {
        SCOPED_TRACE(number++);
        m_Fake.RestartNames();
        Prepare(row.SrcFlags, row.SrcPool, row.DstFlags, row.DstPool, row.DstEdge);
        const TraceMask mask(UMDTRACE_DETAIL | UMDTRACE_ERROR);
        EXPECT_EQ(Blt(), S_OK);
        char first[160];
        snprintf(first, sizeof first, "UMDRscSurface::Blt DST Resource:0x%x Pool:%d SRC Resource:0x%x Pool:%d\n",
            UMDLow32(m_pDst), row.DstPool == kSystem ? 2 : 0, UMDLow32(m_pSrc), row.SrcPool == kSystem ? 2 : 0);
        Lines traces = {first};
        traces.insert(traces.end(), row.Traces.begin(), row.Traces.end());
        EXPECT_EQ(m_Trace.Lines(), traces);
        EXPECT_EQ(DeviceLines(), row.Calls);
        EXPECT_EQ(m_Fake.LiveObjects().size(), 2U);
        DestroyAll();
    }
}

TEST_F(UMDRscSurfaceBltTest, SystemToVideo_OtherFormat_IsDroppedAndReportedAsDone)
{
    Prepare(0, kSystem, kFlagRenderTarget, kVideo, 16, D3DDDIFMT_R5G6B5);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Blt(), S_OK); }), Lines{"UMDRscSurface::Blt SYSTEM TO VIDEO different 21 23\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDRscSurfaceBltTest, SystemToVideo_Rectangle_UploadsOnlyIt)
{
    Prepare(0, kSystem, kFlagRenderTarget, kVideo);
    EXPECT_EQ(Blt(), S_OK);
    const std::vector<BYTE>& pixels = m_Fake.Find<FakeSurface>("surface#1").Pixels().Bytes();
    for (LONG y = 0; y < 16; y++)
        for (LONG x = 0; x < 16; x++)
        {
            const bool inside = x >= 1 && x < 5 && y >= 2 && y < 6;
            const size_t offset = static_cast<size_t>(y * 64 + x * 4);
            ASSERT_EQ(pixels[offset], inside ? m_pSrcRequest->Memory(0)[static_cast<size_t>(y * 68 + x * 4)] : 0);
        }
}

TEST_F(UMDRscSurfaceBltTest, NoDelegatedSurfaceAtTheDestination_IsRefused)
{
    Prepare(kFlagRenderTarget, kVideo, kFlagRenderTarget, kVideo);
    CreateRequest bufferRequest(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 16, 1);
    CreateRequest bareRequest(kFlagPrimary, kVideo, D3DDDIFMT_A8R8G8B8, 16, 16);
    UMDRscBase* const destinations[] = {CreateAny(bufferRequest), CreateAny(bareRequest), m_pDst};
    m_pDst->Destroy();
    ForgetCalls();
    for (UMDRscBase* pDst : destinations)
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(m_pSrc->Blt(&kSrcRect, pDst, &kDstRect), E_FAIL); }),
            Lines{"UMDRscSurface::Blt pSurface is NULL\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDRscSurfaceBltTest, PoolsOfNoRow_AreReportedWithSizes)
{
    // Pools come from the create entry as 0 or 2; a surface of another one is made by hand.
    CreateRequest srcRequest(kFlagRenderTarget, kVideo, D3DDDIFMT_A8R8G8B8, 16, 12);
    CreateRequest dstRequest(kFlagRenderTarget, kVideo, D3DDDIFMT_A8R8G8B8, 8, 6);
    UMDRscSurface source(&Device(), nullptr, &srcRequest.m_Arg, FALSE, D3DPOOL_MANAGED, false);
    ASSERT_EQ(source.Create(), S_OK);
    auto* pDst = Create<UMDRscSurface>(dstRequest);
    const RECT srcRect = {1, 1, 4, 3};
    const RECT dstRect = {0, 0, 5, 6};
    char first[160];
    snprintf(first, sizeof first,
        "UMDRscSurface::Blt failed! SRC Resource:0x%x DST Resource:0x%x Pool:0 RenderTarget:1\n", UMDLow32(&source),
        UMDLow32(pDst));
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(source.Blt(&srcRect, pDst, &dstRect), E_FAIL); }),
        (Lines{first, "DST Width:8 Height:6 Width:5 Height:6\n", "SRC Width:16 Height:12 Width:3 Height:2\n"}));
    source.Destroy();
}

TEST_F(UMDRscSurfaceBltTest, EveryCallOfEveryWayFails_ReturnsItsCodeAndReleasesTheTemporary)
{
    const std::string prefix = "UMDRscSurface::Blt ";
    const std::string suffix = " failed! 0x8876086a\n";
    auto blt = [&] { return Blt(); };

    ExpectFailures(
        {{"StretchRect", 1, kRefused, {prefix + "StretchRect" + suffix}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, kFlagRenderTarget, kVideo); }, blt);

    ExpectFailures(
        {{"surface.GetDesc", 1, kRefused, {prefix + "GetDesc" + suffix}},
            {"CreateOffscreenPlainSurface", 1, kRefused, {prefix + "CreateOffscreenPlainSurface" + suffix}},
            {"GetRenderTargetData", 1, kRefused, {prefix + "GetRenderTargetData" + suffix}},
            {"UpdateSurface", 1, kRefused, {prefix + "UpdateSurface" + suffix}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, 0, kVideo); }, blt);

    ExpectFailures(
        {{"surface.LockRect", 1, kRefused,
             {"UMDRscSurface::WriteToDelegated Lock failed! 0x8876086a\n", prefix + "WriteToDelegated" + suffix}},
            {"surface.UnlockRect", 1, kRefused,
                {"UMDRscSurface::WriteToDelegated Unlock failed! 0x8876086a\n", prefix + "WriteToDelegated" + suffix}},
            {"UpdateSurface", 1, kRefused, {prefix + "UpdateSurface" + suffix}}},
        [&] { Prepare(0, kSystem, kFlagRenderTarget, kVideo); }, blt);

    ExpectFailures(
        {{"surface.GetDesc", 1, kRefused, {prefix + "GetDesc" + suffix}},
            {"surface.GetDesc", 2, kRefused, {prefix + "GetDesc" + suffix}},
            {"CreateRenderTarget", 1, kRefused, {prefix + "CreateRenderTarget" + suffix}},
            {"StretchRect", 1, kRefused, {prefix + "StretchRect" + suffix}},
            {"GetRenderTargetData", 1, kRefused, {prefix + "GetRenderTargetData" + suffix}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, 0, kSystem, 8); }, blt);

    ExpectFailures(
        {{"surface.GetDesc", 1, kRefused, {prefix + "GetDesc" + suffix}},
            {"surface.GetDesc", 2, kRefused, {prefix + "GetDesc" + suffix}},
            {"GetRenderTargetData", 1, kRefused, {prefix + "GetRenderTargetData" + suffix}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, 0, kSystem); }, blt);
}

TEST_F(UMDRscSurfaceBltTest, Temporaries_BothWays_AreReleasedExactlyOnce)
{
    // A reference of the test's own shows whether the driver releases more than it took.
    const UINT edges[] = {16, 8};
    for (UINT edge : edges)
    {
        Prepare(kFlagRenderTarget, kVideo, 0, edge == 16 ? kVideo : kSystem, edge);
        IUnknown* pHeld = nullptr;
        m_Fake.On("GetRenderTargetData", [&] {
            pHeld = &m_Fake.Find<FakeSurface>(m_Fake.LiveObjects().back());
            pHeld->AddRef();
        });
        EXPECT_EQ(Blt(), S_OK);
        ASSERT_NE(pHeld, nullptr);
        EXPECT_EQ(pHeld->Release(), 0U);
        m_Fake.ClearScripts();
        DestroyAll();
    }
}

TEST_F(UMDRscSurfaceBltTest, VideoToSystem_OneEdgeDiffers_GoesThroughATarget)
{
    for (const auto& [width, height] : {std::pair{16U, 8U}, {8U, 16U}})
    {
        Prepare(kFlagRenderTarget, kVideo, 0, kSystem);
        CreateRequest request(0, kSystem, D3DDDIFMT_A8R8G8B8, width, height);
        m_pDst = Create<UMDRscRenderTargetCapable>(request);
        EXPECT_EQ(Blt(), S_OK);
        EXPECT_EQ(m_Trace.Count("UMDRscSurface::Blt VIDEO TO SYSTEM different resolution\n"), 1U) << width;
        EXPECT_EQ(m_Fake.Calls("CreateRenderTarget"), 1U);
        DestroyAll();
    }
}
