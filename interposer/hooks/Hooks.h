// Where hooking begins: the program has created a factory. Everything else is hooked when its first object is made.
#pragma once

#include <d3d9.h>

/// A factory that the program has created.
void HooksFactory(IDirect3D9* pFactory);
/// A device of such a factory.
void HooksDevice(IDirect3DDevice9* pDevice);
void HooksSwapChain(IDirect3DSwapChain9* pChain);
