#include "RegistryOverride.h"

#include <stdexcept>

namespace tesslo::test
{

namespace
{

constexpr wchar_t kRoot[] = L"Software\\TessloTests\\";
constexpr wchar_t kServicePath[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";
constexpr wchar_t kClientPath[] = L"Software\\Zembrilo\\Tesslo";
constexpr wchar_t kClientValue[] = L"DllNameInterface";

void Check(LSTATUS status, const char* pCall)
{
    if (status != ERROR_SUCCESS)
        throw std::runtime_error(std::string(pCall) + " failed: " + std::to_string(status));
}

void SetValue(const wchar_t* pPath, const wchar_t* pValue, DWORD type, const void* pData, DWORD size)
{
    HKEY hKey = nullptr;
    Check(RegCreateKeyExW(
              HKEY_LOCAL_MACHINE, pPath, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &hKey, nullptr),
        "RegCreateKeyExW");
    const LSTATUS status = RegSetValueExW(hKey, pValue, 0, type, static_cast<const BYTE*>(pData), size);
    RegCloseKey(hKey);
    Check(status, "RegSetValueExW");
}

}  // namespace

RegistryOverride::RegistryOverride() : m_Path(kRoot + std::to_wstring(GetCurrentProcessId()))
{
    // Left by a process of the same id that crashed.
    Forget(GetCurrentProcessId());
    Check(RegCreateKeyExW(HKEY_CURRENT_USER, m_Path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
              nullptr, &m_hKey, nullptr),
        "RegCreateKeyExW");
    Check(RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_hKey), "RegOverridePredefKey");
}

RegistryOverride::~RegistryOverride()
{
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(m_hKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_Path.c_str());
}

void RegistryOverride::Forget(DWORD processId)
{
    RegDeleteTreeW(HKEY_CURRENT_USER, (kRoot + std::to_wstring(processId)).c_str());
}

void RegistryOverride::SetTraceMask(DWORD mask)
{
    SetValue(kServicePath, L"DebugLevelUMD", REG_DWORD, &mask, sizeof mask);
}

void RegistryOverride::SetClientDllName(const std::wstring& name)
{
    SetValue(kClientPath, kClientValue, REG_SZ, name.c_str(), static_cast<DWORD>((name.size() + 1) * sizeof(wchar_t)));
}

std::wstring RegistryOverride::ClientDllName() const
{
    wchar_t name[MAX_PATH] = L"";
    DWORD size = sizeof name;
    RegGetValueW(m_hKey, kClientPath, kClientValue, RRF_RT_REG_SZ, nullptr, name, &size);
    return name;
}

}  // namespace tesslo::test
