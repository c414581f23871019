// Gives this process an HKEY_LOCAL_MACHINE of its own, empty, so that tests change nobody's registry.
#pragma once

#include <windows.h>

#include <string>

namespace tesslo::test
{

class RegistryOverride
{
public:
    /// One at a time in a process. Throws std::runtime_error when the registry refuses.
    RegistryOverride();
    ~RegistryOverride();
    /// Takes away what a process left that was ended while it had one.
    static void Forget(DWORD processId);
    RegistryOverride(const RegistryOverride&) = delete;
    RegistryOverride& operator=(const RegistryOverride&) = delete;

    /// Where this process's HKEY_LOCAL_MACHINE really is, for programs that it starts: a path below HKEY_CURRENT_USER.
    const std::wstring& Path() const { return m_Path; }

    /// The driver's trace level mask, read when its DLL is loaded.
    void SetTraceMask(DWORD mask);
    /// The client library's file name or path, read when the driver's DLL is loaded.
    void SetClientDllName(const std::wstring& name);
    /// The value that now stands there; "" for none.
    std::wstring ClientDllName() const;

private:
    std::wstring m_Path;  ///< below HKEY_CURRENT_USER
    HKEY m_hKey = nullptr;
};

}  // namespace tesslo::test
