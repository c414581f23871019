// The entry that ends a device.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

// Only the kernel-mode context goes: the adapter ends the threads and frees the object when it is closed.
HRESULT APIENTRY UMDDdiDestroyDevice(HANDLE hDevice)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDestroyDevice\n");
        if (hDevice)
            ToDevice(hDevice).DestroyContext();
        return S_OK;
    });
}
