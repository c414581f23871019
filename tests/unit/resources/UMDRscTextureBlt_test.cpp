// Blits and texture blits whose source is a texture: the way that each pair of pools takes, and every call failing.
#include "BltFixture.h"
#include "TraceText.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"

using namespace tesslo::test;

namespace
{
constexpr UINT kTarget = kFlagTexture | kFlagRenderTarget;
const RECT kSrcRect = {1, 2, 5, 6};
const RECT kDstRect = {3, 4, 7, 9};
const RECT kNoPixels = {3, 4, 3, 4};

class UMDRscTextureBltTest : public BltFixture<UMDRscTexture>
{
protected:
    HRESULT Blt() { return m_pSrc->Blt(&kSrcRect, m_pDst, &kDstRect); }
    HRESULT TexBlt() { return m_pSrc->TexBlt(&kSrcRect, m_pDst, &kDstRect); }

    /// The first line of a blit.
    std::string Announced() const
    {
        return Text(
            "UMDRscTexture::Blt DST Resource:0x%x Pool:%d IsRenderTarget:%d SRC Resource:0x%x Pool:%d IsRenderTarget:%d\n",
            UMDLow32(m_pDst), m_pDst->GetPool(), m_pDst->IsRenderTarget(), UMDLow32(m_pSrc), m_pSrc->GetPool(),
            m_pSrc->IsRenderTarget());
    }
};
}  // namespace

TEST_F(UMDRscTextureBltTest, EveryPairOfPools_TakesItsWay)
{
    const struct
    {
        UINT SrcFlags;
        D3DDDI_POOL SrcPool;
        UINT DstFlags;
        D3DDDI_POOL DstPool;
        UINT DstEdge;
        const char* pTrace;
        Lines Calls;
    } rows[] = {
        {kFlagTexture, kVideo, kFlagRenderTarget, kVideo, 16, "UMDRscTexture::Blt VIDEO TO VIDEO\n",
            {"StretchRect(texture#1[0], null, surface#1, null, 0)"}},
        {kTarget, kVideo, kTarget, kVideo, 8, "UMDRscTexture::Blt VIDEO TO VIDEO\n",
            {"StretchRect(texture#1[0], null, texture#2[0], null, 0)"}},
        {kTarget, kVideo, 0, kSystem, 16, "UMDRscTexture::Blt VIDEO TO SYSTEM same dimension\n",
            {"texture#1[0].GetDesc(out)", "surface#1.GetDesc(out)", "GetRenderTargetData(texture#1[0], surface#1)"}},
        {kTarget, kVideo, kFlagTexture, kSystem, 16, "UMDRscTexture::Blt VIDEO TO SYSTEM same dimension\n",
            {"texture#1[0].GetDesc(out)", "texture#2[0].GetDesc(out)",
                "GetRenderTargetData(texture#1[0], texture#2[0])", "texture#2[0].LockRect(out, null, 0)",
                "texture#2[0].UnlockRect()"}},
        {kFlagTexture, kSystem, kFlagTexture, kVideo, 16, "UMDRscTexture::Blt SYSTEM TO VIDEO\n",
            {"texture#1[0].LockRect(out, null, 0)", "texture#1[0].UnlockRect()",
                "UpdateSurface(texture#1[0], 1,2,5,6, texture#2[0], 3,4)"}},
    };
    int number = 0;
    for (const auto& row : rows)
    {
        SCOPED_TRACE(number++);
        Prepare(row.SrcFlags, row.SrcPool, row.DstFlags, row.DstPool, {.m_DstEdge = row.DstEdge});
        EXPECT_EQ(Blt(), S_OK);
        ASSERT_GE(m_Trace.Lines().size(), 2U);
        EXPECT_EQ(m_Trace.Lines()[0], Announced());
        EXPECT_EQ(m_Trace.Lines()[1], row.pTrace);
        EXPECT_EQ(DeviceLines(), row.Calls);
        EXPECT_EQ(m_Fake.LiveObjects().size(), 2U);
        DestroyAll();
    }
}

