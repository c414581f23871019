#include "host/runtime/HostImage.h"

#include <algorithm>

void HostImage::Fill(const RECT& rect, UINT color)
{
    const LONG left = std::max<LONG>(rect.left, 0);
    const LONG right = std::min<LONG>(rect.right, static_cast<LONG>(m_Width));
    const LONG bottom = std::min<LONG>(rect.bottom, static_cast<LONG>(m_Height));
    for (LONG y = std::max<LONG>(rect.top, 0); y < bottom; ++y)
        for (LONG x = left; x < right; ++x)
            m_Pixels[static_cast<size_t>(y) * m_Width + static_cast<size_t>(x)] = color & 0xFFFFFF;
}
