// The kernel-mode callbacks and the read-back of the delegated render target.
#include "ResourceFixture.h"
#include "TraceLevels.h"
#include "TraceText.h"

#include "resources/UMDRscSurface.h"

using namespace tesslo::test;

namespace
{
constexpr HRESULT kOutOfVideoMemory = D3DERR_OUTOFVIDEOMEMORY;
const HANDLE kContext = reinterpret_cast<HANDLE>(0x7000);

class UMDRscRenderTargetCapableTest : public ResourceFixture
{
protected:
    void SetUp() override
    {
        ResourceFixture::SetUp();
        m_pTarget = Create<UMDRscSurface>(m_Request);
        BindTarget();
        ForgetCalls();
    }

    void TearDown() override
    {
        m_Fake.SetRenderTarget(0, nullptr);
        ResourceFixture::TearDown();
    }

    void BindTarget() { m_Fake.SetRenderTarget(0, m_pTarget->GetSurface(0, 0)); }

    ULONG TargetReferences() { return m_Fake.Find<FakeSurface>(m_TargetName).ReferenceCount(); }
    /// Releases what read-backs have left with the target.
    void ReleaseLeft(ULONG count)
    {
        for (ULONG i = 0; i < count; i++)
            m_Fake.Find<FakeSurface>(m_TargetName).Release();
    }

    /// A read-back that the delegated device refuses. @param pCall the refused one. @param left references that stay.
    void ExpectDataLockRefused(const char* pCall, const Lines& errors, ULONG left)
    {
        const ULONG before = TargetReferences();
        m_Fake.Fail(pCall, kRefused);
        IDirect3DSurface9* pSurface = nullptr;
        D3DLOCKED_RECT locked = {};
        D3DSURFACE_DESC desc = {};
        EXPECT_EQ(
            ErrorsOf([&] { EXPECT_EQ(m_pTarget->RenderTargetDataLock(&pSurface, &locked, &desc), kRefused); }), errors);
        EXPECT_EQ(TargetReferences(), before + left);
        m_Fake.ClearScripts();
        ReleaseLeft(left);
    }

    /// A blit present of which a call fails: what it answers and leaves, and that it leaves no lock.
    void ExpectPresentBlt(
        FakeRecorder& recorder, const char* pRefused, HRESULT expected, const Lines& errors, ULONG left)
    {
        recorder.Fail(pRefused, kRefused, 1);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(m_pTarget->KernelModePresentCbBLT(kContext), expected); }), errors);
        EXPECT_EQ(TargetReferences(), 2U + left);
        ReleaseLeft(left);
        if (left)
        {
            EXPECT_FALSE(m_Fake.Find<FakeSurface>("surface#2").Pixels().IsLocked());
        }
        m_Kernel.FindAllocation(1).m_bLocked = false;  // a refused unlock's
    }

    CreateRequest m_Request{kFlagRenderTarget | kFlagPrimary, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 3};
    UMDRscSurface* m_pTarget = nullptr;
    std::string m_TargetName = "surface#1";
};
}  // namespace

TEST_F(UMDRscRenderTargetCapableTest, Callbacks_Success_PassTheAllocationAndTheRuntimesHandles)
{
    EXPECT_EQ(m_pTarget->KernelModeSetDisplayModeCb(), S_OK);
    void* pData = nullptr;
    EXPECT_EQ(m_pTarget->KernelModeLockCb(&pData), S_OK);
    EXPECT_EQ(pData, m_Kernel.FindAllocation(1).m_Memory.data());
    EXPECT_EQ(m_pTarget->KernelModeUnlockCb(), S_OK);
    EXPECT_EQ(m_pTarget->KernelModePresentCb(kContext), S_OK);
    EXPECT_EQ(KernelLines(), (Lines{"pfnSetDisplayModeCb(allocation:1)", "pfnLockCb(allocation:1 flags:0x10)",
                                 "pfnUnlockCb(count:1 first:1)", "pfnPresentCb(src:1 dst:0 context:7000)"}));
}

