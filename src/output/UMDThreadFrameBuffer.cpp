#include "output/UMDThreadFrameBuffer.h"

#include "output/UMDImgProc.h"
#include "util/UMDMakeUnique.h"
#include "util/UMDModuleExport.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilGuard.h"

#include <utility>

namespace
{
/// Looks up one export of the client library. @param pFailed takes the last error.
template <typename Function>
bool LookUp(HMODULE hClientDll, const char* pName, Function* ppFunction, const wchar_t* pFailed)
{
    *ppFunction = UMDModuleExport<Function>(hClientDll, pName);
    if (*ppFunction)
        return true;
    UMD_TRACE(UMDTRACE_ERROR, pFailed, GetLastError());
    return false;
}
}  // namespace

UMDThreadFrameBuffer::UMDThreadFrameBuffer()
    : m_hEventFrameBufferAvailable(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_hEventRequestExit(CreateEventW(nullptr, FALSE, FALSE, nullptr)), m_bInit(false), m_bExit(false),
      m_pDeviceContext(nullptr), m_VidPnSourceId(0), m_hClientDll(nullptr), m_pConnection(nullptr), m_bConnected(false),
      m_pClientCall(nullptr), m_TessloVirtualMonitorPlug(nullptr), m_TessloVirtualMonitorUnplug(nullptr),
      m_TessloVirtualMonitorUpdate(nullptr)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L"UMDThreadFrameBuffer::UMDThreadFrameBuffer\n");
}

UMDThreadFrameBuffer::~UMDThreadFrameBuffer()
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L"UMDThreadFrameBuffer::~UMDThreadFrameBuffer\n");
    // The owner has waited, except when a start-up that failed half-way deletes it: a thread must not outlive its
    // object.
    if (Wait(0) == WAIT_TIMEOUT)
    {
        m_bExit = true;
        SetEvent(m_hEventRequestExit);
        Wait(INFINITE);
    }
    m_pFrameBuffer.reset();
    CloseHandle(m_hEventFrameBufferAvailable);
    CloseHandle(m_hEventRequestExit);
}

bool UMDThreadFrameBuffer::Start(
    UMDDdiDevice* pDeviceContext, UINT VidPnSourceId, HMODULE hClientDll, IDirect3DDevice9Ex* pDeviceDelegated)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::Start\n");
    if (m_bInit)
        return true;
    if (!pDeviceContext)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Start pDeviceContext is NULL\n");
        return false;
    }
    m_pDeviceContext = pDeviceContext;
    m_bInit = true;
    m_VidPnSourceId = VidPnSourceId;
    m_pFrameBuffer = UMDMakeUnique<UMDFrameBuffer>(pDeviceDelegated);
    if (!m_pFrameBuffer)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Start FrameBuffer is NULL\n");
        return false;
    }
    m_hClientDll = hClientDll;
    if (!UMDThreadBase::Start())
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Start UMDBaseThread::Start failed!\n");
        return false;
    }
    return true;
}

bool UMDThreadFrameBuffer::RequestExit()
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L"UMDThreadFrameBuffer::RequestExit\n");
    if (!m_bInit)
        return false;
    // The ring goes first. A frame that the worker is on lives on by the worker's own references.
    m_pFrameBuffer.reset();
    m_Handoff.Discard();
    if (InternalWasEndedInClient())
        m_Handoff.Done();  // the frame that the worker was on
    if (!m_bExit.exchange(true))
        SetEvent(m_hEventRequestExit);
    return true;
}

bool UMDThreadFrameBuffer::FrameBufferAvailable(
    IDirect3DSurface9* pSrcSurface, UINT width, UINT height, D3DFORMAT format, UINT rotation)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::FrameBufferAvailable\n");
    if (!m_bInit)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::FrameBufferAvailable m_bInit == false\n");
        return false;
    }
    if (m_bExit || !m_pFrameBuffer || InternalWasEndedInClient())
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n");
        return false;
    }
    if (HRESULT hr = m_pFrameBuffer->DuplicateFrameBuffer(pSrcSurface, width, height, format); FAILED(hr))
    {
        // The text has two conversions: the result fills both.
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDThreadFrameBuffer::FrameBufferAvailable DuplicateFrameBuffer failed! hResult:%0x%x\n", hr, hr);
        return false;
    }
    InternalPublishFrame(width, height, rotation);
    if (!SetEvent(m_hEventFrameBufferAvailable))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::FrameBufferAvailable SetEvent failed! %d\n", GetLastError());
        return false;
    }
    return true;
}

