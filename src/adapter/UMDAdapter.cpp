#include "adapter/UMDAdapter.h"

#include "adapter/UMDAdapterCapsTrace.h"
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiDeviceFuncs.h"
#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"

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
    : m_hRTAdapter(hRTAdapter), m_Version(version), m_AdapterCallbacks(*pCallbacks),
      m_InstanceNumber(InterlockedIncrement(&g_AdapterInstanceCount))
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDAdapter::UMDAdapter %d 0x%x\n", m_InstanceNumber, UMDLow32(this));
}

UMDAdapter::~UMDAdapter()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDAdapter::~UMDAdapter %d\n", m_InstanceNumber);
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
    auto pDevice = UMDMakeUnique<UMDDdiDevice>(
        pCreateDevice->hDevice, pCreateDevice->Interface, m_Version, this, m_hRTAdapter, pCreateDevice->pCallbacks);
    if (!pDevice)
        return UMDFail(E_FAIL, L"UMDAdapter::CreateDevice new UMDDdiDevice failed!\n");
    if (!pDevice->Initialize())
        return UMDFail(E_FAIL, L"UMDAdapter::CreateDevice pCtxt->Initialize failed!\n");
    pCreateDevice->hDevice = pDevice.get();
    // An earlier device stays the runtime's, which may hold its handle still: nobody frees it.
    static_cast<void>(m_pDevice.release());
    m_pDevice = std::move(pDevice);
    UMDDdiFillDeviceFuncs(pCreateDevice->pDeviceFuncs);
    return S_OK;
}

void UMDAdapter::CloseDevice()
{
    if (!m_pDevice)
        return;
    m_pDevice->DestroyThreads();
    m_pDevice.reset();
}

HRESULT APIENTRY OpenAdapter(D3DDDIARG_OPENADAPTER* pOpenAdapter)
{
    UMD_TRACE(UMDTRACE_DDI | UMDTRACE_ENTER, L">>> OpenAdapter Interface: %d Version: %d Driver Version: %d\n",
        pOpenAdapter->Interface, pOpenAdapter->Version, pOpenAdapter->DriverVersion);
    auto pAdapter =
        UMDMakeUnique<UMDAdapter>(pOpenAdapter->hAdapter, pOpenAdapter->Version, pOpenAdapter->pAdapterCallbacks);
    if (!pAdapter)
        return E_FAIL;
    pOpenAdapter->hAdapter = pAdapter.release();
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
    const std::unique_ptr<UMDAdapter> pAdapter(&ToAdapter(hAdapter));
    pAdapter->CloseDevice();
    return S_OK;
}
