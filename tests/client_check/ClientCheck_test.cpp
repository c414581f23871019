// tesslo_client_check.exe as an author starts it: what it says of libraries that are broken on purpose, each with one
// fault, and of those that are shipped.
#include "TemporaryFolder.h"
#include "tools/process/ChildProcess.h"

#include <tesslo/browser_client.h>
#include <tesslo/sample_client.h>

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace tesslo::test;
using testing::HasSubstr;

namespace
{

/// So fast is every sound library on a machine that is busy with other things.
constexpr wchar_t kBusyMachine[] = L" --limit 2000 --patience 120";

/// Of what one library without a fault gets in full: each round is like the other.
constexpr wchar_t kFewer[] = L" --connections 200 --frames 30";

struct Outcome
{
    DWORD m_Code;
    std::string m_Output;
};

Outcome RunCheck(const std::wstring& arguments)
{
    ChildProcess child(L"tesslo_client_check.exe " + arguments);
    Outcome outcome;
    child.ReadLines([&](const std::string& line) { outcome.m_Output += line + "\n"; });
    child.Wait(60);
    outcome.m_Code = child.ExitCode();
    return outcome;
}

/// A library with a fault, the check that is meant for it, and what is said of it.
struct Row
{
    const char* m_pFault;
    const char* m_pCheck;
    const char* m_pFound;
    const wchar_t* m_pOptions = L"";
};

void PrintTo(const Row& row, std::ostream* pStream)
{
    *pStream << row.m_pFault;
}

class ClientCheckTest : public testing::TestWithParam<Row>
{
};

constexpr Row kRows[] = {
    {"HasNoUnplug", "exports", "there is no export TessloVirtualMonitorUnplug: define the function"},
    {"CxxNames", "exports", "there is no export TessloVirtualMonitorUnplug, but _Z26TessloVirtualMonitorUnplugPPvl"},
    {"RefusesToReconnect", "order", "Plug of source 0 answered false"},
    {"EndsThread", "order", "Unplug of source 0 ended the thread that it was called on"},
    {"Throws", "order", "in Update of source 0 (64x48, pitch 256): an exception of C++ has left the export"},
    {"Hangs", "order", "Update of source 0 (64x48, pitch 256) did not return within 3 s", L" --patience 3"},
    {"ServesOneSource", "sources", "answered false"},
    {"RefusesOddWidth", "sizes", "Update of source 0 (17x5, pitch 68) answered false"},
    {"RefusesPortrait", "rotations", "Update of source 0 (480x640, pitch 1920) answered false"},
    {"KeepsFirstSize", "resize", "exception 0xC0000005 in Update of source 0 (1280x720, pitch 5120)"},
    {"UnplugsAll", "replug", "Update of source 0 (320x200, pitch 1280) answered false"},
    {"IgnoresPitch", "pitch", "it reads what lies between two rows of a frame"},
    {"ReadsBehind", "guard", "it reads what lies around the rows of a frame"},
    {"WritesPixels", "const", "it writes the pixels of a frame, which are not its own"},
    {"KeepsPixels", "lifetime", "in Update of source 0 (3x2, pitch 12): it reads a frame whose Update has returned"},
    {"KeepsPixelsInThread", "lifetime", "in a thread of the library's own: it reads a frame whose Update has returned"},
    {"KeepsSlot", "slots", "it reads the slot of a connection that is closed"},
    {"WritesBesideSlot", "slots", "the library has written before its connection's slot"},
    {"WaitsInDllMain", "exit", "the end of the process (DllMain, DLL_PROCESS_DETACH) did not return within 3 s",
        L" --patience 3"},
    {"IsSlow", "time", "one Update in a hundred takes longer than 50 ms", L" --limit 50 --frames 10"},
    {"LeaksMemory", "leaks", "more blocks of the heap behind 800 connections"},
    {"LeaksPages", "leaks", "more bytes of pages behind 800 connections"},
    {"LeaksHandle", "leaks", "800 more handles behind 800 connections"},
    {"LeaksThread", "leaks", "more threads behind 80 connections", L" --connections 100"},
    {"LeavesThread", "unload", "in a thread of the library's own"},
    {"HoldsItself", "unload", "the library is still loaded when it was freed as often as loaded"},
    {"LosesOnLoad", "loads", "160 more blocks of the heap behind 160 loads"},
    {"PromisesDevice", "device", "TessloVirtualMonitorReserved1 answered true and has stored no device"},
    {"StoresNoObject", "device", "exception 0xC0000005 in the use of what TessloVirtualMonitorReserved1 has stored\n"},
    {"StoresPlainDevice", "device", "what TessloVirtualMonitorReserved1 has stored is no IDirect3DDevice9Ex"},
    {"StoresUnguardedDevice", "device", "has stored was made without D3DCREATE_MULTITHREADED"},
    {"StoresOneReference", "device", "the same device was stored twice, with one reference for both"},
    {"FaultsInSupply", "device", "exception 0xC0000005 in TessloVirtualMonitorReserved1; in TessloBrokenClient"},
    {"FaultsInNotice", "notice", "exception 0xC0000005 in TessloVirtualMonitorReserved2; in TessloBrokenClient"},
    {"ReleasesSurface", "notice", "20 fewer references of the surface behind 20 presents"},
    {"KeepsDevice", "notice", "20 more references of the device behind 20 presents"},
    {"HasNoSupply", "notice", "there is TessloVirtualMonitorReserved2 without TessloVirtualMonitorReserved1"},
};

/// The whole of the library's results, as the file has them.
nlohmann::json CheckAll(const std::wstring& library, DWORD code)
{
    const TemporaryFolder folder;
    const std::filesystem::path json = folder.Path() / "results.json";
    const Outcome outcome = RunCheck(library + kBusyMachine + L" --json \"" + json.wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, code) << outcome.m_Output;
    return nlohmann::json::parse(std::ifstream(json));
}

}  // namespace

