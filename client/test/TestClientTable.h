// How a test reaches into a test client library: a table of functions that its exports call.
#pragma once

#include "tesslo/client.h"

/// A null function answers true and does nothing; Reserved1 then answers false, as it has no device to give.
struct TestClientTable
{
    void* m_pContext;  ///< first argument of every function
    BOOLEAN (*m_pPlug)(void* pContext, void** ppConnection, UINT VidPnSourceId);
    BOOLEAN (*m_pUpdate)(void* pContext, void** ppConnection, const TessloVirtualMonitorFrame* pFrame);
    BOOLEAN (*m_pUnplug)(void* pContext, void** ppConnection, UINT VidPnSourceId);
    BOOLEAN (*m_pReserved1)(void* pContext, HWND hWnd, IDirect3DDevice9Ex** ppDevice);
    BOOLEAN (*m_pReserved2)(void* pContext, IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface);
};

/// The export that takes the table, by copy; null clears it. Not to be called while the driver uses the library.
#define TEST_CLIENT_SET_TABLE "TestClientSetTable"
typedef void (*TestClientSetTableFunction)(const TestClientTable* pTable);
