// Life of the device object: context, threads, escapes, and a start that fails half-way.
#include "DeviceFixture.h"
#include "ImportPatch.h"
#include "TraceLevels.h"
#include "tools/process/ResourceCounts.h"

#include "device/entries/UMDDdiEntries.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

using namespace tesslo::test;

namespace
{
class DeviceLife : public UnstartedDeviceFixture
{
protected:
    DeviceLife()
    {
        g_DebugLevelUMD = UMDTRACE_ERROR | UMDTRACE_ENTER | UMDTRACE_LEAVE;
        m_Trace.Clear();
    }
};

TEST_F(DeviceLife, Initialize_AllWell_TracesContextThenThreads)
{
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    EXPECT_THAT(
        m_Trace.LinesOfThisThread(), ElementsAre(">>> UMDDdiDevice::UMDDdiDevice\n", ">>> UMDDdiDevice::Initialize\n",
                                         ">>> UMDDdiDevice::CreateContext\n", "<<< UMDDdiDevice::CreateContext\n",
                                         ">>> UMDDdiDevice::CreateThreads\n", "<<< UMDDdiDevice::CreateThreads\n",
                                         "<<< UMDDdiDevice::Initialize\n"));
    pDevice->DestroyThreads();
}

TEST_F(DeviceLife, Initialize_AllWell_AsksForTheContextThenForSixSources)
{
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    EXPECT_THAT(m_Kernel.Lines(), ElementsAre("pfnCreateContextCb(node:0 affinity:0 flags:0x0 data:0)",
                                      "pfnEscapeCb(size:40 device:0 flags:0x0 context:0 command:0 index:0)",
                                      "pfnEscapeCb(size:40 device:0 flags:0x0 context:0 command:0 index:1)",
                                      "pfnEscapeCb(size:40 device:0 flags:0x0 context:0 command:0 index:2)",
                                      "pfnEscapeCb(size:40 device:0 flags:0x0 context:0 command:0 index:3)",
                                      "pfnEscapeCb(size:40 device:0 flags:0x0 context:0 command:0 index:4)",
                                      "pfnEscapeCb(size:40 device:0 flags:0x0 context:0 command:0 index:5)"));
    pDevice->DestroyThreads();
}

HANDLE g_hEscapeCaller = nullptr;

HRESULT APIENTRY RememberEscapeCaller(HANDLE hAdapter, const D3DDDICB_ESCAPE*)
{
    g_hEscapeCaller = hAdapter;
    return S_OK;
}

TEST_F(DeviceLife, Initialize_Escapes_CarryTheRuntimesAdapterHandle)
{
    int runtimeAdapter = 0;
    UMDAdapter adapter(&runtimeAdapter, 0x2003, &m_AdapterCallbacks);
    m_Callbacks.pfnEscapeCb = RememberEscapeCaller;
    UMDDdiDevice device(m_Kernel.RuntimeHandle(), 9, 0x2003, &adapter, &runtimeAdapter, &m_Callbacks);
    ASSERT_TRUE(device.Initialize());
    EXPECT_EQ(g_hEscapeCaller, &runtimeAdapter);
    device.DestroyThreads();
}

TEST_F(DeviceLife, Initialize_EscapeRefused_UsesTheIndexAndSaysSo)
{
    m_Kernel.Fail("pfnEscapeCb", E_FAIL, 4);
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    EXPECT_THAT(m_Trace.LinesContaining("pfnEscapeCb"),
        ElementsAre("UMDDdiDevice::InterFrameBufferThreadsStart pfnEscapeCb 3 failed!\n"));
    pDevice->DestroyThreads();
}

TEST_F(DeviceLife, Initialize_NoEscapeCallback_UsesTheIndexForAllSources)
{
    m_Callbacks.pfnEscapeCb = nullptr;
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    EXPECT_EQ(m_Trace.LinesContaining("pfnEscapeCb").size(), UMD_VIDPN_SOURCE_COUNT);
    pDevice->DestroyThreads();
}

TEST_F(DeviceLife, CreateContext_NoCallback_GoesOnWithoutContext)
{
    m_Callbacks.pfnCreateContextCb = nullptr;
    auto pDevice = MakeDevice();
    m_Trace.Clear();
    ASSERT_TRUE(pDevice->CreateContext());
    EXPECT_THAT(m_Trace.Lines(), ElementsAre(">>> UMDDdiDevice::CreateContext\n",
                                     "UMDDdiDevice::CreateContext m_d3dCallbacks.pfnCreateContextCb is NULL!\n",
                                     "<<< UMDDdiDevice::CreateContext\n"));
    m_Trace.Clear();
    pDevice->DestroyContext();
    EXPECT_THAT(m_Kernel.Lines(), ElementsAre("pfnDestroyContextCb(context:0)"));
    EXPECT_THAT(m_Trace.Lines(),
        ElementsAre(">>> UMDDdiDevice::DestroyContext m_hContext:0x0\n",
            ">>> UMDDdiDevice::DestroyContext failed! hResult:0x80070057\n",  // the kernel knows no context 0
            "<<< UMDDdiDevice::DestroyContext\n"));
}

TEST_F(DeviceLife, CreateContext_Detail_TracesTheHandle)
{
    const TraceMask mask(UMDTRACE_DETAIL);
    auto pDevice = MakeDevice();
    m_Trace.Clear();
    ASSERT_TRUE(pDevice->CreateContext());
    EXPECT_THAT(m_Trace.Lines(), ElementsAre("UMDDdiDevice::CreateContext m_hContext:0x7000\n"));
    pDevice->DestroyContext();
}

TEST_F(DeviceLife, Initialize_ContextRefused_FailsWithoutThreads)
{
    m_Kernel.Fail("pfnCreateContextCb", E_OUTOFMEMORY);
    auto pDevice = MakeDevice();
    m_Trace.Clear();
    EXPECT_FALSE(pDevice->Initialize());
    EXPECT_THAT(m_Trace.Lines(), ElementsAre(">>> UMDDdiDevice::Initialize\n", ">>> UMDDdiDevice::CreateContext\n",
                                     "UMDDdiDevice::CreateContext pfnCreateContextCb failed! 0x8007000e\n",
                                     "UMDDdiDevice::Initialize CreateContext failed!\n"));
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), 0u);
}

