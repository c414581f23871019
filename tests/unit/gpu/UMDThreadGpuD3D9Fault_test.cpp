// Faults on the GPU thread: of the client library's reserved exports, of the delegated device, of the hidden window.
#include "gpu/UMDThreadGpuD3D9.h"

#include "ClientDeed.h"
#include "FakeFactory.h"
#include "Faults.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"
#include "Waiting.h"

#include <gtest/gtest.h>

#include <atomic>

using namespace tesslo::test;

namespace
{
const TestClientDeed kFault = {TEST_CLIENT_FAULT, 0, nullptr};
constexpr char kAccessViolation[] = "EXCEPTION_ACCESS_VIOLATION\n";
constexpr char kReserved1Exception[] = "Exception in client library! TessloVirtualMonitorReserved1 failed!\n";
constexpr char kReserved1Failed[] =
    "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll m_TessloVirtualMonitorReserved1() failed!\n";
constexpr char kReserved2Exception[] = "Exception in client library! TessloVirtualMonitorReserved2 failed!\n";
constexpr char kRunException[] = "Exception in thread! UMDThreadGpuD3D9::Run failed!\n";
constexpr char kCreateException[] = "Exception in thread! UMDThreadGpuD3D9::InternalCreateDevice failed!\n";
constexpr char kDestroyException[] = "Exception in thread! UMDThreadGpuD3D9::InternalDestroyDevice failed!\n";

/// A device whose last release may fault.
class BrittleDevice : public FakeDevice
{
public:
    ULONG STDMETHODCALLTYPE Release() override
    {
        if (m_bFaults)
            RaiseAccessViolation();
        return FakeDevice::Release();
    }

    std::atomic<bool> m_bFaults = false;
};

std::atomic<UINT> g_FaultingMessage;
std::atomic<HWND> g_hWindow;  ///< that had the last message
decltype(&DefWindowProcW) g_pDefWindowProc;

LRESULT WINAPI BrittleWindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    g_hWindow = hWnd;
    if (uMsg == g_FaultingMessage)
        RaiseAccessViolation();
    return g_pDefWindowProc(hWnd, uMsg, wParam, lParam);
}

HWND WINAPI BrittleCreateWindow(DWORD, LPCWSTR, LPCWSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE, LPVOID)
{
    RaiseAccessViolation();
    return nullptr;
}

HCURSOR WINAPI BrittleSetCursor(HCURSOR)
{
    RaiseAccessViolation();
    return nullptr;
}

DWORD WINAPI BrittleWait(DWORD, const HANDLE*, DWORD, DWORD, DWORD)
{
    RaiseAccessViolation();
    return WAIT_FAILED;
}

class GpuFaultTest : public testing::Test
{
protected:
    /// Runs the thread from its start to its end. @return its lines of errors but the last of the library's refusal.
    void Start(HMODULE hClientDll = nullptr) { m_Thread.ThreadGuiStart(hClientDll); }

    void Stop()
    {
        m_Thread.ThreadGuiRequestExit();
        ASSERT_EQ(m_Thread.Wait(kLong), WAIT_OBJECT_0);
    }

    /// The errors, but for the one that tells that there is no client library.
    Lines Errors() const
    {
        Lines lines = m_Trace.Lines();
        std::erase(lines, "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n");
        return lines;
    }

    /// The thread has let its starter go without a device, and has ended.
    void ExpectEndedWithoutADevice()
    {
        EXPECT_EQ(m_Thread.GetDevice(), nullptr);
        EXPECT_EQ(m_Thread.Wait(kLong), WAIT_OBJECT_0);
    }

    /// The errors of a window that a fault kept from being made. @param pException tells where.
    void ExpectNoWindow(const char* pException) const
    {
        const Lines lines = Errors();
        ASSERT_EQ(lines.size(), 3u);
        EXPECT_EQ(lines[0], kAccessViolation);
        EXPECT_EQ(lines[1], pException);
        EXPECT_TRUE(lines[2].starts_with("UMDThreadGpuD3D9::Run CreateWindow failed! ")) << lines[2];
    }

    static bool ClassExists()
    {
        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof(windowClass);
        return GetClassInfoExW(GetModuleHandleW(nullptr), L"D3D UMD", &windowClass);
    }

    BrittleDevice m_Device;
    FakeFactory m_Factory{m_Device};
    TraceMask m_Mask{UMDTRACE_ERROR};
    TraceCapture m_Trace;
    UMDThreadGpuD3D9 m_Thread;
};

