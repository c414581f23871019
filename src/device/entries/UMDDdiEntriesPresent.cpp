// Entries that end a frame or the device, and what the runtime asks of it: information, queries, residency.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT APIENTRY UMDDdiGetInfo(HANDLE hDevice, UINT infoId, void* pInfo, UINT infoSize)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiGetInfo\n");
        return ToDevice(hDevice).GetInfo(infoId, pInfo, infoSize);
    });
}

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

HRESULT APIENTRY UMDDdiCreateQuery(HANDLE hDevice, D3DDDIARG_CREATEQUERY* pCreateQuery)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiCreateQuery\n");
        return ToDevice(hDevice).CreateQuery(pCreateQuery);
    });
}

HRESULT APIENTRY UMDDdiDeleteQuery(HANDLE hDevice, const HANDLE hQuery)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDeleteQuery\n");
        return ToDevice(hDevice).DeleteQuery(hQuery);
    });
}

HRESULT APIENTRY UMDDdiIssueQuery(HANDLE hDevice, const D3DDDIARG_ISSUEQUERY* pIssueQuery)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiIssueQuery\n");
        return ToDevice(hDevice).IssueQuery(pIssueQuery);
    });
}

HRESULT APIENTRY UMDDdiGetQueryData(HANDLE hDevice, const D3DDDIARG_GETQUERYDATA* pGetQueryData)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiGetQueryData\n");
        return ToDevice(hDevice).GetQueryData(pGetQueryData);
    });
}

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

HRESULT APIENTRY UMDDdiQueryResourceResidency(HANDLE hDevice, const D3DDDIARG_QUERYRESOURCERESIDENCY* pQuery)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiQueryResourceResidency %d\n", pQuery->NumResources);
        return ToDevice(hDevice).QueryResourceResidency(pQuery);
    });
}
