// Copies between the runtime's pixels and locked surfaces of the delegated device.
#pragma once

#include "ddi/ddi.h"

/// Copies the runtime's pixels into a locked surface.
/// @param pRect pixels to copy, at the same place on both sides; null for all.
/// @param bytesPerPixel the driver's idea of the format, see UMDFittingPixels.
void UMDCopyToLocked(
    const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory, const RECT* pRect, UINT bytesPerPixel);

/// Copies a whole locked surface into the runtime's pixels.
void UMDCopyFromLocked(const D3DDDI_SURFACEINFO& memory, const D3DLOCKED_RECT& locked, UINT bytesPerPixel);

/// The pixels of a row that fit into its pitch. A format of unknown size counts as four bytes a pixel, which can be
/// more than its rows hold: a copy must stop at the row's end.
/// @param width pixels. @param pitch bytes.
UINT UMDFittingPixels(UINT width, UINT pitch, UINT bytesPerPixel);
