// Pixels that go from one resource to another, or back to the program.
#pragma once

#include "interposer/carry/CarryObjects.h"

#include <d3d9.h>

void CarryStretch(CarryDevice& device, IDirect3DSurface9* pFrom, const RECT* pFromRect, IDirect3DSurface9* pTo,
    const RECT* pToRect, D3DTEXTUREFILTERTYPE filter);
void CarryUpdateSurface(
    CarryDevice& device, IDirect3DSurface9* pFrom, const RECT* pRect, IDirect3DSurface9* pTo, const POINT* pPoint);
void CarryUpdateTexture(CarryDevice& device, IDirect3DBaseTexture9* pFrom, IDirect3DBaseTexture9* pTo);
void CarryFill(CarryDevice& device, IDirect3DSurface9* pSurface, const RECT* pRect, D3DCOLOR color);
/// The program has read a target into memory: it is compared, and in the answering mode becomes the driver's.
void CarryTargetData(CarryDevice& device, IDirect3DSurface9* pTarget, IDirect3DSurface9* pMemory);
/// The same of a part. @param pFirst of the whole target.
void CarryTargetRead(CarryResource& target, const RECT& rect, void* pFirst, UINT pitch);
/// Writes pixels into what has no memory of the runtime's.
/// @param pFirst of the level, to which the rectangle refers.
void CarryWriteVideo(CarryResource& resource, const RECT& rect, const void* pFirst, UINT pitch);
