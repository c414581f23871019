#include "resources/UMDRscSurface.h"

#include "resources/UMDPixelCopy.h"
#include "resources/UMDSurfaceCopy.h"
#include "util/UMDFormatBytes.h"
#include "util/UMDUtilDebugTrace.h"

UMDRscSurface::UMDRscSurface(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
    BOOL openResource, D3DPOOL pool, bool offscreenPlain)
    : UMDRscRenderTargetCapable(pDevice, hResourceOS, UMDRESOURCETYPE_RENDERTARGET, openResource),
      m_MultisampleType(D3DMULTISAMPLE_NONE), m_MultisampleQuality(0), m_LockedRect{},
      m_bIsVideoProcessRenderTarget(false), m_bOffscreenPlain(offscreenPlain), m_SurfCount(0)
{
    if (openResource)
        return;
    InternalTakeCreate(pCreate, pool);
    m_bIsVideoProcessRenderTarget = pCreate->Flags.VideoProcessRenderTarget;
    m_MultisampleType = static_cast<D3DMULTISAMPLE_TYPE>(pCreate->MultisampleType);
    m_MultisampleQuality = pCreate->MultisampleQuality;
    m_Rotation = pCreate->Rotation;
    m_VidPnSourceId = pCreate->VidPnSourceId;

    InternalAllocate(pCreate);
    m_SurfCount = UMDSurfaceCount(pCreate);
    m_pSurfList = UMDCopySurfaceList(pCreate);
}

UMDRscSurface::~UMDRscSurface() = default;

void UMDRscSurface::InternalAllocate(const D3DDDIARG_CREATERESOURCE* pCreate)
{
    UMDAllocationPrivateData record = {};
    record.Kind = m_bIsPrimary ? UMDALLOCATIONKIND_PRIMARY : UMDALLOCATIONKIND_OTHER;
    record.Width = m_Width;
    record.Height = m_Height;
    record.Format = pCreate->Format;
    record.MultisampleQuality = pCreate->MultisampleQuality;
    record.MipLevels = pCreate->MipLevels;
    record.VidPnSourceId = pCreate->VidPnSourceId;
    record.RefreshNumerator = pCreate->RefreshRate.Numerator;
    record.RefreshDenominator = pCreate->RefreshRate.Denominator;
    record.ResourceFlags = pCreate->Flags.Value;
    record.Rotation = pCreate->Rotation;
    KernelModeAllocateCb(&record);
}

HRESULT UMDRscSurface::Create()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscSurface::Create failed! m_pDeviceDelegated = NULL\n");
    if (!m_SurfCount)
        return UMDFail(E_FAIL, L"UMDRscSurface::Create failed! m_SurfCount = %d\n", m_SurfCount);

    HRESULT hr;
    const D3DFORMAT format = static_cast<D3DFORMAT>(m_Format);
    if (m_bOffscreenPlain)
    {
        hr = m_pDeviceDelegated->CreateOffscreenPlainSurface(
            m_Width, m_Height, format, m_Pool, m_pSurface.Put(), nullptr);
        m_bIsRenderTarget = false;
    }
    else
    {
        hr = m_pDeviceDelegated->CreateRenderTarget(
            m_Width, m_Height, format, m_MultisampleType, m_MultisampleQuality, FALSE, m_pSurface.Put(), nullptr);
    }
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Create CreateRenderTarget failed! 0x%x\n", hr);

    UMDGetFormatBytes(m_Format, &m_BytesPerPixel);
    // Whatever the list says, every sub-resource is uploaded into the one surface.
    UMDFitSurfaceList(m_pSurfList.get(), m_SurfCount, m_Width, m_Height, 1);
    UMD_TRACE(UMDTRACE_DETAIL,
        L"UMDRscSurface::Create m_pSurface: 0x%x Resource:0x%x m_VidPnSourceId:%d m_hAllocation:0x%x m_Width:%d m_Height:%d\n",
        UMDLow32(m_pSurface.Get()), UMDLow32(this), m_VidPnSourceId, m_hAllocation, m_Width, m_Height);
    return S_OK;
}

