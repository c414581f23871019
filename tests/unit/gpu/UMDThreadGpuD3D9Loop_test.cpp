// The message loop of the GPU thread: what wakes it, in which order, and what ends it.
#include "Gate.h"
#include "GpuThreadFixture.h"
#include "ImportPatch.h"

using namespace tesslo::test;

namespace
{
Gate* g_pGate;  ///< in front of the wait of the loop
decltype(&MsgWaitForMultipleObjectsEx) g_pMsgWait;
DWORD g_WaitMask;
DWORD g_WaitTime;

DWORD WINAPI GatedMsgWait(DWORD count, const HANDLE* pHandles, DWORD milliseconds, DWORD mask, DWORD flags)
{
    g_WaitMask = mask;
    g_WaitTime = milliseconds;
    g_pGate->Pass();
    return g_pMsgWait(count, pHandles, milliseconds, mask, flags);
}

class UMDThreadGpuD3D9LoopTest : public GpuThreadFixture
{
};

class UMDThreadGpuD3D9GatedLoopTest : public UMDThreadGpuD3D9LoopTest
{
protected:
    /// Starts the thread, and goes on when it is at its first wait.
    void SetUp() override
    {
        g_pGate = &m_Gate;
        Start();
        ASSERT_TRUE(m_Gate.WaitForOne());
        m_Trace.Clear();
    }
    void TearDown() override
    {
        m_Gate.Open();
        Stop();
        m_Thread.reset();
    }

    Gate m_Gate;
    ImportPatch m_Wait{nullptr, "user32.dll", "MsgWaitForMultipleObjectsEx", GatedMsgWait, &g_pMsgWait};
};
}  // namespace

TEST_F(UMDThreadGpuD3D9GatedLoopTest, Wait_HasNoEndAndWakesForPostedAndSentMessages)
{
    EXPECT_EQ(g_WaitMask, static_cast<DWORD>(QS_ALLPOSTMESSAGE | QS_SENDMESSAGE));
    EXPECT_EQ(g_WaitTime, INFINITE);
}

TEST_F(UMDThreadGpuD3D9GatedLoopTest, BurstOfMessages_TakesOneAWakeUpUntilAllAreDone)
{
    const HWND hWnd = HiddenWindow();
    Lines expected;
    for (UINT i = 0; i < 5; ++i)
    {
        PostMessageW(hWnd, WM_APP + i, 0, 0);
        expected.push_back("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n");
        expected.push_back(">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc " + std::to_string(WM_APP + i) + "\n");
    }
    // The last of the burst is seen when the loop comes to its sixth wait.
    m_Gate.Open();
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(m_Gate.WaitForOne());
    Stop();
    Lines lines = m_Trace.Lines();
    ASSERT_GE(lines.size(), expected.size());
    lines.resize(expected.size());
    EXPECT_EQ(lines, expected);
}

TEST_F(UMDThreadGpuD3D9GatedLoopTest, ExitRequestedBehindABurst_ComesFirst)
{
    for (int i = 0; i < 500; ++i)
        PostMessageW(HiddenWindow(), WM_APP, 0, 0);
    m_Thread->ThreadGuiRequestExit();
    m_Gate.Open();
    ExpectEnd();
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n"), 0u);
}

TEST_F(UMDThreadGpuD3D9GatedLoopTest, QuitMessage_IsOneOfManyAndEndsNothing)
{
    PostMessageW(HiddenWindow(), WM_QUIT, 0, 0);
    m_Gate.Open();
    ASSERT_TRUE(m_Gate.WaitForOne()) << "back at the wait";
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n"), 1u);
    EXPECT_EQ(m_Thread->GetDevice(), &m_Device);
}

TEST_F(UMDThreadGpuD3D9LoopTest, WaitFails_EndsWithTheLastError)
{
    const FailingImport patch(nullptr, "user32.dll", "MsgWaitForMultipleObjectsEx", WAIT_FAILED, ERROR_INVALID_HANDLE);
    Start();
    ExpectEnd();
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects WAIT_FAILED 6\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDThreadGpuD3D9::Run\n"), 1u);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9LoopTest, WaitAnswersSomethingElse_EndsAndTellsIt)
{
    const FailingImport patch(nullptr, "user32.dll", "MsgWaitForMultipleObjectsEx", WAIT_ABANDONED_0, 0);
    Start();
    ExpectEnd();
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects unexpected result: 128\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDThreadGpuD3D9::Run\n"), 1u);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}
