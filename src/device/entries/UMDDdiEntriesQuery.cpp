// Entries for queries.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

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
