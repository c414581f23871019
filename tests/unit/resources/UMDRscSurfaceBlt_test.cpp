// Blits whose source is a surface: the way that each pair of pools takes, and every call on it failing.
#include "BltFixture.h"
#include "TraceText.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"
#include "resources/UMDRscVertexBuffer.h"

using namespace tesslo::test;

namespace
{
const RECT kSrcRect = {1, 2, 5, 6};
const RECT kDstRect = {3, 4, 7, 8};

struct Way
{
    UINT SrcFlags;
    D3DDDI_POOL SrcPool;
    UINT DstFlags;
    D3DDDI_POOL DstPool;
    UINT DstEdge;
    Lines Traces;
    Lines Calls;
};

const Way kWays[] = {
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
    {kFlagRenderTarget, kVideo, kFlagTexture, kSystem, 16, {"UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n"},
        {"texture#1[0].GetDesc(out)", "surface#1.GetDesc(out)", "GetRenderTargetData(surface#1, texture#1[0])"}},
};

class UMDRscSurfaceBltTest : public BltFixture<UMDRscSurface>
{
protected:
    HRESULT Blt() { return m_pSrc->Blt(&kSrcRect, m_pDst, &kDstRect); }
};
}  // namespace

TEST_F(UMDRscSurfaceBltTest, EveryPairOfPools_TakesItsWay)
{
    int number = 0;
    for (const Way& row : kWays)
    {
        SCOPED_TRACE(number++);
        Prepare(row.SrcFlags, row.SrcPool, row.DstFlags, row.DstPool, {.m_DstEdge = row.DstEdge});
        const TraceMask mask(UMDTRACE_DETAIL | UMDTRACE_ERROR);
        EXPECT_EQ(Blt(), S_OK);
        const std::string first = Text("UMDRscSurface::Blt DST Resource:0x%x Pool:%d SRC Resource:0x%x Pool:%d\n",
            UMDLow32(m_pDst), row.DstPool == kSystem ? 2 : 0, UMDLow32(m_pSrc), row.SrcPool == kSystem ? 2 : 0);
        EXPECT_EQ(m_Trace.Lines(), Joined({first}, row.Traces));
        EXPECT_EQ(DeviceLines(), row.Calls);
        EXPECT_EQ(m_Fake.LiveObjects().size(), 2U);
        DestroyAll();
    }
}

TEST_F(UMDRscSurfaceBltTest, SystemToVideo_OtherFormat_IsDroppedAndReportedAsDone)
{
    Prepare(0, kSystem, kFlagRenderTarget, kVideo, {.m_DstFormat = D3DDDIFMT_R5G6B5});
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
    const std::string first = "UMDRscSurface::Blt failed! SRC Resource:" + Low(&source) + " DST Resource:" + Low(pDst) +
                              " Pool:0 RenderTarget:1\n";
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(source.Blt(&srcRect, pDst, &dstRect), E_FAIL); }),
        (Lines{first, "DST Width:8 Height:6 Width:5 Height:6\n", "SRC Width:16 Height:12 Width:3 Height:2\n"}));
    source.Destroy();
}

TEST_F(UMDRscSurfaceBltTest, VideoToVideo_CallFails_ReturnsItsCode)
{
    ExpectFailures(
        {{"StretchRect", 1, kRefused, {"UMDRscSurface::Blt StretchRect failed! 0x8876086a\n"}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, kFlagRenderTarget, kVideo); }, [&] { return Blt(); });
}

TEST_F(UMDRscSurfaceBltTest, VideoToPlainVideo_EachCallFails_ReturnsItsCodeAndReleasesTheTemporary)
{
    ExpectFailures(
        {{"surface.GetDesc", 1, kRefused, {"UMDRscSurface::Blt GetDesc failed! 0x8876086a\n"}},
            {"CreateOffscreenPlainSurface", 1, kRefused,
                {"UMDRscSurface::Blt CreateOffscreenPlainSurface failed! 0x8876086a\n"}},
            {"GetRenderTargetData", 1, kRefused, {"UMDRscSurface::Blt GetRenderTargetData failed! 0x8876086a\n"}},
            {"UpdateSurface", 1, kRefused, {"UMDRscSurface::Blt UpdateSurface failed! 0x8876086a\n"}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, 0, kVideo); }, [&] { return Blt(); });
}

TEST_F(UMDRscSurfaceBltTest, SystemToVideo_EachCallFails_ReturnsItsCode)
{
    const std::string upload = "UMDRscSurface::Blt WriteToDelegated failed! 0x8876086a\n";
    ExpectFailures(
        {{"surface.LockRect", 1, kRefused, {"UMDRscSurface::WriteToDelegated Lock failed! 0x8876086a\n", upload}},
            {"surface.UnlockRect", 1, kRefused,
                {"UMDRscSurface::WriteToDelegated Unlock failed! 0x8876086a\n", upload}},
            {"UpdateSurface", 1, kRefused, {"UMDRscSurface::Blt UpdateSurface failed! 0x8876086a\n"}}},
        [&] { Prepare(0, kSystem, kFlagRenderTarget, kVideo); }, [&] { return Blt(); });
}

TEST_F(UMDRscSurfaceBltTest, VideoToSystem_EachCallFails_ReturnsItsCode)
{
    ExpectFailures(
        {{"surface.GetDesc", 1, kRefused, {"UMDRscSurface::Blt GetDesc failed! 0x8876086a\n"}},
            {"surface.GetDesc", 2, kRefused, {"UMDRscSurface::Blt GetDesc failed! 0x8876086a\n"}},
            {"GetRenderTargetData", 1, kRefused, {"UMDRscSurface::Blt GetRenderTargetData failed! 0x8876086a\n"}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, 0, kSystem); }, [&] { return Blt(); });
}

TEST_F(UMDRscSurfaceBltTest, VideoToSystemOfAnotherSize_EachCallFails_ReturnsItsCodeAndReleasesTheTemporary)
{
    ExpectFailures(
        {{"surface.GetDesc", 1, kRefused, {"UMDRscSurface::Blt GetDesc failed! 0x8876086a\n"}},
            {"surface.GetDesc", 2, kRefused, {"UMDRscSurface::Blt GetDesc failed! 0x8876086a\n"}},
            {"CreateRenderTarget", 1, kRefused, {"UMDRscSurface::Blt CreateRenderTarget failed! 0x8876086a\n"}},
            {"StretchRect", 1, kRefused, {"UMDRscSurface::Blt StretchRect failed! 0x8876086a\n"}},
            {"GetRenderTargetData", 1, kRefused, {"UMDRscSurface::Blt GetRenderTargetData failed! 0x8876086a\n"}}},
        [&] { Prepare(kFlagRenderTarget, kVideo, 0, kSystem, {.m_DstEdge = 8}); }, [&] { return Blt(); });
}

TEST_F(UMDRscSurfaceBltTest, Temporaries_BothWays_AreReleasedExactlyOnce)
{
    // A reference of the test's own shows whether the driver releases more than it took.
    const UINT edges[] = {16, 8};
    for (UINT edge : edges)
    {
        Prepare(kFlagRenderTarget, kVideo, 0, edge == 16 ? kVideo : kSystem, {.m_DstEdge = edge});
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
