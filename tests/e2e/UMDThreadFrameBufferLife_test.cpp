// Frames on their way out of the real DLL while its device is closed, and what the DLL leaves behind.
#include "CreateRequest.h"
#include "DriverDll.h"
#include "FakeFactory.h"
#include "FakeSurface.h"
#include "Gate.h"
#include "ImportPatch.h"
#include "RegistryOverride.h"
#include "TemporaryFolder.h"
#include "TestClient.h"
#include "TraceCapture.h"
#include "Waiting.h"
#include "host/program/HostTraceFile.h"
#include "tools/process/ResourceCounts.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using namespace tesslo::test;

namespace
{
constexpr UINT kWidth = 16;
constexpr UINT kHeight = 8;

class OutputLifeTest : public testing::Test
{
protected:
    OutputLifeTest() { m_Registry.SetTraceMask(0x7FF); }

    /// Loads the DLL with this client library; its delegated device is the fake one.
    void Load(const std::wstring& clientDll)
    {
        m_Registry.SetClientDllName(clientDll);
        m_Driver.emplace();
        m_Factory.emplace(m_Fake, m_Driver->Module());
    }

    void OpenDevice()
    {
        ASSERT_EQ(m_Driver->OpenAdapter(m_Kernel), S_OK);
        ASSERT_EQ(m_Driver->CreateDevice(m_Kernel), S_OK);
    }

    HANDLE CreatePrimary(UINT source)
    {
        CreateRequest create(kFlagRenderTarget | kFlagPrimary, kVideo, D3DDDIFMT_X8R8G8B8, kWidth, kHeight);
        create.m_Arg.VidPnSourceId = source;
        EXPECT_EQ(m_Driver->m_DeviceFuncs.pfnCreateResource(m_Driver->m_hDevice, &create.m_Arg), S_OK);
        return create.m_Arg.hResource;
    }
    void DestroyResource(HANDLE hResource)
    {
        m_Driver->m_DeviceFuncs.pfnDestroyResource(m_Driver->m_hDevice, hResource);
    }

    HRESULT Flip(HANDLE hPrimary)
    {
        D3DDDIARG_PRESENT present{};
        present.hSrcResource = hPrimary;
        present.Flags.Flip = 1;
        return m_Driver->m_DeviceFuncs.pfnPresent(m_Driver->m_hDevice, &present);
    }

    RegistryOverride m_Registry;
    FakeDevice m_Fake;
    FakeKernel m_Kernel;
    std::optional<DriverDll> m_Driver;
    std::optional<FakeFactory> m_Factory;  ///< patches the DLL: goes first
};

TEST_F(OutputLifeTest, CloseAdapter_LibraryHoldsAFrame_WaitsWithTheRingGoneAndTheFrameWhole)
{
    Gate gate;
    TestClient client;
    client.On("Update", [&] { gate.Pass(); });
    Load(client.DllName());
    OpenDevice();
    const HANDLE hPrimary = CreatePrimary(0);
    std::vector<UINT> picture(kWidth * kHeight);
    std::iota(picture.begin(), picture.end(), 0x01000000);
    const Lines targets = m_Fake.LiveObjects();
    ASSERT_EQ(targets.size(), 1u);
    std::memcpy(m_Fake.Find<FakeSurface>(targets[0]).Pixels().Bytes().data(), picture.data(), picture.size() * 4);
    ASSERT_EQ(Flip(hPrimary), S_OK);
    ASSERT_TRUE(gate.WaitForOne());
    ASSERT_EQ(Flip(hPrimary), S_OK) << "the second frame fills a second slot";
    ASSERT_EQ(m_Fake.LiveObjects().size(), 3u);

    TraceCapture trace;
    std::atomic<bool> closed = false;
    std::thread closer([&] {
        EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
        closed = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return trace.Count(">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n") == 1; }));

    // The ring is gone, with it the waiting frame; the held one stays with the worker.
    EXPECT_EQ(trace.Count(">>> UMDGpuDx9Surface::Destroy\n"), 2u);
    EXPECT_EQ(m_Fake.ReferenceCount(), 2u) << "the delegated device outlives the frame";
    EXPECT_FALSE(closed);
    gate.Open();
    closer.join();
    EXPECT_EQ(client.Names(), (Lines{"Plug", "Update", "Unplug"}));
    EXPECT_EQ(client.Updates().at(0).m_Pixels, picture);
    EXPECT_EQ(m_Fake.LiveObjects(), targets) << "only what the runtime did not destroy";
    EXPECT_EQ(m_Fake.ReferenceCount(), 1u);
}

