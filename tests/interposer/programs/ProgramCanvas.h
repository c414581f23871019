// A window whose device draws rectangles: what the frame scenes have in common.
#pragma once

#include "ProgramWindow.h"

/// A vertex in pixels of the target, with one texture.
struct ProgramVertex
{
    static constexpr DWORD kFvf = D3DFVF_XYZRHW | D3DFVF_DIFFUSE | D3DFVF_TEX1;

    float m_X, m_Y, m_Z, m_W;
    D3DCOLOR m_Color;
    float m_U, m_V;
};

class ProgramCanvas : public ProgramWindow
{
public:
    static constexpr UINT kWidth = 160;   // pixels
    static constexpr UINT kHeight = 120;  // pixels
    static constexpr D3DCOLOR kBackground = 0xFF203050;

    /// Makes window and device. @param bDepth a depth-stencil buffer of the device's own.
    explicit ProgramCanvas(bool bDepth = false);

    IDirect3DDevice9* operator->() const { return m_pDevice.Get(); }
    /// No lights, no culling, transformed vertices: what a new device, or one that was reset, is told first.
    void Prepare();
    void Clear();
    void Quad(const RECT& rect, D3DCOLOR color, float z = 0.5f) { Quad(rect, color, color, z); }
    /// From the program's memory; a colour at each side.
    void Quad(const RECT& rect, D3DCOLOR left, D3DCOLOR right, float z);
    void State(D3DRENDERSTATETYPE state, DWORD value) { PROGRAM_CALL(m_pDevice, SetRenderState, state, value); }
    void Sampler(D3DSAMPLERSTATETYPE state, DWORD value) { PROGRAM_CALL(m_pDevice, SetSamplerState, 0, state, value); }
    UMDComPtr<IDirect3DTexture9> Texture(
        UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool = D3DPOOL_MANAGED);
};

/// The corners of a rectangle, as a strip.
void ProgramCorners(const RECT& rect, D3DCOLOR left, D3DCOLOR right, float z, ProgramVertex (&corners)[4]);
/// Fills a level, or a part of it, with bytes that depend on the seed and differ from row to row and column to column.
void ProgramPattern(IDirect3DTexture9* pTexture, UINT level, UINT seed, const RECT* pRect = nullptr, DWORD flags = 0);