TEST_F(UMDRscTextureBltTest, VideoToSystem_OtherSize_GoesThroughATargetOfTheRectanglesSize)
{
    Prepare(kTarget, kVideo, 0, kSystem, {.m_DstEdge = 5});
    // The read-back into another size is refused by the fake: what counts is the way there.
    EXPECT_EQ(Blt(), D3DERR_INVALIDCALL);
    EXPECT_EQ(DeviceLines(),
        (Lines{"texture#1[0].GetDesc(out)", "surface#1.GetDesc(out)",
            "CreateRenderTarget(4, 5, 21, 0, 0, 0, out, null)",
            "StretchRect(texture#1[0], 1,2,5,6, surface#2, 0,0,4,5, 0)", "GetRenderTargetData(surface#2, surface#1)"}));
    EXPECT_EQ(m_Trace.Count("UMDRscTexture::Blt VIDEO TO SYSTEM different dimension\n"), 1U);
    EXPECT_EQ(m_Fake.LiveObjects(), (Lines{"texture#1", "surface#1"}));
    DestroyAll();

    Prepare(kTarget, kVideo, kFlagTexture, kSystem, {.m_DstEdge = 4});
    const RECT fitting = {3, 4, 7, 8};
    EXPECT_EQ(m_pSrc->Blt(&kSrcRect, m_pDst, &fitting), S_OK);
    EXPECT_EQ(DeviceLines().back(), "texture#2[0].UnlockRect()");  // the texture's memory is refreshed
}

TEST_F(UMDRscTextureBltTest, VideoToSystemTexture_Pixels_ReachTheRuntimesMemory)
{
    m_Fake.SetPitchPadding(8);  // a packed source would be copied as one block, past the memory's own padding
    Prepare(kTarget, kVideo, kFlagTexture, kSystem);
    std::vector<BYTE>& pixels = m_Fake.Find<FakeTexture>("texture#1").Level(0).Pixels().Bytes();
    for (size_t i = 0; i < pixels.size(); i++)
        pixels[i] = static_cast<BYTE>(i * 7 + 5);
    EXPECT_EQ(Blt(), S_OK);
    for (UINT y = 0; y < 16; y++)
        EXPECT_EQ(memcmp(&m_pDstRequest->Memory(0)[y * 68], &pixels[y * 72], 64), 0);
}

TEST_F(UMDRscTextureBltTest, VideoToSystemTexture_RefreshFails_TheBlitStillSucceeds)
{
    Prepare(kTarget, kVideo, kFlagTexture, kSystem);
    m_Fake.Fail("texture#2[0].LockRect", kRefused);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Blt(), S_OK); }),
        Lines{"UMDRscTexture::WriteFromDelegated LockRect failed! 0x8876086a\n"});
}

TEST_F(UMDRscTextureBltTest, EveryCallOfEveryWayFails_ReturnsItsCodeAndReleasesTheTemporary)
{
    auto blt = [&] { return Blt(); };
    ExpectFailures(
        {{"StretchRect", 1, kRefused, {"UMDRscTexture::Blt StretchRect failed! 0x8876086a \n"}}},
        [&] { Prepare(kTarget, kVideo, kTarget, kVideo); }, blt);
    const Lines getDesc = {"UMDRscTexture::Blt GetDesc failed 0x8876086a\n"};
    const Lines readBack = {"UMDRscTexture::Blt GetRenderTargetData failed 0x8876086a\n"};
    ExpectFailures(
        {{"texture.GetDesc", 1, kRefused, getDesc}, {"surface.GetDesc", 1, kRefused, getDesc},
            {"GetRenderTargetData", 1, kRefused, readBack}},
        [&] { Prepare(kTarget, kVideo, 0, kSystem); }, blt);
    const RECT fitting = {3, 4, 8, 9};
    ExpectFailures(
        {{"texture.GetDesc", 1, kRefused, getDesc}, {"surface.GetDesc", 1, kRefused, getDesc},
            {"CreateRenderTarget", 1, kRefused, {"UMDRscTexture::Blt CreateRenderTarget failed 0x8876086a\n"}},
            {"StretchRect", 1, kRefused, {"UMDRscTexture::Blt StretchRect failed 0x8876086a\n"}},
            {"GetRenderTargetData", 1, kRefused, readBack}},
        [&] { Prepare(kTarget, kVideo, 0, kSystem, {.m_DstEdge = 5}); },
        [&] { return m_pSrc->Blt(&kSrcRect, m_pDst, &fitting); });
    const std::string texBlt = "UMDRscTexture::Blt TexBlt failed! 0x8876086a\n";
    ExpectFailures(
        {{"texture.LockRect", 1, kRefused, {"UMDRscTexture::WriteToDelegated LockRect failed! 0x8876086a\n", texBlt}},
            {"texture.UnlockRect", 1, kRefused,
                {"UMDRscTexture::WriteToDelegated UnlockRect failed! 0x8876086a\n", texBlt}},
            {"UpdateSurface", 1, kRefused, {"UMDRscTexture::TexBlt UpdateSurface failed 0x8876086a\n", texBlt}}},
        [&] { Prepare(kFlagTexture, kSystem, kFlagTexture, kVideo); }, blt);
}

