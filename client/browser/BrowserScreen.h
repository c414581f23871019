// What one virtual monitor shows, in packed tiles: each is packed once, however many watch it.
//
// Used on the library's own thread alone.
#pragma once

#include "BrowserTileGrid.h"

#include <memory>
#include <string>
#include <vector>

using BrowserWords = std::vector<uint32_t>;

/// Where a screen comes from, as the page tells it.
struct BrowserOrigin
{
    uint32_t m_Source = 0;   ///< video-present source
    uint32_t m_Process = 0;  ///< that presents on it
    std::string m_Program;   ///< file name of that process's program, UTF-8
};

class BrowserScreen
{
public:
    struct Tile
    {
        std::shared_ptr<const BrowserWords> m_pWords;
        uint64_t m_Version = 0;  ///< of the screen when the tile changed last
    };

    explicit BrowserScreen(BrowserOrigin origin) : m_Origin(std::move(origin)) {}
    virtual ~BrowserScreen() = default;
    BrowserScreen(const BrowserScreen&) = delete;
    BrowserScreen& operator=(const BrowserScreen&) = delete;

    /// Takes over what its source has newest. Called by whoever is about to send: what nobody waits for costs nothing.
    virtual void Refresh() = 0;

    const BrowserOrigin& Origin() const { return m_Origin; }
    const BrowserTileGrid& Grid() const { return m_Grid; }
    const std::vector<Tile>& Tiles() const { return m_Tiles; }
    uint64_t Version() const { return m_Version; }  ///< changes so far; 0 before the first frame
    uint64_t Number() const { return m_Number; }    ///< frames so far, those left out that changed nothing
    uint64_t Time() const { return m_Time; }        ///< BrowserClockNow when the driver delivered the newest

    /// The tiles that changed after a version, as a message. Shared by all that are as far behind, while one sends it.
    ///
    /// @param id the screen's number for whoever receives the message
    std::shared_ptr<const BrowserWords> UpdateSince(uint64_t version, uint32_t id);

protected:
    /// Begins the next version. With another size every tile is to be set.
    void BeginChange(const BrowserTileGrid& grid);
    void SetTile(uint32_t tile, BrowserWords words);
    void EndChange(uint64_t number, uint64_t time);

private:
    const BrowserOrigin m_Origin;
    BrowserTileGrid m_Grid;
    std::vector<Tile> m_Tiles;
    uint64_t m_Version = 0;
    uint64_t m_Number = 0;
    uint64_t m_Time = 0;

    std::weak_ptr<const BrowserWords> m_pUpdate;  ///< made last
    uint64_t m_UpdateSince = 0;
    uint64_t m_UpdateVersion = 0;
    uint32_t m_UpdateId = 0;
};
