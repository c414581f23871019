// Cube textures: every face and level, locks of the first, updates, and surface counts that are no cube's.
#include "ResourceFixture.h"
#include "TraceLevels.h"
#include "TraceText.h"

#include "resources/UMDRscCubeTexture.h"

using namespace tesslo::test;

namespace
{

class UMDRscCubeTextureTest : public ResourceFixture
{
};

}  // namespace

TEST_F(UMDRscCubeTextureTest, Create_OneToNineLevels_FetchesAndSelectsEveryFaceAndLevel)
{
    for (UINT levels = 1; levels <= 9; levels++)
    {
        m_Fake.RestartNames();
        ForgetCalls();
        CreateRequest request(kFlagCubeMap, kVideo, D3DDDIFMT_A8R8G8B8, 256, 256, levels);
        auto* pCube = Create<UMDRscCubeTexture>(request);
        auto& fake = m_Fake.Find<FakeCubeTexture>("cube#1");
        Lines calls = {"CreateCubeTexture(256, " + std::to_string(levels) + ", 0, 21, 0, out, null)"};
        Lines traces;
        for (UINT face = 0; face < 6; face++)
            for (UINT level = 0; level < levels; level++)
            {
                const std::string place = "[" + std::to_string(face) + "][" + std::to_string(level) + "]";
                calls.push_back(
                    "cube#1.GetCubeMapSurface(" + std::to_string(face) + ", " + std::to_string(level) + ", out)");
                calls.push_back("cube#1" + place + ".GetDesc(out)");
                EXPECT_EQ(pCube->GetSurface(face, level), &fake.Level(face, level));
                const std::string line =
                    Text("UMDRscCubeTexture::Create %02u Face:%02u Level:%02u 0x%x Width:%u Height:%u\n",
                        face * levels + level, face, level, UMDLow32(pCube->GetSurface(face, level)), 256U >> level,
                        256U >> level);
                traces.push_back(line);
            }
        traces.push_back(
            "UMDRscCubeTexture::Create m_pTexture:" + Low(pCube->GetCubeTexture()) + " this:" + Low(pCube) + "\n");
        EXPECT_EQ(DeviceLines(), calls);
        EXPECT_EQ(m_Trace.LinesContaining("UMDRscCubeTexture::Create"), traces);
        EXPECT_EQ(KernelLines(), Lines{"pfnAllocateCb(resource:abcde0 count:1)"});
        EXPECT_EQ(pCube->GetSurface(6, 0), nullptr);
        EXPECT_EQ(pCube->GetSurface(0xFFFFFFFF, 0xFFFFFFFF), nullptr);
        EXPECT_EQ(pCube->GetSurface(0x80000000, 0), nullptr);
        EXPECT_EQ(pCube->GetTexture(), nullptr);
        DestroyAll();
    }
}

TEST_F(UMDRscCubeTextureTest, Create_SurfaceCountOfNoCube_IsRefusedBeforeAnyCall)
{
    for (UINT count : {1U, 5U, 55U, 60U, 66U, 6000U})
    {
        CreateRequest request(kFlagCubeMap, kVideo, D3DDDIFMT_A8R8G8B8, 256, 256, 1);
        request.m_Surfaces.resize(count, request.m_Surfaces.front());
        request.m_Arg.pSurfList = request.m_Surfaces.data();
        request.m_Arg.SurfCount = count;
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL); }),
            Lines{"UMDRscCubeTexture::Create failed! m_SurfCount = " + std::to_string(count) + "\n"});
    }
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
}

TEST_F(UMDRscCubeTextureTest, Create_CountThatSixDoesNotDivide_FailsAtTheFaceThatIsNone)
{
    CreateRequest request(kFlagCubeMap, kVideo, D3DDDIFMT_A8R8G8B8, 16, 16, 1);
    request.m_Surfaces.push_back(request.m_Surfaces.front());
    request.m_Arg.pSurfList = request.m_Surfaces.data();
    request.m_Arg.SurfCount = 7;
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL); }),
        Lines{"UMDRscCubeTexture::Create GetCubeMapSurface failed! 0x8876086c\n"});
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(UMDRscCubeTextureTest, Destroy_AnyNumberOfTimes_ReleasesEveryReferenceOnce)
{
    CreateRequest request(kFlagCubeMap, kVideo, D3DDDIFMT_A8R8G8B8, 16, 16, 3);
    auto* pCube = Create<UMDRscCubeTexture>(request);
    auto& fake = m_Fake.Find<FakeCubeTexture>("cube#1");
    fake.AddRef();
    EXPECT_EQ(fake.ReferenceCount(), 20U);  // the object's, 18 surfaces', the test's
    const std::string first = "UMDRscCubeTexture::Destroy() m_pTexture:" + Low(pCube->GetCubeTexture()) + "\n";
    pCube->Destroy();
    pCube->Destroy();
    EXPECT_EQ(fake.ReferenceCount(), 1U);
    EXPECT_EQ(m_Trace.Count(first), 1U);
    EXPECT_EQ(m_Kernel.Calls("pfnDeallocateCb"), 1U);
    EXPECT_EQ(pCube->GetSurface(0, 0), nullptr);
    fake.Release();
}

