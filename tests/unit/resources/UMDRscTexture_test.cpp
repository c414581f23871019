// Textures: creation with all levels, locks, uploads and refreshes of the runtime's memory, copies into the allocation.
#include "ResourceFixture.h"
#include "TraceLevels.h"
#include "TraceText.h"

#include "resources/UMDRscTexture.h"

#include <algorithm>

using namespace tesslo::test;

namespace
{
class UMDRscTextureTest : public ResourceFixture
{
protected:
    FakePixels& Level(UINT level)
    {
        return m_Fake.Find<FakeTexture>(m_Fake.LiveObjects().front()).Level(level).Pixels();
    }
};

}  // namespace

TEST_F(UMDRscTextureTest, Create_OneToElevenLevels_FetchesEachAndSelectsByLevel)
{
    for (UINT levels = 1; levels <= 11; levels++)
    {
        CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 1024, 512, levels);
        ForgetCalls();
        auto* pTexture = Create<UMDRscTexture>(request);
        const std::string name = m_Fake.LiveObjects().front();
        Lines expected = {"CreateTexture(1024, 512, " + std::to_string(levels) + ", 0, 21, 2, out, null)"};
        for (UINT level = 0; level < levels; level++)
            expected.push_back(name + ".GetSurfaceLevel(" + std::to_string(level) + ", out)");
        EXPECT_EQ(DeviceLines(), expected);
        for (UINT face : {0U, 3U, 0xFFFFFFFFU})
        {
            for (UINT level = 0; level < levels; level++)
                EXPECT_EQ(pTexture->GetSurface(face, level), &m_Fake.Find<FakeTexture>(name).Level(level));
            for (UINT level : {levels, 11U, 12U, 54U, 0x7FFFFFFFU, 0xFFFFFFFFU})
                EXPECT_EQ(pTexture->GetSurface(face, level), nullptr);
        }
        DestroyAll();
    }
}

TEST_F(UMDRscTextureTest, GetSurface_BeyondTheTable_IsNull)
{
    m_Fake.SetSharedHandle(reinterpret_cast<HANDLE>(UINT_PTR{0x42}));
    CreateRequest request(kFlagTexture | kFlagRenderTarget | kFlagSharedResource, D3DDDIPOOL_LOCALVIDMEM,
        D3DDDIFMT_A8R8G8B8, 1024, 1024, 11);
    auto* pTexture = Create<UMDRscTexture>(request);
    EXPECT_NE(pTexture->GetSurface(0, 10), nullptr);
    for (UINT level : {11U, 12U, 0xFFFFFFFFU})
        EXPECT_EQ(pTexture->GetSurface(0, level), nullptr) << level;
}

TEST_F(UMDRscTextureTest, Create_MoreThanElevenLevels_IsRefusedBeforeAnyCall)
{
    for (UINT levels : {12U, 13U, 31U})
    {
        CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 4096, 4096, levels);
        HRESULT hr = S_OK;
        EXPECT_EQ(ErrorsOf([&] { hr = UMDDdiCreateResource(DeviceHandle(), &request.m_Arg); }),
            Lines{"UMDRscTexture::Create failed! m_SurfCount = " + std::to_string(levels) + "\n"});
        EXPECT_EQ(hr, E_FAIL);
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDRscTextureTest, Create_SharedAndTarget_TracesHandlesAndForcesPoolAndUsage)
{
    m_Fake.SetSharedHandle(reinterpret_cast<HANDLE>(0x7700000040000042));
    CreateRequest request(kFlagTexture | kFlagRenderTarget | kFlagSharedResource | kFlagDynamic, D3DDDIPOOL_SYSTEMMEM,
        D3DDDIFMT_A8R8G8B8, 8, 8);
    auto* pTexture = Create<UMDRscTexture>(request);
    EXPECT_EQ(DeviceLines().front(), "CreateTexture(8, 8, 1, 1, 21, 0, out, out)");
    EXPECT_EQ(m_Fake.LastSharedHandle(), nullptr);
    EXPECT_EQ(pTexture->GetPool(), D3DPOOL_DEFAULT);
    EXPECT_EQ(pTexture->GetFormat(), D3DDDIFMT_A8R8G8B8);
    EXPECT_TRUE(pTexture->IsRenderTarget());
    EXPECT_FALSE(pTexture->IsOffscreenPlain());
    const Lines lines = m_Trace.LinesContaining("UMDRscTexture::Create Resource:" + Low(pTexture) + " m_pTexture " +
                                                Low(pTexture->GetTexture()) +
                                                " m_bIsRenderTarget 1 m_bIsSharedResource 1 pSharedHandle=0x");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].ends_with(" *pSharedHandle=0x40000042\n"));
    EXPECT_EQ(KernelLines(), Lines{"pfnAllocateCb(resource:abcde0 count:1)"});
}