void UMDRscSurface::Destroy()
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Destroy() this:0x%x m_pSurface:0x%x \n", UMDLow32(this),
        UMDLow32(m_pSurface.Get()));
    m_pSurfList.reset();
    InternalReleaseAllocation();
    m_pSurface.Reset();
    m_pSysMemSurface.Reset();
}

HRESULT UMDRscSurface::Lock(UINT, UINT, UINT, void** ppData, UINT* pPitch, DWORD)
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"   Lock: RenderTarget 0x%x\n", UMDLow32(m_pSurface.Get()));
    if (!m_pSurface)
        return UMDFail(E_FAIL, L"UMDRscSurface::Lock NULL == m_pSurface!\n");
    if (HRESULT hr = m_pSurface->LockRect(&m_LockedRect, nullptr, 0); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::LockRect failed 0x%x\n", hr);
    *ppData = m_LockedRect.pBits;
    *pPitch = static_cast<UINT>(m_LockedRect.Pitch);
    return S_OK;
}

HRESULT UMDRscSurface::Unlock()
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"   Unlock: RenderTarget 0x%x\n", UMDLow32(m_pSurface.Get()));
    if (!m_pSurface)
        return E_FAIL;
    if (HRESULT hr = m_pSurface->UnlockRect(); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::UnlockRect failed 0x%x\n", hr);
    return S_OK;
}

IDirect3DSurface9* UMDRscSurface::GetSurface(UINT, UINT)
{
    return m_pSurface.Get();
}

HRESULT UMDRscSurface::CopyFrom(const BYTE* pSrc, UINT width, UINT height, UINT, UINT srcPitch)
{
    static constexpr CopyFromTexts kTexts = {L"UMDRscSurface::CopyFrom m_hAllocation is NULL\n",
        L"UMDRscSurface::CopyFrom KernelModeLockCb failed! 0x%x\n",
        L"UMDRscSurface::CopyFrom KernelModeUnlockCb failed! 0x%x\n"};
    return InternalCopyFrom(kTexts, {pSrc, srcPitch, width, height});
}

HRESULT UMDRscSurface::CopyTo(BYTE* pDst, UINT width, UINT height, UINT, UINT dstPitch)
{
    IDirect3DSurface9* pSurface = nullptr;
    D3DLOCKED_RECT locked = {};
    D3DSURFACE_DESC desc = {};
    if (HRESULT hr = RenderTargetDataLock(&pSurface, &locked, &desc); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::CopyTo RenderTargetDataLock failed! hResult: 0x%x\n", hr);

    UMDCopyPixels(UMDPixelLayoutOf(static_cast<D3DDDIFORMAT>(desc.Format)), {pDst, dstPitch, width, height},
        {static_cast<const BYTE*>(locked.pBits), static_cast<UINT>(locked.Pitch), desc.Width, desc.Height}, nullptr);
    RenderTargetDataUnlock(&pSurface);
    return S_OK;
}

HRESULT UMDRscSurface::WriteToDelegated(UINT index, const RECT* pRect)
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::WriteToDelegated %d\n", index);
    if (!m_pSurfList || index >= m_SurfCount)
        return UMDFail(E_FAIL, L"UMDRscSurface::WriteToDelegated failed! m_SurfCount = %d\n", m_SurfCount);
    const D3DDDI_SURFACEINFO& memory = m_pSurfList[index];
    if (!memory.pSysMem)
        return S_OK;

    static constexpr UMDLockTexts kTexts = {L"UMDRscSurface::WriteToDelegated Lock failed! 0x%x\n",
        L"UMDRscSurface::WriteToDelegated Unlock failed! 0x%x\n"};
    return UMDCopyLocked(m_pSurface.Get(), kTexts, [&](const D3DLOCKED_RECT& locked) {
        UMDCopyToLocked(locked, memory, index == 0 ? pRect : nullptr, UMDPixelLayoutOf(m_Format));
    });
}
