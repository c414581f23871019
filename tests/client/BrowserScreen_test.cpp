// What is sent of a screen: whoever applies its messages in order sees its frames, and only what changed is in them.
#include "BrowserLocalScreen.h"
#include "BrowserMessage.h"
#include "BrowserTileCodec.h"

#include <gtest/gtest.h>

namespace
{

/// A source's frames, one pixel at a time.
struct Source
{
    Source(uint32_t width, uint32_t height) : m_Width(width), m_Height(height), m_Bits(size_t{width} * height, 0x101010)
    {
    }

    uint32_t& At(uint32_t x, uint32_t y) { return m_Bits[size_t{y} * m_Width + x]; }

    void Show(BrowserLocalScreen& screen, uint64_t time = 0) const
    {
        const TessloVirtualMonitorFrame frame = {0, 0, m_Width, m_Height, m_Width * 4, 0, m_Bits.data()};
        screen.Mailbox().Put(frame, time);
        screen.Refresh();
    }

    uint32_t m_Width, m_Height;
    std::vector<uint32_t> m_Bits;
};

/// Draws messages as a page does.
struct Canvas
{
    void Draw(const BrowserWords& message)
    {
        const auto head = BrowserMessageReadHead(message);
        const auto tiles = BrowserMessageReadTiles(message);
        ASSERT_TRUE(head && tiles);
        m_Head = *head;
        if (m_Pixels.size() != head->m_Grid.Pixels())
            m_Pixels.assign(head->m_Grid.Pixels(), 0);
        for (const BrowserMessageTile& tile : *tiles)
            ASSERT_TRUE(
                BrowserTileDecode(tile.m_Words, m_Pixels.data(), head->m_Grid.m_Width, head->m_Grid.Rect(tile.m_Tile)));
    }

    void ExpectShows(const Source& source) const
    {
        ASSERT_EQ(m_Pixels.size(), source.m_Bits.size());
        for (size_t i = 0; i < m_Pixels.size(); ++i)
        {
            const uint32_t bits = source.m_Bits[i];
            ASSERT_EQ(m_Pixels[i], 0xFF000000 | (bits & 0xFF00) | (bits >> 16 & 0xFF) | (bits & 0xFF) << 16) << i;
        }
    }

    BrowserMessageHead m_Head;
    BrowserWords m_Pixels;
};

class BrowserScreenTest : public testing::Test
{
protected:
    BrowserLocalScreen m_Screen{BrowserOrigin{3, 44, "game.exe"}};
    Source m_Source{200, 100};  // 4 x 2 tiles
};

}  // namespace

TEST_F(BrowserScreenTest, NoFrame_HasNoVersion)
{
    m_Screen.Refresh();
    EXPECT_EQ(m_Screen.Version(), 0u);
}

TEST_F(BrowserScreenTest, UpdateSince_Nothing_IsTheWholePicture)
{
    m_Source.At(199, 99) = 0x445566;
    m_Source.Show(m_Screen, 0x123456789AB);
    Canvas canvas;
    canvas.Draw(*m_Screen.UpdateSince(0, 9));
    canvas.ExpectShows(m_Source);
    EXPECT_EQ(canvas.m_Head.m_Count, 8u);
    EXPECT_EQ(canvas.m_Head.m_Screen, 9u);
    EXPECT_EQ(canvas.m_Head.m_Number, 1u);
    EXPECT_EQ(canvas.m_Head.m_Time, 0x123456789ABu);
}

TEST_F(BrowserScreenTest, UpdateSince_AVersion_IsWhatChangedSince)
{
    m_Source.Show(m_Screen);
    Canvas canvas;
    canvas.Draw(*m_Screen.UpdateSince(0, 1));
    m_Source.At(64, 0) = 1;
    m_Source.Show(m_Screen);
    m_Source.At(199, 99) = 2;
    m_Source.Show(m_Screen);
    canvas.Draw(*m_Screen.UpdateSince(2, 1));
    EXPECT_EQ(canvas.m_Head.m_Count, 1u) << "the last change alone";
    canvas.Draw(*m_Screen.UpdateSince(1, 1));
    EXPECT_EQ(canvas.m_Head.m_Count, 2u);
    canvas.ExpectShows(m_Source);
}

