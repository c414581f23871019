#include "host/program/HostOverview.h"

#include "host/scenes/HostLettering.h"

#include <algorithm>

namespace
{

constexpr UINT kTileWidth = 400;  // at most, in pixels
constexpr UINT kTileHeight = 300;
constexpr LONG kGap = 16;
constexpr LONG kScale = 2;  // of the letters
constexpr LONG kLineHeight = (kHostLetterHeight + 3) * kScale;
constexpr UINT kPaper = 0xF6F8FA;
constexpr UINT kInk = 0x24292F;
constexpr UINT kFrameColor = 0x8C959F;
constexpr UINT kNothing = 0xD0D7DE;

/// The shape of a frame, as large as it fits and no larger than it is.
SIZE TileSize(const HostImage& frame)
{
    if (frame.m_Width == 0 || frame.m_Height == 0)
        return {kTileWidth, kTileHeight};
    UINT width = std::min(frame.m_Width, kTileWidth);
    UINT height = std::max(1u, frame.m_Height * width / frame.m_Width);
    if (height > kTileHeight)
    {
        height = kTileHeight;
        width = std::max(1u, frame.m_Width * height / frame.m_Height);
    }
    return {static_cast<LONG>(width), static_cast<LONG>(height)};
}

LONG ColumnWidth(const HostOverviewTile& tile)
{
    LONG width = TileSize(tile.m_Frame).cx;
    for (const std::string& line : tile.m_Caption)
        width = std::max(width, HostLettersWidth(line, kScale));
    return width;
}

void Draw(HostImage& overview, const HostImage& picture, LONG left, LONG top)
{
    for (UINT y = 0; y < picture.m_Height; ++y)
        std::copy_n(&picture.m_Pixels[size_t{y} * picture.m_Width], picture.m_Width,
            &overview.m_Pixels[(static_cast<size_t>(top) + y) * overview.m_Width + static_cast<size_t>(left)]);
}

/// The frames stand on one line, whatever their height, and their captions begin below it.
void DrawTile(HostImage& overview, const HostOverviewTile& tile, LONG left, LONG line)
{
    const SIZE size = TileSize(tile.m_Frame);
    const LONG top = line - size.cy;
    overview.Fill({left - 1, top - 1, left + size.cx + 1, line + 1}, kFrameColor);
    if (tile.m_Frame.m_Pixels.empty())
        overview.Fill({left, top, left + size.cx, line}, kNothing);
    else
        Draw(overview, HostShrink(tile.m_Frame, static_cast<UINT>(size.cx), static_cast<UINT>(size.cy)), left, top);
    LONG y = line + kGap;
    for (const std::string& text : tile.m_Caption)
    {
        for (const RECT& rect : HostLetters(text, left, y, kScale))
            overview.Fill(rect, kInk);
        y += kLineHeight;
    }
}

/// The mean of a part of the picture.
UINT Mean(const HostImage& image, const RECT& part)
{
    UINT64 red = 0, green = 0, blue = 0;
    for (LONG y = part.top; y < part.bottom; ++y)
        for (LONG x = part.left; x < part.right; ++x)
        {
            const UINT pixel = image.At(static_cast<UINT>(x), static_cast<UINT>(y));
            red += pixel >> 16 & 0xFF;
            green += pixel >> 8 & 0xFF;
            blue += pixel & 0xFF;
        }
    const UINT64 count = static_cast<UINT64>(part.right - part.left) * static_cast<UINT64>(part.bottom - part.top);
    const auto mean = [count](UINT64 sum) { return static_cast<UINT>((sum + count / 2) / count); };
    return mean(red) << 16 | mean(green) << 8 | mean(blue);
}

}  // namespace

HostImage HostMakeOverview(const std::vector<HostOverviewTile>& tiles)
{
    LONG width = kGap, line = 0;
    size_t texts = 0;
    for (const HostOverviewTile& tile : tiles)
    {
        width += ColumnWidth(tile) + kGap;
        line = std::max(line, kGap + TileSize(tile.m_Frame).cy);
        texts = std::max(texts, tile.m_Caption.size());
    }
    const LONG height = line + kGap + static_cast<LONG>(texts) * kLineHeight + kGap;
    HostImage overview(static_cast<UINT>(width), static_cast<UINT>(height));
    overview.Fill({0, 0, width, height}, kPaper);
    LONG left = kGap;
    for (const HostOverviewTile& tile : tiles)
    {
        DrawTile(overview, tile, left, line);
        left += ColumnWidth(tile) + kGap;
    }
    return overview;
}

HostImage HostShrink(const HostImage& image, UINT width, UINT height)
{
    const auto edge = [](UINT index, UINT from, UINT to) { return static_cast<LONG>(UINT64{index} * from / to); };
    HostImage small(width, height);
    for (UINT y = 0; y < height; ++y)
        for (UINT x = 0; x < width; ++x)
            small.m_Pixels[size_t{y} * width + x] =
                Mean(image, {edge(x, image.m_Width, width), edge(y, image.m_Height, height),
                                edge(x + 1, image.m_Width, width), edge(y + 1, image.m_Height, height)});
    return small;
}
