#include "ProgramWindow.h"

ProgramWindow::ProgramWindow(UINT width, UINT height)
    // Hidden: without a window manager, Wine waits two seconds for each window that it takes from the screen.
    : m_hWnd(CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, static_cast<int>(width), static_cast<int>(height), nullptr,
          nullptr, nullptr, nullptr))
{
    m_Parameters.BackBufferWidth = width;
    m_Parameters.BackBufferHeight = height;
    m_Parameters.BackBufferFormat = D3DFMT_X8R8G8B8;
    m_Parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    m_Parameters.Windowed = TRUE;
    m_Parameters.hDeviceWindow = m_hWnd;
    m_Parameters.PresentationInterval = D3DPRESENT_INTERVAL_IMMEDIATE;
}

ProgramWindow::~ProgramWindow()
{
    m_pDevice.Reset();
    m_pFactory.Reset();
    DestroyWindow(m_hWnd);
}

IDirect3DDevice9* ProgramWindow::CreateDevice()
{
    *m_pFactory.Put() = Direct3DCreate9(D3D_SDK_VERSION);
    if (!m_pFactory)
        throw HostError("Direct3DCreate9 failed");
    PROGRAM_CALL(m_pFactory, CreateDevice, D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, m_hWnd,
        D3DCREATE_HARDWARE_VERTEXPROCESSING, &m_Parameters, m_pDevice.Put());
    return m_pDevice.Get();
}

void ProgramWindow::Present()
{
    PROGRAM_CALL(m_pDevice, Present, nullptr, nullptr, nullptr, nullptr);
}
