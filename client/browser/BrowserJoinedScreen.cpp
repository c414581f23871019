#include "BrowserJoinedScreen.h"

#include "BrowserTileCodec.h"

#include <utility>

void BrowserJoinedScreen::Refresh()
{
    if (m_Applied == 0)
        return;
    m_Drawn += std::exchange(m_Applied, 0);
    m_Wanted();
}

bool BrowserJoinedScreen::Apply(std::span<const uint32_t> message)
{
    const auto head = BrowserMessageReadHead(message);
    const auto tiles = BrowserMessageReadTiles(message);
    if (!head || !tiles || (head->m_Grid != Grid() && tiles->size() != head->m_Grid.Count()))
        return false;
    // Pages trust what they are sent. Ascending numbers are all different: a whole screen has every tile.
    for (size_t i = 0; i < tiles->size(); ++i)
    {
        const BrowserMessageTile& tile = (*tiles)[i];
        if ((i != 0 && tile.m_Tile <= (*tiles)[i - 1].m_Tile) ||
            !BrowserTileIsWhole(tile.m_Words, head->m_Grid.Rect(tile.m_Tile)))
            return false;
    }
    BeginChange(head->m_Grid);
    for (const BrowserMessageTile& tile : *tiles)
        SetTile(tile.m_Tile, BrowserWords(tile.m_Words.begin(), tile.m_Words.end()));
    EndChange(head->m_Number, head->m_Time);
    ++m_Applied;
    return true;
}

bool BrowserJoinedScreen::TakeDrawn()
{
    if (m_Drawn == 0)
        return false;
    --m_Drawn;
    return true;
}
