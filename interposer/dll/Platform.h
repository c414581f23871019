// The platform's own d3d9.dll, loaded by its full path from the system folder.
#pragma once

#include <d3d9.h>

using PlatformCreate9Function = IDirect3D9*(WINAPI*)(UINT);
using PlatformCreate9ExFunction = HRESULT(WINAPI*)(UINT, IDirect3D9Ex**);

/// Loads it. False if there is none.
bool PlatformLoad();
/// An export of it, null if it has none of that name.
void* PlatformExport(const char* pName);
/// Looks up what our exports of the same names lead to; before the first call of any.
void ExportsBind();
