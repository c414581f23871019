#include "SupportProgram.h"

#include "Waiting.h"

#include <gtest/gtest.h>

namespace tesslo::test
{

namespace
{

/// While it lives, the driver finds the fake device, on the one adapter that there is. Null without a fake device.
std::unique_ptr<FakeFactory> MakeFactory(const HostDriver& driver, FakeDevice* pDelegated, const char* pAdapterDriver)
{
    if (!pDelegated)
        return nullptr;
    auto pFactory = std::make_unique<FakeFactory>(*pDelegated, driver.Module());
    pFactory->m_Adapters.front().m_Driver = pAdapterDriver;
    return pFactory;
}

}  // namespace

SupportProgram::SupportProgram(
    DWORD mask, const std::optional<std::wstring>& clientLibrary, FakeDevice* pDelegated, const char* pAdapterDriver)
    : m_Driver({L"TessloWddmUmode.dll", clientLibrary, mask, false}),
      m_pFactory(MakeFactory(m_Driver, pDelegated, pAdapterDriver)),
      m_Watch(m_Driver.Module(), m_Driver.ClientLibrary(), m_Delivery), m_Adapter(m_Driver, m_Kernel),
      m_Device(m_Adapter)
{
    m_Delivery.KeepFrames();
}

void SupportProgram::MakeScreen(UINT width, UINT height, D3DDDI_ROTATION rotation)
{
    m_pScreen = m_Device.CreatePrimary(width, height, kSource, rotation);
}

bool SupportProgram::Flip()
{
    m_Delivery.Presenting(kSource);
    try
    {
        m_Device.Flip(*m_pScreen);
        return true;
    }
    catch (const HostError&)
    {
        return false;
    }
}

void SupportProgram::FlipUntilRefused()
{
    EXPECT_TRUE(WaitUntil([this] { return !Flip(); }));
}

void SupportProgram::Show()
{
    const UINT64 delivered = Delivered();
    ASSERT_TRUE(Flip());
    ASSERT_TRUE(m_Delivery.WaitDelivered(kSource, delivered + 1, kLong));
}

}  // namespace tesslo::test
