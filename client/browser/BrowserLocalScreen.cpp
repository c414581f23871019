#include "BrowserLocalScreen.h"

#include "BrowserTileCodec.h"
#include "BrowserTileDiff.h"

#include <utility>

void BrowserLocalScreen::Refresh()
{
    if (!m_Mailbox.Take(&m_Incoming))
        return;
    const std::vector<uint32_t> changed = BrowserTileDiff(m_Shown, m_Incoming);
    if (changed.empty())
    {
        ++m_Unchanged;
        return;
    }
    BeginChange(m_Incoming.m_Grid);
    for (const uint32_t tile : changed)
        TakeTile(tile);
    EndChange(m_Incoming.m_Number - m_Unchanged, m_Incoming.m_Time);
    std::swap(m_Shown, m_Incoming);
}

void BrowserLocalScreen::TakeTile(uint32_t tile)
{
    const BrowserTileGrid& grid = m_Incoming.m_Grid;
    m_Packing.clear();
    BrowserTileEncode(m_Incoming.m_Pixels.data(), grid.m_Width, grid.Rect(tile), &m_Packing);
    SetTile(tile, BrowserWords(m_Packing.begin(), m_Packing.end()));
}