TEST_F(UMDRscTextureTest, Create_NotShared_TracesNullHandles)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 8, 8);
    auto* pTexture = Create<UMDRscTexture>(request);
    EXPECT_EQ(
        m_Trace.Count("UMDRscTexture::Create Resource:" + Low(pTexture) + " m_pTexture " + Low(pTexture->GetTexture()) +
                      " m_bIsRenderTarget 0 m_bIsSharedResource 0 pSharedHandle=0x0 *pSharedHandle=0x0\n"),
        1U);
}

TEST_F(UMDRscTextureTest, Destroy_AnyNumberOfTimes_ReleasesEveryReferenceOnce)
{
    CreateRequest request(
        kFlagTexture | kFlagRenderTarget | kFlagSharedResource, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 16, 16, 5);
    auto* pTexture = Create<UMDRscTexture>(request);
    const std::string name = m_Fake.LiveObjects().front();
    auto& fake = m_Fake.Find<FakeTexture>(name);
    fake.AddRef();
    EXPECT_EQ(fake.ReferenceCount(), 7U);  // the object's, five levels', the test's
    const std::string low = Low(pTexture->GetTexture());
    m_Trace.Clear();
    pTexture->Destroy();
    pTexture->Destroy();
    EXPECT_EQ(fake.ReferenceCount(), 1U);
    EXPECT_EQ(
        m_Trace.LinesContaining("UMDRscTexture::Destroy"), Lines{"UMDRscTexture::Destroy m_pTexture:" + low + "\n"});
    EXPECT_EQ(m_Kernel.Calls("pfnDeallocateCb"), 1U);
    EXPECT_EQ(pTexture->GetTexture(), nullptr);
    EXPECT_EQ(pTexture->GetSurface(0, 0), nullptr);
    fake.Release();
}

TEST_F(UMDRscTextureTest, Lock_WithAndWithoutArea_LocksLevelZeroOrNothing)
{
    m_Fake.SetPitchPadding(12);
    CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 8, 8, 2);
    auto* pTexture = Create<UMDRscTexture>(request);
    ForgetCalls();
    void* pData = this;
    UINT pitch = 77;
    EXPECT_EQ(pTexture->Lock(0, 1, 2, &pData, &pitch, D3DLOCK_READONLY), S_OK);
    EXPECT_EQ(pData, this);
    EXPECT_EQ(pitch, 77U);
    EXPECT_EQ(pTexture->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});

    EXPECT_EQ(pTexture->Lock(1, 1, 2, &pData, &pitch, D3DLOCK_READONLY), S_OK);
    EXPECT_EQ(pData, Level(0).Bytes().data());
    EXPECT_EQ(pitch, 44U);
    EXPECT_EQ(pTexture->Unlock(), S_OK);
    EXPECT_EQ(pTexture->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"texture#1.LockRect(0, out, null, 0)", "texture#1.UnlockRect(0)"}));
    const std::string low = Low(pTexture->GetTexture());
    EXPECT_EQ(m_Trace.Lines(), (Lines{"   Lock: Texture " + low + " AreaValid:0\n", "   Unlock: Texture " + low + "\n",
                                   "   Lock: Texture " + low + " AreaValid:1\n", "   Unlock: Texture " + low + "\n",
                                   "   Unlock: Texture " + low + "\n"}));
}

