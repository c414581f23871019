#include "DeviceFixture.h"

#include "Waiting.h"

namespace tesslo::test
{

std::unique_ptr<UMDDdiDevice> UnstartedDeviceFixture::MakeDevice()
{
    return std::make_unique<UMDDdiDevice>(
        m_Kernel.RuntimeHandle(), 9, 0x2003, &m_Adapter, m_Kernel.RuntimeHandle(), &m_Callbacks);
}

void UnstartedDeviceFixture::ForgetCalls()
{
    m_Fake.ClearLines();
    m_Kernel.ClearLines();
    m_Trace.Clear();
}

void DeviceFixture::SetUp()
{
    PrepareStart();
    m_pDevice = MakeDevice();
    ASSERT_TRUE(m_pDevice->Initialize());
    // Each frame-buffer thread prints one line when it begins; none of them may come into the test's own.
    ASSERT_TRUE(WaitUntil(
        [this] { return m_Trace.Count(">>> UMDThreadFrameBuffer::Run\n") == size_t{UMD_VIDPN_SOURCE_COUNT}; }));
    ForgetCalls();
}

void DeviceFixture::TearDown()
{
    if (m_pDevice)
        m_pDevice->DestroyThreads();
    m_pDevice.reset();
}

}  // namespace tesslo::test
