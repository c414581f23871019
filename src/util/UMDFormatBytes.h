// The size of a pixel that the driver reckons with in the few formats that it names a size for. It is not always the
// true one, and copies do not go by it: see UMDPixelLayout.h.
#pragma once

#include "ddi/ddi.h"

/// @param pBytes receives the bytes per pixel; untouched when the format is unknown.
/// @return S_OK, or E_FAIL, traced, for an unknown format.
HRESULT UMDGetFormatBytes(D3DDDIFORMAT format, UINT* pBytes);
