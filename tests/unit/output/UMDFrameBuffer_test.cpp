#include "output/UMDFrameBuffer.h"

#include "FailNthAllocation.h"
#include "FakeDevice.h"
#include "TraceCapture.h"
#include "TraceLevels.h"
#include "TraceMask.h"
#include "util/UMDComPtr.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
/// What the worker would take of the ring's newest frame.
UMDFrame Newest(const UMDFrameBuffer& frameBuffer)
{
    UMDFrame frame;
    frameBuffer.ShareNewest(&frame);
    return frame;
}

class UMDFrameBufferTest : public testing::Test
{
protected:
    UMDComPtr<IDirect3DSurface9> MakeTarget(UINT width, UINT height, D3DFORMAT format = D3DFMT_X8R8G8B8)
    {
        UMDComPtr<IDirect3DSurface9> pTarget;
        m_Device.CreateRenderTarget(width, height, format, D3DMULTISAMPLE_NONE, 0, FALSE, pTarget.Put(), nullptr);
        m_Device.ClearLines();
        return pTarget;
    }

    static ULONG References(IUnknown* pObject)
    {
        pObject->AddRef();
        return pObject->Release();
    }

    FakeDevice m_Device;
};

TEST_F(UMDFrameBufferTest, Life_OneFrame_EachLineHasItsLevel)
{
    const auto pTarget = MakeTarget(8, 4);
    TraceCapture trace;
    EXPECT_EQ(LevelledTrace([&] {
        UMDFrameBuffer frameBuffer(&m_Device);
        frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8);
        const UMDFrame frame = Newest(frameBuffer);
        UMDFrameBuffer::GetDuplicateFrameBuffer(frame);
        UMDFrameBuffer::GetDuplicateFrameBufferMalloc(frame);
    }),
        (Lines{"0x200 >>> UMDGpuDx9Surface::UMDGpuDx9Surface\n", "0x200 >>> UMDFrameBuffer::UMDFrameBuffer\n",
            "0x200 >>> UMDFrameBuffer::DuplicateFrameBuffer\n", "0x200 >>> UMDGpuDx9Surface::Create\n",
            "0x200 >>> UMDGpuDx9Surface::Duplicate\n",
            "0x200 UMDGpuDx9Surface::Duplicate SRC[8 4 22] DST[8 4 22] XXX[8 4 22]\n",
            "0x200 >>> UMDFrameBuffer::GetDuplicateFrameBuffer\n",
            "0x200 >>> UMDFrameBuffer::GetDuplicateFrameBufferMalloc\n", "0x200 >>> UMDFrameBuffer::~UMDFrameBuffer\n",
            "0x200 >>> UMDGpuDx9Surface::Destroy\n", "0x200 >>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_FourFrames_UsesTheSlotsInTurn)
{
    const auto pTarget = MakeTarget(8, 4);
    UMDFrameBuffer frameBuffer(&m_Device);
    IDirect3DSurface9* surfaces[4] = {};
    BYTE* memories[4] = {};
    for (int i = 0; i < 4; ++i)
    {
        ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
        const UMDFrame frame = Newest(frameBuffer);
        surfaces[i] = UMDFrameBuffer::GetDuplicateFrameBuffer(frame);
        memories[i] = UMDFrameBuffer::GetDuplicateFrameBufferMalloc(frame);
    }

    EXPECT_NE(surfaces[0], surfaces[1]);
    EXPECT_NE(surfaces[1], surfaces[2]);
    EXPECT_NE(surfaces[2], surfaces[0]);
    EXPECT_EQ(surfaces[3], surfaces[0]);
    EXPECT_NE(memories[0], memories[1]);
    EXPECT_NE(memories[1], memories[2]);
    EXPECT_EQ(memories[3], memories[0]);
    EXPECT_EQ(m_Device.Calls("CreateOffscreenPlainSurface"), 3u);
    EXPECT_EQ(m_Device.Calls("GetRenderTargetData"), 4u);
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_FirstFrame_TracesEachStep)
{
    const auto pTarget = MakeTarget(8, 4);
    TraceMask mask(UMDTRACE_DETAIL | UMDTRACE_ERROR);
    TraceCapture trace;
    {
        UMDFrameBuffer frameBuffer(&m_Device);
        frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8);
        const UMDFrame frame = Newest(frameBuffer);
        UMDFrameBuffer::GetDuplicateFrameBufferMalloc(frame);
        UMDFrameBuffer::GetDuplicateFrameBuffer(frame);
    }
    EXPECT_EQ(trace.Lines(),
        (Lines{">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n", ">>> UMDFrameBuffer::UMDFrameBuffer\n",
            ">>> UMDFrameBuffer::DuplicateFrameBuffer\n", ">>> UMDGpuDx9Surface::Create\n",
            ">>> UMDGpuDx9Surface::Duplicate\n", "UMDGpuDx9Surface::Duplicate SRC[8 4 22] DST[8 4 22] XXX[8 4 22]\n",
            ">>> UMDFrameBuffer::GetDuplicateFrameBufferMalloc\n", ">>> UMDFrameBuffer::GetDuplicateFrameBuffer\n",
            ">>> UMDFrameBuffer::~UMDFrameBuffer\n", ">>> UMDGpuDx9Surface::Destroy\n",
            ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_SizeChanges_MakesOnlyTheSlotBeingWrittenAgain)
{
    const auto pSmall = MakeTarget(8, 4);
    const auto pLarge = MakeTarget(16, 9);
    UMDFrameBuffer frameBuffer(&m_Device);
    UMDComPtr<IDirect3DSurface9> slots[3];
    for (auto& slot : slots)
    {
        ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pSmall.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
        slot.Share(Newest(frameBuffer).m_pSurface.Get());
    }
    for (UINT i = 0; i < 3; ++i)
    {
        m_Device.ClearLines();
        ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pLarge.Get(), 16, 9, D3DFMT_X8R8G8B8), S_OK);

        EXPECT_EQ(m_Device.Calls("CreateOffscreenPlainSurface"), 1u);
        EXPECT_EQ(References(slots[i].Get()), 1u) << "the ring has given up slot " << i;
        if (i < 2)
        {
            EXPECT_EQ(References(slots[i + 1].Get()), 2u) << "the ring still holds slot " << i + 1;
        }
        D3DSURFACE_DESC desc = {};
        ASSERT_EQ(Newest(frameBuffer).m_pSurface->GetDesc(&desc), D3D_OK);
        EXPECT_EQ(desc.Width, 16u);
        EXPECT_EQ(desc.Height, 9u);
    }
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_SixteenBitTarget_FailsAndUsesUpNoMemory)
{
    const auto pTarget = MakeTarget(8, 4, D3DFMT_R5G6B5);
    UMDFrameBuffer frameBuffer(&m_Device);
    TraceMask mask(UMDTRACE_ERROR);
    TraceCapture trace;

    EXPECT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_R5G6B5), E_FAIL);

    EXPECT_EQ(trace.Lines(), (Lines{"UMDGpuDx9Surface::Create failed! Format is unsupported! Format:23\n",
                                 "UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x80004005\n"}));
    EXPECT_EQ(m_Device.Calls("CreateOffscreenPlainSurface"), 0u);
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_NoDevice_Fails)
{
    const auto pTarget = MakeTarget(8, 4);
    UMDFrameBuffer frameBuffer(nullptr);
    TraceMask mask(UMDTRACE_ERROR);
    TraceCapture trace;

    EXPECT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), E_FAIL);

    EXPECT_EQ(trace.Lines(), (Lines{"UMDGpuDx9Surface::Create pDevice9 is NULL\n",
                                 "UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x80004005\n"}));
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_CopyFails_UsesUpTheSlotAndKeepsTheNewestGoodFrame)
{
    const auto pTarget = MakeTarget(8, 4);
    UMDFrameBuffer frameBuffer(&m_Device);
    ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
    IDirect3DSurface9* const pFirst = Newest(frameBuffer).m_pSurface.Get();

    m_Device.Fail("surface.GetDesc", D3DERR_INVALIDCALL, 1);
    {
        TraceMask mask(UMDTRACE_ERROR);
        TraceCapture trace;
        EXPECT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), D3DERR_INVALIDCALL);
        EXPECT_EQ(trace.Lines(), (Lines{"UMDGpuDx9Surface::Duplicate GetDesc SRC failed! hResult:0x8876086c\n",
                                     "UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x8876086c\n"}));
    }
    EXPECT_EQ(Newest(frameBuffer).m_pSurface.Get(), pFirst);

    // Slots 2 and 0 follow: the third frame makes a new surface, the fourth comes back to the first one's.
    EXPECT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
    EXPECT_EQ(m_Device.Calls("CreateOffscreenPlainSurface"), 3u);
    EXPECT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
    EXPECT_EQ(Newest(frameBuffer).m_pSurface.Get(), pFirst);
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_SlotWasMadeShortOfMemory_IsMadeAgainWhenItsTurnComes)
{
    const auto pTarget = MakeTarget(8, 4);
    const size_t objects = m_Device.LiveObjects().size();
    {
        UMDFrameBuffer frameBuffer(&m_Device);
        {
            TraceMask mask(UMDTRACE_ERROR);
            TraceCapture trace;
            HRESULT hr = S_OK;
            {
                FailNthAllocation shortage(1);
                hr = frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8);
            }
            EXPECT_EQ(hr, E_FAIL);
            EXPECT_EQ(trace.Lines(), (Lines{"UMDGpuDx9Surface::Create malloc failed!\n",
                                         "UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x80004005\n"}));
        }
        for (int frame = 0; frame < 3; ++frame)
            EXPECT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
        EXPECT_EQ(m_Device.LiveObjects().size(), objects + 3);
    }
    EXPECT_EQ(m_Device.LiveObjects().size(), objects);
}

