// A target with what the scenes draw on it.
#pragma once

#include "tools/painters/DifferentialPainter.h"

#include <array>

/// A vertex in pixels of the target.
struct ScreenVertex
{
    float m_X, m_Y, m_Z, m_W;
    D3DCOLOR m_Color;
    float m_U, m_V;
};

/// A vertex that the transforms or a shader bring to the target.
struct SpaceVertex
{
    float m_X, m_Y, m_Z;
    D3DCOLOR m_Color;
    float m_U, m_V;
};

template <typename Element, size_t Count>
std::span<const BYTE> BytesOf(const std::array<Element, Count>& elements)
{
    return {reinterpret_cast<const BYTE*>(elements.data()), sizeof(elements)};
}

class DifferentialCanvas
{
public:
    static constexpr UINT kWidth = 96;   // pixels
    static constexpr UINT kHeight = 64;  // pixels
    static constexpr RECT kAll = {0, 0, kWidth, kHeight};
    static constexpr D3DCOLOR kBackground = 0xFF102040;

    /// Makes a target of its own, clears it and binds it: no lights, no culling, no depth test, screen vertices.
    explicit DifferentialCanvas(
        Painter& painter, PainterSurface kind = PainterSurface::Target, D3DFORMAT format = D3DFMT_A8R8G8B8);

    PainterObject& Target() { return *m_pTarget; }
    void UseScreenVertices() { m_Painter.SetDeclaration(*m_pScreenDeclaration); }
    void UseSpaceVertices() { m_Painter.SetDeclaration(*m_pSpaceDeclaration); }
    void Clear() { m_Painter.Clear(D3DCLEAR_TARGET, kBackground, 0, 0); }
    /// Binds a depth-stencil buffer of the target's size, cleared to 1 and 0.
    void AddDepth();
    void Frame() { m_Painter.Frame(*m_pTarget); }

    /// Draws a rectangle of one colour or of a colour at each side, from the caller's memory.
    void Quad(const RECT& rect, float z, D3DCOLOR left, D3DCOLOR right);
    void Quad(const RECT& rect, float z, D3DCOLOR color) { Quad(rect, z, color, color); }
    /// The same in space: the corners are -1 and 1.
    void SpaceQuad(float left, float top, float right, float bottom, float z, D3DCOLOR color);

private:
    Painter& m_Painter;
    PainterHandle m_pTarget;
    PainterHandle m_pDepth;
    PainterHandle m_pScreenDeclaration;
    PainterHandle m_pSpaceDeclaration;
};
