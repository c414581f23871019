#include "util/UMDPixelLayout.h"

#include "util/UMDFourCC.h"

namespace
{
constexpr UMDPixelPlane kLuma = {1, 1, 1, 1};

constexpr UMDPixelLayout Pixels(D3DDDIFORMAT format, UINT bytes)
{
    return {format, 1, 1, 1, {{1, 1, bytes, 1}}};
}

/// Pairs of pixels that share their colour.
constexpr UMDPixelLayout Pairs(D3DDDIFORMAT format)
{
    return {format, 2, 1, 1, {{2, 1, 4, 1}}};
}

/// Compressed blocks of four by four pixels.
constexpr UMDPixelLayout Blocks(D3DDDIFORMAT format, UINT bytes)
{
    return {format, 4, 4, 1, {{4, 4, bytes, 1}}};
}

/// Luma, then both colours of a group side by side in rows of the same pitch.
constexpr UMDPixelLayout LumaAndColours(D3DDDIFORMAT format)
{
    return {format, 2, 2, 2, {kLuma, {2, 2, 2, 1}}};
}

/// Luma, then a plane for each colour, as much smaller as its pitch is.
/// @param edge of a group. @param planes with luma.
constexpr UMDPixelLayout LumaAndPlanes(D3DDDIFORMAT format, UINT edge, UINT planes)
{
    const UMDPixelPlane colour = {edge, edge, 1, edge};
    return {format, edge, edge, planes, {kLuma, colour, colour, planes > 3 ? colour : UMDPixelPlane{}}};
}

/// A code for something else than pixels, or for pixels that lie as only their maker knows.
constexpr UMDPixelLayout Opaque(D3DDDIFORMAT format)
{
    return {format, 1, 1, 0, {}};
}

// clang-format off: a row a line
constexpr UMDPixelLayout kLayouts[] = {
    // What the adapter offers, in the order of its format table.
    Pixels(D3DDDIFMT_X1R5G5B5, 2),
    Pixels(D3DDDIFMT_A1R5G5B5, 2),
    Pixels(D3DDDIFMT_A4R4G4B4, 2),
    Pixels(D3DDDIFMT_R5G6B5, 2),
    Pixels(D3DDDIFMT_V8U8, 2),
    Pixels(D3DDDIFMT_L6V5U5, 2),
    Pixels(D3DDDIFMT_X8L8V8U8, 4),
    Pixels(D3DDDIFMT_Q8W8V8U8, 4),
    Pixels(D3DDDIFMT_V16U16, 4),
    Pixels(D3DDDIFMT_W11V11U10, 4),
    Pixels(D3DDDIFMT_A2W10V10U10, 4),
    Pixels(D3DDDIFMT_Q16W16V16U16, 8),
    Pixels(D3DDDIFMT_X8R8G8B8, 4),
    Pixels(D3DDDIFMT_A8R8G8B8, 4),
    Pixels(D3DDDIFMT_L8, 1),
    Opaque(UMDFourCC("EAPI")),
    Pixels(D3DDDIFMT_P8, 1),
    Pixels(D3DDDIFMT_D32_LOCKABLE, 4),
    Pixels(D3DDDIFMT_S8_LOCKABLE, 1),
    Pixels(D3DDDIFMT_BINARYBUFFER, 1),
    Opaque(UMDFourCC("M2IA")),
    Pairs(UMDFourCC("YUY2")),
    Pairs(UMDFourCC("UYVY")),
    LumaAndPlanes(UMDFourCC("YV12"), 2, 3),
    LumaAndPlanes(UMDFourCC("YVU9"), 4, 3),
    LumaAndPlanes(UMDFourCC("IF09"), 4, 4),                    // the last plane tells what has changed
    {UMDFourCC("NV11"), 4, 1, 2, {kLuma, {4, 1, 2, 2}}},       // both colours side by side, at half the pitch
    LumaAndColours(UMDFourCC("NV12")),
    LumaAndColours(UMDFourCC("NV21")),
    Opaque(UMDFourCC("XENC")),
    {UMDFourCC("IMC4"), 2, 2, 2, {kLuma, {2, 1, 1, 2}}},       // rows of one colour and of the other by turns
    Pixels(UMDFourCC("AYUV"), 4),
    Opaque(UMDFourCC("VBID")),
    Opaque(UMDFourCC("ATIC")),
    Pixels(UMDFourCC("SORT"), 4),
    Blocks(UMDFourCC("DXT1"), 8),
    Blocks(UMDFourCC("DXT2"), 16),
    Blocks(UMDFourCC("DXT3"), 16),
    Blocks(UMDFourCC("DXT4"), 16),
    Blocks(UMDFourCC("DXT5"), 16),
    Opaque(UMDFourCC("INST")),
    Opaque(UMDFourCC("R2VB")),
    Pixels(UMDFourCC("DF16"), 2),
    Pixels(D3DDDIFMT_D16, 2),
    Pixels(D3DDDIFMT_D16_LOCKABLE, 2),
    Pixels(D3DDDIFMT_D24X8, 4),
    Pixels(D3DDDIFMT_D24S8, 4),
    Pixels(D3DDDIFMT_A8, 1),
    Pixels(D3DDDIFMT_A8L8, 2),
    Pixels(D3DDDIFMT_G16R16, 4),
    Pixels(D3DDDIFMT_L16, 2),
    Pixels(D3DDDIFMT_A2R10G10B10, 4),
    Pixels(D3DDDIFMT_A2B10G10R10, 4),
    Pixels(D3DDDIFMT_A16B16G16R16F, 8),
    Pixels(D3DDDIFMT_A16B16G16R16, 8),
    Pixels(D3DDDIFMT_R16F, 2),
    Pixels(D3DDDIFMT_G16R16F, 4),
    Pixels(D3DDDIFMT_R32F, 4),
    Pixels(D3DDDIFMT_G32R32F, 8),
    Pixels(D3DDDIFMT_A32B32G32R32F, 16),

    // Not offered. The delegated device may hold them all the same: its owner may be the client library.
    Pixels(D3DDDIFMT_R8G8B8, 3),
    Pixels(D3DDDIFMT_R3G3B2, 1),
    Pixels(D3DDDIFMT_A8R3G3B2, 2),
    Pixels(D3DDDIFMT_X4R4G4B4, 2),
    Pixels(D3DDDIFMT_A8B8G8R8, 4),
    Pixels(D3DDDIFMT_X8B8G8R8, 4),
    Pixels(D3DDDIFMT_A8P8, 2),
    Pixels(D3DDDIFMT_A4L4, 1),
    Pixels(D3DDDIFMT_CxV8U8, 2),
    Pixels(D3DDDIFMT_A2B10G10R10_XR_BIAS, 4),
    Pairs(D3DDDIFMT_R8G8_B8G8),
    Pairs(D3DDDIFMT_G8R8_G8B8),
};
// clang-format on

constexpr UMDPixelLayout kUnknown = Opaque(D3DDDIFMT_UNKNOWN);
}  // namespace

UINT UMDPixelLayout::RowBytes(UINT plane, UINT width) const
{
    if (plane >= PlaneCount)
        return 0;
    const UMDPixelPlane& p = Planes[plane];
    return (width + p.BlockWidth - 1) / p.BlockWidth * p.BlockBytes;
}

UINT UMDPixelLayout::Rows(UINT plane, UINT height) const
{
    if (plane >= PlaneCount)
        return 0;
    const UINT pixels = plane == 0 ? height + Planes[0].BlockHeight - 1 : height / GroupHeight * GroupHeight;
    return pixels / Planes[plane].BlockHeight;
}

const UMDPixelLayout& UMDPixelLayoutOf(D3DDDIFORMAT format)
{
    for (const UMDPixelLayout& layout : kLayouts)
    {
        if (layout.Format == format)
            return layout;
    }
    return kUnknown;
}
