#include "BrowserTileDiff.h"

#include <cstring>
#include <numeric>

namespace
{

bool IsSame(const BrowserPicture& before, const BrowserPicture& after, const BrowserRect& rect)
{
    const size_t pitch = after.m_Grid.m_Width;
    size_t at = rect.m_Y * pitch + rect.m_X;
    for (uint32_t y = 0; y < rect.m_Height; ++y, at += pitch)
        if (std::memcmp(&before.m_Pixels[at], &after.m_Pixels[at], rect.m_Width * sizeof(uint32_t)) != 0)
            return false;
    return true;
}

}  // namespace

std::vector<uint32_t> BrowserTileDiff(const BrowserPicture& before, const BrowserPicture& after)
{
    std::vector<uint32_t> tiles;
    if (before.m_Grid != after.m_Grid)
    {
        tiles.resize(after.m_Grid.Count());
        std::iota(tiles.begin(), tiles.end(), 0);
        return tiles;
    }
    for (uint32_t tile = 0; tile < after.m_Grid.Count(); ++tile)
        if (!IsSame(before, after, after.m_Grid.Rect(tile)))
            tiles.push_back(tile);
    return tiles;
}
