// The line that tells how far the program is.
#include "host/program/HostProgress.h"

#include <gtest/gtest.h>

TEST(HostProgressLine, WideConsole_BarOfFiftyCells)
{
    const std::string bar = "[" + std::string(25, '=') + std::string(25, ' ') + "]";
    EXPECT_EQ(HostProgressLine(30, 60, 80), bar + "  50 %: 30 of 60 frames");
    EXPECT_EQ(HostProgressLine(30, 60, 300), bar + "  50 %: 30 of 60 frames");
}

TEST(HostProgressLine, NarrowConsole_ShorterBarThenNone)
{
    EXPECT_EQ(HostProgressLine(30, 60, 36), "[=====     ]  50 %: 30 of 60 frames");
    EXPECT_EQ(HostProgressLine(30, 60, 30), " 50 %: 30 of 60 frames");
    EXPECT_EQ(HostProgressLine(30, 60, 24), " 50 %: 30 of 60 frames");
}

TEST(HostProgressLine, AnyWidth_LeavesTheLastColumnFree)
{
    for (UINT columns = 1; columns < 200; ++columns)
        EXPECT_LT(HostProgressLine(999'999, 1'000'000, columns).size(), columns);
}

TEST(HostProgressLine, NoEnd_OnlyTheCount)
{
    EXPECT_EQ(HostProgressLine(1200, 0, 80), "1200 frames");
}
