// The log file while several processes that use the built DLL write to it.
#include "DriverDll.h"
#include "MachineLog.h"
#include "RegistryOverride.h"
#include "TemporaryFolder.h"
#include "TraceCapture.h"
#include "Waiting.h"
#include "host/runtime/HostProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{
using namespace tesslo::test;

constexpr int kProcesses = 8;
constexpr int kAttaches = 25;
constexpr wchar_t kFolder[] = L"TESSLO_TEST_FOLDER";  ///< where a writer keeps what its debugger got

/// The part of a writer, in a process of its own: attaches the DLL again and again, with all its lines.
TEST(LogFileWriter, DISABLED_Attach_AgainAndAgain)
{
    wchar_t folder[MAX_PATH] = L"";
    ASSERT_NE(GetEnvironmentVariableW(kFolder, folder, ARRAYSIZE(folder)), 0u);
    RegistryOverride registry;
    registry.SetTraceMask(0x801);
    registry.SetClientDllName(L"NoSuchLibrary.dll");
    TraceCapture trace;
    for (int i = 0; i < kAttaches; ++i)
        DriverDll driver;
    std::ofstream file(std::filesystem::path(folder) / std::to_string(GetCurrentProcessId()), std::ios::binary);
    for (const std::string& line : trace.Lines())
        file << line;
}

HANDLE StartWriter()
{
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, ARRAYSIZE(program));
    std::wstring line = L"\"" + std::wstring(program) +
                        L"\" --gtest_also_run_disabled_tests --gtest_filter=LogFileWriter.* --gtest_brief=1";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!HostStartProcess(nullptr, std::move(line), false, nullptr, startup, &process))
        return nullptr;
    CloseHandle(process.hThread);
    return process.hProcess;
}

TEST(MachineLogFileTest, Append_EightProcessesAtOnce_EveryLineArrivesWhole)
{
    const TemporaryFolder folder;
    SetEnvironmentVariableW(kFolder, folder.Path().c_str());
    const MachineLog log;
    std::vector<HANDLE> writers;
    for (int i = 0; i < kProcesses; ++i)
        writers.push_back(StartWriter());
    std::string expected, found;
    for (const HANDLE hWriter : writers)
    {
        ASSERT_NE(hWriter, nullptr);
        ASSERT_EQ(WaitForSingleObject(hWriter, 2 * kLong), WAIT_OBJECT_0);
        DWORD code = 1;
        GetExitCodeProcess(hWriter, &code);
        EXPECT_EQ(code, 0u);
    }
    size_t lines = 0;
    for (const HANDLE hWriter : writers)
    {
        const DWORD id = GetProcessId(hWriter);
        std::ifstream file(folder.Path() / std::to_string(id), std::ios::binary);
        const std::string debugger(std::istreambuf_iterator<char>(file), {});
        std::string logged;
        for (const std::string& message : log.MessagesOf(id))
            logged += message;
        EXPECT_EQ(logged, debugger) << "process " << id;
        lines += std::ranges::count(debugger, '\n');
        CloseHandle(hWriter);
    }
    EXPECT_GE(lines, size_t{kProcesses * kAttaches * 14});
    EXPECT_EQ(log.Lines().size(), lines) << "no line is anybody else's, or nobody's";
}
}  // namespace
