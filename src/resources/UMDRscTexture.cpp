#include "resources/UMDRscTexture.h"

#include "util/UMDFormatBytes.h"

UMDRscTexture::UMDRscTexture(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
    const UMDRscTextureTraits& traits)
    : UMDRscRenderTargetCapable(pDevice, hResourceOS, traits.Type, traits.OpenResource),
      m_Levels(UMDSurfaceCount(pCreate)), m_Usage(traits.Usage), m_pSurfList(UMDCopySurfaceList(pCreate)),
      m_SurfCount(UMDSurfaceCount(pCreate)), m_bLocked(false), m_pCurrentSurface(nullptr), m_SharedHandle(nullptr)
{
    InternalTakeCreate(pCreate, traits.Pool);
}

UMDRscTexture::UMDRscTexture(
    UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_OPENRESOURCE* pOpen, const UMDRscTextureTraits& traits)
    : UMDRscRenderTargetCapable(pDevice, hResourceOS, traits.Type, traits.OpenResource), m_Levels(0),
      m_Usage(traits.Usage), m_SurfCount(0), m_bLocked(false), m_pCurrentSurface(nullptr), m_SharedHandle(nullptr)
{
    m_Pool = traits.Pool;
    if (pOpen->NumAllocations && pOpen->pOpenAllocationInfo)
        InternalTakeOpened(pOpen->pOpenAllocationInfo[0]);
}

UMDRscTexture::~UMDRscTexture() = default;

void UMDRscTexture::InternalTakeOpened(const D3DDDI_OPENALLOCATIONINFO& allocation)
{
    UMDAllocationPrivateData record = {};
    if (!UMDReadAllocationPrivateData(allocation.pPrivateDriverData, allocation.PrivateDriverDataSize, &record) ||
        record.TextureKind != UMDRESOURCETYPE_TEXTURE)
        return;
    D3DDDI_RESOURCEFLAGS flags = {};
    flags.Value = record.ResourceFlags;
    m_bIsRenderTarget = flags.RenderTarget;
    m_bIsOpenedShared = true;
    m_Width = record.Width;
    m_Height = record.Height;
    m_Format = static_cast<D3DDDIFORMAT>(record.Format);
    m_Pool = static_cast<D3DPOOL>(record.Pool);
    m_Usage = record.Usage;
    m_Levels = record.Levels;
    m_hAllocation = allocation.hAllocation;
    // Shared handles are 32 bits wide in the record and widen with their sign, as all handles that processes share.
    m_SharedHandle = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(static_cast<INT>(record.SharedHandle)));

    // The other process's record gives the count: one that Open refuses is not worth its memory.
    m_SurfCount = m_Levels;
    if (m_SurfCount == 0 || m_SurfCount > kMaxLevels)
        return;
    m_pSurfList = UMDNewSurfaceList(m_SurfCount);
    if (m_pSurfList)
    {
        m_pSurfList[0].Width = m_Width;
        m_pSurfList[0].Height = m_Height;
    }
}

HRESULT UMDRscTexture::Create()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscTexture::Create failed! m_pDeviceDelegated = NULL\n");
    if (m_SurfCount == 0 || m_SurfCount > kMaxLevels)
        return UMDFail(E_FAIL, L"UMDRscTexture::Create failed! m_SurfCount = %d\n", m_SurfCount);

    if (m_bIsRenderTarget)
    {
        m_Pool = D3DPOOL_DEFAULT;
        m_Usage = D3DUSAGE_RENDERTARGET;
    }
    HANDLE sharedHandle = nullptr;
    HANDLE* pSharedHandle = m_bIsSharedResource ? &sharedHandle : nullptr;
    const HRESULT hr = m_pDeviceDelegated->CreateTexture(m_Width, m_Height, m_Levels, m_Usage,
        static_cast<D3DFORMAT>(m_Format), m_Pool, m_pTexture.Put(), pSharedHandle);
    m_SharedHandle = sharedHandle;
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscTexture::Create CreateTexture failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_RESOURCE,
        L"UMDRscTexture::Create Resource:0x%x m_pTexture 0x%x m_bIsRenderTarget %d m_bIsSharedResource %d pSharedHandle=0x%x *pSharedHandle=0x%x\n",
        UMDLow32(this), UMDLow32(m_pTexture.Get()), m_bIsRenderTarget, m_bIsSharedResource, UMDLow32(pSharedHandle),
        UMDLow32(sharedHandle));

    UMDGetFormatBytes(m_Format, &m_BytesPerPixel);
    UMDFitSurfaceList(m_pSurfList.get(), m_SurfCount, m_Width, m_Height, m_Levels);
    if (HRESULT hrLevels = InternalGetLevels(); FAILED(hrLevels))
        return hrLevels;
    if (m_bIsRenderTarget && m_bIsSharedResource)
        InternalAllocate({UMDRESOURCETYPE_TEXTURE, m_Pool, m_Usage, m_Levels, m_SharedHandle});
    return S_OK;
}

