// Faults on a frame-buffer thread: of the client library, and of what else the worker calls.
#include "ClientDeed.h"
#include "Faults.h"
#include "FrameBufferThreadFixture.h"
#include "Gate.h"
#include "ImpatientWait.h"

#include <algorithm>
#include <thread>

namespace
{
using namespace tesslo::test;

const TestClientDeed kFault = {TEST_CLIENT_FAULT, 0, nullptr};

/// A worker whose client library is the DLL, in which it may come to harm.
class FrameBufferFaultTest : public FrameBufferThreadFixture
{
protected:
    /// What the worker traces at the level of errors, from a first frame to its end.
    Lines ErrorsOfTheFirstFrame()
    {
        const TraceMask mask(UMDTRACE_ERROR);
        Start();
        m_Trace.Clear();
        EXPECT_TRUE(Present(4, 2));
        EXPECT_TRUE(WaitForEnd());
        return m_Trace.Lines();
    }

    /// The methods of the library that were called, in their order.
    Lines Called() const
    {
        Lines lines = m_Client.Lines();
        for (std::string& line : lines)
            line = line.substr(0, line.find('('));
        return lines;
    }

    /// Starts the worker, and presents a first frame that the library keeps until the event is set.
    void StartIntoHang(HANDLE hRelease)
    {
        SetDeed(m_Client, TEST_CLIENT_UPDATE, {TEST_CLIENT_HANG, 0, hRelease});
        Start();
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(m_Client.WaitForUpdates(1));
        m_Trace.Clear();
    }

    /// Starts the worker, and presents a first frame that ends its thread.
    void StartIntoEndOfThread(TestClientExport of)
    {
        SetDeed(m_Client, of, {TEST_CLIENT_END_THREAD, 0, nullptr});
        Start();
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(WaitForEnd());
        m_Trace.Clear();
    }

    /// Ends the worker; lets it go when its owner has waited for two slices of the unlimited wait.
    template <typename LetGo>
    void WaitImpatiently(LetGo letGo)
    {
        const ImpatientWait impatient(nullptr, 2);
        EXPECT_TRUE(m_Thread->RequestExit());
        DWORD result = WAIT_FAILED;
        std::thread owner([&] { result = m_Thread->Wait(INFINITE); });
        EXPECT_TRUE(ImpatientWait::WaitUntilOver());
        letGo();
        owner.join();
        EXPECT_EQ(result, WAIT_OBJECT_0);
    }

    /// The worker has ended at a fault that was not the client library's.
    void ExpectEndedByItself()
    {
        EXPECT_EQ(m_Trace.Lines(), (Lines{"EXCEPTION_ACCESS_VIOLATION\n",
                                       "Exception in thread! UMDThreadFrameBuffer::Run of source 4 failed!\n",
                                       "UMDThreadFrameBuffer::Run exit\n"}));
        EXPECT_EQ(Called(), (Lines{"Plug", "Unplug"}));
        m_Fake.ClearScripts();
        ExpectExited();
        EXPECT_TRUE(m_Thread->RequestExit());
        m_pTarget.Reset();
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{}) << "the frame was given back";
    }
};

TEST_F(FrameBufferFaultTest, Plug_Faults_EndsTheWorkerAsIfRefused)
{
    SetDeed(m_Client, TEST_CLIENT_PLUG, kFault);
    EXPECT_EQ(ErrorsOfTheFirstFrame(),
        (Lines{"EXCEPTION_ACCESS_VIOLATION\n",
            "Exception in client library! TessloVirtualMonitorPlug of source 4 failed!\n",
            "UMDThreadFrameBuffer::InternalInitializeConnection m_TessloVirtualMonitorPlug() failed!\n",
            "UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n"}));
    EXPECT_EQ(Called(), Lines{"Plug"});
    ExpectExited();
}

