// Decides what a request gets, from its words alone.
//
// The pages of other origins reach a server on this machine too. They are told from our own page by what a browser
// writes into every request and no page can change: the name that the server was asked by, and the asking page's
// origin.
#pragma once

#include <cstdint>
#include <string_view>

/// What of a request counts. A field that is not there is empty.
struct BrowserRequest
{
    std::string_view m_Method;
    std::string_view m_Target;
    std::string_view m_Host;
    std::string_view m_Origin;
    std::string_view m_Site;      ///< Sec-Fetch-Site
    bool m_bUpgrade = false;      ///< asks for a WebSocket
    bool m_bFromProcess = false;  ///< carries kBrowserJoinField, which no page can add
};

inline constexpr char kBrowserJoinField[] = "Tesslo-Join";

enum class BrowserRoute
{
    Refused,
    File,   ///< of the page
    Still,  ///< a screen as a PNG
    Watch,  ///< the page's WebSocket
    Join,   ///< another process's WebSocket
};

struct BrowserVerdict
{
    BrowserRoute m_Route = BrowserRoute::Refused;
    unsigned m_Status = 404;  ///< of HTTP, for what is refused
    std::string_view m_File;  ///< name of the page's file
    uint32_t m_Screen = 0;    ///< of a still
};

/// @param token what the address has to begin with; empty where only this machine can ask.
BrowserVerdict BrowserJudge(const BrowserRequest& request, std::string_view token);
