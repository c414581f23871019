#include "output/UMDGpuDx9Surface.h"

#include "util/UMDUtilDebugTrace.h"

#include <cstring>

namespace
{
constexpr UINT kReadBackAttempts = 3;
constexpr DWORD kReadBackPause = 10;  ///< milliseconds between two attempts
}  // namespace

UMDGpuDx9Surface::UMDGpuDx9Surface() : m_pDevice(nullptr)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n");
}

UMDGpuDx9Surface::~UMDGpuDx9Surface()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n");
}

HRESULT UMDGpuDx9Surface::Create(IDirect3DDevice9Ex* pDevice9, IDirect3DSurface9** ppSurface,
    UMDFrameMemory** ppSurfaceMalloc, UINT width, UINT height, D3DFORMAT format)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDGpuDx9Surface::Create\n");
    if (!pDevice9)
        return UMDFail(E_FAIL, L"UMDGpuDx9Surface::Create pDevice9 is NULL\n");
    if (format != D3DFMT_A8R8G8B8 && format != D3DFMT_X8R8G8B8)
        return UMDFail(E_FAIL, L"UMDGpuDx9Surface::Create failed! Format is unsupported! Format:%d\n", format);
    if (HRESULT hr =
            pDevice9->CreateOffscreenPlainSurface(width, height, format, D3DPOOL_SYSTEMMEM, ppSurface, nullptr);
        FAILED(hr))
        return UMDFail(hr, L"UMDGpuDx9Surface::Create CreateOffscreenPlainSurface failed! 0x%x\n", hr);
    const std::size_t bytes = static_cast<std::size_t>(width) * height * 4;
    *ppSurfaceMalloc = UMDFrameMemory::Create(bytes);
    if (!*ppSurfaceMalloc)
        return UMDFail(E_FAIL, L"UMDGpuDx9Surface::Create malloc failed!\n");
    std::memset((*ppSurfaceMalloc)->Bits(), 0, bytes);
    m_pDevice = pDevice9;
    return S_OK;
}

HRESULT UMDGpuDx9Surface::Duplicate(IDirect3DSurface9** ppDstSurface, UMDFrameMemory** ppDstSurfaceMalloc,
    IDirect3DSurface9* pSrcSurface, UINT width, UINT height, D3DFORMAT format)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDGpuDx9Surface::Duplicate\n");
    if (!*ppDstSurface || !*ppDstSurfaceMalloc || !pSrcSurface || !m_pDevice)
        return UMDFail(
            E_FAIL, L"UMDGpuDx9Surface::Duplicate ppDstSurface/ppDstSurfaceMalloc/pSrcSurface/m_pDevice is NULL\n");

    D3DSURFACE_DESC src = {};
    if (HRESULT hr = pSrcSurface->GetDesc(&src); FAILED(hr))
        return UMDFail(hr, L"UMDGpuDx9Surface::Duplicate GetDesc SRC failed! hResult:0x%x\n", hr);
    D3DSURFACE_DESC dst = {};
    if (HRESULT hr = (*ppDstSurface)->GetDesc(&dst); FAILED(hr))
        return UMDFail(hr, L"UMDGpuDx9Surface::Duplicate GetDesc DST failed! hResult:0x%x\n", hr);

    if (src.Width != dst.Width || src.Height != dst.Height || src.Format != dst.Format)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDGpuDx9Surface::Duplicate Recreate\n");
        Destroy(ppDstSurface, ppDstSurfaceMalloc);
        if (HRESULT hr = Create(m_pDevice, ppDstSurface, ppDstSurfaceMalloc, width, height, format); FAILED(hr))
            return UMDFail(hr, L"UMDGpuDx9Surface::Duplicate Create failed! 0x%x\n", hr);
    }
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDGpuDx9Surface::Duplicate SRC[%d %d %d] DST[%d %d %d] XXX[%d %d %d]\n", src.Width,
        src.Height, src.Format, dst.Width, dst.Height, dst.Format, width, height, format);
    return InternalReadBack(*ppDstSurface, pSrcSurface);
}

HRESULT UMDGpuDx9Surface::InternalReadBack(IDirect3DSurface9* pDstSurface, IDirect3DSurface9* pSrcSurface)
{
    HRESULT hr = S_OK;
    for (UINT failures = 0; failures < kReadBackAttempts;)
    {
        hr = m_pDevice->GetRenderTargetData(pSrcSurface, pDstSurface);
        if (SUCCEEDED(hr))
            break;
        ++failures;
        Sleep(kReadBackPause);
        UMD_TRACE(UMDTRACE_ERROR, L"UMDGpuDx9Surface::Duplicate GetRenderTargetData failed! 0x%x CountFail:%d\n", hr,
            failures);
    }
    return hr;
}

void UMDGpuDx9Surface::Destroy(IDirect3DSurface9** ppSurface, UMDFrameMemory** ppSurfaceMalloc)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDGpuDx9Surface::Destroy\n");
    if (*ppSurfaceMalloc)
    {
        (*ppSurfaceMalloc)->Release();
        *ppSurfaceMalloc = nullptr;
    }
    if (*ppSurface)
    {
        (*ppSurface)->Release();
        *ppSurface = nullptr;
    }
}
