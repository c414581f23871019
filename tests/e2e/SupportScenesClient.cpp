#include "ClientDeed.h"
#include "Gate.h"
#include "ImpatientWait.h"
#include "SupportProgram.h"
#include "SupportScenes.h"
#include "TraceCapture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tesslo::test
{

namespace
{

constexpr char kNoPicture[] = "No picture";
constexpr char kStandsStill[] = "Picture stands still";

DWORD NotLoaded(DWORD mask)
{
    SupportProgram program(mask, L"NoSuchLibrary.dll");
    program.MakeScreen();
    program.FlipUntilRefused();
    EXPECT_EQ(program.Delivered(), 0u);
    return GetCurrentProcessId();
}

DWORD LacksAnExport(DWORD mask)
{
    int number = 0;
    for (const char* pVariant : {"Plug", "Unplug", "Update"})
    {
        const TestClient client(pVariant);
        const TraceCapture trace;
        SupportProgram program(mask, client.DllName());
        program.MakeScreen();
        program.FlipUntilRefused();
        EXPECT_EQ(program.Delivered(), 0u) << pVariant;
        EXPECT_EQ(trace.LinesContaining(" GetProcAddress" + std::to_string(++number) + " failed! ").size(), 1u);
    }
    return GetCurrentProcessId();
}

DWORD Refuses(DWORD mask)
{
    TestClient client;
    client.Fail("Plug", E_FAIL);
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.FlipUntilRefused();
    EXPECT_EQ(program.Delivered(), 0u);
    return GetCurrentProcessId();
}

/// One frame comes, the second is the last that the library is called with.
DWORD EndAtTheSecondFrame(DWORD mask, TestClient& client, const std::function<void()>& harm)
{
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Show();
    harm();
    program.FlipUntilRefused();
    EXPECT_EQ(program.Delivered(), 1u);
    return GetCurrentProcessId();
}

DWORD RefusesAFrame(DWORD mask)
{
    TestClient client;
    return EndAtTheSecondFrame(mask, client, [&] { client.Fail("Update", E_FAIL); });
}

DWORD Faults(DWORD mask)
{
    TestClient client;
    return EndAtTheSecondFrame(
        mask, client, [&] { SetDeed(client, TEST_CLIENT_UPDATE, {TEST_CLIENT_FAULT, 0, nullptr}); });
}

DWORD EndsItsThread(DWORD mask)
{
    TestClient client;
    return EndAtTheSecondFrame(
        mask, client, [&] { SetDeed(client, TEST_CLIENT_UPDATE, {TEST_CLIENT_END_THREAD, 0, nullptr}); });
}

/// The library is at its second frame while three more are presented.
DWORD TakesLong(DWORD mask)
{
    TestClient client;
    Gate gate;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Show();
    client.SetOnFrame([&](const TessloVirtualMonitorFrame&) { gate.Pass(); });
    EXPECT_TRUE(program.Flip());
    EXPECT_TRUE(gate.WaitForOne());
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(program.Flip()) << "the program does not wait";
    EXPECT_EQ(program.Delivered(), 1u);
    gate.Open();
    return GetCurrentProcessId();
}

DWORD DoesNotEnd(DWORD mask)
{
    TestClient client;
    Gate gate;
    client.SetOnFrame([&](const TessloVirtualMonitorFrame&) { gate.Pass(); });
    auto pProgram = std::make_unique<SupportProgram>(mask, client.DllName());
    pProgram->MakeScreen();
    EXPECT_TRUE(pProgram->Flip());
    EXPECT_TRUE(gate.WaitForOne());
    const ImpatientWait impatient(pProgram->Driver().Module(), 1);
    std::atomic<bool> ended = false;
    std::thread program([&] {
        pProgram->DestroyScreen();
        ended = true;
    });
    EXPECT_TRUE(ImpatientWait::WaitUntilOver());
    EXPECT_FALSE(ended);
    gate.Open();
    program.join();
    return GetCurrentProcessId();
}

constexpr SupportScene kScenes[] = {
    {kNoPicture, "the client library is not loaded", NotLoaded},
    {kNoPicture, "the client library lacks an export", LacksAnExport},
    {kNoPicture, "the client library refuses the monitor", Refuses},
    {kStandsStill, "the client library refused a frame", RefusesAFrame},
    {kStandsStill, "the client library faulted", Faults},
    {kStandsStill, "the client library ended the driver's thread", EndsItsThread},
    {kStandsStill, "the client library does not come back", TakesLong},
    {"Slow", "the client library takes longer than a frame", TakesLong},
    {"Program ended", "the program does not end", DoesNotEnd},
};

}  // namespace

std::span<const SupportScene> SupportScenesClient()
{
    return kScenes;
}

}  // namespace tesslo::test
