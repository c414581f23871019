#include "host/support/HostAdapterList.h"

#include "host/runtime/HostError.h"

#include <memory>

#include <d3d9.h>

namespace
{

// What the driver's own adapter calls itself: there it would draw on itself.
constexpr char kOwnDriver[] = "TessloWddmUmode.dll";
constexpr char kOwnDescription[] = "Zembrilo Tesslo (WDDM)";

struct Release
{
    void operator()(IDirect3D9Ex* pFactory) const { pFactory->Release(); }
};

HostGraphicsAdapter Describe(IDirect3D9Ex& factory, UINT adapter)
{
    D3DADAPTER_IDENTIFIER9 identifier{};
    HostCheck(factory.GetAdapterIdentifier(adapter, 0, &identifier), "GetAdapterIdentifier");
    LUID luid{};
    HostCheck(factory.GetAdapterLUID(adapter, &luid), "GetAdapterLUID");
    return {identifier.Description, identifier.Driver, identifier.DeviceName, identifier.DriverVersion.QuadPart,
        identifier.VendorId, identifier.DeviceId, luid};
}

}  // namespace

std::vector<HostGraphicsAdapter> HostListAdapters()
{
    IDirect3D9Ex* pMade = nullptr;
    HostCheck(Direct3DCreate9Ex(D3D_SDK_VERSION, &pMade), "Direct3DCreate9Ex");
    const std::unique_ptr<IDirect3D9Ex, Release> pFactory(pMade);
    std::vector<HostGraphicsAdapter> adapters;
    for (UINT i = 0; i < pFactory->GetAdapterCount(); ++i)
        adapters.push_back(Describe(*pFactory, i));
    return adapters;
}

std::optional<size_t> HostDelegatedAdapter(std::span<const HostGraphicsAdapter> adapters)
{
    for (size_t i = 0; i < adapters.size(); ++i)
        if (_stricmp(adapters[i].m_Driver.c_str(), kOwnDriver) != 0 &&
            _stricmp(adapters[i].m_Description.c_str(), kOwnDescription) != 0)
            return i;
    return std::nullopt;
}
