// Another process of this machine whose screens are shown here, because the port is ours.
#pragma once

#include "BrowserHub.h"
#include "BrowserSocket.h"

#include <nlohmann/json_fwd.hpp>

#include <map>

class BrowserJoinedScreen;
struct BrowserHouse;

class BrowserGuest : public BrowserSocket
{
public:
    BrowserGuest(tcp::socket&& socket, const BrowserHouse& house);

    /// Answers the request that asked for a WebSocket.
    void Accept(const http::request<http::empty_body>& request);

private:
    void OnOpen() override {}
    void OnClosed() override;
    bool Next(BrowserOutgoing* pOutgoing) override;
    bool OnText(std::string_view text) override;
    bool OnBinary(std::span<const uint32_t> words) override;

    bool AddScreen(const nlohmann::json& told);
    void RemoveScreens(const nlohmann::json& told);

    BrowserHub& m_Hub;
    std::map<uint32_t, std::shared_ptr<BrowserJoinedScreen>> m_Screens;  ///< by the other process's numbers
};
