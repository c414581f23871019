// Where the page is served, from what the environment says (tesslo/browser_client.h).
#pragma once

#include <tesslo/browser_client.h>

#include <cstdint>
#include <string>
#include <string_view>

struct BrowserSettings
{
    std::string m_Address = "127.0.0.1";
    uint16_t m_Port = TESSLO_BROWSER_DEFAULT_PORT;
    std::string m_Token;      ///< empty: none is needed
    std::string m_Complaint;  ///< what was wrong with the texts, for the debugger; empty for nothing

    /// What is wrong is left as it is without a setting.
    static BrowserSettings Read(std::string_view address, std::string_view port, std::string_view token);

    /// What every target begins with: a slash, or the token between two.
    std::string Root() const;

    /// Where a page is opened.
    std::string Url() const;
};
