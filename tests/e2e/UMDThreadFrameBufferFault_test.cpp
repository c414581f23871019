// The real DLL with a client library that comes to harm in its exports, and with a delegated device that does.
#include "ClientDeed.h"
#include "DriverDll.h"
#include "FakeFactory.h"
#include "Faults.h"
#include "ImpatientWait.h"
#include "RegistryOverride.h"
#include "TraceCapture.h"
#include "Waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>

using namespace tesslo::test;

namespace
{
constexpr UINT kIndex = 0;   ///< the first that closing waits for
constexpr UINT kSource = 7;  ///< what the kernel-mode driver calls it
constexpr char kAccessViolation[] = "EXCEPTION_ACCESS_VIOLATION\n";
constexpr char kExited[] = "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n";

/// A device of the DLL on the fake delegated device, whose errors are traced.
class ClientFaultTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Kernel.SetVidPnSourceId(kIndex, kSource);
        m_Registry.SetTraceMask(0x1);
        m_Registry.SetClientDllName(m_Client.DllName());
        m_Driver.emplace();
        m_Factory.emplace(m_Fake, m_Driver->Module());
    }

    void TearDown() override
    {
        m_Factory.reset();
        m_Driver.reset();
    }

    void Let(TestClientExport of, TestClientDeedKind kind, HANDLE hEvent = nullptr)
    {
        SetDeed(m_Client, of, {kind, 0, hEvent});
    }

    void Open()
    {
        ASSERT_EQ(m_Driver->OpenAdapter(m_Kernel), S_OK);
        ASSERT_EQ(m_Driver->CreateDevice(m_Kernel), S_OK);
    }

    void CreatePrimary()
    {
        D3DDDI_SURFACEINFO surface{};
        surface.Width = 16;
        surface.Height = 8;
        D3DDDIARG_CREATERESOURCE create{};
        create.Format = D3DDDIFMT_X8R8G8B8;
        create.pSurfList = &surface;
        create.SurfCount = 1;
        create.VidPnSourceId = kIndex;
        create.hResource = this;
        create.Flags.RenderTarget = 1;
        create.Flags.Primary = 1;
        create.Rotation = D3DDDI_ROTATION_IDENTITY;
        ASSERT_EQ(m_Driver->m_DeviceFuncs.pfnCreateResource(m_Driver->m_hDevice, &create), S_OK);
        m_hPrimary = create.hResource;
    }

    HRESULT Flip()
    {
        D3DDDIARG_PRESENT present{};
        present.hSrcResource = m_hPrimary;
        present.Flags.Flip = 1;
        return m_Driver->m_DeviceFuncs.pfnPresent(m_Driver->m_hDevice, &present);
    }

    /// Flips until the source's worker is known to have ended, which it does by itself.
    void FlipUntilRefused()
    {
        EXPECT_TRUE(WaitUntil([&] { return FAILED(Flip()); }));
        EXPECT_EQ(m_Trace.Count(kExited), 1u);
    }

    void Close()
    {
        m_Driver->m_DeviceFuncs.pfnDestroyResource(m_Driver->m_hDevice, m_hPrimary);
        EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    }

    RegistryOverride m_Registry;
    TestClient m_Client;
    FakeDevice m_Fake;
    FakeKernel m_Kernel;
    TraceCapture m_Trace;
    std::optional<DriverDll> m_Driver;
    std::optional<FakeFactory> m_Factory;  ///< patches the DLL: goes first
    HANDLE m_hPrimary = nullptr;
};

struct FaultCase
{
    TestClientExport m_Export;
    const char* m_pName;
    const char* m_pCalled;  ///< of the library, until the worker's end
};

class ClientExportFaultTest : public ClientFaultTest, public testing::WithParamInterface<FaultCase>
{
protected:
    std::string Called() const
    {
        std::string called;
        for (const std::string& line : m_Client.Lines())
            if (!line.starts_with("Reserved"))
                called += line.substr(0, line.find('(') + 1);
        return called;
    }
};

TEST_P(ClientExportFaultTest, Flip_ExportFaults_EndsTheSourceAloneAndSaysWhose)
{
    Let(GetParam().m_Export, TEST_CLIENT_FAULT);
    Open();
    CreatePrimary();
    if (GetParam().m_Export == TEST_CLIENT_UNPLUG)
    {
        ASSERT_EQ(Flip(), S_OK);
        ASSERT_TRUE(m_Client.WaitForUpdates(1));
        m_Trace.Clear();
    }
    else
        FlipUntilRefused();
    Close();
    EXPECT_EQ(Called(), GetParam().m_pCalled);
    EXPECT_EQ(m_Trace.Count(kAccessViolation), 1u);
    EXPECT_EQ(m_Trace.LinesContaining("Exception in client library!"),
        Lines{std::string("Exception in client library! ") + GetParam().m_pName + " of source 7 failed!\n"});
}

