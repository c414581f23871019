#include "SupportProgram.h"

#include "Waiting.h"

#include <gtest/gtest.h>

namespace tesslo::test
{

namespace
{

/// From here on the driver finds the fake device, on the one adapter that there is.
void Replace(
    std::optional<FakeFactory>& factory, const HostDriver& driver, FakeDevice* pDelegated, const char* pAdapterDriver)
{
    if (!pDelegated)
        return;
    factory.emplace(*pDelegated, driver.Module());
    factory->m_Adapters.front().m_Driver = pAdapterDriver;
}

}  // namespace

SupportProgram::SupportProgram(
    DWORD mask, const std::optional<std::wstring>& clientLibrary, FakeDevice* pDelegated, const char* pAdapterDriver)
    : m_Driver({L"TessloWddmUmode.dll", clientLibrary, mask, false}),
      m_Watch(m_Driver.Module(), m_Driver.ClientLibrary(), m_Delivery),
      m_Adapter((Replace(m_Factory, m_Driver, pDelegated, pAdapterDriver), m_Driver), m_Kernel), m_Device(m_Adapter)
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
