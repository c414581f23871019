// The level of every line of the GPU thread and of the delegated device.
#include "gpu/UMDThreadGpuD3D9.h"

#include "FakeFactory.h"
#include "TraceCapture.h"
#include "TraceLevels.h"

#include "output/UMDClientLibrary.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
class UMDGpuTraceTest : public testing::Test
{
protected:
    TraceCapture m_Trace;
    FakeDevice m_Device;
    FakeFactory m_Factory{m_Device};
};

TEST_F(UMDGpuTraceTest, Thread_Life_EachLineHasItsLevel)
{
    Lines lines = LevelledTraceOfAllThreads([] {
        UMDThreadGpuD3D9 thread;
        thread.ThreadGuiStart(UMDClientLibraryModule());
        thread.ThreadGuiRequestExit();
        thread.Wait(INFINITE);
    });
    // Which messages a window gets is the system's affair.
    const size_t messages = std::erase_if(lines,
        [](const std::string& line) { return line.starts_with("0x80 >>> UMDThreadGpuD3D9::InternalGuiWndMsgProc "); });
    EXPECT_GT(messages, 0U);
    std::erase_if(lines, [](const std::string& line) {
        return line.find("UMDThreadGpuD3D9") == std::string::npos ||
               (line.starts_with("0x280 ") && line.ends_with("MSG received\n"));
    });
    EXPECT_EQ(lines, (Lines{"0x280 UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventRequestExit\n",
                         "0x80 <<< UMDThreadGpuD3D9::Run\n", "0x80 >>> UMDThreadGpuD3D9::InternalCreateDevice\n",
                         "0x80 >>> UMDThreadGpuD3D9::InternalDestroyDevice\n", "0x80 >>> UMDThreadGpuD3D9::Run\n",
                         "0x80 >>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n", "0x80 UMDThreadGpuD3D9::ThreadGuiStart\n",
                         "0x80 UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "0x80 UMDThreadGpuD3D9::~UMDThreadGpuD3D9\n"}));
}

TEST_F(UMDGpuTraceTest, Device_CreatedAndRefused_EachLineHasItsLevel)
{
    EXPECT_EQ(LevelledTrace([this] {
        UMDGpuD3D9 gpu(nullptr);
        EXPECT_EQ(gpu.Create(nullptr), S_OK);
        gpu.Destroy();
        m_Device.Fail("d3d9.CreateDeviceEx", D3DERR_NOTAVAILABLE);
        EXPECT_EQ(gpu.Create(nullptr), D3DERR_NOTAVAILABLE);
        m_Device.Fail("d3d9.GetAdapterIdentifier", D3DERR_INVALIDCALL);
        EXPECT_EQ(gpu.Create(nullptr), D3DERR_INVALIDCALL);
        m_Device.ClearScripts();
    }),
        (Lines{"0x1 UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
            "0x200 UMDGpuD3D9::Create  m_pD3DDevice9Ex->ShowCursor WasPreviouslyVisible:0\n",
            "0x1 UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
            "0x1 InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x8876086a\n",
            "0x1 UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
            "0x1 InitD3D  GetAdapterIdentifier failed! hResult:0x8876086c\n"}));
}

TEST_F(UMDGpuTraceTest, Device_NoFactory_EachLineIsAnError)
{
    m_Factory.m_hCreateResult = D3DERR_NOTAVAILABLE;
    EXPECT_EQ(LevelledTrace([] {
        UMDGpuD3D9 gpu(nullptr);
        EXPECT_EQ(gpu.Create(nullptr), E_FAIL);
    }),
        (Lines{"0x1 InitD3D  Direct3DCreate9 failed! hResult:0x8876086a\n",
            "0x1 UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
            "0x1 InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x80004005\n"}));
}
}  // namespace