TEST_F(UMDRscCubeTextureTest, Lock_AllPaths_LockFaceZeroLevelZero)
{
    CreateRequest request(kFlagCubeMap, kSystem, D3DDDIFMT_A8R8G8B8, 16, 16, 2);
    auto* pCube = Create<UMDRscCubeTexture>(request);
    ForgetCalls();
    void* pData = this;
    UINT pitch = 77;
    EXPECT_EQ(pCube->Lock(0, 0, 0, &pData, &pitch, 0), S_OK);
    EXPECT_EQ(pData, this);
    EXPECT_EQ(pCube->Unlock(), S_OK);
    EXPECT_EQ(pCube->Lock(1, 0, 0, &pData, &pitch, 0), S_OK);
    EXPECT_EQ(pData, m_Fake.Find<FakeCubeTexture>("cube#1").Level(0, 0).Pixels().Bytes().data());
    EXPECT_EQ(pitch, 64U);
    EXPECT_EQ(pCube->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"cube#1.LockRect(0, 0, out, null, 0)", "cube#1.UnlockRect(0, 0)"}));
    const std::string low = Low(pCube->GetCubeTexture());
    const std::string lock = "   Lock: CubeTexture " + low + "\n", unlock = "   Unlock: CubeTexture " + low + "\n";
    EXPECT_EQ(m_Trace.Lines(), (Lines{lock, unlock, lock, unlock}));

    m_Fake.Fail("cube.LockRect", kRefused, 1);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pCube->Lock(1, 0, 0, &pData, &pitch, 0), kRefused); }),
        Lines{"UMDRscCubeTexture::Lock LockRect failed!\n"});
    ASSERT_EQ(pCube->Lock(1, 0, 0, &pData, &pitch, 0), S_OK);
    m_Fake.Fail("cube.UnlockRect", kRefused, 1);
    EXPECT_EQ(
        ErrorsOf([&] { EXPECT_EQ(pCube->Unlock(), S_OK); }), Lines{"UMDRscCubeTexture::Lock UnlockRect failed!\n"});
    ForgetCalls();
    EXPECT_EQ(pCube->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{}) << "it counts as unlocked all the same";
    pCube->Destroy();
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pCube->Lock(1, 0, 0, &pData, &pitch, 0), E_FAIL); }),
        Lines{"UMDRscCubeTexture::Lock NULL == m_pTexture!\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pCube->Unlock(), E_FAIL); }), Lines{});
}

TEST_F(UMDRscCubeTextureTest, WriteToAndFromDelegated_EveryFaceAndLevel_MoveThatSubResource)
{
    CreateRequest request(kFlagCubeMap, kSystem, D3DDDIFMT_A8R8G8B8, 8, 8, 3);
    request.WithMemory(4, 4);
    auto* pCube = Create<UMDRscCubeTexture>(request);
    auto& fake = m_Fake.Find<FakeCubeTexture>("cube#1");
    for (UINT index = 0; index < 18; index++)
    {
        std::vector<BYTE>& pixels = fake.Level(index / 3, index % 3).Pixels().Bytes();
        const UINT edge = 8U >> (index % 3);
        EXPECT_EQ(pCube->WriteToDelegated(index, nullptr), S_OK);
        for (UINT y = 0; y < edge; y++)
            ASSERT_EQ(memcmp(&pixels[y * edge * 4], &request.Memory(index)[y * (edge * 4 + 4)], edge * 4), 0);
        std::fill(pixels.begin(), pixels.end(), static_cast<BYTE>(index + 1));
        EXPECT_EQ(pCube->WriteFromDelegated(index), S_OK);
        ASSERT_EQ(request.Memory(index).front(), index + 1);
    }
    EXPECT_EQ(pCube->WriteToDelegated(18, nullptr), E_FAIL);
    EXPECT_EQ(pCube->WriteFromDelegated(18), E_FAIL);
}

