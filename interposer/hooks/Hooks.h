// Where hooking begins: the program has created a factory. Everything else is hooked when its first object is made:
// one function an interface, in a file of its name.
#pragma once

#include <d3d9.h>

void HooksFactory(IDirect3D9* pFactory);
/// From now on a process that ends by itself first draws what was posted to the driver's thread.
void HooksExit();
void HooksDevice(IDirect3DDevice9* pDevice);
void HooksDeviceDraws(IDirect3DDevice9* pDevice);
void HooksDeviceStates(IDirect3DDevice9* pDevice);
void HooksDeviceObjects(IDirect3DDevice9* pDevice);
void HooksDeviceObjectsEx(IDirect3DDevice9Ex* pDevice);
void HooksSwapChain(IDirect3DSwapChain9* pChain);
void HooksStateBlock(IDirect3DStateBlock9* pBlock);
void HooksTexture(IDirect3DTexture9* pTexture);
void HooksSurface(IDirect3DSurface9* pSurface);
