#include "gpu/UMDThreadGpuD3D9.h"

#include "FakeFactory.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include "output/UMDClientLibrary.h"
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace
{
using tesslo::test::FailingImport;
using tesslo::test::FakeDevice;
using tesslo::test::FakeFactory;
using tesslo::test::ImportPatch;
using tesslo::test::TraceCapture;
using tesslo::test::TraceMask;
using Lines = std::vector<std::string>;

constexpr DWORD kLong = 30000;  ///< milliseconds; reached only by a failing test

template <typename Function>
void* Address(Function* pFunction)
{
    return reinterpret_cast<void*>(pFunction);
}

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

WNDCLASSEXW g_Class;
std::wstring g_ClassName;
decltype(&RegisterClassExW) g_pRegisterClass;

ATOM WINAPI KeepingRegisterClass(const WNDCLASSEXW* pClass)
{
    g_Class = *pClass;
    g_ClassName = pClass->lpszClassName;
    return g_pRegisterClass(pClass);
}

struct Window
{
    DWORD m_ExStyle;
    std::wstring m_Class;
    std::wstring m_Title;
    DWORD m_Style;
    RECT m_Place;  ///< left, top, width, height
    HWND m_hParent;
    HMENU m_hMenu;
    HINSTANCE m_hInstance;
    LPVOID m_pParameter;
    HWND m_hWnd;
};
std::optional<Window> g_Window;
decltype(&CreateWindowExW) g_pCreateWindow;

HWND WINAPI KeepingCreateWindow(DWORD exStyle, LPCWSTR pClass, LPCWSTR pTitle, DWORD style, int x, int y, int width,
    int height, HWND hParent, HMENU hMenu, HINSTANCE hInstance, LPVOID pParameter)
{
    HWND hWnd =
        g_pCreateWindow(exStyle, pClass, pTitle, style, x, y, width, height, hParent, hMenu, hInstance, pParameter);
    g_Window = {exStyle, pClass, pTitle, style, {x, y, width, height}, hParent, hMenu, hInstance, pParameter, hWnd};
    return hWnd;
}

// A gate in front of the wait of the message loop.
HANDLE g_hAtWait;
HANDLE g_hGoOn;
decltype(&MsgWaitForMultipleObjectsEx) g_pMsgWait;
DWORD g_WaitMask;
DWORD g_WaitTime;

DWORD WINAPI GatedMsgWait(DWORD count, const HANDLE* pHandles, DWORD milliseconds, DWORD mask, DWORD flags)
{
    g_WaitMask = mask;
    g_WaitTime = milliseconds;
    ReleaseSemaphore(g_hAtWait, 1, nullptr);
    WaitForSingleObject(g_hGoOn, INFINITE);
    return g_pMsgWait(count, pHandles, milliseconds, mask, flags);
}

std::vector<HCURSOR> g_Cursors;

HCURSOR WINAPI KeepingSetCursor(HCURSOR hCursor)
{
    g_Cursors.push_back(hCursor);
    return nullptr;
}

int g_QuitCode;

void WINAPI KeepingPostQuitMessage(int exitCode)
{
    g_QuitCode = exitCode;
}

/// The driver's window of this process: other test processes have theirs on the same desktop.
HWND HiddenWindow()
{
    HWND hWnd = nullptr;
    while ((hWnd = FindWindowExW(nullptr, hWnd, L"D3D UMD", L"D3D UMD Testwindow")) != nullptr)
    {
        DWORD processId = 0;
        GetWindowThreadProcessId(hWnd, &processId);
        if (processId == GetCurrentProcessId())
            break;
    }
    return hWnd;
}

bool ClassExists()
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof(windowClass);
    return GetClassInfoExW(GetModuleHandleW(nullptr), L"D3D UMD", &windowClass);
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

class UMDThreadGpuD3D9Test : public testing::Test
{
protected:
    static void Stop(UMDThreadGpuD3D9& thread)
    {
        thread.ThreadGuiRequestExit();
        ASSERT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    }

    /// The lines without the window procedure's, whose number is the platform's business.
    Lines StepLines() const
    {
        Lines lines = m_Trace.Lines();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("InternalGuiWndMsgProc") != std::string::npos ||
                   line.find("MSG received") != std::string::npos;
        });
        return lines;
    }

    WatchedDevice m_Device;
    FakeFactory m_Factory{m_Device};
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_GPU};
    TraceCapture m_Trace;
};

