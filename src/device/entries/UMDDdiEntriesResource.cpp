#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"
#include "resources/UMDRscZBuffer.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

#include <new>

namespace
{
constexpr UINT kTraceLevel = UMDTRACE_DDI | UMDTRACE_RESOURCE;

D3DPOOL DelegatedPool(const D3DDDIARG_CREATERESOURCE* pCreate)
{
    return pCreate->Pool == D3DDDIPOOL_SYSTEMMEM ? D3DPOOL_SYSTEMMEM : D3DPOOL_DEFAULT;
}

DWORD DelegatedUsage(D3DDDI_RESOURCEFLAGS flags)
{
    if (flags.VertexBuffer || flags.IndexBuffer)
        return (flags.Dynamic ? D3DUSAGE_DYNAMIC : 0) | (flags.WriteOnly ? D3DUSAGE_WRITEONLY : 0);
    return flags.Texture && flags.Dynamic ? D3DUSAGE_DYNAMIC : 0;
}

/// The object of the class that the flags ask for. The first flag of this order decides: a render target that is also
/// a texture becomes a texture. @return null when memory is short.
UMDRscBase* NewResource(UMDDdiDevice* pDevice, const D3DDDIARG_CREATERESOURCE* pCreate)
{
    const D3DDDI_RESOURCEFLAGS flags = pCreate->Flags;
    const HANDLE hResourceOS = pCreate->hResource;
    const DWORD usage = DelegatedUsage(flags);
    const D3DPOOL pool = DelegatedPool(pCreate);

    if (flags.VertexBuffer)
        return new (std::nothrow) UMDRscVertexBuffer(pDevice, hResourceOS, pCreate, FALSE, usage, pool);
    if (flags.IndexBuffer)
        return new (std::nothrow) UMDRscIndexBuffer(pDevice, hResourceOS, pCreate, FALSE, usage, pool);
    if (flags.ZBuffer)
        return new (std::nothrow) UMDRscZBuffer(pDevice, hResourceOS, pCreate, FALSE);
    if (flags.CubeMap)
        return new (std::nothrow) UMDRscCubeTexture(pDevice, hResourceOS, pCreate, FALSE, usage, pool);
    if (flags.Texture)
        return new (std::nothrow)
            UMDRscTexture(pDevice, hResourceOS, pCreate, FALSE, usage, pool, UMDRESOURCETYPE_TEXTURE);
    if (flags.RenderTarget)
        return new (std::nothrow) UMDRscSurface(pDevice, hResourceOS, pCreate, FALSE, pool, false);
    if (!flags.Value || flags.DecodeRenderTarget)
        return new (std::nothrow) UMDRscSurface(pDevice, hResourceOS, pCreate, FALSE, pool, true);

    // A resource that the driver does not mirror: the runtime gets a handle to name and to destroy, no more.
    UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiCreateResource unhandled resource\n");
    return new (std::nothrow) UMDRscBase(pDevice, hResourceOS, UMDRESOURCETYPE_UNKNOWN);
}

/// Gives back what the object holds, and the object.
void Discard(UMDRscBase* pResource)
{
    pResource->Destroy();
    delete pResource;
}

HRESULT CreateResource(UMDDdiDevice* pDevice, D3DDDIARG_CREATERESOURCE* pCreate)
{
    UMDRscBase* pResource = NewResource(pDevice, pCreate);
    if (!pResource)
        return UMDFail(E_OUTOFMEMORY, L"UMDDdiCreateResource error! E_OUTOFMEMORY\n");
    const bool mirrored = pResource->GetType() != UMDRESOURCETYPE_UNKNOWN;
    if (mirrored && FAILED(pResource->Create()))
    {
        Discard(pResource);
        return E_FAIL;
    }
    pCreate->hResource = ToHandle(pResource);
    UMD_TRACE(kTraceLevel, L"   Handle: 0x%x\n", UMDLow32(pCreate->hResource));
    return S_OK;
}

/// Opens the texture behind the first allocation, if it is one of this driver's. Somebody else's allocation, like a
/// shortage of memory, leaves a null handle and no failure.
HRESULT OpenTexture(UMDDdiDevice* pDevice, const D3DDDIARG_OPENRESOURCE* pOpen, UMDRscTexture** ppTexture)
{
    *ppTexture = nullptr;
    if (!pOpen->NumAllocations || !pOpen->pOpenAllocationInfo)
        return S_OK;
    const D3DDDI_OPENALLOCATIONINFO& allocation = pOpen->pOpenAllocationInfo[0];
    UMDAllocationPrivateData record = {};
    if (!UMDReadAllocationPrivateData(allocation.pPrivateDriverData, allocation.PrivateDriverDataSize, &record))
        return S_OK;
    if (record.TextureKind != UMDRESOURCETYPE_TEXTURE)
        return UMDFail(E_FAIL, L"OpenResource failed! Type:%d\n", record.TextureKind);

    auto* pTexture = new (std::nothrow) UMDRscTexture(
        pDevice, pOpen->hResource, pOpen, TRUE, D3DUSAGE_RENDERTARGET, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE);
    if (!pTexture)
        return S_OK;
    if (FAILED(pTexture->Open()))
    {
        Discard(pTexture);
        return E_FAIL;
    }
    *ppTexture = pTexture;
    return S_OK;
}

HRESULT OpenResource(UMDDdiDevice* pDevice, D3DDDIARG_OPENRESOURCE* pOpen)
{
    UMDRscTexture* pTexture = nullptr;
    if (HRESULT hr = OpenTexture(pDevice, pOpen, &pTexture); FAILED(hr))
        return hr;
    pOpen->hResource = ToHandle(pTexture);
    UMD_TRACE(kTraceLevel, L"   Handle:0x%x\n", UMDLow32(pOpen->hResource));
    return S_OK;
}

UMDRESOURCETYPE TypeOf(HANDLE hResource)
{
    return hResource ? ToResource(hResource)->GetType() : UMDRESOURCETYPE_NONE;
}

/// The D3DLOCK flags of a lock; the other flags have no counterpart on the delegated device.
DWORD DelegatedLockFlags(D3DDDI_LOCKFLAGS flags)
{
    return (flags.ReadOnly ? D3DLOCK_READONLY : 0) | (flags.NoOverwrite ? D3DLOCK_NOOVERWRITE : 0) |
           (flags.Discard ? D3DLOCK_DISCARD : 0) | (flags.DoNotWait ? D3DLOCK_DONOTWAIT : 0);
}
}  // namespace

