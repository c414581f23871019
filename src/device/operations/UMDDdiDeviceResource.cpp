#include "device/UMDDdiDevice.h"
#include "resources/UMDRscFactory.h"
#include "resources/UMDRscVertexBuffer.h"
#include "util/UMDUtilDebugTrace.h"

namespace
{
/// Has an object made for a request and gives the runtime its handle. @param pText takes the handle's low 32 bits.
template <typename Request>
HRESULT HandOut(UMDDdiDevice* pDevice, Request* pRequest,
    HRESULT (*pMake)(UMDDdiDevice*, const Request*, std::unique_ptr<UMDRscBase>*), const wchar_t* pText)
{
    std::unique_ptr<UMDRscBase> pResource;
    if (HRESULT hr = pMake(pDevice, pRequest, &pResource); FAILED(hr))
        return hr;
    pRequest->hResource = ToHandle(pResource.release());
    UMD_TRACE(UMDTRACE_DDI | UMDTRACE_RESOURCE, pText, UMDLow32(pRequest->hResource));
    return S_OK;
}

/// The D3DLOCK flags of a lock; the other flags have no counterpart on the delegated device.
DWORD DelegatedLockFlags(D3DDDI_LOCKFLAGS flags)
{
    return (flags.ReadOnly ? D3DLOCK_READONLY : 0) | (flags.NoOverwrite ? D3DLOCK_NOOVERWRITE : 0) |
           (flags.Discard ? D3DLOCK_DISCARD : 0) | (flags.DoNotWait ? D3DLOCK_DONOTWAIT : 0);
}
}  // namespace

HRESULT UMDDdiDevice::CreateResource(D3DDDIARG_CREATERESOURCE* pCreate)
{
    return HandOut(this, pCreate, UMDRscFactoryCreate, L"   Handle: 0x%x\n");
}

HRESULT UMDDdiDevice::OpenResource(D3DDDIARG_OPENRESOURCE* pOpen)
{
    return HandOut(this, pOpen, UMDRscFactoryOpen, L"   Handle:0x%x\n");
}

HRESULT UMDDdiDevice::Lock(D3DDDIARG_LOCK* pLock)
{
    return ToResource(pLock->hResource)
        ->Lock(pLock->Flags.AreaValid, pLock->Range.Offset, pLock->Range.Size, &pLock->pSurfData, &pLock->Pitch,
            DelegatedLockFlags(pLock->Flags));
}

HRESULT UMDDdiDevice::Unlock(const D3DDDIARG_UNLOCK* pUnlock)
{
    return ToResource(pUnlock->hResource)->Unlock();
}

HRESULT UMDDdiDevice::DestroyResource(HANDLE hResource)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DestroyResource hSrcResource:0x%x\n", UMDLow32(hResource));
    const std::unique_ptr<UMDRscBase> pResource(ToResource(hResource));
    if (!pResource)
        return E_FAIL;
    if (pResource->GetType() == UMDRESOURCETYPE_RENDERTARGET)
        InternalForgetPrimary(hResource);
    InternalForgetStreamSource0(pResource.get());
    pResource->Destroy();
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