/// A patch of this executable's imports that can give the original away.
struct Patched : ImportPatch
{
    template <typename Function>
    Patched(const char* pDll, const char* pName, Function* pReplacement, Function** ppOriginal = nullptr)
        : ImportPatch(nullptr, pDll, pName, Address(pReplacement))
    {
        if (ppOriginal)
            *ppOriginal = Original<Function*>();
    }
};

TEST_F(UMDThreadGpuD3D9Test, ConstructorAndDestructor_NeverStarted_MakeAndCloseFourEventsInOrder)
{
    g_Events.clear();
    g_EventKinds.clear();
    g_Closed.clear();
    {
        Patched create("kernel32.dll", "CreateEventW", KeepingCreateEvent, &g_pCreateEvent);
        Patched close("kernel32.dll", "CloseHandle", KeepingCloseHandle, &g_pCloseHandle);
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
    {
        UMDThreadGpuD3D9 thread;
        thread.ThreadGuiStart(UMDClientLibraryModule());
        EXPECT_EQ(thread.GetDevice(), &m_Device);
        EXPECT_NE(HiddenWindow(), nullptr);
        Stop(thread);
        EXPECT_EQ(thread.GetDevice(), nullptr);
    }
    EXPECT_EQ(StepLines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                               ">>> UMDThreadGpuD3D9::Run\n", ">>> UMDThreadGpuD3D9::InternalCreateDevice\n",
                               "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
                               ">>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n",
                               "UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventRequestExit\n",
                               ">>> UMDThreadGpuD3D9::InternalDestroyDevice\n", "<<< UMDThreadGpuD3D9::Run\n",
                               "UMDThreadGpuD3D9::~UMDThreadGpuD3D9\n"}));
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    EXPECT_EQ(m_Factory.ReferenceCount(), 1u);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_FALSE(ClassExists());
}

TEST_F(UMDThreadGpuD3D9Test, Run_Always_RegistersTheClassAndMakesTheHiddenWindow)
{
    Patched registered("user32.dll", "RegisterClassExW", KeepingRegisterClass, &g_pRegisterClass);
    Patched created("user32.dll", "CreateWindowExW", KeepingCreateWindow, &g_pCreateWindow);
    g_Window.reset();
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    const HINSTANCE hInstance = GetModuleHandleW(nullptr);
    EXPECT_EQ(g_Class.cbSize, 80u);
    EXPECT_EQ(g_Class.style, 0x40u);
    EXPECT_NE(g_Class.lpfnWndProc, nullptr);
    EXPECT_EQ(g_Class.cbClsExtra, 0);
    EXPECT_EQ(g_Class.cbWndExtra, 0);
    EXPECT_EQ(g_Class.hInstance, hInstance);
    EXPECT_EQ(g_Class.hIcon, nullptr);
    EXPECT_EQ(g_Class.hCursor, nullptr);
    EXPECT_EQ(g_Class.hbrBackground, nullptr);
    EXPECT_EQ(g_Class.lpszMenuName, nullptr);
    EXPECT_EQ(g_Class.hIconSm, nullptr);
    EXPECT_EQ(g_ClassName, L"D3D UMD");

    ASSERT_TRUE(g_Window);
    EXPECT_EQ(g_Window->m_ExStyle, 0u);
    EXPECT_EQ(g_Window->m_Class, L"D3D UMD");
    EXPECT_EQ(g_Window->m_Title, L"D3D UMD Testwindow");
    EXPECT_EQ(g_Window->m_Style, 0x80800000u);
    EXPECT_EQ(g_Window->m_Place.left, 200);
    EXPECT_EQ(g_Window->m_Place.top, 200);
    EXPECT_EQ(g_Window->m_Place.right, 100);
    EXPECT_EQ(g_Window->m_Place.bottom, 100);
    EXPECT_EQ(g_Window->m_hParent, nullptr);
    EXPECT_EQ(g_Window->m_hMenu, nullptr);
    EXPECT_EQ(g_Window->m_hInstance, hInstance);
    EXPECT_EQ(g_Window->m_pParameter, nullptr);
    EXPECT_FALSE(IsWindowVisible(g_Window->m_hWnd));
    Stop(thread);
    EXPECT_FALSE(IsWindow(g_Window->m_hWnd));
}

