// The window class that all devices of a process share.
#include "gpu/UMDThreadGpuD3D9.h"

#include "FakeDevice.h"
#include "FakeFactory.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include "util/UMDUtilDebugTrace.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
using tesslo::test::FakeDevice;
using tesslo::test::FakeFactory;
using tesslo::test::ImportPatch;
using tesslo::test::TraceCapture;
using tesslo::test::TraceMask;

decltype(&CreateWindowExW) g_pCreateWindow;
std::atomic<int> g_Thefts;  ///< windows whose class is still to be taken away
std::atomic<int> g_Windows;

/// Does first what a device that ends on another thread may do between registration and window.
HWND WINAPI StealClass(DWORD exStyle, LPCWSTR pClass, LPCWSTR pTitle, DWORD style, int x, int y, int width, int height,
    HWND hParent, HMENU hMenu, HINSTANCE hInstance, LPVOID pParameter)
{
    ++g_Windows;
    if (g_Thefts-- > 0)
        UnregisterClassW(L"D3D UMD", hInstance);
    return g_pCreateWindow(exStyle, pClass, pTitle, style, x, y, width, height, hParent, hMenu, hInstance, pParameter);
}

ATOM WINAPI RefuseClass(const WNDCLASSEXW*)
{
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

class UMDThreadGpuD3D9WindowClass : public testing::Test
{
protected:
    UMDThreadGpuD3D9WindowClass()
    {
        g_pCreateWindow = m_CreateWindow.Original<decltype(&CreateWindowExW)>();
        g_Windows = 0;
    }

    /// Starts and ends a GPU thread. @return whether it had a device.
    bool HadDevice()
    {
        UMDThreadGpuD3D9 thread;
        thread.ThreadGuiStart(nullptr);
        const bool had = thread.GetDevice();
        thread.ThreadGuiRequestExit();
        thread.Wait(INFINITE);
        return had;
    }

    TraceMask m_Mask{UMDTRACE_ERROR};
    TraceCapture m_Trace;
    FakeDevice m_Device;
    FakeFactory m_Factory{m_Device};
    ImportPatch m_CreateWindow{nullptr, "user32.dll", "CreateWindowExW", reinterpret_cast<void*>(StealClass)};
};

TEST_F(UMDThreadGpuD3D9WindowClass, Run_ClassTakenAwayBeforeTheWindow_RegistersItAgain)
{
    g_Thefts = 3;
    EXPECT_TRUE(HadDevice());
    EXPECT_EQ(g_Windows, 4);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run CreateWindow failed! 1411\n"), 0u);
}

TEST_F(UMDThreadGpuD3D9WindowClass, Life_TwoThreadsStartAndEndDevices_EachHasItsOwn)
{
    g_Thefts = 0;
    constexpr int kLives = 40;
    std::atomic<int> without = 0;
    const auto live = [&] {
        for (int i = 0; i < kLives; ++i)
            without += !HadDevice();
    };
    std::thread other(live);
    live();
    other.join();
    EXPECT_EQ(without, 0);
}

TEST_F(UMDThreadGpuD3D9WindowClass, Run_ClassCannotBeRegistered_GivesUpAtOnce)
{
    g_Thefts = 0;
    ImportPatch refuse(nullptr, "user32.dll", "RegisterClassExW", reinterpret_cast<void*>(RefuseClass));
    EXPECT_FALSE(HadDevice());
    EXPECT_EQ(g_Windows, 1);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run CreateWindow failed! 1411\n"), 1u);
}
}  // namespace
