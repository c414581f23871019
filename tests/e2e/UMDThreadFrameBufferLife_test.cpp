// Frames on their way out of the real DLL while its device is closed, and what the DLL leaves behind.

#include "DriverDll.h"
#include "FakeFactory.h"
#include "FakeSurface.h"
#include "ImportPatch.h"
#include "RegistryOverride.h"
#include "ResourceCounts.h"
#include "TestClient.h"
#include "TraceCapture.h"
#include "client/test/TestClientTable.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace
{
using tesslo::test::DriverDll;
using tesslo::test::FakeDevice;
using tesslo::test::FakeFactory;
using tesslo::test::FakeKernel;
using tesslo::test::FakeSurface;
using tesslo::test::ImportPatch;
using tesslo::test::RegistryOverride;
using tesslo::test::ResourceCounts;
using tesslo::test::TestClient;
using tesslo::test::TraceCapture;
using Lines = std::vector<std::string>;

constexpr DWORD kLong = 30000;  ///< milliseconds; reached only by a failing test
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
        D3DDDI_SURFACEINFO surface{};
        surface.Width = kWidth;
        surface.Height = kHeight;
        surface.Depth = 1;
        D3DDDIARG_CREATERESOURCE create{};
        create.Format = D3DDDIFMT_X8R8G8B8;
        create.pSurfList = &surface;
        create.SurfCount = 1;
        create.MipLevels = 1;
        create.VidPnSourceId = source;
        create.hResource = this;
        create.Flags.RenderTarget = 1;
        create.Flags.Primary = 1;
        create.Rotation = D3DDDI_ROTATION_IDENTITY;
        EXPECT_EQ(m_Driver->m_DeviceFuncs.pfnCreateResource(m_Driver->m_hDevice, &create), S_OK);
        return create.hResource;
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

/// Gives functions of the test's own to the client library of the tests.
class ClientTable
{
public:
    explicit ClientTable(const TestClientTable& table) : m_hModule(LoadLibraryW(L"TessloTestClient.dll"))
    {
        SetTable(&table);
    }
    ~ClientTable()
    {
        SetTable(nullptr);
        FreeLibrary(m_hModule);
    }
    ClientTable(const ClientTable&) = delete;
    ClientTable& operator=(const ClientTable&) = delete;

private:
    void SetTable(const TestClientTable* pTable)
    {
        reinterpret_cast<TestClientSetTableFunction>(
            reinterpret_cast<void*>(GetProcAddress(m_hModule, TEST_CLIENT_SET_TABLE)))(pTable);
    }

    HMODULE m_hModule;
};

struct HeldFrame
{
    HANDLE m_hHeld = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HANDLE m_hRelease = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::vector<UINT> m_Pixels;
    std::atomic<int> m_Unplugs = 0;

    static BOOLEAN Update(void* pContext, void**, const TessloVirtualMonitorFrame* pFrame)
    {
        auto& self = *static_cast<HeldFrame*>(pContext);
        SetEvent(self.m_hHeld);
        WaitForSingleObject(self.m_hRelease, INFINITE);
        const auto* pPixels = static_cast<const UINT*>(pFrame->pBits);
        self.m_Pixels.assign(pPixels, pPixels + size_t{pFrame->Width} * pFrame->Height);
        return TRUE;
    }

    static BOOLEAN Unplug(void* pContext, void**, UINT)
    {
        ++static_cast<HeldFrame*>(pContext)->m_Unplugs;
        return TRUE;
    }
};

TEST_F(OutputLifeTest, CloseAdapter_LibraryHoldsAFrame_WaitsWithTheRingGoneAndTheFrameWhole)
{
    HeldFrame held;
    ClientTable client({&held, nullptr, HeldFrame::Update, HeldFrame::Unplug, nullptr, nullptr});
    Load(L"TessloTestClient.dll");
    OpenDevice();
    const HANDLE hPrimary = CreatePrimary(0);
    std::vector<UINT> picture(kWidth * kHeight);
    for (UINT i = 0; i < picture.size(); ++i)
        picture[i] = 0x01000000 + i;
    const Lines targets = m_Fake.LiveObjects();
    ASSERT_EQ(targets.size(), 1u);
    std::memcpy(m_Fake.Find<FakeSurface>(targets[0]).Pixels().Bytes().data(), picture.data(), picture.size() * 4);
    ASSERT_EQ(Flip(hPrimary), S_OK);
    ASSERT_EQ(WaitForSingleObject(held.m_hHeld, kLong), WAIT_OBJECT_0);
    ASSERT_EQ(Flip(hPrimary), S_OK) << "the second frame fills a second slot";
    ASSERT_EQ(m_Fake.LiveObjects().size(), 3u);

    TraceCapture trace;
    std::atomic<bool> closed = false;
    std::thread closer([&] {
        EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
        closed = true;
    });
    const DWORD begin = GetTickCount();
    while (trace.Count(">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n") == 0 && GetTickCount() - begin < kLong)
        Sleep(1);
    EXPECT_EQ(trace.Count(">>> UMDGpuDx9Surface::~UMDGpuDx9Surface\n"), 1u);

    // The ring is gone, with it the waiting frame; the held one stays with the worker.
    EXPECT_EQ(trace.Count(">>> UMDGpuDx9Surface::Destroy\n"), 2u);
    EXPECT_EQ(m_Fake.ReferenceCount(), 2u) << "the delegated device outlives the frame";
    EXPECT_FALSE(closed);
    SetEvent(held.m_hRelease);
    closer.join();
    EXPECT_EQ(held.m_Pixels, picture);
    EXPECT_EQ(held.m_Unplugs, 1);
    EXPECT_EQ(m_Fake.LiveObjects(), targets) << "only what the runtime did not destroy";
    EXPECT_EQ(m_Fake.ReferenceCount(), 1u);
    CloseHandle(held.m_hHeld);
    CloseHandle(held.m_hRelease);
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
    ASSERT_TRUE(client.WaitForFrames(1));
    EXPECT_EQ(client.Calls("Reserved1"), 1u);
    EXPECT_EQ(client.Calls("Reserved2"), 1u);
    m_Driver->m_DeviceFuncs.pfnDestroyResource(m_Driver->m_hDevice, hPrimary);
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
    EXPECT_EQ(client.Lines().back(), "Unplug(0, 2)");
    EXPECT_EQ(m_Fake.ReferenceCount(), 1u);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    m_Factory.reset();
    m_Driver.reset();
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
    const DWORD begin = GetTickCount();
    while (trace.Count("UMDThreadFrameBuffer::Run exit\n") == 0 && GetTickCount() - begin < kLong)
        Sleep(1);
    ASSERT_EQ(trace.Count("UMDThreadFrameBuffer::Run exit\n"), 1u);
    EXPECT_EQ(trace.LinesContaining("InternalInitializeConnection GetProcAddress").size(), 1u);
    // The worker marks itself behind its last line.
    HRESULT hr = S_OK;
    while (SUCCEEDED(hr = Flip(hPrimary)) && GetTickCount() - begin < kLong)
    {
    }
    EXPECT_EQ(hr, E_FAIL);
    EXPECT_EQ(trace.Count("UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n"), 1u);
    EXPECT_EQ(client.Calls("Plug") + client.Calls("Update") + client.Calls("Unplug"), 0u);
    m_Driver->m_DeviceFuncs.pfnDestroyResource(m_Driver->m_hDevice, hPrimary);
    EXPECT_EQ(m_Driver->CloseAdapter(), S_OK);
    m_Factory.reset();
    m_Driver.reset();
}

INSTANTIATE_TEST_SUITE_P(Exports, OutputLifeMissingExportTest, testing::Values("Plug", "Unplug", "Update"));

/// Reads every frame, slowly enough for frames to be on their way when their device is closed.
struct Reader
{
    std::atomic<unsigned> m_Plugs = 0;
    std::atomic<unsigned> m_Updates = 0;
    std::atomic<unsigned> m_Unplugs = 0;
    std::atomic<unsigned> m_WrongPixels = 0;

    static BOOLEAN Plug(void* pContext, void**, UINT)
    {
        ++static_cast<Reader*>(pContext)->m_Plugs;
        return TRUE;
    }
    static BOOLEAN Update(void* pContext, void**, const TessloVirtualMonitorFrame* pFrame)
    {
        auto& self = *static_cast<Reader*>(pContext);
        ++self.m_Updates;
        const auto* pPixels = static_cast<const volatile UINT*>(pFrame->pBits);
        for (UINT i = 0; i < pFrame->Width * pFrame->Height; ++i)
        {
            if (i % pFrame->Width == 0)
                SwitchToThread();
            self.m_WrongPixels += pPixels[i] != 0;
        }
        return TRUE;
    }
    static BOOLEAN Unplug(void* pContext, void**, UINT)
    {
        ++static_cast<Reader*>(pContext)->m_Unplugs;
        return TRUE;
    }
};

void WINAPI NoSleep(DWORD) {}

/// A thousand devices, in four processes.
class OutputLifeStressTest : public OutputLifeTest, public testing::WithParamInterface<int>
{
};

TEST_P(OutputLifeStressTest, QuarterOfAThousandDevices_PresentsInFlight_LeaveNothingBehind)
{
    constexpr int kWarmUp = 20;
    constexpr int kRounds = 250;
    // The platform opens a few handles of its own when threads first meet at one of its locks.
    constexpr unsigned kPlatformHandles = 8;
    m_Registry.SetTraceMask(0);
    Reader reader;
    ClientTable client({&reader, Reader::Plug, Reader::Update, Reader::Unplug, nullptr, nullptr});
    Load(L"TessloTestClient.dll");
    ImportPatch sleep(m_Driver->Module(), "kernel32.dll", "Sleep", reinterpret_cast<void*>(NoSleep));
    const auto live = [&](int round) {
        OpenDevice();
        const HANDLE hPrimary = CreatePrimary(round % 6);
        for (int frame = 0; frame < 4; ++frame)
            ASSERT_EQ(Flip(hPrimary), S_OK);
        m_Driver->m_DeviceFuncs.pfnDestroyResource(m_Driver->m_hDevice, hPrimary);
        ASSERT_EQ(m_Driver->m_DeviceFuncs.pfnDestroyDevice(m_Driver->m_hDevice), S_OK);
        ASSERT_EQ(m_Driver->CloseAdapter(), S_OK);
        ASSERT_EQ(m_Fake.LiveObjects(), Lines{}) << "round " << round;
        ASSERT_EQ(m_Fake.ReferenceCount(), 1u) << "round " << round;
        m_Fake.ClearLines();
        m_Kernel.ClearLines();
    };
    for (int round = 0; round < kWarmUp; ++round)
        ASSERT_NO_FATAL_FAILURE(live(round));
    const ResourceCounts before = ResourceCounts::Now();
    for (int round = 0; round < kRounds; ++round)
        ASSERT_NO_FATAL_FAILURE(live(round));
    const ResourceCounts after = ResourceCounts::Now();

    EXPECT_LE(after.m_Handles, before.m_Handles + kPlatformHandles);
    EXPECT_EQ(after.m_Threads, before.m_Threads);
    EXPECT_LT(after.m_WorkingSet, before.m_WorkingSet + (4u << 20));
    EXPECT_EQ(m_Factory->ReferenceCount(), 1u);
    EXPECT_EQ(m_Kernel.AllocationCount(), 0u);
    EXPECT_EQ(m_Kernel.ContextCount(), 0u);
    EXPECT_EQ(reader.m_Plugs, reader.m_Unplugs);
    EXPECT_GT(reader.m_Updates, 0u);
    EXPECT_EQ(reader.m_WrongPixels, 0u);
}

INSTANTIATE_TEST_SUITE_P(Quarters, OutputLifeStressTest, testing::Range(0, 4));
}  // namespace
