#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT UMDRscSurface::Blt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstRect)
{
    const D3DPOOL srcPool = GetPool();
    const D3DPOOL dstPool = pDst->GetPool();
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt DST Resource:0x%x Pool:%d SRC Resource:0x%x Pool:%d\n",
        UMDLow32(pDst), dstPool, UMDLow32(this), srcPool);
    auto* pDstTarget = dynamic_cast<UMDRscRenderTargetCapable*>(pDst);
    IDirect3DSurface9* pDstSurface = pDstTarget ? pDstTarget->GetSurface(0, 0) : nullptr;
    if (!pDstSurface)
        return UMDFail(E_FAIL, L"UMDRscSurface::Blt pSurface is NULL\n");

    if (srcPool == D3DPOOL_DEFAULT && dstPool == D3DPOOL_DEFAULT)
    {
        if (m_bOffscreenPlain)
        {
            UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt VIDEO TO VIDEO plain NEW\n");
            return InternalStretchRect(pSrcRect, pDstSurface, pDstRect);
        }
        if (pDst->IsOffscreenPlain())
        {
            UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt VIDEO TO VIDEO plain\n");
            return InternalBltVideoToPlain(pDstSurface);
        }
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt VIDEO TO VIDEO\n");
        return InternalStretchRect(pSrcRect, pDstSurface, pDstRect);
    }
    if (srcPool == D3DPOOL_SYSTEMMEM && dstPool == D3DPOOL_DEFAULT)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt SYSTEM TO VIDEO\n");
        return InternalBltSystemToVideo(pSrcRect, pDst, pDstSurface, pDstRect);
    }
    if (dstPool == D3DPOOL_SYSTEMMEM)
        return InternalBltVideoToSystem(pSrcRect, pDst, pDstSurface, pDstRect);
    return InternalBltRefused(pSrcRect, pDstTarget, pDstSurface, pDstRect);
}

HRESULT UMDRscSurface::InternalStretchRect(const RECT* pSrcRect, IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    const HRESULT hr = m_pDeviceDelegated->StretchRect(m_pSurface.Get(), pSrcRect, pDstSurface, pDstRect, D3DTEXF_NONE);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt StretchRect failed! 0x%x\n", hr);
    return S_OK;
}

