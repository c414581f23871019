#include "device/UMDDdiDevice.h"
#include "resources/UMDRscRenderTargetCapable.h"
#include "resources/UMDRscTexture.h"
#include "resources/UMDRscZBuffer.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

namespace
{
/// Render states that are the runtime's own and mean nothing to the delegated device.
constexpr UINT kFirstIgnoredRenderState = 64;
constexpr UINT kLastIgnoredRenderState = 95;

/// Sampler stages of the delegated device.
constexpr UINT kLastTextureStage = 15;
}  // namespace

HRESULT UMDDdiDevice::SetRenderState(const D3DDDIARG_RENDERSTATE* pRenderState)
{
    IDirect3DDevice9Ex* pDevice = GetDevice();
    if (!pDevice)
        return UMDFail(E_FAIL, L">>> UMDDdiDevice::SetRenderState m_DeviceDelegated.GetDevice() is NULL\n");
    const UINT state = pRenderState->State;
    if (state >= kFirstIgnoredRenderState && state <= kLastIgnoredRenderState)
        return S_OK;
    HRESULT hr;
    if (state == D3DDDIRS_SCENECAPTURE)
        hr = pRenderState->Value == 1 ? pDevice->BeginScene() : pDevice->EndScene();
    else
        hr = pDevice->SetRenderState(static_cast<D3DRENDERSTATETYPE>(state), pRenderState->Value);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetRenderState failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDDdiDevice::SetTextureStageState(const D3DDDIARG_TEXTURESTAGESTATE* pTextureStageState)
{
    if (pTextureStageState->Stage > kLastTextureStage)
        return S_OK;
    const HRESULT hr = GetDevice()->SetTextureStageState(pTextureStageState->Stage,
        static_cast<D3DTEXTURESTAGESTATETYPE>(pTextureStageState->State), pTextureStageState->Value);
    if (FAILED(hr))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetTextureStageState failed! 0x%x\n", hr);
        UMDUtilDebugTracePrintTextureStageState(UMDTRACE_ERROR, pTextureStageState);
        return hr;
    }
    return S_OK;
}

HRESULT UMDDdiDevice::SetTexture(UINT stage, HANDLE hTexture)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetTexture\n");
    IDirect3DBaseTexture9* pTexture = nullptr;
    if (hTexture)
    {
        UMDRscBase* pResource = ToResource(hTexture);
        if (pResource->GetType() == UMDRESOURCETYPE_SHARED)
        {
            UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetTexture SHARED RESOURCE\n");
            return S_OK;
        }
        // Cube textures have no delegated 2D texture, so they cannot be bound. The type tells the class; to ask for the
        // class itself would take three times as long as all the rest.
        if (pResource->GetType() == UMDRESOURCETYPE_TEXTURE)
            pTexture = static_cast<UMDRscTexture*>(pResource)->GetTexture();
        if (!pTexture)
            return UMDFail(E_FAIL, L"UMDDdiDevice::SetTexture pTexture is NULL\n");
    }
    if (HRESULT hr = GetDevice()->SetTexture(stage, pTexture); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetTexture SetTexture failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetTexture\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetRenderTarget(const D3DDDIARG_SETRENDERTARGET* pSetRT)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetRenderTarget\n");
    if (!pSetRT)
        return UMDFail(E_FAIL, L"UMDDdiDevice::SetRenderTarget pSetRT is NULL\n");
    auto* pResource = dynamic_cast<UMDRscRenderTargetCapable*>(ToResource(pSetRT->hRenderTarget));
    if (!pResource)
        return UMDFail(E_FAIL, L"UMDDdiDevice::SetRenderTarget pResourceRenderTargetCapable is NULL\n");
    IDirect3DSurface9* pSurface = pResource->GetSurface(0, 0);
    if (!pSurface)
        return UMDFail(E_FAIL, L"UMDDdiDevice::SetRenderTarget pSurface is NULL\n");
    if (HRESULT hr = GetDevice()->SetRenderTarget(pSetRT->RenderTargetIndex, pSurface); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetRenderTarget SetRenderTarget failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetRenderTarget\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetDepthStencil(const D3DDDIARG_SETDEPTHSTENCIL* pSetDepthStencil)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetDepthStencil\n");
    auto* pZBuffer = static_cast<UMDRscZBuffer*>(ToResource(pSetDepthStencil->hZBuffer));
    if (HRESULT hr = GetDevice()->SetDepthStencilSurface(pZBuffer ? pZBuffer->GetSurface() : nullptr); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetDepthStencil failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetDepthStencil\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetViewport(const D3DDDIARG_VIEWPORTINFO* pViewport)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetViewport\n");
    if (pViewport->Width == 0 || pViewport->Height == 0)
        return S_OK;
    const D3DVIEWPORT9 viewport = {pViewport->X, pViewport->Y, pViewport->Width, pViewport->Height, 0.0f, 1.0f};
    if (HRESULT hr = GetDevice()->SetViewport(&viewport); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetViewport SetViewport failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetViewport\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetScissorRect(const RECT* pRect)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetScissorRect\n");
    if (HRESULT hr = GetDevice()->SetScissorRect(pRect); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetScissorRect SetScissorRect failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetScissorRect\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetTransform(const D3DDDIARG_SETTRANSFORM* pTransform)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetTransform\n");
    if (HRESULT hr = GetDevice()->SetTransform(pTransform->TransformType, &pTransform->Matrix); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetTransform SetTransform failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetTransform\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetClipPlane(const D3DDDIARG_SETCLIPPLANE* pClipPlane)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetClipPlane\n");
    if (HRESULT hr = GetDevice()->SetClipPlane(pClipPlane->Index, pClipPlane->Plane); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetClipPlane ->SetClipPlane failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetClipPlane\n");
    return S_OK;
}

HRESULT UMDDdiDevice::ValidateDevice(D3DDDIARG_VALIDATETEXTURESTAGESTATE* pValidate)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::ValidateDevice\n");
    DWORD passes = 0;
    if (HRESULT hr = GetDevice()->ValidateDevice(&passes); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::ValidateDevice ValidateDevice failed! 0x%x\n", hr);
    pValidate->NumPasses = passes;
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::ValidateDevice %d\n", pValidate->NumPasses);
    return S_OK;
}
