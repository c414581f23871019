#include "BrowserPicture.h"

namespace
{

/// Swaps blue and red. A loop of shifts and masks alone, which compilers turn into vectors.
void CopyRow(uint32_t* pOut, const uint32_t* pIn, uint32_t width)
{
    for (uint32_t x = 0; x < width; ++x)
    {
        const uint32_t pixel = pIn[x];
        pOut[x] = 0xFF000000 | (pixel & 0x0000FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16;
    }
}

}  // namespace

bool BrowserPicture::Copy(const TessloVirtualMonitorFrame& frame)
{
    const BrowserTileGrid grid = {frame.Width, frame.Height};
    if (frame.pBits == nullptr || !grid.IsValid() || frame.Pitch / 4 < frame.Width)
        return false;
    m_Grid = grid;
    m_Pixels.resize(grid.Pixels());
    const BYTE* pRow = static_cast<const BYTE*>(frame.pBits);
    for (uint32_t y = 0; y < frame.Height; ++y, pRow += frame.Pitch)
        CopyRow(&m_Pixels[static_cast<size_t>(y) * frame.Width], reinterpret_cast<const uint32_t*>(pRow), frame.Width);
    return true;
}
