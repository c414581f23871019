#include "device/UMDDdiDevice.h"
#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"
#include "video/UMDDdiDeviceVideo.h"

namespace
{
/// Calls an operation of the object behind the handle.
template <typename Argument>
HRESULT CallVideo(HANDLE hVideoProcess, HRESULT (UMDDdiDeviceVideo::*pOperation)(Argument), Argument argument)
{
    UMDDdiDeviceVideo* pDeviceVideo = ToDeviceVideo(hVideoProcess);
    return pDeviceVideo ? (pDeviceVideo->*pOperation)(argument) : E_FAIL;
}
}  // namespace

HRESULT UMDDdiDevice::DeviceVideoProcessCreate(D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pCreate)
{
    auto pDeviceVideo = UMDMakeUnique<UMDDdiDeviceVideo>(this);
    if (!pDeviceVideo)
        return UMDFail(E_OUTOFMEMORY, L"UMDDdiCreateVideoProcessDevice E_OUTOFMEMORY\n");
    if (HRESULT hr = pDeviceVideo->Create(pCreate); FAILED(hr))
        return UMDFail(hr, L"UMDDdiCreateVideoProcessDevice pDeviceVideo->Create failed! 0x%x\n", hr);
    pCreate->hVideoProcess = pDeviceVideo.release();
    return S_OK;
}

HRESULT UMDDdiDevice::DeviceVideoProcessDestroy(HANDLE hVideoProcess)
{
    const std::unique_ptr<UMDDdiDeviceVideo> pDeviceVideo(ToDeviceVideo(hVideoProcess));
    return pDeviceVideo ? pDeviceVideo->Destroy() : E_FAIL;
}

HRESULT UMDDdiDevice::VideoProcessBeginFrame(HANDLE hVideoProcess)
{
    return CallVideo(hVideoProcess, &UMDDdiDeviceVideo::BeginFrame, hVideoProcess);
}

HRESULT UMDDdiDevice::VideoProcessEndFrame(const D3DDDIARG_VIDEOPROCESSENDFRAME* pEndFrame)
{
    return CallVideo(pEndFrame->hVideoProcess, &UMDDdiDeviceVideo::EndFrame, pEndFrame);
}

HRESULT UMDDdiDevice::VideoProcessSetRenderTarget(const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pSetRT)
{
    return CallVideo(pSetRT->hVideoProcess, &UMDDdiDeviceVideo::SetRenderTarget, pSetRT);
}

HRESULT UMDDdiDevice::VideoProcessBlt(const D3DDDIARG_VIDEOPROCESSBLT* pBlt)
{
    return CallVideo(pBlt->hVideoProcess, &UMDDdiDeviceVideo::Blt, pBlt);
}
