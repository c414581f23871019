// Operations that trace their entry and give a fixed answer.
#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

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

HRESULT UMDDdiDevice::QueryResourceResidency(const D3DDDIARG_QUERYRESOURCERESIDENCY*)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::QueryResourceResidency\n");
    return E_NOTIMPL;
}