TEST_F(UMDRscTextureTest, Lock_RefusedOrDestroyed_SaysSo)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 8, 8);
    auto* pTexture = Create<UMDRscTexture>(request);
    void* pData = nullptr;
    UINT pitch = 0;
    m_Fake.Fail("texture.LockRect", kRefused, 1);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->Lock(1, 0, 0, &pData, &pitch, 0), kRefused); }),
        Lines{"UMDRscTexture::Lock LockRect failed!\n"});
    ForgetCalls();
    EXPECT_EQ(pTexture->Unlock(), S_OK);  // not locked
    EXPECT_EQ(DeviceLines(), Lines{});

    ASSERT_EQ(pTexture->Lock(1, 0, 0, &pData, &pitch, 0), S_OK);
    m_Fake.Fail("texture.UnlockRect", kRefused, 1);
    EXPECT_EQ(
        ErrorsOf([&] { EXPECT_EQ(pTexture->Unlock(), S_OK); }), Lines{"UMDRscTexture::Lock UnlockRect failed!\n"});
    ForgetCalls();
    EXPECT_EQ(pTexture->Unlock(), S_OK);  // forgotten all the same
    EXPECT_EQ(DeviceLines(), Lines{});

    pTexture->Destroy();
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->Lock(1, 0, 0, &pData, &pitch, 0), E_FAIL); }),
        Lines{"UMDRscTexture::Lock NULL == m_pTexture!\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->Unlock(), E_FAIL); }), Lines{});
}

TEST_F(UMDRscTextureTest, WriteToAndFromDelegated_EveryLevelAndFormat_MoveExactlyThatLevel)
{
    const struct
    {
        D3DDDIFORMAT Format;
        UINT BytesPerPixel;
    } formats[] = {{D3DDDIFMT_A8R8G8B8, 4}, {D3DDDIFMT_R8G8B8, 3}, {D3DDDIFMT_R5G6B5, 2}, {D3DDDIFMT_L8, 1}};
    for (const auto& format : formats)
    {
        m_Fake.SetPitchPadding(5);
        CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, format.Format, 19, 9, 5);
        request.WithMemory(format.BytesPerPixel, 3);
        auto* pTexture = Create<UMDRscTexture>(request);
        for (UINT level = 0; level < 5; level++)
        {
            const RECT ignored = {0, 0, 1, 1};
            EXPECT_EQ(pTexture->WriteToDelegated(level, level ? &ignored : nullptr), S_OK);
            const UINT rowBytes = request.m_Surfaces[level].Width * format.BytesPerPixel;
            const UINT srcPitch = request.m_Surfaces[level].SysMemPitch;
            std::vector<BYTE>& memory = request.Memory(level);
            for (UINT y = 0; y < request.m_Surfaces[level].Height; y++)
            {
                ASSERT_EQ(memcmp(&Level(level).Bytes()[y * Level(level).Pitch()], &memory[y * srcPitch], rowBytes), 0);
                for (UINT x = rowBytes; x < Level(level).Pitch(); x++)
                    ASSERT_EQ(Level(level).Bytes()[y * Level(level).Pitch() + x], 0);
            }
            for (UINT other = level + 1; other < 5; other++)
                ASSERT_EQ(
                    std::ranges::count(Level(other).Bytes(), 0), static_cast<ptrdiff_t>(Level(other).Bytes().size()));

            const std::vector<BYTE> before = memory;
            for (BYTE& byte : Level(level).Bytes())
                byte = static_cast<BYTE>(~byte);
            EXPECT_EQ(pTexture->WriteFromDelegated(level), S_OK);
            for (UINT y = 0; y < request.m_Surfaces[level].Height; y++)
                for (UINT x = 0; x < srcPitch; x++)
                    ASSERT_EQ(memory[y * srcPitch + x],
                        x < rowBytes ? static_cast<BYTE>(~before[y * srcPitch + x]) : before[y * srcPitch + x]);
        }
        DestroyAll();
    }
}