TEST_F(GpuFaultTest, Reserved1_Faults_FallsBackToAnAdapterAsIfDeclined)
{
    TestClient client;
    client.SetDevice(&m_Device);
    SetDeed(client, TEST_CLIENT_RESERVED1, kFault);
    Start(client.Module());
    EXPECT_EQ(m_Thread.GetDevice(), &m_Device);
    EXPECT_EQ(m_Device.Calls("d3d9.CreateDeviceEx"), 1u);
    EXPECT_EQ(Errors(), (Lines{kAccessViolation, kReserved1Exception, kReserved1Failed}));
    Stop();
    m_Device.Release();  // what the library gave away before it faulted
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(GpuFaultTest, Reserved1_EndsTheThread_ReleasesTheStarterWithoutADevice)
{
    TestClient client;
    SetDeed(client, TEST_CLIENT_RESERVED1, {TEST_CLIENT_END_THREAD, 0, nullptr});
    Start(client.Module());
    ExpectEndedWithoutADevice();
    UnregisterClassW(L"D3D UMD", GetModuleHandleW(nullptr));
}

TEST_F(GpuFaultTest, Reserved2_FaultsAtEachPresent_IsToldEachTimeAndThePresentGoesOn)
{
    TestClient client;
    SetDeed(client, TEST_CLIENT_RESERVED2, kFault);
    Start(client.Module());
    m_Trace.Clear();
    m_Thread.PresentNotification(nullptr);
    m_Thread.PresentNotification(nullptr);
    EXPECT_EQ(client.Calls("Reserved2"), 2u);
    EXPECT_EQ(Errors(), (Lines{kAccessViolation, kReserved2Exception, kAccessViolation, kReserved2Exception}));
    Stop();
}

TEST_F(GpuFaultTest, DeviceCreation_Faults_ReleasesTheStarterAndLivesOnWithoutADevice)
{
    m_Device.On("d3d9.CreateDeviceEx", RaiseAccessViolation);
    Start();
    EXPECT_EQ(m_Thread.GetDevice(), nullptr);
    m_Thread.PresentNotification(nullptr);
    EXPECT_EQ(Errors(), (Lines{kAccessViolation, kCreateException}));
    EXPECT_EQ(m_Thread.Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    Stop();
    EXPECT_EQ(m_Factory.ReferenceCount(), 1u);
    EXPECT_FALSE(ClassExists());
}

TEST_F(GpuFaultTest, CursorOfTheNewDevice_Faults_TheDeviceIsGivenBackAndNobodyGetsIt)
{
    m_Device.On("ShowCursor", RaiseAccessViolation);
    Start();
    EXPECT_EQ(m_Thread.GetDevice(), nullptr);
    EXPECT_EQ(Errors(), (Lines{kAccessViolation, kCreateException}));
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    Stop();
}

TEST_F(GpuFaultTest, DeviceRelease_Faults_TheThreadEndsCleanly)
{
    Start();
    m_Device.m_bFaults = true;
    m_Trace.Clear();
    Stop();
    EXPECT_EQ(Errors(), (Lines{kAccessViolation, kDestroyException}));
    EXPECT_EQ(m_Thread.GetDevice(), nullptr);
    EXPECT_FALSE(ClassExists());
    m_Device.m_bFaults = false;
}

TEST_F(GpuFaultTest, WindowProcedure_Faults_IsToldAndTheThreadLivesOn)
{
    const ImportPatch window(nullptr, "user32.dll", "DefWindowProcW", BrittleWindowProc, &g_pDefWindowProc);
    g_FaultingMessage = WM_APP;
    Start();
    const HWND hWnd = g_hWindow;
    m_Trace.Clear();
    DWORD_PTR answer = 1;
    EXPECT_NE(SendMessageTimeoutW(hWnd, WM_APP, 0, 0, SMTO_NORMAL, kLong, &answer), 0);
    EXPECT_EQ(answer, 0u);
    EXPECT_EQ(Errors(),
        (Lines{kAccessViolation, "Exception in thread! UMDThreadGpuD3D9::InternalGuiWndMsgProc 32768 failed!\n"}));
    PostMessageW(hWnd, WM_APP, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return Errors().size() == 4; }));
    EXPECT_EQ(m_Thread.GetDevice(), &m_Device);
    Stop();
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(GpuFaultTest, WindowCreation_ItsProcedureFaults_ReleasesTheStarterWithoutADevice)
{
    const ImportPatch window(nullptr, "user32.dll", "DefWindowProcW", BrittleWindowProc, &g_pDefWindowProc);
    g_FaultingMessage = WM_NCCREATE;
    Start();
    ExpectEndedWithoutADevice();
    ExpectNoWindow("Exception in thread! UMDThreadGpuD3D9::InternalGuiWndMsgProc 129 failed!\n");
    UnregisterClassW(L"D3D UMD", GetModuleHandleW(nullptr));
}

TEST_F(GpuFaultTest, WindowCreation_Faults_ReleasesTheStarterAndTheNextDeviceHasItsWindow)
{
    {
        const ImportPatch window(nullptr, "user32.dll", "CreateWindowExW", BrittleCreateWindow);
        Start();
    }
    ExpectEndedWithoutADevice();
    ExpectNoWindow("Exception in thread! UMDThreadGpuD3D9::InternalCreateWindow failed!\n");

    UMDThreadGpuD3D9 next;
    next.ThreadGuiStart(nullptr);
    EXPECT_EQ(next.GetDevice(), &m_Device);
    next.ThreadGuiRequestExit();
    EXPECT_EQ(next.Wait(kLong), WAIT_OBJECT_0);
}

TEST_F(GpuFaultTest, Run_FaultsBeforeTheDevice_ReleasesTheStarterWithoutADevice)
{
    const ImportPatch cursor(nullptr, "user32.dll", "SetCursor", BrittleSetCursor);
    Start();
    ExpectEndedWithoutADevice();
    EXPECT_EQ(Errors(), (Lines{kAccessViolation, kRunException}));
    UnregisterClassW(L"D3D UMD", GetModuleHandleW(nullptr));
}

TEST_F(GpuFaultTest, MessageLoop_Faults_TheDeviceStaysForThoseWhoUseIt)
{
    {
        const ImportPatch wait(nullptr, "user32.dll", "MsgWaitForMultipleObjectsEx", BrittleWait);
        UMDThreadGpuD3D9 thread;
        thread.ThreadGuiStart(nullptr);
        EXPECT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
        EXPECT_EQ(Errors(), (Lines{kAccessViolation, kRunException}));
        EXPECT_EQ(thread.GetDevice(), &m_Device);
        thread.ThreadGuiRequestExit();
        EXPECT_EQ(thread.Wait(INFINITE), WAIT_OBJECT_0);
    }
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    UnregisterClassW(L"D3D UMD", GetModuleHandleW(nullptr));
}
}  // namespace