void UMDThreadFrameBuffer::InternalPublishFrame(UINT width, UINT height, UINT rotation)
{
    UMDFrame& frame = m_Handoff.Prepare();
    m_pFrameBuffer->ShareNewest(&frame);
    frame.m_Width = width;
    frame.m_Height = height;
    frame.m_BytesPerPixel = 4;
    frame.m_Pitch = width * 4;
    frame.m_Rotation = rotation;
    frame.BeginRead();
    m_Handoff.Publish();
}

// A client library may end the thread that it is called on. Nobody is told of it, and asking for the thread's end
// costs: it is asked only while the worker is in the library.
bool UMDThreadFrameBuffer::InternalWasEndedInClient()
{
    const char* pExport = m_pClientCall.load(std::memory_order_acquire);
    if (!pExport || Wait(0) != WAIT_OBJECT_0)
        return false;
    if (!m_bExit.exchange(true))
        UMD_TRACE(
            UMDTRACE_ERROR, L"Thread ended in client library! %S of source %d failed!\n", pExport, m_VidPnSourceId);
    return true;
}

void UMDThreadFrameBuffer::Run()
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::Run\n");
    while (InternalWaitForFrame() && InternalProcessNewestFrame() && !m_bExit)
    {
    }
    InternalEnd();
}

void UMDThreadFrameBuffer::InternalEnd()
{
    if (std::exchange(m_bConnected, false) && !InternalUninitializeConnection(&m_pConnection, m_VidPnSourceId))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Run InternalUninitializeConnection failed!\n");
    UMD_TRACE(UMDTRACE_DETAIL | UMDTRACE_ENTER, L"UMDThreadFrameBuffer::Run exit\n");
    m_bExit = true;
}

void UMDThreadFrameBuffer::Faulted()
{
    UMD_TRACE(
        UMDTRACE_ERROR, L"Exception in thread! UMDThreadFrameBuffer::Run of source %d failed!\n", m_VidPnSourceId);
    InternalEnd();
    m_Handoff.Done();
}

void UMDThreadFrameBuffer::TellWaiting(UINT seconds) const
{
    const char* pExport = m_pClientCall.load(std::memory_order_acquire);
    UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Wait source %d has not ended after %d s, it is in %S\n",
        m_VidPnSourceId, seconds, pExport ? pExport : "the driver");
}

bool UMDThreadFrameBuffer::InternalWaitForFrame()
{
    const HANDLE events[] = {m_hEventFrameBufferAvailable, m_hEventRequestExit};
    const DWORD result = WaitForMultipleObjects(ARRAYSIZE(events), events, FALSE, INFINITE);
    switch (result)
    {
    case WAIT_OBJECT_0:
        return true;
    case WAIT_OBJECT_0 + 1:
        UMD_TRACE(UMDTRACE_DETAIL | UMDTRACE_ENTER, L"UMDThreadFrameBuffer::Run exiting...\n");
        return false;
    case WAIT_FAILED:
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Run WAIT_FAILED %d...\n", GetLastError());
        return false;
    default:
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Run unexpected result %d...\n", result);
        return false;
    }
}

bool UMDThreadFrameBuffer::InternalProcessNewestFrame()
{
    if (!m_bConnected)
    {
        m_pConnection = nullptr;
        if (!InternalInitializeConnection(&m_pConnection, m_VidPnSourceId))
        {
            UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n");
            return false;
        }
        m_bConnected = true;
    }
    UMDFrame* pFrame = m_Handoff.Take();
    if (!pFrame)
        return true;  // taken on an earlier wake-up, or withdrawn by an exit request
    BYTE* pBuffer = UMDFrameBuffer::GetDuplicateFrameBufferMalloc(*pFrame);
    IDirect3DSurface9* pSurface = UMDFrameBuffer::GetDuplicateFrameBuffer(*pFrame);
    const bool processed = InternalProcessFrameBuffer(&m_pConnection, pBuffer, pSurface, pFrame, m_VidPnSourceId);
    m_Handoff.Done();
    if (!processed)
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Run InternalProcessFrameBuffer failed!\n");
    return processed;
}

template <typename Call>
bool UMDThreadFrameBuffer::InternalCallClient(const char* pExport, const Call& call)
{
    BOOLEAN answer = FALSE;
    m_pClientCall.store(pExport, std::memory_order_release);
    if (!UMDUtilGuard([&] { answer = call(); }))
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in client library! %S of source %d failed!\n", pExport, m_VidPnSourceId);
    m_pClientCall.store(nullptr, std::memory_order_release);
    return answer;
}

