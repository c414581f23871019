#include "output/UMDThreadFrameBuffer.h"

#include "DeviceFixture.h"
#include "FailNthAllocation.h"
#include "FakeSurface.h"
#include "FrameClient.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <optional>

namespace
{
using tesslo::test::DeviceFixture;
using tesslo::test::FailingImport;
using tesslo::test::FailNthAllocation;
using tesslo::test::FakeSurface;
using tesslo::test::ImportPatch;
using Lines = std::vector<std::string>;

constexpr DWORD kLong = 30000;  ///< milliseconds; reached only by a failing test
constexpr UINT kSource = 4;

// Tells of each wait of a worker.
HANDLE g_hAtWait;
decltype(&WaitForMultipleObjects) g_pWait;

DWORD WINAPI TellingWait(DWORD count, const HANDLE* pHandles, BOOL all, DWORD milliseconds)
{
    ReleaseSemaphore(g_hAtWait, 1, nullptr);
    return g_pWait(count, pHandles, all, milliseconds);
}

/// A worker of the test's own, in the place of the six of the started device that gives it the delegated device.
class UMDThreadFrameBufferTest : public DeviceFixture
{
protected:
    void SetUp() override
    {
        DeviceFixture::SetUp();
        m_pDevice->InterFrameBufferThreadsStop();
        m_Thread.emplace();
        ForgetCalls();
    }

    void TearDown() override
    {
        if (m_Thread && m_Thread->RequestExit())
            m_Thread->Wait(INFINITE);
        m_Thread.reset();
        m_pTarget.Reset();
        DeviceFixture::TearDown();
    }

    void Start() { ASSERT_TRUE(m_Thread->Start(m_pDevice.get(), kSource, m_Client.Module())); }

    /// Presents a render target whose pixels count up from the first one.
    bool Present(UINT width, UINT height, UINT firstPixel = 0, UINT rotation = D3DDDI_ROTATION_IDENTITY)
    {
        m_Fake.CreateRenderTarget(
            width, height, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, m_pTarget.Put(), nullptr);
        auto& bytes = dynamic_cast<FakeSurface*>(m_pTarget.Get())->Pixels().Bytes();
        auto* pPixels = reinterpret_cast<UINT*>(bytes.data());
        for (UINT i = 0; i < width * height; ++i)
            pPixels[i] = firstPixel + i;
        return m_Thread->FrameBufferAvailable(m_pTarget.Get(), width, height, D3DFMT_X8R8G8B8, rotation);
    }

    bool WaitForEnd() { return m_Thread->Wait(kLong) == WAIT_OBJECT_0; }

    /// Ends the worker and waits for it.
    void Stop()
    {
        EXPECT_TRUE(m_Thread->RequestExit());
        ASSERT_TRUE(WaitForEnd());
    }

    /// The worker has ended by itself: presents say so.
    void ExpectExited()
    {
        m_Trace.Clear();
        EXPECT_FALSE(Present(4, 4));
        EXPECT_EQ(m_Trace.Lines(), (Lines{">>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
                                       "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n"}));
    }

    /// The lines at the level of errors.
    Lines ErrorLines() const
    {
        Lines lines = m_Trace.Lines();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("failed") == std::string::npos && line.find("failded") == std::string::npos;
        });
        return lines;
    }

    size_t PositionOf(const std::string& line) const
    {
        const Lines lines = m_Trace.Lines();
        return std::ranges::find(lines, line) - lines.begin();
    }

    FrameClient m_Client;
    UMDComPtr<IDirect3DSurface9> m_pTarget;
    std::optional<UMDThreadFrameBuffer> m_Thread;
};

TEST_F(UMDThreadFrameBufferTest, ConstructorAndDestructor_NeverStarted_TraceOneLineEach)
{
    m_Trace.Clear();
    {
        UMDThreadFrameBuffer thread;
    }
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{"UMDThreadFrameBuffer::UMDThreadFrameBuffer\n", "UMDThreadFrameBuffer::~UMDThreadFrameBuffer\n"}));
}

