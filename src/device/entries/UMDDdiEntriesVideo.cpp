// The video-process entries: slots 76 to 81. Each is a name, what it prints, and one call.

#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"
#include "video/UMDDdiDeviceVideo.h"

#include <memory>
#include <new>

namespace
{
/// Calls an operation of the object behind the handle.
template <typename Argument>
HRESULT CallVideo(HANDLE hVideoProcess, HRESULT (UMDDdiDeviceVideo::*pOperation)(Argument), Argument argument)
{
    UMDDdiDeviceVideo* pDeviceVideo = ToDeviceVideo(hVideoProcess);
    return pDeviceVideo ? (pDeviceVideo->*pOperation)(argument) : E_FAIL;
}

HRESULT CreateVideo(UMDDdiDevice& device, D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pCreate)
{
    std::unique_ptr<UMDDdiDeviceVideo> pDeviceVideo(new (std::nothrow) UMDDdiDeviceVideo(&device));
    if (!pDeviceVideo)
        return UMDFail(E_OUTOFMEMORY, L"UMDDdiCreateVideoProcessDevice E_OUTOFMEMORY\n");
    if (HRESULT hr = pDeviceVideo->Create(pCreate); FAILED(hr))
        return UMDFail(hr, L"UMDDdiCreateVideoProcessDevice pDeviceVideo->Create failed! 0x%x\n", hr);
    pCreate->hVideoProcess = pDeviceVideo.release();
    return S_OK;
}
}  // namespace

HRESULT UMDDdiDevice::DeviceVideoProcessDestroy(HANDLE hVideoProcess)
{
    std::unique_ptr<UMDDdiDeviceVideo> pDeviceVideo(ToDeviceVideo(hVideoProcess));
    return pDeviceVideo ? pDeviceVideo->Destroy() : E_FAIL;
}

HRESULT APIENTRY UMDDdiCreateVideoProcessDevice(HANDLE hDevice, D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pCreate)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_VIDEO, L"=> UMDDdiCreateVideoProcessDevice\n");
        return CreateVideo(ToDevice(hDevice), pCreate);
    });
}

HRESULT APIENTRY UMDDdiDestroyVideoProcessDevice(HANDLE hDevice, HANDLE hVideoProcess)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_VIDEO, L"=> UMDDdiDestroyVideoProcessDevice\n");
        return ToDevice(hDevice).DeviceVideoProcessDestroy(hVideoProcess);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessBeginFrame(HANDLE, HANDLE hVideoProcess)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_VIDEO, L"=> UMDDdiVideoProcessBeginFrame\n");
        return CallVideo(hVideoProcess, &UMDDdiDeviceVideo::BeginFrame, hVideoProcess);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessEndFrame(HANDLE, D3DDDIARG_VIDEOPROCESSENDFRAME* pEndFrame)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_VIDEO, L"=> UMDDdiVideoProcessEndFrame\n");
        return CallVideo<const D3DDDIARG_VIDEOPROCESSENDFRAME*>(
            pEndFrame->hVideoProcess, &UMDDdiDeviceVideo::EndFrame, pEndFrame);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessSetRenderTarget(HANDLE, const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pSetRT)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_VIDEO, L"=> UMDDdiVideoProcessSetRenderTarget RT:0x%x\n",
            UMDLow32(pSetRT->hRenderTarget));
        return CallVideo(pSetRT->hVideoProcess, &UMDDdiDeviceVideo::SetRenderTarget, pSetRT);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessBlt(HANDLE, const D3DDDIARG_VIDEOPROCESSBLT* pBlt)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_VIDEO, L"=> UMDDdiVideoProcessBlt\n");
        return CallVideo(pBlt->hVideoProcess, &UMDDdiDeviceVideo::Blt, pBlt);
    });
}
