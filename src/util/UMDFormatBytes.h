// The size of a pixel in the few formats that the driver copies by hand.
#pragma once

#include "ddi/ddi.h"

/// @param pBytes receives the bytes per pixel; untouched when the format is unknown.
/// @return S_OK, or E_FAIL, traced, for an unknown format.
HRESULT UMDGetFormatBytes(D3DDDIFORMAT format, UINT* pBytes);
