// The files of packaging/ that switch the trace, imported as a user does it, and read by the built DLL.
#include "DriverDll.h"
#include "RegistryOverride.h"
#include "TemporaryFolder.h"
#include "TraceCapture.h"
#include "Waiting.h"
#include "host/runtime/HostProcess.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>

using namespace tesslo::test;

namespace
{
constexpr wchar_t kClient[] = L"NoSuchLibrary.dll";
constexpr wchar_t kServiceKey[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs the platform's own program. @return its exit code.
DWORD ImportFile(const std::filesystem::path& path)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    DWORD code = ~0u;
    if (!HostStartProcess(nullptr, L"reg.exe import \"" + path.wstring() + L"\"", false, nullptr, startup, &process))
        return code;
    EXPECT_EQ(WaitForSingleObject(process.hProcess, kLong), WAIT_OBJECT_0);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

class TraceSwitchesTest : public testing::Test
{
protected:
    TraceSwitchesTest() { m_Registry.SetClientDllName(kClient); }

    /// Imports a file of packaging/ into the registry of this process.
    void Import(const std::string& name)
    {
        std::string text = ReadFile(std::filesystem::path(TESSLO_SOURCE_DIR) / "packaging" / name);
        ASSERT_TRUE(text.starts_with("Windows Registry Editor Version 5.00\r\n")) << name;
        static const std::string kRoot = "HKEY_LOCAL_MACHINE";
        const size_t at = text.find(kRoot);
        ASSERT_NE(at, std::string::npos);
        const std::wstring& path = m_Registry.Path();
        text.replace(at, kRoot.size(), "HKEY_CURRENT_USER\\" + std::string(path.begin(), path.end()));
        std::ofstream(m_Folder.Path() / "copy.reg", std::ios::binary) << text;
        ASSERT_EQ(ImportFile(m_Folder.Path() / "copy.reg"), 0u);
    }

    /// The mask as the registry holds it, no value if it holds none.
    static std::optional<DWORD> Mask()
    {
        DWORD mask = 0, bytes = sizeof(mask);
        if (RegGetValueW(HKEY_LOCAL_MACHINE, kServiceKey, L"DebugLevelUMD", RRF_RT_REG_DWORD, nullptr, &mask, &bytes) !=
            ERROR_SUCCESS)
            return std::nullopt;
        return mask;
    }

    /// What the driver prints while it is attached.
    Lines Attach()
    {
        m_Trace.Clear();
        const DriverDll driver;
        return m_Trace.Lines();
    }

    RegistryOverride m_Registry;
    TemporaryFolder m_Folder;
    TraceCapture m_Trace;
};

TEST_F(TraceSwitchesTest, LogFile_Failures_AreWhatTheDriverThenPrints)
{
    Import("trace-failures.reg");
    EXPECT_EQ(Mask(), 0x801u);
    const Lines lines = Attach();
    EXPECT_EQ(Containing(lines, "LoadLibrary failed! 126").size(), 1u);
    EXPECT_EQ(Containing(lines, "UMDUtilRegistryValueGet").size(), 0u);
}

TEST_F(TraceSwitchesTest, LogFile_All_IsWhatTheDriverThenPrints)
{
    Import("trace-all.reg");
    EXPECT_EQ(Mask(), 0xAFFu);
    EXPECT_EQ(Containing(Attach(), "UMDUtilRegistryValueGet RegQueryValueExW").size(), 1u);
}

TEST_F(TraceSwitchesTest, LogFile_Off_TakesTheValueAwayAndTheDriverIsSilent)
{
    Import("trace-failures.reg");
    ASSERT_EQ(Mask(), 0x801u);
    Import("trace-off.reg");
    EXPECT_EQ(Mask(), std::nullopt);
    EXPECT_EQ(Attach(), Lines{});
}
}  // namespace
