// The delegated device: a real Direct3D 9Ex device on another adapter, which executes every rendering command.
//
// Constructed, created and destroyed on the GPU thread only. The device itself is multithreaded: everyone calls it
// on the thread that needs it.
#pragma once

#include "tesslo/client.h"
#include "util/UMDComPtr.h"

#include <d3d9.h>

class UMDGpuD3D9
{
public:
    /// Makes the factory; its failure is traced and shows as a failing Create.
    /// @param hWnd the GPU thread's hidden window, the device's focus window; borrowed.
    explicit UMDGpuD3D9(HWND hWnd);
    ~UMDGpuD3D9();

    UMDGpuD3D9(const UMDGpuD3D9&) = delete;
    UMDGpuD3D9& operator=(const UMDGpuD3D9&) = delete;

    /// Obtains the device: from the client library if it offers one, else on the first adapter that is not ours.
    /// @param hClientDll the client library, null for none.
    HRESULT Create(HMODULE hClientDll);

    /// Releases the device.
    void Destroy();

    /// Tells the client library, if it wants to know, of the surface that is being presented. Presenting thread.
    void PresentNotification(IDirect3DSurface9* pSurface);

    /// The delegated device, null if none could be had. Borrowed.
    IDirect3DDevice9Ex* GetDevice() const { return m_pD3DDevice9Ex.Get(); }

private:
    HRESULT InternalDeviceRetrieveFromClientDll(HMODULE hClientDll, IDirect3DDevice9Ex** ppDevice);
    HRESULT InitD3D(IDirect3DDevice9Ex** ppDevice);

    UMDComPtr<IDirect3D9Ex> m_pD3D9Ex;
    UMDComPtr<IDirect3DDevice9Ex> m_pD3DDevice9Ex;
    HWND m_hWnd;
    TessloVirtualMonitorReserved2Function m_TessloVirtualMonitorReserved2;
};
