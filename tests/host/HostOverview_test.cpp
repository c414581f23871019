// The picture of all sources side by side.
#include "SamePixels.h"
#include "host/program/HostOverview.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr UINT kGap = 16;

HostImage Plain(UINT width, UINT height, UINT color)
{
    HostImage image(width, height);
    image.Fill({0, 0, static_cast<LONG>(width), static_cast<LONG>(height)}, color);
    return image;
}

}  // namespace

TEST(HostShrink, ThreeByTwo_ToOnePixel_IsTheMean)
{
    HostImage image(3, 2);
    image.m_Pixels = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0x010101};
    EXPECT_EQ(ColorText(HostShrink(image, 1, 1).At(0, 0)), "0x555555") << "each channel: (2 * 255 + 1) / 6";
}

TEST(HostShrink, EveryPixel_CountsOnce)
{
    HostImage image(5, 1);
    image.m_Pixels = {10, 20, 30, 40, 50};
    const HostImage small = HostShrink(image, 2, 1);
    EXPECT_EQ(small.m_Pixels, (std::vector<UINT>{15, 40}));
    EXPECT_EQ(HostShrink(image, 5, 1), image);
}

TEST(HostOverview, Frames_OfAllShapes_StandOnOneLineSideBySide)
{
    const HostImage overview = HostMakeOverview(
        {{Plain(800, 400, 0xFF0000), {"A"}}, {Plain(300, 600, 0x00FF00), {"B"}}, {Plain(40, 30, 0x0000FF), {"C"}}});
    // 400x200, 150x300 and 40x30, the last as it is.
    EXPECT_EQ(overview.m_Width, 4 * kGap + 400 + 150 + 40);
    const UINT line = kGap + 300;
    const UINT lefts[] = {kGap, 2 * kGap + 400, 3 * kGap + 550};
    const UINT heights[] = {200, 300, 30};
    const UINT colors[] = {0xFF0000, 0x00FF00, 0x0000FF};
    for (UINT i = 0; i < 3; ++i)
    {
        EXPECT_EQ(ColorText(overview.At(lefts[i], line - 1)), ColorText(colors[i])) << i;
        EXPECT_EQ(ColorText(overview.At(lefts[i], line - heights[i])), ColorText(colors[i])) << i;
        EXPECT_NE(overview.At(lefts[i], line - heights[i] - 1), colors[i]) << i;
        EXPECT_NE(overview.At(lefts[i] - 1, line - 1), colors[i]) << i;
        EXPECT_NE(overview.At(lefts[i], line), colors[i]) << i;
    }
}

TEST(HostOverview, Captions_LongerThanTheFrame_MakeItsColumnWider)
{
    const std::string caption(20, 'H');
    const HostImage overview = HostMakeOverview({{Plain(64, 64, 0), {"H", caption}}});
    const UINT width = 20 * 12 - 2;
    EXPECT_EQ(overview.m_Width, 2 * kGap + width);
    const UINT ink = overview.At(kGap, 2 * kGap + 64);
    EXPECT_EQ(ink, overview.At(kGap, 2 * kGap + 64 + 20)) << "the second line's first stroke";
    EXPECT_EQ(ink, overview.At(kGap + width - 1, 2 * kGap + 64 + 20)) << "its last letter's last stroke";
    EXPECT_NE(ink, overview.At(kGap + width - 1, 2 * kGap + 64)) << "the first line has one letter";
}

TEST(HostOverview, NothingArrived_PlaceIsKept)
{
    const HostImage overview = HostMakeOverview({{HostImage(), {"nothing"}}, {Plain(64, 64, 0x123456), {}}});
    EXPECT_EQ(overview.m_Width, 3 * kGap + 400 + 64);
    EXPECT_NE(overview.At(kGap + 200, kGap + 150), overview.At(0, 0)) << "a grey place";
}
