// A frame that the client library still holds while its ring goes or changes: it must stay.
#include "FrameBufferThreadFixture.h"
#include "ImportPatch.h"

#include <atomic>
#include <string>

using namespace tesslo::test;

namespace
{
// What becomes of one block of memory.
std::atomic<const void*> g_pWatched;
std::atomic<int> g_Freed;
void (*g_pFree)(void*);

void WatchingFree(void* pMemory)
{
    if (pMemory && pMemory == g_pWatched)
    {
        ++g_Freed;
        g_pWatched = &g_Freed;  // the address may be given out again
    }
    g_pFree(pMemory);
}

class HeldFrameTest : public FrameBufferThreadFixture
{
protected:
    HeldFrameTest()
    {
        g_pWatched = nullptr;
        g_Freed = 0;
    }

    /// Presents a frame and leaves the library in the middle of its Update.
    void PresentAndHold(UINT width, UINT height, UINT firstPixel)
    {
        m_Client.SetOnFrame([](const TessloVirtualMonitorFrame& frame) {
            if (!g_pWatched)
                g_pWatched = frame.pBits;
        });
        m_Client.On("Update", [this] {
            m_Gate.Pass();
            if (m_FreedUnderTheLibrary < 0)
                m_FreedUnderTheLibrary = g_Freed;
        });
        ASSERT_TRUE(Present(width, height, firstPixel));
        ASSERT_TRUE(m_Gate.WaitForOne());
    }