TEST_F(UMDRscTextureBltTest, NoDelegatedSurfaceAtTheDestination_IsRefused)
{
    Prepare(kTarget, kVideo, kFlagRenderTarget, kVideo);
    CreateRequest bufferRequest(kFlagIndexBuffer, kVideo, D3DDDIFMT_INDEX16, 16, 1);
    UMDRscBase* const destinations[] = {CreateAny(bufferRequest), m_pDst};
    m_pDst->Destroy();
    for (UMDRscBase* pDst : destinations)
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(m_pSrc->Blt(&kSrcRect, pDst, &kDstRect), E_FAIL); }),
            Lines{"UMDRscTexture::Blt pSurface is NULL\n"});
}

TEST_F(UMDRscTextureBltTest, Fallback_NoPixels_LocksUnlocksAndAnswersFail)
{
    Prepare(kFlagTexture, kVideo, 0, kSystem);
    const std::string first = Text(
        "UMDRscTexture::Blt failed! SRC Resource:0x%x Pool:0 RenderTarget:0 DST Resource:0x%x Pool:2 RenderTarget:0\n",
        UMDLow32(m_pSrc), UMDLow32(m_pDst));
    const Lines report = {
        first, "DST Width:16 Height:16 Width:0 Height:0\n", "SRC Width:16 Height:16 Width:4 Height:4\n"};
    auto fallback = [&] { return m_pSrc->Blt(&kSrcRect, m_pDst, &kNoPixels); };
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(fallback(), E_FAIL); }), report);
    EXPECT_EQ(DeviceLines(),
        (Lines{"texture#1[0].GetDesc(out)", "surface#1.GetDesc(out)", "surface#1.LockRect(out, null, 0)",
            "texture#1[0].LockRect(out, null, 0)", "texture#1[0].UnlockRect()", "surface#1.UnlockRect()"}));

    const struct
    {
        const char* pCall;
        HRESULT Expected;
        const char* pError;
    } rows[] = {{"surface.LockRect", kRefused, "UMDRscTexture::Blt LockRect DST failed! 0x8876086a\n"},
        {"texture.LockRect", kRefused, "UMDRscTexture::Blt LockRect SRC failed! 0x8876086a\n"},
        {"texture.UnlockRect", E_FAIL, "UMDRscTexture::Blt UnlockRect SRC failed! 0x8876086a\n"},
        {"surface.UnlockRect", E_FAIL, "UMDRscTexture::Blt UnlockRect DST failed! 0x8876086a\n"}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.pCall);
        m_Fake.Fail(row.pCall, kRefused, 1);
        Lines expected = report;
        expected.push_back(row.pError);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(fallback(), row.Expected); }), expected);
        if (std::string(row.pCall).find("Unlock") == std::string::npos)
        {
            EXPECT_FALSE(m_Fake.Find<FakeSurface>("surface#1").Pixels().IsLocked());
            EXPECT_FALSE(m_Fake.Find<FakeTexture>("texture#1").Level(0).Pixels().IsLocked());
        }
        m_Fake.Find<FakeSurface>("surface#1").Pixels().Unlock();  // the refused one's
        m_Fake.Find<FakeTexture>("texture#1").Level(0).Pixels().Unlock();
    }
}

TEST_F(UMDRscTextureBltTest, Fallback_Pixels_TheEntryAnswersTheFaultWithOk)
{
    Prepare(kFlagTexture, kSystem, kFlagTexture, kSystem);
    D3DDDIARG_BLT blt = {};
    blt.hSrcResource = ToHandle(m_pSrc);
    blt.SrcRect = kSrcRect;
    blt.hDstResource = ToHandle(m_pDst);
    blt.DstRect = kDstRect;
    HRESULT hr = E_FAIL;
    const Lines errors = ErrorsOf([&] { hr = UMDDdiBlt(DeviceHandle(), &blt); });
    EXPECT_EQ(hr, S_OK);
    ASSERT_EQ(errors.size(), 5U);
    EXPECT_EQ(errors[3], "EXCEPTION_ACCESS_VIOLATION\n");
    EXPECT_EQ(errors[4], "Exception in DDI function! UMDDdiBlt failed!\n");
}

