#include "resources/UMDRscRenderTargetCapable.h"

#include "device/UMDDdiDevice.h"
#include "resources/UMDSurfaceList.h"
#include "util/UMDUtilDebugTrace.h"

#include <algorithm>
#include <utility>

namespace
{
struct Extent
{
    UINT Width, Height;  ///< pixels
};

/// What of a read-back surface may be taken for pixels of a format: with another format than its own, as many as its
/// rows have bytes for. Of planes, and of a format that the driver knows nothing of, nothing.
Extent ReadableAs(D3DDDIFORMAT format, const D3DSURFACE_DESC& desc, UINT pitch)
{
    const UMDPixelLayout& wanted = UMDPixelLayoutOf(format);
    const UMDPixelLayout& layout = UMDPixelLayoutOf(static_cast<D3DDDIFORMAT>(desc.Format));
    if (wanted.Format == layout.Format)
        return {desc.Width, desc.Height};
    if (wanted.PlaneCount != 1)
        return {0, 0};
    const UMDPixelPlane& plane = wanted.Planes[0];
    const UINT blocks = std::min(layout.RowBytes(0, desc.Width), pitch) / plane.BlockBytes;
    return {std::min(desc.Width, blocks * plane.BlockWidth),
        std::min(desc.Height, layout.Rows(0, desc.Height) * plane.BlockHeight)};
}
}  // namespace

UMDRscRenderTargetCapable::UMDRscRenderTargetCapable(
    UMDDdiDevice* pDevice, HANDLE hResourceOS, UMDRESOURCETYPE type, BOOL openResource)
    : UMDRscBase(pDevice, hResourceOS, type), m_hAllocation(0), m_hKMResource(0), m_Format(D3DDDIFMT_UNKNOWN),
      m_Width(0), m_Height(0), m_Rotation(D3DDDI_ROTATION_IDENTITY), m_VidPnSourceId(0), m_bIsRenderTarget(false),
      m_bIsPrimary(false), m_bIsSharedResource(false), m_bIsOpenedShared(false), m_BytesPerPixel(4),
      m_OpenResource(openResource), m_Pool(D3DPOOL_DEFAULT), m_bAllocationRequested(false)
{
}

IDirect3DSurface9* UMDRscRenderTargetCapable::GetSurface(UINT, UINT)
{
    return nullptr;
}

HRESULT UMDRscRenderTargetCapable::Blt(const RECT*, UMDRscBase*, const RECT*)
{
    return E_NOTIMPL;
}

void UMDRscRenderTargetCapable::InternalTakeCreate(const D3DDDIARG_CREATERESOURCE* pCreate, D3DPOOL pool)
{
    const D3DDDI_SURFACEINFO surface = UMDFirstSurface(pCreate);
    m_bIsRenderTarget = pCreate->Flags.RenderTarget;
    m_bIsPrimary = pCreate->Flags.Primary;
    m_bIsSharedResource = pCreate->Flags.SharedResource;
    m_Width = surface.Width;
    m_Height = surface.Height;
    m_Format = pCreate->Format;
    m_Pool = pool;
}

HRESULT UMDRscRenderTargetCapable::InternalDescribe(IDirect3DSurface9* pFirst, D3DSURFACE_DESC* pFirstDesc,
    IDirect3DSurface9* pSecond, D3DSURFACE_DESC* pSecondDesc, const wchar_t* pFailed)
{
    HRESULT hr = pFirst->GetDesc(pFirstDesc);
    if (SUCCEEDED(hr))
        hr = pSecond->GetDesc(pSecondDesc);
    if (FAILED(hr))
        return UMDFail(hr, pFailed, hr);
    return S_OK;
}

