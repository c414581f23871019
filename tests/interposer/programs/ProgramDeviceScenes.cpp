// Devices of other kinds: over the whole screen, and of the extended interface.
#include "ProgramCanvas.h"
#include "ProgramScene.h"

namespace
{

constexpr D3DRECT kPart = {20, 30, 90, 100};

void ClearTwice(IDirect3DDevice9* pDevice, D3DCOLOR color)
{
    PROGRAM_CALL(pDevice, Clear, 0, nullptr, D3DCLEAR_TARGET, color, 1, 0);
    PROGRAM_CALL(pDevice, Clear, 1, &kPart, D3DCLEAR_TARGET, ~color, 1, 0);
}

void FullScreen()
{
    ProgramWindow window(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    window.m_Parameters.Windowed = FALSE;
    IDirect3DDevice9* pDevice = window.CreateDevice();
    for (D3DCOLOR color : {0xFF204060, 0xFF802010})
    {
        ClearTwice(pDevice, color);
        window.Present();
    }
}

void Extended()
{
    ProgramWindow window(ProgramCanvas::kWidth, ProgramCanvas::kHeight);
    UMDComPtr<IDirect3D9Ex> pFactory;
    UMDComPtr<IDirect3DDevice9Ex> pDevice;
    HostCheck(Direct3DCreate9Ex(D3D_SDK_VERSION, pFactory.Put()), "Direct3DCreate9Ex");
    PROGRAM_CALL(pFactory, CreateDeviceEx, D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, window.Window(),
        D3DCREATE_HARDWARE_VERTEXPROCESSING, &window.m_Parameters, nullptr, pDevice.Put());
    for (UINT height : {80u, 100u})
    {
        UMDComPtr<IDirect3DSurface9> pTarget, pBackBuffer;
        PROGRAM_CALL(pDevice, CreateRenderTargetEx, 64, 64, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE,
            pTarget.Put(), nullptr, 0);
        PROGRAM_CALL(pDevice, ColorFill, pTarget.Get(), nullptr, 0xFF00C000 + height);
        PROGRAM_CALL(pDevice, GetBackBuffer, 0, 0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put());
        ClearTwice(pDevice.Get(), 0xFF102030);
        const RECT corner = {5, 5, 69, 69};
        PROGRAM_CALL(pDevice, StretchRect, pTarget.Get(), nullptr, pBackBuffer.Get(), &corner, D3DTEXF_NONE);
        PROGRAM_CALL(pDevice, PresentEx, nullptr, nullptr, nullptr, nullptr, 0);
        pBackBuffer.Reset();
        window.m_Parameters.BackBufferHeight = height;
        PROGRAM_CALL(pDevice, ResetEx, &window.m_Parameters, nullptr);
    }
}

}  // namespace

std::vector<ProgramScene> ProgramDeviceScenes()
{
    return {{"FullScreen", FullScreen}, {"Extended", Extended}};
}
