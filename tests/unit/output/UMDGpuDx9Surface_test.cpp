#include "output/UMDGpuDx9Surface.h"

#include "FailNthAllocation.h"
#include "FakeDevice.h"
#include "ImportPatch.h"
#include "TraceAt.h"
#include "util/UMDComPtr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

using namespace tesslo::test;

namespace
{
std::vector<DWORD> g_Pauses;

void WINAPI RecordingSleep(DWORD milliseconds)
{
    g_Pauses.push_back(milliseconds);
}

class UMDGpuDx9SurfaceTest : public testing::Test
{
protected:
    UMDGpuDx9SurfaceTest() { g_Pauses.clear(); }
    ~UMDGpuDx9SurfaceTest() override { m_Surface.Destroy(&m_pCopy, &m_pMemory); }

    void MakeTarget(UINT width, UINT height, D3DFORMAT format = D3DFMT_X8R8G8B8)
    {
        ASSERT_EQ(
            m_Device.CreateRenderTarget(width, height, format, D3DMULTISAMPLE_NONE, 0, FALSE, m_pTarget.Put(), nullptr),
            D3D_OK);
        m_Device.ClearLines();
    }

    HRESULT Create(UINT width, UINT height, D3DFORMAT format = D3DFMT_X8R8G8B8)
    {
        return m_Surface.Create(&m_Device, &m_pCopy, &m_pMemory, width, height, format);
    }

    /// A target, and a pair to copy it to.
    void MakeTargetAndPair(UINT width, UINT height)
    {
        MakeTarget(width, height);
        ASSERT_EQ(Create(width, height), S_OK);
    }

    HRESULT Duplicate(UINT width, UINT height, D3DFORMAT format = D3DFMT_X8R8G8B8)
    {
        return m_Surface.Duplicate(&m_pCopy, &m_pMemory, m_pTarget.Get(), width, height, format);
    }

