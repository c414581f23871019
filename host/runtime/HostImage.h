// A picture in memory: packed rows of 0x00RRGGBB pixels, top row first.
#pragma once

#include <windows.h>

#include <vector>

struct HostImage
{
    UINT m_Width = 0;
    UINT m_Height = 0;
    std::vector<UINT> m_Pixels;

    HostImage() = default;
    HostImage(UINT width, UINT height) : m_Width(width), m_Height(height), m_Pixels(size_t{width} * height) {}

    UINT At(UINT x, UINT y) const { return m_Pixels[size_t{y} * m_Width + x]; }
    /// Fills a rectangle, cut off at the picture's edges.
    void Fill(const RECT& rect, UINT color);
    bool operator==(const HostImage&) const = default;
};