// The delegated device stretches no render target into a plain surface: the pixels go through system memory, whole.
HRESULT UMDRscSurface::InternalBltVideoToPlain(IDirect3DSurface9* pDstSurface)
{
    D3DSURFACE_DESC desc = {};
    if (HRESULT hr = m_pSurface->GetDesc(&desc); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt GetDesc failed! 0x%x\n", hr);
    UMDComPtr<IDirect3DSurface9> pTemporary;
    const HRESULT hr = m_pDeviceDelegated->CreateOffscreenPlainSurface(
        desc.Width, desc.Height, desc.Format, D3DPOOL_SYSTEMMEM, pTemporary.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt CreateOffscreenPlainSurface failed! 0x%x\n", hr);
    if (HRESULT hrRead = InternalReadBack(m_pSurface.Get(), pTemporary.Get()); FAILED(hrRead))
        return hrRead;
    if (HRESULT hrUpdate = m_pDeviceDelegated->UpdateSurface(pTemporary.Get(), nullptr, pDstSurface, nullptr);
        FAILED(hrUpdate))
        return UMDFail(hrUpdate, L"UMDRscSurface::Blt UpdateSurface failed! 0x%x\n", hrUpdate);
    return S_OK;
}

HRESULT UMDRscSurface::InternalBltSystemToVideo(
    const RECT* pSrcRect, UMDRscBase* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    if (GetFormat() != pDst->GetFormat())
    {
        // The delegated device converts no formats here: the blit is dropped, and the runtime told that it is done.
        UMD_TRACE(
            UMDTRACE_ERROR, L"UMDRscSurface::Blt SYSTEM TO VIDEO different %d %d\n", GetFormat(), pDst->GetFormat());
        return S_OK;
    }
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt SYSTEM TO VIDEO similar %d %d\n", GetFormat(), pDst->GetFormat());
    if (HRESULT hr = WriteToDelegated(0, pSrcRect); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt WriteToDelegated failed! 0x%x\n", hr);
    const POINT point = {pDstRect->left, pDstRect->top};
    if (HRESULT hr = m_pDeviceDelegated->UpdateSurface(m_pSurface.Get(), pSrcRect, pDstSurface, &point); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt UpdateSurface failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDRscSurface::InternalBltVideoToSystem(
    const RECT* pSrcRect, UMDRscBase* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    D3DSURFACE_DESC dstDesc = {};
    D3DSURFACE_DESC srcDesc = {};
    HRESULT hr = InternalDescribe(
        pDstSurface, &dstDesc, m_pSurface.Get(), &srcDesc, L"UMDRscSurface::Blt GetDesc failed! 0x%x\n");
    if (FAILED(hr))
        return hr;
    if (dstDesc.Width == srcDesc.Width && dstDesc.Height == srcDesc.Height)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n");
        hr = InternalReadBack(m_pSurface.Get(), pDstSurface);
    }
    else
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscSurface::Blt VIDEO TO SYSTEM different resolution\n");
        hr = InternalStretchAndReadBack(pSrcRect, pDstSurface, dstDesc, pDstRect);
    }
    if (FAILED(hr))
        return hr;

    // It is the pool, not the type, that is compared with the texture's type value. Pools are 0 or 2, so the runtime's
    // memory of a texture is not refreshed here.
    if (pDst->GetPool() == static_cast<D3DPOOL>(UMDRESOURCETYPE_TEXTURE))
    {
        if (auto* pTexture = dynamic_cast<UMDRscTexture*>(pDst))
            pTexture->WriteFromDelegated(0);
    }
    return S_OK;
}

HRESULT UMDRscSurface::InternalStretchAndReadBack(
    const RECT* pSrcRect, IDirect3DSurface9* pDstSurface, const D3DSURFACE_DESC& dstDesc, const RECT* pDstRect)
{
    UMDComPtr<IDirect3DSurface9> pTemporary;
    const HRESULT hr = m_pDeviceDelegated->CreateRenderTarget(
        dstDesc.Width, dstDesc.Height, dstDesc.Format, D3DMULTISAMPLE_NONE, 0, FALSE, pTemporary.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt CreateRenderTarget failed! 0x%x\n", hr);
    if (HRESULT hrStretch = InternalStretchRect(pSrcRect, pTemporary.Get(), pDstRect); FAILED(hrStretch))
        return hrStretch;
    return InternalReadBack(pTemporary.Get(), pDstSurface);
}

HRESULT UMDRscSurface::InternalReadBack(IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface)
{
    if (HRESULT hr = m_pDeviceDelegated->GetRenderTargetData(pSrcSurface, pDstSurface); FAILED(hr))
        return UMDFail(hr, L"UMDRscSurface::Blt GetRenderTargetData failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDRscSurface::InternalBltRefused(
    const RECT* pSrcRect, UMDRscRenderTargetCapable* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    D3DSURFACE_DESC dstDesc = {};
    D3DSURFACE_DESC srcDesc = {};
    pDstSurface->GetDesc(&dstDesc);
    m_pSurface->GetDesc(&srcDesc);
    UMD_TRACE(UMDTRACE_ERROR,
        L"UMDRscSurface::Blt failed! SRC Resource:0x%x DST Resource:0x%x Pool:%d RenderTarget:%d\n", UMDLow32(this),
        UMDLow32(pDst), pDst->GetPool(), pDst->IsRenderTarget());
    UMD_TRACE(UMDTRACE_ERROR, L"DST Width:%d Height:%d Width:%d Height:%d\n", dstDesc.Width, dstDesc.Height,
        pDstRect->right - pDstRect->left, pDstRect->bottom - pDstRect->top);
    UMD_TRACE(UMDTRACE_ERROR, L"SRC Width:%d Height:%d Width:%d Height:%d\n", srcDesc.Width, srcDesc.Height,
        pSrcRect->right - pSrcRect->left, pSrcRect->bottom - pSrcRect->top);
    return E_FAIL;
}
