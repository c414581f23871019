#include "device/UMDDdiDevice.h"

#include "kernel/UMDEscape.h"
#include "output/UMDClientLibrary.h"
#include "util/UMDUtilDebugTrace.h"

UMDDdiDevice::UMDDdiDevice(HANDLE hDevice, UINT, UINT version, UMDAdapter* pAdapter, HANDLE hRTAdapter,
    const D3DDDI_DEVICECALLBACKS* pCallbacks)
    : m_hDevice(hDevice), m_Kind(5), m_Version(version), m_d3dCallbacks(*pCallbacks), m_pAdapter(pAdapter),
      m_hRTAdapter(hRTAdapter), m_hContext(nullptr), m_pCommandBuffer(nullptr), m_CommandBufferSize(0),
      m_pAllocationList(nullptr), m_AllocationListSize(0), m_pPatchLocationList(nullptr), m_PatchLocationListSize(0),
      m_StreamSource0Offset(0), m_StreamSource0Stride(0), m_pStreamSource0VertexBufferPointer(nullptr),
      m_pStreamSource0VertexBufferResource(nullptr)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::UMDDdiDevice\n");
    for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
    {
        m_SourceRotation[i] = D3DDDI_ROTATION_IDENTITY;
        m_hPrimaryResource[i] = nullptr;
        m_SourceReserved[i] = {};
    }
}

UMDDdiDevice::~UMDDdiDevice()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::~UMDDdiDevice\n");
}

bool UMDDdiDevice::Initialize()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::Initialize\n");
    if (!CreateContext())
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::Initialize CreateContext failed!\n");
        return false;
    }
    if (!CreateThreads())
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::Initialize CreateThreads failed!\n");
        return false;
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::Initialize\n");
    return true;
}

bool UMDDdiDevice::CreateContext()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateContext\n");
    if (!m_d3dCallbacks.pfnCreateContextCb)
    {
        // The device works without a context; the flush then passes none.
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::CreateContext m_d3dCallbacks.pfnCreateContextCb is NULL!\n");
    }
    else
    {
        D3DDDICB_CREATECONTEXT context = {};
        if (HRESULT hr = m_d3dCallbacks.pfnCreateContextCb(m_hDevice, &context); FAILED(hr))
        {
            UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::CreateContext pfnCreateContextCb failed! 0x%x\n", hr);
            return false;
        }
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDDdiDevice::CreateContext m_hContext:0x%x\n", UMDLow32(context.hContext));
        m_hContext = context.hContext;
        InternalTakeCommandBuffer(context.pCommandBuffer, context.CommandBufferSize, context.pAllocationList,
            context.AllocationListSize, context.pPatchLocationList, context.PatchLocationListSize);
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreateContext\n");
    return true;
}

void UMDDdiDevice::DestroyContext()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DestroyContext m_hContext:0x%x\n", UMDLow32(m_hContext));
    if (m_d3dCallbacks.pfnDestroyContextCb)
    {
        const D3DDDICB_DESTROYCONTEXT context = {.hContext = m_hContext};
        if (HRESULT hr = m_d3dCallbacks.pfnDestroyContextCb(m_hDevice, &context); FAILED(hr))
            UMD_TRACE(UMDTRACE_ERROR, L">>> UMDDdiDevice::DestroyContext failed! hResult:0x%x\n", hr);
    }
    m_hContext = nullptr;
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DestroyContext\n");
}

bool UMDDdiDevice::CreateThreads()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateThreads\n");
    // Without a delegated device the start goes on: operations that need one later fail, or fault and are guarded.
    m_ThreadGpuD3D9.ThreadGuiStart(UMDClientLibraryModule());
    if (FAILED(InterFrameBufferThreadsStart()))
        return false;
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreateThreads\n");
    return true;
}

void UMDDdiDevice::DestroyThreads()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DestroyThreads m_hContext:0x%x\n", UMDLow32(m_hContext));
    InterFrameBufferThreadsStop();
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDDdiDevice::DestroyThreads m_ThreadGpuD3D9 RequestExit \n");
    m_ThreadGpuD3D9.ThreadGuiRequestExit();
    m_ThreadGpuD3D9.Wait(INFINITE);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DestroyThreads\n");
}

HRESULT UMDDdiDevice::InterFrameBufferThreadsStart()
{
    for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer[%d]\n", i);
        const UINT sourceId = InternalQueryVidPnSourceId(i);
        if (!m_ThreadFrameBuffer[i].Start(this, sourceId, UMDClientLibraryModule(), GetDevice()))
            return UMDFail(E_FAIL, L"UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer %d failed!\n", i);
    }
    return S_OK;
}

UINT UMDDdiDevice::InternalQueryVidPnSourceId(UINT index)
{
    UMDESCAPE_VIDPNSOURCE query = {};
    query.Index = index;
    D3DDDICB_ESCAPE escape = {};
    escape.pPrivateDriverData = &query;
    escape.PrivateDriverDataSize = sizeof(query);
    const auto pfnEscapeCb = m_d3dCallbacks.pfnEscapeCb;
    if (!pfnEscapeCb || FAILED(pfnEscapeCb(m_hRTAdapter, &escape)))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::InterFrameBufferThreadsStart pfnEscapeCb %d failed!\n", index);
        return index;
    }
    return query.VidPnSourceId;
}

HRESULT UMDDdiDevice::InterFrameBufferThreadsStop()
{
    for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
    {
        UMD_TRACE(
            UMDTRACE_DETAIL, L"UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[%d] RequestExit\n", i);
        if (m_ThreadFrameBuffer[i].RequestExit())
            m_ThreadFrameBuffer[i].Wait(INFINITE);
    }
    return S_OK;
}