TEST_F(DeviceLife, DestroyContext_Refused_ForgetsTheHandleAllTheSame)
{
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->CreateContext());
    m_Kernel.Fail("pfnDestroyContextCb", E_FAIL, 1);
    m_Trace.Clear();
    pDevice->DestroyContext();
    EXPECT_THAT(m_Trace.Lines(),
        ElementsAre(">>> UMDDdiDevice::DestroyContext m_hContext:0x7000\n",
            ">>> UMDDdiDevice::DestroyContext failed! hResult:0x80004005\n", "<<< UMDDdiDevice::DestroyContext\n"));
    m_Trace.Clear();
    pDevice->DestroyContext();
    EXPECT_EQ(m_Trace.Lines().front(), ">>> UMDDdiDevice::DestroyContext m_hContext:0x0\n");
}

TEST_F(DeviceLife, DestroyContext_NoCallback_OnlyTraces)
{
    m_Callbacks.pfnDestroyContextCb = nullptr;
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->CreateContext());
    m_Kernel.ClearLines();
    pDevice->DestroyContext();
    EXPECT_THAT(m_Kernel.Lines(), IsEmpty());
}

TEST_F(DeviceLife, DestroyThreads_Running_StopsSourcesInOrderThenTheGpu)
{
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    const TraceMask mask(UMDTRACE_ENTER | UMDTRACE_LEAVE | UMDTRACE_DETAIL);
    m_Trace.Clear();
    pDevice->DestroyThreads();
    Lines lines = m_Trace.LinesOfThisThread();
    std::erase_if(lines, [](const std::string& line) { return line.find("UMDDdiDevice::") == std::string::npos; });
    EXPECT_THAT(lines,
        ElementsAre(">>> UMDDdiDevice::DestroyThreads m_hContext:0x7000\n",
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[0] RequestExit\n",
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[1] RequestExit\n",
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[2] RequestExit\n",
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[3] RequestExit\n",
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[4] RequestExit\n",
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[5] RequestExit\n",
            "UMDDdiDevice::DestroyThreads m_ThreadGpuD3D9 RequestExit \n", "<<< UMDDdiDevice::DestroyThreads\n"));
}

