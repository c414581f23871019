#include "resources/UMDSurfaceCopy.h"

#include "output/UMDImgProc.h"

#include <algorithm>

namespace
{
/// The part of a rectangle that lies inside an image: the runtime's memory ends there.
RECT Inside(const RECT& rect, UINT width, UINT height)
{
    const LONG right = static_cast<LONG>(width);
    const LONG bottom = static_cast<LONG>(height);
    const LONG left = std::clamp(rect.left, 0L, right);
    const LONG top = std::clamp(rect.top, 0L, bottom);
    return {left, top, std::clamp(rect.right, left, right), std::clamp(rect.bottom, top, bottom)};
}

UINT FittingPixelsOfBoth(const D3DDDI_SURFACEINFO& memory, UINT lockedPitch, UINT bytesPerPixel)
{
    return UMDFittingPixels(memory.Width, std::min(memory.SysMemPitch, lockedPitch), bytesPerPixel);
}
}  // namespace

UINT UMDFittingPixels(UINT width, UINT pitch, UINT bytesPerPixel)
{
    return bytesPerPixel ? std::min(width, pitch / bytesPerPixel) : width;
}

void UMDCopyToLocked(
    const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory, const RECT* pRect, UINT bytesPerPixel)
{
    const UINT lockedPitch = static_cast<UINT>(locked.Pitch);
    const UINT width = FittingPixelsOfBoth(memory, lockedPitch, bytesPerPixel);
    const RECT whole = {0, 0, static_cast<LONG>(width), static_cast<LONG>(memory.Height)};
    const RECT area = pRect ? Inside(*pRect, width, memory.Height) : whole;

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
    const UINT width = FittingPixelsOfBoth(memory, lockedPitch, bytesPerPixel);
    // The runtime declares its memory as read by the driver's uploads; this is the one place that refreshes it.
    BYTE* pMemory = static_cast<BYTE*>(const_cast<void*>(memory.pSysMem));
    UMDImgProcCopy(pMemory, memory.SysMemPitch, static_cast<const BYTE*>(locked.pBits), lockedPitch, width,
        memory.Height, bytesPerPixel);
}
