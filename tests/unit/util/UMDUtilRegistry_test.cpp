#include "util/UMDUtilRegistry.h"

#include "ImportPatch.h"
#include "RegistryOverride.h"
#include "TraceCapture.h"
#include "TraceLevels.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
constexpr wchar_t kKey[] = L"Software\\Zembrilo\\Test";
constexpr wchar_t kMissingKey[] = L"Software\\Zembrilo\\Missing";

REGSAM s_Access;
int s_Open;  ///< keys that the driver has opened and not closed
LSTATUS(WINAPI* s_pCloseKey)(HKEY);

LSTATUS WINAPI CreateKey(HKEY hRoot, const wchar_t* pPath, DWORD reserved, wchar_t* pClass, DWORD options,
    REGSAM access, const SECURITY_ATTRIBUTES* pSecurity, HKEY* phKey, DWORD* pDisposition)
{
    EXPECT_EQ(pClass, nullptr);
    EXPECT_EQ(options, 0u);
    EXPECT_EQ(pSecurity, nullptr);
    EXPECT_EQ(pDisposition, nullptr);
    s_Access = access;
    const LSTATUS error =
        RegOpenKeyExW(hRoot, pPath, 0, KEY_ALL_ACCESS, phKey) == ERROR_SUCCESS ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    s_Open += error == ERROR_SUCCESS;
    return reserved ? ERROR_INVALID_PARAMETER : error;
}

LSTATUS WINAPI CloseKey(HKEY hKey)
{
    --s_Open;
    return s_pCloseKey(hKey);
}

class UMDUtilRegistryTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Store(L"Number", REG_DWORD, &m_Number, sizeof(m_Number));
        Store(L"Text", REG_SZ, L"abc", 4 * sizeof(wchar_t));
    }

    static void Store(const wchar_t* pName, DWORD type, const void* pData, DWORD size)
    {
        ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, pName, type, pData, size), ERROR_SUCCESS);
    }

    static bool KeyExists(const wchar_t* pPath)
    {
        HKEY hKey = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, pPath, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
            return false;
        RegCloseKey(hKey);
        return true;
    }

    RegistryOverride m_Registry;
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_DETAIL};
    TraceCapture m_Trace;
    const DWORD m_Number = 0x12345678;
};

TEST_F(UMDUtilRegistryTest, Get_Number_IsReadAndTracedWithoutData)
{
    DWORD value = 0;
    EXPECT_TRUE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Number", &value, sizeof(value)));
    EXPECT_EQ(value, m_Number);
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDUtilRegistryValueGet RegQueryValueExW Software\\Zembrilo\\Test Number\n"});
}

TEST_F(UMDUtilRegistryTest, Get_Text_IsReadAndTracedWithData)
{
    wchar_t text[8] = {};
    EXPECT_TRUE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Text", text, sizeof(text)));
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(
        m_Trace.Lines(), Lines{"UMDUtilRegistryValueGet RegQueryValueExW Software\\Zembrilo\\Test Text Data: abc\n"});
}

TEST_F(UMDUtilRegistryTest, EachLine_OfReadsAndWrites_HasItsLevel)
{
    EXPECT_EQ(LevelledTrace([] {
        wchar_t text[8] = {};
        UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Number", text, sizeof(text));
        UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Text", text, sizeof(text));
        UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Nothing", text, sizeof(text));
        UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Text", text, 2);
        UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Text", REG_SZ, L"abc", 8);
        UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Bytes", REG_BINARY, "abc", 3);
        FailingImport noWrite(nullptr, "advapi32.dll", "RegSetValueExW", ERROR_ACCESS_DENIED, 0);
        UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Bytes", REG_BINARY, "abc", 3);
        FailingImport noKey(nullptr, "advapi32.dll", "RegCreateKeyExW", ERROR_ACCESS_DENIED, 0);
        UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Text", text, sizeof(text));
        UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Bytes", REG_BINARY, "abc", 3);
    }),
        (Lines{"0x200 UMDUtilRegistryValueGet RegQueryValueExW Software\\Zembrilo\\Test Number\n",
            "0x200 UMDUtilRegistryValueGet RegQueryValueExW Software\\Zembrilo\\Test Text Data: abc\n",
            "0x1 UMDUtilRegistryValueGet RegQueryValueExW failed! Nothing ERROR_FILE_NOT_FOUND\n",
            "0x1 UMDUtilRegistryValueGet RegQueryValueExW failed! Text 234\n",
            "0x200 UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Text Data: abc\n",
            "0x200 UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Bytes\n",
            "0x200 UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Bytes\n",
            "0x1 UMDUtilRegistryValueSet RegSetValueExW failed! Bytes 5\n",
            "0x1 UMDUtilRegistryValueGet  RegCreateKeyExW failed! Software\\Zembrilo\\Test 5\n",
            "0x200 UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Bytes\n",
            "0x1 UMDUtilRegistryValueSet RegCreateKeyExW failed! Software\\Zembrilo\\Test 5\n"}));
}

TEST_F(UMDUtilRegistryTest, Get_OtherTypeThanExpected_IsCopiedAsItIs)
{
    const BYTE bytes[] = {1, 2, 3};
    Store(L"Bytes", REG_BINARY, bytes, sizeof(bytes));
    DWORD value = 0;
    EXPECT_TRUE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Bytes", &value, sizeof(value)));
    EXPECT_EQ(value, 0x00030201u);
}

