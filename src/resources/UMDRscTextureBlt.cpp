#include "resources/UMDPixelCopy.h"
#include "resources/UMDRscTexture.h"
#include "util/UMDUtilDebugTrace.h"

#include <algorithm>

namespace
{
/// What a copy that counts in pixels of this size may touch of a locked surface's first plane.
RECT TouchableOf(const RECT& rect, const D3DSURFACE_DESC& desc, UINT pitch, UINT bytesPerPixel)
{
    const UMDPixelLayout& layout = UMDPixelLayoutOf(static_cast<D3DDDIFORMAT>(desc.Format));
    const UINT rowBytes = std::min(layout.RowBytes(0, desc.Width), pitch);
    return UMDInside(rect, UMDFittingPixels(desc.Width, rowBytes, bytesPerPixel), layout.Rows(0, desc.Height));
}
}  // namespace

HRESULT UMDRscTexture::Blt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstRect)
{
    const D3DPOOL srcPool = GetPool();
    const D3DPOOL dstPool = pDst->GetPool();
    auto* pDstTarget = dynamic_cast<UMDRscRenderTargetCapable*>(pDst);
    UMD_TRACE(UMDTRACE_DETAIL,
        L"UMDRscTexture::Blt DST Resource:0x%x Pool:%d IsRenderTarget:%d SRC Resource:0x%x Pool:%d IsRenderTarget:%d\n",
        UMDLow32(pDst), dstPool, pDstTarget && pDstTarget->IsRenderTarget(), UMDLow32(this), srcPool,
        m_bIsRenderTarget);
    IDirect3DSurface9* pDstSurface = pDstTarget ? pDstTarget->GetSurface(0, 0) : nullptr;
    IDirect3DSurface9* pSrcSurface = GetSurface(0, 0);
    if (!pDstSurface || !pSrcSurface)
        return UMDFail(E_FAIL, L"UMDRscTexture::Blt pSurface is NULL\n");

    if (srcPool == D3DPOOL_DEFAULT && dstPool == D3DPOOL_DEFAULT)
        return InternalBltVideoToVideo(pSrcSurface, pDstSurface);
    if (srcPool == D3DPOOL_DEFAULT && dstPool == D3DPOOL_SYSTEMMEM && m_bIsRenderTarget)
        return InternalBltVideoToSystem(pSrcRect, pSrcSurface, pDst, pDstSurface, pDstRect);
    if (srcPool == D3DPOOL_SYSTEMMEM && dstPool == D3DPOOL_DEFAULT)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::Blt SYSTEM TO VIDEO\n");
        if (HRESULT hr = TexBlt(pSrcRect, pDst, pDstRect); FAILED(hr))
            return UMDFail(hr, L"UMDRscTexture::Blt TexBlt failed! 0x%x\n", hr);
        return S_OK;
    }
    return InternalBltFallback(pSrcRect, pSrcSurface, pDstTarget, pDstSurface, pDstRect);
}

HRESULT UMDRscTexture::InternalBltVideoToVideo(IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface)
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::Blt VIDEO TO VIDEO\n");
    if (HRESULT hr = m_pDeviceDelegated->StretchRect(pSrcSurface, nullptr, pDstSurface, nullptr, D3DTEXF_NONE);
        FAILED(hr))
        return UMDFail(hr, L"UMDRscTexture::Blt StretchRect failed! 0x%x \n", hr);
    return S_OK;
}

