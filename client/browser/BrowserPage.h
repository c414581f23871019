// The files of the page, as the build took them from the folder page.
#pragma once

#include <span>
#include <string_view>

struct BrowserPageFile
{
    std::string_view m_Name;
    std::string_view m_Type;  ///< of HTTP
    std::string_view m_Text;
};

/// All of them.
std::span<const BrowserPageFile> BrowserPageFiles();
