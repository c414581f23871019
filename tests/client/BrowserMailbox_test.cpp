// Frames between the driver's worker and the library's own thread: the newest wins, and no byte of it is another's.
#include "BrowserMailbox.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

using Outcome = BrowserMailbox::Outcome;

/// A frame of one pixel value, with rows longer than their pixels.
struct Frame
{
    Frame(uint32_t width, uint32_t height, uint32_t pixel) : m_Bits((width + 3) * height, pixel)
    {
        m_Record.Width = width;
        m_Record.Height = height;
        m_Record.Pitch = (width + 3) * 4;
        m_Record.pBits = m_Bits.data();
    }

    std::vector<uint32_t> m_Bits;
    TessloVirtualMonitorFrame m_Record = {};
};

}  // namespace

TEST(BrowserMailbox, Take_AfterOneFrame_GivesItsPixelsForACanvas)
{
    BrowserMailbox mailbox;
    Frame frame(3, 2, 0);
    frame.m_Bits = {0x00112233, 0xA5445566, 1, 9, 9, 9, 2, 3, 4, 9, 9, 9};
    frame.m_Record.pBits = frame.m_Bits.data();
    EXPECT_EQ(mailbox.Put(frame.m_Record, 77), Outcome::Arrived);
    BrowserPicture picture;
    ASSERT_TRUE(mailbox.Take(&picture));
    EXPECT_EQ(picture.m_Grid, (BrowserTileGrid{3, 2}));
    EXPECT_EQ(picture.m_Pixels,
        (std::vector<uint32_t>{0xFF332211, 0xFF665544, 0xFF010000, 0xFF020000, 0xFF030000, 0xFF040000}));
    EXPECT_EQ(picture.m_Number, 1u);
    EXPECT_EQ(picture.m_Time, 77u);
    EXPECT_FALSE(mailbox.Take(&picture));
}

TEST(BrowserMailbox, Put_NobodyTakes_ReplacesTheOlder)
{
    BrowserMailbox mailbox;
    EXPECT_EQ(mailbox.Put(Frame(8, 8, 1).m_Record, 1), Outcome::Arrived);
    EXPECT_EQ(mailbox.Put(Frame(4, 2, 2).m_Record, 2), Outcome::Replaced);
    EXPECT_EQ(mailbox.Put(Frame(2, 4, 3).m_Record, 3), Outcome::Replaced);
    BrowserPicture picture;
    ASSERT_TRUE(mailbox.Take(&picture));
    EXPECT_EQ(picture.m_Grid, (BrowserTileGrid{2, 4}));
    EXPECT_EQ(picture.m_Pixels, std::vector<uint32_t>(8, 0xFF030000));
    EXPECT_EQ(picture.m_Number, 3u);
    EXPECT_EQ(mailbox.Put(Frame(8, 8, 4).m_Record, 4), Outcome::Arrived);
}

TEST(BrowserMailbox, Put_WhatNoCanvasShows_IsRefusedAndLeavesTheNewest)
{
    BrowserMailbox mailbox;
    mailbox.Put(Frame(2, 2, 5).m_Record, 1);
    Frame frame(2, 2, 6);
    frame.m_Record.Pitch = 7;
    EXPECT_EQ(mailbox.Put(frame.m_Record, 2), Outcome::Refused);
    frame.m_Record = {0, 0, 0, 2, 8, 0, frame.m_Bits.data()};
    EXPECT_EQ(mailbox.Put(frame.m_Record, 2), Outcome::Refused);
    frame.m_Record = {0, 0, 2, kBrowserPictureSide + 1, 8, 0, frame.m_Bits.data()};
    EXPECT_EQ(mailbox.Put(frame.m_Record, 2), Outcome::Refused);
    frame.m_Record = {0, 0, 2, 2, 8, 0, nullptr};
    EXPECT_EQ(mailbox.Put(frame.m_Record, 2), Outcome::Refused);
    BrowserPicture picture;
    ASSERT_TRUE(mailbox.Take(&picture));
    EXPECT_EQ(picture.m_Number, 1u);
}

TEST(BrowserMailbox, TwoThreads_EveryPictureIsOfOneFrame)
{
    constexpr uint32_t kFrames = 2000;
    BrowserMailbox mailbox;
    std::thread worker([&] {
        for (uint32_t i = 1; i <= kFrames; ++i)
            mailbox.Put(Frame(30 + i % 3, 20, i).m_Record, i);
    });
    BrowserPicture picture;
    uint64_t last = 0;
    while (last < kFrames)
    {
        if (!mailbox.Take(&picture))
            continue;
        ASSERT_GT(picture.m_Number, last);
        last = picture.m_Number;
        ASSERT_EQ(picture.m_Time, last);
        const uint32_t pixel = static_cast<uint32_t>(last & 0xFF) << 16 | (last & 0xFF00);
        ASSERT_EQ(picture.m_Pixels, std::vector<uint32_t>(picture.m_Grid.Pixels(), 0xFF000000 | pixel));
    }
    worker.join();
}