TEST_F(UMDRscTextureTest, WriteToDelegated_RectangleOfLevelZero_UploadsOnlyIt)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 8, 8);
    request.WithMemory(4, 4);
    auto* pTexture = Create<UMDRscTexture>(request);
    const RECT rect = {2, 3, 5, 7};
    EXPECT_EQ(pTexture->WriteToDelegated(0, &rect), S_OK);
    for (UINT y = 0; y < 8; y++)
        for (UINT x = 0; x < 8; x++)
            ASSERT_EQ(Level(0).Bytes()[y * 32 + x * 4],
                x >= 2 && x < 5 && y >= 3 && y < 7 ? request.Memory(0)[y * 36 + x * 4] : 0);
}

TEST_F(UMDRscTextureTest, WriteBeyondTheLastLevel_IsRefusedWithTheKnownTexts)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 8, 8, 2);
    request.WithMemory(4, 0);
    auto* pTexture = Create<UMDRscTexture>(request);
    ForgetCalls();
    for (UINT level : {2U, 3U, 11U, 0xFFFFFFFFU})
    {
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->WriteToDelegated(level, nullptr), E_FAIL); }),
            Lines{"UMDRscTexture::WriteToDelegated failed! m_SurfCount >= StreamOffset\n"});
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->WriteFromDelegated(level), E_FAIL); }),
            Lines{"UMDRscTexture::WriteFromDelegated failed! m_SurfCount >= StreamOffset\n"});
    }
    EXPECT_EQ(DeviceLines(), Lines{});
    m_Trace.Clear();
    pTexture->WriteToDelegated(1, nullptr);
    pTexture->WriteFromDelegated(1);
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDRscTexture::WriteToDelegated 1\n", "UMDRscTexture::WriteFromDelegated 1\n"}));
}

TEST_F(UMDRscTextureTest, WriteToAndFromDelegated_EachCallFails_ReturnsItsCode)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 8, 8, 2);
    request.WithMemory(4, 0);
    UMDRscTexture* pTexture = nullptr;
    auto prepare = [&] { pTexture = Create<UMDRscTexture>(request); };
    ExpectFailures(
        {{"texture.LockRect", 1, kRefused, {"UMDRscTexture::WriteToDelegated LockRect failed! 0x8876086a\n"}},
            {"texture.UnlockRect", 1, kRefused, {"UMDRscTexture::WriteToDelegated UnlockRect failed! 0x8876086a\n"}}},
        prepare, [&] { return pTexture->WriteToDelegated(1, nullptr); });
    ExpectFailures(
        {{"texture.LockRect", 1, kRefused, {"UMDRscTexture::WriteFromDelegated LockRect failed! 0x8876086a\n"}},
            {"texture.UnlockRect", 1, kRefused, {"UMDRscTexture::WriteFromDelegated UnlockRect failed! 0x8876086a\n"}}},
        prepare, [&] { return pTexture->WriteFromDelegated(1); });
}