HRESULT UMDRscTexture::Open()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscTexture::Open failed! m_pDeviceDelegated = NULL\n");
    if (m_SurfCount == 0 || m_SurfCount > kMaxLevels)
        return UMDFail(E_FAIL, L"UMDRscTexture::Open failed! m_SurfCount = %d\n", m_SurfCount);

    const HRESULT hr = m_pDeviceDelegated->CreateTexture(m_Width, m_Height, m_Levels, m_Usage,
        static_cast<D3DFORMAT>(m_Format), m_Pool, m_pTexture.Put(), &m_SharedHandle);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscTexture::Open CreateTexture failed! 0x%x\n", hr);
    UMDGetFormatBytes(m_Format, &m_BytesPerPixel);
    if (HRESULT hrLevels = InternalGetLevels(); FAILED(hrLevels))
        return hrLevels;
    UMD_TRACE(UMDTRACE_RESOURCE,
        L"UMDRscTexture::Open Resource:0x%x m_pTexture 0x%x Width:%d Height:%d Format:%d SharedHandle:0x%x hAllocation:0x%x\n",
        UMDLow32(this), UMDLow32(m_pTexture.Get()), m_Width, m_Height, m_Format, UMDLow32(m_SharedHandle),
        m_hAllocation);
    return S_OK;
}

HRESULT UMDRscTexture::InternalGetLevels()
{
    for (UINT level = 0; level < m_SurfCount; ++level)
    {
        if (HRESULT hr = m_pTexture->GetSurfaceLevel(level, m_pLevelSurface[level].Put()); FAILED(hr))
            return UMDFail(hr, L"UMDRscTexture::Open GetSurfaceLevel failed! 0x%x\n", hr);
    }
    return S_OK;
}

void UMDRscTexture::InternalAllocate(const Shared& shared)
{
    D3DDDI_RESOURCEFLAGS flags = {};
    flags.Texture = shared.Type == UMDRESOURCETYPE_TEXTURE;  // a cube's record has no flag that says texture
    flags.RenderTarget = m_bIsRenderTarget;
    flags.SharedResource = m_bIsSharedResource;

    UMDAllocationPrivateData record = {};
    record.Kind = UMDALLOCATIONKIND_OTHER;
    record.Width = m_Width;
    record.Height = m_Height;
    record.Format = m_Format;
    record.Pool = shared.Pool;
    record.Usage = shared.Usage;
    record.Levels = shared.Levels;
    record.ResourceFlags = flags.Value;
    record.TextureKind = shared.Type;
    record.DriverHandle = UMDLow32(this);
    record.SharedHandle = UMDLow32(shared.SharedHandle);
    KernelModeAllocateCb(&record);
}

void UMDRscTexture::Destroy()
{
    if (m_pTexture)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::Destroy m_pTexture:0x%x\n", UMDLow32(m_pTexture.Get()));
        m_pCurrentSurface = nullptr;
        for (auto& pSurface : m_pLevelSurface)
            pSurface.Reset();
        m_pTexture.Reset();
    }
    m_pSurfList.reset();
    InternalReleaseAllocation();
    m_pSysMemSurface.Reset();
}