HRESULT UMDRscRenderTargetCapable::InternalCopyFrom(const CopyFromTexts& texts, const UMDImage<const BYTE>& src)
{
    if (!m_hAllocation)
        return UMDFail(E_FAIL, texts.pNoAllocation);
    void* pData = nullptr;
    if (HRESULT hr = KernelModeLockCb(&pData); FAILED(hr))
        return UMDFail(hr, texts.pLockFailed, hr);

    // A lock answers an address and no pitch: the allocation is what its private record says, without any padding.
    const UMDPixelLayout& layout = UMDPixelLayoutOf(m_Format);
    UMDCopyPixels(layout, {static_cast<BYTE*>(pData), layout.RowBytes(0, m_Width), m_Width, m_Height}, src, nullptr);

    const HRESULT hr = KernelModeUnlockCb();
    if (FAILED(hr))
        return UMDFail(hr, texts.pUnlockFailed, hr);
    return hr;
}

void UMDRscRenderTargetCapable::KernelModeAllocateCb(UMDAllocationPrivateData* pPrivateData)
{
    D3DDDI_RESOURCEFLAGS flags = {};
    flags.Value = pPrivateData->ResourceFlags;

    D3DDDI_ALLOCATIONINFO allocation = {};
    allocation.pPrivateDriverData = pPrivateData;
    allocation.PrivateDriverDataSize = sizeof(*pPrivateData);
    allocation.Flags.Primary = flags.Primary;
    if (flags.Primary)
        allocation.VidPnSourceId = pPrivateData->VidPnSourceId;

    D3DDDICB_ALLOCATE allocate = {};
    allocate.hResource = m_hResourceOS;
    allocate.NumAllocations = 1;
    allocate.pAllocationInfo = &allocation;

    m_bAllocationRequested = true;
    if (HRESULT hr = m_pDevice->Callbacks().pfnAllocateCb(m_pDevice->RuntimeDevice(), &allocate); FAILED(hr))
    {
        // The object goes on without an allocation: later locks and presents pass handle 0, which the runtime refuses.
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDRscRenderTargetCapable::KernelModeAllocateCb pfnAllocateCb failed! hResult 0x%x %s\n", hr,
            hr == D3DERR_OUTOFVIDEOMEMORY ? L"OUT OF VIDEO MEMORY!!!" : L"");
        return;
    }
    m_hAllocation = allocation.hAllocation;
    m_hKMResource = allocate.hKMResource;
    UMD_TRACE(UMDTRACE_DDI | UMDTRACE_RESOURCE, L"   KMode Handle - m_hAllocation:0x%x m_hKMResource:0x%x\n",
        m_hAllocation, m_hKMResource);
}

