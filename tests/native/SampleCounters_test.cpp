#include "SampleCounters.h"

#include "SampleCounts.h"

#include <gtest/gtest.h>

#include <latch>
#include <thread>
#include <vector>

// Cases share the counters of the process: each has a source of its own.

namespace
{

void Add(UINT source, SampleEvent event)
{
    SampleCountersAdd(source, event, 0, ERROR_SUCCESS);
}

}  // namespace

TEST(SampleCounters, Add_OnSeveralThreads_CountsEachOnce)
{
    constexpr int kThreads = 4, kEach = 100000;
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
    {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int n = 0; n < kEach; ++n)
                Add(0, kSampleReceived);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(SampleCounts(0).Received, UINT64{kThreads} * kEach);
    EXPECT_EQ(SampleCounts(0).Dropped, 0u);
}

// Two threads that answer each other: one wake that is lost, and both wait until the case's time is over.
TEST(SampleCounters, WaitReceived_AnotherThreadCounts_EndsWithTheFrame)
{
    constexpr UINT kLast = TESSLO_SAMPLE_SOURCES - 1, kRounds = 500;
    constexpr DWORD kHour = 3600 * 1000;
    std::thread other([] {
        for (UINT round = 1; round <= kRounds; ++round)
        {
            TessloSampleWaitReceived(kLast, round, kHour);
            Add(kLast - 1, kSampleReceived);
        }
    });
    for (UINT round = 1; round <= kRounds; ++round)
    {
        Add(kLast, kSampleReceived);
        EXPECT_TRUE(TessloSampleWaitReceived(kLast - 1, round, kHour));
    }
    other.join();
    EXPECT_EQ(SampleCounts(kLast - 1).Received, kRounds);
}

TEST(SampleCounters, Fail_SeveralTimes_KeepsTheFirst)
{
    TessloSampleFailure none = {};
    EXPECT_FALSE(TessloSampleGetFailure(2, &none));
    SampleCountersAdd(2, kSampleFailed, 7, ERROR_DISK_FULL);
    SampleCountersAdd(2, kSampleFailed, 3, ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(SampleCounts(2).Failed, 2u);
    TessloSampleFailure failure = {};
    EXPECT_TRUE(TessloSampleGetFailure(2, &failure));
    EXPECT_EQ(failure.Frame, 7u);
    EXPECT_EQ(failure.Error, ERROR_DISK_FULL);
}

TEST(SampleCounters, WaitRecorded_RecordedDroppedAndFailed_AllCount)
{
    Add(8, kSampleReceived);
    EXPECT_FALSE(TessloSampleWaitRecorded(8, 1, 20));
    Add(8, kSampleRecorded);
    Add(8, kSampleDropped);
    SampleCountersAdd(8, kSampleFailed, 0, ERROR_DISK_FULL);
    EXPECT_TRUE(TessloSampleWaitRecorded(8, 3, 0));
    EXPECT_FALSE(TessloSampleWaitRecorded(8, 4, 20));
}

TEST(SampleCounters, WaitReceived_NothingCounts_TimeRunsOut)
{
    EXPECT_FALSE(TessloSampleWaitReceived(1, 1, 20));
    EXPECT_TRUE(TessloSampleWaitReceived(1, 0, 0));
}