HRESULT UMDRscTexture::Lock(UINT areaValid, UINT, UINT, void** ppData, UINT* pPitch, DWORD)
{
    static constexpr LockTexts kTexts = {
        L"UMDRscTexture::Lock NULL == m_pTexture!\n", L"UMDRscTexture::Lock LockRect failed!\n"};
    UMD_TRACE(UMDTRACE_RESOURCE, L"   Lock: Texture 0x%x AreaValid:%d\n", UMDLow32(m_pTexture.Get()), areaValid);
    return InternalLock(m_pTexture.Get(), areaValid, ppData, pPitch, kTexts,
        [this](D3DLOCKED_RECT* pLocked) { return m_pTexture->LockRect(0, pLocked, nullptr, 0); });
}

HRESULT UMDRscTexture::Unlock()
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"   Unlock: Texture 0x%x\n", UMDLow32(m_pTexture.Get()));
    return InternalUnlock(
        m_pTexture.Get(), L"UMDRscTexture::Lock UnlockRect failed!\n", [this] { return m_pTexture->UnlockRect(0); });
}

IDirect3DSurface9* UMDRscTexture::GetSurface(UINT, UINT level)
{
    m_pCurrentSurface = level < kMaxLevels ? m_pLevelSurface[level].Get() : nullptr;
    return m_pCurrentSurface;
}

HRESULT UMDRscTexture::CopyFrom(const BYTE* pSrc, UINT width, UINT height, UINT, UINT srcPitch)
{
    static constexpr CopyFromTexts kTexts = {L"UMDRscTexture::CopyFrom m_hAllocation is NULL\n",
        L"UMDRscTexture::CopyFrom KernelModeLockCb failed! 0x%x\n",
        L"UMDRscTexture::CopyFrom KernelModeUnlockCb failed! 0x%x\n"};
    return InternalCopyFrom(kTexts, {pSrc, srcPitch, width, height});
}

HRESULT UMDRscTexture::CopyTo(BYTE*, UINT, UINT, UINT, UINT)
{
    return E_NOTIMPL;
}

template <typename Copy>
HRESULT UMDRscTexture::InternalCopyLevel(UINT level, const LevelTexts& texts, Copy copy)
{
    if (!m_pSurfList || level >= m_SurfCount)
        return UMDFail(E_FAIL, texts.pNoLevel);
    const D3DDDI_SURFACEINFO& memory = m_pSurfList[level];
    if (!memory.pSysMem)
        return S_OK;
    return UMDCopyLocked(GetSurface(0, level), texts.Lock, [&](const D3DLOCKED_RECT& locked) { copy(locked, memory); });
}

HRESULT UMDRscTexture::WriteToDelegated(UINT level, const RECT* pRect)
{
    static constexpr LevelTexts kTexts = {L"UMDRscTexture::WriteToDelegated failed! m_SurfCount >= StreamOffset\n",
        {L"UMDRscTexture::WriteToDelegated LockRect failed! 0x%x\n",
            L"UMDRscTexture::WriteToDelegated UnlockRect failed! 0x%x\n"}};
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::WriteToDelegated %d\n", level);
    return InternalCopyLevel(level, kTexts, [&](const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory) {
        UMDCopyToLocked(locked, memory, level == 0 ? pRect : nullptr, UMDPixelLayoutOf(m_Format));
    });
}

HRESULT UMDRscTexture::WriteFromDelegated(UINT level)
{
    static constexpr LevelTexts kTexts = {L"UMDRscTexture::WriteFromDelegated failed! m_SurfCount >= StreamOffset\n",
        {L"UMDRscTexture::WriteFromDelegated LockRect failed! 0x%x\n",
            L"UMDRscTexture::WriteFromDelegated UnlockRect failed! 0x%x\n"}};
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::WriteFromDelegated %d\n", level);
    return InternalCopyLevel(level, kTexts, [&](const D3DLOCKED_RECT& locked, const D3DDDI_SURFACEINFO& memory) {
        UMDCopyFromLocked(memory, locked, UMDPixelLayoutOf(m_Format));
    });
}
