// Operations that trace their entry and give a fixed answer, and queries, which are all refused.
#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

#include <new>

HRESULT UMDDdiDevice::UpdateWInfo(const D3DDDIARG_WINFO*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::UpdateWInfo\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetZRange(const D3DDDIARG_ZRANGE*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetZRange\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetStreamSourceFreq(const D3DDDIARG_SETSTREAMSOURCEFREQ*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetStreamSourceFreq\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetConvolutionKernelMono(const D3DDDIARG_SETCONVOLUTIONKERNELMONO*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetConvolutionKernelMono\n");
    return S_OK;
}

HRESULT UMDDdiDevice::ComposeRects(const D3DDDIARG_COMPOSERECTS*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::ComposeRects\n");
    return S_OK;
}

HRESULT UMDDdiDevice::MultiplyTransform(const D3DDDIARG_MULTIPLYTRANSFORM*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::MultiplyTransform\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::SetMaterial(const D3DDDIARG_SETMATERIAL*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetMaterial\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::SetLight(const D3DDDIARG_SETLIGHT*, const D3DDDI_LIGHT*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetLight\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::CreateLight(const D3DDDIARG_CREATELIGHT*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateLight\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::DestroyLight(const D3DDDIARG_DESTROYLIGHT*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DestroyLight\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::GetInfo(UINT, void*, UINT)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::GetInfo\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::GenerateMipSubLevels(const D3DDDIARG_GENERATEMIPSUBLEVELS*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::GenerateMipSubLevels\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::DepthFill(const D3DDDIARG_DEPTHFILL*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DepthFill\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::CreateFence()
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateFence\n");
    return E_NOTIMPL;
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

HRESULT UMDDdiDevice::QueryResourceResidency(const D3DDDIARG_QUERYRESOURCERESIDENCY*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::QueryResourceResidency\n");
    return E_NOTIMPL;
}

HRESULT UMDDdiDevice::CreateQuery(D3DDDIARG_CREATEQUERY* pCreateQuery)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateQuery\n");
    // There is no fence behind a query, so every query is refused here.
    if (CreateFence() != S_OK)
        return E_FAIL;
    auto* pQuery = new (std::nothrow) UINT(0xDEADBEEF);
    if (!pQuery)
        return E_OUTOFMEMORY;
    pCreateQuery->hQuery = pQuery;
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreateQuery\n");
    return S_OK;
}

HRESULT UMDDdiDevice::DeleteQuery(HANDLE hQuery)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeleteQuery\n");
    delete static_cast<UINT*>(hQuery);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DeleteQuery\n");
    return S_OK;
}
