// Device objects on a fake delegated device and a fake kernel, for unit tests.
//
//     class DrawTest : public DeviceFixture {};
//     TEST_F(DrawTest, ...) { EXPECT_EQ(Device().DrawPrimitive(&draw), S_OK); DeviceLines() ... }
//
// The driver's own start-up code runs: threads, hidden window, escapes. Only Direct3DCreate9Ex is replaced, in the
// test program's import table.
#pragma once

#include "FakeFactory.h"
#include "FakeKernel.h"
#include "TraceAt.h"

#include "adapter/UMDAdapter.h"
#include "device/UMDDdiDevice.h"

#include <gtest/gtest.h>

#include <memory>

namespace tesslo::test
{

/// A device that the test starts and stops itself, as the adapter would.
class UnstartedDeviceFixture : public testing::Test
{
protected:
    std::unique_ptr<UMDDdiDevice> MakeDevice();

    void ForgetCalls();
    /// All calls since the last ForgetCalls.
    Lines DeviceLines() const { return m_Fake.Lines(); }
    Lines KernelLines() const { return m_Kernel.Lines(); }
    /// The trace of this thread since then.
    Lines Trace() const { return m_Trace.LinesOfThisThread(); }

    TraceMask m_Mask{kAllLevels};
    TraceCapture m_Trace;
    FakeDevice m_Fake;
    FakeFactory m_Factory{m_Fake};
    FakeKernel m_Kernel;
    D3DDDI_ADAPTERCALLBACKS m_AdapterCallbacks{};
    D3DDDI_DEVICECALLBACKS m_Callbacks = FakeKernel::Callbacks();
    UMDAdapter m_Adapter{m_Kernel.RuntimeHandle(), 0x2003, &m_AdapterCallbacks};
};

/// A started device. Calls and lines of the start are forgotten before the test begins.
class DeviceFixture : public UnstartedDeviceFixture
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// For tests that change callbacks or fakes before the device starts.
    virtual void PrepareStart() {}

    UMDDdiDevice& Device() { return *m_pDevice; }
    /// The device handle that the runtime holds.
    HANDLE DeviceHandle() { return m_pDevice.get(); }

    std::unique_ptr<UMDDdiDevice> m_pDevice;
};

}  // namespace tesslo::test
