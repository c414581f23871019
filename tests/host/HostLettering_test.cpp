// Letters made of rectangles.
#include "host/runtime/HostImage.h"
#include "host/scenes/HostLettering.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

// The text as rows of '#' and '.'.
std::string Draw(std::string_view text)
{
    const UINT width = static_cast<UINT>(HostLettersWidth(text, 1)), height = kHostLetterHeight;
    HostImage image(width, height);
    for (const RECT& rect : HostLetters(text, 0, 0, 1))
        image.Fill(rect, 1);
    std::string rows;
    for (UINT y = 0; y < height; ++y)
    {
        for (UINT x = 0; x < width; ++x)
            rows += image.At(x, y) != 0 ? '#' : '.';
        rows += '\n';
    }
    return rows;
}

}  // namespace

TEST(HostLettering, TwoLetters_StandBesideEachOtherTheRightWayUp)
{
    EXPECT_EQ(Draw("F4"), "#####....#.\n"
                          "#.......##.\n"
                          "#......#.#.\n"
                          "####..#..#.\n"
                          "#.....#####\n"
                          "#........#.\n"
                          "#........#.\n");
}

TEST(HostLettering, EverySign_HasAShapeOfItsOwn)
{
    std::set<std::string> shapes;
    const std::string signs = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:.,-";
    for (const char sign : signs)
        shapes.insert(Draw(std::string(1, sign)));
    EXPECT_EQ(shapes.size(), signs.size());
    EXPECT_FALSE(shapes.contains(Draw(" ")));
}

TEST(HostLettering, SmallLetters_AreCapitals_UnknownSignsBlank)
{
    EXPECT_EQ(Draw("turned"), Draw("TURNED"));
    EXPECT_EQ(Draw("A~B"), Draw("A B"));
}

TEST(HostLettering, Scale_MakesEachPixelASquare)
{
    const std::vector<RECT> rects = HostLetters("-", 10, 20, 3);
    ASSERT_EQ(rects.size(), 1u);
    EXPECT_EQ(rects[0].left, 10);
    EXPECT_EQ(rects[0].right, 10 + 15);
    EXPECT_EQ(rects[0].top, 20 + 9);
    EXPECT_EQ(rects[0].bottom, 20 + 12);
    EXPECT_EQ(HostLettersWidth("--", 3), 33);
    EXPECT_EQ(HostLettersWidth("", 3), 0);
}