    ImportPatch m_Free{nullptr, "msvcrt.dll", "free", WatchingFree, &g_pFree};
    int m_FreedUnderTheLibrary = -1;
};

TEST_F(HeldFrameTest, RequestExit_LibraryHoldsAFrame_TheRingGoesAndTheFrameStays)
{
    Start();
    ASSERT_TRUE(Present(4, 2, 1));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    PresentAndHold(4, 2, 100);
    IDirect3DSurface9* const pHeld = &m_Fake.Find<FakeSurface>("surface#4");
    ASSERT_EQ(m_Fake.LiveObjects(), (Lines{"surface#2", "surface#3", "surface#4"})) << "target is 3, copies 2 and 4";
    m_Trace.Clear();

    EXPECT_TRUE(m_Thread->RequestExit());

    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadFrameBuffer::RequestExit\n", ">>> UMDFrameBuffer::~UMDFrameBuffer\n",
                                   ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::Destroy\n",
                                   ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
    EXPECT_EQ(m_Fake.LiveObjects(), (Lines{"surface#3", "surface#4"}));
    EXPECT_EQ(m_Fake.Find<FakeSurface>("surface#4").ReferenceCount(), 1u) << "the worker's own";
    EXPECT_EQ(static_cast<IDirect3DSurface9*>(&m_Fake.Find<FakeSurface>("surface#4")), pHeld);

    m_Gate.Open();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_FreedUnderTheLibrary, 0);
    EXPECT_EQ(g_Freed, 1);
    EXPECT_EQ(m_Client.Updates().back().m_Pixels, (std::vector<UINT>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{"surface#3"});
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Update", "Unplug"}));
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exiting...\n"), 0u) << "ends without a further wait";
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
}

TEST_F(HeldFrameTest, RequestExit_ANewerFrameIsWaiting_IsNotDelivered)
{
    Start();
    PresentAndHold(4, 2, 100);
    ASSERT_TRUE(Present(4, 2, 200));
    EXPECT_TRUE(m_Thread->RequestExit());
    m_Gate.Open();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Unplug"}));
    m_pTarget.Reset();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(HeldFrameTest, FrameBufferAvailable_SizeChangesUnderTheLibrary_TheHeldFrameStays)
{
    Start();
    PresentAndHold(4, 2, 100);
    for (UINT frame = 1; frame <= 6; ++frame)
        ASSERT_TRUE(Present(16, 9, frame * 1000)) << "the fourth frame makes the held one's slot again";
    EXPECT_EQ(g_Freed, 0);
    m_Gate.Open();
    ASSERT_TRUE(m_Client.WaitForCalls(3));
    EXPECT_EQ(m_FreedUnderTheLibrary, 0);
    EXPECT_EQ(g_Freed, 1);
    const auto updates = m_Client.Updates();
    EXPECT_EQ(updates[0].m_Pixels, (std::vector<UINT>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(updates[1].m_Frame.Width, 16u);
    EXPECT_EQ(updates[1].m_Frame.Height, 9u);
    EXPECT_EQ(updates[1].m_Pixels.front(), 6000u);
    EXPECT_EQ(updates[1].m_Pixels.back(), 6000u + 16 * 9 - 1);
}

/// Holds the worker in a call of its copy, while three more frames come: the third is due in the same slot.
class HeldCopyTest : public FrameBufferThreadFixture, public testing::WithParamInterface<const char*>
{
};

TEST_P(HeldCopyTest, FrameBufferAvailable_ThreeMoreFrames_AreTakenAndTheHeldOneArrivesAsItWas)
{
    m_Fake.On(GetParam(), [this] { m_Gate.Pass(); });
    Start();
    ASSERT_TRUE(Present(4, 2, 100));
    ASSERT_TRUE(m_Gate.WaitForOne());
    for (UINT frame = 2; frame <= 4; ++frame)
        EXPECT_TRUE(Present(4, 2, frame * 100, D3DDDI_ROTATION_180));
    EXPECT_EQ(m_Fake.Calls("GetRenderTargetData"), 4u) << "none was refused";
    m_Gate.Open();
    ASSERT_TRUE(m_Client.WaitForUpdates(2));
    EXPECT_EQ(m_Client.Updates()[0].m_Pixels, (std::vector<UINT>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(m_Client.Updates()[1].m_Pixels, (std::vector<UINT>{407, 406, 405, 404, 403, 402, 401, 400}));
}

TEST_P(HeldCopyTest, FrameBufferAvailable_AfterTheWorkerHasCaughtUp_UsesTheSlotsInTurnAgain)
{
    m_Fake.On(GetParam(), [this] { m_Gate.Pass(); });
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Gate.WaitForOne());
    for (int frame = 0; frame < 3; ++frame)
        EXPECT_TRUE(Present(4, 2));
    EXPECT_EQ(m_Fake.Calls("CreateOffscreenPlainSurface"), 4u) << "one for the slot that the worker still has";
    m_Gate.Open();
    ASSERT_TRUE(m_Client.WaitForUpdates(2));
    for (size_t frame = 1; frame <= 4; ++frame)
    {
        EXPECT_TRUE(Present(4, 2));
        ASSERT_TRUE(m_Client.WaitForUpdates(2 + frame));
    }
    EXPECT_EQ(m_Fake.Calls("CreateOffscreenPlainSurface"), 4u);
}

INSTANTIATE_TEST_SUITE_P(Calls, HeldCopyTest, testing::Values("surface.LockRect", "surface.UnlockRect"),
    [](const auto& info) { return std::string(info.param).substr(sizeof("surface.") - 1); });

TEST_F(HeldFrameTest, FrameBufferAvailable_LibraryHoldsAFrame_ItsSlotIsWrittenAllTheSame)
{
    Start();
    PresentAndHold(4, 2, 100);
    for (UINT frame = 2; frame <= 4; ++frame)
        ASSERT_TRUE(Present(4, 2, frame * 100));
    EXPECT_EQ(m_Fake.Calls("CreateOffscreenPlainSurface"), 3u) << "the library reads the buffer, not the copy";
    m_Gate.Open();
    ASSERT_TRUE(m_Client.WaitForUpdates(2));
    EXPECT_EQ(m_Client.Updates()[0].m_Pixels, (std::vector<UINT>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(m_Client.Updates()[1].m_Pixels.front(), 400u);
}

TEST_F(HeldFrameTest, DestroyThreads_LibraryHoldsAFrameOfTheDevice_WaitsForItAndLeavesNothing)
{
    Start();
    PresentAndHold(4, 2, 100);
    // What closing the adapter does with the device's own workers, in the same order.
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    m_Gate.Open();
    ASSERT_TRUE(WaitForEnd());
    m_Thread.reset();
    m_pTarget.Reset();
    m_pDevice->DestroyThreads();
    m_pDevice.reset();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(m_Fake.ReferenceCount(), 1u);
}
}  // namespace
