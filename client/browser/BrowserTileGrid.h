// How a picture is cut into tiles: squares in rows from the top left; those on the right and lower edge may be cut
// short.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr uint32_t kBrowserTileSize = 64;       ///< pixels, both ways
inline constexpr uint32_t kBrowserPictureSide = 8192;  ///< pixels; a longer side is refused
inline constexpr uint32_t kBrowserTilePixels = kBrowserTileSize * kBrowserTileSize;

struct BrowserRect
{
    uint32_t m_X;
    uint32_t m_Y;
    uint32_t m_Width;
    uint32_t m_Height;
};

struct BrowserTileGrid
{
    uint32_t m_Width = 0;   ///< pixels of the picture
    uint32_t m_Height = 0;  ///< pixels

    bool operator==(const BrowserTileGrid&) const = default;

    bool IsValid() const
    {
        return m_Width - 1 < kBrowserPictureSide && m_Height - 1 < kBrowserPictureSide;  // zero wraps around
    }
    uint32_t Columns() const { return (m_Width + kBrowserTileSize - 1) / kBrowserTileSize; }
    uint32_t Rows() const { return (m_Height + kBrowserTileSize - 1) / kBrowserTileSize; }
    uint32_t Count() const { return Columns() * Rows(); }
    size_t Pixels() const { return static_cast<size_t>(m_Width) * m_Height; }

    /// Pixels of a tile.
    BrowserRect Rect(uint32_t tile) const
    {
        const uint32_t x = tile % Columns() * kBrowserTileSize;
        const uint32_t y = tile / Columns() * kBrowserTileSize;
        return {x, y, Shorter(m_Width - x), Shorter(m_Height - y)};
    }

private:
    static uint32_t Shorter(uint32_t length) { return length < kBrowserTileSize ? length : kBrowserTileSize; }
};
