#include "host/runtime/HostAdapter.h"

#include "host/runtime/HostDriver.h"

namespace
{

// The driver keeps these and never calls them.
const D3DDDI_ADAPTERCALLBACKS kAdapterCallbacks = {
    .pfnQueryAdapterInfoCb = [](HANDLE, const D3DDDICB_QUERYADAPTERINFO*) -> HRESULT { return E_NOTIMPL; },
    .pfnGetMultisampleMethodListCb = [](HANDLE, D3DDDICB_GETMULTISAMPLEMETHODLIST*) -> HRESULT { return E_NOTIMPL; },
};

}  // namespace

HostAdapter::HostAdapter(const HostDriver& driver, HostKernel& kernel) : m_Kernel(kernel)
{
    D3DDDIARG_OPENADAPTER arg{};
    arg.hAdapter = kernel.AdapterHandle();
    arg.Interface = kInterface;
    arg.Version = kVersion;
    arg.pAdapterCallbacks = &kAdapterCallbacks;
    arg.pAdapterFuncs = &m_Functions;
    HostCheck(driver.OpenAdapter(arg), "OpenAdapter");
    m_hAdapter = arg.hAdapter;
    m_DriverVersion = arg.DriverVersion;
}

HostAdapter::~HostAdapter()
{
    m_Functions.pfnCloseAdapter(m_hAdapter);
}