TEST_F(UMDRscRenderTargetCapableTest, Callbacks_Refused_AreTracedAndReturnedOrSwallowed)
{
    void* const pUntouched = this;
    void* pData = pUntouched;
    const struct
    {
        const char* pCallback;
        HRESULT Code;
        std::function<HRESULT()> Operation;
        HRESULT Expected;
        std::string Error;
    } rows[] = {
        {"pfnSetDisplayModeCb", kRefused, [&] { return m_pTarget->KernelModeSetDisplayModeCb(); }, kRefused,
            "UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb pfnSetDisplayModeCb failed! 0x8876086a \n"},
        {"pfnSetDisplayModeCb", E_OUTOFMEMORY, [&] { return m_pTarget->KernelModeSetDisplayModeCb(); }, E_OUTOFMEMORY,
            "UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb pfnSetDisplayModeCb failed! 0x8007000e OUT OF MEMORY!!!\n"},
        {"pfnLockCb", kRefused, [&] { return m_pTarget->KernelModeLockCb(&pData); }, kRefused,
            "UMDRscRenderTargetCapable::KernelModeLockCb pfnLockCb failed! 0x8876086a\n"},
        {"pfnUnlockCb", kRefused, [&] { return m_pTarget->KernelModeUnlockCb(); }, kRefused,
            "UMDRscRenderTargetCapable::KernelModeUnlockCb pfnUnlockCb failed! 0x8876086a\n"},
        {"pfnPresentCb", kRefused, [&] { return m_pTarget->KernelModePresentCb(kContext); }, S_OK,
            "UMDRscRenderTargetCapable::KernelModePresentCb pfnPresentCb failed! 0x8876086a\n"},
        {"pfnPresentCb", kRefused, [&] { return m_pTarget->KernelModePresentCbFLIP(kContext); }, S_OK,
            "UMDRscRenderTargetCapable::KernelModePresentCb pfnPresentCb failed! 0x8876086a\n"},
    };
    for (const auto& row : rows)
    {
        m_Kernel.ClearScripts();
        m_Kernel.Fail(row.pCallback, row.Code);
        HRESULT hr = S_FALSE;
        EXPECT_EQ(ErrorsOf([&] { hr = row.Operation(); }), Lines{row.Error});
        EXPECT_EQ(hr, row.Expected) << row.pCallback;
    }
    EXPECT_EQ(pData, pUntouched);
}

TEST_F(UMDRscRenderTargetCapableTest, SetDisplayMode_AnyObject_TracesItsHandles)
{
    m_pTarget->KernelModeSetDisplayModeCb();
    const std::string line = Text(
        "UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb DeviceContext:0x%x Resource:0x%x VidPnSourceId:0 m_hAllocation:0x1\n",
        UMDLow32(&Device()), UMDLow32(m_pTarget));
    EXPECT_EQ(m_Trace.Lines(), Lines{line});
}

TEST_F(UMDRscRenderTargetCapableTest, Allocate_Refused_ObjectGoesOnWithHandleZeroAndGivesItBackOnce)
{
    const struct
    {
        HRESULT Code;
        const char* pError;
    } rows[] = {
        {kOutOfVideoMemory,
            "UMDRscRenderTargetCapable::KernelModeAllocateCb pfnAllocateCb failed! hResult 0x8876017c OUT OF VIDEO MEMORY!!!\n"},
        {kRefused, "UMDRscRenderTargetCapable::KernelModeAllocateCb pfnAllocateCb failed! hResult 0x8876086a \n"},
    };
    for (const auto& row : rows)
    {
        m_Kernel.Fail("pfnAllocateCb", row.Code, 1);
        CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
        UMDRscSurface* pSurface = nullptr;
        EXPECT_EQ(ErrorsOf([&] { pSurface = Create<UMDRscSurface>(request); }), Lines{row.pError});
        ForgetCalls();
        BYTE pixels[64] = {};
        EXPECT_EQ(pSurface->CopyFrom(pixels, 4, 4, 4, 16), E_FAIL);
        EXPECT_EQ(KernelLines(), Lines{});
        void* pData = nullptr;
        EXPECT_EQ(pSurface->KernelModeLockCb(&pData), E_INVALIDARG);
        EXPECT_EQ(pSurface->KernelModePresentCb(kContext), S_OK);
        Destroy(pSurface);
        EXPECT_EQ(KernelLines(), (Lines{"pfnLockCb(allocation:0 flags:0x10)", "pfnPresentCb(src:0 dst:0 context:7000)",
                                     "pfnDeallocateCb(resource:abcde0 count:1 first:0)"}));
    }
}

