// Entries that create, open, lock and destroy resources.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "kernel/UMDUtilDebugTracePrintOpenResource.h"
#include "resources/UMDRscBase.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

namespace
{
constexpr UINT kTraceLevel = UMDTRACE_DDI | UMDTRACE_RESOURCE;
}  // namespace

HRESULT APIENTRY UMDDdiLock(HANDLE hDevice, D3DDDIARG_LOCK* pLock)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiLock hResource:0x%x\n", UMDLow32(pLock->hResource));
        UMDUtilDebugTracePrintLock(pLock, ResourceTypeOrNone(pLock->hResource));
        return ToDevice(hDevice).Lock(pLock);
    });
}

HRESULT APIENTRY UMDDdiUnlock(HANDLE hDevice, const D3DDDIARG_UNLOCK* pUnlock)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiUnlock hResource:0x%x\n", UMDLow32(pUnlock->hResource));
        return ToDevice(hDevice).Unlock(pUnlock);
    });
}

HRESULT APIENTRY UMDDdiCreateResource(HANDLE hDevice, D3DDDIARG_CREATERESOURCE* pCreateResource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiCreateResource\n");
        UMDUtilDebugTracePrintCreateResource(pCreateResource);
        return ToDevice(hDevice).CreateResource(pCreateResource);
    });
}

HRESULT APIENTRY UMDDdiDestroyResource(HANDLE hDevice, HANDLE hResource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiDestroyResource hResource:0x%x\n", UMDLow32(hResource));
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(hResource));
        return ToDevice(hDevice).DestroyResource(hResource);
    });
}

HRESULT APIENTRY UMDDdiOpenResource(HANDLE hDevice, D3DDDIARG_OPENRESOURCE* pOpenResource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(kTraceLevel, L"=> UMDDdiOpenResource \n");
        UMDUtilDebugTracePrintOpenResource(pOpenResource);
        return ToDevice(hDevice).OpenResource(pOpenResource);
    });
}
