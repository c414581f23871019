// The fake IDirect3D9Ex: adapters with identifiers and capabilities, and a CreateDeviceEx that hands out a FakeDevice.
//
// Its calls stand in the device's record, as "d3d9.CreateDeviceEx(...)". While it lives, the executable's own calls of
// Direct3DCreate9Ex get it; for another module give that module's handle.
#pragma once

#include "FakeDevice.h"
#include "ImportPatch.h"

#include <memory>

namespace tesslo::test
{

/// One adapter that the factory tells of.
struct FakeAdapter
{
    std::string m_Driver = "card.dll";
    std::string m_Description = "A card";
    DWORD m_DevCaps = D3DDEVCAPS_HWTRANSFORMANDLIGHT;
    DWORD m_VertexShaderVersion = D3DVS_VERSION(3, 0);
};

class FakeFactory : public FakeFactoryMethods
{
public:
    /// @param device  what CreateDeviceEx hands out; outlives the factory.
    /// @param hModule whose calls of Direct3DCreate9Ex are answered; null for the executable.
    explicit FakeFactory(FakeDevice& device, HMODULE hModule = nullptr);
    ~FakeFactory() override;

    /// The adapters, one good one at first.
    std::vector<FakeAdapter> m_Adapters{FakeAdapter{}};
    /// What Direct3DCreate9Ex answers; with a failure it gives no factory.
    HRESULT m_hCreateResult = S_OK;

    bool IsPart() const override { return true; }
    UINT STDMETHODCALLTYPE GetAdapterCount() override;
    HRESULT STDMETHODCALLTYPE GetAdapterIdentifier(
        UINT adapter, DWORD flags, D3DADAPTER_IDENTIFIER9* pIdentifier) override;
    HRESULT STDMETHODCALLTYPE GetDeviceCaps(UINT adapter, D3DDEVTYPE deviceType, D3DCAPS9* pCaps) override;
    /// D3DERR_INVALIDCALL for an adapter that there is not.
    HRESULT STDMETHODCALLTYPE CreateDeviceEx(UINT adapter, D3DDEVTYPE deviceType, HWND hFocusWindow, DWORD flags,
        D3DPRESENT_PARAMETERS* pParameters, D3DDISPLAYMODEEX* pMode, IDirect3DDevice9Ex** ppDevice) override;

protected:
    void LastRelease() override {}

private:
    static HRESULT WINAPI InternalCreate(UINT sdkVersion, IDirect3D9Ex** ppFactory);

    FakeDevice& m_Device;
    std::unique_ptr<ImportPatch> m_pPatch;
};

}  // namespace tesslo::test