void UMDRscRenderTargetCapable::KernelModeDellocateCb()
{
    D3DDDICB_DEALLOCATE deallocate = {};
    deallocate.hResource = m_hResourceOS;
    deallocate.NumAllocations = 1;
    deallocate.HandleList = &m_hAllocation;
    if (HRESULT hr = m_pDevice->Callbacks().pfnDeallocateCb(m_pDevice->RuntimeDevice(), &deallocate); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDRscRenderTargetCapable::KernelModeDellocateCb pfnDeallocateCb failed! hResult 0x%x\n", hr);
}

void UMDRscRenderTargetCapable::InternalReleaseAllocation()
{
    if (std::exchange(m_bAllocationRequested, false))
        KernelModeDellocateCb();
}

HRESULT UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb()
{
    UMD_TRACE(UMDTRACE_RESOURCE,
        L"UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb DeviceContext:0x%x Resource:0x%x VidPnSourceId:%d m_hAllocation:0x%x\n",
        UMDLow32(m_pDevice), UMDLow32(this), m_VidPnSourceId, m_hAllocation);
    D3DDDICB_SETDISPLAYMODE displayMode = {};
    displayMode.hPrimaryAllocation = m_hAllocation;
    const HRESULT hr = m_pDevice->Callbacks().pfnSetDisplayModeCb(m_pDevice->RuntimeDevice(), &displayMode);
    if (FAILED(hr))
        return UMDFail(hr,
            L"UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb pfnSetDisplayModeCb failed! 0x%x %s\n", hr,
            hr == E_OUTOFMEMORY ? L"OUT OF MEMORY!!!" : L"");
    return hr;
}

HRESULT UMDRscRenderTargetCapable::KernelModeLockCb(void** ppData)
{
    D3DDDICB_LOCK lock = {};
    lock.hAllocation = m_hAllocation;
    lock.Flags.LockEntire = 1;
    const HRESULT hr = m_pDevice->Callbacks().pfnLockCb(m_pDevice->RuntimeDevice(), &lock);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscRenderTargetCapable::KernelModeLockCb pfnLockCb failed! 0x%x\n", hr);
    *ppData = lock.pData;
    return hr;
}

HRESULT UMDRscRenderTargetCapable::KernelModeUnlockCb()
{
    D3DDDICB_UNLOCK unlock = {};
    unlock.NumAllocations = 1;
    unlock.phAllocations = &m_hAllocation;
    const HRESULT hr = m_pDevice->Callbacks().pfnUnlockCb(m_pDevice->RuntimeDevice(), &unlock);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscRenderTargetCapable::KernelModeUnlockCb pfnUnlockCb failed! 0x%x\n", hr);
    return hr;
}

HRESULT UMDRscRenderTargetCapable::KernelModePresentCb(HANDLE hContext)
{
    D3DDDICB_PRESENT present = {};
    present.hSrcAllocation = m_hAllocation;
    present.hContext = hContext;
    if (HRESULT hr = m_pDevice->Callbacks().pfnPresentCb(m_pDevice->RuntimeDevice(), &present); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDRscRenderTargetCapable::KernelModePresentCb pfnPresentCb failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDRscRenderTargetCapable::KernelModePresentCbBLT(HANDLE hContext)
{
    IDirect3DSurface9* pSurface = nullptr;
    D3DLOCKED_RECT locked = {};
    D3DSURFACE_DESC desc = {};
    if (HRESULT hr = RenderTargetDataLock(&pSurface, &locked, &desc); FAILED(hr))
        return UMDFail(
            hr, L"UMDRscRenderTargetCapable::KernelModePresentCbBLT RenderTargetDataLock failed! hResult: 0x%x\n", hr);

    // The delegated device's current render target need not be this one.
    const UINT pitch = static_cast<UINT>(locked.Pitch);
    const Extent extent = ReadableAs(m_Format, desc, pitch);
    const HRESULT hrCopy =
        CopyFrom(static_cast<const BYTE*>(locked.pBits), extent.Width, extent.Height, m_BytesPerPixel, pitch);
    if (FAILED(hrCopy))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDRscRenderTargetCapable::KernelModePresentCbBLT CopyFrom failed! hResult: 0x%x\n",
            hrCopy);
        RenderTargetDataUnlock(&pSurface);
        return hrCopy;
    }
    if (HRESULT hr = KernelModePresentCb(hContext); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDRscRenderTargetCapable::KernelModePresentCbBLT KernelModePresentCb failed! 0x%x\n", hr);
    RenderTargetDataUnlock(&pSurface);
    return S_OK;
}

HRESULT UMDRscRenderTargetCapable::KernelModePresentCbFLIP(HANDLE hContext)
{
    if (HRESULT hr = KernelModePresentCb(hContext); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDRscRenderTargetCapable::KernelModePresentCbFLIP KernelModePresentCb failed! 0x%x\n", hr);
    constexpr DWORD kFlipPauseMilliseconds = 10;
    Sleep(kFlipPauseMilliseconds);
    return S_OK;
}

HRESULT UMDRscRenderTargetCapable::RenderTargetDataLock(
    IDirect3DSurface9** ppSurface, D3DLOCKED_RECT* pLockedRect, D3DSURFACE_DESC* pDesc)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDRscRenderTargetCapable::RenderTargetDataLock\n");

    // Not released on any path: every read-back leaves this reference to the owner of the delegated device, who may be
    // the client library and counts on it.
    IDirect3DSurface9* pRenderTarget = nullptr;
    if (HRESULT hr = m_pDeviceDelegated->GetRenderTarget(0, &pRenderTarget); FAILED(hr))
        return UMDFail(
            hr, L"UMDRscRenderTargetCapable::RenderTargetDataLock GetRenderTarget failed! hResult: 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDRscRenderTargetCapable::RenderTargetDataLock 0x%x\n", UMDLow32(pRenderTarget));

    if (HRESULT hr = pRenderTarget->GetDesc(pDesc); FAILED(hr))
        return UMDFail(hr, L"UMDRscRenderTargetCapable::RenderTargetDataLock GetDesc failed! hResult: 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDRscRenderTargetCapable::RenderTargetDataLock Width 0x%x Height 0x%x\n",
        pDesc->Width, pDesc->Height);

    if (HRESULT hr = InternalFitSysMemSurface(*pDesc); FAILED(hr))
        return hr;
    *ppSurface = m_pSysMemSurface.Get();

    if (HRESULT hr = m_pDeviceDelegated->GetRenderTargetData(pRenderTarget, m_pSysMemSurface.Get()); FAILED(hr))
        return UMDFail(
            hr, L"UMDRscRenderTargetCapable::RenderTargetDataLock GetRenderTargetData failed! hResult: 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDRscRenderTargetCapable::RenderTargetDataLock pRenderTarget 0x%x\n",
        UMDLow32(pRenderTarget));

    if (HRESULT hr = m_pSysMemSurface->LockRect(pLockedRect, nullptr, 0); FAILED(hr))
    {
        UMD_TRACE(
            UMDTRACE_ERROR, L"UMDRscRenderTargetCapable::RenderTargetDataLock LockRect failed! hResult: 0x%x\n", hr);
        return UMDFail(hr, L"INFO: D3DERR_INVALIDCALL == 0x%x  D3DERR_WASSTILLDRAWING == 0x%x \n", D3DERR_INVALIDCALL,
            D3DERR_WASSTILLDRAWING);
    }
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscRenderTargetCapable::RenderTargetDataLock LockedRect.pBits 0x%x\n",
        UMDLow32(pLockedRect->pBits));
    return S_OK;
}

HRESULT UMDRscRenderTargetCapable::InternalFitSysMemSurface(const D3DSURFACE_DESC& desc)
{
    if (m_pSysMemSurface)
    {
        D3DSURFACE_DESC own = {};
        if (HRESULT hr = m_pSysMemSurface->GetDesc(&own); FAILED(hr))
            return UMDFail(hr, L"UMDRscRenderTargetCapable::RenderTargetDataLock GetDesc failed! hResult: 0x%x\n", hr);
        if (own.Width != desc.Width || own.Height != desc.Height || own.Format != desc.Format)
            m_pSysMemSurface.Reset();
    }
    if (m_pSysMemSurface)
        return S_OK;
    const HRESULT hr = m_pDeviceDelegated->CreateOffscreenPlainSurface(
        desc.Width, desc.Height, desc.Format, D3DPOOL_SYSTEMMEM, m_pSysMemSurface.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr,
            L"UMDRscRenderTargetCapable::RenderTargetDataLock CreateOffscreenPlainSurface failed! hResult: 0x%x\n", hr);
    return S_OK;
}

void UMDRscRenderTargetCapable::RenderTargetDataUnlock(IDirect3DSurface9** ppSurface)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDRscRenderTargetCapable::RenderTargetDataUnlock\n");
    if (!*ppSurface)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDRscRenderTargetCapable::RenderTargetDataUnlock *ppRenderTarget is NULL\n");
        return;
    }
    if (HRESULT hr = (*ppSurface)->UnlockRect(); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDRscRenderTargetCapable::RenderTargetDataUnlock UnlockRect failed! hResult: 0x%x\n", hr);
}