TEST_F(UMDThreadFrameBufferTest, RequestExit_NeverStarted_AnswersFalse)
{
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->RequestExit());
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDThreadFrameBuffer::RequestExit\n"});
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadFrameBufferTest, FrameBufferAvailable_NeverStarted_Fails)
{
    m_Trace.Clear();
    EXPECT_FALSE(Present(4, 4));
    EXPECT_EQ(m_Trace.Lines(), (Lines{">>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
                                   "UMDThreadFrameBuffer::FrameBufferAvailable m_bInit == false\n"}));
}

TEST_F(UMDThreadFrameBufferTest, Start_NoDevice_FailsAndStaysUnstarted)
{
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->Start(nullptr, kSource, m_Client.Module()));
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", "UMDThreadFrameBuffer::Start pDeviceContext is NULL\n"}));
    EXPECT_FALSE(m_Thread->RequestExit());
}

TEST_F(UMDThreadFrameBufferTest, Start_Twice_AnswersTrueAndDoesNothingMore)
{
    Start();
    m_Trace.Clear();
    FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_TRUE(m_Thread->Start(nullptr, kSource + 1, nullptr));
    EXPECT_EQ(m_Trace.LinesOfThisThread(), Lines{">>> UMDThreadFrameBuffer::Start\n"});
}

TEST_F(UMDThreadFrameBufferTest, Start_AfterTheEnd_AnswersTrueAndStartsNothing)
{
    Start();
    Stop();
    EXPECT_TRUE(m_Thread->Start(m_pDevice.get(), kSource, m_Client.Module()));
    EXPECT_EQ(m_Thread->Wait(0), WAIT_OBJECT_0);
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, Start_NoMemoryForTheRing_FailsAndPresentsAreRefused)
{
    m_Trace.Clear();
    bool started = true;
    {
        FailNthAllocation shortage(1);
        started = m_Thread->Start(m_pDevice.get(), kSource, m_Client.Module());
    }
    EXPECT_FALSE(started);
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", "UMDThreadFrameBuffer::Start FrameBuffer is NULL\n"}));
    ExpectExited();
    EXPECT_TRUE(m_Thread->Start(m_pDevice.get(), kSource, m_Client.Module())) << "started once is started";
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadFrameBufferTest, Start_NoThread_Fails)
{
    m_Trace.Clear();
    FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(m_Thread->Start(m_pDevice.get(), kSource, m_Client.Module()));
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", ">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n",
            ">>> UMDFrameBuffer::UMDFrameBuffer\n", "UMDThreadBase::Start CreateThread failed. LastError 8",
            "UMDThreadFrameBuffer::Start UMDBaseThread::Start failed!\n"}));
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(INFINITE), 0u);
}