TEST_F(FrameBufferFaultTest, Update_Faults_ClosesTheConnectionAsIfRefused)
{
    SetDeed(m_Client, TEST_CLIENT_UPDATE, kFault);
    EXPECT_EQ(ErrorsOfTheFirstFrame(),
        (Lines{"EXCEPTION_ACCESS_VIOLATION\n",
            "Exception in client library! TessloVirtualMonitorUpdate of source 4 failed!\n",
            "UMDThreadFrameBuffer::InternalSendFrameBuffer m_TessloVirtualMonitorUpdate() failed!\n",
            "UMDThreadFrameBuffer::InternalProcessFrameBuffer InternalSendFrameBuffer failed!\n",
            "UMDThreadFrameBuffer::Run InternalProcessFrameBuffer failed!\n"}));
    EXPECT_EQ(Called(), (Lines{"Plug", "Update", "Unplug"}));
    ExpectExited();
}

TEST_F(FrameBufferFaultTest, Update_Raises_IsNamedByItsCode)
{
    SetDeed(m_Client, TEST_CLIENT_UPDATE, {TEST_CLIENT_RAISE, 0xE06D7363, nullptr});
    const Lines lines = ErrorsOfTheFirstFrame();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "EXCEPTION_XXX -529697949 unknown\n");
    EXPECT_EQ(lines[1], "Exception in client library! TessloVirtualMonitorUpdate of source 4 failed!\n");
    EXPECT_EQ(Called(), (Lines{"Plug", "Update", "Unplug"}));
}

TEST_F(FrameBufferFaultTest, Unplug_Faults_EndsTheWorkerCleanly)
{
    const TraceMask mask(kErrorsAndEnd);
    SetDeed(m_Client, TEST_CLIENT_UNPLUG, kFault);
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Client.WaitForUpdates(1));
    m_Trace.Clear();
    Stop();
    // A worker that is still busy with the frame sees the exit there, and does not wait for it.
    Lines lines = m_Trace.Lines();
    std::erase(lines, "UMDThreadFrameBuffer::Run exiting...\n");
    EXPECT_EQ(lines, (Lines{"EXCEPTION_ACCESS_VIOLATION\n",
                         "Exception in client library! TessloVirtualMonitorUnplug of source 4 failed!\n",
                         "UMDThreadFrameBuffer::Run InternalUninitializeConnection() failed!\n",
                         "UMDThreadFrameBuffer::Run exit\n"}));
    EXPECT_EQ(Called(), (Lines{"Plug", "Update", "Unplug"}));
}

TEST_F(FrameBufferFaultTest, UpdateAndUnplug_Fault_EachIsTracedAndTheWorkerEnds)
{
    SetDeed(m_Client, TEST_CLIENT_UPDATE, kFault);
    SetDeed(m_Client, TEST_CLIENT_UNPLUG, kFault);
    const Lines lines = ErrorsOfTheFirstFrame();
    EXPECT_EQ(std::ranges::count(lines, "EXCEPTION_ACCESS_VIOLATION\n"), 2);
    EXPECT_EQ(lines.back(), "UMDThreadFrameBuffer::Run InternalUninitializeConnection() failed!\n");
    EXPECT_EQ(Called(), (Lines{"Plug", "Update", "Unplug"}));
    ExpectExited();
}

TEST_F(FrameBufferFaultTest, Update_EndsTheThread_TheNextPresentSaysSoOnce)
{
    const TraceMask mask(UMDTRACE_ERROR);
    StartIntoEndOfThread(TEST_CLIENT_UPDATE);
    EXPECT_FALSE(Present(4, 2));
    EXPECT_FALSE(Present(4, 2));
    EXPECT_EQ(
        m_Trace.Lines(), (Lines{"Thread ended in client library! TessloVirtualMonitorUpdate of source 4 failed!\n",
                             "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n",
                             "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n"}));
    EXPECT_EQ(Called(), (Lines{"Plug", "Update"})) << "no other thread may close the connection";
}