TEST_F(UMDRscRenderTargetCapableTest, Allocate_Success_TracesTheHandlesAtBothLevels)
{
    for (UINT bit : {UMDTRACE_DDI, UMDTRACE_RESOURCE})
    {
        const TraceMask mask(bit);
        m_Trace.Clear();
        CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
        CreateAny(request);
        const std::string handle = bit == UMDTRACE_DDI ? "0x2" : "0x3";
        EXPECT_EQ(m_Trace.Count("   KMode Handle - m_hAllocation:" + handle + " m_hKMResource:" + handle + "\n"), 1U);
    }
}

TEST_F(UMDRscRenderTargetCapableTest, Destroy_Twice_GivesTheAllocationBackOnceEvenWhenRefused)
{
    m_Kernel.Fail("pfnDeallocateCb", kRefused, 1);
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    EXPECT_EQ(ErrorsOf([&] { pSurface->Destroy(); }),
        Lines{"UMDRscRenderTargetCapable::KernelModeDellocateCb pfnDeallocateCb failed! hResult 0x8876086a\n"});
    EXPECT_EQ(ErrorsOf([&] { pSurface->Destroy(); }), Lines{});
    EXPECT_EQ(m_Kernel.Calls("pfnDeallocateCb"), 1U);
    pSurface->KernelModeDellocateCb();  // what the kernel refused above
}

