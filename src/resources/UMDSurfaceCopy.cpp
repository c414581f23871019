#include "resources/UMDSurfaceCopy.h"

#include "output/UMDImgProc.h"

#include <algorithm>

namespace
{
/// The part of a rectangle that lies inside the surface: the runtime's memory ends there.
RECT Inside(const RECT& rect, const D3DDDI_SURFACEINFO& memory)
{
    const LONG width = static_cast<LONG>(memory.Width);
    const LONG height = static_cast<LONG>(memory.Height);
    const LONG left = std::clamp(rect.left, 0L, width);
    const LONG top = std::clamp(rect.top, 0L, height);
    return {left, top, std::clamp(rect.right, left, width), std::clamp(rect.bottom, top, height)};
}
}

UINT UMDFittingPixels(UINT width, UINT pitch, UINT bytesPerPixel)
{
    return bytesPerPixel ? std::min(width, pitch / bytesPerPixel) : width;
}

void UMDCopyToLocked(
    const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory, const RECT* pRect, UINT bytesPerPixel)
{
    const UINT lockedPitch = static_cast<UINT>(locked.Pitch);
    const UINT rowPixels = UMDFittingPixels(
        UMDFittingPixels(memory.Width, memory.SysMemPitch, bytesPerPixel), lockedPitch, bytesPerPixel);
    RECT area = {0, 0, static_cast<LONG>(rowPixels), static_cast<LONG>(memory.Height)};
    if (pRect)
        area = Inside(*pRect, {rowPixels, memory.Height, 0, nullptr, 0, 0});

    const std::size_t left = static_cast<std::size_t>(area.left) * bytesPerPixel;
    const std::size_t top = static_cast<std::size_t>(area.top);
    BYTE* pDst = static_cast<BYTE*>(locked.pBits) + top * lockedPitch + left;
    const BYTE* pSrc = static_cast<const BYTE*>(memory.pSysMem) + top * memory.SysMemPitch + left;
    UMDImgProcCopy(pDst, lockedPitch, pSrc, memory.SysMemPitch, static_cast<UINT>(area.right - area.left),
        static_cast<UINT>(area.bottom - area.top), bytesPerPixel);
}

void UMDCopyFromLocked(const D3DDDI_SURFACEINFO& memory, const D3DLOCKED_RECT& locked, UINT bytesPerPixel)
{
    const UINT lockedPitch = static_cast<UINT>(locked.Pitch);
    const UINT rowPixels = UMDFittingPixels(
        UMDFittingPixels(memory.Width, memory.SysMemPitch, bytesPerPixel), lockedPitch, bytesPerPixel);
    // The record's memory is the runtime's to read for the driver's uploads, and the driver's to refresh here.
    UMDImgProcCopy(static_cast<BYTE*>(const_cast<void*>(memory.pSysMem)), memory.SysMemPitch,
        static_cast<const BYTE*>(locked.pBits), lockedPitch, rowPixels, memory.Height, bytesPerPixel);
}
