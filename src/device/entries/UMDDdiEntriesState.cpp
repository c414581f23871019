// Entries that change the state of the pipeline.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "resources/UMDRscBase.h"
#include "util/UMDUtilDebugTrace.h"

// The two busiest entries trace nothing.
HRESULT APIENTRY UMDDdiSetRenderState(HANDLE hDevice, const D3DDDIARG_RENDERSTATE* pRenderState)
{
    return UMDGuard(__func__, [=] { return ToDevice(hDevice).SetRenderState(pRenderState); });
}

HRESULT APIENTRY UMDDdiSetTextureStageState(HANDLE hDevice, const D3DDDIARG_TEXTURESTAGESTATE* pTextureStageState)
{
    return UMDGuard(__func__, [=] { return ToDevice(hDevice).SetTextureStageState(pTextureStageState); });
}

HRESULT APIENTRY UMDDdiValidateDevice(HANDLE hDevice, D3DDDIARG_VALIDATETEXTURESTAGESTATE* pValidate)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiValidateDevice NumPasses:%d\n", pValidate->NumPasses);
        return ToDevice(hDevice).ValidateDevice(pValidate);
    });
}

HRESULT APIENTRY UMDDdiSetTexture(HANDLE hDevice, UINT stage, HANDLE hTexture)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetTexture Stage:%d hTexture:0x%x [Type:%d Pool:%d]\n", stage,
            UMDLow32(hTexture), ResourceTypeOrZero(hTexture), ResourcePoolOrZero(hTexture));
        return ToDevice(hDevice).SetTexture(stage, hTexture);
    });
}

HRESULT APIENTRY UMDDdiSetTransform(HANDLE hDevice, const D3DDDIARG_SETTRANSFORM* pTransform)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetTransform\n");
        return ToDevice(hDevice).SetTransform(pTransform);
    });
}

HRESULT APIENTRY UMDDdiSetViewport(HANDLE hDevice, const D3DDDIARG_VIEWPORTINFO* pViewport)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetViewport Width:%d Height:%d X:%d Y:%d\n", pViewport->Width,
            pViewport->Height, pViewport->X, pViewport->Y);
        return ToDevice(hDevice).SetViewport(pViewport);
    });
}

HRESULT APIENTRY UMDDdiSetClipPlane(HANDLE hDevice, const D3DDDIARG_SETCLIPPLANE* pSetClipPlane)
{
    return UMDGuard(__func__, [=] {
        // The plane shows as the address of its four coefficients.
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetClipPlane pSetClipPlane:0x%x Index:%d Plane:%d\n",
            UMDLow32(pSetClipPlane), pSetClipPlane->Index, UMDLow32(pSetClipPlane->Plane));
        return ToDevice(hDevice).SetClipPlane(pSetClipPlane);
    });
}

HRESULT APIENTRY UMDDdiSetScissorRect(HANDLE hDevice, const RECT* pRect)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetScissorRect pRect:0x%x left:%d right:%d top:%d bottom:%d\n",
            UMDLow32(pRect), pRect->left, pRect->right, pRect->top, pRect->bottom);
        return ToDevice(hDevice).SetScissorRect(pRect);
    });
}

HRESULT APIENTRY UMDDdiSetRenderTarget(HANDLE hDevice, const D3DDDIARG_SETRENDERTARGET* pSetRT)
{
    return UMDGuard(__func__, [=] {
        const D3DDDIARG_SETRENDERTARGET shown = pSetRT ? *pSetRT : D3DDDIARG_SETRENDERTARGET{};
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_RESOURCE,
            L"=> UMDDdiSetRenderTarget hRenderTarget:0x%x [Type:%d] RenderTargetIndex:%d SubResourceIndex:0x%x\n",
            UMDLow32(shown.hRenderTarget), ResourceTypeOrZero(shown.hRenderTarget), shown.RenderTargetIndex,
            shown.SubResourceIndex);
        return ToDevice(hDevice).SetRenderTarget(pSetRT);
    });
}

HRESULT APIENTRY UMDDdiSetDepthStencil(HANDLE hDevice, const D3DDDIARG_SETDEPTHSTENCIL* pSetDepthStencil)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetDepthStencil hZBuffer:0x%x\n", UMDLow32(pSetDepthStencil->hZBuffer));
        return ToDevice(hDevice).SetDepthStencil(pSetDepthStencil);
    });
}