HRESULT APIENTRY UMDDdiLock(HANDLE, D3DDDIARG_LOCK* pLock)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiLock hResource:0x%x\n", UMDLow32(pLock->hResource));
        UMDUtilDebugTracePrintLock(pLock, TypeOf(pLock->hResource));
        return ToResource(pLock->hResource)
            ->Lock(pLock->Flags.AreaValid, pLock->Range.Offset, pLock->Range.Size, &pLock->pSurfData, &pLock->Pitch,
                DelegatedLockFlags(pLock->Flags));
    });
}

HRESULT APIENTRY UMDDdiUnlock(HANDLE, const D3DDDIARG_UNLOCK* pUnlock)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiUnlock hResource:0x%x\n", UMDLow32(pUnlock->hResource));
        return ToResource(pUnlock->hResource)->Unlock();
    });
}

HRESULT APIENTRY UMDDdiCreateResource(HANDLE hDevice, D3DDDIARG_CREATERESOURCE* pCreateResource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiCreateResource\n");
        UMDUtilDebugTracePrintCreateResource(pCreateResource);
        return CreateResource(&ToDevice(hDevice), pCreateResource);
    });
}

HRESULT APIENTRY UMDDdiDestroyResource(HANDLE hDevice, HANDLE hResource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiDestroyResource hResource:0x%x\n", UMDLow32(hResource));
        UMDUtilDebugTracePrintResourceType(TypeOf(hResource));
        return ToDevice(hDevice).DestroyResource(hResource);
    });
}

HRESULT APIENTRY UMDDdiOpenResource(HANDLE hDevice, D3DDDIARG_OPENRESOURCE* pOpenResource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiOpenResource \n");
        UMDUtilDebugTracePrintOpenResource(pOpenResource);
        return OpenResource(&ToDevice(hDevice), pOpenResource);
    });
}
