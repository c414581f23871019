// Listens, and gives every connection to a BrowserHttp. The library's own thread alone.
#pragma once

#include "BrowserAsio.h"

#include <deque>
#include <memory>

class BrowserHttp;
class BrowserHub;
struct BrowserSettings;

class BrowserServer
{
public:
    /// Settings and hub outlive the server and every connection.
    BrowserServer(asio::io_context& context, const BrowserSettings& settings, BrowserHub& hub);

    /// Begins to accept. The error if the address cannot be had, which most often another process has.
    beast::error_code Listen();

private:
    void Accept();
    void Take(tcp::socket&& socket);

    tcp::acceptor m_Acceptor;
    const BrowserSettings& m_Settings;
    BrowserHub& m_Hub;
    std::deque<std::weak_ptr<BrowserHttp>> m_Requests;  ///< oldest first
};
