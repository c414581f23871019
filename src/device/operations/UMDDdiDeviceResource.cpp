#include "device/UMDDdiDevice.h"
#include "resources/UMDRscVertexBuffer.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT UMDDdiDevice::DestroyResource(HANDLE hResource)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DestroyResource hSrcResource:0x%x\n", UMDLow32(hResource));
    UMDRscBase* pResource = ToResource(hResource);
    if (!pResource)
        return E_FAIL;
    if (pResource->GetType() == UMDRESOURCETYPE_RENDERTARGET)
        InternalForgetPrimary(hResource);
    InternalForgetStreamSource0(pResource);
    pResource->Destroy();
    delete pResource;
    // The runtime is told of a failure always, and does not mind.
    return E_FAIL;
}

void UMDDdiDevice::InternalForgetPrimary(HANDLE hResource)
{
    for (HANDLE hPrimary : m_hPrimaryResource)
    {
        if (hPrimary != hResource)
            continue;
        // Stopping waits for the threads: none of them may read a render target that is going away.
        InterFrameBufferThreadsStop();
        for (HANDLE& hForgotten : m_hPrimaryResource)
            hForgotten = nullptr;
        return;
    }
}

void UMDDdiDevice::InternalForgetStreamSource0(const UMDRscBase* pResource)
{
    // A draw without a new stream source would read the freed buffer, and the runtime's memory that it stood for.
    if (m_pStreamSource0VertexBufferResource != pResource)
        return;
    m_pStreamSource0VertexBufferResource = nullptr;
    m_pStreamSource0VertexBufferPointer = nullptr;
}