    FakeDevice m_Device;
    UMDComPtr<IDirect3DSurface9> m_pTarget;
    UMDGpuDx9Surface m_Surface;
    IDirect3DSurface9* m_pCopy = nullptr;
    UMDFrameMemory* m_pMemory = nullptr;
};

TEST(UMDGpuDx9Surface, ConstructorAndDestructor_Always_TraceOneLineEach)
{
    TraceMask mask(UMDTRACE_DETAIL);
    TraceCapture trace;
    {
        UMDGpuDx9Surface surface;
    }
    EXPECT_EQ(trace.Lines(),
        (Lines{">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n", ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
}

TEST_F(UMDGpuDx9SurfaceTest, Create_EitherFormat_MakesASystemMemorySurfaceAndAClearedBuffer)
{
    for (const D3DFORMAT format : {D3DFMT_A8R8G8B8, D3DFMT_X8R8G8B8})
    {
        m_Device.ClearLines();
        TraceMask mask(0x7FF);
        TraceCapture trace;
        ASSERT_EQ(Create(5, 3, format), S_OK);

        EXPECT_EQ(trace.Lines(), Lines{">>> UMDGpuDx9Surface::Create\n"});
        D3DSURFACE_DESC desc = {};
        ASSERT_EQ(m_pCopy->GetDesc(&desc), D3D_OK);
        EXPECT_EQ(desc.Width, 5u);
        EXPECT_EQ(desc.Height, 3u);
        EXPECT_EQ(desc.Format, format);
        EXPECT_EQ(desc.Pool, D3DPOOL_SYSTEMMEM);
        ASSERT_NE(m_pMemory, nullptr);
        EXPECT_TRUE(std::all_of(m_pMemory->Bits(), m_pMemory->Bits() + 5 * 3 * 4, [](BYTE b) { return b == 0; }));
        m_Surface.Destroy(&m_pCopy, &m_pMemory);
    }
}

TEST_F(UMDGpuDx9SurfaceTest, Create_NoDevice_Fails)
{
    TraceMask mask(UMDTRACE_ERROR);
    TraceCapture trace;
    EXPECT_EQ(m_Surface.Create(nullptr, &m_pCopy, &m_pMemory, 4, 4, D3DFMT_X8R8G8B8), E_FAIL);
    EXPECT_EQ(trace.Lines(), Lines{"UMDGpuDx9Surface::Create pDevice9 is NULL\n"});
}

TEST_F(UMDGpuDx9SurfaceTest, Create_OtherFormats_AreRefusedWithoutACallOfTheDevice)
{
    for (const D3DFORMAT format : {D3DFMT_R5G6B5, D3DFMT_X1R5G5B5, D3DFMT_A1R5G5B5, D3DFMT_R8G8B8, D3DFMT_A8B8G8R8,
             D3DFMT_A2R10G10B10, D3DFMT_A16B16G16R16F, D3DFMT_UNKNOWN})
    {
        TraceMask mask(UMDTRACE_ERROR);
        TraceCapture trace;
        EXPECT_EQ(Create(4, 4, format), E_FAIL);
        EXPECT_EQ(trace.Lines(),
            Lines{"UMDGpuDx9Surface::Create failed! Format is unsupported! Format:" + std::to_string(format) + "\n"});
    }
    EXPECT_EQ(m_Device.Lines(), Lines{});
    EXPECT_EQ(m_pCopy, nullptr);
    EXPECT_EQ(m_pMemory, nullptr);
}

TEST_F(UMDGpuDx9SurfaceTest, Create_DeviceRefuses_ReturnsItsCode)
{
    m_Device.Fail("CreateOffscreenPlainSurface", D3DERR_OUTOFVIDEOMEMORY);
    TraceMask mask(UMDTRACE_ERROR);
    TraceCapture trace;
    EXPECT_EQ(Create(4, 4), D3DERR_OUTOFVIDEOMEMORY);
    EXPECT_EQ(trace.Lines(), Lines{"UMDGpuDx9Surface::Create CreateOffscreenPlainSurface failed! 0x8876017c\n"});
    EXPECT_EQ(m_pMemory, nullptr);
}

TEST_F(UMDGpuDx9SurfaceTest, Create_MemoryShort_LeavesTheSurfaceToTheOwner)
{
    for (const unsigned nth : {1u, 2u})  // the buffer's owner, then its bytes
    {
        TraceMask mask(UMDTRACE_ERROR);
        TraceCapture trace;
        HRESULT hr = S_OK;
        {
            FailNthAllocation shortage(nth);
            hr = Create(4, 4);
        }
        EXPECT_EQ(hr, E_FAIL);
        EXPECT_EQ(trace.Lines(), Lines{"UMDGpuDx9Surface::Create malloc failed!\n"});
        EXPECT_NE(m_pCopy, nullptr);
        EXPECT_EQ(m_pMemory, nullptr);

        m_Surface.Destroy(&m_pCopy, &m_pMemory);
        EXPECT_EQ(m_pCopy, nullptr);
        EXPECT_EQ(m_Device.LiveObjects(), Lines{});
    }
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_AnyPartMissing_Fails)
{
    MakeTarget(4, 4);
    const auto expectRefused = [&](UMDGpuDx9Surface& surface, IDirect3DSurface9** ppCopy, UMDFrameMemory** ppMemory,
                                   IDirect3DSurface9* pSource) {
        EXPECT_EQ(
            ErrorsOf([&] { EXPECT_EQ(surface.Duplicate(ppCopy, ppMemory, pSource, 4, 4, D3DFMT_X8R8G8B8), E_FAIL); }),
            Lines{"UMDGpuDx9Surface::Duplicate ppDstSurface/ppDstSurfaceMalloc/pSrcSurface/m_pDevice is NULL\n"});
    };
    expectRefused(m_Surface, &m_pCopy, &m_pMemory, m_pTarget.Get());
    ASSERT_EQ(Create(4, 4), S_OK);
    IDirect3DSurface9* pNoCopy = nullptr;
    expectRefused(m_Surface, &pNoCopy, &m_pMemory, m_pTarget.Get());
    UMDFrameMemory* pNoMemory = nullptr;
    expectRefused(m_Surface, &m_pCopy, &pNoMemory, m_pTarget.Get());
    expectRefused(m_Surface, &m_pCopy, &m_pMemory, nullptr);
    UMDGpuDx9Surface neverCreated;
    expectRefused(neverCreated, &m_pCopy, &m_pMemory, m_pTarget.Get());
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 0u);
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_SameSizeAndFormat_CopiesIntoTheSameSurface)
{
    MakeTargetAndPair(6, 2);
    IDirect3DSurface9* const pCopy = m_pCopy;
    UMDFrameMemory* const pMemory = m_pMemory;
    TraceMask mask(UMDTRACE_DETAIL | UMDTRACE_ERROR);
    TraceCapture trace;

    EXPECT_EQ(Duplicate(6, 2), S_OK);

    EXPECT_EQ(trace.Lines(), (Lines{">>> UMDGpuDx9Surface::Duplicate\n",
                                 "UMDGpuDx9Surface::Duplicate SRC[6 2 22] DST[6 2 22] XXX[6 2 22]\n"}));
    EXPECT_EQ(m_pCopy, pCopy);
    EXPECT_EQ(m_pMemory, pMemory);
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 1u);
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_GetDescFails_ReturnsItsCode)
{
    MakeTargetAndPair(4, 4);
    for (const auto& [nth, pWhich] : {std::pair{1u, "SRC"}, {2u, "DST"}})
    {
        m_Device.Fail("surface.GetDesc", kRefused, nth);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Duplicate(4, 4), kRefused); }),
            Lines{std::string("UMDGpuDx9Surface::Duplicate GetDesc ") + pWhich + " failed! hResult:0x8876086a\n"});
    }
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 0u);
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_SourceDiffers_MakesThePairAgain)
{
    struct Case
    {
        UINT m_Width;
        UINT m_Height;
        D3DFORMAT m_Format;
        const char* m_pLine;
    };
    const Case cases[] = {
        {9, 4, D3DFMT_X8R8G8B8, "UMDGpuDx9Surface::Duplicate SRC[9 4 22] DST[4 4 22] XXX[9 4 22]\n"},
        {4, 9, D3DFMT_X8R8G8B8, "UMDGpuDx9Surface::Duplicate SRC[4 9 22] DST[4 4 22] XXX[4 9 22]\n"},
        {4, 4, D3DFMT_A8R8G8B8, "UMDGpuDx9Surface::Duplicate SRC[4 4 21] DST[4 4 22] XXX[4 4 21]\n"},
    };
    for (const Case& row : cases)
    {
        MakeTarget(row.m_Width, row.m_Height, row.m_Format);
        ASSERT_EQ(Create(4, 4), S_OK);
        TraceMask mask(UMDTRACE_DETAIL | UMDTRACE_ERROR);
        TraceCapture trace;

        EXPECT_EQ(Duplicate(row.m_Width, row.m_Height, row.m_Format), S_OK);

        EXPECT_EQ(
            trace.Lines(), (Lines{">>> UMDGpuDx9Surface::Duplicate\n", ">>> UMDGpuDx9Surface::Duplicate Recreate\n",
                               ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::Create\n", row.m_pLine}));
        m_Surface.Destroy(&m_pCopy, &m_pMemory);
    }
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_GeometryGivenIsNotTheSources_MakesThePairAsGiven)
{
    MakeTarget(9, 4);
    ASSERT_EQ(Create(4, 4), S_OK);

    EXPECT_EQ(Duplicate(7, 5, D3DFMT_A8R8G8B8), D3DERR_INVALIDCALL) << "the device refuses to scale";

    D3DSURFACE_DESC desc = {};
    ASSERT_EQ(m_pCopy->GetDesc(&desc), D3D_OK);
    EXPECT_EQ(desc.Width, 7u);
    EXPECT_EQ(desc.Height, 5u);
    EXPECT_EQ(desc.Format, D3DFMT_A8R8G8B8);
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_MakingAgainFails_ReturnsItsCodeAndLeavesNoPair)
{
    MakeTarget(9, 9);
    ASSERT_EQ(Create(4, 4), S_OK);
    m_Device.Fail("CreateOffscreenPlainSurface", D3DERR_OUTOFVIDEOMEMORY);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Duplicate(9, 9), D3DERR_OUTOFVIDEOMEMORY); }),
        (Lines{"UMDGpuDx9Surface::Create CreateOffscreenPlainSurface failed! 0x8876017c\n",
            "UMDGpuDx9Surface::Duplicate Create failed! 0x8876017c\n"}));
    EXPECT_EQ(m_pCopy, nullptr);
    EXPECT_EQ(m_pMemory, nullptr);
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 0u);
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_ReadBackRefusedThreeTimes_PausesAndCountsEachAndReturnsTheCode)
{
    MakeTargetAndPair(4, 4);
    m_Device.Fail("GetRenderTargetData", kRefused);
    const ImportPatch patch(nullptr, "kernel32.dll", "Sleep", RecordingSleep);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Duplicate(4, 4), kRefused); }),
        (Lines{"UMDGpuDx9Surface::Duplicate GetRenderTargetData failed! 0x8876086a CountFail:1\n",
            "UMDGpuDx9Surface::Duplicate GetRenderTargetData failed! 0x8876086a CountFail:2\n",
            "UMDGpuDx9Surface::Duplicate GetRenderTargetData failed! 0x8876086a CountFail:3\n"}));
    EXPECT_EQ(g_Pauses, (std::vector<DWORD>{10, 10, 10}));
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 3u);
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_ReadBackRefusedThreeTimes_CostsThirtyMilliseconds)
{
    MakeTargetAndPair(4, 4);
    m_Device.Fail("GetRenderTargetData", kRefused);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Duplicate(4, 4), kRefused);
    const auto cost = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(cost, std::chrono::milliseconds(27));  // a pause may end within its last millisecond
}

