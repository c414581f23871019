#include "FakeFactory.h"

#include <cstdio>

namespace tesslo::test
{

namespace
{

FakeFactory* s_pFactory;  ///< the living one; set and cleared on the test's thread

}  // namespace

FakeFactory::FakeFactory(FakeDevice& device, HMODULE hModule) : FakeFactoryMethods(device, "d3d9"), m_Device(device)
{
    s_pFactory = this;
    m_pPatch = std::make_unique<ImportPatch>(hModule, "d3d9.dll", "Direct3DCreate9Ex", InternalCreate);
}

FakeFactory::~FakeFactory()
{
    m_pPatch.reset();
    s_pFactory = nullptr;
}

HRESULT FakeFactory::InternalCreate(UINT sdkVersion, IDirect3D9Ex** ppFactory)
{
    FakeFactory& self = *s_pFactory;
    if (HRESULT hr = self.Record<HRESULT>("Direct3DCreate9Ex", sdkVersion); FAILED(hr))
        return hr;
    if (FAILED(self.m_hCreateResult))
        return self.m_hCreateResult;
    self.AddRef();
    *ppFactory = &self;
    return self.m_hCreateResult;
}

UINT FakeFactory::GetAdapterCount()
{
    FakeFactoryMethods::GetAdapterCount();
    return static_cast<UINT>(m_Adapters.size());
}

HRESULT FakeFactory::GetAdapterIdentifier(UINT adapter, DWORD flags, D3DADAPTER_IDENTIFIER9* pIdentifier)
{
    if (HRESULT hr = FakeFactoryMethods::GetAdapterIdentifier(adapter, flags, pIdentifier); FAILED(hr))
        return hr;
    if (adapter >= m_Adapters.size())
        return D3DERR_INVALIDCALL;
    *pIdentifier = {};
    snprintf(pIdentifier->Driver, sizeof pIdentifier->Driver, "%s", m_Adapters[adapter].m_Driver.c_str());
    snprintf(
        pIdentifier->Description, sizeof pIdentifier->Description, "%s", m_Adapters[adapter].m_Description.c_str());
    return S_OK;
}

HRESULT FakeFactory::GetDeviceCaps(UINT adapter, D3DDEVTYPE deviceType, D3DCAPS9* pCaps)
{
    if (HRESULT hr = FakeFactoryMethods::GetDeviceCaps(adapter, deviceType, pCaps); FAILED(hr))
        return hr;
    if (adapter >= m_Adapters.size())
        return D3DERR_INVALIDCALL;
    *pCaps = {};
    pCaps->DevCaps = m_Adapters[adapter].m_DevCaps;
    pCaps->VertexShaderVersion = m_Adapters[adapter].m_VertexShaderVersion;
    return S_OK;
}

HRESULT FakeFactory::CreateDeviceEx(UINT adapter, D3DDEVTYPE deviceType, HWND hFocusWindow, DWORD flags,
    D3DPRESENT_PARAMETERS* pParameters, D3DDISPLAYMODEEX* pMode, IDirect3DDevice9Ex** ppDevice)
{
    HRESULT hr =
        FakeFactoryMethods::CreateDeviceEx(adapter, deviceType, hFocusWindow, flags, pParameters, pMode, ppDevice);
    if (FAILED(hr))
        return hr;
    if (adapter >= m_Adapters.size())
        return D3DERR_INVALIDCALL;
    m_Device.AddRef();
    *ppDevice = &m_Device;
    return S_OK;
}

}  // namespace tesslo::test