TEST_F(UMDRscCubeTextureTest, TexBlt_SystemToVideo_UpdatesTheWholeAndNothingElse)
{
    CreateRequest srcRequest(kFlagCubeMap, kSystem, D3DDDIFMT_A8R8G8B8, 8, 8, 2);
    CreateRequest dstRequest(kFlagCubeMap, kVideo, D3DDDIFMT_A8R8G8B8, 8, 8, 2);
    srcRequest.WithMemory(4, 0);
    auto* pSrc = Create<UMDRscCubeTexture>(srcRequest);
    auto* pDst = Create<UMDRscCubeTexture>(dstRequest);
    ForgetCalls();
    const RECT rect = {1, 1, 3, 3};
    EXPECT_EQ(pSrc->TexBlt(&rect, pDst, &rect), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"UpdateTexture(cube#1, cube#2)"});
    const std::string line = Text(
        "UMDRscCubeTexture::TexBlt DST Resource:0x%x Pool:0 IsRenderTarget:0 SRC Resource:0x%x Pool:2 IsRenderTarget:0\n",
        UMDLow32(pDst), UMDLow32(pSrc));
    EXPECT_EQ(m_Trace.Lines(), Lines{line});
    m_Fake.Fail("UpdateTexture", kRefused, 1);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSrc->TexBlt(&rect, pDst, &rect), kRefused); }),
        Lines{"UMDRscCubeTexture::TexBlt UpdateTexture failed 0x8876086a\n"});
}

TEST_F(UMDRscCubeTextureTest, TexBlt_OtherPoolsOrNoCube_IsRefused)
{
    const struct
    {
        D3DDDI_POOL SrcPool, DstPool;
        UINT DstFlags;
        const char* pError;
    } rows[] = {{kVideo, kVideo, kFlagCubeMap, "UMDRscCubeTexture::TexBlt failed! SRC Pool:0 DST Pool:0\n"},
        {kVideo, kSystem, kFlagCubeMap, "UMDRscCubeTexture::TexBlt failed! SRC Pool:0 DST Pool:2\n"},
        {kSystem, kSystem, kFlagCubeMap, "UMDRscCubeTexture::TexBlt failed! SRC Pool:2 DST Pool:2\n"},
        {kSystem, kVideo, kFlagTexture, "UMDRscCubeTexture::TexBlt failed! SRC Pool:2 DST Pool:0\n"}};
    const RECT rect = {0, 0, 4, 4};
    for (const auto& row : rows)
    {
        CreateRequest srcRequest(kFlagCubeMap, row.SrcPool, D3DDDIFMT_A8R8G8B8, 8, 8);
        CreateRequest dstRequest(row.DstFlags, row.DstPool, D3DDDIFMT_A8R8G8B8, 8, 8);
        auto* pSrc = Create<UMDRscCubeTexture>(srcRequest);
        UMDRscBase* pDst = CreateAny(dstRequest);
        ForgetCalls();
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSrc->TexBlt(&rect, pDst, &rect), E_FAIL); }), Lines{row.pError});
        EXPECT_EQ(DeviceLines(), Lines{});
    }
}

TEST_F(UMDRscCubeTextureTest, Life_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagCubeMap, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8, 2);
    Lines lines = {"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"};
    for (int i = 0; i < 12; ++i)
    {
        const int size = i % 2 ? 4 : 8;
        const std::string line =
            Text("0x200 UMDRscCubeTexture::Create %02d Face:%02d Level:%02d 0x# Width:%d Height:%d\n", i, i / 2, i % 2,
                size, size);
        lines.push_back(line);
    }
    lines.insert(
        lines.end(), {"0x22    KMode Handle - m_hAllocation:0x# m_hKMResource:0x#\n",
                         "0x200 UMDRscCubeTexture::Create m_pTexture:0x# this:0x#\n", "0x20    Lock: CubeTexture 0x#\n",
                         "0x20    Unlock: CubeTexture 0x#\n", "0x200 UMDRscCubeTexture::Destroy() m_pTexture:0x#\n",
                         "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"});
    void* pData = nullptr;
    UINT pitch = 0;
    EXPECT_EQ(LevelledTrace([&] {
        UMDRscCubeTexture cube(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE, 0, D3DPOOL_DEFAULT);
        cube.Create();
        cube.Lock(1, 0, 0, &pData, &pitch, 0);
        cube.Unlock();
        cube.Destroy();
    }),
        lines);
}
