#include "host/support/HostPrivacy.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>

#include <shlobj.h>

namespace
{

constexpr size_t kShort = 3;  // letters of a name that is looked for as a word alone
constexpr wchar_t kUser[] = L"<user>";
constexpr wchar_t kMachine[] = L"<machine>";
constexpr wchar_t kProfile[] = L"<profile>";

std::wstring Variable(const wchar_t* pName)
{
    wchar_t value[1024] = L"";
    return GetEnvironmentVariableW(pName, value, ARRAYSIZE(value)) < ARRAYSIZE(value) ? value : L"";
}

// The C library's own knows the letters of English alone.
wchar_t Folded(wchar_t letter)
{
    wchar_t text[] = {letter == L'/' ? L'\\' : letter, L'\0'};
    return *CharLowerW(text);
}

bool IsInWord(std::wstring_view text, size_t at)
{
    return at < text.size() && IsCharAlphaNumericW(text[at]);
}

bool IsAt(std::wstring_view text, size_t at, std::wstring_view secret)
{
    const std::wstring_view here = text.substr(at, secret.size());
    if (!std::ranges::equal(here, secret, {}, Folded, Folded))
        return false;
    return secret.size() > kShort || !((at != 0 && IsInWord(text, at - 1)) || IsInWord(text, at + secret.size()));
}

}  // namespace

HostPrivacy::HostPrivacy()
{
    AddProfile();
    AddUser();
    AddMachine();
    std::ranges::sort(m_Secrets, std::ranges::greater{}, [](const auto& secret) { return secret.first.size(); });
}

void HostPrivacy::Add(std::wstring secret, const wchar_t* pInstead)
{
    if (!secret.empty())
        m_Secrets.emplace_back(std::move(secret), pInstead);
}

// Programs and the platform also write paths in their short form.
void HostPrivacy::AddProfile()
{
    wchar_t folder[MAX_PATH] = L"";
    SHGetSpecialFolderPathW(nullptr, folder, CSIDL_PROFILE, FALSE);
    for (const std::wstring& profile : {std::wstring(folder), Variable(L"USERPROFILE")})
    {
        Add(profile, kProfile);
        wchar_t brief[MAX_PATH] = L"";
        if (GetShortPathNameW(profile.c_str(), brief, ARRAYSIZE(brief)) < ARRAYSIZE(brief))
            Add(brief, kProfile);
        Add(std::filesystem::path(profile).filename().wstring(), kUser);
    }
}

void HostPrivacy::AddUser()
{
    wchar_t name[256] = L"";
    DWORD length = ARRAYSIZE(name);
    if (GetUserNameW(name, &length))
        Add(name, kUser);
    Add(Variable(L"USERNAME"), kUser);
}

void HostPrivacy::AddMachine()
{
    for (const COMPUTER_NAME_FORMAT format :
        {ComputerNameNetBIOS, ComputerNameDnsHostname, ComputerNameDnsFullyQualified})
    {
        wchar_t name[256] = L"";
        DWORD length = ARRAYSIZE(name);
        if (GetComputerNameExW(format, name, &length))
            Add(name, kMachine);
    }
    Add(Variable(L"COMPUTERNAME"), kMachine);
}

std::wstring HostPrivacy::Without(std::wstring_view text) const
{
    std::wstring clean;
    for (size_t at = 0; at < text.size();)
    {
        const auto secret = std::ranges::find_if(m_Secrets, [&](const auto& one) { return IsAt(text, at, one.first); });
        if (secret == m_Secrets.end())
        {
            clean += text[at++];
            continue;
        }
        clean += secret->second;
        at += secret->first.size();
    }
    return clean;
}
