// The adapters, and that the host names the one that the driver takes.
#include "DriverDll.h"
#include "FakeFactory.h"
#include "RegistryOverride.h"
#include "host/runtime/HostError.h"
#include "host/support/HostAdapterList.h"

#include <gtest/gtest.h>

namespace tesslo::test
{

static void PrintTo(const FakeAdapter& adapter, std::ostream* pStream)
{
    *pStream << adapter.m_Description;
}

}  // namespace tesslo::test

using namespace tesslo::test;

namespace
{

const std::vector<std::vector<FakeAdapter>> kMachines = {
    {{"card.dll", "A card"}},
    {{"card.dll", "A card"}, {"card.dll", "Another"}},
    {{"TessloWddmUmode.dll", "A screen"}, {"card.dll", "A card"}},
    {{"tesslowddmumode.DLL", "A screen"}, {"card.dll", "Zembrilo Tesslo (WDDM)"}, {"card.dll", "A card"}},
    {{"other.dll", "zembrilo tesslo (wddm)"}, {"card.dll", "A card"}},
    {{"TessloWddmUmode.dll", "A screen"}},
    {},
};

class HostAdapterListMachines : public testing::TestWithParam<std::vector<FakeAdapter>>
{
};

}  // namespace

TEST_P(HostAdapterListMachines, DelegatedAdapter_IsTheOneThatTheDriverTakes)
{
    RegistryOverride registry;
    registry.SetClientDllName(L"none");
    FakeDevice device;
    DriverDll driver;
    FakeKernel kernel;
    std::optional<size_t> delegated;
    {
        FakeFactory factory(device, driver.Module());
        factory.m_Adapters = GetParam();
        ASSERT_EQ(driver.OpenAdapter(kernel), S_OK);
        ASSERT_EQ(driver.CreateDevice(kernel), S_OK);
        EXPECT_EQ(driver.CloseAdapter(), S_OK);
    }
    {
        FakeFactory factory(device);
        factory.m_Adapters = GetParam();
        delegated = HostDelegatedAdapter(HostListAdapters());
    }
    // One behind the last: the driver's way of finding none.
    const size_t taken = delegated.value_or(GetParam().size());
    EXPECT_EQ(device.LinesContaining("d3d9.CreateDeviceEx(" + std::to_string(taken) + ",").size(), 1u);
    EXPECT_EQ(device.Calls("d3d9.CreateDeviceEx"), 1u);
}

INSTANTIATE_TEST_SUITE_P(All, HostAdapterListMachines, testing::ValuesIn(kMachines));

TEST(HostAdapterList, ListAdapters_OfThisMachine_TellsDirect3DsNamesAndLuids)
{
    IDirect3D9Ex* pFactory = nullptr;
    ASSERT_EQ(Direct3DCreate9Ex(D3D_SDK_VERSION, &pFactory), S_OK);
    const std::vector<HostGraphicsAdapter> adapters = HostListAdapters();
    ASSERT_EQ(adapters.size(), pFactory->GetAdapterCount());
    for (UINT i = 0; i < adapters.size(); ++i)
    {
        D3DADAPTER_IDENTIFIER9 identifier{};
        LUID luid{};
        ASSERT_EQ(pFactory->GetAdapterIdentifier(i, 0, &identifier), S_OK);
        ASSERT_EQ(pFactory->GetAdapterLUID(i, &luid), S_OK);
        EXPECT_EQ(adapters[i].m_Description, identifier.Description);
        EXPECT_EQ(adapters[i].m_Driver, identifier.Driver);
        EXPECT_EQ(adapters[i].m_VendorId, identifier.VendorId);
        EXPECT_EQ(adapters[i].m_Luid.LowPart, luid.LowPart);
        EXPECT_EQ(adapters[i].m_Luid.HighPart, luid.HighPart);
    }
    pFactory->Release();
}

TEST(HostAdapterList, ListAdapters_NoDirect3D_IsOneLine)
{
    FakeDevice device;
    FakeFactory factory(device);
    factory.m_hCreateResult = kRefused;
    try
    {
        HostListAdapters();
        FAIL() << "listed";
    }
    catch (const HostError& error)
    {
        EXPECT_STREQ(error.what(), "Direct3DCreate9Ex failed: 0x8876086A");
    }
}
