#include "host/scenes/HostCardLayout.h"

#include "host/scenes/HostCardScene.h"
#include "host/scenes/HostLettering.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr UINT kPaper = 0x202830;
constexpr UINT kGridColor = 0x405060;
constexpr UINT kWhite = 0xFFFFFF;
constexpr UINT kArrowColor = 0xF0C020;
constexpr UINT kBars[] = {0xFFFFFF, 0xFFFF00, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFF0000, 0x0000FF, 0x000000};
constexpr LONG kGridStep = 32;
constexpr LONG kCorner = 8;     // edge of a mark
constexpr LONG kCornerGap = 2;  // between mark and edge
constexpr LONG kStripes = 16;   // of a patch, and as many gaps
constexpr LONG kLines = 4;
constexpr LONG kLineHeight = kHostLetterHeight + 2;
constexpr LONG kLineLetters = 14;  // the longest line, and a blank on either side

// As many letters for each number: the box is wiped as a whole, and nothing moves.
std::string NumberText(UINT frame)
{
    char text[32];
    std::snprintf(text, sizeof(text), "FRAME %06u", frame);
    return text;
}

}  // namespace

HostCardLayout::HostCardLayout(UINT width, UINT height, UINT sourceId, D3DDDI_ROTATION rotation)
    : m_Width(static_cast<LONG>(width)), m_Height(static_cast<LONG>(height)),
      m_Scale(std::max<LONG>(
          1, std::min(m_Width / (kLineLetters * kHostLetterWidth), m_Height * 3 / 8 / (kLines * kLineHeight)))),
      m_Lines{"SOURCE " + std::to_string(sourceId), std::to_string(width) + "X" + std::to_string(height),
          "TURNED BY " + std::to_string((rotation - D3DDDI_ROTATION_IDENTITY) * 90)}
{
}

HostCardLayers HostCardLayout::Card() const
{
    HostCardLayers layers = {{kPaper, {{0, 0, m_Width, m_Height}}}, {kGridColor, Grid()}, {kWhite, Border()},
        {kWhite, Stripes()}, {kArrowColor, Arrow()}};
    AddCorners(layers);
    AddBars(layers);
    for (LONG line = 0; line < static_cast<LONG>(m_Lines.size()); ++line)
    {
        layers.push_back({kPaper, {LineBox(line)}});
        layers.push_back({kWhite, Line(line, m_Lines[static_cast<size_t>(line)])});
    }
    Cut(layers);
    return layers;
}

HostCardLayers HostCardLayout::Number(UINT frame) const
{
    HostCardLayers layers = {{kPaper, {LineBox(kLines - 1)}}, {kWhite, Line(kLines - 1, NumberText(frame))}};
    Cut(layers);
    return layers;
}

std::vector<RECT> HostCardLayout::Grid() const
{
    std::vector<RECT> rects;
    for (LONG x = kGridStep; x < m_Width; x += kGridStep)
        rects.push_back({x, 0, x + 1, m_Height});
    for (LONG y = kGridStep; y < m_Height; y += kGridStep)
        rects.push_back({0, y, m_Width, y + 1});
    return rects;
}

std::vector<RECT> HostCardLayout::Border() const
{
    return {{0, 0, m_Width, 1}, {0, m_Height - 1, m_Width, m_Height}, {0, 0, 1, m_Height},
        {m_Width - 1, 0, m_Width, m_Height}};
}

// Upright ones on the left, level ones on the right: scaled or blurred anywhere on its way, a patch turns grey.
std::vector<RECT> HostCardLayout::Stripes() const
{
    const LONG size = 2 * kStripes, left = m_Width / 16, right = m_Width - m_Width / 16 - size, top = m_Height / 8;
    std::vector<RECT> rects;
    for (LONG i = 0; i < size; i += 2)
    {
        rects.push_back({left + i, top, left + i + 1, top + size});
        rects.push_back({right, top + i, right + size, top + i + 1});
    }
    return rects;
}

std::vector<RECT> HostCardLayout::Arrow() const
{
    const LONG middle = m_Width / 2, tip = m_Height / 16, head = m_Height / 8, shaft = m_Height / 24;
    std::vector<RECT> rects;
    for (LONG row = 0; row < head; ++row)
        rects.push_back({middle - row - 1, tip + row, middle + row + 1, tip + row + 1});
    rects.push_back({middle - shaft, tip + head, middle + shaft, m_Height * 5 / 16});
    const LONG top = tip + head - kHostLetterHeight * m_Scale;
    for (const RECT& rect : HostLetters("UP", middle + head + 2 * m_Scale, top, m_Scale))
        rects.push_back(rect);
    return rects;
}

RECT HostCardLayout::LineBox(LONG line) const
{
    const LONG width = kLineLetters * kHostLetterWidth * m_Scale, height = kLineHeight * m_Scale;
    const LONG left = (m_Width - width) / 2, top = m_Height * 11 / 32 + line * height;
    return {left, top, left + width, top + height};
}

std::vector<RECT> HostCardLayout::Line(LONG line, const std::string& text) const
{
    return HostLetters(text, (m_Width - HostLettersWidth(text, m_Scale)) / 2, LineBox(line).top + m_Scale, m_Scale);
}

void HostCardLayout::AddCorners(HostCardLayers& layers) const
{
    const LONG inner = kCornerGap, outer = inner + kCorner;
    layers.push_back({HostCardScene::kTopLeft, {{inner, inner, outer, outer}}});
    layers.push_back({HostCardScene::kTopRight, {{m_Width - outer, inner, m_Width - inner, outer}}});
    layers.push_back({HostCardScene::kBottomLeft, {{inner, m_Height - outer, outer, m_Height - inner}}});
    layers.push_back(
        {HostCardScene::kBottomRight, {{m_Width - outer, m_Height - outer, m_Width - inner, m_Height - inner}}});
}

void HostCardLayout::AddBars(HostCardLayers& layers) const
{
    const LONG count = static_cast<LONG>(std::size(kBars)), left = m_Width / 16, width = m_Width * 14 / 16;
    for (LONG i = 0; i < count; ++i)
        layers.push_back({kBars[i],
            {{left + width * i / count, m_Height * 3 / 4, left + width * (i + 1) / count, m_Height * 15 / 16}}});
}

// A small card has no room for all of it.
void HostCardLayout::Cut(HostCardLayers& layers) const
{
    const RECT card = {0, 0, m_Width, m_Height};
    for (HostCardLayer& layer : layers)
    {
        for (RECT& rect : layer.m_Rects)
            IntersectRect(&rect, &rect, &card);
        std::erase_if(layer.m_Rects, [](const RECT& rect) { return IsRectEmpty(&rect); });
    }
}
