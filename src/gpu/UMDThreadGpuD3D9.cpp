#include "gpu/UMDThreadGpuD3D9.h"

#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilGuard.h"

namespace
{
constexpr wchar_t kWindowClass[] = L"D3D UMD";

/// All devices of the process share the class: none that ends takes it away while another one makes its window.
SRWLOCK g_WindowClassLock = SRWLOCK_INIT;

void UnregisterWindowClass()
{
    AcquireSRWLockExclusive(&g_WindowClassLock);
    UnregisterClassW(kWindowClass, GetModuleHandleW(nullptr));  // fails while another device has its window
    ReleaseSRWLockExclusive(&g_WindowClassLock);
}
}  // namespace

UMDThreadGpuD3D9::UMDThreadGpuD3D9()
    : m_hEventCreateFailed(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_hEventCreated(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_hEventExecuteFunction(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_hEventRequestExit(CreateEventW(nullptr, FALSE, FALSE, nullptr)), m_hClientDll(nullptr),
      m_bClassRegistered(false)
{
    UMD_TRACE(UMDTRACE_GPU, L"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n");
}

UMDThreadGpuD3D9::~UMDThreadGpuD3D9()
{
    UMD_TRACE(UMDTRACE_GPU, L"UMDThreadGpuD3D9::~UMDThreadGpuD3D9\n");
    // The owner has waited, except when a start-up that failed half-way deletes it: a thread must not outlive its
    // object.
    if (Wait(0) == WAIT_TIMEOUT)
    {
        SetEvent(m_hEventRequestExit);
        Wait(INFINITE);
    }
    // The thread had no window, or was ended by code that is not ours. The class would outlive the module that its
    // window procedure is in, and be what the next load makes its window of.
    if (m_bClassRegistered)
        UnregisterWindowClass();
    CloseHandle(m_hEventCreateFailed);
    CloseHandle(m_hEventCreated);
    CloseHandle(m_hEventExecuteFunction);
    CloseHandle(m_hEventRequestExit);
}

void UMDThreadGpuD3D9::ThreadGuiStart(HMODULE hClientDll)
{
    UMD_TRACE(UMDTRACE_GPU, L"UMDThreadGpuD3D9::ThreadGuiStart\n");
    m_hClientDll = hClientDll;
    if (!UMDThreadBase::Start())
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadGpuD3D9::Start UMDBaseThread::Start failed! %d\n", GetLastError());
        return;
    }
    // Code that is not ours runs on the thread and may end it before it can tell.
    const HANDLE outcomes[] = {m_hEventCreated, m_hEventCreateFailed, m_hThread};
    WaitForMultipleObjects(ARRAYSIZE(outcomes), outcomes, FALSE, INFINITE);
}

void UMDThreadGpuD3D9::ThreadGuiRequestExit()
{
    UMD_TRACE(UMDTRACE_GPU, L">>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n");
    SetEvent(m_hEventRequestExit);
}

void UMDThreadGpuD3D9::PresentNotification(IDirect3DSurface9* pSurface)
{
    if (m_pGpu)
        m_pGpu->PresentNotification(pSurface);
}

void UMDThreadGpuD3D9::Run()
{
    UMD_TRACE(UMDTRACE_GPU, L">>> UMDThreadGpuD3D9::Run\n");
    if (!SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadGpuD3D9::Run SetThreadPriority failed!\n");
        SetEvent(m_hEventCreateFailed);  // the starter waits without a limit
        return;
    }
    const HINSTANCE hInstance = GetModuleHandleW(nullptr);
    const HWND hWnd = InternalCreateWindow(hInstance);
    if (!hWnd)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadGpuD3D9::Run CreateWindow failed! %d\n", GetLastError());
        SetEvent(m_hEventCreateFailed);  // the starter waits without a limit
        return;
    }
    SetCursor(nullptr);
    InternalCreateDevice(hWnd);
    InternalMessageLoop();
    InternalDestroyDevice();
    DestroyWindow(hWnd);
    UnregisterWindowClass();
    m_bClassRegistered = false;
    UMD_TRACE(UMDTRACE_GPU, L"<<< UMDThreadGpuD3D9::Run\n");
}

HWND UMDThreadGpuD3D9::InternalCreateWindow(HINSTANCE hInstance)
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = CS_CLASSDC;
    windowClass.lpfnWndProc = InternalGuiWndMsgProc;
    windowClass.hInstance = hInstance;
    windowClass.lpszClassName = kWindowClass;
    HWND hWnd = nullptr;
    AcquireSRWLockExclusive(&g_WindowClassLock);
    // Hooks of others run inside, whose faults must not leave the lock to the next device.
    const bool called = UMDUtilGuard([&] {
        RegisterClassExW(&windowClass);  // fails where another device has registered it
        m_bClassRegistered = true;
        hWnd = CreateWindowExW(0, kWindowClass, L"D3D UMD Testwindow", WS_POPUP | WS_BORDER, 200, 200, 100, 100,
            nullptr, nullptr, hInstance, nullptr);
    });
    const DWORD error = GetLastError();
    ReleaseSRWLockExclusive(&g_WindowClassLock);
    if (!called)
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in thread! UMDThreadGpuD3D9::InternalCreateWindow failed!\n");
    SetLastError(error);
    return hWnd;
}

