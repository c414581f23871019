#include "resources/UMDPixelCopy.h"

#include "output/UMDImgProc.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr LONG kMost = std::numeric_limits<LONG>::max();

/// A rectangle of an image's pixels, or of a plane's blocks.
struct Area
{
    UINT Left, Top, Right, Bottom;
};

UINT Down(UINT value, UINT step)
{
    return value - value % step;
}

UINT Up(UINT value, UINT step)
{
    return Down(value + step - 1, step);
}

bool IsEmpty(const RECT& rect)
{
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

/// A rectangle inside an image, with the rest of each group that it touches.
Area WholeGroups(const UMDPixelLayout& layout, const RECT& rect, UINT width, UINT height)
{
    return {Down(static_cast<UINT>(rect.left), layout.GroupWidth),
        Down(static_cast<UINT>(rect.top), layout.GroupHeight),
        std::min(Up(static_cast<UINT>(rect.right), layout.GroupWidth), width),
        std::min(Up(static_cast<UINT>(rect.bottom), layout.GroupHeight), height)};
}

/// The blocks of a plane that stand for the pixels of an area.
/// @param rowBytes that both images have. @param rows that both images have.
Area BlocksOf(const UMDPixelPlane& plane, const Area& pixels, UINT rowBytes, UINT rows)
{
    const UINT right = std::min(Up(pixels.Right, plane.BlockWidth) / plane.BlockWidth, rowBytes / plane.BlockBytes);
    const UINT bottom = std::min(Up(pixels.Bottom, plane.BlockHeight) / plane.BlockHeight, rows);
    return {std::min(pixels.Left / plane.BlockWidth, right), std::min(pixels.Top / plane.BlockHeight, bottom), right,
        bottom};
}
}  // namespace

UINT UMDFittingPixels(UINT width, UINT rowBytes, UINT bytesPerPixel)
{
    return bytesPerPixel ? std::min(width, rowBytes / bytesPerPixel) : width;
}

RECT UMDInside(const RECT& rect, UINT width, UINT height)
{
    const LONG right = static_cast<LONG>(std::min<UINT>(width, kMost));
    const LONG bottom = static_cast<LONG>(std::min<UINT>(height, kMost));
    const LONG left = std::clamp(rect.left, LONG{0}, right);
    const LONG top = std::clamp(rect.top, LONG{0}, bottom);
    return {left, top, std::clamp(rect.right, left, right), std::clamp(rect.bottom, top, bottom)};
}

void UMDCopyPixels(
    const UMDPixelLayout& layout, const UMDImage<BYTE>& dst, const UMDImage<const BYTE>& src, const RECT* pRect)
{
    constexpr RECT kAll = {0, 0, kMost, kMost};
    const UINT width = std::min(dst.Width, src.Width);
    const UINT height = std::min(dst.Height, src.Height);
    const RECT rect = UMDInside(pRect ? *pRect : kAll, width, height);
    if (IsEmpty(rect))
        return;
    const Area pixels = WholeGroups(layout, rect, width, height);

    BYTE* pDst = dst.pBits;
    const BYTE* pSrc = src.pBits;
    for (UINT i = 0; i < layout.PlaneCount; ++i)
    {
        const UMDPixelPlane& plane = layout.Planes[i];
        const UINT dstPitch = dst.Pitch / plane.PitchDivisor;
        const UINT srcPitch = src.Pitch / plane.PitchDivisor;
        const Area blocks = BlocksOf(plane, pixels, std::min(dstPitch, srcPitch), layout.Rows(i, height));
        const std::size_t left = std::size_t{blocks.Left} * plane.BlockBytes;
        UMDCopyRows(pDst + std::size_t{blocks.Top} * dstPitch + left, dstPitch,
            pSrc + std::size_t{blocks.Top} * srcPitch + left, srcPitch, (blocks.Right - blocks.Left) * plane.BlockBytes,
            blocks.Bottom - blocks.Top);
        pDst += std::size_t{layout.Rows(i, dst.Height)} * dstPitch;
        pSrc += std::size_t{layout.Rows(i, src.Height)} * srcPitch;
    }
}

void UMDCopyRows(BYTE* pDst, UINT dstPitch, const BYTE* pSrc, UINT srcPitch, UINT rowBytes, UINT rows)
{
    if (rowBytes == 0 || rows == 0)
        return;
    if (srcPitch != rowBytes || dstPitch == rowBytes)
    {
        UMDImgProcCopy(pDst, dstPitch, pSrc, srcPitch, rowBytes, rows, 1);
        return;
    }
    // A packed source would land as one block, sheared by the destination's padding.
    for (UINT y = 0; y < rows; ++y)
        UMDImgProcCopy(
            pDst + std::size_t{y} * dstPitch, dstPitch, pSrc + std::size_t{y} * srcPitch, srcPitch, rowBytes, 1, 1);
}
