// Copies between the runtime's pixels and locked surfaces of the delegated device, which are of the same size.
#pragma once

#include "ddi/ddi.h"
#include "util/UMDPixelLayout.h"
#include "util/UMDUtilDebugTrace.h"

/// Copies the runtime's pixels into a locked surface.
/// @param pRect pixels to copy, at the same place on both sides; null for all.
void UMDCopyToLocked(
    const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory, const RECT* pRect, const UMDPixelLayout& layout);

/// Copies a whole locked surface into the runtime's pixels.
void UMDCopyFromLocked(const D3DDDI_SURFACEINFO& memory, const D3DLOCKED_RECT& locked, const UMDPixelLayout& layout);

/// What a copy prints when its surface cannot be locked or unlocked. Both take the result.
struct UMDLockTexts
{
    const wchar_t* pLockFailed;
    const wchar_t* pUnlockFailed;
};

/// Runs a copy while a whole surface of the delegated device is locked.
/// @param copy called with the D3DLOCKED_RECT.
template <typename Copy>
HRESULT UMDCopyLocked(IDirect3DSurface9* pSurface, const UMDLockTexts& texts, Copy copy)
{
    D3DLOCKED_RECT locked = {};
    if (HRESULT hr = pSurface->LockRect(&locked, nullptr, 0); FAILED(hr))
        return UMDFail(hr, texts.pLockFailed, hr);
    copy(locked);
    if (HRESULT hr = pSurface->UnlockRect(); FAILED(hr))
        return UMDFail(hr, texts.pUnlockFailed, hr);
    return S_OK;
}