TEST_P(ClientCheckTest, BrokenClient_TheCheckForItsFault_FindsIt)
{
    const Row& row = GetParam();
    const std::string fault = row.m_pFault, check = row.m_pCheck;
    const std::wstring library = L"TessloBrokenClient" + std::wstring(fault.begin(), fault.end()) + L".dll";
    const Outcome outcome = RunCheck(library + L" --only " + std::wstring(check.begin(), check.end()) + row.m_pOptions);
    EXPECT_EQ(outcome.m_Code, 1u);
    EXPECT_THAT(outcome.m_Output, HasSubstr(row.m_pFound));
    EXPECT_THAT(outcome.m_Output, HasSubstr("\n            change: "));
    EXPECT_THAT(outcome.m_Output, HasSubstr("0 passed, 1 failed\n"));
}

INSTANTIATE_TEST_SUITE_P(
    EveryFault, ClientCheckTest, testing::ValuesIn(kRows), [](const auto& info) { return info.param.m_pFault; });

TEST(ClientCheckSound, BrokenClientWithoutAFault_PassesAll)
{
    const nlohmann::json results = CheckAll(L"TessloBrokenClientNothing.dll", 0);
    EXPECT_EQ(results["passed"], true);
    EXPECT_EQ(results["checks"].size(), 19u);
    for (const nlohmann::json& check : results["checks"])
        EXPECT_EQ(check["verdict"], "passed") << check;
}

TEST(ClientCheckSound, MinimalClient_PassesAll)
{
    EXPECT_EQ(CheckAll(L"TessloClientDllMinimal.dll" + std::wstring(kFewer), 0)["passed"], true);
}

TEST(ClientCheckSound, SampleClientThatRecords_PassesAll)
{
    const TemporaryFolder folder;
    SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, folder.Path().c_str());
    EXPECT_EQ(CheckAll(L"TessloClientDllSample.dll" + std::wstring(kFewer), 0)["passed"], true);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "source0-frame000000.png")) << "it has recorded";
}

TEST(ClientCheckSound, BrowserClient_PassesAll)
{
    // A port for each process: cases run side by side.
    SetEnvironmentVariableW(TESSLO_BROWSER_PORT, std::to_wstring(20000 + GetCurrentProcessId() % 20000).c_str());
    EXPECT_EQ(CheckAll(L"TessloClientDllBrowser.dll" + std::wstring(kFewer), 0)["passed"], true);
}

