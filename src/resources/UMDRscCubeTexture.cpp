#include "resources/UMDRscCubeTexture.h"

#include "util/UMDFormatBytes.h"
#include "util/UMDUtilDebugTrace.h"

#include <iterator>

UMDRscCubeTexture::UMDRscCubeTexture(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
    BOOL openResource, DWORD usage, D3DPOOL pool)
    : UMDRscTexture(pDevice, hResourceOS, pCreate, {openResource, usage, pool, UMDRESOURCETYPE_CUBETEXTURE}),
      m_CubePool(pool), m_LevelsPerFace(m_SurfCount / kFaces), m_CubeUsage(usage), m_CubeSharedHandle(nullptr)
{
}

UMDRscCubeTexture::~UMDRscCubeTexture() = default;

HRESULT UMDRscCubeTexture::Create()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscCubeTexture::Create failed! m_pDeviceDelegated = NULL\n");
    if (m_LevelsPerFace == 0 || m_SurfCount > std::size(m_pFaceSurface))
        return UMDFail(E_FAIL, L"UMDRscCubeTexture::Create failed! m_SurfCount = %d\n", m_SurfCount);

    const HRESULT hr = m_pDeviceDelegated->CreateCubeTexture(m_Width, m_LevelsPerFace, m_CubeUsage,
        static_cast<D3DFORMAT>(m_Format), m_CubePool, m_pCubeTexture.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscCubeTexture::Create CreateCubeTexture failed! 0x%x\n", hr);
    UMDGetFormatBytes(m_Format, &m_BytesPerPixel);
    UMDFitSurfaceList(m_pSurfList.get(), m_SurfCount, m_Width, m_Width, m_LevelsPerFace);
    if (HRESULT hrFaces = InternalGetFaces(); FAILED(hrFaces))
        return hrFaces;
    InternalAllocate({UMDRESOURCETYPE_CUBETEXTURE, m_CubePool, m_CubeUsage, m_LevelsPerFace, m_CubeSharedHandle});
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscCubeTexture::Create m_pTexture:0x%x this:0x%x\n", UMDLow32(m_pCubeTexture.Get()),
        UMDLow32(this));
    return S_OK;
}

HRESULT UMDRscCubeTexture::InternalGetFaces()
{
    for (UINT i = 0; i < m_SurfCount; ++i)
    {
        const UINT face = i / m_LevelsPerFace;
        const UINT level = i % m_LevelsPerFace;
        UMDComPtr<IDirect3DSurface9>& pSurface = m_pFaceSurface[i];
        if (HRESULT hr = m_pCubeTexture->GetCubeMapSurface(static_cast<D3DCUBEMAP_FACES>(face), level, pSurface.Put());
            FAILED(hr))
            return UMDFail(hr, L"UMDRscCubeTexture::Create GetCubeMapSurface failed! 0x%x\n", hr);
        D3DSURFACE_DESC desc = {};
        if (HRESULT hr = pSurface->GetDesc(&desc); FAILED(hr))
            return UMDFail(hr, L"UMDRscCubeTexture::Create GetDesc failed! 0x%x\n", hr);
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscCubeTexture::Create %02d Face:%02d Level:%02d 0x%x Width:%d Height:%d\n", i,
            face, level, UMDLow32(pSurface.Get()), desc.Width, desc.Height);
    }
    return S_OK;
}

void UMDRscCubeTexture::Destroy()
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscCubeTexture::Destroy() m_pTexture:0x%x\n", UMDLow32(m_pCubeTexture.Get()));
    m_pCurrentSurface = nullptr;
    for (auto& pSurface : m_pFaceSurface)
        pSurface.Reset();
    m_pCubeTexture.Reset();
    m_pSurfList.reset();
    InternalReleaseAllocation();
    m_pSysMemSurface.Reset();
}

HRESULT UMDRscCubeTexture::Lock(UINT areaValid, UINT, UINT, void** ppData, UINT* pPitch, DWORD)
{
    static constexpr LockTexts kTexts = {
        L"UMDRscCubeTexture::Lock NULL == m_pTexture!\n", L"UMDRscCubeTexture::Lock LockRect failed!\n"};
    UMD_TRACE(UMDTRACE_RESOURCE, L"   Lock: CubeTexture 0x%x\n", UMDLow32(m_pCubeTexture.Get()));
    return InternalLock(m_pCubeTexture.Get(), areaValid, ppData, pPitch, kTexts, [this](D3DLOCKED_RECT* pLocked) {
        return m_pCubeTexture->LockRect(D3DCUBEMAP_FACE_POSITIVE_X, 0, pLocked, nullptr, 0);
    });
}

HRESULT UMDRscCubeTexture::Unlock()
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"   Unlock: CubeTexture 0x%x\n", UMDLow32(m_pCubeTexture.Get()));
    return InternalUnlock(m_pCubeTexture.Get(), L"UMDRscCubeTexture::Lock UnlockRect failed!\n",
        [this] { return m_pCubeTexture->UnlockRect(D3DCUBEMAP_FACE_POSITIVE_X, 0); });
}

IDirect3DSurface9* UMDRscCubeTexture::GetSurface(UINT face, UINT level)
{
    const UINT64 index = UINT64{face} * m_LevelsPerFace + level;
    m_pCurrentSurface = index < std::size(m_pFaceSurface) ? m_pFaceSurface[index].Get() : nullptr;
    return m_pCurrentSurface;
}

HRESULT UMDRscCubeTexture::TexBlt(const RECT*, UMDRscBase* pDst, const RECT*)
{
    auto* pDstCube = dynamic_cast<UMDRscCubeTexture*>(pDst);
    UMD_TRACE(UMDTRACE_DETAIL,
        L"UMDRscCubeTexture::TexBlt DST Resource:0x%x Pool:%d IsRenderTarget:%d SRC Resource:0x%x Pool:%d IsRenderTarget:%d\n",
        UMDLow32(pDst), pDst->GetPool(), pDstCube && pDstCube->IsRenderTarget(), UMDLow32(this), GetPool(),
        m_bIsRenderTarget);
    if (!pDstCube || GetPool() != D3DPOOL_SYSTEMMEM || pDst->GetPool() != D3DPOOL_DEFAULT)
        return UMDFail(
            E_FAIL, L"UMDRscCubeTexture::TexBlt failed! SRC Pool:%d DST Pool:%d\n", GetPool(), pDst->GetPool());
    if (HRESULT hr = m_pDeviceDelegated->UpdateTexture(m_pCubeTexture.Get(), pDstCube->GetCubeTexture()); FAILED(hr))
        return UMDFail(hr, L"UMDRscCubeTexture::TexBlt UpdateTexture failed 0x%x\n", hr);
    return S_OK;
}
