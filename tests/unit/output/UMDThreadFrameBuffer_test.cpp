// Life of a frame-buffer thread: its start, its loop, its end.
#include "FailNthAllocation.h"
#include "FrameBufferThreadFixture.h"
#include "TraceLevels.h"

#include <algorithm>

using namespace tesslo::test;

namespace
{
// Tells of each wait of a worker.
HANDLE g_hAtWait;
decltype(&WaitForMultipleObjects) g_pWait;

DWORD WINAPI TellingWait(DWORD count, const HANDLE* pHandles, BOOL all, DWORD milliseconds)
{
    ReleaseSemaphore(g_hAtWait, 1, nullptr);
    return g_pWait(count, pHandles, all, milliseconds);
}

class UMDThreadFrameBufferTest : public FrameBufferThreadFixture
{
protected:
    size_t PositionOf(const std::string& line) const
    {
        const Lines lines = m_Trace.Lines();
        return std::ranges::find(lines, line) - lines.begin();
    }
};

TEST_F(UMDThreadFrameBufferTest, ConstructorAndDestructor_NeverStarted_TraceOneLineEach)
{
    m_Trace.Clear();
    {
        UMDThreadFrameBuffer thread;
    }
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{"UMDThreadFrameBuffer::UMDThreadFrameBuffer\n", "UMDThreadFrameBuffer::~UMDThreadFrameBuffer\n"}));
}

TEST_F(UMDThreadFrameBufferTest, RequestExit_NeverStarted_AnswersFalse)
{
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->RequestExit());
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDThreadFrameBuffer::RequestExit\n"});
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadFrameBufferTest, FrameBufferAvailable_NeverStarted_Fails)
{
    m_Trace.Clear();
    EXPECT_FALSE(Present(4, 4));
    EXPECT_EQ(m_Trace.Lines(), (Lines{">>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
                                   "UMDThreadFrameBuffer::FrameBufferAvailable m_bInit == false\n"}));
}

TEST_F(UMDThreadFrameBufferTest, Start_NoDevice_FailsAndStaysUnstarted)
{
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->Start(nullptr, kSource, m_Client.Module(), nullptr));
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", "UMDThreadFrameBuffer::Start pDeviceContext is NULL\n"}));
    EXPECT_FALSE(m_Thread->RequestExit());
}

TEST_F(UMDThreadFrameBufferTest, Start_Twice_AnswersTrueAndDoesNothingMore)
{
    Start();
    m_Trace.Clear();
    FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_TRUE(m_Thread->Start(nullptr, kSource + 1, nullptr, nullptr));
    EXPECT_EQ(m_Trace.LinesOfThisThread(), Lines{">>> UMDThreadFrameBuffer::Start\n"});
}

