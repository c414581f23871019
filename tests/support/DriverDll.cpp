#include "DriverDll.h"

#include <stdexcept>
#include <utility>

namespace tesslo::test
{

DriverDll::DriverDll() : m_hModule(LoadLibraryW(L"TessloWddmUmode.dll"))
{
    if (!m_hModule)
        throw std::runtime_error("TessloWddmUmode.dll does not load: " + std::to_string(GetLastError()));
}

DriverDll::~DriverDll()
{
    if (m_hAdapter)
        CloseAdapter();
    Unload();
}

HRESULT DriverDll::OpenAdapter(FakeKernel& kernel, UINT interface_, UINT version)
{
    auto pOpenAdapter = reinterpret_cast<HRESULT(APIENTRY*)(D3DDDIARG_OPENADAPTER*)>(
        reinterpret_cast<void*>(GetProcAddress(m_hModule, "OpenAdapter")));
    D3DDDIARG_OPENADAPTER open = {kernel.RuntimeHandle(), interface_, version, &m_AdapterCallbacks, &m_AdapterFuncs, 0};
    const HRESULT hr = pOpenAdapter(&open);
    if (SUCCEEDED(hr))
    {
        m_hAdapter = open.hAdapter;
        m_DriverVersion = open.DriverVersion;
    }
    return hr;
}

HRESULT DriverDll::CreateDevice(FakeKernel& kernel, const D3DDDI_DEVICECALLBACKS& callbacks)
{
    D3DDDIARG_CREATEDEVICE create{};
    create.hDevice = kernel.RuntimeHandle();
    create.Interface = 9;
    create.Version = 0x2003;
    create.pCallbacks = &callbacks;
    create.pDeviceFuncs = &m_DeviceFuncs;
    const HRESULT hr = m_AdapterFuncs.pfnCreateDevice(m_hAdapter, &create);
    if (SUCCEEDED(hr))
        m_hDevice = create.hDevice;
    return hr;
}

HRESULT DriverDll::CloseAdapter()
{
    m_hDevice = nullptr;
    return m_AdapterFuncs.pfnCloseAdapter(std::exchange(m_hAdapter, nullptr));
}

BOOL DriverDll::DllMain(DWORD reason)
{
    const auto pBase = reinterpret_cast<const BYTE*>(m_hModule);
    const auto pHeaders =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase)->e_lfanew);
    const auto pEntry = reinterpret_cast<BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID)>(
        reinterpret_cast<UINT_PTR>(pBase) + pHeaders->OptionalHeader.AddressOfEntryPoint);
    return pEntry(m_hModule, reason, nullptr);
}

void DriverDll::Unload()
{
    if (HMODULE hModule = std::exchange(m_hModule, nullptr))
        FreeLibrary(hModule);
}

}  // namespace tesslo::test
