// The way of a frame through a frame-buffer thread: the copy, the rotation, the newest one wins.
#include "FailNthAllocation.h"
#include "FrameBufferThreadFixture.h"

#include <cstring>

using namespace tesslo::test;

namespace
{
class FrameBufferFrameTest : public FrameBufferThreadFixture
{
protected:
    /// The first pixel of each frame that the library got.
    std::vector<UINT> FirstPixels() const
    {
        std::vector<UINT> pixels;
        for (const TestClient::Call& update : m_Client.Updates())
            pixels.push_back(update.m_Pixels.front());
        return pixels;
    }

    /// Starts a worker, whose first frame ends it. @param pMethod of the copy's surface, which fails; null for none.
    void ExpectAFrameEndsTheWorker(const char* pMethod, UINT rotation, Lines expected)
    {
        const TraceMask mask(kErrorsAndEnd);
        m_Thread.emplace();
        const size_t callsBefore = m_Client.History().size();
        Start();
        m_Trace.Clear();
        if (pMethod)
            m_Fake.Fail(pMethod, D3DERR_INVALIDCALL);
        ASSERT_TRUE(Present(4, 2, 0, rotation));
        ASSERT_TRUE(WaitForEnd());
        m_Fake.ClearScripts();

        expected.push_back("UMDThreadFrameBuffer::Run InternalProcessFrameBuffer failed!\n");
        EXPECT_EQ(ErrorLines(), expected);
        Lines names = m_Client.Names();
        names.erase(names.begin(), names.begin() + callsBefore);
        EXPECT_EQ(names, (Lines{"Plug", "Unplug"}));
        ExpectExited();
        EXPECT_TRUE(m_Thread->RequestExit());
    }
};

TEST_F(FrameBufferFrameTest, Update_EachRotation_SendsTheRotatedImageAndItsGeometry)
{
    struct Case
    {
        UINT m_Rotation;
        UINT m_Width;
        UINT m_Height;
        std::vector<UINT> m_Pixels;
    };
    // Of the image 10 11 12 / 13 14 15.
    const Case cases[] = {
        {D3DDDI_ROTATION_IDENTITY, 3, 2, {10, 11, 12, 13, 14, 15}},
        {D3DDDI_ROTATION_90, 2, 3, {12, 15, 11, 14, 10, 13}},
        {D3DDDI_ROTATION_180, 3, 2, {15, 14, 13, 12, 11, 10}},
        {D3DDDI_ROTATION_270, 2, 3, {13, 10, 14, 11, 15, 12}},
    };
    Start();
    size_t calls = 1;
    for (const Case& row : cases)
    {
        ASSERT_TRUE(Present(3, 2, 10, row.m_Rotation));
        ASSERT_TRUE(m_Client.WaitForCalls(++calls));
        const TestClient::Call update = m_Client.History().back();
        EXPECT_EQ(update.m_Pixels, row.m_Pixels) << "rotation " << row.m_Rotation;
        const TessloVirtualMonitorFrame expected = {
            0, kSource, row.m_Width, row.m_Height, row.m_Width * 4, 0, update.m_Frame.pBits};
        EXPECT_EQ(std::memcmp(&update.m_Frame, &expected, 32), 0) << "rotation " << row.m_Rotation;
        EXPECT_NE(update.m_Frame.pBits, nullptr);
    }
}

TEST_F(FrameBufferFrameTest, LockRect_AnswersRowsShorterThanTheFrames_EndsTheWorkerWithoutReadingThem)
{
    FakeRows rows;
    rows.m_Shortage = 1;
    rows.m_bFenced = true;
    Start();
    m_Fake.CreateRenderTarget(4, 4, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, m_pTarget.Put(), nullptr);
    m_Fake.SetRows(rows);  // of the copy
    const TraceMask mask(UMDTRACE_ERROR);
    m_Trace.Clear();
    ASSERT_TRUE(m_Thread->FrameBufferAvailable(m_pTarget.Get(), 4, 4, D3DFMT_X8R8G8B8, D3DDDI_ROTATION_IDENTITY));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{"UMDThreadFrameBuffer::InternalProcessFrameBuffer LockRect failed! hResult:0x80004005\n",
            "UMDThreadFrameBuffer::Run InternalProcessFrameBuffer failed!\n"}));
    EXPECT_EQ(m_Fake.Calls("surface.UnlockRect"), 1u);
    EXPECT_TRUE(m_Client.Updates().empty());
}

TEST_F(FrameBufferFrameTest, Update_LandscapeFrameRotatedBy90_IsDeliveredAsPortrait)
{
    Start();
    ASSERT_TRUE(Present(800, 600, 0, D3DDDI_ROTATION_90));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    const TestClient::Call update = m_Client.History().back();
    EXPECT_EQ(update.m_Frame.Width, 600u);
    EXPECT_EQ(update.m_Frame.Height, 800u);
    EXPECT_EQ(update.m_Frame.Pitch, 2400u);
    for (UINT y = 0; y < 600; y += 7)
    {
        for (UINT x = 0; x < 800; x += 7)
            ASSERT_EQ(update.m_Pixels[(799 - x) * 600 + y], y * 800 + x);
    }
}

