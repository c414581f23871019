// What the program writes while it holds a lock. It is carried before the platform's unlock, when the memory is still
// there.
#pragma once

#include "interposer/carry/CarryObjects.h"

#include <d3d9.h>

/// Behind the platform's lock of a texture's level or of a surface.
void CarryLocked(const CarryPlace& place, const D3DLOCKED_RECT& locked, const RECT* pRect, DWORD flags);
/// Before its unlock.
void CarryUnlocking(const CarryPlace& place);

/// Behind the platform's lock of a buffer: the program gets memory of ours, which holds all that it has written so
/// far, so that nothing needs to be read from memory that may be meant for writing.
void* CarryBufferLocked(CarryResource& buffer, void* pData, UINT offset, UINT size, DWORD flags);
/// Before its unlock.
void CarryBufferUnlocking(CarryResource& buffer);
