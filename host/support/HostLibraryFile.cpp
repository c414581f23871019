#include "host/support/HostLibraryFile.h"

#include <cstdio>
#include <filesystem>
#include <vector>

#include <softpub.h>
#include <wintrust.h>

namespace
{

std::filesystem::path PathOf(HMODULE hModule)
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(hModule, path, ARRAYSIZE(path));
    return path;
}

std::filesystem::path SystemFolder()
{
    wchar_t path[MAX_PATH] = L"";
    GetSystemDirectoryW(path, ARRAYSIZE(path));
    return path;
}

bool IsSame(const std::filesystem::path& one, const std::filesystem::path& other)
{
    return _wcsicmp(one.c_str(), other.c_str()) == 0;
}

// What the file alone says: nothing is asked of the network.
LONG Verify(const std::wstring& path)
{
    WINTRUST_FILE_INFO file{};
    file.cbStruct = sizeof(file);
    file.pcwszFilePath = path.c_str();
    WINTRUST_DATA data{};
    data.cbStruct = sizeof(data);
    data.dwUIChoice = WTD_UI_NONE;
    data.fdwRevocationChecks = WTD_REVOKE_NONE;
    data.dwUnionChoice = WTD_CHOICE_FILE;
    data.pFile = &file;
    data.dwStateAction = WTD_STATEACTION_VERIFY;
    data.dwProvFlags = WTD_CACHE_ONLY_URL_RETRIEVAL;
    GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
    const LONG answer = WinVerifyTrust(nullptr, &action, &data);
    data.dwStateAction = WTD_STATEACTION_CLOSE;
    WinVerifyTrust(nullptr, &action, &data);
    return answer;
}

}  // namespace

// So loaded, neither its DllMain runs nor what it imports is looked for.
HostLibraryFile::HostLibraryFile(const std::wstring& name)
    : m_hModule(LoadLibraryExW(name.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES)),
      m_Error(m_hModule != nullptr ? ERROR_SUCCESS : GetLastError())
{
    if (m_hModule != nullptr)
        m_Path = PathOf(m_hModule).wstring();
}

HostLibraryFile::~HostLibraryFile()
{
    if (m_hModule != nullptr)
        FreeLibrary(m_hModule);
}

std::string HostLibraryFile::Place() const
{
    const std::filesystem::path folder = std::filesystem::path(m_Path).parent_path();
    if (IsSame(folder, PathOf(nullptr).parent_path()))
        return "beside this program";
    if (IsSame(folder, SystemFolder()))
        return "in the system folder";
    return "in another folder";
}

std::string HostLibraryFile::Version() const
{
    std::vector<BYTE> resource(GetFileVersionInfoSizeW(m_Path.c_str(), nullptr));
    void* pFixed = nullptr;
    UINT size = 0;
    if (resource.empty() ||
        !GetFileVersionInfoW(m_Path.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()) ||
        !VerQueryValueW(resource.data(), L"\\", &pFixed, &size) || size < sizeof(VS_FIXEDFILEINFO))
        return "without a version";
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(pFixed);
    return HostVersionText(LONGLONG{fixed.dwFileVersionMS} << 32 | fixed.dwFileVersionLS);
}

std::string HostLibraryFile::Signature() const
{
    return HostSignatureText(Verify(m_Path));
}

std::string HostVersionText(LONGLONG version)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%u.%u.%u.%u", static_cast<UINT>(version >> 48 & 0xFFFF),
        static_cast<UINT>(version >> 32 & 0xFFFF), static_cast<UINT>(version >> 16 & 0xFFFF),
        static_cast<UINT>(version & 0xFFFF));
    return text;
}

std::string HostSignatureText(LONG answer)
{
    switch (answer)
    {
    case ERROR_SUCCESS:
        return "signed, and trusted here";
    case TRUST_E_NOSIGNATURE:
    case TRUST_E_SUBJECT_FORM_UNKNOWN:
        return "not signed";
    case TRUST_E_BAD_DIGEST:
        return "signed, and changed since";
    case CERT_E_UNTRUSTEDROOT:
        return "signed by somebody who is not trusted here";
    case TRUST_E_EXPLICIT_DISTRUST:
        return "signed by somebody who is distrusted here";
    default:
        break;
    }
    char text[64];
    std::snprintf(text, sizeof(text), "signature not accepted: 0x%08lX", static_cast<unsigned long>(answer));
    return text;
}
