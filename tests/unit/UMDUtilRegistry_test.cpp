// Registry access: what is read, written, created and traced.
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilRegistry.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace tesslo::test
{
namespace
{
constexpr wchar_t kPath[] = L"Software\\TessloRegistryTest";

class UtilRegistry : public testing::Test
{
protected:
    /// A root of this process alone.
    void SetUp() override
    {
        m_Root = L"Software\\TessloRegistryTest" + std::to_wstring(GetCurrentProcessId());
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, m_Root.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_hRoot,
                      nullptr),
            ERROR_SUCCESS);
    }

    void TearDown() override
    {
        RegCloseKey(m_hRoot);
        RegDeleteTreeW(HKEY_CURRENT_USER, m_Root.c_str());
    }

    bool KeyExists()
    {
        HKEY hKey = nullptr;
        if (RegOpenKeyExW(m_hRoot, kPath, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
            return false;
        RegCloseKey(hKey);
        return true;
    }

    std::wstring m_Root;
    HKEY m_hRoot = nullptr;
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_DETAIL};
    TraceCapture m_Trace;
};

TEST_F(UtilRegistry, Get_MissingKey_CreatesItAndReportsTheMissingValue)
{
    DWORD value = 77;
    EXPECT_FALSE(KeyExists());
    EXPECT_FALSE(UMDUtilRegistryValueGet(m_hRoot, kPath, L"Level", &value, sizeof(value)));
    EXPECT_TRUE(KeyExists());
    EXPECT_EQ(value, 77u);
    EXPECT_THAT(m_Trace.Lines(),
        ElementsAre("UMDUtilRegistryValueGet RegQueryValueExW failed! Level ERROR_FILE_NOT_FOUND\n"));
}

TEST_F(UtilRegistry, SetThenGet_Dword_TracesWithoutData)
{
    const DWORD written = 0x801;
    ASSERT_TRUE(UMDUtilRegistryValueSet(m_hRoot, kPath, L"Level", REG_DWORD, &written, sizeof(written)));
    DWORD read = 0;
    ASSERT_TRUE(UMDUtilRegistryValueGet(m_hRoot, kPath, L"Level", &read, sizeof(read)));
    EXPECT_EQ(read, written);
    EXPECT_THAT(m_Trace.Lines(),
        ElementsAre("UMDUtilRegistryValueSet Path: Software\\TessloRegistryTest Value: Level\n",
            "UMDUtilRegistryValueGet RegQueryValueExW Software\\TessloRegistryTest Level\n"));
}

TEST_F(UtilRegistry, SetThenGet_String_TracesWithData)
{
    const wchar_t written[] = L"Some.dll";
    ASSERT_TRUE(UMDUtilRegistryValueSet(m_hRoot, kPath, L"Name", REG_SZ, written, sizeof(written)));
    wchar_t read[16] = {};
    ASSERT_TRUE(UMDUtilRegistryValueGet(m_hRoot, kPath, L"Name", read, sizeof(read)));
    EXPECT_STREQ(read, written);
    EXPECT_THAT(m_Trace.Lines(),
        ElementsAre("UMDUtilRegistryValueSet Path: Software\\TessloRegistryTest Value: Name Data: Some.dll\n",
            "UMDUtilRegistryValueGet RegQueryValueExW Software\\TessloRegistryTest Name Data: Some.dll\n"));
}

TEST_F(UtilRegistry, Get_BufferTooSmall_ReportsThePlatformsCode)
{
    const wchar_t written[] = L"Some.dll";
    ASSERT_TRUE(UMDUtilRegistryValueSet(m_hRoot, kPath, L"Name", REG_SZ, written, sizeof(written)));
    m_Trace.Clear();
    wchar_t read[4] = {};
    EXPECT_FALSE(UMDUtilRegistryValueGet(m_hRoot, kPath, L"Name", read, sizeof(read)));
    EXPECT_THAT(m_Trace.Lines(), ElementsAre("UMDUtilRegistryValueGet RegQueryValueExW failed! Name 234\n"));
}

TEST_F(UtilRegistry, Get_OtherTypeThanExpected_IsReadAsItIs)
{
    const BYTE written[4] = {1, 2, 3, 4};
    ASSERT_TRUE(UMDUtilRegistryValueSet(m_hRoot, kPath, L"Level", REG_BINARY, written, sizeof(written)));
    DWORD read = 0;
    EXPECT_TRUE(UMDUtilRegistryValueGet(m_hRoot, kPath, L"Level", &read, sizeof(read)));
    EXPECT_EQ(read, 0x04030201u);
}

TEST_F(UtilRegistry, GetAndSet_KeyCannotBeOpened_ReportPathAndCode)
{
    const HKEY hNoKey = reinterpret_cast<HKEY>(static_cast<UINT_PTR>(0x1234567));
    DWORD value = 77;
    EXPECT_FALSE(UMDUtilRegistryValueGet(hNoKey, kPath, L"Level", &value, sizeof(value)));
    EXPECT_FALSE(UMDUtilRegistryValueSet(hNoKey, kPath, L"Level", REG_DWORD, &value, sizeof(value)));
    EXPECT_EQ(value, 77u);
    EXPECT_THAT(m_Trace.LinesContaining("failed!"),
        ElementsAre("UMDUtilRegistryValueGet  RegCreateKeyExW failed! Software\\TessloRegistryTest 6\n",
            "UMDUtilRegistryValueSet RegCreateKeyExW failed! Software\\TessloRegistryTest 6\n"));
}

LSTATUS WINAPI RefuseValue(HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD)
{
    return ERROR_DISK_FULL;
}

TEST_F(UtilRegistry, Set_ValueRefused_ReportsNameAndCode)
{
    const ImportPatch patch(nullptr, "ADVAPI32.dll", "RegSetValueExW", reinterpret_cast<void*>(RefuseValue));
    const DWORD value = 1;
    EXPECT_FALSE(UMDUtilRegistryValueSet(m_hRoot, kPath, L"Level", REG_DWORD, &value, sizeof(value)));
    EXPECT_THAT(m_Trace.LinesContaining("failed!"),
        ElementsAre("UMDUtilRegistryValueSet RegSetValueExW failed! Level 112\n"));
}
} // namespace
} // namespace tesslo::test
