// The adapter through the built DLL: opening, creating devices, closing.
#include "DriverDll.h"
#include "FakeFactory.h"
#include "RegistryOverride.h"
#include "TestClient.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
constexpr UINT kVersionWin7 = 0x2003;

/// The driver loaded with every level on; the test client library hands out the fake device.
class UMDAdapterTest : public testing::Test
{
protected:
    UMDAdapterTest()
    {
        m_Client.SetDevice(&m_Fake);
        m_Registry.SetTraceMask(kAllLevels);
        m_Registry.SetClientDllName(m_Client.DllName());
        m_pDriver = std::make_unique<DriverDll>();
        m_Trace.Clear();
    }

    ~UMDAdapterTest() override { m_pDriver.reset(); }

    /// Lines of this thread that contain the text.
    Lines Find(const std::string& text) const { return Containing(m_Trace.LinesOfThisThread(), text); }

    RegistryOverride m_Registry;
    TraceCapture m_Trace;
    FakeDevice m_Fake;
    TestClient m_Client;
    FakeKernel m_Kernel;
    std::unique_ptr<DriverDll> m_pDriver;
};

std::string InstanceOf(const Lines& lines)
{
    const std::string start = ">>> UMDAdapter::UMDAdapter ";
    return lines.size() == 1 ? lines[0].substr(start.size(), lines[0].find(" 0x") - start.size()) : "";
}

}  // namespace

TEST_F(UMDAdapterTest, OpenAdapter_AnyInterfaceAndVersion_AnswersTheWindows7Version)
{
    const struct
    {
        UINT m_Interface;
        UINT m_Version;
    } cases[]{{9, kVersionWin7}, {0, 0}, {7, 0x1000B}, {123456, 0x7FFFFFFF}};
    for (const auto& opened : cases)
    {
        m_Trace.Clear();
        EXPECT_EQ(m_pDriver->OpenAdapter(m_Kernel, opened.m_Interface, opened.m_Version), S_OK);
        EXPECT_EQ(m_pDriver->m_DriverVersion, kVersionWin7);
        EXPECT_NE(m_pDriver->m_AdapterFuncs.pfnGetCaps, nullptr);
        EXPECT_NE(m_pDriver->m_AdapterFuncs.pfnCreateDevice, nullptr);
        EXPECT_NE(m_pDriver->m_AdapterFuncs.pfnCloseAdapter, nullptr);
        EXPECT_EQ(m_Trace.LinesOfThisThread().front(),
            ">>> OpenAdapter Interface: " + std::to_string(opened.m_Interface) +
                " Version: " + std::to_string(opened.m_Version) + " Driver Version: 0\n");
        EXPECT_EQ(m_pDriver->CloseAdapter(), S_OK);
    }
}

TEST_F(UMDAdapterTest, OpenAdapter_TwiceThenClosedAndAgain_CountsInstances1To3)
{
    Lines instances;
    for (int i = 0; i < 3; i++)
    {
        m_Trace.Clear();
        ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
        instances.push_back(InstanceOf(Find(">>> UMDAdapter::UMDAdapter ")));
        if (i == 1)
            m_pDriver->CloseAdapter();
    }
    EXPECT_EQ(instances, (Lines{"1", "2", "3"}));
}

TEST_F(UMDAdapterTest, CloseAdapter_NullHandle_AnswersSuccessWithItsEntryLineOnly)
{
    ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
    m_Trace.Clear();
    EXPECT_EQ(m_pDriver->m_AdapterFuncs.pfnCloseAdapter(nullptr), S_OK);
    EXPECT_EQ(m_Trace.LinesOfThisThread(), Lines{">>> CloseAdapter\n"});
}

TEST_F(UMDAdapterTest, CloseAdapter_WithoutDevice_EndsOnlyTheAdapter)
{
    ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
    m_Trace.Clear();
    EXPECT_EQ(m_pDriver->CloseAdapter(), S_OK);
    EXPECT_EQ(m_Trace.LinesOfThisThread(), (Lines{">>> CloseAdapter\n", ">>> UMDAdapter::~UMDAdapter 1\n"}));
    EXPECT_EQ(m_Kernel.Lines(), Lines{});
}

