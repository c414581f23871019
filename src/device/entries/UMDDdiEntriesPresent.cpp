// Entries that end a frame, and the one that sets the display mode.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT APIENTRY UMDDdiSetDisplayMode(HANDLE hDevice, const D3DDDIARG_SETDISPLAYMODE* pSetDisplayMode)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_RESOURCE, L"=> UMDDdiSetDisplayMode hResource:0x%x SubResourceIndex:%d\n",
            UMDLow32(pSetDisplayMode->hResource), pSetDisplayMode->SubResourceIndex);
        return ToDevice(hDevice).SetDisplayMode(pSetDisplayMode);
    });
}

HRESULT APIENTRY UMDDdiPresent(HANDLE hDevice, const D3DDDIARG_PRESENT* pPresent)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiPresent hSrcResource:0x%x SrcSubResourceIndex:%d hDstResource:0x%x DstSubResourceIndex:%d Flags:0x%x FlipInterval:%d\n",
            UMDLow32(pPresent->hSrcResource), pPresent->SrcSubResourceIndex, UMDLow32(pPresent->hDstResource),
            pPresent->DstSubResourceIndex, pPresent->Flags.Value, pPresent->FlipInterval);
        return ToDevice(hDevice).Present(pPresent);
    });
}

HRESULT APIENTRY UMDDdiFlush(HANDLE hDevice)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiFlush\n");
        return ToDevice(hDevice).Flush();
    });
}