TEST_F(FrameBufferFrameTest, ProcessFrameBuffer_CopyCannotBeLocked_EndsTheWorkerAndUnplugs)
{
    ExpectAFrameEndsTheWorker("surface.LockRect", D3DDDI_ROTATION_IDENTITY,
        {"UMDThreadFrameBuffer::InternalProcessFrameBuffer LockRect failed! hResult:0x8876086c\n"});
}

TEST_F(FrameBufferFrameTest, ProcessFrameBuffer_CopyCannotBeUnlocked_EndsTheWorkerAndUnplugs)
{
    ExpectAFrameEndsTheWorker("surface.UnlockRect", D3DDDI_ROTATION_IDENTITY,
        {"UMDThreadFrameBuffer::InternalProcessFrameBuffer UnlockRect failed! hResult:0x8876086c\n"});
}

TEST_F(FrameBufferFrameTest, ProcessFrameBuffer_NoSuchRotation_EndsTheWorkerAndUnplugs)
{
    for (const UINT rotation : {0u, 5u})
    {
        ExpectAFrameEndsTheWorker(nullptr, rotation,
            {"UMDThreadFrameBuffer::InternalCopyData failded no rotation " + std::to_string(rotation) + "\n",
                "UMDThreadFrameBuffer::InternalProcessFrameBuffer UMDImgProcRotation failed! hResult:0x80004005\n"});
    }
}

TEST_F(FrameBufferFrameTest, FrameBufferAvailable_CopyFails_FailsAndTheWorkerLivesOn)
{
    const TraceMask mask(kErrorsAndEnd);
    Start();
    m_Fake.CreateRenderTarget(4, 2, D3DFMT_R5G6B5, D3DMULTISAMPLE_NONE, 0, FALSE, m_pTarget.Put(), nullptr);
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->FrameBufferAvailable(m_pTarget.Get(), 4, 2, D3DFMT_R5G6B5, D3DDDI_ROTATION_IDENTITY));
    EXPECT_EQ(ErrorLines(),
        (Lines{"UMDGpuDx9Surface::Create failed! Format is unsupported! Format:23\n",
            "UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x80004005\n",
            "UMDThreadFrameBuffer::FrameBufferAvailable DuplicateFrameBuffer failed! hResult:8000400580004005\n"}));

    EXPECT_TRUE(Present(4, 2));
    EXPECT_TRUE(m_Client.WaitForCalls(2));
}

TEST_F(FrameBufferFrameTest, FrameBufferAvailable_EventRefused_Fails)
{
    const TraceMask mask(kErrorsAndEnd);
    Start();
    m_Trace.Clear();
    bool presented = true;
    {
        FailingImport noEvent(nullptr, "kernel32.dll", "SetEvent", FALSE, ERROR_INVALID_HANDLE);
        presented = Present(4, 2);
    }
    EXPECT_FALSE(presented);
    EXPECT_EQ(ErrorLines(), Lines{"UMDThreadFrameBuffer::FrameBufferAvailable SetEvent failed! 6\n"});
    EXPECT_EQ(m_Client.Names(), Lines{});
}

TEST_F(FrameBufferFrameTest, Update_SlowLibrary_GetsOnlyTheNewestFrameAndPresentsDoNotWait)
{
    Start();
    Hold("Update");
    ASSERT_TRUE(Present(4, 2, 100));
    ASSERT_TRUE(m_Gate.WaitForOne());
    for (UINT frame = 2; frame <= 20; ++frame)
        ASSERT_TRUE(Present(4, 2, frame * 100)) << "returns though the library holds the first frame";
    m_Gate.Open();
    ASSERT_TRUE(m_Client.WaitForCalls(3));
    Stop();
    EXPECT_EQ(FirstPixels(), (std::vector<UINT>{100, 2000}));
}

TEST_F(FrameBufferFrameTest, Run_WokenForAFrameThatIsTaken_WaitsForTheNext)
{
    Start();
    Hold("Plug");
    ASSERT_TRUE(Present(4, 2, 100));
    ASSERT_TRUE(m_Gate.WaitForOne());
    ASSERT_TRUE(Present(4, 2, 200));  // taken behind the plug, which leaves its wake-up behind
    m_Gate.Open();
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    ASSERT_TRUE(Present(4, 2, 300));
    ASSERT_TRUE(m_Client.WaitForCalls(3));
    Stop();
    EXPECT_EQ(FirstPixels(), (std::vector<UINT>{200, 300}));
}

TEST_F(FrameBufferFrameTest, FrameBufferAvailable_ManyFrames_AllocatesNothing)
{
    TraceMask quiet(0);
    Start();
    Hold("Update");  // a worker that still reads a copy has the ring make another one
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Gate.WaitForOne());
    for (int frame = 0; frame < 2; ++frame)
        ASSERT_TRUE(Present(4, 2));
    bool presented = true;
    unsigned allocations = 0;
    {
        FailNthAllocation counter(0);
        for (int frame = 0; frame < 100; ++frame)
            presented = presented && m_Thread->FrameBufferAvailable(
                                         m_pTarget.Get(), 4, 2, D3DFMT_X8R8G8B8, D3DDDI_ROTATION_IDENTITY);
        allocations = counter.Count();
    }
    m_Gate.Open();
    EXPECT_TRUE(presented);
    EXPECT_EQ(allocations, 0u);
}
}  // namespace
