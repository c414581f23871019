// One frame as the page's canvas takes it: packed rows of red, green, blue and an opaque alpha, a byte each.
#pragma once

#include "BrowserTileGrid.h"

#include <tesslo/client.h>

#include <vector>

struct BrowserPicture
{
    BrowserTileGrid m_Grid;
    std::vector<uint32_t> m_Pixels;
    uint64_t m_Number = 0;  ///< frames of its source until then, this one included
    uint64_t m_Time = 0;    ///< microseconds of a clock that never turns back, when the driver delivered it

    /// Copies the frame's pixels. The fourth byte is set, because formats without alpha leave garbage in it.
    ///
    /// @return false for a frame that no canvas could show: its record contradicts itself or a side is too long.
    bool Copy(const TessloVirtualMonitorFrame& frame);
};
