// The binary messages between the library, the page and other processes: words of 32 bits, the lowest byte first.
//
// Eight words come first: the kind, the screen's number, the frame's number, width and height of the screen, two words
// of the frame's time (the lower first), and a count.
//   kind 1, tiles: count tiles follow, each its number, its count of words and its packets (BrowserTileCodec.h)
//   kind 2, a compressed picture: x, y, width and height of the part that it shows follow, then count bytes of JPEG
#pragma once

#include "BrowserScreen.h"

#include <optional>
#include <span>

inline constexpr uint32_t kBrowserMessageTiles = 1;
inline constexpr uint32_t kBrowserMessageJpeg = 2;

struct BrowserMessageHead
{
    uint32_t m_Kind = 0;
    uint32_t m_Screen = 0;
    uint32_t m_Number = 0;  ///< frames of the screen so far, modulo 2^32
    BrowserTileGrid m_Grid;
    uint64_t m_Time = 0;  ///< BrowserClockNow of its server
    uint32_t m_Count = 0;
};

/// One tile of a message, in the message's own memory.
struct BrowserMessageTile
{
    uint32_t m_Tile;
    std::span<const uint32_t> m_Words;
};

/// A message of kind 1: the tiles of a screen that changed after a version.
BrowserWords BrowserMessageOfTiles(const BrowserScreen& screen, uint64_t version, uint32_t id);

/// A message of kind 2.
BrowserWords BrowserMessageOfJpeg(
    const BrowserMessageHead& head, const BrowserRect& rect, std::span<const uint8_t> bytes);

/// Reads the head of a message.
///
/// @return no value for fewer words than it has, or a size that no screen has.
std::optional<BrowserMessageHead> BrowserMessageReadHead(std::span<const uint32_t> message);

/// Reads the tiles of a message of kind 1. Their packets are not looked at.
///
/// @return no value if tiles are missing, are none of the screen's, or something is left over.
std::optional<std::vector<BrowserMessageTile>> BrowserMessageReadTiles(std::span<const uint32_t> message);
