// Creating and closing devices on an adapter object; the DLL's own tests open it from outside.
#include "adapter/UMDAdapter.h"

#include "FakeFactory.h"
#include "FakeKernel.h"
#include "TraceCapture.h"
#include "TraceMask.h"
#include "TraceText.h"

#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <utility>
#include <vector>

using namespace tesslo::test;

namespace
{
/// How a device object begins. No operation tells its version.
struct DeviceBegin
{
    HANDLE m_hDevice;
    UINT m_Kind;
    UINT m_Version;
};

class UMDAdapterTest : public testing::Test
{
protected:
    UMDAdapterTest() { Open(); }

    ~UMDAdapterTest() override
    {
        if (m_hAdapter)
            CloseAdapter(m_hAdapter);
    }

    void Open()
    {
        D3DDDI_ADAPTERCALLBACKS callbacks{};
        D3DDDIARG_OPENADAPTER open = {m_Kernel.RuntimeHandle(), 9, 0x1234, &callbacks, &m_AdapterFuncs, 0};
        EXPECT_EQ(OpenAdapter(&open), S_OK);
        m_hAdapter = open.hAdapter;
    }

    /// @return the driver's handle of the device; the runtime's own where it is refused.
    HANDLE CreateDevice(HRESULT expected = S_OK)
    {
        D3DDDIARG_CREATEDEVICE create{};
        create.hDevice = m_Kernel.RuntimeHandle();
        create.Interface = 7;
        create.Version = 0x5678;
        create.pCallbacks = &m_Callbacks;
        create.pDeviceFuncs = &m_DeviceFuncs;
        EXPECT_EQ(m_AdapterFuncs.pfnCreateDevice(m_hAdapter, &create), expected);
        return create.hDevice;
    }

    TraceMask m_Mask{0x7FF};
    TraceCapture m_Trace;
    FakeDevice m_Fake;
    FakeFactory m_Factory{m_Fake};
    FakeKernel m_Kernel;
    D3DDDI_DEVICECALLBACKS m_Callbacks = FakeKernel::Callbacks();
    D3DDDI_ADAPTERFUNCS m_AdapterFuncs{};
    D3DDDI_DEVICEFUNCS m_DeviceFuncs{};
    HANDLE m_hAdapter = nullptr;
};

TEST_F(UMDAdapterTest, CreateDevice_OtherVersionInTheRecord_PassesTheAdaptersOwnOn)
{
    m_Trace.Clear();
    const HANDLE hDevice = CreateDevice();
    const std::string line = Text("=> UMDAdapter::DdiCreateDevice hDevice: 0x%x Interface: 7 Version:22136\n",
        UMDLow32(m_Kernel.RuntimeHandle()));
    EXPECT_EQ(m_Trace.Lines().front(), line);
    const auto& begin = *static_cast<const DeviceBegin*>(hDevice);
    EXPECT_EQ(begin.m_hDevice, m_Kernel.RuntimeHandle());
    EXPECT_EQ(begin.m_Kind, 5U);
    EXPECT_EQ(begin.m_Version, 0x1234U);
}

TEST_F(UMDAdapterTest, CloseAdapter_SecondDeviceReplacedTheFirst_EndsTheSecondOnly)
{
    const std::unique_ptr<UMDDdiDevice> pFirst(&ToDevice(CreateDevice()));
    const HANDLE hSecond = CreateDevice();
    EXPECT_NE(hSecond, pFirst.get());
    EXPECT_EQ(static_cast<UMDAdapter*>(m_hAdapter)->Device(), hSecond);
    EXPECT_EQ(m_Fake.ReferenceCount(), 3U);
    m_Trace.Clear();

    EXPECT_EQ(CloseAdapter(std::exchange(m_hAdapter, nullptr)), S_OK);

    EXPECT_EQ(m_Trace.Count(">>> UMDDdiDevice::~UMDDdiDevice\n"), 1U);
    EXPECT_EQ(m_Fake.ReferenceCount(), 2U);
    EXPECT_NE(pFirst->GetDevice(), nullptr) << "lives on, its threads with it";
    pFirst->DestroyThreads();
    EXPECT_EQ(m_Fake.ReferenceCount(), 1U);
}

TEST_F(UMDAdapterTest, Life_DeviceRefused_EachLineHasItsLevel)
{
    const std::pair<const char*, UINT> expected[] = {
        {">>> OpenAdapter Interface: 9 Version: 4660 Driver Version: 0\n", UMDTRACE_DDI | UMDTRACE_ENTER},
        {">>> UMDAdapter::UMDAdapter ", UMDTRACE_DETAIL},
        {"=> UMDAdapter::DdiCreateDevice hDevice: ", UMDTRACE_DDI},
        {"UMDAdapter::CreateDevice pCtxt->Initialize failed!\n", UMDTRACE_ERROR},
        {">>> CloseAdapter\n", UMDTRACE_DDI | UMDTRACE_ENTER},
        {">>> UMDAdapter::~UMDAdapter ", UMDTRACE_DETAIL},
    };
    CloseAdapter(std::exchange(m_hAdapter, nullptr));
    m_Kernel.Fail("pfnCreateContextCb", E_OUTOFMEMORY);
    std::vector<UINT> levels(std::size(expected));
    for (UINT level = 1; level <= 0x400; level <<= 1)
    {
        const TraceMask only(level);
        m_Trace.Clear();
        Open();
        EXPECT_EQ(CreateDevice(E_FAIL), m_Kernel.RuntimeHandle()) << "the record is left as it is";
        CloseAdapter(std::exchange(m_hAdapter, nullptr));
        for (size_t i = 0; i < levels.size(); ++i)
            levels[i] |= m_Trace.LinesContaining(expected[i].first).empty() ? 0 : level;
    }
    for (size_t i = 0; i < levels.size(); ++i)
        EXPECT_EQ(levels[i], expected[i].second) << expected[i].first;
}
}  // namespace
