// Life of the GPU thread: its start, the device that it makes and destroys, its end.
#include "GpuThreadFixture.h"
#include "ImportPatch.h"

using namespace tesslo::test;

namespace
{
// What the replaced functions saw.
std::vector<HANDLE> g_Events;
std::vector<HANDLE> g_Closed;
std::vector<std::pair<bool, BOOL>> g_EventKinds;  ///< manual reset or initially set; named
decltype(&CreateEventW) g_pCreateEvent;
decltype(&CloseHandle) g_pCloseHandle;

HANDLE WINAPI KeepingCreateEvent(LPSECURITY_ATTRIBUTES pSecurity, BOOL manual, BOOL initial, LPCWSTR pName)
{
    g_EventKinds.emplace_back(pSecurity || manual || initial, pName != nullptr);
    g_Events.push_back(g_pCreateEvent(pSecurity, manual, initial, pName));
    return g_Events.back();
}

BOOL WINAPI KeepingCloseHandle(HANDLE hObject)
{
    g_Closed.push_back(hObject);
    return g_pCloseHandle(hObject);
}

int g_Priority;
DWORD g_PriorityThread;

BOOL WINAPI KeepingSetThreadPriority(HANDLE hThread, int priority)
{
    g_Priority = priority;
    g_PriorityThread = hThread == GetCurrentThread() ? GetCurrentThreadId() : 0;
    return TRUE;
}

std::vector<HCURSOR> g_Cursors;

HCURSOR WINAPI KeepingSetCursor(HCURSOR hCursor)
{
    g_Cursors.push_back(hCursor);
    return nullptr;
}

// Only the GPU thread's own next allocation fails: what happens between the cursor and it allocates nothing.
decltype(&SetCursor) g_pSetCursor;
void* (*g_pMalloc)(size_t);
DWORD g_ShortThread;

HCURSOR WINAPI MarkingSetCursor(HCURSOR hCursor)
{
    g_ShortThread = GetCurrentThreadId();
    return g_pSetCursor(hCursor);
}

void* ShortMalloc(size_t size)
{
    if (size == sizeof(UMDGpuD3D9) && GetCurrentThreadId() == g_ShortThread)
        return nullptr;
    return g_pMalloc(size);
}

/// Keeps the thread of the last release.
class WatchedDevice : public FakeDevice
{
public:
    ULONG STDMETHODCALLTYPE Release() override
    {
        m_ReleasedOn = GetCurrentThreadId();
        return FakeDevice::Release();
    }

    DWORD m_ReleasedOn = 0;
};

class UMDThreadGpuD3D9Test : public GpuThreadFixture
{
protected:
    UMDThreadGpuD3D9Test()
    {
        g_Events.clear();
        g_EventKinds.clear();
        g_Closed.clear();
        g_Cursors.clear();
        g_ShortThread = 0;
    }
};
}  // namespace

TEST_F(UMDThreadGpuD3D9Test, ConstructorAndDestructor_NeverStarted_MakeAndCloseFourEventsInOrder)
{
    {
        const ImportPatch create(nullptr, "kernel32.dll", "CreateEventW", KeepingCreateEvent, &g_pCreateEvent);
        const ImportPatch close(nullptr, "kernel32.dll", "CloseHandle", KeepingCloseHandle, &g_pCloseHandle);
        UMDThreadGpuD3D9 thread;
        EXPECT_EQ(thread.GetDevice(), nullptr);
        thread.PresentNotification(nullptr);
    }
    EXPECT_EQ(g_Events.size(), 4u);
    EXPECT_EQ(g_Closed, g_Events);
    for (const auto& [special, named] : g_EventKinds)
    {
        EXPECT_FALSE(special);
        EXPECT_FALSE(named);
    }
    EXPECT_EQ(
        m_Trace.Lines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::~UMDThreadGpuD3D9\n"}));
}

TEST_F(UMDThreadGpuD3D9Test, Life_DeviceMade_TracesEachStepInOrder)
{
    Start();
    Stop();
    m_Thread.reset();
    EXPECT_EQ(StepLines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                               ">>> UMDThreadGpuD3D9::Run\n", ">>> UMDThreadGpuD3D9::InternalCreateDevice\n",
                               "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
                               ">>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n",
                               "UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventRequestExit\n",
                               ">>> UMDThreadGpuD3D9::InternalDestroyDevice\n", "<<< UMDThreadGpuD3D9::Run\n",
                               "UMDThreadGpuD3D9::~UMDThreadGpuD3D9\n"}));
}

TEST_F(UMDThreadGpuD3D9Test, Life_DeviceMade_LeavesNothing)
{
    Start();
    EXPECT_EQ(m_Thread->GetDevice(), &m_Device);
    EXPECT_NE(HiddenWindow(), nullptr);
    Stop();
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    EXPECT_EQ(m_Factory.ReferenceCount(), 1u);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_FALSE(ClassExists());
}