HRESULT UMDRscTexture::InternalBltVideoToSystem(const RECT* pSrcRect, IDirect3DSurface9* pSrcSurface, UMDRscBase* pDst,
    IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    D3DSURFACE_DESC srcDesc = {};
    D3DSURFACE_DESC dstDesc = {};
    HRESULT hr =
        InternalDescribe(pSrcSurface, &srcDesc, pDstSurface, &dstDesc, L"UMDRscTexture::Blt GetDesc failed 0x%x\n");
    if (FAILED(hr))
        return hr;
    if (srcDesc.Width == dstDesc.Width && srcDesc.Height == dstDesc.Height)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::Blt VIDEO TO SYSTEM same dimension\n");
        hr = InternalReadBack(pSrcSurface, pDstSurface);
    }
    else
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscTexture::Blt VIDEO TO SYSTEM different dimension\n");
        hr = InternalStretchAndReadBack(pSrcRect, pSrcSurface, pDstSurface, pDstRect);
    }
    if (FAILED(hr))
        return hr;

    if (pDst->GetType() == UMDRESOURCETYPE_TEXTURE)
    {
        // Its own failures are traced; the blit itself has succeeded.
        if (auto* pTexture = dynamic_cast<UMDRscTexture*>(pDst))
            pTexture->WriteFromDelegated(0);
    }
    return S_OK;
}

