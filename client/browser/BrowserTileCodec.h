// Packs a tile without loss into words that a page unpacks with fill() and set().
//
// A tile is a list of packets, pixels in rows from the top left. The first word of a packet has its kind in the two
// highest bits and its number of pixels in the others:
//   0  literal: that many pixels follow
//   1  run: one pixel follows, that many times
//   2  above: that many pixels are those of the row above, in the same tile
#pragma once

#include "BrowserTileGrid.h"

#include <span>
#include <vector>

enum class BrowserPacket : uint32_t
{
    Literal,
    Run,
    Above,
};

inline constexpr uint32_t kBrowserPacketShift = 30;

/// Appends the tile's packets.
///
/// @param pPixels the picture's first pixel
/// @param pitch   pixels from one row of the picture to the next
void BrowserTileEncode(const uint32_t* pPixels, size_t pitch, const BrowserRect& rect, std::vector<uint32_t>* pWords);

/// Whether the packets make exactly this tile.
bool BrowserTileIsWhole(std::span<const uint32_t> words, const BrowserRect& rect);

/// Writes the tile into a picture.
///
/// @return false if the packets do not make exactly this tile: then nothing is written.
bool BrowserTileDecode(std::span<const uint32_t> words, uint32_t* pPixels, size_t pitch, const BrowserRect& rect);
