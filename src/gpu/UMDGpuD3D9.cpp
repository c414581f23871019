#include "gpu/UMDGpuD3D9.h"

#include "util/UMDModuleExport.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilGuard.h"

#include <string.h>

namespace
{
// The virtual adapter itself: rendering on it would come back to this driver.
constexpr char kOwnDriver[] = "TessloWddmUmode.dll";
constexpr char kOwnDescription[] = "Zembrilo Tesslo (WDDM)";

bool IsOwnAdapter(const D3DADAPTER_IDENTIFIER9& identifier)
{
    return _stricmp(identifier.Driver, kOwnDriver) == 0 || _stricmp(identifier.Description, kOwnDescription) == 0;
}

/// Hardware vertex processing where the adapter has it; multithreaded always, since any thread of ours may call.
DWORD BehaviourFlags(IDirect3D9Ex* pD3D9Ex, UINT adapter)
{
    D3DCAPS9 caps = {};
    const bool hardware = SUCCEEDED(pD3D9Ex->GetDeviceCaps(adapter, D3DDEVTYPE_HAL, &caps)) &&
                          (caps.DevCaps & D3DDEVCAPS_HWTRANSFORMANDLIGHT) &&
                          caps.VertexShaderVersion >= D3DVS_VERSION(1, 1);
    return D3DCREATE_MULTITHREADED |
           (hardware ? D3DCREATE_HARDWARE_VERTEXPROCESSING : D3DCREATE_SOFTWARE_VERTEXPROCESSING);
}
}  // namespace

UMDGpuD3D9::UMDGpuD3D9(HWND hWnd) : m_hWnd(hWnd), m_TessloVirtualMonitorReserved2(nullptr)
{
    if (HRESULT hr = Direct3DCreate9Ex(D3D_SDK_VERSION, m_pD3D9Ex.Put()); FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR, L"InitD3D  Direct3DCreate9 failed! hResult:0x%x\n", hr);
}

UMDGpuD3D9::~UMDGpuD3D9() = default;

HRESULT UMDGpuD3D9::Create(HMODULE hClientDll)
{
    HRESULT hr = InternalDeviceRetrieveFromClientDll(hClientDll, m_pD3DDevice9Ex.Put());
    if (FAILED(hr))
        hr = InitD3D(m_pD3DDevice9Ex.Put());
    if (FAILED(hr))
        return hr;
    const BOOL wasVisible = m_pD3DDevice9Ex->ShowCursor(FALSE);
    UMD_TRACE(
        UMDTRACE_DETAIL, L"UMDGpuD3D9::Create  m_pD3DDevice9Ex->ShowCursor WasPreviouslyVisible:%d\n", wasVisible);
    m_pD3DDevice9Ex->SetCursorPosition(100, 100, D3DCURSOR_IMMEDIATE_UPDATE);
    return hr;
}

void UMDGpuD3D9::Destroy()
{
    m_pD3DDevice9Ex.Reset();
}

void UMDGpuD3D9::PresentNotification(IDirect3DSurface9* pSurface)
{
    if (m_TessloVirtualMonitorReserved2 &&
        !UMDUtilGuard([&] { m_TessloVirtualMonitorReserved2(m_pD3DDevice9Ex.Get(), pSurface); }))
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in client library! %S failed!\n", TESSLO_CLIENT_RESERVED2);
}

HRESULT UMDGpuD3D9::InternalDeviceRetrieveFromClientDll(HMODULE hClientDll, IDirect3DDevice9Ex** ppDevice)
{
    const auto pReserved1 = UMDModuleExport<TessloVirtualMonitorReserved1Function>(hClientDll, TESSLO_CLIENT_RESERVED1);
    if (!pReserved1)
        return UMDFail(
            E_FAIL, L"UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! %d\n", GetLastError());
    m_TessloVirtualMonitorReserved2 =
        UMDModuleExport<TessloVirtualMonitorReserved2Function>(hClientDll, TESSLO_CLIENT_RESERVED2);
    // What a library that declines leaves behind is not ours to release; one that promises a device and stores none
    // has failed all the same.
    IDirect3DDevice9Ex* pDevice = nullptr;
    BOOLEAN given = FALSE;
    if (!UMDUtilGuard([&] { given = pReserved1(m_hWnd, &pDevice); }))
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in client library! %S failed!\n", TESSLO_CLIENT_RESERVED1);
    if (!given || !pDevice)
        return UMDFail(
            E_FAIL, L"UMDGpuD3D9::InternalDeviceRetrieveFromClientDll m_TessloVirtualMonitorReserved1() failed!\n");
    *ppDevice = pDevice;
    return S_OK;
}

HRESULT UMDGpuD3D9::InitD3D(IDirect3DDevice9Ex** ppDevice)
{
    if (!m_pD3D9Ex)
        return UMDFail(E_FAIL, L"InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x%x\n", E_FAIL);
    const UINT count = m_pD3D9Ex->GetAdapterCount();
    UINT adapter = 0;
    for (; adapter < count; ++adapter)
    {
        D3DADAPTER_IDENTIFIER9 identifier = {};
        if (HRESULT hr = m_pD3D9Ex->GetAdapterIdentifier(adapter, 0, &identifier); FAILED(hr))
        {
            Destroy();
            return UMDFail(hr, L"InitD3D  GetAdapterIdentifier failed! hResult:0x%x\n", hr);
        }
        if (!IsOwnAdapter(identifier))
            break;
    }
    // With no foreign adapter the ordinal is one too many, which the creation refuses.
    D3DPRESENT_PARAMETERS parameters = {};
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    const DWORD flags = BehaviourFlags(m_pD3D9Ex.Get(), adapter);
    if (HRESULT hr = m_pD3D9Ex->CreateDeviceEx(adapter, D3DDEVTYPE_HAL, m_hWnd, flags, &parameters, nullptr, ppDevice);
        FAILED(hr))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x%x\n", hr);
        Destroy();
        return hr;
    }
    return S_OK;
}