TEST_F(UMDUtilRegistryTest, Get_MissingValue_HasItsOwnLineAndLeavesTheBuffer)
{
    DWORD value = 77;
    EXPECT_FALSE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Nothing", &value, sizeof(value)));
    EXPECT_EQ(value, 77u);
    EXPECT_EQ(
        m_Trace.Lines(), Lines{"UMDUtilRegistryValueGet RegQueryValueExW failed! Nothing ERROR_FILE_NOT_FOUND\n"});
}

TEST_F(UMDUtilRegistryTest, Get_MissingKey_IsCreatedEmpty)
{
    DWORD value = 77;
    ASSERT_FALSE(KeyExists(kMissingKey));
    EXPECT_FALSE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kMissingKey, L"Number", &value, sizeof(value)));
    EXPECT_TRUE(KeyExists(kMissingKey));
    EXPECT_EQ(value, 77u);
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDUtilRegistryValueGet RegQueryValueExW failed! Number ERROR_FILE_NOT_FOUND\n"});
}

TEST_F(UMDUtilRegistryTest, Get_BufferTooSmall_TellsThePlatformsCode)
{
    wchar_t text[2] = {};
    EXPECT_FALSE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Text", text, sizeof(text)));
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDUtilRegistryValueGet RegQueryValueExW failed! Text 234\n"});
}

TEST_F(UMDUtilRegistryTest, Get_KeyRefused_TellsThePathBehindTwoBlanks)
{
    FailingImport refused(nullptr, "advapi32.dll", "RegCreateKeyExW", ERROR_ACCESS_DENIED, 0);
    DWORD value = 77;
    EXPECT_FALSE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Number", &value, sizeof(value)));
    EXPECT_EQ(value, 77u);
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDUtilRegistryValueGet  RegCreateKeyExW failed! Software\\Zembrilo\\Test 5\n"});
}

TEST_F(UMDUtilRegistryTest, Set_Number_IsWrittenAndTracedWithoutData)
{
    const DWORD number = 9;
    EXPECT_TRUE(UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Number", REG_DWORD, &number, sizeof(number)));
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Number\n"});
    DWORD value = 0, size = sizeof(value), type = 0;
    EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, kKey, L"Number", RRF_RT_ANY, &type, &value, &size), ERROR_SUCCESS);
    EXPECT_EQ(value, 9u);
    EXPECT_EQ(type, DWORD{REG_DWORD});
}

TEST_F(UMDUtilRegistryTest, Set_TextUnderAMissingKey_CreatesTheKeyAndTracesTheData)
{
    EXPECT_TRUE(UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kMissingKey, L"Text", REG_SZ, L"xy", 3 * sizeof(wchar_t)));
    EXPECT_EQ(
        m_Trace.Lines(), Lines{"UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Missing Value: Text Data: xy\n"});
    wchar_t text[8] = {};
    DWORD size = sizeof(text);
    EXPECT_EQ(
        RegGetValueW(HKEY_LOCAL_MACHINE, kMissingKey, L"Text", RRF_RT_REG_SZ, nullptr, text, &size), ERROR_SUCCESS);
    EXPECT_STREQ(text, L"xy");
    EXPECT_EQ(size, 3 * sizeof(wchar_t));
}

TEST_F(UMDUtilRegistryTest, Set_KeyRefused_TellsThePath)
{
    FailingImport refused(nullptr, "advapi32.dll", "RegCreateKeyExW", ERROR_ACCESS_DENIED, 0);
    EXPECT_FALSE(UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Number", REG_DWORD, &m_Number, sizeof(m_Number)));
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Number\n",
                                   "UMDUtilRegistryValueSet RegCreateKeyExW failed! Software\\Zembrilo\\Test 5\n"}));
}

TEST_F(UMDUtilRegistryTest, Set_ValueRefused_TellsTheValue)
{
    FailingImport refused(nullptr, "advapi32.dll", "RegSetValueExW", ERROR_NO_SYSTEM_RESOURCES, 0);
    EXPECT_FALSE(UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Number", REG_DWORD, &m_Number, sizeof(m_Number)));
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDUtilRegistryValueSet Path: Software\\Zembrilo\\Test Value: Number\n",
                                   "UMDUtilRegistryValueSet RegSetValueExW failed! Number 1450\n"}));
}

TEST_F(UMDUtilRegistryTest, Access_ReadAndWrite_AskForNoMoreAndCloseTheKey)
{
    s_Open = 0;
    ImportPatch create(nullptr, "advapi32.dll", "RegCreateKeyExW", CreateKey);
    ImportPatch close(nullptr, "advapi32.dll", "RegCloseKey", CloseKey, &s_pCloseKey);
    DWORD value = 0;
    EXPECT_TRUE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Number", &value, sizeof(value)));
    EXPECT_EQ(s_Access, REGSAM{0x20019});
    EXPECT_FALSE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Nothing", &value, sizeof(value)));
    EXPECT_FALSE(UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKey, L"Text", &value, sizeof(value)));
    EXPECT_TRUE(UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Number", REG_DWORD, &value, sizeof(value)));
    EXPECT_EQ(s_Access, REGSAM{0x20006});
    {
        FailingImport refused(nullptr, "advapi32.dll", "RegSetValueExW", ERROR_ACCESS_DENIED, 0);
        EXPECT_FALSE(UMDUtilRegistryValueSet(HKEY_LOCAL_MACHINE, kKey, L"Number", REG_DWORD, &value, sizeof(value)));
    }
    EXPECT_EQ(s_Open, 0) << "every opened key is closed";
}
}  // namespace
