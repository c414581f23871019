// Entries for video process devices.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

namespace
{
constexpr UINT kTraceLevel = UMDTRACE_DDI | UMDTRACE_VIDEO;
}  // namespace

HRESULT APIENTRY UMDDdiCreateVideoProcessDevice(HANDLE hDevice, D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pCreate)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiCreateVideoProcessDevice\n");
        return ToDevice(hDevice).DeviceVideoProcessCreate(pCreate);
    });
}

HRESULT APIENTRY UMDDdiDestroyVideoProcessDevice(HANDLE hDevice, HANDLE hVideoProcess)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiDestroyVideoProcessDevice\n");
        return ToDevice(hDevice).DeviceVideoProcessDestroy(hVideoProcess);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessBeginFrame(HANDLE hDevice, HANDLE hVideoProcess)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiVideoProcessBeginFrame\n");
        return ToDevice(hDevice).VideoProcessBeginFrame(hVideoProcess);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessEndFrame(HANDLE hDevice, D3DDDIARG_VIDEOPROCESSENDFRAME* pEndFrame)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiVideoProcessEndFrame\n");
        return ToDevice(hDevice).VideoProcessEndFrame(pEndFrame);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessSetRenderTarget(HANDLE hDevice, const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pSetRT)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiVideoProcessSetRenderTarget RT:0x%x\n", UMDLow32(pSetRT->hRenderTarget));
        return ToDevice(hDevice).VideoProcessSetRenderTarget(pSetRT);
    });
}

HRESULT APIENTRY UMDDdiVideoProcessBlt(HANDLE hDevice, const D3DDDIARG_VIDEOPROCESSBLT* pBlt)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiVideoProcessBlt\n");
        return ToDevice(hDevice).VideoProcessBlt(pBlt);
    });
}
