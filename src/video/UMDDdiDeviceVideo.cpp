#include "video/UMDDdiDeviceVideo.h"

#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"
#include "video/UMDGpuDXVA.h"

UMDDdiDeviceVideo::UMDDdiDeviceVideo(UMDDdiDevice* pDevice) : m_pGpuDXVA(UMDMakeUnique<UMDGpuDXVA>(pDevice))
{
    if (!m_pGpuDXVA)
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDeviceVideo::UMDDdiDeviceVideo failed!\n");
}

UMDDdiDeviceVideo::~UMDDdiDeviceVideo() = default;

HRESULT UMDDdiDeviceVideo::Create(const D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDeviceVideo::Create\n");
    return m_pGpuDXVA ? m_pGpuDXVA->Create(pArgs) : E_OUTOFMEMORY;
}

HRESULT UMDDdiDeviceVideo::Destroy()
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDevice::DeviceVideoProcessDestroy\n");
    return m_pGpuDXVA ? m_pGpuDXVA->Destroy() : E_FAIL;
}

HRESULT UMDDdiDeviceVideo::SetRenderTarget(const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDeviceVideo::SetRenderTarget\n");
    return m_pGpuDXVA ? m_pGpuDXVA->SetRenderTarget(pArgs) : E_FAIL;
}

HRESULT UMDDdiDeviceVideo::BeginFrame(HANDLE hVideoProcess)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDeviceVideo::BeginFrame\n");
    return m_pGpuDXVA ? m_pGpuDXVA->BeginFrame(hVideoProcess) : E_FAIL;
}

HRESULT UMDDdiDeviceVideo::EndFrame(const D3DDDIARG_VIDEOPROCESSENDFRAME* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDeviceVideo::EndFrame\n");
    return m_pGpuDXVA ? m_pGpuDXVA->EndFrame(pArgs) : E_FAIL;
}

HRESULT UMDDdiDeviceVideo::Blt(const D3DDDIARG_VIDEOPROCESSBLT* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDeviceVideo::Blt\n");
    return m_pGpuDXVA ? m_pGpuDXVA->Blt(pArgs) : E_FAIL;
}
