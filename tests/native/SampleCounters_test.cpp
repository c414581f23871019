#include "SampleCounters.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

// Cases share the counters of the process: each has a source of its own.

TEST(SampleCounters, Add_OnSeveralThreads_CountsEachOnce)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
    {
        threads.emplace_back([] {
            for (int n = 0; n < 1000; ++n)
                SampleCountersAdd(0, &TessloSampleCounters::Received);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(SampleCountersGet(0).Received, 4000u);
    EXPECT_EQ(SampleCountersAdd(0, &TessloSampleCounters::Received), 4000u);
    EXPECT_EQ(SampleCountersGet(0).Dropped, 0u);
}

TEST(SampleCounters, WaitReceived_AnotherThreadCounts_EndsWithTheLastFrame)
{
    std::thread other([] {
        for (int n = 0; n < 100; ++n)
            SampleCountersAdd(TESSLO_SAMPLE_SOURCES - 1, &TessloSampleCounters::Received);
    });
    EXPECT_TRUE(SampleCountersWaitReceived(TESSLO_SAMPLE_SOURCES - 1, 100, 60000));
    EXPECT_EQ(SampleCountersGet(TESSLO_SAMPLE_SOURCES - 1).Received, 100u);
    other.join();
}

TEST(SampleCounters, WaitReceived_NothingCounts_TimeRunsOut)
{
    EXPECT_FALSE(SampleCountersWaitReceived(1, 1, 20));
    EXPECT_TRUE(SampleCountersWaitReceived(1, 0, 0));
}
