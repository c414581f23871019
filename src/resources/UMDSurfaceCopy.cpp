#include "resources/UMDSurfaceCopy.h"

#include "resources/UMDPixelCopy.h"

void UMDCopyToLocked(
    const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory, const RECT* pRect, const UMDPixelLayout& layout)
{
    UMDCopyPixels(layout,
        {static_cast<BYTE*>(locked.pBits), static_cast<UINT>(locked.Pitch), memory.Width, memory.Height},
        {static_cast<const BYTE*>(memory.pSysMem), memory.SysMemPitch, memory.Width, memory.Height}, pRect);
}

void UMDCopyFromLocked(const D3DDDI_SURFACEINFO& memory, const D3DLOCKED_RECT& locked, const UMDPixelLayout& layout)
{
    // The runtime's record has its memory constant, for uploads; this is the one place that refreshes it.
    BYTE* pMemory = static_cast<BYTE*>(const_cast<void*>(memory.pSysMem));
    UMDCopyPixels(layout, {pMemory, memory.SysMemPitch, memory.Width, memory.Height},
        {static_cast<const BYTE*>(locked.pBits), static_cast<UINT>(locked.Pitch), memory.Width, memory.Height},
        nullptr);
}
