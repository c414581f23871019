// What is posted to the driver's thread runs in its order once somebody waits, and nobody waits for ever.
#include "interposer/carry/CarryThread.h"

#include "InterposedProgram.h"
#include "host/runtime/HostError.h"
#include "interposer/run/RunLedger.h"

#include <chrono>

namespace
{

using Clock = std::chrono::steady_clock;

class CarryThreadTest : public testing::Test
{
protected:
    /// Work that notes the number.
    CarryThread::Work Note(size_t number)
    {
        return [this, number] { m_Ran.push_back(number); };
    }

    CarryThread& m_Thread = CarryThread::Get();
    std::vector<size_t> m_Ran;
};

}  // namespace

TEST_F(CarryThreadTest, Wait_ForTheSecond_RunsBothInTheirOrderAndNotBefore)
{
    m_Thread.Post(Note(1));
    const UINT64 second = m_Thread.Post(Note(2));
    Sleep(20);
    EXPECT_TRUE(m_Ran.empty());
    m_Thread.Wait(second);
    EXPECT_EQ(m_Ran, (std::vector<size_t>{1, 2}));
}

TEST_F(CarryThreadTest, Do_BehindPosted_RunsLast)
{
    m_Thread.Post(Note(1));
    m_Thread.Do(Note(2));
    EXPECT_EQ(m_Ran, (std::vector<size_t>{1, 2}));
}

TEST_F(CarryThreadTest, Do_WorkThrows_ThrowsToTheCallerAndGoesOn)
{
    EXPECT_THROW(m_Thread.Do([] { throw HostError("thrown to the caller"); }), HostError);
    EXPECT_EQ(CountOf(RunOf().m_Failures, "thrown to the caller"), 0);
    m_Thread.Do(Note(1));
    EXPECT_EQ(m_Ran.size(), 1u);
}

TEST_F(CarryThreadTest, Post_WorkThrows_IsAFailureOfTheRunAndGoesOn)
{
    m_Thread.Post([] { throw HostError("thrown to nobody"); });
    m_Thread.Do(Note(1));
    EXPECT_EQ(CountOf(RunOf().m_Failures, "thrown to nobody"), 1);
    EXPECT_EQ(m_Ran.size(), 1u);
}

TEST_F(CarryThreadTest, Post_AsManyAsAreKept_RunsThemAll)
{
    for (size_t number = 1; number < CarryThread::kMostPosted; ++number)
        m_Thread.Post(Note(number));
    Sleep(20);
    EXPECT_TRUE(m_Ran.empty());
    m_Thread.Post(Note(CarryThread::kMostPosted));
    EXPECT_EQ(m_Ran.size(), CarryThread::kMostPosted);
}

TEST_F(CarryThreadTest, Post_OnTheThreadAsManyAsAreKept_DoesNotWaitForItself)
{
    m_Thread.Do([this] {
        for (size_t number = 1; number <= CarryThread::kMostPosted; ++number)
            m_Thread.Post(Note(number));
        EXPECT_TRUE(m_Ran.empty());
    });
    m_Thread.Do([] {});
    EXPECT_EQ(m_Ran.size(), CarryThread::kMostPosted);
}

TEST_F(CarryThreadTest, Finish_NobodyHasWaited_RunsWhatWasPosted)
{
    m_Thread.Post(Note(1));
    m_Thread.Finish();
    EXPECT_EQ(m_Ran.size(), 1u);
}

TEST_F(CarryThreadTest, Finish_OnTheThread_DoesNotWaitForItself)
{
    const auto begin = Clock::now();
    m_Thread.Do([this] { m_Thread.Finish(); });
    EXPECT_LT(Clock::now() - begin, CarryThread::kMostAtTheEnd);
}

TEST_F(CarryThreadTest, Finish_WorkTakesForEver_IsGivenUp)
{
    const HANDLE hEnd = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    m_Thread.Post([hEnd] { WaitForSingleObject(hEnd, INFINITE); });
    m_Thread.Post(Note(1));
    const auto begin = Clock::now();
    m_Thread.Finish();
    EXPECT_GE(Clock::now() - begin, CarryThread::kMostAtTheEnd);
    EXPECT_TRUE(m_Ran.empty());
    SetEvent(hEnd);
    m_Thread.Do([] {});
    CloseHandle(hEnd);
}