void UMDThreadGpuD3D9::InternalMessageLoop()
{
    const HANDLE events[] = {m_hEventExecuteFunction, m_hEventRequestExit};
    for (;;)
    {
        // Messages that an earlier look at the queue left there count as well, else a burst would stay in it. Sent
        // ones wake the thread too: the platform delivers them only to who looks at its queue, and their senders,
        // whoever tells all windows of a changed setting, would wait for this one as long as the device lives.
        const DWORD result = MsgWaitForMultipleObjectsEx(
            ARRAYSIZE(events), events, INFINITE, QS_ALLPOSTMESSAGE | QS_SENDMESSAGE, MWMO_INPUTAVAILABLE);
        switch (result)
        {
        case WAIT_OBJECT_0:
            UMD_TRACE(UMDTRACE_GPU | UMDTRACE_DETAIL,
                L"UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventExecuteFunction\n");
            return;
        case WAIT_OBJECT_0 + 1:
            UMD_TRACE(UMDTRACE_GPU | UMDTRACE_DETAIL,
                L"UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventRequestExit\n");
            return;
        case WAIT_OBJECT_0 + 2:
            InternalAnswerSentMessages();
            if (HIWORD(GetQueueStatus(QS_ALLPOSTMESSAGE)) == 0)
                break;
            UMD_TRACE(
                UMDTRACE_GPU | UMDTRACE_DETAIL, L"UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n");
            InternalDispatchMessage();
            break;
        case WAIT_FAILED:
            UMD_TRACE(
                UMDTRACE_ERROR, L"UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects WAIT_FAILED %d\n", GetLastError());
            return;
        default:
            UMD_TRACE(
                UMDTRACE_ERROR, L"UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects unexpected result: %d\n", result);
            return;
        }
    }
}

// A look at the queue delivers what was sent, whatever it is after.
void UMDThreadGpuD3D9::InternalAnswerSentMessages()
{
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

// One message a wake-up: a burst of messages cannot keep the exit event waiting.
void UMDThreadGpuD3D9::InternalDispatchMessage()
{
    MSG message;
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

HRESULT UMDThreadGpuD3D9::InternalCreateDevice(HWND hWnd)
{
    UMD_TRACE(UMDTRACE_GPU, L">>> UMDThreadGpuD3D9::InternalCreateDevice\n");
    HRESULT hr = E_FAIL;
    if (!UMDUtilGuard([&] { hr = InternalMakeDevice(hWnd); }))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in thread! UMDThreadGpuD3D9::InternalCreateDevice failed!\n");
        hr = E_FAIL;
        InternalReleaseDevice();
    }
    SetEvent(SUCCEEDED(hr) ? m_hEventCreated : m_hEventCreateFailed);
    return hr;
}

HRESULT UMDThreadGpuD3D9::InternalMakeDevice(HWND hWnd)
{
    m_pGpu = UMDMakeUnique<UMDGpuD3D9>(hWnd);
    if (!m_pGpu)
        return UMDFail(E_FAIL, L"UMDThreadGpuD3D9::InternalCreateDevice failed!\n");
    if (FAILED(m_pGpu->Create(m_hClientDll)))
        return UMDFail(E_FAIL, L"UMDThreadGpuD3D9::InternalCreateDevice Create failed!\n");
    return S_OK;
}

void UMDThreadGpuD3D9::InternalDestroyDevice()
{
    UMD_TRACE(UMDTRACE_GPU, L">>> UMDThreadGpuD3D9::InternalDestroyDevice\n");
    InternalReleaseDevice();
}

void UMDThreadGpuD3D9::InternalReleaseDevice()
{
    if (!m_pGpu)
        return;
    // Taken away first: whatever a fault leaves of it, nobody gets it any more.
    UMDGpuD3D9* const pGpu = m_pGpu.release();
    if (!UMDUtilGuard([pGpu] {
            pGpu->Destroy();
            delete pGpu;
        }))
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in thread! UMDThreadGpuD3D9::InternalDestroyDevice failed!\n");
}

void UMDThreadGpuD3D9::Faulted()
{
    UMD_TRACE(UMDTRACE_ERROR, L"Exception in thread! UMDThreadGpuD3D9::Run failed!\n");
    // The starter may still wait. A device that was reported stays for those who use it; it goes with this object.
    SetEvent(m_hEventCreateFailed);
}

LRESULT CALLBACK UMDThreadGpuD3D9::InternalGuiWndMsgProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    UMD_TRACE(UMDTRACE_GPU, L">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc %d\n", uMsg);
    // Guarded here: what becomes of a fault that passes through the platform, which called us, is anybody's guess.
    LRESULT result = 0;
    if (!UMDUtilGuard([&] { result = InternalAnswerMessage(hWnd, uMsg, wParam, lParam); }))
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in thread! UMDThreadGpuD3D9::InternalGuiWndMsgProc %d failed!\n", uMsg);
    return result;
}

LRESULT UMDThreadGpuD3D9::InternalAnswerMessage(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    switch (uMsg)
    {
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_SETCURSOR:
        SetCursor(nullptr);
        return TRUE;
    default:
        return DefWindowProcW(hWnd, uMsg, wParam, lParam);
    }
}
