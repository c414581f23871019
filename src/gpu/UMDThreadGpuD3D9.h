// The GPU thread: owns the hidden focus window and the delegated device, and pumps the window's messages.
//
// Rendering is not queued here; every caller uses the device on its own thread. The thread only creates, keeps alive
// and destroys.
#pragma once

#include "gpu/UMDGpuD3D9.h"
#include "gpu/UMDThreadBase.h"

#include <memory>

class UMDThreadGpuD3D9 : public UMDThreadBase
{
public:
    UMDThreadGpuD3D9();
    ~UMDThreadGpuD3D9() override;

    /// Starts the thread and blocks until the delegated device exists or could not be made, which shows only in
    /// GetDevice. Owner's thread.
    /// @param hClientDll the client library, null for none; borrowed.
    void ThreadGuiStart(HMODULE hClientDll);

    /// Asks the thread to destroy device and window and to end; Wait then waits for it. Owner's thread.
    void ThreadGuiRequestExit();

    /// Passes the surface of a flip present on to the client library. Presenting thread.
    void PresentNotification(IDirect3DSurface9* pSurface);

    /// The delegated device, null while there is none. Borrowed, valid until ThreadGuiRequestExit.
    IDirect3DDevice9Ex* GetDevice() const { return m_pGpu ? m_pGpu->GetDevice() : nullptr; }

    void Run() override;

private:
    /// @return null, with the last error set, when there is no window.
    HWND InternalCreateWindow(HINSTANCE hInstance);
    void InternalMessageLoop();
    void InternalAnswerSentMessages();
    void InternalDispatchMessage();
    HRESULT InternalCreateDevice(HWND hWnd);
    HRESULT InternalMakeDevice(HWND hWnd);
    void InternalDestroyDevice();
    void InternalReleaseDevice();
    void Faulted() override;
    static LRESULT CALLBACK InternalGuiWndMsgProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);
    static LRESULT InternalAnswerMessage(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);

    HANDLE m_hEventCreateFailed;         ///< set by the thread: there will be no device
    HANDLE m_hEventCreated;              ///< set by the thread: the device exists
    HANDLE m_hEventExecuteFunction;      ///< set by nobody; ends the thread like an exit request
    HANDLE m_hEventRequestExit;          ///< set by ThreadGuiRequestExit
    HMODULE m_hClientDll;                ///< borrowed
    bool m_bClassRegistered;             ///< by the thread, which takes it back at its end
    std::unique_ptr<UMDGpuD3D9> m_pGpu;  ///< written by the thread before it reports and after the exit request
};