TEST_F(UMDThreadFrameBufferTest, Start_AfterTheEnd_AnswersTrueAndStartsNothing)
{
    Start();
    Stop();
    EXPECT_TRUE(Start(m_Client.Module()));
    EXPECT_EQ(m_Thread->Wait(0), WAIT_OBJECT_0);
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, Start_NoMemoryForTheRing_FailsAndPresentsAreRefused)
{
    m_Trace.Clear();
    bool started = true;
    {
        FailNthAllocation shortage(1);
        started = Start(m_Client.Module());
    }
    EXPECT_FALSE(started);
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", "UMDThreadFrameBuffer::Start FrameBuffer is NULL\n"}));
    ExpectExited();
    EXPECT_TRUE(Start(m_Client.Module())) << "started once is started";
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadFrameBufferTest, Start_NoThread_Fails)
{
    m_Trace.Clear();
    FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(Start(m_Client.Module()));
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", ">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n",
            ">>> UMDFrameBuffer::UMDFrameBuffer\n", "UMDThreadBase::Start CreateThread failed. LastError 8",
            "UMDThreadFrameBuffer::Start UMDBaseThread::Start failed!\n"}));
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadFrameBufferTest, Life_OneFrame_TracesEachStepOnItsThread)
{
    g_hAtWait = CreateSemaphoreW(nullptr, 0, 100, nullptr);
    const ImportPatch wait(nullptr, "kernel32.dll", "WaitForMultipleObjects", TellingWait, &g_pWait);
    m_Trace.Clear();
    Start();
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0);
    ASSERT_TRUE(Present(4, 2));
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0) << "the worker waits for the second frame";
    Stop();
    CloseHandle(g_hAtWait);
    EXPECT_EQ(m_Trace.LinesOfThisThread(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", ">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n",
            ">>> UMDFrameBuffer::UMDFrameBuffer\n", ">>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
            ">>> UMDFrameBuffer::DuplicateFrameBuffer\n", ">>> UMDGpuDx9Surface::Create\n",
            ">>> UMDGpuDx9Surface::Duplicate\n", "UMDGpuDx9Surface::Duplicate SRC[4 2 22] DST[4 2 22] XXX[4 2 22]\n",
            "UMDThreadFrameBuffer::RequestExit\n", ">>> UMDFrameBuffer::~UMDFrameBuffer\n",
            ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
    Lines workerLines;
    for (const auto& line : m_Trace.ThreadLines())
    {
        if (line.m_ThreadId != GetCurrentThreadId())
            workerLines.push_back(line.m_Text);
    }
    EXPECT_EQ(workerLines,
        (Lines{">>> UMDThreadFrameBuffer::Run\n", ">>> UMDThreadFrameBuffer::InternalInitializeConnection\n",
            ">>> UMDFrameBuffer::GetDuplicateFrameBufferMalloc\n", ">>> UMDFrameBuffer::GetDuplicateFrameBuffer\n",
            ">>> UMDThreadFrameBuffer::InternalProcessFrameBuffer\n",
            ">>> UMDThreadFrameBuffer::InternalSendFrameBuffer\n", "UMDThreadFrameBuffer::Run exiting...\n",
            ">>> UMDThreadFrameBuffer::InternalUninitializeConnection\n", "UMDThreadFrameBuffer::Run exit\n"}));
    EXPECT_LT(
        PositionOf(">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"), PositionOf("UMDThreadFrameBuffer::Run exiting...\n"));
}

TEST_F(UMDThreadFrameBufferTest, Life_WithAndWithoutAFrame_EachLineHasItsLevel)
{
    const Lines lines = LevelledTraceOfAllThreads([&] {
        m_Thread.emplace();
        Start();
        Stop();
        m_Thread.emplace();
        const size_t calls = m_Client.History().size();
        Start();
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(m_Client.WaitForCalls(calls + 2));
        Stop();
        m_Thread.reset();
    });
    EXPECT_EQ(Containing(lines, "UMDThreadFrameBuffer"),
        (Lines{"0x204 UMDThreadFrameBuffer::Run exit\n", "0x204 UMDThreadFrameBuffer::Run exiting...\n",
            "0x40 >>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
            "0x40 >>> UMDThreadFrameBuffer::InternalInitializeConnection\n",
            "0x40 >>> UMDThreadFrameBuffer::InternalProcessFrameBuffer\n",
            "0x40 >>> UMDThreadFrameBuffer::InternalSendFrameBuffer\n",
            "0x40 >>> UMDThreadFrameBuffer::InternalUninitializeConnection\n", "0x40 >>> UMDThreadFrameBuffer::Run\n",
            "0x40 >>> UMDThreadFrameBuffer::Start\n", "0x40 UMDThreadFrameBuffer::RequestExit\n",
            "0x40 UMDThreadFrameBuffer::UMDThreadFrameBuffer\n",
            "0x40 UMDThreadFrameBuffer::~UMDThreadFrameBuffer\n"}));
}

TEST_F(UMDThreadFrameBufferTest, WhatIsDeclined_EachLine_IsAnError)
{
    const TraceMask mask(UMDTRACE_ERROR);
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->Start(nullptr, kSource, m_Client.Module(), nullptr));
    EXPECT_FALSE(Present(4, 4));
    {
        FailNthAllocation shortage(1);
        EXPECT_FALSE(Start(m_Client.Module()));
    }
    EXPECT_FALSE(Present(4, 4));
    m_Thread.emplace();
    {
        FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_FALSE(Start(m_Client.Module()));
    }
    for (const DWORD answer : {DWORD{WAIT_FAILED}, DWORD{WAIT_ABANDONED_0}})
    {
        m_Thread.emplace();
        FailingImport noWait(nullptr, "kernel32.dll", "WaitForMultipleObjects", answer, ERROR_INVALID_HANDLE);
        Start();
        ASSERT_TRUE(WaitForEnd());
    }
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{"UMDThreadFrameBuffer::Start pDeviceContext is NULL\n",
            "UMDThreadFrameBuffer::FrameBufferAvailable m_bInit == false\n",
            "UMDThreadFrameBuffer::Start FrameBuffer is NULL\n",
            "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n",
            "UMDThreadBase::Start CreateThread failed. LastError 8",
            "UMDThreadFrameBuffer::Start UMDBaseThread::Start failed!\n",
            "UMDThreadFrameBuffer::Run WAIT_FAILED 6...\n", "UMDThreadFrameBuffer::Run unexpected result 128...\n"}));
}

TEST_F(UMDThreadFrameBufferTest, Run_WaitFails_EndsWithTheLastError)
{
    m_Trace.Clear();
    FailingImport noWait(nullptr, "kernel32.dll", "WaitForMultipleObjects", WAIT_FAILED, ERROR_INVALID_HANDLE);
    Start();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run WAIT_FAILED 6...\n"), 1u);
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, Run_WaitAnswersSomethingElse_EndsAndTellsIt)
{
    m_Trace.Clear();
    FailingImport oddWait(nullptr, "kernel32.dll", "WaitForMultipleObjects", WAIT_ABANDONED_0 + 1, 0);
    Start();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run unexpected result 129...\n"), 1u);
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, RequestExit_Twice_AnswersTrueAndDoesNothingMore)
{
    Start();
    Stop();
    m_Trace.Clear();
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDThreadFrameBuffer::RequestExit\n"});
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, RequestExit_WorkerEndedByItself_StillDeletesTheRing)
{
    m_Client.Fail("Plug", E_FAIL);
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    m_pTarget.Reset();
    EXPECT_EQ(m_Fake.LiveObjects().size(), 1u);
    m_Trace.Clear();
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadFrameBuffer::RequestExit\n", ">>> UMDFrameBuffer::~UMDFrameBuffer\n",
                                   ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
}

TEST_F(UMDThreadFrameBufferTest, Destructor_WorkerStillRuns_EndsItAndTheRing)
{
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    m_pTarget.Reset();
    m_Thread.reset();
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Unplug"}));
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}
}  // namespace
