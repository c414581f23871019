#include "device/UMDDdiDevice.h"
#include "resources/UMDRscRenderTargetCapable.h"
#include "resources/UMDRscTexture.h"
#include "util/UMDUtilDebugTrace.h"

namespace
{
bool IsBltType(UMDRESOURCETYPE type)
{
    return type == UMDRESOURCETYPE_RENDERTARGET || type == UMDRESOURCETYPE_TEXTURE;
}
}  // namespace

HRESULT UMDDdiDevice::Blt(const D3DDDIARG_BLT* pBlt)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::Blt\n");
    UMDRscBase* pSrc = ToResource(pBlt->hSrcResource);
    UMDRscBase* pDst = ToResource(pBlt->hDstResource);
    if (pSrc == pDst)
    {
        UMD_TRACE(UMDTRACE_ENTER, L"<<< UMDDdiDevice::Blt\n");  // at the entry's level: nothing was done
        return S_OK;
    }
    const UMDRESOURCETYPE typeDst = pDst->GetType();
    const UMDRESOURCETYPE typeSrc = pSrc->GetType();
    if (!IsBltType(typeDst) || !IsBltType(typeSrc))
        return UMDFail(E_NOTIMPL, L"UMDDdiDevice::Blt failed! SHARED RESOURCE unexpected TypeDst:%d TypeSrc:%d\n",
            typeDst, typeSrc);
    auto* pSource = static_cast<UMDRscRenderTargetCapable*>(pSrc);
    if (HRESULT hr = pSource->Blt(&pBlt->SrcRect, pDst, &pBlt->DstRect); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::Blt Blt failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::Blt\n");
    return S_OK;
}

HRESULT UMDDdiDevice::TexBlt(const D3DDDIARG_TEXBLT* pTexBlt)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::TexBlt\n");
    const RECT& src = pTexBlt->SrcRect;
    const POINT& point = pTexBlt->DstPoint;
    const RECT dst = {point.x, point.y, point.x + (src.right - src.left), point.y + (src.bottom - src.top)};
    auto* pSource = dynamic_cast<UMDRscTexture*>(ToResource(pTexBlt->hSrcResource));
    const HRESULT hr = pSource ? pSource->TexBlt(&src, ToResource(pTexBlt->hDstResource), &dst) : E_FAIL;
    if (FAILED(hr))
        return UMDFail(E_FAIL, L"UMDDdiDevice::TexBlt TexBlt failed 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::TexBlt\n");
    return S_OK;
}

// Buffer blits are recognised and reported, never performed.
HRESULT UMDDdiDevice::BufBlt(const D3DDDIARG_BUFFERBLT* pBufBlt)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::BufBlt\n");
    const UMDRESOURCETYPE typeDst = ToResource(pBufBlt->hDstResource)->GetType();
    const UMDRESOURCETYPE typeSrc = ToResource(pBufBlt->hSrcResource)->GetType();
    if (typeDst == UMDRESOURCETYPE_VERTEXBUFFER && typeSrc == UMDRESOURCETYPE_VERTEXBUFFER)
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDDdiDevice::BufBlt UMDRESOURCETYPE_VERTEXBUFFER == TypeDst && UMDRESOURCETYPE_VERTEXBUFFER == TypeSrc\n");
    else if (typeDst == UMDRESOURCETYPE_INDEXBUFFER && typeSrc == UMDRESOURCETYPE_INDEXBUFFER)
        UMD_TRACE(UMDTRACE_ERROR,
            L"UMDDdiDevice::BufBlt UMDRESOURCETYPE_INDEXBUFFER == TypeDst && UMDRESOURCETYPE_INDEXBUFFER == TypeSrc\n");
    else
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::BufBlt unexpected condition\n");
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::BufBlt\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::ColorFill(const D3DDDIARG_COLORFILL* pColorFill)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::ColorFill\n");
    auto* pResource = dynamic_cast<UMDRscRenderTargetCapable*>(ToResource(pColorFill->hResource));
    if (!pResource)
        return UMDFail(E_FAIL, L"UMDDdiDevice::ColorFill pResourceRenderTargetCapable is NULL\n");
    IDirect3DSurface9* pSurface = pResource->GetSurface(0, 0);
    if (!pSurface)
        return UMDFail(E_FAIL, L"UMDDdiDevice::ColorFill pSurface is NULL\n");
    if (HRESULT hr = GetDevice()->ColorFill(pSurface, &pColorFill->DstRect, pColorFill->Color); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::ColorFill ColorFill failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::ColorFill\n");
    return S_OK;
}

HRESULT UMDDdiDevice::Clear(const D3DDDIARG_CLEAR* pClear, UINT rectCount, const RECT* pRects)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::Clear\n");
    const float depth = pClear->Flags & D3DCLEAR_ZBUFFER ? pClear->FillDepth : 0.0f;
    const DWORD stencil = pClear->Flags & D3DCLEAR_STENCIL ? pClear->FillStencil : 0;
    static_assert(sizeof(RECT) == sizeof(D3DRECT));  // four signed words: left, top, right, bottom
    const HRESULT hr = GetDevice()->Clear(
        rectCount, reinterpret_cast<const D3DRECT*>(pRects), pClear->Flags, pClear->FillColor, depth, stencil);
    if (FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::Clear failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::Clear\n");  // after a failure too
    return hr;
}
