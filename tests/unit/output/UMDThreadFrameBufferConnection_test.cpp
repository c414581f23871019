// The connection of a frame-buffer thread to the client library: opened by the first frame, closed at the end.
#include "FrameBufferThreadFixture.h"

using namespace tesslo::test;

namespace
{
class FrameBufferConnectionTest : public FrameBufferThreadFixture
{
};

TEST_F(FrameBufferConnectionTest, Run_NoFrameEver_OpensNoConnection)
{
    Start();
    Stop();
    EXPECT_EQ(m_Client.Names(), Lines{});
}

TEST_F(FrameBufferConnectionTest, Connection_SeveralFrames_KeepsOneSlotOnOneThread)
{
    int library = 0;
    m_Client.SetConnection(&library);
    Start();
    for (size_t frame = 1; frame <= 3; ++frame)
    {
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(m_Client.WaitForCalls(1 + frame));
    }
    Stop();
    const auto calls = m_Client.History();
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Update", "Update", "Unplug"}));
    EXPECT_EQ(calls[0].m_pSlotValue, nullptr);
    for (const TestClient::Call& call : calls)
    {
        EXPECT_EQ(call.m_ppSlot, calls[0].m_ppSlot);
        EXPECT_EQ(call.m_ThreadId, calls[0].m_ThreadId);
        EXPECT_EQ(call.m_VidPnSourceId, kSource);
        if (call.m_Name != "Plug")
        {
            EXPECT_EQ(call.m_pSlotValue, &library);
        }
    }
    EXPECT_NE(calls[0].m_ThreadId, GetCurrentThreadId());
}

TEST_F(FrameBufferConnectionTest, InitializeConnection_ExportMissing_EndsTheWorkerUnplugged)
{
    const TraceMask mask(kErrorsAndEnd);
    struct Case
    {
        const char* m_pExport;  ///< that the library lacks
        const char* m_pLine;
    };
    const Case cases[] = {
        {"Plug", "UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress1 failed! 127\n"},
        {"Unplug", "UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress2 failed! 127\n"},
        {"Update", "UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress3 failed! 127\n"},
    };
    for (const Case& row : cases)
    {
        m_Thread.emplace();
        const TestClient client(row.m_pExport);
        ASSERT_TRUE(Start(client.Module()));
        m_Trace.Clear();
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(WaitForEnd());
        EXPECT_EQ(
            ErrorLines(), (Lines{row.m_pLine, "UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n"}));
        EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
        EXPECT_EQ(client.Names(), Lines{});
        ExpectExited();
        EXPECT_TRUE(m_Thread->RequestExit());
    }
}

TEST_F(FrameBufferConnectionTest, InitializeConnection_NoClientLibrary_EndsTheWorkerAtTheFirstFrame)
{
    const TraceMask mask(kErrorsAndEnd);
    ASSERT_TRUE(Start(nullptr));
    m_Trace.Clear();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(ErrorLines(), (Lines{"UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress1 failed! 126\n",
                                "UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n"}));
    ExpectExited();
}

TEST_F(FrameBufferConnectionTest, InitializeConnection_PlugRefused_EndsTheWorkerUnplugged)
{
    const TraceMask mask(kErrorsAndEnd);
    m_Client.Fail("Plug", E_FAIL);
    Start();
    m_Trace.Clear();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(ErrorLines(),
        (Lines{"UMDThreadFrameBuffer::InternalInitializeConnection m_TessloVirtualMonitorPlug() failed!\n",
            "UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n"}));
    EXPECT_EQ(m_Client.Names(), Lines{"Plug"});
    ExpectExited();
}

TEST_F(FrameBufferConnectionTest, SendFrameBuffer_UpdateRefused_ClosesTheConnectionAndEnds)
{
    const TraceMask mask(kErrorsAndEnd);
    m_Client.Fail("Update", E_FAIL);
    Start();
    m_Trace.Clear();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(
        ErrorLines(), (Lines{"UMDThreadFrameBuffer::InternalSendFrameBuffer m_TessloVirtualMonitorUpdate() failed!\n",
                          "UMDThreadFrameBuffer::InternalProcessFrameBuffer InternalSendFrameBuffer failed!\n",
                          "UMDThreadFrameBuffer::Run InternalProcessFrameBuffer failed!\n"}));
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Unplug"}));
    ExpectExited();
}

TEST_F(FrameBufferConnectionTest, UninitializeConnection_UnplugRefused_IsTracedAndEndsCleanly)
{
    const TraceMask mask(kErrorsAndEnd);
    m_Client.Fail("Unplug", E_FAIL);
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    m_Trace.Clear();
    Stop();
    EXPECT_EQ(ErrorLines(), Lines{"UMDThreadFrameBuffer::Run InternalUninitializeConnection() failed!\n"});
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
}
}  // namespace