TEST_F(DeviceLife, DestroyThreads_Running_WaitsForEachThreadBeforeTheNext)
{
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    const TraceMask mask(UMDTRACE_LEAVE | UMDTRACE_DETAIL | UMDTRACE_GPU);
    m_Trace.Clear();
    pDevice->DestroyThreads();
    Lines lines = m_Trace.Lines();
    std::erase_if(lines, [](const std::string& line) {
        return line.find("RequestExit") == std::string::npos && line != "UMDThreadFrameBuffer::Run exit\n" &&
               !line.starts_with("<<<");
    });
    std::erase(lines, ">>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n");
    std::erase(lines, "UMDThreadFrameBuffer::RequestExit\n");
    std::erase_if(lines, [](const std::string& line) { return line.find("m_hEventRequestExit") != std::string::npos; });
    Lines expected;
    for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
    {
        expected.push_back(
            "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[" + std::to_string(i) + "] RequestExit\n");
        expected.push_back("UMDThreadFrameBuffer::Run exit\n");
    }
    expected.insert(expected.end(), {"UMDDdiDevice::DestroyThreads m_ThreadGpuD3D9 RequestExit \n",
                                        "<<< UMDThreadGpuD3D9::Run\n", "<<< UMDDdiDevice::DestroyThreads\n"});
    EXPECT_EQ(lines, expected);
}

TEST_F(DeviceLife, Life_Whole_EachLineHasItsLevel)
{
    Lines lines = LevelledTrace([this] {
        auto pDevice = MakeDevice();
        pDevice->Initialize();
        pDevice->DestroyThreads();
        pDevice->DestroyContext();
    });
    std::erase_if(lines, [](const std::string& line) {
        return line.find(" UMDDdiDevice::") == std::string::npos ||
               line.find("m_ThreadFrameBuffer[") != std::string::npos;
    });
    EXPECT_THAT(
        lines, ElementsAre("0x4 >>> UMDDdiDevice::UMDDdiDevice\n", "0x4 >>> UMDDdiDevice::Initialize\n",
                   "0x4 >>> UMDDdiDevice::CreateContext\n", "0x200 UMDDdiDevice::CreateContext m_hContext:0x#\n",
                   "0x8 <<< UMDDdiDevice::CreateContext\n", "0x4 >>> UMDDdiDevice::CreateThreads\n",
                   "0x8 <<< UMDDdiDevice::CreateThreads\n", "0x8 <<< UMDDdiDevice::Initialize\n",
                   "0x4 >>> UMDDdiDevice::DestroyThreads m_hContext:0x#\n",
                   "0x200 UMDDdiDevice::DestroyThreads m_ThreadGpuD3D9 RequestExit \n",
                   "0x8 <<< UMDDdiDevice::DestroyThreads\n", "0x4 >>> UMDDdiDevice::DestroyContext m_hContext:0x#\n",
                   "0x8 <<< UMDDdiDevice::DestroyContext\n", "0x4 >>> UMDDdiDevice::~UMDDdiDevice\n"));
}

TEST_F(DeviceLife, InterFrameBufferThreadsStart_EachSource_IsToldAtTheDetailLevel)
{
    const TraceMask mask(UMDTRACE_DETAIL);
    auto pDevice = MakeDevice();
    m_Trace.Clear();
    EXPECT_EQ(pDevice->InterFrameBufferThreadsStart(), S_OK);
    EXPECT_EQ(pDevice->InterFrameBufferThreadsStop(), S_OK);
    Lines expected;
    for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
        expected.push_back(
            "UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer[" + std::to_string(i) + "]\n");
    EXPECT_EQ(m_Trace.LinesContaining("InterFrameBufferThreadsStart"), expected);
}