TEST_F(UMDRscRenderTargetCapableTest, PresentFlip_AnyResult_PausesTenMilliseconds)
{
    LARGE_INTEGER frequency, start, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    constexpr int kRounds = 10;
    for (int i = 0; i < kRounds; i++)
        EXPECT_EQ(m_pTarget->KernelModePresentCbFLIP(kContext), S_OK);
    QueryPerformanceCounter(&end);
    // A sleep may end early by a tick of the system's clock, never by a whole pause.
    const double milliseconds =
        1000.0 * static_cast<double>(end.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
    EXPECT_GE(milliseconds, 9.0 * kRounds);
    EXPECT_EQ(m_Kernel.Calls("pfnPresentCb"), static_cast<size_t>(kRounds));
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_Twice_ReusesTheSurfaceAndLeavesOneReferenceEach)
{
    auto& pixels = m_Fake.Find<FakeSurface>(m_TargetName).Pixels().Bytes();
    for (size_t i = 0; i < pixels.size(); i++)
        pixels[i] = static_cast<BYTE>(i * 3 + 1);
    const ULONG before = TargetReferences();

    for (ULONG round = 1; round <= 2; round++)
    {
        IDirect3DSurface9* pSurface = nullptr;
        D3DLOCKED_RECT locked = {};
        D3DSURFACE_DESC desc = {};
        ASSERT_EQ(m_pTarget->RenderTargetDataLock(&pSurface, &locked, &desc), S_OK);
        EXPECT_EQ(desc.Width, 5U);
        EXPECT_EQ(desc.Height, 3U);
        EXPECT_EQ(desc.Format, D3DFMT_A8R8G8B8);
        EXPECT_EQ(memcmp(locked.pBits, pixels.data(), pixels.size()), 0);
        EXPECT_EQ(static_cast<IUnknown*>(pSurface), static_cast<IUnknown*>(&m_Fake.Find<FakeSurface>("surface#2")));
        EXPECT_EQ(m_Fake.Find<FakeSurface>("surface#2").ReferenceCount(), 1U);
        m_pTarget->RenderTargetDataUnlock(&pSurface);
        EXPECT_FALSE(m_Fake.Find<FakeSurface>("surface#2").Pixels().IsLocked());
        EXPECT_EQ(TargetReferences(), before + round);
    }
    EXPECT_EQ(DeviceLines(),
        (Lines{"GetRenderTarget(0, out)", "surface#1.GetDesc(out)",
            "CreateOffscreenPlainSurface(5, 3, 21, 2, out, null)", "GetRenderTargetData(surface#1, surface#2)",
            "surface#2.LockRect(out, null, 0)", "surface#2.UnlockRect()", "GetRenderTarget(0, out)",
            "surface#1.GetDesc(out)", "surface#2.GetDesc(out)", "GetRenderTargetData(surface#1, surface#2)",
            "surface#2.LockRect(out, null, 0)", "surface#2.UnlockRect()"}));
    ReleaseLeft(2);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_OtherSizeOrFormat_MakesTheSurfaceAnew)
{
    const struct
    {
        UINT Width, Height;
        D3DDDIFORMAT Format;
    } rows[] = {{5, 3, D3DDDIFMT_A8R8G8B8}, {6, 3, D3DDDIFMT_A8R8G8B8}, {6, 4, D3DDDIFMT_A8R8G8B8},
        {6, 4, D3DDDIFMT_R5G6B5}, {6, 4, D3DDDIFMT_R5G6B5}};
    const size_t expectedCreations[] = {1, 2, 3, 4, 4};
    size_t creations = 0;
    for (size_t i = 0; i < std::size(rows); i++)
    {
        IDirect3DSurface9* pOther = nullptr;
        m_Fake.CreateRenderTarget(rows[i].Width, rows[i].Height, static_cast<D3DFORMAT>(rows[i].Format),
            D3DMULTISAMPLE_NONE, 0, FALSE, &pOther, nullptr);
        m_Fake.SetRenderTarget(0, pOther);
        ASSERT_NO_FATAL_FAILURE(ReadBack(*m_pTarget));
        creations = m_Fake.Calls("CreateOffscreenPlainSurface");
        EXPECT_EQ(creations, expectedCreations[i]);
        m_Fake.SetRenderTarget(0, nullptr);
        EXPECT_EQ(pOther->Release(), 1U);  // the one that the read-back left
        EXPECT_EQ(pOther->Release(), 0U);
    }
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_Success_TracesEveryStep)
{
    const TraceMask mask(UMDTRACE_DETAIL);
    IDirect3DSurface9* pSurface = nullptr;
    D3DLOCKED_RECT locked = {};
    D3DSURFACE_DESC desc = {};
    m_pTarget->RenderTargetDataLock(&pSurface, &locked, &desc);
    m_pTarget->RenderTargetDataUnlock(&pSurface);
    const std::string target = Text("0x%x", UMDLow32(m_pTarget->GetSurface(0, 0)));
    const std::string bits = Text("0x%x", UMDLow32(locked.pBits));
    const std::string prefix = ">>> UMDRscRenderTargetCapable::RenderTargetData";
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{prefix + "Lock\n", prefix + "Lock " + target + "\n", prefix + "Lock Width 0x5 Height 0x3\n",
            prefix + "Lock pRenderTarget " + target + "\n",
            std::string("UMDRscRenderTargetCapable::RenderTargetDataLock LockedRect.pBits ") + bits + "\n",
            prefix + "Unlock\n"}));
    ReleaseLeft(1);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_GetRenderTargetFails_ReturnsItsCode)
{
    ExpectDataLockRefused("GetRenderTarget",
        {"UMDRscRenderTargetCapable::RenderTargetDataLock GetRenderTarget failed! hResult: 0x8876086a\n"}, 0);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_GetDescOfTheTargetFails_ReturnsItsCode)
{
    ExpectDataLockRefused("surface#1.GetDesc",
        {"UMDRscRenderTargetCapable::RenderTargetDataLock GetDesc failed! hResult: 0x8876086a\n"}, 1);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_GetDescOfTheSurfaceFails_ReturnsItsCode)
{
    ASSERT_NO_FATAL_FAILURE(ReadBack(*m_pTarget));
    ExpectDataLockRefused("surface#2.GetDesc",
        {"UMDRscRenderTargetCapable::RenderTargetDataLock GetDesc failed! hResult: 0x8876086a\n"}, 1);
    ReleaseLeft(1);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_CreateOffscreenPlainSurfaceFails_ReturnsItsCode)
{
    ExpectDataLockRefused("CreateOffscreenPlainSurface",
        {"UMDRscRenderTargetCapable::RenderTargetDataLock CreateOffscreenPlainSurface failed! hResult: 0x8876086a\n"},
        1);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_GetRenderTargetDataFails_ReturnsItsCode)
{
    ExpectDataLockRefused("GetRenderTargetData",
        {"UMDRscRenderTargetCapable::RenderTargetDataLock GetRenderTargetData failed! hResult: 0x8876086a\n"}, 1);
}

TEST_F(UMDRscRenderTargetCapableTest, DataLock_LockRectFails_ReturnsItsCode)
{
    ExpectDataLockRefused("surface#2.LockRect",
        {"UMDRscRenderTargetCapable::RenderTargetDataLock LockRect failed! hResult: 0x8876086a\n",
            "INFO: D3DERR_INVALIDCALL == 0x8876086c  D3DERR_WASSTILLDRAWING == 0x8876021c \n"},
        1);
}

