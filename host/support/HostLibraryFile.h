// A DLL as the loader finds it, looked at without running any of its code.
#pragma once

#include <windows.h>

#include <string>

class HostLibraryFile
{
public:
    /// @param name a file name or path, as LoadLibrary takes it.
    explicit HostLibraryFile(const std::wstring& name);
    ~HostLibraryFile();
    HostLibraryFile(const HostLibraryFile&) = delete;
    HostLibraryFile& operator=(const HostLibraryFile&) = delete;

    bool IsFound() const { return m_hModule != nullptr; }
    /// Why it is not found, or no DLL of 64 bits.
    DWORD Error() const { return m_Error; }
    /// Where it is, in words that name no folder of anybody's: "beside this program", "in the system folder" ...
    std::string Place() const;
    bool Exports(const char* pName) const { return GetProcAddress(m_hModule, pName) != nullptr; }
    /// "8.14.1.1000", or "without a version".
    std::string Version() const;
    /// "not signed" ...
    std::string Signature() const;

private:
    HMODULE m_hModule;
    DWORD m_Error;
    std::wstring m_Path;  ///< empty if it is not found
};

/// "8.14.1.1000", of four parts of 16 bits.
std::string HostVersionText(LONGLONG version);

/// What WinVerifyTrust's answer says of a file.
std::string HostSignatureText(LONG answer);