TEST_F(UMDGpuDx9SurfaceTest, Duplicate_ReadBackSucceedsTheSecondTime_StopsThere)
{
    MakeTargetAndPair(4, 4);
    m_Device.Fail("GetRenderTargetData", kRefused, 1);
    const ImportPatch patch(nullptr, "kernel32.dll", "Sleep", RecordingSleep);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Duplicate(4, 4), S_OK); }),
        Lines{"UMDGpuDx9Surface::Duplicate GetRenderTargetData failed! 0x8876086a CountFail:1\n"});
    EXPECT_EQ(g_Pauses, std::vector<DWORD>{10});
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 2u);
}

TEST_F(UMDGpuDx9SurfaceTest, Destroy_SomebodyElseHoldsTheMemory_GivesUpOnlyItsOwnReferences)
{
    ASSERT_EQ(Create(4, 4), S_OK);
    UMDComPtr<UMDFrameMemory> pMemory;
    UMDComPtr<IDirect3DSurface9> pCopy;
    pMemory.Share(m_pMemory);
    pCopy.Share(m_pCopy);
    pMemory->Bits()[63] = 0x5A;
    TraceMask mask(UMDTRACE_DETAIL);
    TraceCapture trace;

    m_Surface.Destroy(&m_pCopy, &m_pMemory);

    EXPECT_EQ(trace.Lines(), Lines{">>> UMDGpuDx9Surface::Destroy\n"});
    EXPECT_EQ(m_pCopy, nullptr);
    EXPECT_EQ(m_pMemory, nullptr);
    EXPECT_EQ(pMemory->Bits()[63], 0x5A);
    D3DSURFACE_DESC desc = {};
    EXPECT_EQ(pCopy->GetDesc(&desc), D3D_OK);
}
}  // namespace