bool UMDThreadFrameBuffer::InternalInitializeConnection(void** ppConnection, UINT VidPnSourceId)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::InternalInitializeConnection\n");
    if (!LookUp(m_hClientDll, TESSLO_CLIENT_PLUG, &m_TessloVirtualMonitorPlug,
            L"UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress1 failed! %d\n") ||
        !LookUp(m_hClientDll, TESSLO_CLIENT_UNPLUG, &m_TessloVirtualMonitorUnplug,
            L"UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress2 failed! %d\n") ||
        !LookUp(m_hClientDll, TESSLO_CLIENT_UPDATE, &m_TessloVirtualMonitorUpdate,
            L"UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress3 failed! %d\n"))
        return false;
    if (!InternalCallClient(
            TESSLO_CLIENT_PLUG, [&] { return m_TessloVirtualMonitorPlug(ppConnection, VidPnSourceId); }))
    {
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDThreadFrameBuffer::InternalInitializeConnection m_TessloVirtualMonitorPlug() failed!\n");
        return false;
    }
    return true;
}

bool UMDThreadFrameBuffer::InternalProcessFrameBuffer(
    void** ppConnection, BYTE* pBuffer, IDirect3DSurface9* pSurface, UMDFrame* pFrame, UINT VidPnSourceId)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::InternalProcessFrameBuffer\n");
    UINT width = pFrame->m_Width;
    UINT height = pFrame->m_Height;
    UINT pitch = pFrame->m_Pitch;
    D3DLOCKED_RECT locked = {};
    HRESULT hrLock = pSurface->LockRect(&locked, nullptr, 0);
    if (SUCCEEDED(hrLock) && locked.Pitch < INT64{pitch})
    {
        // Rows that are shorter than the frame's would be read past the end of the last one.
        pSurface->UnlockRect();
        hrLock = E_FAIL;
    }
    if (FAILED(hrLock))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::InternalProcessFrameBuffer LockRect failed! hResult:0x%x\n",
            hrLock);
        return false;
    }
    // The pitch is the frame's own, not the locked one: 32-bit system-memory surfaces are packed.
    if (HRESULT hr = UMDImgProcRotation(pBuffer, static_cast<const BYTE*>(locked.pBits), &pitch, &width, &height,
            pFrame->m_BytesPerPixel, pFrame->m_Rotation);
        FAILED(hr))
    {
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDThreadFrameBuffer::InternalProcessFrameBuffer UMDImgProcRotation failed! hResult:0x%x\n", hr);
        return false;
    }
    if (HRESULT hr = pSurface->UnlockRect(); FAILED(hr))
    {
        UMD_TRACE(
            UMDTRACE_ERROR, L"UMDThreadFrameBuffer::InternalProcessFrameBuffer UnlockRect failed! hResult:0x%x\n", hr);
        return false;
    }
    pFrame->EndRead();  // the library reads the buffer, for as long as it likes
    if (!InternalSendFrameBuffer(ppConnection, pBuffer, width, height, pitch, VidPnSourceId))
    {
        UMD_TRACE(
            UMDTRACE_ERROR, L"UMDThreadFrameBuffer::InternalProcessFrameBuffer InternalSendFrameBuffer failed!\n");
        return false;
    }
    return true;
}

bool UMDThreadFrameBuffer::InternalSendFrameBuffer(
    void** ppConnection, const BYTE* pBuffer, UINT width, UINT height, UINT pitch, UINT VidPnSourceId)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::InternalSendFrameBuffer\n");
    TessloVirtualMonitorFrame frame = {};
    frame.VidPnSourceId = VidPnSourceId;
    frame.Width = width;
    frame.Height = height;
    frame.Pitch = pitch;
    frame.pBits = pBuffer;
    if (!InternalCallClient(TESSLO_CLIENT_UPDATE, [&] { return m_TessloVirtualMonitorUpdate(ppConnection, &frame); }))
    {
        UMD_TRACE(
            UMDTRACE_ERROR, L"UMDThreadFrameBuffer::InternalSendFrameBuffer m_TessloVirtualMonitorUpdate() failed!\n");
        return false;
    }
    return true;
}

bool UMDThreadFrameBuffer::InternalUninitializeConnection(void** ppConnection, UINT VidPnSourceId)
{
    UMD_TRACE(UMDTRACE_FRAMEBUFFER, L">>> UMDThreadFrameBuffer::InternalUninitializeConnection\n");
    if (!InternalCallClient(
            TESSLO_CLIENT_UNPLUG, [&] { return m_TessloVirtualMonitorUnplug(ppConnection, VidPnSourceId); }))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadFrameBuffer::Run InternalUninitializeConnection() failed!\n");
    return true;
}
