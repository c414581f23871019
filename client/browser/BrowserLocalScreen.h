// A screen of this process: frames come through a mailbox and are compared with the one before, tile by tile.
#pragma once

#include "BrowserMailbox.h"
#include "BrowserScreen.h"

class BrowserLocalScreen : public BrowserScreen
{
public:
    using BrowserScreen::BrowserScreen;

    /// Where the driver's worker puts frames.
    BrowserMailbox& Mailbox() { return m_Mailbox; }

    void Refresh() override;

private:
    void TakeTile(uint32_t tile);

    BrowserMailbox m_Mailbox;
    BrowserPicture m_Shown;     ///< the frame that the tiles are of
    BrowserPicture m_Incoming;  ///< the one after it
    uint64_t m_Unchanged = 0;   ///< frames that were like the one before
    BrowserWords m_Packing;     ///< kept, so that a tile takes no more memory than it needs
};
