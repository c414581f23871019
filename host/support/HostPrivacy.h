// Takes the names of user and machine, and the path of the user's profile, out of a text.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

class HostPrivacy
{
public:
    /// What this process knows of its user and machine.
    HostPrivacy();

    /// Names of any case are found, and paths with either slash. A name of three letters or less is taken out only
    /// where it is a word: it is a part of too many others.
    std::wstring Without(std::wstring_view text) const;

private:
    void Add(std::wstring secret, const wchar_t* pInstead);
    void AddUser();
    void AddMachine();
    void AddProfile();

    std::vector<std::pair<std::wstring, std::wstring>> m_Secrets;  ///< and what stands there instead, longest first
};
