#include "output/UMDClientLibrary.h"

#include "ImportPatch.h"
#include "RegistryOverride.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
constexpr wchar_t kKey[] = L"Software\\Zembrilo\\Tesslo";

std::wstring s_Asked;  ///< the name that the loader was asked for
HMODULE s_Loaded;      ///< what it answers
int s_Freed;

HMODULE WINAPI TakeName(const wchar_t* pName)
{
    s_Asked = pName;
    SetLastError(ERROR_MOD_NOT_FOUND);
    return s_Loaded;
}

BOOL WINAPI TakeFree(HMODULE hModule)
{
    EXPECT_EQ(hModule, s_Loaded);
    ++s_Freed;
    return TRUE;
}

class UMDClientLibraryTest : public testing::Test
{
protected:
    UMDClientLibraryTest()
    {
        s_Asked = L"nothing asked";
        s_Loaded = nullptr;
        s_Freed = 0;
    }

    ~UMDClientLibraryTest() override { UMDClientLibraryFree(); }

    static void Store(DWORD type, const void* pData, size_t size)
    {
        ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, L"DllNameInterface", type, pData, static_cast<DWORD>(size)),
            ERROR_SUCCESS);
    }

    RegistryOverride m_Registry;
    TraceMask m_Mask{UMDTRACE_ERROR};
    TraceCapture m_Trace;
    ImportPatch m_Load{nullptr, "kernel32.dll", "LoadLibraryW", TakeName};
    ImportPatch m_Free{nullptr, "kernel32.dll", "FreeLibrary", TakeFree};
};

TEST_F(UMDClientLibraryTest, Load_NoName_WritesTheDefaultBackAndLoadsIt)
{
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, L"TessloClientDllSample.dll");
    wchar_t text[64] = {};
    DWORD size = sizeof(text), type = 0;
    EXPECT_EQ(
        RegGetValueW(HKEY_LOCAL_MACHINE, kKey, L"DllNameInterface", RRF_RT_ANY, &type, text, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(size, sizeof(L"TessloClientDllSample.dll"));
    EXPECT_STREQ(text, L"TessloClientDllSample.dll");
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{"UMDUtilRegistryValueGet RegQueryValueExW failed! DllNameInterface ERROR_FILE_NOT_FOUND\n",
            "UMDUtilDebugTraceDllMain LoadLibrary failed! 126\n"}));
}

TEST_F(UMDClientLibraryTest, Load_DefaultCannotBeWritten_TracesItAndStillLoadsIt)
{
    FailingImport refused(nullptr, "advapi32.dll", "RegSetValueExW", ERROR_ACCESS_DENIED, 4711);
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, L"TessloClientDllSample.dll");
    EXPECT_EQ(m_Trace.Count("UMDUtilRegistryValueSet RegSetValueExW failed! DllNameInterface 5\n"), 1u);
    EXPECT_EQ(m_Trace.LinesContaining("UMDUtilDebugTraceDllMain UMDUtilRegistryValueSet failed! ").size(), 1u);
}

TEST_F(UMDClientLibraryTest, Load_BareNameOrPath_IsPassedOnAsItIs)
{
    for (const std::wstring name : {L"Other.dll", L"C:\\Some folder\\Other.dll", L"..\\Other"})
    {
        m_Registry.SetClientDllName(name);
        UMDClientLibraryLoad();
        EXPECT_EQ(s_Asked, name);
        EXPECT_EQ(m_Registry.ClientDllName(), name) << "a name that is there is not rewritten";
    }
}

TEST_F(UMDClientLibraryTest, Load_LongestName_IsPassedOnWhole)
{
    const std::wstring name(127, L'n');
    m_Registry.SetClientDllName(name);
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, name);
}

TEST_F(UMDClientLibraryTest, Load_NameWithoutTerminatingNull_EndsWhereItsBytesEnd)
{
    const std::wstring name(128, L'n');
    Store(REG_BINARY, name.data(), name.size() * sizeof(wchar_t));
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, name);
    Store(REG_BINARY, name.data(), 3 * sizeof(wchar_t));
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, L"nnn");
}

TEST_F(UMDClientLibraryTest, Load_NameTooLong_IsReplacedByTheDefault)
{
    m_Registry.SetClientDllName(std::wstring(128, L'n'));
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, L"TessloClientDllSample.dll");
    EXPECT_EQ(m_Registry.ClientDllName(), L"TessloClientDllSample.dll");
    EXPECT_EQ(m_Trace.Count("UMDUtilRegistryValueGet RegQueryValueExW failed! DllNameInterface 234\n"), 1u);
}

TEST_F(UMDClientLibraryTest, Load_EmptyName_IsTakenForANameAndFails)
{
    m_Registry.SetClientDllName(L"");
    UMDClientLibraryLoad();
    EXPECT_EQ(s_Asked, L"");
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDUtilDebugTraceDllMain LoadLibrary failed! 126\n"});
    EXPECT_EQ(UMDClientLibraryModule(), nullptr);
}

TEST_F(UMDClientLibraryTest, Free_Loaded_FreesOnceAndForgets)
{
    s_Loaded = reinterpret_cast<HMODULE>(0x10000);
    m_Registry.SetClientDllName(L"Other.dll");
    UMDClientLibraryLoad();
    EXPECT_EQ(UMDClientLibraryModule(), s_Loaded);
    UMDClientLibraryFree();
    EXPECT_EQ(UMDClientLibraryModule(), nullptr);
    UMDClientLibraryFree();
    EXPECT_EQ(s_Freed, 1);
    EXPECT_TRUE(m_Trace.Lines().empty());
}

TEST_F(UMDClientLibraryTest, Free_NothingLoaded_FreesNothing)
{
    UMDClientLibraryLoad();
    UMDClientLibraryFree();
    EXPECT_EQ(s_Freed, 0);
}
}  // namespace