TEST_F(UMDThreadGpuD3D9Test, Run_Always_IsTimeCriticalClearsTheCursorAndOwnsTheDevicesLife)
{
    Patched priority("kernel32.dll", "SetThreadPriority", KeepingSetThreadPriority);
    Patched cursor("user32.dll", "SetCursor", KeepingSetCursor);
    g_Cursors.clear();
    DWORD creator = 0;
    m_Device.On("d3d9.CreateDeviceEx", [&] { creator = GetCurrentThreadId(); });
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    EXPECT_EQ(g_Priority, 15);
    EXPECT_EQ(g_PriorityThread, creator);
    EXPECT_NE(creator, GetCurrentThreadId());
    EXPECT_EQ(g_Cursors, std::vector<HCURSOR>{nullptr});
    Stop(thread);
    EXPECT_EQ(m_Device.m_ReleasedOn, creator);
}

TEST_F(UMDThreadGpuD3D9Test, ThreadGuiStart_NoThread_ReturnsAtOnce)
{
    FailingImport patch(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                                   "UMDThreadBase::Start CreateThread failed. LastError 8",
                                   "UMDThreadGpuD3D9::Start UMDBaseThread::Start failed! 8\n"}));
    EXPECT_EQ(thread.GetDevice(), nullptr);
    thread.ThreadGuiRequestExit();
    EXPECT_EQ(thread.Wait(INFINITE), 0u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_PriorityRefused_ReleasesTheStarterAndEnds)
{
    FailingImport patch(nullptr, "kernel32.dll", "SetThreadPriority", FALSE, ERROR_ACCESS_DENIED);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    EXPECT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(StepLines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                               ">>> UMDThreadGpuD3D9::Run\n", "UMDThreadGpuD3D9::Run SetThreadPriority failed!\n"}));
    EXPECT_EQ(thread.GetDevice(), nullptr);
    EXPECT_FALSE(ClassExists());
}

TEST_F(UMDThreadGpuD3D9Test, Run_WindowRefused_ReleasesTheStarterAndEnds)
{
    FailingImport patch(nullptr, "user32.dll", "CreateWindowExW", 0, ERROR_NOT_ENOUGH_QUOTA);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    EXPECT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(StepLines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                               ">>> UMDThreadGpuD3D9::Run\n", "UMDThreadGpuD3D9::Run CreateWindow failed! 1816\n"}));
    EXPECT_EQ(thread.GetDevice(), nullptr);
    EXPECT_TRUE(ClassExists());
    UnregisterClassW(L"D3D UMD", GetModuleHandleW(nullptr));
}