TEST_F(FrameBufferFaultTest, Update_EndsTheThreadAndNoPresentFollows_TheExitRequestSaysSo)
{
    const TraceMask mask(UMDTRACE_ERROR);
    StartIntoEndOfThread(TEST_CLIENT_UPDATE);
    m_pTarget.Reset();
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(
        m_Trace.Lines(), Lines{"Thread ended in client library! TessloVirtualMonitorUpdate of source 4 failed!\n"});
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{}) << "the frame that the worker was on is given back before the device goes";
}

TEST_F(FrameBufferFaultTest, Plug_EndsTheThread_TheNextPresentSaysSo)
{
    const TraceMask mask(UMDTRACE_ERROR);
    StartIntoEndOfThread(TEST_CLIENT_PLUG);
    EXPECT_FALSE(Present(4, 2));
    EXPECT_EQ(m_Trace.Lines(), (Lines{"Thread ended in client library! TessloVirtualMonitorPlug of source 4 failed!\n",
                                   "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n"}));
}

TEST_F(FrameBufferFaultTest, Wait_UpdateDoesNotReturn_TellsWhoHangs)
{
    const TraceMask mask(UMDTRACE_ERROR);
    const HANDLE hRelease = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    StartIntoHang(hRelease);
    WaitImpatiently([&] { SetEvent(hRelease); });
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadFrameBuffer::Wait source 4 has not ended after 5 s, it is in "
                                      "TessloVirtualMonitorUpdate\n",
                                   "UMDThreadFrameBuffer::Wait source 4 has not ended after 65 s, it is in "
                                   "TessloVirtualMonitorUpdate\n"}));
    EXPECT_EQ(Called(), (Lines{"Plug", "Update", "Unplug"}));
    CloseHandle(hRelease);
}

TEST_F(FrameBufferFaultTest, Wait_LockDoesNotReturn_TellsThatItIsNotTheLibrary)
{
    const TraceMask mask(UMDTRACE_ERROR);
    Gate gate;
    Start();
    m_Fake.On("surface.LockRect", [&] { gate.Pass(); });
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(gate.WaitForOne());
    m_Trace.Clear();
    WaitImpatiently([&] { gate.Open(); });
    EXPECT_EQ(
        m_Trace.Lines(), (Lines{"UMDThreadFrameBuffer::Wait source 4 has not ended after 5 s, it is in the driver\n",
                             "UMDThreadFrameBuffer::Wait source 4 has not ended after 65 s, it is in the driver\n"}));
}

TEST_F(FrameBufferFaultTest, Update_TakesLong_PresentsGoOn)
{
    const TraceMask mask(UMDTRACE_ERROR);
    const HANDLE hRelease = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    StartIntoHang(hRelease);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(Present(4, 2));
    EXPECT_EQ(m_Trace.Lines(), Lines{});
    SetEvent(hRelease);
    EXPECT_TRUE(m_Client.WaitForUpdates(2));
    Stop();
    CloseHandle(hRelease);
}

/// What the worker itself calls faults, under an open connection.
class FrameBufferOwnFaultTest : public FrameBufferFaultTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(FrameBufferOwnFaultTest, Run_CallFaults_EndsTheWorkerAndClosesTheConnection)
{
    const TraceMask mask(kErrorsAndEnd);
    Start();
    m_Fake.On(GetParam(), RaiseAccessViolation);
    m_Trace.Clear();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    ExpectEndedByItself();
}

INSTANTIATE_TEST_SUITE_P(Calls, FrameBufferOwnFaultTest, testing::Values("surface.LockRect", "surface.UnlockRect"));

TEST_F(FrameBufferFaultTest, Rotation_Faults_EndsTheWorkerAndClosesTheConnection)
{
    const TraceMask mask(kErrorsAndEnd);
    Start();
    // The copy's pixels are gone by the time that they are turned.
    m_Fake.On("surface#2.LockRect",
        [&] { std::vector<BYTE>().swap(m_Fake.Find<FakeSurface>("surface#2").Pixels().Bytes()); });
    m_Trace.Clear();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Fake.Calls("surface#2.LockRect"), 1u);
    EXPECT_EQ(m_Fake.Calls("surface#2.UnlockRect"), 0u);
    ExpectEndedByItself();
}
}  // namespace
