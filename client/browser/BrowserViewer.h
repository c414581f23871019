// One page that watches. It may ask for the server's clock, to tell how old frames are.
#pragma once

#include "BrowserFeed.h"

#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>

#include <optional>

class BrowserViewer : public BrowserFeed
{
public:
    BrowserViewer(tcp::socket&& socket, BrowserHub& hub) : BrowserFeed(std::move(socket), hub, kPatienceWithPages) {}

    /// Answers the request that asked for a WebSocket.
    void Accept(const http::request<http::empty_body>& request);

private:
    bool Next(BrowserOutgoing* pOutgoing) override;
    bool OnRequest(const nlohmann::json& request) override;

    std::optional<double> m_Asked;  ///< the page's time when it asked for ours; its last question counts
};
