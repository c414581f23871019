// The driver's registry keys as the host sets them, seen as the driver sees them.
#include "host/runtime/HostError.h"
#include "host/runtime/HostRegistry.h"

#include <gtest/gtest.h>

namespace
{

constexpr wchar_t kService[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";
constexpr wchar_t kClient[] = L"Software\\Zembrilo\\Tesslo";

DWORD ReadMask(DWORD missing)
{
    DWORD mask = 0, bytes = sizeof(mask);
    const LSTATUS error =
        RegGetValueW(HKEY_LOCAL_MACHINE, kService, L"DebugLevelUMD", RRF_RT_REG_DWORD, nullptr, &mask, &bytes);
    return error == ERROR_SUCCESS ? mask : missing;
}

}  // namespace

TEST(HostRegistry, SetTraceMask_WhileItLives_IsWhatTheProcessReads)
{
    const DWORD before = ReadMask(0xDEAD);
    {
        HostRegistry registry;
        EXPECT_EQ(ReadMask(0xDEAD), 0xDEADu) << "the private key is empty at first";
        registry.SetTraceMask(0x2FF);
        EXPECT_EQ(ReadMask(0xDEAD), 0x2FFu);
    }
    EXPECT_EQ(ReadMask(0xDEAD), before) << "the machine's own value is untouched";
}

TEST(HostRegistry, ClientLibrary_DriverWritesIt_IsReadBack)
{
    HostRegistry registry;
    EXPECT_EQ(registry.ClientLibrary(), L"");
    const wchar_t name[] = L"written.dll";
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, kClient, L"DllNameInterface", REG_SZ, name, sizeof(name)), ERROR_SUCCESS);
    EXPECT_EQ(registry.ClientLibrary(), L"written.dll");
}

TEST(HostRegistry, SetClientLibrary_LongestName_PassesOneMoreDoesNot)
{
    HostRegistry registry;
    const std::wstring longest(127, L'n');
    registry.SetClientLibrary(longest);
    EXPECT_EQ(registry.ClientLibrary(), longest);
    EXPECT_THROW(registry.SetClientLibrary(longest + L"n"), HostError);
}

TEST(HostRegistry, Destructor_PrivateKey_IsDeleted)
{
    {
        HostRegistry registry;
        registry.SetTraceMask(1);
    }
    DWORD keys = 0xFFFF;
    HKEY hKey = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Zembrilo\\TessloHost", 0, KEY_READ, &hKey), ERROR_SUCCESS);
    std::wstring mine = std::to_wstring(GetCurrentProcessId()) + L"-";
    keys = 0;
    for (DWORD i = 0;; ++i)
    {
        wchar_t name[64];
        DWORD length = ARRAYSIZE(name);
        if (RegEnumKeyExW(hKey, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        keys += std::wstring(name).starts_with(mine);
    }
    RegCloseKey(hKey);
    EXPECT_EQ(keys, 0u);
}

TEST(HostRegistry, Machine_NothingThere_NoValuesAndNothingIsWritten)
{
    HostRegistry registry;
    EXPECT_EQ(HostMachineTraceMask(), std::nullopt);
    EXPECT_EQ(HostMachineClientLibrary(), std::nullopt);
    HKEY hKey = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kService, 0, KEY_READ, &hKey), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kClient, 0, KEY_READ, &hKey), ERROR_FILE_NOT_FOUND);
}

TEST(HostRegistry, Machine_ValuesThere_AreReadAsTheDriverReadsThem)
{
    HostRegistry registry;
    registry.SetTraceMask(0x801);
    EXPECT_EQ(HostMachineTraceMask(), 0x801u);
    registry.SetClientLibrary(L"");
    EXPECT_EQ(HostMachineClientLibrary(), L"");
    const std::wstring longest(127, L'n');
    registry.SetClientLibrary(longest);
    EXPECT_EQ(HostMachineClientLibrary(), longest);
    const std::wstring tooLong(128, L'n');
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, kClient, L"DllNameInterface", REG_SZ, tooLong.c_str(), 258), ERROR_SUCCESS);
    EXPECT_EQ(HostMachineClientLibrary(), std::nullopt);
}