TEST_F(UMDAdapterTest, CreateDevice_Started_HandsOutADeviceThatCloseAdapterStops)
{
    ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
    ASSERT_EQ(m_pDriver->CreateDevice(m_Kernel), S_OK);
    EXPECT_NE(m_pDriver->m_hDevice, m_Kernel.RuntimeHandle());
    EXPECT_EQ(m_Kernel.ContextCount(), 1U);
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), 6U);
    EXPECT_EQ(m_Fake.ReferenceCount(), 2U);
    const D3DDDIARG_RENDERSTATE state{D3DDDIRS_ZENABLE, 1};
    EXPECT_EQ(m_pDriver->m_DeviceFuncs.pfnSetRenderState(m_pDriver->m_hDevice, &state), S_OK);
    EXPECT_EQ(m_Fake.LinesContaining("SetRenderState"), Lines{"SetRenderState(7, 1)"});

    EXPECT_EQ(m_pDriver->m_DeviceFuncs.pfnDestroyDevice(m_pDriver->m_hDevice), S_OK);
    EXPECT_EQ(m_Kernel.ContextCount(), 0U);
    EXPECT_EQ(m_Fake.ReferenceCount(), 2U) << "the device lives until the adapter is closed";
    EXPECT_EQ(m_pDriver->CloseAdapter(), S_OK);
    EXPECT_EQ(m_Fake.ReferenceCount(), 1U);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(UMDAdapterTest, CreateDevice_ContextRefused_FailsAndLeavesTheRecord)
{
    m_Kernel.Fail("pfnCreateContextCb", E_OUTOFMEMORY);
    ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
    m_Trace.Clear();
    EXPECT_EQ(m_pDriver->CreateDevice(m_Kernel), E_FAIL);
    EXPECT_EQ(m_pDriver->m_hDevice, nullptr);
    EXPECT_EQ(m_pDriver->m_DeviceFuncs.pfnSetRenderState, nullptr);
    EXPECT_EQ(Find("failed!"), (Lines{"UMDDdiDevice::CreateContext pfnCreateContextCb failed! 0x8007000e\n",
                                   "UMDDdiDevice::Initialize CreateContext failed!\n",
                                   "UMDAdapter::CreateDevice pCtxt->Initialize failed!\n"}));
    EXPECT_EQ(Find(">>> UMDDdiDevice::~UMDDdiDevice").size(), 1U);
    EXPECT_EQ(m_pDriver->CloseAdapter(), S_OK);
}

TEST_F(UMDAdapterTest, CreateDevice_NoContextCallback_GivesAWorkingDeviceWithoutContext)
{
    D3DDDI_DEVICECALLBACKS callbacks = FakeKernel::Callbacks();
    callbacks.pfnCreateContextCb = nullptr;
    ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
    EXPECT_EQ(m_pDriver->CreateDevice(m_Kernel, callbacks), S_OK);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::CreateContext m_d3dCallbacks.pfnCreateContextCb is NULL!\n"), 1U);
    EXPECT_EQ(m_pDriver->m_DeviceFuncs.pfnFlush(m_pDriver->m_hDevice), S_OK);
    EXPECT_EQ(m_Kernel.LinesContaining("pfnRenderCb"),
        Lines{"pfnRenderCb(length:0 offset:0 allocations:0 patches:0 context:0)"});
}

TEST_F(UMDAdapterTest, CreateDevice_MemoryRunsOut_FailsWithItsLine)
{
    ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
    m_Trace.Clear();
    {
        FailNthAllocation fail(1, m_pDriver->Module());
        EXPECT_EQ(m_pDriver->CreateDevice(m_Kernel), E_FAIL);
    }
    EXPECT_EQ(Find("failed!"), Lines{"UMDAdapter::CreateDevice new UMDDdiDevice failed!\n"});
    EXPECT_EQ(m_Kernel.Lines(), Lines{});
}

TEST_F(UMDAdapterTest, OpenAdapter_MemoryRunsOut_FailsAndLeavesTheRecord)
{
    FailNthAllocation fail(1, m_pDriver->Module());
    EXPECT_EQ(m_pDriver->OpenAdapter(m_Kernel), E_FAIL);
    EXPECT_EQ(m_pDriver->m_AdapterFuncs.pfnGetCaps, nullptr);
}