TEST_F(UMDRscRenderTargetCapableTest, DataUnlock_NullOrRefused_IsTraced)
{
    IDirect3DSurface9* pNone = nullptr;
    EXPECT_EQ(ErrorsOf([&] { m_pTarget->RenderTargetDataUnlock(&pNone); }),
        Lines{"UMDRscRenderTargetCapable::RenderTargetDataUnlock *ppRenderTarget is NULL\n"});
    m_Fake.Fail("surface.UnlockRect", kRefused);
    IDirect3DSurface9* pSurface = m_pTarget->GetSurface(0, 0);
    EXPECT_EQ(ErrorsOf([&] { m_pTarget->RenderTargetDataUnlock(&pSurface); }),
        Lines{"UMDRscRenderTargetCapable::RenderTargetDataUnlock UnlockRect failed! hResult: 0x8876086a\n"});
}

TEST_F(UMDRscRenderTargetCapableTest, PresentBlt_Success_WritesTheTargetIntoTheAllocationAndReports)
{
    m_Fake.SetPitchPadding(12);  // of the read-back surface
    auto& target = m_Fake.Find<FakeSurface>(m_TargetName).Pixels();
    for (size_t i = 0; i < target.Bytes().size(); i++)
        target.Bytes()[i] = static_cast<BYTE>(i * 3 + 1);
    EXPECT_EQ(m_pTarget->KernelModePresentCbBLT(kContext), S_OK);
    EXPECT_EQ(KernelLines(), (Lines{"pfnLockCb(allocation:1 flags:0x10)", "pfnUnlockCb(count:1 first:1)",
                                 "pfnPresentCb(src:1 dst:0 context:7000)"}));
    const std::vector<BYTE>& memory = m_Kernel.FindAllocation(1).m_Memory;
    EXPECT_EQ(memcmp(memory.data(), target.Bytes().data(), target.Bytes().size()), 0);
    EXPECT_EQ(memory[target.Bytes().size()], 0);
    EXPECT_EQ(TargetReferences(), 3U);  // the object's, the device's, and the one left
    ReleaseLeft(1);
}

TEST_F(UMDRscRenderTargetCapableTest, PresentBlt_ReadBackFails_ReturnsItsCode)
{
    ExpectPresentBlt(m_Fake, "GetRenderTarget", kRefused,
        {"UMDRscRenderTargetCapable::RenderTargetDataLock GetRenderTarget failed! hResult: 0x8876086a\n",
            "UMDRscRenderTargetCapable::KernelModePresentCbBLT RenderTargetDataLock failed! hResult: 0x8876086a\n"},
        0);
}

TEST_F(UMDRscRenderTargetCapableTest, PresentBlt_LockFails_UnlocksTheSurfaceAndReturnsItsCode)
{
    ExpectPresentBlt(m_Kernel, "pfnLockCb", kRefused,
        {"UMDRscRenderTargetCapable::KernelModeLockCb pfnLockCb failed! 0x8876086a\n",
            "UMDRscSurface::CopyFrom KernelModeLockCb failed! 0x8876086a\n",
            "UMDRscRenderTargetCapable::KernelModePresentCbBLT CopyFrom failed! hResult: 0x8876086a\n"},
        1);
}

TEST_F(UMDRscRenderTargetCapableTest, PresentBlt_UnlockFails_UnlocksTheSurfaceAndReturnsItsCode)
{
    ExpectPresentBlt(m_Kernel, "pfnUnlockCb", kRefused,
        {"UMDRscRenderTargetCapable::KernelModeUnlockCb pfnUnlockCb failed! 0x8876086a\n",
            "UMDRscSurface::CopyFrom KernelModeUnlockCb failed! 0x8876086a\n",
            "UMDRscRenderTargetCapable::KernelModePresentCbBLT CopyFrom failed! hResult: 0x8876086a\n"},
        1);
}

TEST_F(UMDRscRenderTargetCapableTest, PresentBlt_PresentFails_SucceedsAllTheSame)
{
    ExpectPresentBlt(m_Kernel, "pfnPresentCb", S_OK,
        {"UMDRscRenderTargetCapable::KernelModePresentCb pfnPresentCb failed! 0x8876086a\n"}, 1);
}

TEST_F(UMDRscRenderTargetCapableTest, AllocationRefused_IsToldAsAnError)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    m_Kernel.Fail("pfnAllocateCb", kRefused);
    const Lines lines = LevelledTrace([&] { Destroy(CreateAny(request)); });
    EXPECT_EQ(Containing(lines, "pfnAllocateCb"),
        Lines{"0x1 UMDRscRenderTargetCapable::KernelModeAllocateCb pfnAllocateCb failed! hResult 0x8876086a \n"});
}