TEST_F(OutputLifeTest, CreateDevice_LibraryGivesADevice_UsesItAndTellsOfEachFlip)
{
    TestClient client;
    client.SetDevice(&m_Fake);
    Load(client.DllName());
    OpenDevice();
    EXPECT_EQ(m_Fake.Calls("d3d9.CreateDeviceEx"), 0u);
    EXPECT_EQ(m_Fake.ReferenceCount(), 2u);
    const HANDLE hPrimary = CreatePrimary(2);
    ASSERT_EQ(Flip(hPrimary), S_OK);
    ASSERT_TRUE(client.WaitForUpdates(1));
    EXPECT_EQ(client.Calls("Reserved1"), 1u);
    EXPECT_EQ(client.Calls("Reserved2"), 1u);
    DestroyResource(hPrimary);
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
    EXPECT_EQ(client.Lines().back(), "Unplug(0, 2)");
    EXPECT_EQ(m_Fake.ReferenceCount(), 1u);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

// One log for both: who reads the driver's trace finds there what the library said, at its place.
TEST_F(OutputLifeTest, Update_LibraryPrintsToTheDebugger_ItsLineStandsBetweenTheDriversOwn)
{
    const TemporaryFolder folder;
    std::optional<HostTraceFile> log(std::in_place, (folder.Path() / "lines").wstring());
    TestClient client;
    client.SetOnFrame([](const TessloVirtualMonitorFrame&) { OutputDebugStringW(L"the library has a frame\n"); });
    Load(client.DllName());
    OpenDevice();
    ASSERT_EQ(Flip(CreatePrimary(0)), S_OK);
    ASSERT_TRUE(client.WaitForUpdates(1));
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
    log.reset();
    std::ifstream file(folder.Path() / "lines");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const size_t before = text.find(">>> UMDThreadFrameBuffer::InternalSendFrameBuffer\n");
    const size_t remark = text.find("the library has a frame\n");
    const size_t behind = text.find(">>> UMDThreadFrameBuffer::InternalUninitializeConnection\n");
    ASSERT_NE(remark, std::string::npos) << text;
    EXPECT_LT(before, remark);
    EXPECT_LT(remark, behind);
}

class OutputLifeMissingExportTest : public OutputLifeTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(OutputLifeMissingExportTest, Flip_ExportMissing_TheSourceFailsFromTheSecondFrameOn)
{
    TestClient client(GetParam());
    Load(client.DllName());
    OpenDevice();
    const HANDLE hPrimary = CreatePrimary(0);
    TraceCapture trace;
    ASSERT_EQ(Flip(hPrimary), S_OK);
    ASSERT_TRUE(WaitUntil([&] { return trace.Count("UMDThreadFrameBuffer::Run exit\n") == 1; }));
    EXPECT_EQ(trace.LinesContaining("InternalInitializeConnection GetProcAddress").size(), 1u);
    // The worker marks itself behind its last line.
    EXPECT_TRUE(WaitUntil([&] { return Flip(hPrimary) == E_FAIL; }));
    EXPECT_EQ(trace.Count("UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n"), 1u);
    EXPECT_EQ(client.Names(), Lines{});
    DestroyResource(hPrimary);
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
}

INSTANTIATE_TEST_SUITE_P(Exports, OutputLifeMissingExportTest, testing::Values("Plug", "Unplug", "Update"));

void WINAPI NoSleep(DWORD) {}

/// Many devices, one after the other: enough for a handle that one in twenty-five loses. `./stress --only lives` has
/// more.
class OutputLifeStressTest : public OutputLifeTest
{
protected:
    OutputLifeStressTest()
    {
        m_Registry.SetTraceMask(0);
        m_Client.SetOnFrame([this](const TessloVirtualMonitorFrame& frame) { Read(frame); });
        Load(m_Client.DllName());
    }

    /// Reads a frame, slowly enough for it to be on its way when its device is closed.
    void Read(const TessloVirtualMonitorFrame& frame)
    {
        ++m_Updates;
        const auto* pPixels = static_cast<const volatile UINT*>(frame.pBits);
        for (UINT i = 0; i < frame.Width * frame.Height; ++i)
        {
            if (i % frame.Width == 0)
                SwitchToThread();
            m_WrongPixels += pPixels[i] != 0;
        }
    }

    /// One device from the opening to the end, with presents of one source.
    void Live(UINT source)
    {
        OpenDevice();
        const HANDLE hPrimary = CreatePrimary(source);
        for (int frame = 0; frame < 4; ++frame)
            ASSERT_EQ(Flip(hPrimary), S_OK);
        DestroyResource(hPrimary);
        ASSERT_EQ(m_Driver->m_DeviceFuncs.pfnDestroyDevice(m_Driver->m_hDevice), S_OK);
        ASSERT_EQ(m_Driver->CloseAdapter(), S_OK);
        ASSERT_EQ(m_Fake.LiveObjects(), Lines{});
        ASSERT_EQ(m_Fake.ReferenceCount(), 1u);
        ASSERT_EQ(m_Client.Calls("Plug"), m_Client.Calls("Unplug"));
        m_Fake.ClearLines();
        m_Kernel.ClearLines();
        m_Client.Forget();
    }

    TestClient m_Client;
    std::atomic<unsigned> m_Updates = 0;
    std::atomic<unsigned> m_WrongPixels = 0;
};

TEST_F(OutputLifeStressTest, ManyDevices_PresentsInFlight_LeaveNothingBehind)
{
    constexpr int kWarmUp = 20;
    constexpr int kRounds = 250;
    // The platform opens a few handles of its own when threads first meet at one of its locks.
    constexpr unsigned kPlatformHandles = 8;
    const ImportPatch sleep(m_Driver->Module(), "kernel32.dll", "Sleep", NoSleep);
    for (int round = 0; round < kWarmUp; ++round)
        ASSERT_NO_FATAL_FAILURE(Live(round % 6)) << "round " << round;
    const ResourceCounts before = ResourceCounts::Now();
    for (int round = 0; round < kRounds; ++round)
        ASSERT_NO_FATAL_FAILURE(Live(round % 6)) << "round " << round;
    const ResourceCounts after = ResourceCounts::Now();

    EXPECT_LE(after.m_Handles, before.m_Handles + kPlatformHandles);
    EXPECT_EQ(after.m_Threads, before.m_Threads);
    EXPECT_LT(after.m_WorkingSet, before.m_WorkingSet + (4u << 20));
    EXPECT_EQ(m_Factory->ReferenceCount(), 1u);
    EXPECT_EQ(m_Kernel.AllocationCount(), 0u);
    EXPECT_EQ(m_Kernel.ContextCount(), 0u);
    EXPECT_GT(m_Updates, 0u);
    EXPECT_EQ(m_WrongPixels, 0u);
}
}  // namespace
