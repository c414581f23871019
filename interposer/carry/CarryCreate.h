// Gives the driver's counterpart to a resource that the program has created.
#pragma once

#include "interposer/carry/CarryObjects.h"

#include <d3d9.h>

void CarryCreateTexture(CarryDevice& device, IDirect3DTexture9* pTexture);
void CarryCreateSurface(CarryDevice& device, IDirect3DSurface9* pSurface);
void CarryCreateVertexBuffer(CarryDevice& device, IDirect3DVertexBuffer9* pBuffer);
void CarryCreateIndexBuffer(CarryDevice& device, IDirect3DIndexBuffer9* pBuffer);
