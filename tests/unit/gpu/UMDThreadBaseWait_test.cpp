// What the base of threads does about a worker that does not end, and about one that faults.
#include "gpu/UMDThreadBase.h"

#include "Faults.h"
#include "ImpatientWait.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using namespace tesslo::test;

namespace
{
/// Runs until it is let go.
class HeldThread : public UMDThreadBase
{
public:
    ~HeldThread() override { CloseHandle(m_hGo); }

    void Run() override { WaitForSingleObject(m_hGo, INFINITE); }
    void Go() { SetEvent(m_hGo); }
    DWORD Id() const { return m_dwThreadId; }

private:
    HANDLE m_hGo = CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

class FaultingThread : public UMDThreadBase
{
public:
    void Run() override { RaiseAccessViolation(); }
};

class UMDThreadBaseWaitTest : public testing::Test
{
protected:
    TraceMask m_Mask{UMDTRACE_ERROR};
    TraceCapture m_Trace;
};

TEST_F(UMDThreadBaseWaitTest, Wait_WithoutLimit_TellsAfterFiveSecondsAndThenEachMinute)
{
    HeldThread thread;
    ASSERT_TRUE(thread.Start());
    const ImpatientWait impatient(nullptr, 3);
    DWORD result = WAIT_FAILED;
    std::thread owner([&] { result = thread.Wait(INFINITE); });
    EXPECT_TRUE(ImpatientWait::WaitUntilOver());
    thread.Go();
    owner.join();
    EXPECT_EQ(result, WAIT_OBJECT_0);
    EXPECT_EQ(ImpatientWait::Slices(), (std::vector<DWORD>{5000, 60000, 60000}));
    const std::string begin = "UMDThreadBase::Wait thread " + std::to_string(thread.Id()) + " has not ended after ";
    EXPECT_EQ(m_Trace.Lines(), (Lines{begin + "5 s\n", begin + "65 s\n", begin + "125 s\n"}));
}

TEST_F(UMDThreadBaseWaitTest, Wait_EndsInTime_TellsNothing)
{
    HeldThread thread;
    ASSERT_TRUE(thread.Start());
    thread.Go();
    EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(m_Trace.Lines(), Lines{});
}

TEST_F(UMDThreadBaseWaitTest, Wait_WithALimit_IsOneWaitThatTellsNothing)
{
    HeldThread thread;
    ASSERT_TRUE(thread.Start());
    {
        const ImpatientWait impatient(nullptr, 2);
        EXPECT_EQ(thread.Wait(5000), static_cast<DWORD>(WAIT_TIMEOUT));
        EXPECT_EQ(ImpatientWait::Slices(), std::vector<DWORD>{5000});
    }
    EXPECT_EQ(m_Trace.Lines(), Lines{});
    thread.Go();
    EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);
}

TEST_F(UMDThreadBaseWaitTest, Wait_Fails_AnswersSoAtOnce)
{
    HeldThread thread;
    ASSERT_TRUE(thread.Start());
    {
        const FailingImport noWait(nullptr, "kernel32.dll", "WaitForSingleObject", WAIT_FAILED, ERROR_INVALID_HANDLE);
        EXPECT_EQ(thread.Wait(INFINITE), WAIT_FAILED);
    }
    EXPECT_EQ(m_Trace.Lines(), Lines{});
    thread.Go();
    EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);
}

TEST_F(UMDThreadBaseWaitTest, Run_Faults_EndsTheThreadAndNotTheProcess)
{
    FaultingThread thread;
    ASSERT_TRUE(thread.Start());
    EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(
        m_Trace.Lines(), (Lines{"EXCEPTION_ACCESS_VIOLATION\n", "Exception in thread! UMDThreadBase::Run failed!\n"}));
}
}  // namespace
