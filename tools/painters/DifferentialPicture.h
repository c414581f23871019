// A picture as a surface holds it, so that two of them can be compared bit by bit.
#pragma once

#include <d3d9.h>

#include <string>
#include <vector>

struct DifferentialPicture
{
    UINT m_Width = 0;                     ///< pixels
    UINT m_Height = 0;                    ///< pixels
    D3DFORMAT m_Format = D3DFMT_UNKNOWN;  ///< A8R8G8B8, X8R8G8B8 or R5G6B5
    std::vector<BYTE> m_Bytes;            ///< packed rows, top row first

    DifferentialPicture() = default;
    DifferentialPicture(UINT width, UINT height, D3DFORMAT format);

    UINT BytesPerPixel() const { return m_Format == D3DFMT_R5G6B5 ? 2 : 4; }
    UINT Pitch() const { return m_Width * BytesPerPixel(); }
    BYTE* Row(UINT y) { return m_Bytes.data() + size_t{y} * Pitch(); }
    const BYTE* Row(UINT y) const { return m_Bytes.data() + size_t{y} * Pitch(); }
    /// The pixel's bits.
    UINT At(UINT x, UINT y) const;
    void Set(UINT x, UINT y, UINT pixel);
    bool IsOneColor() const;
    bool operator==(const DifferentialPicture&) const = default;
};

/// A picture of which no two neighbours are alike, to be blitted and used as a texture.
DifferentialPicture DifferentialPattern(UINT width, UINT height, D3DFORMAT format);

/// Empty if the pictures are equal, else how they differ. The pictures and their difference are left as PNG files in
/// the build folder's out/, named <name>-<what>.png.
std::string DifferentialCompare(
    const std::string& name, const DifferentialPicture& fromDriver, const DifferentialPicture& plain);