INSTANTIATE_TEST_SUITE_P(Exports, ClientExportFaultTest,
    testing::Values(FaultCase{TEST_CLIENT_PLUG, "TessloVirtualMonitorPlug", "Plug("},
        FaultCase{TEST_CLIENT_UPDATE, "TessloVirtualMonitorUpdate", "Plug(Update(Unplug("},
        FaultCase{TEST_CLIENT_UNPLUG, "TessloVirtualMonitorUnplug", "Plug(Update(Unplug("}),
    [](const auto& info) { return std::string(info.param.m_pName); });

TEST_F(ClientFaultTest, ReservedExports_Fault_TheDeviceComesFromAnAdapterAndFramesGoOn)
{
    Let(TEST_CLIENT_RESERVED1, TEST_CLIENT_FAULT);
    Let(TEST_CLIENT_RESERVED2, TEST_CLIENT_FAULT);
    Open();
    EXPECT_EQ(m_Fake.Calls("d3d9.CreateDeviceEx"), 1u);
    CreatePrimary();
    ASSERT_EQ(Flip(), S_OK);
    EXPECT_TRUE(m_Client.WaitForUpdates(1));
    EXPECT_EQ(m_Trace.Count("Exception in client library! TessloVirtualMonitorReserved1 failed!\n"), 1u);
    EXPECT_EQ(m_Trace.Count("Exception in client library! TessloVirtualMonitorReserved2 failed!\n"), 1u);
    EXPECT_EQ(m_Trace.LinesContaining("Exception in DDI function!"), Lines{});
    Close();
}

TEST_F(ClientFaultTest, Update_EndsItsThread_LaterFlipsFailAndClosingReturns)
{
    Let(TEST_CLIENT_UPDATE, TEST_CLIENT_END_THREAD);
    Open();
    CreatePrimary();
    FlipUntilRefused();
    EXPECT_EQ(Flip(), E_FAIL);
    EXPECT_EQ(m_Trace.Count("Thread ended in client library! TessloVirtualMonitorUpdate of source 7 failed!\n"), 1u);
    EXPECT_EQ(m_Client.Calls("Update"), 1u);
    EXPECT_EQ(m_Client.Calls("Unplug"), 0u);
    Close();
}

TEST_F(ClientFaultTest, Reserved1_EndsItsThread_TheDeviceIsCreatedWithoutADelegatedOne)
{
    Let(TEST_CLIENT_RESERVED1, TEST_CLIENT_END_THREAD);
    Open();
    EXPECT_EQ(m_Fake.Calls("d3d9.CreateDeviceEx"), 0u);
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
}

TEST_F(ClientFaultTest, CloseAdapter_UpdateDoesNotReturn_SaysWhoHangsUntilItReturns)
{
    const HANDLE hRelease = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    Let(TEST_CLIENT_UPDATE, TEST_CLIENT_HANG, hRelease);
    Open();
    CreatePrimary();
    ASSERT_EQ(Flip(), S_OK);
    ASSERT_TRUE(m_Client.WaitForUpdates(1));
    m_Trace.Clear();
    {
        const ImpatientWait impatient(m_Driver->Module(), 3);
        std::atomic<bool> closed = false;
        std::thread owner([&] {
            Close();
            closed = true;
        });
        EXPECT_TRUE(ImpatientWait::WaitUntilOver());
        EXPECT_FALSE(closed);
        SetEvent(hRelease);
        owner.join();
    }
    Lines lines;
    for (const char* pSeconds : {"5", "65", "125"})
        lines.push_back(std::string("UMDThreadFrameBuffer::Wait source 7 has not ended after ") + pSeconds +
                        " s, it is in TessloVirtualMonitorUpdate\n");
    EXPECT_EQ(m_Trace.LinesContaining("Wait"), lines);
    EXPECT_EQ(m_Client.Lines().back(), "Unplug(0, 7)");
    CloseHandle(hRelease);
}

TEST_F(ClientFaultTest, LockOfTheCopy_Faults_EndsTheSourceAndClosesItsConnection)
{
    Open();
    CreatePrimary();
    m_Fake.On("surface.LockRect", RaiseAccessViolation);
    FlipUntilRefused();
    EXPECT_EQ(m_Trace.Count(kAccessViolation), 1u);
    EXPECT_EQ(m_Trace.Count("Exception in thread! UMDThreadFrameBuffer::Run of source 7 failed!\n"), 1u);
    EXPECT_EQ(m_Client.Calls("Update"), 0u);
    EXPECT_EQ(m_Client.LinesContaining("Unplug"), Lines{"Unplug(0, 7)"});
    Close();
}

TEST_F(ClientFaultTest, CreateDevice_DelegatedDeviceFaults_ReturnsAndTheNextOneWorks)
{
    m_Fake.On("d3d9.CreateDeviceEx", RaiseAccessViolation);
    Open();
    EXPECT_EQ(m_Trace.Count(kAccessViolation), 1u);
    EXPECT_EQ(m_Trace.Count("Exception in thread! UMDThreadGpuD3D9::InternalCreateDevice failed!\n"), 1u);
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
    m_Fake.ClearScripts();
    Open();
    CreatePrimary();
    EXPECT_EQ(Flip(), S_OK);
    EXPECT_TRUE(m_Client.WaitForUpdates(1));
    Close();
}
}  // namespace
