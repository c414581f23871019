// The Direct3D 9 capability record: the driver's contract with applications. Fixed data; no device is asked.
#pragma once

#include "ddi/ddi.h"

/// Fills the whole record; what it held before is lost.
/// @return S_OK, always.
HRESULT UMDGetAdapterCapabilitiesD3D9(D3DCAPS9* pCaps);