TEST_F(UMDFrameBufferTest, Destructor_TwoSlotsMade_DestroysThoseTwo)
{
    const auto pTarget = MakeTarget(8, 4);
    const size_t objects = m_Device.LiveObjects().size();
    {
        UMDFrameBuffer frameBuffer(&m_Device);
        for (int frame = 0; frame < 2; ++frame)
            ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
        EXPECT_EQ(m_Device.LiveObjects().size(), objects + 2);
    }
    EXPECT_EQ(m_Device.LiveObjects().size(), objects);
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_SlotIsToBeRead_IsLeftToItsReader)
{
    const auto pTarget = MakeTarget(8, 4);
    UMDFrameBuffer frameBuffer(&m_Device);
    ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
    UMDFrame held = Newest(frameBuffer);
    held.BeginRead();
    for (int frame = 0; frame < 3; ++frame)
        ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);

    EXPECT_NE(Newest(frameBuffer).m_pSurface.Get(), held.m_pSurface.Get());
    EXPECT_NE(Newest(frameBuffer).m_pMemory.Get(), held.m_pMemory.Get());
    EXPECT_EQ(References(held.m_pSurface.Get()), 1u) << "the ring has given it up";
    EXPECT_EQ(m_Device.Calls("CreateOffscreenPlainSurface"), 4u);
    held.Clear();
    EXPECT_EQ(m_Device.LiveObjects().size(), 4u) << "the target and three copies";
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_SlotHasBeenRead_IsWrittenAgain)
{
    const auto pTarget = MakeTarget(8, 4);
    UMDFrameBuffer frameBuffer(&m_Device);
    ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
    UMDFrame held = Newest(frameBuffer);
    held.BeginRead();
    held.EndRead();
    for (int frame = 0; frame < 3; ++frame)
        ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);

    EXPECT_EQ(Newest(frameBuffer).m_pSurface.Get(), held.m_pSurface.Get()) << "the buffer is the frame's still";
}

TEST_F(UMDFrameBufferTest, DuplicateFrameBuffer_ManyFrames_AllocatesNothingAfterTheThird)
{
    const auto pTarget = MakeTarget(8, 4);
    UMDFrameBuffer frameBuffer(&m_Device);
    for (int frame = 0; frame < 3; ++frame)
        ASSERT_EQ(frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8), S_OK);
    m_Device.ClearLines();
    HRESULT hr = S_OK;
    unsigned allocations = 0;
    {
        FailNthAllocation counter(0);
        for (int frame = 0; frame < 100 && SUCCEEDED(hr); ++frame)
            hr = frameBuffer.DuplicateFrameBuffer(pTarget.Get(), 8, 4, D3DFMT_X8R8G8B8);
        allocations = counter.Count();
    }
    EXPECT_EQ(hr, S_OK);
    EXPECT_EQ(allocations, 0u);
    EXPECT_EQ(m_Device.Calls("CreateOffscreenPlainSurface"), 0u);
}
}  // namespace