TEST_F(UMDRscTextureTest, CopyFrom_SharedTarget_WritesTheAllocationPackedAndEachFailureReturns)
{
    CreateRequest request(
        kFlagTexture | kFlagRenderTarget | kFlagSharedResource, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 3);
    auto* pTexture = Create<UMDRscTexture>(request);
    std::vector<BYTE> source(9 * 4 * 4);
    for (size_t i = 0; i < source.size(); i++)
        source[i] = static_cast<BYTE>(i * 3 + 1);
    EXPECT_EQ(pTexture->CopyFrom(source.data(), 9, 4, 4, 36), S_OK);
    for (UINT y = 0; y < 3; y++)
        EXPECT_EQ(memcmp(&m_Kernel.FindAllocation(1).m_Memory[y * 20], &source[y * 36], 20), 0);
    EXPECT_EQ(m_Kernel.FindAllocation(1).m_Memory[60], 0);
    DestroyAll();

    // Less than the texture: three pixels of two rows, the third cut short by the pitch in the last case.
    D3DKMT_HANDLE hAllocation = 1;
    for (const auto& [pitch, pixels] : {std::pair{36U, 3U}, {11U, 2U}})
    {
        pTexture = Create<UMDRscTexture>(request);
        EXPECT_EQ(pTexture->CopyFrom(source.data(), 3, 2, 4, pitch), S_OK);
        const std::vector<BYTE>& memory = m_Kernel.FindAllocation(++hAllocation).m_Memory;
        for (UINT y = 0; y < 4; y++)
            for (UINT x = 0; x < 20; x++)
                ASSERT_EQ(memory[y * 20 + x], y < 2 && x < pixels * 4 ? source[y * pitch + x] : 0) << x << ' ' << y;
        DestroyAll();
    }

    ExpectFailures(
        {{"pfnLockCb", 1, kRefused,
             {"UMDRscRenderTargetCapable::KernelModeLockCb pfnLockCb failed! 0x8876086a\n",
                 "UMDRscTexture::CopyFrom KernelModeLockCb failed! 0x8876086a\n"}},
            {"pfnUnlockCb", 1, kRefused,
                {"UMDRscRenderTargetCapable::KernelModeUnlockCb pfnUnlockCb failed! 0x8876086a\n",
                    "UMDRscTexture::CopyFrom KernelModeUnlockCb failed! 0x8876086a\n"}}},
        [&] { pTexture = Create<UMDRscTexture>(request); },
        [&] { return pTexture->CopyFrom(source.data(), 5, 3, 4, 36); });
}

TEST_F(UMDRscTextureTest, CopyFromAndTo_NoAllocation_AreRefused)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 3);
    auto* pTexture = Create<UMDRscTexture>(request);
    BYTE pixels[60] = {};
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->CopyFrom(pixels, 5, 3, 4, 20), E_FAIL); }),
        Lines{"UMDRscTexture::CopyFrom m_hAllocation is NULL\n"});
    EXPECT_EQ(pTexture->CopyTo(pixels, 5, 3, 4, 20), E_NOTIMPL);
}

TEST_F(UMDRscTextureTest, Life_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagTexture, kSystem, D3DDDIFMT_X8R8G8B8, 8, 4);
    request.WithMemory(4, 0);
    void* pData = nullptr;
    UINT pitch = 0;
    EXPECT_EQ(LevelledTrace([&] {
        UMDRscTexture texture(&Device(), request.m_Arg.hResource, &request.m_Arg,
            UMDRscTextureTraits{FALSE, 0, D3DPOOL_SYSTEMMEM, UMDRESOURCETYPE_TEXTURE});
        texture.Create();
        texture.Lock(1, 0, 0, &pData, &pitch, 0);
        texture.Unlock();
        texture.WriteToDelegated(0, nullptr);
        texture.WriteFromDelegated(0);
        texture.Destroy();
    }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x20 UMDRscTexture::Create Resource:0x# m_pTexture 0x# m_bIsRenderTarget 0 m_bIsSharedResource 0 pSharedHandle=0x# *pSharedHandle=0x#\n",
            "0x20    Lock: Texture 0x# AreaValid:1\n", "0x20    Unlock: Texture 0x#\n",
            "0x200 UMDRscTexture::WriteToDelegated 0\n", "0x200 UMDRscTexture::WriteFromDelegated 0\n",
            "0x200 UMDRscTexture::Destroy m_pTexture:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}
