#include "device/UMDDdiDevice.h"
#include "resources/UMDRscRenderTargetCapable.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT UMDDdiDevice::Present(const D3DDDIARG_PRESENT* pPresent)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::Present FLIP:%d BLT:%d hSrcResource:0x%x\n", pPresent->Flags.Flip,
        pPresent->Flags.Blt, UMDLow32(pPresent->hSrcResource));
    auto* pResource = dynamic_cast<UMDRscRenderTargetCapable*>(ToResource(pPresent->hSrcResource));
    if (!pResource)
        return UMDFail(E_FAIL, L"UMDDdiDevice::Present pResource is NULL\n");

    if (pPresent->Flags.Flip)
    {
        if (HRESULT hr = InternalProcessPresentFLIP(pResource); FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x%x\n", hr);
        if (HRESULT hr = pResource->KernelModePresentCbFLIP(m_hContext); FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::Present KernelModePresentCbFLIP failed! hResult: 0x%x\n", hr);
    }
    else if (pPresent->Flags.Blt)
    {
        // Only reported: a blit present shows nothing on the virtual monitor.
        if (HRESULT hr = pResource->KernelModePresentCbBLT(m_hContext); FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::Present InternalProcessPresentBLT failed! hResult: 0x%x\n", hr);
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::Present\n");
    return S_OK;
}

HRESULT UMDDdiDevice::InternalProcessPresentFLIP(UMDRscRenderTargetCapable* pResource)
{
    const UINT source = pResource->VidPnSourceId();
    if (source >= UMD_VIDPN_SOURCE_COUNT)
    {
        // Sources come from the runtime's create arguments; one that does not exist has no thread to take the frame.
        return UMDFail(E_FAIL, L"UMDDdiDevice::InternalProcessPresentFLIP failed! VidPnSourceId:%d\n", source);
    }
    m_SourceRotation[source] = pResource->Rotation();

    IDirect3DSurface9* pSurface = pResource->GetSurface(0, 0);
    D3DSURFACE_DESC desc = {};
    if (!pSurface || FAILED(pSurface->GetDesc(&desc)))
        return UMDFail(E_FAIL, L"UMDDdiDevice::InternalProcessPresentFLIP GetDesc failed!\n");

    m_ThreadGpuD3D9.PresentNotification(pSurface);

    if (!m_hPrimaryResource[source])
    {
        // Has no effect on threads that were stopped once: the hand-over below then fails.
        if (FAILED(InterFrameBufferThreadsStart()))
            return E_FAIL;
        m_hPrimaryResource[source] = ToHandle(pResource);
    }
    if (!m_ThreadFrameBuffer[source].FrameBufferAvailable(
            pSurface, desc.Width, desc.Height, desc.Format, m_SourceRotation[source]))
        return UMDFail(E_FAIL, L"UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n");
    return S_OK;
}

HRESULT UMDDdiDevice::Flush()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::Flush\n");
    D3DDDICB_RENDER render = {};
    render.CommandLength = m_CommandBufferSize;
    render.NewCommandBufferSize = m_CommandBufferSize;
    render.NewAllocationListSize = m_AllocationListSize;
    render.NewPatchLocationListSize = m_PatchLocationListSize;
    render.hContext = m_hContext;
    if (HRESULT hr = m_d3dCallbacks.pfnRenderCb(m_hDevice, &render); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::Flush pfnRenderCb failed! 0x%x\n", hr);
    InternalTakeCommandBuffer(render.pNewCommandBuffer, render.NewCommandBufferSize, render.pNewAllocationList,
        render.NewAllocationListSize, render.pNewPatchLocationList, render.NewPatchLocationListSize);
    return S_OK;
}

void UMDDdiDevice::InternalTakeCommandBuffer(void* pCommandBuffer, UINT commandBufferSize,
    D3DDDI_ALLOCATIONLIST* pAllocationList, UINT allocationListSize, D3DDDI_PATCHLOCATIONLIST* pPatchLocationList,
    UINT patchLocationListSize)
{
    m_pCommandBuffer = pCommandBuffer;
    m_CommandBufferSize = commandBufferSize;
    m_pAllocationList = pAllocationList;
    m_AllocationListSize = allocationListSize;
    m_pPatchLocationList = pPatchLocationList;
    m_PatchLocationListSize = patchLocationListSize;
}

HRESULT UMDDdiDevice::SetDisplayMode(const D3DDDIARG_SETDISPLAYMODE* pSetDisplayMode)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetDisplayMode\n");
    if (!pSetDisplayMode->hResource)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetDisplayMode pResourceRenderTarget is NULL\n");
        return S_OK;
    }
    auto* pResource = static_cast<UMDRscRenderTargetCapable*>(ToResource(pSetDisplayMode->hResource));
    if (HRESULT hr = pResource->KernelModeSetDisplayModeCb(); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetDisplayMode failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetDisplayMode\n");
    return S_OK;
}