TEST_F(BrowserScreenTest, Refresh_FrameLikeTheOneBefore_IsNoVersionAndCountsForNothing)
{
    m_Source.Show(m_Screen);
    m_Source.Show(m_Screen);
    EXPECT_EQ(m_Screen.Version(), 1u);
    EXPECT_EQ(m_Screen.Number(), 1u);
    m_Source.At(0, 0) = 5;
    m_Source.Show(m_Screen);
    EXPECT_EQ(m_Screen.Version(), 2u);
    EXPECT_EQ(m_Screen.Number(), 2u) << "no gap that a page would take for a dropped frame";
}

TEST_F(BrowserScreenTest, Refresh_FramesWereReplaced_LeavesAGapInTheNumbers)
{
    m_Source.Show(m_Screen);
    const TessloVirtualMonitorFrame frame = {0, 0, 1, 1, 4, 0, m_Source.m_Bits.data()};
    m_Screen.Mailbox().Put(frame, 0);
    m_Screen.Mailbox().Put(frame, 0);
    m_Screen.Refresh();
    EXPECT_EQ(m_Screen.Number(), 3u);
}

TEST_F(BrowserScreenTest, Refresh_OtherSize_SendsEveryTileWhateverWasKnown)
{
    m_Source.Show(m_Screen);
    Canvas canvas;
    canvas.Draw(*m_Screen.UpdateSince(0, 1));
    const Source turned(100, 200);
    turned.Show(m_Screen);
    canvas.Draw(*m_Screen.UpdateSince(1, 1));
    canvas.ExpectShows(turned);
    EXPECT_EQ(canvas.m_Head.m_Grid, (BrowserTileGrid{100, 200}));
}

TEST_F(BrowserScreenTest, UpdateSince_TwoThatAreAsFar_ShareOneMessage)
{
    m_Source.Show(m_Screen);
    const auto pFirst = m_Screen.UpdateSince(0, 1);
    EXPECT_EQ(m_Screen.UpdateSince(0, 1), pFirst);
    EXPECT_NE(m_Screen.UpdateSince(0, 2), pFirst);
    m_Source.At(0, 0) = 5;
    m_Source.Show(m_Screen);
    EXPECT_NE(m_Screen.UpdateSince(0, 1), pFirst);
}

TEST_F(BrowserScreenTest, ReadTiles_WhatIsNoMessage_IsRefused)
{
    m_Source.Show(m_Screen);
    const BrowserWords whole = *m_Screen.UpdateSince(0, 1);
    ASSERT_TRUE(BrowserMessageReadTiles(whole));
    const auto changed = [&](size_t at, uint32_t word) {
        BrowserWords words = whole;
        words[at] = word;
        return words;
    };
    EXPECT_FALSE(BrowserMessageReadTiles({}));
    EXPECT_FALSE(BrowserMessageReadTiles(std::span(whole).first(7)));
    EXPECT_FALSE(BrowserMessageReadTiles(std::span(whole).first(whole.size() - 1)));
    EXPECT_FALSE(BrowserMessageReadTiles(changed(0, kBrowserMessageJpeg)));
    EXPECT_FALSE(BrowserMessageReadTiles(changed(3, 0))) << "width";
    EXPECT_FALSE(BrowserMessageReadTiles(changed(4, kBrowserPictureSide + 1))) << "height";
    EXPECT_FALSE(BrowserMessageReadTiles(changed(7, 7))) << "a tile is left over";
    EXPECT_FALSE(BrowserMessageReadTiles(changed(7, 9))) << "more tiles than the screen has";
    EXPECT_FALSE(BrowserMessageReadTiles(changed(8, 8))) << "a tile behind the last";
    EXPECT_FALSE(BrowserMessageReadTiles(changed(9, 0xFFFFFFFF))) << "more words than there are";
}
