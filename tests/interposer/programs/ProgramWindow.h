// What every program of these tests begins with: a window and a device, as strangers make them.
#pragma once

#include "host/runtime/HostError.h"
#include "util/UMDComPtr.h"

#include <d3d9.h>

class ProgramWindow
{
public:
    ProgramWindow(UINT width, UINT height);
    ~ProgramWindow();
    ProgramWindow(const ProgramWindow&) = delete;
    ProgramWindow& operator=(const ProgramWindow&) = delete;

    /// To be changed before the device is made or reset.
    D3DPRESENT_PARAMETERS m_Parameters{};
    UMDComPtr<IDirect3D9> m_pFactory;
    UMDComPtr<IDirect3DDevice9> m_pDevice;

    /// Throws HostError.
    IDirect3DDevice9* CreateDevice();
    HWND Window() const { return m_hWnd; }
    void Present();

private:
    HWND m_hWnd;
};

/// HostCheck with the name of the method.
#define PROGRAM_CALL(pObject, method, ...) HostCheck((pObject)->method(__VA_ARGS__), #method)