TEST_F(UMDRscTextureBltTest, TexBlt_EveryNumberOfLevels_RectangleAndPointAreLevelZeros)
{
    for (UINT levels = 1; levels <= 5; levels++)
    {
        Prepare(kFlagTexture, kSystem, kFlagTexture, kVideo, {.m_SrcLevels = levels, .m_DstLevels = levels});
        EXPECT_EQ(TexBlt(), S_OK);
        Lines expected;
        for (UINT level = 0; level < levels; level++)
        {
            const std::string index = "[" + std::to_string(level) + "]";
            expected.push_back("texture#1" + index + ".LockRect(out, null, 0)");
            expected.push_back("texture#1" + index + ".UnlockRect()");
            expected.push_back(level == 0
                                   ? "UpdateSurface(texture#1[0], 1,2,5,6, texture#2[0], 3,4)"
                                   : "UpdateSurface(texture#1" + index + ", null, texture#2" + index + ", null)");
        }
        EXPECT_EQ(DeviceLines(), expected);
        const std::string first = Text(
            "UMDRscTexture::TexBlt DST Resource:0x%x Pool:0 IsRenderTarget:0 SRC Resource:0x%x Pool:2 IsRenderTarget:0\n",
            UMDLow32(m_pDst), UMDLow32(m_pSrc));
        EXPECT_EQ(m_Trace.Lines().front(), first);
        DestroyAll();
    }
}

TEST_F(UMDRscTextureBltTest, TexBlt_OtherPools_IsRefused)
{
    const D3DDDI_POOL pools[][2] = {{kVideo, kVideo}, {kVideo, kSystem}, {kSystem, kSystem}};
    for (const auto& pool : pools)
    {
        Prepare(kFlagTexture, pool[0], kFlagTexture, pool[1]);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(TexBlt(), E_FAIL); }), Lines{"UMDRscTexture::TexBlt failed!\n"});
        EXPECT_EQ(DeviceLines(), Lines{});
        DestroyAll();
    }
}

TEST_F(UMDRscTextureBltTest, TexBlt_DestinationWithFewerLevelsOrNoSurfaces_StopsThere)
{
    Prepare(kFlagTexture, kSystem, kFlagTexture, kVideo, {.m_SrcLevels = 3, .m_DstLevels = 2});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(TexBlt(), E_FAIL); }), Lines{"UMDRscTexture::TexBlt pSurfaceDst is NULL\n"});
    EXPECT_EQ(m_Fake.Calls("UpdateSurface"), 2U);
    CreateRequest bufferRequest(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 16, 1);
    UMDRscBase* pBuffer = CreateAny(bufferRequest);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(m_pSrc->TexBlt(&kSrcRect, pBuffer, &kDstRect), E_FAIL); }),
        Lines{"UMDRscTexture::TexBlt pSurfaceDst is NULL\n"});
}

TEST_F(UMDRscTextureBltTest, TexBlt_EachCallFails_ReturnsItsCodeAtOnce)
{
    const std::string upload = "UMDRscTexture::WriteToDelegated ";
    const Lines lock = {upload + "LockRect failed! 0x8876086a\n"};
    const Lines unlock = {upload + "UnlockRect failed! 0x8876086a\n"};
    const Lines update = {"UMDRscTexture::TexBlt UpdateSurface failed 0x8876086a\n"};
    ExpectFailures(
        {{"texture.LockRect", 1, kRefused, lock}, {"texture.UnlockRect", 1, kRefused, unlock},
            {"UpdateSurface", 1, kRefused, update}, {"texture.LockRect", 2, kRefused, lock},
            {"texture.UnlockRect", 2, kRefused, unlock}, {"UpdateSurface", 2, kRefused, update}},
        [&] { Prepare(kFlagTexture, kSystem, kFlagTexture, kVideo, {.m_SrcLevels = 2, .m_DstLevels = 2}); },
        [&] { return TexBlt(); });
}

TEST_F(UMDRscTextureBltTest, VideoToSystem_OneEdgeDiffers_GoesThroughATarget)
{
    for (const auto& [width, height] : {std::pair{16U, 5U}, {4U, 16U}})
    {
        Prepare(kTarget, kVideo, 0, kSystem);
        CreateRequest request(0, kSystem, D3DDDIFMT_A8R8G8B8, width, height);
        m_pDst = Create<UMDRscRenderTargetCapable>(request);
        const RECT rect = {0, 0, static_cast<LONG>(width), static_cast<LONG>(height)};
        EXPECT_EQ(m_pSrc->Blt(&kSrcRect, m_pDst, &rect), S_OK);
        EXPECT_EQ(m_Trace.Count("UMDRscTexture::Blt VIDEO TO SYSTEM different dimension\n"), 1U) << width;
        EXPECT_EQ(m_Fake.Calls("CreateRenderTarget"), 1U);
        DestroyAll();
    }
}

