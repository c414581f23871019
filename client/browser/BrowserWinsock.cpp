#include "BrowserWinsock.h"

#include "BrowserAsio.h"

namespace
{

// Ahead of what the headers of Boost make in every file, so that those do not begin the network themselves.
[[gnu::init_priority(101)]] boost::asio::detail::winsock_init<>::manual g_WinsockByHand;

}  // namespace

BrowserWinsock::BrowserWinsock()
{
    WSADATA data;
    m_bBegun = WSAStartup(MAKEWORD(2, 2), &data) == 0;
}

BrowserWinsock::~BrowserWinsock()
{
    if (m_bBegun)
        WSACleanup();
}