/// Answers that the driver takes: a device, and none.
TEST(ClientCheckSound, ReservedExports_SuppliedAndDeclined_PassTheirChecks)
{
    for (const wchar_t* pLibrary : {L"TessloBrokenClientSuppliesDevice.dll", L"TessloBrokenClientDeclinesDevice.dll"})
    {
        const Outcome outcome = RunCheck(pLibrary + std::wstring(L" --only device --only notice"));
        EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Output;
        EXPECT_THAT(outcome.m_Output, HasSubstr("2 passed, 0 failed\n"));
    }
}

TEST(ClientCheckProgram, LossOnLoad_NoOtherCheckSeesIt)
{
    const nlohmann::json results = CheckAll(L"TessloBrokenClientLosesOnLoad.dll" + std::wstring(kFewer), 1);
    for (const nlohmann::json& check : results["checks"])
        EXPECT_EQ(check["verdict"], check["name"] == "loads" ? "FAILED" : "passed") << check;
}

TEST(ClientCheckProgram, NoExports_NothingElseIsRun)
{
    const nlohmann::json results = CheckAll(L"TessloBrokenClientHasNoUnplug.dll", 1);
    EXPECT_EQ(results["passed"], false);
    EXPECT_EQ(results["checks"][0]["verdict"], "FAILED");
    EXPECT_EQ(results["checks"][0]["change"], "Export the three functions by their plain names.");
    EXPECT_EQ(results["checks"][0]["findings"].size(), 1u);
    for (size_t i = 1; i < results["checks"].size(); ++i)
        EXPECT_EQ(results["checks"][i]["verdict"], "not run") << i;
}

TEST(ClientCheckProgram, Times_AreTold)
{
    const Outcome outcome =
        RunCheck(L"TessloBrokenClientIsSlow.dll --only time --limit 1000 --frames 5 --size 320x200");
    EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Output;
    EXPECT_THAT(outcome.m_Output, HasSubstr("5 Updates of 320x200: median 1"));
    EXPECT_THAT(outcome.m_Output, HasSubstr(" ms; the limit is 1000.00 ms\n"));
}

TEST(ClientCheckProgram, FileOfAnotherKind_SaysWhyItDoesNotLoad)
{
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Path() / "text.dll";
    std::ofstream(path) << "This is no library.";
    const Outcome outcome = RunCheck(L'"' + path.wstring() + L'"');
    EXPECT_EQ(outcome.m_Code, 1u);
    EXPECT_THAT(outcome.m_Output, HasSubstr("the library does not load ("));
    EXPECT_THAT(outcome.m_Output, HasSubstr("build it for 64-bit processors (x64), as the driver is"));
}

TEST(ClientCheckProgram, WhatItCannotBeAsked_Code2)
{
    EXPECT_EQ(RunCheck(L"nosuch.dll").m_Code, 2u);
    EXPECT_EQ(RunCheck(L"").m_Code, 2u);
    EXPECT_EQ(RunCheck(L"TessloClientDllMinimal.dll --only nosuch").m_Code, 2u);
    EXPECT_EQ(RunCheck(L"TessloClientDllMinimal.dll --only exports --size 0x1").m_Code, 2u);
    EXPECT_EQ(RunCheck(L"TessloClientDllMinimal.dll --only exports --json \"C:\\no such folder\\r.json\"").m_Code, 2u);
}

TEST(ClientCheckProgram, Help_TellsEveryCheck)
{
    const Outcome outcome = RunCheck(L"--help");
    EXPECT_EQ(outcome.m_Code, 0u);
    for (const char* pCheck :
        {"exports ", "order ", "sources ", "sizes ", "rotations ", "resize ", "replug ", "pitch ", "guard ", "const ",
            "lifetime ", "slots ", "device ", "notice ", "exit ", "time ", "leaks ", "unload ", "loads "})
        EXPECT_THAT(outcome.m_Output, HasSubstr(std::string("\n  ") + pCheck));
}
