#include "BrowserScreen.h"

#include "BrowserMessage.h"

std::shared_ptr<const BrowserWords> BrowserScreen::UpdateSince(uint64_t version, uint32_t id)
{
    std::shared_ptr<const BrowserWords> pUpdate = m_pUpdate.lock();
    if (pUpdate != nullptr && m_UpdateSince == version && m_UpdateVersion == m_Version && m_UpdateId == id)
        return pUpdate;
    pUpdate = std::make_shared<const BrowserWords>(BrowserMessageOfTiles(*this, version, id));
    m_pUpdate = pUpdate;
    m_UpdateSince = version;
    m_UpdateVersion = m_Version;
    m_UpdateId = id;
    return pUpdate;
}

void BrowserScreen::BeginChange(const BrowserTileGrid& grid)
{
    ++m_Version;
    if (grid == m_Grid)
        return;
    m_Grid = grid;
    m_Tiles.clear();
    m_Tiles.resize(grid.Count());
}

void BrowserScreen::SetTile(uint32_t tile, BrowserWords words)
{
    m_Tiles[tile] = {std::make_shared<const BrowserWords>(std::move(words)), m_Version};
}

void BrowserScreen::EndChange(uint64_t number, uint64_t time)
{
    m_Number = number;
    m_Time = time;
}
