// Where everything of a test card lies: rectangles of one colour, in the order in which they cover each other.
#pragma once

#include "ddi/ddi.h"

#include <string>
#include <vector>

struct HostCardLayer
{
    UINT m_Color;
    std::vector<RECT> m_Rects;  ///< cut off at the card's edges; may be none
};

using HostCardLayers = std::vector<HostCardLayer>;

class HostCardLayout
{
public:
    /// @param width, height pixels, as presented.
    HostCardLayout(UINT width, UINT height, UINT sourceId, D3DDDI_ROTATION rotation);

    /// All but the frame's number.
    HostCardLayers Card() const;
    /// The number, with what it stands on.
    HostCardLayers Number(UINT frame) const;

private:
    std::vector<RECT> Grid() const;
    std::vector<RECT> Border() const;
    std::vector<RECT> Stripes() const;
    std::vector<RECT> Arrow() const;
    std::vector<RECT> Line(LONG line, const std::string& text) const;
    RECT LineBox(LONG line) const;
    void AddCorners(HostCardLayers& layers) const;
    void AddBars(HostCardLayers& layers) const;
    void Cut(HostCardLayers& layers) const;

    LONG m_Width;
    LONG m_Height;
    LONG m_Scale;  ///< of the letters
    std::vector<std::string> m_Lines;
};
