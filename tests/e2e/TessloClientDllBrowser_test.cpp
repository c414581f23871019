// The built client library for web browsers, loaded and called as the driver does: what it leaves behind, and what it
// says to calls that make no sense. What it serves is tested from outside, in tests/browser.
#include "ClientDll.h"
#include "ImportPatch.h"
#include "Waiting.h"
#include "tools/process/HeapUse.h"
#include "tools/process/ResourceCounts.h"

#include <tesslo/browser_client.h>
#include <tesslo/client.h>

#include <gtest/gtest.h>
#include <winsock2.h>

#include <optional>
#include <string>
#include <string_view>

using namespace tesslo::test;

namespace
{

constexpr wchar_t kLibrary[] = L"TessloClientDllBrowser.dll";
constexpr UINT kBits[16] = {};
constexpr TessloVirtualMonitorFrame kFrame = {0, 0, 4, 4, 16, 0, kBits};

class TessloClientDllBrowserTest : public testing::Test
{
protected:
    TessloClientDllBrowserTest()
    {
        // A port for each process: cases run side by side.
        SetEnvironmentVariableW(TESSLO_BROWSER_PORT, std::to_wstring(m_Port).c_str());
    }

    /// Whether the server answers a request for the page.
    bool AnswersPage() const
    {
        const SOCKET hSocket = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(m_Port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        char answer[15] = {};
        if (connect(hSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0)
        {
            constexpr std::string_view kRequest = "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n";
            send(hSocket, kRequest.data(), static_cast<int>(kRequest.size()), 0);
            recv(hSocket, answer, sizeof(answer), MSG_WAITALL);
        }
        closesocket(hSocket);
        return std::string_view(answer, sizeof(answer)) == "HTTP/1.1 200 OK";
    }

    const u_short m_Port = static_cast<u_short>(20000 + GetCurrentProcessId() % 20000);

    /// One connection's whole life.
    static void Live(ClientDll& library, UINT source)
    {
        void* pSlot = nullptr;
        ASSERT_TRUE(library.Plug(&pSlot, source));
        EXPECT_TRUE(library.Update(&pSlot, &kFrame));
        EXPECT_TRUE(library.Unplug(&pSlot, source));
        EXPECT_EQ(pSlot, nullptr);
    }
};

}  // namespace

TEST_F(TessloClientDllBrowserTest, Exports_NothingToWorkOn_AreRefused)
{
    ClientDll library(kLibrary);
    void* pSlot = nullptr;
    EXPECT_FALSE(library.Plug(nullptr, 0));
    EXPECT_FALSE(library.Update(nullptr, &kFrame));
    EXPECT_FALSE(library.Update(&pSlot, &kFrame)) << "not plugged";
    EXPECT_FALSE(library.Unplug(&pSlot, 0)) << "not plugged";
    ASSERT_TRUE(library.Plug(&pSlot, 0));
    const TessloVirtualMonitorFrame noBits = {0, 0, 4, 4, 16, 0, nullptr};
    EXPECT_FALSE(library.Update(&pSlot, nullptr));
    EXPECT_FALSE(library.Update(&pSlot, &noBits));
    EXPECT_TRUE(library.Unplug(&pSlot, 0));
    EXPECT_FALSE(library.Unplug(&pSlot, 0)) << "the slot is empty again";
}

TEST_F(TessloClientDllBrowserTest, Update_FrameThatCannotBeShown_KeepsTheConnection)
{
    ClientDll library(kLibrary);
    void* pSlot = nullptr;
    ASSERT_TRUE(library.Plug(&pSlot, 0));
    const TessloVirtualMonitorFrame shortRows = {0, 0, 4, 4, 12, 0, kBits};
    EXPECT_TRUE(library.Update(&pSlot, &shortRows));
    EXPECT_TRUE(library.Update(&pSlot, &kFrame));
    EXPECT_TRUE(library.Unplug(&pSlot, 0));
}

TEST_F(TessloClientDllBrowserTest, Unplug_LastConnection_LeavesNoThread)
{
    ClientDll library(kLibrary);
    // Once before: the system keeps threads of its own behind the first use of the network.
    Live(library, 0);
    const unsigned before = ResourceCounts::Now().m_Threads;
    void* pFirst = nullptr;
    void* pSecond = nullptr;
    ASSERT_TRUE(library.Plug(&pFirst, 0));
    ASSERT_TRUE(library.Plug(&pSecond, 1));
    EXPECT_GT(ResourceCounts::Now().m_Threads, before);
    EXPECT_TRUE(library.Unplug(&pFirst, 0));
    EXPECT_GT(ResourceCounts::Now().m_Threads, before) << "the other connection goes on";
    EXPECT_TRUE(library.Unplug(&pSecond, 1));
    EXPECT_EQ(ResourceCounts::Now().m_Threads, before);
}

TEST_F(TessloClientDllBrowserTest, Plug_ThreadRefused_IsRefusedAndTheNextBeginsAnew)
{
    ClientDll library(kLibrary);
    std::optional<FailingImport> none(
        std::in_place, library.Module(), "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    void* pSlot = nullptr;
    EXPECT_FALSE(library.Plug(&pSlot, 0));
    EXPECT_EQ(pSlot, nullptr);
    none.reset();
    Live(library, 0);
}

TEST_F(TessloClientDllBrowserTest, Load_DoesNotBeginTheNetwork)
{
    const ClientDll library(kLibrary);
    EXPECT_EQ(socket(AF_INET, SOCK_STREAM, 0), INVALID_SOCKET);
    EXPECT_EQ(WSAGetLastError(), WSANOTINITIALISED) << "DllMain may load no other library";
}

TEST_F(TessloClientDllBrowserTest, Load_ManyRoundsInUse_StillLoadsAndNothingIsLeft)
{
    // A library that leaks one thread-local index a load would end this process on the way.
    WSADATA data;
    ASSERT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
    constexpr UINT kRounds = 1200, kWarm = 100;
    ResourceCounts before{};
    HeapUse heapBefore{};
    for (UINT round = 0; round < kRounds; ++round)
    {
        ClientDll library(kLibrary);
        ASSERT_NE(library.Module(), nullptr) << "round " << round;
        void* pSlot = nullptr;
        ASSERT_TRUE(library.Plug(&pSlot, 0));
        EXPECT_TRUE(library.Update(&pSlot, &kFrame));
        ASSERT_TRUE(WaitUntil([this] { return AnswersPage(); }));
        EXPECT_TRUE(library.Unplug(&pSlot, 0));
        if (round == kWarm)
        {
            before = ResourceCounts::Now();
            heapBefore = HeapUse::Now();
        }
    }
    const ResourceCounts after = ResourceCounts::Now();
    EXPECT_EQ(after.m_Threads, before.m_Threads);
    EXPECT_EQ(after.m_Handles, before.m_Handles);
    EXPECT_LT(HeapUse::Now().m_Blocks, heapBefore.m_Blocks + kRounds / 10);
}
