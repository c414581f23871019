// Tiles come out of their packets as they went in, and packets that make no tile are refused.
#include "BrowserTileCodec.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

using Words = std::vector<uint32_t>;

constexpr uint32_t kPitch = 200;  // pixels
constexpr uint32_t kRun = 1u << kBrowserPacketShift;
constexpr uint32_t kAbove = 2u << kBrowserPacketShift;

struct Drawing
{
    const char* m_pName;
    std::function<uint32_t(uint32_t x, uint32_t y)> m_Pixel;
    size_t m_Most;  ///< words that a whole tile may take
};

const Drawing kDrawings[] = {
    {"one colour", [](uint32_t, uint32_t) { return 0xFF102030; }, 2},
    {"columns", [](uint32_t x, uint32_t) { return x * 7; }, kBrowserTileSize + 2},
    {"rows", [](uint32_t, uint32_t y) { return y * 7; }, kBrowserTileSize * 2},
    {"chequers", [](uint32_t x, uint32_t y) { return x / 8 + y / 8 & 1; }, 400},
    {"noise", [](uint32_t x, uint32_t y) { return (x * 2654435761u) ^ (y * 40503u * 65537u); }, kBrowserTilePixels + 1},
    {"words that look like packets", [](uint32_t x, uint32_t y) { return kAbove + (x ^ y); }, kBrowserTilePixels + 1},
};

class BrowserTileCodecTest : public testing::TestWithParam<Drawing>
{
protected:
    Words Picture() const
    {
        Words pixels(kPitch * kPitch);
        for (uint32_t i = 0; i < pixels.size(); ++i)
            pixels[i] = GetParam().m_Pixel(i % kPitch, i / kPitch);
        return pixels;
    }
};

/// Decodes into a picture of nothing but marks. Empty if the packets are refused.
Words Decode(const Words& words, const BrowserRect& rect, size_t pitch)
{
    Words pixels(pitch * (rect.m_Y + rect.m_Height + 1), 0xDEADBEEF);
    return BrowserTileDecode(words, pixels.data(), pitch, rect) ? pixels : Words();
}

}  // namespace

TEST_P(BrowserTileCodecTest, RoundTrip_EverySizeAndPlace_GivesThePixelsAndNoOthers)
{
    const Words picture = Picture();
    for (const BrowserRect& rect :
        {BrowserRect{0, 0, 64, 64}, {64, 64, 64, 64}, {0, 0, 1, 1}, {63, 5, 1, 64}, {3, 70, 64, 1}, {128, 128, 17, 33}})
    {
        Words words;
        BrowserTileEncode(picture.data(), kPitch, rect, &words);
        const Words decoded = Decode(words, rect, kPitch);
        ASSERT_FALSE(decoded.empty());
        for (uint32_t i = 0; i < decoded.size(); ++i)
        {
            const bool bInside = i % kPitch - rect.m_X < rect.m_Width && i / kPitch - rect.m_Y < rect.m_Height;
            ASSERT_EQ(decoded[i], bInside ? picture[i] : 0xDEADBEEF) << i;
        }
    }
}

TEST_P(BrowserTileCodecTest, Encode_WholeTile_TakesNoMoreWordsThanItsPatternNeeds)
{
    Words words;
    BrowserTileEncode(Picture().data(), kPitch, {0, 0, kBrowserTileSize, kBrowserTileSize}, &words);
    EXPECT_LE(words.size(), GetParam().m_Most);
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, BrowserTileCodecTest, testing::ValuesIn(kDrawings), [](const testing::TestParamInfo<Drawing>& info) {
        std::string name = info.param.m_pName;
        std::erase(name, ' ');
        return name;
    });

TEST(BrowserTileCodec, Encode_WordsAreThereAlready_AppendsBehindThem)
{
    const Words pixels(4, 5);
    Words words = {1, 2};
    BrowserTileEncode(pixels.data(), 2, {0, 0, 2, 2}, &words);
    EXPECT_EQ(words, (Words{1, 2, kRun + 4, 5}));
}

TEST(BrowserTileCodec, Decode_WhatIsNoTile_IsRefused)
{
    const BrowserRect rect = {0, 0, 2, 2};
    ASSERT_FALSE(Decode({kRun + 4, 5}, rect, 2).empty());
    const Words broken[] = {
        {},                               // nothing
        {kRun + 3, 5},                    // a pixel short
        {kRun + 5, 5},                    // a pixel too many
        {kRun + 4},                       // the pixel is missing
        {4, 1, 2, 3},                     // a literal's last pixel is missing
        {kRun + 4, 5, 0x3FFFFFFF},        // more behind the end than could ever be
        {kAbove + 2, kRun + 2, 5},        // there is no row above the first
        {1, 7, kAbove + 3},               // nor above its second pixel
        {3u << kBrowserPacketShift | 4},  // no such packet
    };
    EXPECT_TRUE(BrowserTileIsWhole(Words{kRun + 4, 5}, rect));
    for (const Words& words : broken)
    {
        EXPECT_TRUE(Decode(words, rect, 2).empty()) << testing::PrintToString(words);
        EXPECT_FALSE(BrowserTileIsWhole(words, rect)) << testing::PrintToString(words);
    }
}

TEST(BrowserTileGrid, Rect_OnTheEdges_IsCutShort)
{
    const BrowserTileGrid grid = {130, 65};
    EXPECT_EQ(grid.Count(), 6u);
    const BrowserRect last = grid.Rect(5);
    EXPECT_EQ(last.m_X, 128u);
    EXPECT_EQ(last.m_Y, 64u);
    EXPECT_EQ(last.m_Width, 2u);
    EXPECT_EQ(last.m_Height, 1u);
    EXPECT_EQ(grid.Rect(1).m_Width, 64u);
}

TEST(BrowserTileGrid, IsValid_NoPixelsOrTooMany_IsFalse)
{
    EXPECT_TRUE((BrowserTileGrid{1, kBrowserPictureSide}.IsValid()));
    EXPECT_FALSE((BrowserTileGrid{0, 1}.IsValid()));
    EXPECT_FALSE((BrowserTileGrid{1, 0}.IsValid()));
    EXPECT_FALSE((BrowserTileGrid{kBrowserPictureSide + 1, 1}.IsValid()));
}
