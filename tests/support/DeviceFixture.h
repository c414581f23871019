// A started device object on a fake delegated device and a fake kernel, for unit tests.
//
//     class DrawTest : public DeviceFixture {};
//     TEST_F(DrawTest, ...) { EXPECT_EQ(Device().DrawPrimitive(&draw), S_OK); m_Fake.Lines() ... }
//
// The driver's own start-up code runs: threads, hidden window, escapes. Only Direct3DCreate9Ex is replaced, in the
// test program's import table. Records and lines of the start are forgotten before the test begins.
#pragma once

#include "FakeFactory.h"
#include "FakeKernel.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include "adapter/UMDAdapter.h"
#include "device/UMDDdiDevice.h"

#include <gtest/gtest.h>

#include <memory>

namespace tesslo::test
{

class DeviceFixture : public testing::Test
{
protected:
    /// Every trace level but the log file.
    static constexpr UINT kAllLevels = 0x7FF;

    void SetUp() override
    {
        m_Callbacks = FakeKernel::Callbacks();
        PrepareStart();
        m_pAdapter = std::make_unique<UMDAdapter>(m_Kernel.RuntimeHandle(), 0x2003, &m_AdapterCallbacks);
        m_pDevice = std::make_unique<UMDDdiDevice>(
            m_Kernel.RuntimeHandle(), 9, 0x2003, m_pAdapter.get(), m_Kernel.RuntimeHandle(), &m_Callbacks);
        ASSERT_TRUE(m_pDevice->Initialize());
        WaitForWorkers();
        ForgetCalls();
    }

    void TearDown() override
    {
        if (m_pDevice)
            m_pDevice->DestroyThreads();
        m_pDevice.reset();
        m_pAdapter.reset();
    }

    /// For tests that change callbacks or fakes before the device starts.
    virtual void PrepareStart() {}

    /// Each frame-buffer thread prints one line when it begins; none of them may come into the test's own.
    void WaitForWorkers()
    {
        constexpr size_t kWorkers = 6;
        constexpr DWORD kLong = 30000;  // milliseconds; reached only by a failing test
        const DWORD begin = GetTickCount();
        while (m_Trace.Count(">>> UMDThreadFrameBuffer::Run\n") < kWorkers && GetTickCount() - begin < kLong)
            Sleep(1);
        ASSERT_EQ(m_Trace.Count(">>> UMDThreadFrameBuffer::Run\n"), kWorkers);
    }

    void ForgetCalls()
    {
        m_Fake.ClearLines();
        m_Kernel.ClearLines();
        m_Trace.Clear();
    }

    UMDDdiDevice& Device() { return *m_pDevice; }
    /// The device handle that the runtime holds.
    HANDLE DeviceHandle() { return m_pDevice.get(); }

    TraceMask m_Mask{kAllLevels};
    TraceCapture m_Trace;
    FakeDevice m_Fake;
    FakeFactory m_Factory{m_Fake};
    FakeKernel m_Kernel;
    D3DDDI_ADAPTERCALLBACKS m_AdapterCallbacks{};
    D3DDDI_DEVICECALLBACKS m_Callbacks{};
    std::unique_ptr<UMDAdapter> m_pAdapter;
    std::unique_ptr<UMDDdiDevice> m_pDevice;
};

}  // namespace tesslo::test