HRESULT UMDRscTexture::InternalStretchAndReadBack(
    const RECT* pSrcRect, IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    const RECT area = {0, 0, pDstRect->right - pDstRect->left, pDstRect->bottom - pDstRect->top};
    UMDComPtr<IDirect3DSurface9> pTemporary;
    const HRESULT hr =
        m_pDeviceDelegated->CreateRenderTarget(static_cast<UINT>(area.right), static_cast<UINT>(area.bottom),
            static_cast<D3DFORMAT>(m_Format), D3DMULTISAMPLE_NONE, 0, FALSE, pTemporary.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscTexture::Blt CreateRenderTarget failed 0x%x\n", hr);
    if (HRESULT hrStretch =
            m_pDeviceDelegated->StretchRect(pSrcSurface, pSrcRect, pTemporary.Get(), &area, D3DTEXF_NONE);
        FAILED(hrStretch))
        return UMDFail(hrStretch, L"UMDRscTexture::Blt StretchRect failed 0x%x\n", hrStretch);
    return InternalReadBack(pTemporary.Get(), pDstSurface);
}

HRESULT UMDRscTexture::InternalReadBack(IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface)
{
    if (HRESULT hr = m_pDeviceDelegated->GetRenderTargetData(pSrcSurface, pDstSurface); FAILED(hr))
        return UMDFail(hr, L"UMDRscTexture::Blt GetRenderTargetData failed 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDRscTexture::InternalBltFallback(const RECT* pSrcRect, IDirect3DSurface9* pSrcSurface,
    UMDRscRenderTargetCapable* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect)
{
    D3DSURFACE_DESC srcDesc = {};
    D3DSURFACE_DESC dstDesc = {};
    pSrcSurface->GetDesc(&srcDesc);
    pDstSurface->GetDesc(&dstDesc);
    UMD_TRACE(UMDTRACE_ERROR,
        L"UMDRscTexture::Blt failed! SRC Resource:0x%x Pool:%d RenderTarget:%d DST Resource:0x%x Pool:%d RenderTarget:%d\n",
        UMDLow32(this), GetPool(), m_bIsRenderTarget, UMDLow32(pDst), pDst->GetPool(), pDst->IsRenderTarget());
    UMD_TRACE(UMDTRACE_ERROR, L"DST Width:%d Height:%d Width:%d Height:%d\n", dstDesc.Width, dstDesc.Height,
        pDstRect->right - pDstRect->left, pDstRect->bottom - pDstRect->top);
    UMD_TRACE(UMDTRACE_ERROR, L"SRC Width:%d Height:%d Width:%d Height:%d\n", srcDesc.Width, srcDesc.Height,
        pSrcRect->right - pSrcRect->left, pSrcRect->bottom - pSrcRect->top);

    D3DLOCKED_RECT dst = {};
    D3DLOCKED_RECT src = {};
    if (HRESULT hr = pDstSurface->LockRect(&dst, nullptr, 0); FAILED(hr))
        return UMDFail(hr, L"UMDRscTexture::Blt LockRect DST failed! 0x%x\n", hr);
    if (HRESULT hr = pSrcSurface->LockRect(&src, nullptr, 0); FAILED(hr))
    {
        pDstSurface->UnlockRect();
        return UMDFail(hr, L"UMDRscTexture::Blt LockRect SRC failed! 0x%x\n", hr);
    }

    const RECT area = TouchableOf(*pDstRect, dstDesc, static_cast<UINT>(dst.Pitch), m_BytesPerPixel);
    const INT_PTR bytesPerPixel = static_cast<INT_PTR>(m_BytesPerPixel);
    const INT_PTR dstOffset = static_cast<INT_PTR>(area.top) * dst.Pitch + area.left * bytesPerPixel;
    // The source's pitch stands where its address would be expected, and has to: the entry guard answers the fault that
    // a rectangle with pixels raises here. Both surfaces stay locked then.
    const INT_PTR top = static_cast<INT_PTR>(pSrcRect->top) + area.top - pDstRect->top;
    const INT_PTR left = static_cast<INT_PTR>(pSrcRect->left) + area.left - pDstRect->left;
    const INT_PTR srcAddress = src.Pitch + top * src.Pitch + left * bytesPerPixel;
    UMDCopyRows(static_cast<BYTE*>(dst.pBits) + dstOffset, static_cast<UINT>(dst.Pitch),
        reinterpret_cast<const BYTE*>(srcAddress), static_cast<UINT>(src.Pitch),
        static_cast<UINT>(area.right - area.left) * m_BytesPerPixel, static_cast<UINT>(area.bottom - area.top));

    if (HRESULT hr = pSrcSurface->UnlockRect(); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDRscTexture::Blt UnlockRect SRC failed! 0x%x\n", hr);
    if (HRESULT hr = pDstSurface->UnlockRect(); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDRscTexture::Blt UnlockRect DST failed! 0x%x\n", hr);
    return E_FAIL;
}

HRESULT UMDRscTexture::TexBlt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstPoint)
{
    auto* pDstTarget = dynamic_cast<UMDRscRenderTargetCapable*>(pDst);
    UMD_TRACE(UMDTRACE_DETAIL,
        L"UMDRscTexture::TexBlt DST Resource:0x%x Pool:%d IsRenderTarget:%d SRC Resource:0x%x Pool:%d IsRenderTarget:%d\n",
        UMDLow32(pDst), pDst->GetPool(), pDstTarget && pDstTarget->IsRenderTarget(), UMDLow32(this), GetPool(),
        m_bIsRenderTarget);
    if (GetPool() != D3DPOOL_SYSTEMMEM || pDst->GetPool() != D3DPOOL_DEFAULT)
        return UMDFail(E_FAIL, L"UMDRscTexture::TexBlt failed!\n");

    // Rectangle and point are level 0's; the smaller levels go whole.
    const POINT point = {pDstPoint->left, pDstPoint->top};
    for (UINT level = 0; level < m_SurfCount; ++level)
    {
        IDirect3DSurface9* pSrcSurface = GetSurface(0, level);
        IDirect3DSurface9* pDstSurface = pDstTarget ? pDstTarget->GetSurface(0, level) : nullptr;
        if (!pDstSurface)
            return UMDFail(E_FAIL, L"UMDRscTexture::TexBlt pSurfaceDst is NULL\n");
        const RECT* pRect = level == 0 ? pSrcRect : nullptr;
        if (HRESULT hr = WriteToDelegated(level, pRect); FAILED(hr))
            return hr;
        if (HRESULT hr =
                m_pDeviceDelegated->UpdateSurface(pSrcSurface, pRect, pDstSurface, level == 0 ? &point : nullptr);
            FAILED(hr))
            return UMDFail(hr, L"UMDRscTexture::TexBlt UpdateSurface failed 0x%x\n", hr);
    }
    return S_OK;
}