TEST_F(DeviceLife, DestroyThreads_NeverStarted_ReturnsAtOnce)
{
    auto pDevice = MakeDevice();
    pDevice->DestroyThreads();
    EXPECT_EQ(m_Fake.Lines().size(), 0u);
}

TEST_F(DeviceLife, DestroyDeviceEntry_Running_DestroysOnlyTheContext)
{
    const unsigned threadsBefore = ResourceCounts::Now().m_Threads;
    auto pDevice = MakeDevice();
    ASSERT_TRUE(pDevice->Initialize());
    const unsigned threadsRunning = ResourceCounts::Now().m_Threads;
    EXPECT_GE(threadsRunning, threadsBefore + 1 + UMD_VIDPN_SOURCE_COUNT);
    m_Kernel.ClearLines();

    EXPECT_EQ(UMDDdiDestroyDevice(pDevice.get()), S_OK);

    EXPECT_THAT(m_Kernel.Lines(), ElementsAre("pfnDestroyContextCb(context:7000)"));
    EXPECT_EQ(ResourceCounts::Now().m_Threads, threadsRunning);
    EXPECT_NE(pDevice->GetDevice(), nullptr);
    pDevice->DestroyThreads();
}

TEST_F(DeviceLife, DestroyDeviceEntry_NullHandle_AnswersOkAndDoesNothing)
{
    EXPECT_EQ(UMDDdiDestroyDevice(nullptr), S_OK);
    EXPECT_THAT(m_Kernel.Lines(), IsEmpty());
}

TEST_F(DeviceLife, Initialize_NoDelegatedDevice_SucceedsAndShowsNull)
{
    m_Fake.Fail("d3d9.CreateDeviceEx", D3DERR_NOTAVAILABLE);
    auto pDevice = MakeDevice();
    EXPECT_TRUE(pDevice->Initialize());
    EXPECT_EQ(pDevice->GetDevice(), nullptr);
    pDevice->DestroyThreads();
}

unsigned g_ThreadsCreated = 0;
decltype(&CreateThread) g_pCreateThread = nullptr;

/// The fourth thread, which is the third source's, is refused.
HANDLE WINAPI RefuseFourthThread(LPSECURITY_ATTRIBUTES pSecurity, SIZE_T stackSize, LPTHREAD_START_ROUTINE pEntry,
    LPVOID pParameter, DWORD flags, LPDWORD pThreadId)
{
    if (++g_ThreadsCreated == 4)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return g_pCreateThread(pSecurity, stackSize, pEntry, pParameter, flags, pThreadId);
}

// Threads that run are not asked to end on this path; the objects' own destructors see to it that none outlives them.
TEST_F(DeviceLife, Delete_AfterThirdSourceFailedToStart_LeavesNoThreadAndNoHandle)
{
    {
        auto pFirst = MakeDevice();  // whatever the first use of the system's libraries keeps
        ASSERT_TRUE(pFirst->Initialize());
        pFirst->DestroyThreads();
    }
    const ResourceCounts before = ResourceCounts::Now();
    m_Trace.Clear();
    g_ThreadsCreated = 0;
    {
        const ImportPatch patch(nullptr, "KERNEL32.dll", "CreateThread", RefuseFourthThread, &g_pCreateThread);
        auto pDevice = MakeDevice();
        EXPECT_FALSE(pDevice->Initialize());
    }
    EXPECT_EQ(g_ThreadsCreated, 4u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer 2 failed!\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::Initialize CreateThreads failed!\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::Initialize\n"), 0u);
    const ResourceCounts after = ResourceCounts::Now();
    EXPECT_EQ(after.m_Threads, before.m_Threads);
    EXPECT_EQ(after.m_Handles, before.m_Handles);
    EXPECT_THAT(m_Fake.LiveObjects(), IsEmpty());
}
}  // namespace