TEST_F(UMDRscTextureBltTest, Blt_SourceNeverCreated_IsRefused)
{
    Prepare(kFlagTexture, kVideo, kFlagTexture, kVideo);
    UMDRscTexture source(&Device(), nullptr, &m_pSrcRequest->m_Arg,
        UMDRscTextureTraits{FALSE, 0, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(source.Blt(&kSrcRect, m_pDst, &kDstRect), E_FAIL); }),
        Lines{"UMDRscTexture::Blt pSurface is NULL\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDRscTextureBltTest, TexBlt_ToACube_GoesToItsFirstFace)
{
    Prepare(kFlagTexture, kSystem, kFlagCubeMap, kVideo);
    EXPECT_EQ(TexBlt(), S_OK);
    EXPECT_EQ(
        m_Fake.LinesContaining("UpdateSurface"), Lines{"UpdateSurface(texture#1[0], 1,2,5,6, cube#1[0][0], 3,4)"});
}

TEST_F(UMDRscTextureBltTest, TexBlt_LevelZero_UploadsOnlyTheRectangle)
{
    Prepare(kFlagTexture, kSystem, kFlagTexture, kVideo);
    EXPECT_EQ(TexBlt(), S_OK);
    D3DLOCKED_RECT locked = {};
    ASSERT_EQ(m_pSrc->GetSurface(0, 0)->LockRect(&locked, nullptr, 0), S_OK);
    for (LONG y = 0; y < 16; ++y)
        for (LONG x = 0; x < 16; ++x)
        {
            const bool inside = x >= 1 && x < 5 && y >= 2 && y < 6;
            const BYTE* pPixel = static_cast<const BYTE*>(locked.pBits) + y * locked.Pitch + x * 4;
            const BYTE* pMemory = &m_pSrcRequest->Memory(0)[static_cast<size_t>(y * 68 + x * 4)];
            const BYTE nothing[4] = {};
            ASSERT_EQ(memcmp(pPixel, inside ? pMemory : nothing, 4), 0) << x << ' ' << y;
        }
    m_pSrc->GetSurface(0, 0)->UnlockRect();
}

// The source's address is its pitch and the place in it, the bits not counted: a rectangle can name any memory. Here it
// names the test's own, to see every number of the copy.
TEST_F(UMDRscTextureBltTest, Fallback_RectangleThatNamesMemory_CopiesFromThereAndStillFails)
{
    Prepare(kFlagTexture, kSystem, kFlagTexture, kSystem);
    const UINT pitch = 64;  // 16 pixels of 4 bytes
    void* pLow = nullptr;
    for (UINT_PTR address = 0x20000000; !pLow && address < 0x70000000; address += 0x1000000)
        pLow = VirtualAlloc(reinterpret_cast<void*>(address), 4096, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    ASSERT_NE(pLow, nullptr);
    auto* pBytes = static_cast<BYTE*>(pLow);
    for (UINT i = 0; i < 4096; ++i)
        pBytes[i] = static_cast<BYTE>(i * 3 + 1);

    const LONG left = static_cast<LONG>((reinterpret_cast<UINT_PTR>(pLow) - pitch - 2 * pitch) / 4);
    const RECT srcRect = {left, 2, left + 4, 5};
    const RECT dstRect = {3, 4, 7, 7};
    EXPECT_EQ(m_pSrc->Blt(&srcRect, m_pDst, &dstRect), E_FAIL);

    D3DLOCKED_RECT locked = {};
    ASSERT_EQ(m_pDst->GetSurface(0, 0)->LockRect(&locked, nullptr, 0), S_OK) << "the blit has unlocked it";
    for (LONG y = 0; y < 16; ++y)
        for (LONG x = 0; x < 16 * 4; ++x)
        {
            const bool inside = x >= 3 * 4 && x < 7 * 4 && y >= 4 && y < 7;
            const BYTE expected = inside ? pBytes[(y - 4) * 64 + (x - 12)] : 0;
            ASSERT_EQ(static_cast<const BYTE*>(locked.pBits)[y * locked.Pitch + x], expected) << x << ' ' << y;
        }
    m_pDst->GetSurface(0, 0)->UnlockRect();
    VirtualFree(pLow, 0, MEM_RELEASE);
}
