#include "gpu/UMDThreadBase.h"

#include "Gate.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <vector>

using namespace tesslo::test;

namespace
{
class GatedThread : public UMDThreadBase
{
public:
    HANDLE Handle() const { return m_hThread; }
    DWORD Id() const { return m_dwThreadId; }

    void Run() override
    {
        m_RunOn = GetCurrentThreadId();
        m_Gate.Pass();
    }

    Gate m_Gate;
    DWORD m_RunOn = 0;
};

struct CreateThreadArguments
{
    LPSECURITY_ATTRIBUTES m_pSecurity;
    SIZE_T m_StackSize;
    LPVOID m_pParameter;
    DWORD m_Flags;
};
std::vector<CreateThreadArguments> g_CreateThreadCalls;
decltype(&CreateThread) g_pCreateThread;  // the platform's own

HANDLE WINAPI RecordingCreateThread(LPSECURITY_ATTRIBUTES pSecurity, SIZE_T stackSize, LPTHREAD_START_ROUTINE pStart,
    LPVOID pParameter, DWORD flags, LPDWORD pThreadId)
{
    g_CreateThreadCalls.push_back({pSecurity, stackSize, pParameter, flags});
    return g_pCreateThread(pSecurity, stackSize, pStart, pParameter, flags, pThreadId);
}

TEST(UMDThreadBase, Start_Always_CreatesAThreadWithDefaultsThatRunsTheObject)
{
    g_CreateThreadCalls.clear();
    GatedThread thread;
    {
        const ImportPatch patch(nullptr, "kernel32.dll", "CreateThread", RecordingCreateThread, &g_pCreateThread);
        EXPECT_TRUE(thread.Start());
    }
    thread.m_Gate.Open();
    EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);

    ASSERT_EQ(g_CreateThreadCalls.size(), 1u);
    EXPECT_EQ(g_CreateThreadCalls[0].m_pSecurity, nullptr);
    EXPECT_EQ(g_CreateThreadCalls[0].m_StackSize, 0u);
    EXPECT_EQ(g_CreateThreadCalls[0].m_pParameter, &thread);
    EXPECT_EQ(g_CreateThreadCalls[0].m_Flags, 0u);
    EXPECT_EQ(thread.m_RunOn, thread.Id());
    EXPECT_NE(thread.m_RunOn, GetCurrentThreadId());
}

TEST(UMDThreadBase, Start_CreateThreadFails_TracesOneLineWithoutLineFeedAndAnswersFalse)
{
    GatedThread thread;
    TraceMask mask(0x7FF);
    TraceCapture trace;
    FailingImport patch(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);

    EXPECT_FALSE(thread.Start());

    EXPECT_EQ(trace.Lines(), Lines{"UMDThreadBase::Start CreateThread failed. LastError 8"});
    EXPECT_EQ(thread.Handle(), nullptr);
    EXPECT_EQ(thread.Wait(INFINITE), 0u);
}

TEST(UMDThreadBase, Wait_NeverStarted_AnswersZeroAtOnce)
{
    GatedThread thread;
    EXPECT_EQ(thread.Wait(INFINITE), 0u);
}

TEST(UMDThreadBase, Wait_WhileTheThreadRuns_TimesOut)
{
    GatedThread thread;
    ASSERT_TRUE(thread.Start());
    EXPECT_EQ(thread.Wait(1), static_cast<DWORD>(WAIT_TIMEOUT));
    thread.m_Gate.Open();
    EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);
}

TEST(UMDThreadBase, Wait_AfterTheEnd_AnswersAtOnceAnyNumberOfTimes)
{
    GatedThread thread;
    ASSERT_TRUE(thread.Start());
    thread.m_Gate.Open();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);

    DWORD exitCode = 1;
    EXPECT_TRUE(GetExitCodeThread(thread.Handle(), &exitCode));
    EXPECT_EQ(exitCode, 0u);
}

TEST(UMDThreadBase, Destructor_AfterTheEnd_ClosesTheThreadHandle)
{
    HANDLE hThread = nullptr;
    {
        GatedThread thread;
        ASSERT_TRUE(thread.Start());
        thread.m_Gate.Open();
        thread.Wait(INFINITE);
        hThread = thread.Handle();
        DWORD flags = 0;
        ASSERT_TRUE(GetHandleInformation(hThread, &flags));
    }
    DWORD flags = 0;
    EXPECT_FALSE(GetHandleInformation(hThread, &flags));
}
}  // namespace
