// The pixels of a plain device's surfaces, by a lock.
#pragma once

#include "tools/painters/DifferentialPicture.h"

/// Both throw HostError.
void DifferentialWrite(IDirect3DSurface9* pSurface, const DifferentialPicture& picture);
DifferentialPicture DifferentialRead(IDirect3DSurface9* pSurface, const D3DSURFACE_DESC& desc);
