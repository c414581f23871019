// The registry as the driver finds it at its load: HKEY_LOCAL_MACHINE stands for a private key while the object
// lives, so that the machine's own settings are neither read nor changed.
//
// The whole process sees the private key. Keep the object only around the load of the driver.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

class HostRegistry
{
public:
    HostRegistry();
    /// Gives HKEY_LOCAL_MACHINE back and deletes the private key.
    ~HostRegistry();
    HostRegistry(const HostRegistry&) = delete;
    HostRegistry& operator=(const HostRegistry&) = delete;

    /// The driver's trace mask, "DebugLevelUMD" of the kernel-mode service.
    void SetTraceMask(DWORD mask);
    /// The client library, "DllNameInterface". Throws HostError for a name of more than 127 characters, which the
    /// driver would not read.
    void SetClientLibrary(const std::wstring& name);
    /// What "DllNameInterface" holds now; the driver writes its default if there was nothing. Empty if missing.
    std::wstring ClientLibrary() const;

private:
    void SetValue(const wchar_t* pPath, const wchar_t* pName, DWORD type, const void* pData, size_t bytes);

    std::wstring m_Path;  ///< of the private key, under HKEY_CURRENT_USER
    HKEY m_hKey = nullptr;
};

/// What the driver would find in HKEY_LOCAL_MACHINE now, no value if it would take its default. Nothing is written.
std::optional<DWORD> HostMachineTraceMask();
std::optional<std::wstring> HostMachineClientLibrary();
