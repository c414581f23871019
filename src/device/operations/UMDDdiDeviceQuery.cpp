// Queries, which are all refused: there is no fence behind them.
#include "device/UMDDdiDevice.h"
#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT UMDDdiDevice::CreateFence()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateFence\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::CreateQuery(D3DDDIARG_CREATEQUERY* pCreateQuery)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateQuery\n");
    if (CreateFence() != S_OK)
        return E_FAIL;
    auto pQuery = UMDMakeUnique<UINT>(0xDEADBEEF);
    if (!pQuery)
        return E_OUTOFMEMORY;
    pCreateQuery->hQuery = pQuery.release();
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreateQuery\n");
    return S_OK;
}

HRESULT UMDDdiDevice::DeleteQuery(HANDLE hQuery)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeleteQuery\n");
    const std::unique_ptr<UINT> pQuery(static_cast<UINT*>(hQuery));
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DeleteQuery\n");
    return S_OK;
}

HRESULT UMDDdiDevice::IssueQuery(const D3DDDIARG_ISSUEQUERY*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::IssueQuery\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::GetQueryData(const D3DDDIARG_GETQUERYDATA*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::GetQueryData\n");
    return E_NOTIMPL;
}