TEST_F(UMDThreadGpuD3D9Test, Run_DeviceRefused_ReleasesTheStarterAndLivesOn)
{
    m_Device.Fail("d3d9.CreateDeviceEx", D3DERR_NOTAVAILABLE);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    EXPECT_EQ(thread.GetDevice(), nullptr);
    thread.PresentNotification(nullptr);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::InternalCreateDevice Create failed!\n"), 1u);
    EXPECT_EQ(thread.Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_NE(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Factory.ReferenceCount(), 2u);
    Stop(thread);
    EXPECT_EQ(m_Factory.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_WrapperNotAllocated_ReleasesTheStarterAndLivesOn)
{
    // Only the GPU thread's own next allocation fails: what happens in between allocates nothing.
    static decltype(&SetCursor) s_pSetCursor;
    static void* (*s_pMalloc)(size_t);
    static DWORD s_Thread;
    s_Thread = 0;
    struct Replaced
    {
        static HCURSOR WINAPI SetCursor(HCURSOR hCursor)
        {
            s_Thread = GetCurrentThreadId();
            return s_pSetCursor(hCursor);
        }
        static void* Malloc(size_t size)
        {
            if (size == sizeof(UMDGpuD3D9) && GetCurrentThreadId() == s_Thread)
                return nullptr;
            return s_pMalloc(size);
        }
    };
    Patched cursor("user32.dll", "SetCursor", Replaced::SetCursor, &s_pSetCursor);
    Patched memory("msvcrt.dll", "malloc", Replaced::Malloc, &s_pMalloc);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());

    EXPECT_EQ(thread.GetDevice(), nullptr);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::InternalCreateDevice failed!\n"), 1u);
    EXPECT_EQ(thread.Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    thread.PresentNotification(nullptr);
    Stop(thread);
    EXPECT_EQ(m_Device.Lines(), Lines{});
}

TEST_F(UMDThreadGpuD3D9Test, Run_ExecuteEventSet_EndsAsAnExitRequestDoes)
{
    g_Events.clear();
    g_EventKinds.clear();
    std::optional<Patched> create;
    create.emplace("kernel32.dll", "CreateEventW", KeepingCreateEvent, &g_pCreateEvent);
    UMDThreadGpuD3D9 thread;
    create.reset();
    ASSERT_EQ(g_Events.size(), 4u);
    thread.ThreadGuiStart(UMDClientLibraryModule());
    ASSERT_NE(thread.GetDevice(), nullptr);

    SetEvent(g_Events[2]);

    ASSERT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects m_hEventExecuteFunction\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDThreadGpuD3D9::Run\n"), 1u);
    EXPECT_EQ(thread.GetDevice(), nullptr);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_BurstOfMessages_TakesOneAWakeUpUntilAllAreDone)
{
    g_hAtWait = CreateSemaphoreW(nullptr, 0, 1000, nullptr);
    g_hGoOn = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    Patched wait("user32.dll", "MsgWaitForMultipleObjectsEx", GatedMsgWait, &g_pMsgWait);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0);
    EXPECT_EQ(g_WaitMask, static_cast<DWORD>(QS_ALLPOSTMESSAGE | QS_SENDMESSAGE));
    EXPECT_EQ(g_WaitTime, INFINITE);
    m_Trace.Clear();
    const HWND hWnd = HiddenWindow();
    for (UINT i = 0; i < 5; ++i)
        PostMessageW(hWnd, WM_APP + i, 0, 0);
    // The last of the burst is seen when the loop comes to its sixth wait.
    SetEvent(g_hGoOn);
    for (int i = 0; i < 5; ++i)
        ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0);

    Lines expected;
    for (UINT i = 0; i < 5; ++i)
    {
        expected.push_back("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n");
        expected.push_back(">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc " + std::to_string(WM_APP + i) + "\n");
    }
    Stop(thread);
    Lines lines = m_Trace.Lines();
    ASSERT_GE(lines.size(), expected.size());
    lines.resize(expected.size());
    EXPECT_EQ(lines, expected);
    CloseHandle(g_hAtWait);
    CloseHandle(g_hGoOn);
}

TEST_F(UMDThreadGpuD3D9Test, Run_ExitRequestedBehindABurst_ComesFirst)
{
    g_hAtWait = CreateSemaphoreW(nullptr, 0, 1000, nullptr);
    g_hGoOn = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    Patched wait("user32.dll", "MsgWaitForMultipleObjectsEx", GatedMsgWait, &g_pMsgWait);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0);
    m_Trace.Clear();
    for (int i = 0; i < 500; ++i)
        PostMessageW(HiddenWindow(), WM_APP, 0, 0);
    thread.ThreadGuiRequestExit();
    SetEvent(g_hGoOn);

    ASSERT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n"), 0u);
    CloseHandle(g_hAtWait);
    CloseHandle(g_hGoOn);
}

TEST_F(UMDThreadGpuD3D9Test, Run_QuitMessage_IsOneOfManyAndEndsNothing)
{
    g_hAtWait = CreateSemaphoreW(nullptr, 0, 1000, nullptr);
    g_hGoOn = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    Patched wait("user32.dll", "MsgWaitForMultipleObjectsEx", GatedMsgWait, &g_pMsgWait);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0);
    m_Trace.Clear();
    PostMessageW(HiddenWindow(), WM_QUIT, 0, 0);
    SetEvent(g_hGoOn);
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0) << "back at the wait";
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n"), 1u);
    EXPECT_EQ(thread.GetDevice(), &m_Device);
    Stop(thread);
    CloseHandle(g_hAtWait);
    CloseHandle(g_hGoOn);
}

