#include "host/program/HostStatistics.h"

#include <gtest/gtest.h>

#include <numeric>

TEST(HostPercentile, NoValues_Zero)
{
    EXPECT_EQ(HostPercentile({}, 50), 0);
}

TEST(HostPercentile, HundredValuesInAnyOrder_NearestRank)
{
    std::vector<double> values(100);
    std::iota(values.rbegin(), values.rend(), 1);
    EXPECT_EQ(HostPercentile(values, 50), 50);
    EXPECT_EQ(HostPercentile(values, 99), 99);
    EXPECT_EQ(HostPercentile(values, 100), 100);
    EXPECT_EQ(HostPercentile(values, 0), 1);
}

TEST(HostPercentile, FewValues_OnlyMeasuredOnes)
{
    EXPECT_EQ(HostPercentile({7}, 99), 7);
    EXPECT_EQ(HostPercentile({9, 3}, 50), 3);
    EXPECT_EQ(HostPercentile({9, 3}, 99), 9);
}