TEST_F(UMDThreadFrameBufferTest, Life_OneFrame_TracesEachStepOnItsThread)
{
    g_hAtWait = CreateSemaphoreW(nullptr, 0, 100, nullptr);
    ImportPatch wait(nullptr, "kernel32.dll", "WaitForMultipleObjects", reinterpret_cast<void*>(TellingWait));
    g_pWait = wait.Original<decltype(&WaitForMultipleObjects)>();
    m_Trace.Clear();
    Start();
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0);
    ASSERT_TRUE(Present(4, 2));
    ASSERT_EQ(WaitForSingleObject(g_hAtWait, kLong), WAIT_OBJECT_0) << "the worker waits for the second frame";
    Stop();
    CloseHandle(g_hAtWait);
    EXPECT_EQ(m_Trace.LinesOfThisThread(),
        (Lines{">>> UMDThreadFrameBuffer::Start\n", ">>> UMDGpuDx9Surface::UMDGpuDx9Surface\n",
            ">>> UMDFrameBuffer::UMDFrameBuffer\n", ">>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
            ">>> UMDFrameBuffer::DuplicateFrameBuffer\n", ">>> UMDGpuDx9Surface::Create\n",
            ">>> UMDGpuDx9Surface::Duplicate\n", "UMDGpuDx9Surface::Duplicate SRC[4 2 22] DST[4 2 22] XXX[4 2 22]\n",
            ">>> UMDFrameBuffer::GetDuplicateFrameBufferMalloc\n", ">>> UMDFrameBuffer::GetDuplicateFrameBuffer\n",
            "UMDThreadFrameBuffer::RequestExit\n", ">>> UMDFrameBuffer::~UMDFrameBuffer\n",
            ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
    Lines workerLines;
    for (const auto& line : m_Trace.ThreadLines())
    {
        if (line.m_ThreadId != GetCurrentThreadId())
            workerLines.push_back(line.m_Text);
    }
    EXPECT_EQ(workerLines,
        (Lines{">>> UMDThreadFrameBuffer::Run\n", ">>> UMDThreadFrameBuffer::InternalInitializeConnection\n",
            ">>> UMDThreadFrameBuffer::InternalProcessFrameBuffer\n",
            ">>> UMDThreadFrameBuffer::InternalSendFrameBuffer\n", "UMDThreadFrameBuffer::Run exiting...\n",
            ">>> UMDThreadFrameBuffer::InternalUninitializeConnection\n", "UMDThreadFrameBuffer::Run exit\n"}));
    EXPECT_LT(PositionOf(">>> UMDFrameBuffer::GetDuplicateFrameBuffer\n"),
        PositionOf(">>> UMDThreadFrameBuffer::InternalProcessFrameBuffer\n"));
    EXPECT_LT(
        PositionOf(">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"), PositionOf("UMDThreadFrameBuffer::Run exiting...\n"));
}

TEST_F(UMDThreadFrameBufferTest, Run_NoFrameEver_OpensNoConnection)
{
    Start();
    Stop();
    EXPECT_EQ(m_Client.Names(), Lines{});
}

TEST_F(UMDThreadFrameBufferTest, Connection_SeveralFrames_KeepsOneSlotOnOneThread)
{
    int library = 0;
    m_Client.m_pConnection = &library;
    Start();
    for (size_t frame = 1; frame <= 3; ++frame)
    {
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(m_Client.WaitForCalls(1 + frame));
    }
    Stop();
    const auto calls = m_Client.Calls();
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Update", "Update", "Unplug"}));
    EXPECT_EQ(calls[0].m_pSlotValue, nullptr);
    for (const FrameClientCall& call : calls)
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

TEST_F(UMDThreadFrameBufferTest, Update_EachRotation_SendsTheRotatedImageAndItsGeometry)
{
    struct Case
    {
        UINT m_Rotation;
        UINT m_Width;
        UINT m_Height;
        std::vector<UINT> m_Pixels;
    };
    // Of the image 10 11 12 / 13 14 15.
    const Case cases[] = {
        {D3DDDI_ROTATION_IDENTITY, 3, 2, {10, 11, 12, 13, 14, 15}},
        {D3DDDI_ROTATION_90, 2, 3, {12, 15, 11, 14, 10, 13}},
        {D3DDDI_ROTATION_180, 3, 2, {15, 14, 13, 12, 11, 10}},
        {D3DDDI_ROTATION_270, 2, 3, {13, 10, 14, 11, 15, 12}},
    };
    Start();
    size_t calls = 1;
    for (const Case& row : cases)
    {
        ASSERT_TRUE(Present(3, 2, 10, row.m_Rotation));
        ASSERT_TRUE(m_Client.WaitForCalls(++calls));
        const FrameClientCall update = m_Client.Calls().back();
        EXPECT_EQ(update.m_Pixels, row.m_Pixels) << "rotation " << row.m_Rotation;
        const TessloVirtualMonitorFrame expected = {
            0, kSource, row.m_Width, row.m_Height, row.m_Width * 4, 0, update.m_Frame.pBits};
        EXPECT_EQ(std::memcmp(&update.m_Frame, &expected, 32), 0) << "rotation " << row.m_Rotation;
        EXPECT_NE(update.m_Frame.pBits, nullptr);
    }
}

TEST_F(UMDThreadFrameBufferTest, Update_LandscapeFrameRotatedBy90_IsDeliveredAsPortrait)
{
    Start();
    ASSERT_TRUE(Present(800, 600, 0, D3DDDI_ROTATION_90));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    const FrameClientCall update = m_Client.Calls().back();
    EXPECT_EQ(update.m_Frame.Width, 600u);
    EXPECT_EQ(update.m_Frame.Height, 800u);
    EXPECT_EQ(update.m_Frame.Pitch, 2400u);
    for (UINT y = 0; y < 600; y += 7)
    {
        for (UINT x = 0; x < 800; x += 7)
            ASSERT_EQ(update.m_Pixels[(799 - x) * 600 + y], y * 800 + x);
    }
}

TEST_F(UMDThreadFrameBufferTest, InitializeConnection_ExportMissing_EndsTheWorkerUnplugged)
{
    struct Case
    {
        const char* m_pExport;
        const char* m_pLine;
    };
    const Case cases[] = {
        {"TessloVirtualMonitorPlug",
            "UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress1 failed! 127\n"},
        {"TessloVirtualMonitorUnplug",
            "UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress2 failed! 127\n"},
        {"TessloVirtualMonitorUpdate",
            "UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress3 failed! 127\n"},
    };
    for (const Case& row : cases)
    {
        m_Thread.emplace();
        m_Client.m_Missing = {row.m_pExport};
        Start();
        m_Trace.Clear();
        ASSERT_TRUE(Present(4, 2));
        ASSERT_TRUE(WaitForEnd());
        EXPECT_EQ(
            ErrorLines(), (Lines{row.m_pLine, "UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n"}));
        EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
        EXPECT_EQ(m_Client.Names(), Lines{});
        ExpectExited();
        EXPECT_TRUE(m_Thread->RequestExit());
    }
}

TEST_F(UMDThreadFrameBufferTest, InitializeConnection_NoClientLibrary_EndsTheWorkerAtTheFirstFrame)
{
    ASSERT_TRUE(m_Thread->Start(m_pDevice.get(), kSource, nullptr));
    m_Trace.Clear();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(ErrorLines(), (Lines{"UMDThreadFrameBuffer::InternalInitializeConnection GetProcAddress1 failed! 126\n",
                                "UMDThreadFrameBuffer::Run InternalInitializeConnection failed!\n"}));
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, InitializeConnection_PlugRefused_EndsTheWorkerUnplugged)
{
    m_Client.m_Refusing = {"Plug"};
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

TEST_F(UMDThreadFrameBufferTest, SendFrameBuffer_UpdateRefused_ClosesTheConnectionAndEnds)
{
    m_Client.m_Refusing = {"Update"};
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

TEST_F(UMDThreadFrameBufferTest, UninitializeConnection_UnplugRefused_IsTracedAndEndsCleanly)
{
    m_Client.m_Refusing = {"Unplug"};
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    m_Trace.Clear();
    Stop();
    EXPECT_EQ(ErrorLines(), Lines{"UMDThreadFrameBuffer::Run InternalUninitializeConnection() failed!\n"});
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
}

TEST_F(UMDThreadFrameBufferTest, ProcessFrameBuffer_AStepFails_EndsTheWorkerAndUnplugs)
{
    struct Case
    {
        const char* m_pMethod;  ///< of the copy's surface; null for none
        UINT m_Rotation;
        Lines m_Lines;
    };
    const Case cases[] = {
        {"surface.LockRect", D3DDDI_ROTATION_IDENTITY,
            {"UMDThreadFrameBuffer::InternalProcessFrameBuffer LockRect failed! hResult:0x8876086c\n"}},
        {"surface.UnlockRect", D3DDDI_ROTATION_IDENTITY,
            {"UMDThreadFrameBuffer::InternalProcessFrameBuffer UnlockRect failed! hResult:0x8876086c\n"}},
        {nullptr, 0,
            {"UMDThreadFrameBuffer::InternalCopyData failded no rotation 0\n",
                "UMDThreadFrameBuffer::InternalProcessFrameBuffer UMDImgProcRotation failed! hResult:0x80004005\n"}},
        {nullptr, 5,
            {"UMDThreadFrameBuffer::InternalCopyData failded no rotation 5\n",
                "UMDThreadFrameBuffer::InternalProcessFrameBuffer UMDImgProcRotation failed! hResult:0x80004005\n"}},
    };
    for (const Case& row : cases)
    {
        m_Thread.emplace();
        const size_t callsBefore = m_Client.Calls().size();
        Start();
        m_Trace.Clear();
        if (row.m_pMethod)
            m_Fake.Fail(row.m_pMethod, D3DERR_INVALIDCALL);
        ASSERT_TRUE(Present(4, 2, 0, row.m_Rotation));
        ASSERT_TRUE(WaitForEnd());
        m_Fake.ClearScripts();

        Lines expected = row.m_Lines;
        expected.push_back("UMDThreadFrameBuffer::Run InternalProcessFrameBuffer failed!\n");
        EXPECT_EQ(ErrorLines(), expected);
        Lines names = m_Client.Names();
        names.erase(names.begin(), names.begin() + callsBefore);
        EXPECT_EQ(names, (Lines{"Plug", "Unplug"}));
        ExpectExited();
        EXPECT_TRUE(m_Thread->RequestExit());
    }
}

TEST_F(UMDThreadFrameBufferTest, FrameBufferAvailable_CopyFails_FailsAndTheWorkerLivesOn)
{
    Start();
    m_Fake.CreateRenderTarget(4, 2, D3DFMT_R5G6B5, D3DMULTISAMPLE_NONE, 0, FALSE, m_pTarget.Put(), nullptr);
    m_Trace.Clear();
    EXPECT_FALSE(m_Thread->FrameBufferAvailable(m_pTarget.Get(), 4, 2, D3DFMT_R5G6B5, D3DDDI_ROTATION_IDENTITY));
    EXPECT_EQ(ErrorLines(),
        (Lines{"UMDGpuDx9Surface::Create failed! Format is unsupported! Format:23\n",
            "UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x80004005\n",
            "UMDThreadFrameBuffer::FrameBufferAvailable DuplicateFrameBuffer failed! hResult:8000400580004005\n"}));

    EXPECT_TRUE(Present(4, 2));
    EXPECT_TRUE(m_Client.WaitForCalls(2));
}

TEST_F(UMDThreadFrameBufferTest, FrameBufferAvailable_EventRefused_Fails)
{
    Start();
    m_Trace.Clear();
    bool presented = true;
    {
        FailingImport noEvent(nullptr, "kernel32.dll", "SetEvent", FALSE, ERROR_INVALID_HANDLE);
        presented = Present(4, 2);
    }
    EXPECT_FALSE(presented);
    EXPECT_EQ(ErrorLines(), Lines{"UMDThreadFrameBuffer::FrameBufferAvailable SetEvent failed! 6\n"});
    EXPECT_EQ(m_Client.Names(), Lines{});
}

TEST_F(UMDThreadFrameBufferTest, Run_WaitFails_EndsWithTheLastError)
{
    m_Trace.Clear();
    FailingImport noWait(nullptr, "kernel32.dll", "WaitForMultipleObjects", WAIT_FAILED, ERROR_INVALID_HANDLE);
    Start();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run WAIT_FAILED 6...\n"), 1u);
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, Run_WaitAnswersSomethingElse_EndsAndTellsIt)
{
    m_Trace.Clear();
    FailingImport oddWait(nullptr, "kernel32.dll", "WaitForMultipleObjects", WAIT_ABANDONED_0 + 1, 0);
    Start();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run unexpected result 129...\n"), 1u);
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, Update_SlowLibrary_GetsOnlyTheNewestFrameAndPresentsDoNotWait)
{
    Start();
    m_Client.Hold("Update");
    ASSERT_TRUE(Present(4, 2, 100));
    ASSERT_TRUE(m_Client.WaitUntilHeld());
    for (UINT frame = 2; frame <= 20; ++frame)
        ASSERT_TRUE(Present(4, 2, frame * 100)) << "returns though the library holds the first frame";
    m_Client.Release();
    ASSERT_TRUE(m_Client.WaitForCalls(3));
    Stop();
    const auto updates = m_Client.Calls("Update");
    ASSERT_EQ(updates.size(), 2u);
    EXPECT_EQ(updates[0].m_Pixels.front(), 100u);
    EXPECT_EQ(updates[1].m_Pixels.front(), 2000u);
}

TEST_F(UMDThreadFrameBufferTest, Run_WokenForAFrameThatIsTaken_WaitsForTheNext)
{
    Start();
    m_Client.Hold("Plug");
    ASSERT_TRUE(Present(4, 2, 100));
    ASSERT_TRUE(m_Client.WaitUntilHeld());
    ASSERT_TRUE(Present(4, 2, 200));  // taken behind the plug, which leaves its wake-up behind
    m_Client.Release();
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    ASSERT_TRUE(Present(4, 2, 300));
    ASSERT_TRUE(m_Client.WaitForCalls(3));
    Stop();
    const auto updates = m_Client.Calls("Update");
    ASSERT_EQ(updates.size(), 2u);
    EXPECT_EQ(updates[0].m_Pixels.front(), 200u);
    EXPECT_EQ(updates[1].m_Pixels.front(), 300u);
}

// What becomes of one block of memory.
std::atomic<const void*> g_pWatched;
std::atomic<int> g_Freed;
void (*g_pFree)(void*);

void WatchingFree(void* pMemory)
{
    if (pMemory && pMemory == g_pWatched)
    {
        ++g_Freed;
        g_pWatched = &g_Freed;  // the address may be given out again
    }
    g_pFree(pMemory);
}

class HeldFrameTest : public UMDThreadFrameBufferTest
{
protected:
    HeldFrameTest() : m_Free(nullptr, "msvcrt.dll", "free", reinterpret_cast<void*>(WatchingFree))
    {
        g_pFree = m_Free.Original<void (*)(void*)>();
        g_pWatched = nullptr;
        g_Freed = 0;
    }

    /// Presents a frame and leaves the library in the middle of its Update.
    void PresentAndHold(UINT width, UINT height, UINT firstPixel)
    {
        m_Client.m_OnFrame = [](const TessloVirtualMonitorFrame& frame) {
            if (!g_pWatched)
                g_pWatched = frame.pBits;
        };
        m_Client.m_OnHeldFrame = [this](const TessloVirtualMonitorFrame&) { m_FreedUnderTheLibrary = g_Freed; };
        m_Client.Hold("Update");
        ASSERT_TRUE(Present(width, height, firstPixel));
        ASSERT_TRUE(m_Client.WaitUntilHeld());
    }

    ImportPatch m_Free;
    int m_FreedUnderTheLibrary = -1;
};

TEST_F(HeldFrameTest, RequestExit_LibraryHoldsAFrame_TheRingGoesAndTheFrameStays)
{
    Start();
    ASSERT_TRUE(Present(4, 2, 1));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    PresentAndHold(4, 2, 100);
    IDirect3DSurface9* const pHeld = &m_Fake.Find<FakeSurface>("surface#4");
    ASSERT_EQ(m_Fake.LiveObjects(), (Lines{"surface#2", "surface#3", "surface#4"})) << "target is 3, copies 2 and 4";
    m_Trace.Clear();

    EXPECT_TRUE(m_Thread->RequestExit());

    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadFrameBuffer::RequestExit\n", ">>> UMDFrameBuffer::~UMDFrameBuffer\n",
                                   ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::Destroy\n",
                                   ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
    EXPECT_EQ(m_Fake.LiveObjects(), (Lines{"surface#3", "surface#4"}));
    EXPECT_EQ(m_Fake.Find<FakeSurface>("surface#4").ReferenceCount(), 1u) << "the worker's own";
    EXPECT_EQ(static_cast<IDirect3DSurface9*>(&m_Fake.Find<FakeSurface>("surface#4")), pHeld);

    m_Client.Release();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_FreedUnderTheLibrary, 0);
    EXPECT_EQ(g_Freed, 1);
    EXPECT_EQ(m_Client.Calls("Update").back().m_Pixels, (std::vector<UINT>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{"surface#3"});
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Update", "Unplug"}));
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exiting...\n"), 0u) << "ends without a further wait";
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
}

TEST_F(HeldFrameTest, RequestExit_ANewerFrameIsWaiting_IsNotDelivered)
{
    Start();
    PresentAndHold(4, 2, 100);
    ASSERT_TRUE(Present(4, 2, 200));
    EXPECT_TRUE(m_Thread->RequestExit());
    m_Client.Release();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Unplug"}));
    m_pTarget.Reset();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(HeldFrameTest, FrameBufferAvailable_SizeChangesUnderTheLibrary_TheHeldFrameStays)
{
    Start();
    PresentAndHold(4, 2, 100);
    for (UINT frame = 1; frame <= 6; ++frame)
        ASSERT_TRUE(Present(16, 9, frame * 1000)) << "the fourth frame makes the held one's slot again";
    EXPECT_EQ(g_Freed, 0);
    m_Client.Release();
    ASSERT_TRUE(m_Client.WaitForCalls(3));
    EXPECT_EQ(m_FreedUnderTheLibrary, 0);
    EXPECT_EQ(g_Freed, 1);
    const auto updates = m_Client.Calls("Update");
    EXPECT_EQ(updates[0].m_Pixels, (std::vector<UINT>{100, 101, 102, 103, 104, 105, 106, 107}));
    EXPECT_EQ(updates[1].m_Frame.Width, 16u);
    EXPECT_EQ(updates[1].m_Frame.Height, 9u);
    EXPECT_EQ(updates[1].m_Pixels.front(), 6000u);
    EXPECT_EQ(updates[1].m_Pixels.back(), 6000u + 16 * 9 - 1);
}

TEST_F(HeldFrameTest, DestroyThreads_LibraryHoldsAFrameOfTheDevice_WaitsForItAndLeavesNothing)
{
    Start();
    PresentAndHold(4, 2, 100);
    // What closing the adapter does with the device's own workers, in the same order.
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Thread->Wait(0), static_cast<DWORD>(WAIT_TIMEOUT));
    m_Client.Release();
    ASSERT_TRUE(WaitForEnd());
    m_Thread.reset();
    m_pTarget.Reset();
    m_pDevice->DestroyThreads();
    m_pDevice.reset();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(m_Fake.ReferenceCount(), 1u);
}

TEST_F(UMDThreadFrameBufferTest, RequestExit_Twice_AnswersTrueAndDoesNothingMore)
{
    Start();
    Stop();
    m_Trace.Clear();
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDThreadFrameBuffer::RequestExit\n"});
    ExpectExited();
}

TEST_F(UMDThreadFrameBufferTest, RequestExit_WorkerEndedByItself_StillDeletesTheRing)
{
    m_Client.m_Refusing = {"Plug"};
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(WaitForEnd());
    m_pTarget.Reset();
    EXPECT_EQ(m_Fake.LiveObjects().size(), 1u);
    m_Trace.Clear();
    EXPECT_TRUE(m_Thread->RequestExit());
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDThreadFrameBuffer::RequestExit\n", ">>> UMDFrameBuffer::~UMDFrameBuffer\n",
                                   ">>> UMDGpuDx9Surface::Destroy\n", ">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"}));
}

TEST_F(UMDThreadFrameBufferTest, Destructor_WorkerStillRuns_EndsItAndTheRing)
{
    Start();
    ASSERT_TRUE(Present(4, 2));
    ASSERT_TRUE(m_Client.WaitForCalls(2));
    m_pTarget.Reset();
    m_Thread.reset();
    EXPECT_EQ(m_Client.Names(), (Lines{"Plug", "Update", "Unplug"}));
    EXPECT_EQ(m_Trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(UMDThreadFrameBufferTest, FrameBufferAvailable_ManyFrames_AllocatesNothing)
{
    tesslo::test::TraceMask quiet(0);
    Start();
    for (int frame = 0; frame < 3; ++frame)
        ASSERT_TRUE(Present(4, 2));
    bool presented = true;
    unsigned allocations = 0;
    {
        FailNthAllocation counter(0);
        for (int frame = 0; frame < 100; ++frame)
            presented = presented && m_Thread->FrameBufferAvailable(
                                         m_pTarget.Get(), 4, 2, D3DFMT_X8R8G8B8, D3DDDI_ROTATION_IDENTITY);
        allocations = counter.Count();
    }
    EXPECT_TRUE(presented);
    EXPECT_EQ(allocations, 0u);
}
}  // namespace