TEST_F(UMDThreadGpuD3D9Test, Run_SentMessages_AreAnsweredWithoutCountingAsPosted)
{
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    const HWND hWnd = HiddenWindow();
    m_Trace.Clear();
    for (int i = 0; i < 3; ++i)
    {
        DWORD_PTR answer = 0;
        ASSERT_NE(SendMessageTimeoutW(hWnd, WM_SETCURSOR, 0, 0, SMTO_NORMAL, kLong, &answer), 0);
        EXPECT_EQ(answer, 1u);
    }
    Stop(thread);
    EXPECT_EQ(m_Trace.Count(">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 32\n"), 3u);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n"), 0u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_WaitFails_EndsWithTheLastError)
{
    FailingImport patch(nullptr, "user32.dll", "MsgWaitForMultipleObjectsEx", WAIT_FAILED, ERROR_INVALID_HANDLE);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    ASSERT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects WAIT_FAILED 6\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDThreadGpuD3D9::Run\n"), 1u);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9Test, Run_WaitAnswersSomethingElse_EndsAndTellsIt)
{
    FailingImport patch(nullptr, "user32.dll", "MsgWaitForMultipleObjectsEx", WAIT_ABANDONED_0, 0);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    ASSERT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects unexpected result: 128\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDThreadGpuD3D9::Run\n"), 1u);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDThreadGpuD3D9Test, WindowProcedure_AnyMessage_AnswersByTheTable)
{
    Patched registered("user32.dll", "RegisterClassExW", KeepingRegisterClass, &g_pRegisterClass);
    UMDThreadGpuD3D9 thread;
    thread.ThreadGuiStart(UMDClientLibraryModule());
    const WNDPROC pProcedure = g_Class.lpfnWndProc;
    const HWND hWnd = HiddenWindow();
    Stop(thread);

    Patched cursor("user32.dll", "SetCursor", KeepingSetCursor);
    Patched quit("user32.dll", "PostQuitMessage", KeepingPostQuitMessage);
    FailingImport other(nullptr, "user32.dll", "DefWindowProcW", 0x77, 0);
    g_Cursors.clear();
    g_QuitCode = -1;
    m_Trace.Clear();
    EXPECT_EQ(pProcedure(hWnd, WM_SETCURSOR, 1, 2), 1);
    EXPECT_EQ(g_Cursors, std::vector<HCURSOR>{nullptr});
    EXPECT_EQ(pProcedure(hWnd, WM_USER, 1, 2), 0x77);
    EXPECT_EQ(g_QuitCode, -1);
    EXPECT_EQ(pProcedure(hWnd, WM_DESTROY, 0, 0), 0);
    EXPECT_EQ(g_QuitCode, 0);
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 32\n", ">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 1024\n",
            ">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 2\n"}));
}

TEST_F(UMDThreadGpuD3D9Test, Destructor_ThreadStillRuns_EndsItFirst)
{
    {
        UMDThreadGpuD3D9 thread;
        thread.ThreadGuiStart(UMDClientLibraryModule());
        ASSERT_EQ(m_Device.ReferenceCount(), 2u);
    }
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Trace.Count(">>> UMDThreadGpuD3D9::ThreadGuiRequestExit\n"), 0u);
}

TEST_F(UMDThreadGpuD3D9Test, Life_TwoAtOnce_EachHasItsWindow)
{
    UMDThreadGpuD3D9 first;
    UMDThreadGpuD3D9 second;
    first.ThreadGuiStart(UMDClientLibraryModule());
    second.ThreadGuiStart(UMDClientLibraryModule());
    EXPECT_EQ(m_Device.ReferenceCount(), 3u);
    Stop(first);
    EXPECT_NE(HiddenWindow(), nullptr);
    EXPECT_EQ(second.GetDevice(), &m_Device);
    EXPECT_EQ(m_Device.ReferenceCount(), 2u);
    Stop(second);
    EXPECT_EQ(HiddenWindow(), nullptr);
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}
}  // namespace
