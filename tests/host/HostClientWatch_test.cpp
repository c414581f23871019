// Client libraries of all kinds behind the built driver: none of them counts, the host does.
#include "ClientDeed.h"
#include "Gate.h"
#include "TemporaryFolder.h"
#include "TestClient.h"
#include "host/runtime/HostSession.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr wchar_t kDriver[] = L"TessloWddmUmode.dll";

/// A session with one client library, and a primary of its source 0.
class Screen
{
public:
    explicit Screen(const std::wstring& clientLibrary, const std::wstring& driver = kDriver)
        : m_Session({driver, clientLibrary, 0}),
          m_pPrimary(m_Session.Device().CreatePrimary(32, 16, 0, D3DDDI_ROTATION_IDENTITY))
    {
        m_Session.Device().SetRenderTarget(*m_pPrimary);
    }

    void Present(UINT color)
    {
        m_Session.Device().Clear(color);
        m_Session.Present(*m_pPrimary);
    }
    bool WaitDelivered(UINT64 count) { return m_Session.Delivery().WaitDelivered(0, count, kLong); }
    /// Ends the driver's threads, then counts.
    HostDeliveryCounters End()
    {
        m_pPrimary.reset();
        m_Session.Close();
        return m_Session.Delivery().Counters(0);
    }
    HostSession& Session() { return m_Session; }

private:
    HostSession m_Session;
    std::unique_ptr<HostResource> m_pPrimary;
};

}  // namespace

TEST(HostClientWatch, PlainLibrary_EveryFrame_NumbersAreItsOwn)
{
    TestClient client("Reserved1");
    Screen screen(client.DllName());
    screen.Session().Delivery().KeepFrames();
    for (UINT frame = 0; frame < 4; ++frame)
    {
        screen.Present(0x102030 + frame);
        ASSERT_TRUE(screen.WaitDelivered(frame + 1));
    }
    const HostDeliveryCounters counters = screen.End();
    EXPECT_EQ(counters.m_Presented, 4u);
    EXPECT_EQ(counters.m_Delivered, client.Updates().size());
    EXPECT_EQ(counters.Dropped(), 0u);
    EXPECT_EQ(counters.m_Late, 0u);
    EXPECT_EQ(screen.Session().Delivery().LastFrame(0).m_Width, 32u);
    EXPECT_EQ(screen.Session().Delivery().LastFrame(0).At(31, 15), 0x102033u);
    EXPECT_FALSE(screen.Session().Recording().Counters(0).has_value()) << "it says nothing itself";
}

TEST(HostClientWatch, SlowLibrary_FramesMeanwhile_OneLateAndTheReplacedOnesDropped)
{
    TestClient client;
    Gate gate;
    client.SetOnFrame([&](const TessloVirtualMonitorFrame&) { gate.Pass(); });
    Screen screen(client.DllName());
    screen.Present(1);
    ASSERT_TRUE(gate.WaitForOne());
    for (UINT frame = 2; frame <= 4; ++frame)
        screen.Present(frame);
    gate.Open();
    ASSERT_TRUE(screen.WaitDelivered(2));
    const HostDeliveryCounters counters = screen.End();
    EXPECT_EQ(counters.m_Presented, 4u);
    EXPECT_EQ(counters.m_Delivered, 2u);
    EXPECT_EQ(counters.m_Late, 1u);
    EXPECT_EQ(counters.Dropped(), 2u);
    const auto updates = client.Updates();
    ASSERT_EQ(updates.size(), 2u);
    EXPECT_EQ(updates[1].m_Pixels[0] & 0xFFFFFF, 4u) << "the newest";
}

TEST(HostClientWatch, LibraryRefuses_FrameOrPlug_IsToldAtOnce)
{
    for (const char* pExport : {"Plug", "Update"})
    {
        TestClient client;
        client.Fail(pExport, E_FAIL);
        Screen screen(client.DllName());
        screen.Present(1);
        EXPECT_FALSE(screen.WaitDelivered(1));
        EXPECT_TRUE(screen.Session().Delivery().Counters(0).m_bRefused) << pExport;
        EXPECT_EQ(screen.End().m_Delivered, 0u);
    }
}

TEST(HostClientWatch, LibraryFaults_InUpdate_DriverHoldsItAndNothingIsDelivered)
{
    TestClient client;
    SetDeed(client, TEST_CLIENT_UPDATE, {TEST_CLIENT_FAULT, 0, nullptr});
    Screen screen(client.DllName());
    screen.Present(1);
    ASSERT_TRUE(client.WaitForUpdates(1));
    const HostDeliveryCounters counters = screen.End();
    EXPECT_EQ(counters.m_Delivered, 0u);
    EXPECT_TRUE(counters.m_bInUpdate);
}

TEST(HostClientWatch, ReservedExports_OfALibraryThatHasThem_AreCalledAsEver)
{
    TestClient client;
    Screen screen(client.DllName());
    screen.Present(1);
    ASSERT_TRUE(screen.WaitDelivered(1));
    screen.End();
    std::vector<std::string> names;
    for (const std::string& line : client.Lines())
        names.push_back(line.substr(0, line.find('(')));
    EXPECT_EQ(names, (std::vector<std::string>{"Reserved1", "Reserved2", "Plug", "Update", "Unplug"}));
}

TEST(HostClientWatch, TwoDrivers_WithDifferentLibraries_AreCountedApart)
{
    // A driver of another path is another module, with a client library of its own.
    TemporaryFolder folder;
    const std::filesystem::path copy = folder.Path() / "copy.dll";
    std::filesystem::copy_file(kDriver, copy);
    TestClient client;
    Screen sample(L"TessloClientDllSample.dll"), other(client.DllName(), copy.wstring());
    sample.Present(1);
    other.Present(1);
    ASSERT_TRUE(sample.WaitDelivered(1));
    ASSERT_TRUE(other.WaitDelivered(1));
    other.Present(2);
    ASSERT_TRUE(other.WaitDelivered(2));
    EXPECT_EQ(other.End().m_Delivered, 2u);
    EXPECT_EQ(sample.End().m_Delivered, 1u);
    EXPECT_EQ(client.Updates().size(), 2u);
}
