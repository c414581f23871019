// The window class that all devices of a process share.
#include "gpu/UMDThreadGpuD3D9.h"

#include "ClientDeed.h"
#include "FakeDevice.h"
#include "FakeFactory.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"
#include "Waiting.h"

#include "util/UMDUtilDebugTrace.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
using tesslo::test::FailingImport;
using tesslo::test::FakeDevice;
using tesslo::test::FakeFactory;
using tesslo::test::ImportPatch;
using tesslo::test::kLong;
using tesslo::test::SetDeed;
using tesslo::test::TestClient;
using tesslo::test::TraceCapture;
using tesslo::test::TraceMask;

decltype(&CreateWindowExW) g_pCreateWindow;
decltype(&UnregisterClassW) g_pUnregisterClass;
std::atomic<int> g_Creating;  ///< windows that are being made
std::atomic<int> g_Thefts;    ///< times that the class was taken away meanwhile

HWND WINAPI SlowCreateWindow(DWORD exStyle, LPCWSTR pClass, LPCWSTR pTitle, DWORD style, int x, int y, int width,
    int height, HWND hParent, HMENU hMenu, HINSTANCE hInstance, LPVOID pParameter)
{
    ++g_Creating;
    Sleep(2);  // long enough for the other thread to come in between, if it may
    const HWND hWnd =
        g_pCreateWindow(exStyle, pClass, pTitle, style, x, y, width, height, hParent, hMenu, hInstance, pParameter);
    --g_Creating;
    return hWnd;
}

BOOL WINAPI WatchedUnregisterClass(LPCWSTR pClass, HINSTANCE hInstance)
{
    g_Thefts += g_Creating > 0;
    return g_pUnregisterClass(pClass, hInstance);
}

bool ClassExists()
{
    WNDCLASSW windowClass;
    return GetClassInfoW(GetModuleHandleW(nullptr), L"D3D UMD", &windowClass) != FALSE;
}

class UMDThreadGpuD3D9WindowClass : public testing::Test
{
protected:
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
    ImportPatch m_CreateWindow{nullptr, "user32.dll", "CreateWindowExW", SlowCreateWindow, &g_pCreateWindow};
    ImportPatch m_UnregisterClass{
        nullptr, "user32.dll", "UnregisterClassW", WatchedUnregisterClass, &g_pUnregisterClass};
};

TEST_F(UMDThreadGpuD3D9WindowClass, Life_TwoThreadsStartAndEndDevices_NoneTakesTheClassFromTheOther)
{
    constexpr int kLives = 40;
    std::atomic<int> without = 0;
    const auto live = [&] {
        for (int i = 0; i < kLives; ++i)
            without += !HadDevice();
    };
    std::thread other(live);
    live();
    other.join();
    EXPECT_EQ(g_Thefts, 0);
    EXPECT_EQ(without, 0);
    EXPECT_TRUE(m_Trace.LinesContaining("CreateWindow failed!").empty());
}

TEST_F(UMDThreadGpuD3D9WindowClass, Life_ClientEndsTheThread_TheClassGoesWithTheObject)
{
    TestClient client;
    SetDeed(client, TEST_CLIENT_RESERVED1, {TEST_CLIENT_END_THREAD, 0, nullptr});
    {
        UMDThreadGpuD3D9 thread;
        thread.ThreadGuiStart(client.Module());
        EXPECT_EQ(thread.Wait(kLong), WAIT_OBJECT_0);
        EXPECT_TRUE(ClassExists());
    }
    EXPECT_FALSE(ClassExists());
}

TEST_F(UMDThreadGpuD3D9WindowClass, Life_WindowRefused_TheClassGoesWithTheObject)
{
    const FailingImport refused(nullptr, "user32.dll", "CreateWindowExW", 0, ERROR_NOT_ENOUGH_QUOTA);
    EXPECT_FALSE(HadDevice());
    EXPECT_FALSE(ClassExists());
}
}  // namespace