TEST_F(UMDThreadGpuD3D9Test, Run_Always_IsTimeCriticalAndClearsTheCursor)
{
    const ImportPatch priority(nullptr, "kernel32.dll", "SetThreadPriority", KeepingSetThreadPriority);
    const ImportPatch cursor(nullptr, "user32.dll", "SetCursor", KeepingSetCursor);
    DWORD creator = 0;
    m_Device.On("d3d9.CreateDeviceEx", [&] { creator = GetCurrentThreadId(); });
    Start();
    EXPECT_EQ(g_Priority, 15);
    EXPECT_EQ(g_PriorityThread, creator);
    EXPECT_NE(creator, GetCurrentThreadId());
    EXPECT_EQ(g_Cursors, std::vector<HCURSOR>{nullptr});
    Stop();
}

TEST_F(UMDThreadGpuD3D9Test, Run_Always_OwnsTheDevicesLife)
{
    WatchedDevice device;
    const FakeFactory factory(device);
    DWORD creator = 0;
    device.On("d3d9.CreateDeviceEx", [&] { creator = GetCurrentThreadId(); });
    Start();
    m_Thread.reset();
    EXPECT_NE(creator, GetCurrentThreadId());
    EXPECT_EQ(device.m_ReleasedOn, creator);
}

TEST_F(UMDThreadGpuD3D9Test, ThreadGuiStart_NoThread_ReturnsAtOnce)
{
    const FailingImport patch(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    Start();
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                                   "UMDThreadBase::Start CreateThread failed. LastError 8",
                                   "UMDThreadGpuD3D9::Start UMDBaseThread::Start failed! 8\n"}));
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    m_Thread->ThreadGuiRequestExit();
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_PriorityRefused_ReleasesTheStarterAndEnds)
{
    const FailingImport patch(nullptr, "kernel32.dll", "SetThreadPriority", FALSE, ERROR_ACCESS_DENIED);
    Start();
    ExpectEnd();
    EXPECT_EQ(StepLines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                               ">>> UMDThreadGpuD3D9::Run\n", "UMDThreadGpuD3D9::Run SetThreadPriority failed!\n"}));
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    EXPECT_FALSE(ClassExists());
}

TEST_F(UMDThreadGpuD3D9Test, Run_DeviceRefused_ReleasesTheStarterAndLivesOn)
{
    m_Device.Fail("d3d9.CreateDeviceEx", kRefused);
    Start();
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    m_Thread->PresentNotification(nullptr);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::InternalCreateDevice Create failed!\n"), 1u);
    EXPECT_EQ(m_Thread->Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_NE(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Factory.ReferenceCount(), 2u);
    Stop();
    EXPECT_EQ(m_Factory.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_WrapperNotAllocated_ReleasesTheStarterAndLivesOn)
{
    const ImportPatch cursor(nullptr, "user32.dll", "SetCursor", MarkingSetCursor, &g_pSetCursor);
    const ImportPatch memory(nullptr, "msvcrt.dll", "malloc", ShortMalloc, &g_pMalloc);
    Start();
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::InternalCreateDevice failed!\n"), 1u);
    EXPECT_EQ(m_Thread->Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    m_Thread->PresentNotification(nullptr);
    Stop();
    EXPECT_EQ(m_Device.Lines(), Lines{});
}

TEST_F(UMDThreadGpuD3D9Test, Run_ExecuteEventSet_EndsAsAnExitRequestDoes)
{
    {
        const ImportPatch create(nullptr, "kernel32.dll", "CreateEventW", KeepingCreateEvent, &g_pCreateEvent);
        m_Thread.emplace();
    }
    ASSERT_EQ(g_Events.size(), 4u);
    m_Thread->ThreadGuiStart(nullptr);
    ASSERT_NE(m_Thread->GetDevice(), nullptr);

    SetEvent(g_Events[2]);

    ExpectEnd();
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventExecuteFunction\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDThreadGpuD3D9::Run\n"), 1u);
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9Test, Destructor_ThreadStillRuns_EndsItFirst)
{
    Start();
    ASSERT_EQ(m_Device.ReferenceCount(), 2u);
    m_Thread.reset();
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Trace.Count(">>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n"), 0u);
}

TEST_F(UMDThreadGpuD3D9Test, Life_TwoAtOnce_EachHasItsWindow)
{
    UMDThreadGpuD3D9 other;
    Start();
    other.ThreadGuiStart(nullptr);
    EXPECT_EQ(m_Device.ReferenceCount(), 3u);
    Stop();
    EXPECT_NE(HiddenWindow(), nullptr);
    EXPECT_EQ(other.GetDevice(), &m_Device);
    EXPECT_EQ(m_Device.ReferenceCount(), 2u);
    other.ThreadGuiRequestExit();
    ASSERT_EQ(other.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}
