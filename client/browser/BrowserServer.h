// Listens, and gives every connection to a BrowserHttp. The library's own thread alone.
#pragma once

#include "BrowserAsio.h"

#include <deque>
#include <memory>

class BrowserHttp;
struct BrowserHouse;

class BrowserServer
{
public:
    BrowserServer(asio::io_context& context, const BrowserHouse& house)
        : m_Acceptor(context), m_Later(context), m_House(house)
    {
    }

    /// Begins to accept. The error if the address cannot be had, which most often another process has.
    beast::error_code Listen();

private:
    void Accept();
    void AcceptLater();
    void Take(tcp::socket&& socket);

    tcp::acceptor m_Acceptor;
    asio::steady_timer m_Later;
    const BrowserHouse& m_House;
    std::deque<std::weak_ptr<BrowserHttp>> m_Requests;  ///< oldest first
};
