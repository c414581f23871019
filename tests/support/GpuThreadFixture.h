// The GPU thread on a fake Direct3D, without a client library.
#pragma once

#include "FakeFactory.h"
#include "TraceCapture.h"
#include "TraceMask.h"
#include "Waiting.h"

#include "gpu/UMDThreadGpuD3D9.h"

#include <gtest/gtest.h>

#include <optional>

namespace tesslo::test
{

class GpuThreadFixture : public testing::Test
{
protected:
    void Start()
    {
        m_Thread.emplace();
        m_Thread->ThreadGuiStart(nullptr);
    }
    void Stop()
    {
        m_Thread->ThreadGuiRequestExit();
        ExpectEnd();
    }
    /// Waits until the thread has ended.
    void ExpectEnd() { EXPECT_EQ(m_Thread->Wait(kLong), WAIT_OBJECT_0); }

    /// The driver's window of this process: other test processes have theirs on the same desktop.
    static HWND HiddenWindow()
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

    static bool ClassExists()
    {
        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof(windowClass);
        return GetClassInfoExW(GetModuleHandleW(nullptr), L"D3D UMD", &windowClass);
    }

    /// The lines without the window procedure's, whose number is the platform's business.
    Lines StepLines() const { return Without(Without(m_Trace.Lines(), "InternalGuiWndMsgProc"), "MSG received"); }

    FakeDevice m_Device;
    FakeFactory m_Factory{m_Device};
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_GPU};
    TraceCapture m_Trace;
    std::optional<UMDThreadGpuD3D9> m_Thread;
};

}  // namespace tesslo::test
