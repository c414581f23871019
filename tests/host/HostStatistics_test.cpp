#include "host/program/HostStatistics.h"

#include <gtest/gtest.h>

#include <numeric>

TEST(HostPercentile, NoValues_Zero)
{
    EXPECT_EQ(0, HostPercentile({}, 50));
}

TEST(HostPercentile, HundredValuesInAnyOrder_NearestRank)
{
    std::vector<double> values(100);
    std::iota(values.rbegin(), values.rend(), 1);
    EXPECT_EQ(50, HostPercentile(values, 50));
    EXPECT_EQ(99, HostPercentile(values, 99));
    EXPECT_EQ(100, HostPercentile(values, 100));
    EXPECT_EQ(1, HostPercentile(values, 0));
}

TEST(HostPercentile, FewValues_OnlyMeasuredOnes)
{
    EXPECT_EQ(7, HostPercentile({7}, 99));
    EXPECT_EQ(3, HostPercentile({9, 3}, 50));
    EXPECT_EQ(9, HostPercentile({9, 3}, 99));
}
