#include "adapter/UMDAdapter.h"

#include "adapter/UMDAdapterCapsTrace.h"
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiDeviceFuncs.h"
#include "util/UMDUtilDebugTrace.h"

#include <new>

namespace
{
/// Adapters opened in this process so far; never decremented.
volatile LONG g_AdapterInstanceCount = 0;

UMDAdapter& ToAdapter(HANDLE hAdapter)
{
    return *static_cast<UMDAdapter*>(hAdapter);
}
}  // namespace

UMDAdapter::UMDAdapter(HANDLE hRTAdapter, UINT version, const D3DDDI_ADAPTERCALLBACKS* pCallbacks)
    : m_hRTAdapter(hRTAdapter), m_pDevice(nullptr), m_Version(version), m_AdapterCallbacks(*pCallbacks),
      m_InstanceNumber(InterlockedIncrement(&g_AdapterInstanceCount))
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDAdapter::UMDAdapter %d 0x%x\n", m_InstanceNumber, UMDLow32(this));
}

UMDAdapter::~UMDAdapter()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDAdapter::~UMDAdapter %d\n", m_InstanceNumber);
}

HANDLE UMDRuntimeAdapter(const UMDAdapter* pAdapter)
{
    return pAdapter->RuntimeAdapter();
}

HRESULT APIENTRY UMDAdapter::DdiGetCaps(HANDLE hAdapter, const D3DDDIARG_GETCAPS* pGetCaps)
{
    UMD_TRACE(UMDTRACE_DDI, L"=> UMDAdapter::DdiGetCaps %d\n", pGetCaps->Type);
    UMDAdapterTraceVideoCapsType(pGetCaps);
    return ToAdapter(hAdapter).GetCaps(pGetCaps);
}

HRESULT APIENTRY UMDAdapter::DdiCreateDevice(HANDLE hAdapter, D3DDDIARG_CREATEDEVICE* pCreateDevice)
{
    UMD_TRACE(UMDTRACE_DDI, L"=> UMDAdapter::DdiCreateDevice hDevice: 0x%x Interface: %d Version:%d\n",
        UMDLow32(pCreateDevice->hDevice), pCreateDevice->Interface, pCreateDevice->Version);
    return ToAdapter(hAdapter).CreateDevice(pCreateDevice);
}

HRESULT UMDAdapter::CreateDevice(D3DDDIARG_CREATEDEVICE* pCreateDevice)
{
    auto* pDevice = new (std::nothrow)
        UMDDdiDevice(pCreateDevice->hDevice, pCreateDevice->Interface, m_Version, this, pCreateDevice->pCallbacks);
    if (!pDevice)
        return UMDFail(E_FAIL, L"UMDAdapter::CreateDevice new UMDDdiDevice failed!\n");
    if (!pDevice->Initialize())
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDAdapter::CreateDevice pCtxt->Initialize failed!\n");
        delete pDevice;
        return E_FAIL;
    }
    pCreateDevice->hDevice = pDevice;
    m_pDevice = pDevice;
    UMDDdiFillDeviceFuncs(pCreateDevice->pDeviceFuncs);
    return S_OK;
}

HRESULT APIENTRY OpenAdapter(D3DDDIARG_OPENADAPTER* pOpenAdapter)
{
    UMD_TRACE(UMDTRACE_DDI | UMDTRACE_ENTER, L">>> OpenAdapter Interface: %d Version: %d Driver Version: %d\n",
        pOpenAdapter->Interface, pOpenAdapter->Version, pOpenAdapter->DriverVersion);
    auto* pAdapter =
        new (std::nothrow) UMDAdapter(pOpenAdapter->hAdapter, pOpenAdapter->Version, pOpenAdapter->pAdapterCallbacks);
    if (!pAdapter)
        return E_FAIL;
    pOpenAdapter->hAdapter = pAdapter;
    pOpenAdapter->DriverVersion = D3D_UMD_INTERFACE_VERSION_WIN7;
    *pOpenAdapter->pAdapterFuncs = {
        .pfnGetCaps = UMDAdapter::DdiGetCaps,
        .pfnCreateDevice = UMDAdapter::DdiCreateDevice,
        .pfnCloseAdapter = CloseAdapter,
    };
    return S_OK;
}

HRESULT APIENTRY CloseAdapter(HANDLE hAdapter)
{
    UMD_TRACE(UMDTRACE_DDI | UMDTRACE_ENTER, L">>> CloseAdapter\n");
    if (!hAdapter)
        return S_OK;
    UMDAdapter* pAdapter = &ToAdapter(hAdapter);
    if (UMDDdiDevice* pDevice = pAdapter->Device())
    {
        pDevice->DestroyThreads();
        delete pDevice;
    }
    delete pAdapter;
    return S_OK;
}
