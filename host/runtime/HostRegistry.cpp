#include "host/runtime/HostRegistry.h"

#include "host/runtime/HostError.h"

#include <atomic>

namespace
{

constexpr wchar_t kServicePath[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";
constexpr wchar_t kMaskValue[] = L"DebugLevelUMD";
constexpr wchar_t kClientPath[] = L"Software\\Zembrilo\\Tesslo";
constexpr wchar_t kClientValue[] = L"DllNameInterface";
constexpr size_t kClientNameMax = 127;

std::atomic<unsigned> g_Number;

// As the driver reads: whatever type it has, if it is not too long. But no key is made.
bool Read(const wchar_t* pPath, const wchar_t* pName, void* pData, DWORD bytes)
{
    HKEY hKey = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, pPath, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return false;
    const LSTATUS error = RegQueryValueExW(hKey, pName, nullptr, nullptr, static_cast<BYTE*>(pData), &bytes);
    RegCloseKey(hKey);
    return error == ERROR_SUCCESS;
}

}  // namespace

HostRegistry::HostRegistry()
    : m_Path(L"Software\\Zembrilo\\TessloHost\\" + std::to_wstring(GetCurrentProcessId()) + L"-" +
             std::to_wstring(g_Number++))
{
    // Not volatile: the driver creates missing keys below it, and a lasting key cannot lie under a volatile one.
    LSTATUS error = RegCreateKeyExW(HKEY_CURRENT_USER, m_Path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
        KEY_ALL_ACCESS, nullptr, &m_hKey, nullptr);
    if (error == ERROR_SUCCESS)
        error = RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_hKey);
    if (error != ERROR_SUCCESS)
        HostThrowSystemError("cannot make a private registry key", static_cast<DWORD>(error));
}

HostRegistry::~HostRegistry()
{
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(m_hKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_Path.c_str());
}

void HostRegistry::SetTraceMask(DWORD mask)
{
    SetValue(kServicePath, kMaskValue, REG_DWORD, &mask, sizeof(mask));
}

void HostRegistry::SetClientLibrary(const std::wstring& name)
{
    if (name.size() > kClientNameMax)
        throw HostError("the client library's name has more than 127 characters: the driver would not read it");
    SetValue(kClientPath, kClientValue, REG_SZ, name.c_str(), (name.size() + 1) * sizeof(wchar_t));
}

std::wstring HostRegistry::ClientLibrary() const
{
    wchar_t name[kClientNameMax + 1] = L"";
    DWORD bytes = sizeof(name);
    RegGetValueW(m_hKey, kClientPath, kClientValue, RRF_RT_REG_SZ, nullptr, name, &bytes);
    return name;
}

void HostRegistry::SetValue(const wchar_t* pPath, const wchar_t* pName, DWORD type, const void* pData, size_t bytes)
{
    const LSTATUS error = RegSetKeyValueW(m_hKey, pPath, pName, type, pData, static_cast<DWORD>(bytes));
    if (error != ERROR_SUCCESS)
        HostThrowSystemError("cannot set up the driver's registry values", static_cast<DWORD>(error));
}

std::optional<DWORD> HostMachineTraceMask()
{
    DWORD mask = 0;
    return Read(kServicePath, kMaskValue, &mask, sizeof(mask)) ? std::optional(mask) : std::nullopt;
}

std::optional<std::wstring> HostMachineClientLibrary()
{
    wchar_t name[kClientNameMax + 2] = L"";  // one that is stored without its end has one here
    return Read(kClientPath, kClientValue, name, (kClientNameMax + 1) * sizeof(wchar_t))
               ? std::optional<std::wstring>(name)
               : std::nullopt;
}
