#include "BrowserServer.h"

#include "BrowserHouse.h"
#include "BrowserHttp.h"
#include "BrowserSettings.h"

namespace
{

/// Requests that are read or answered at once. Above it the oldest ends: whoever holds many has to be quicker than
/// that.
constexpr size_t kRequests = 64;

constexpr std::chrono::milliseconds kPause(100);

/// Nobody else gets the port while it is ours. Sockets of an earlier server that still linger do not count.
using ExclusiveAddress = asio::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE>;

}  // namespace

beast::error_code BrowserServer::Listen()
{
    beast::error_code error;
    const tcp::endpoint endpoint(
        asio::ip::make_address(m_House.m_Settings.m_Address, error), m_House.m_Settings.m_Port);
    if (error || m_Acceptor.open(endpoint.protocol(), error) || m_Acceptor.set_option(ExclusiveAddress(true), error) ||
        m_Acceptor.bind(endpoint, error) || m_Acceptor.listen(asio::socket_base::max_listen_connections, error))
    {
        beast::error_code ignored;
        m_Acceptor.close(ignored);
        return error;
    }
    Accept();
    return {};
}

void BrowserServer::Accept()
{
    m_Acceptor.async_accept([this](beast::error_code error, tcp::socket socket) {
        if (error == asio::error::operation_aborted)
            return;
        if (error)
            return AcceptLater();
        Take(std::move(socket));
        Accept();
    });
}

// What is missing for a connection may be there again soon: nothing is gained by asking all the time.
void BrowserServer::AcceptLater()
{
    m_Later.expires_after(kPause);
    m_Later.async_wait([this](beast::error_code) { Accept(); });
}

void BrowserServer::Take(tcp::socket&& socket)
{
    beast::error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    std::erase_if(m_Requests, [](const auto& request) { return request.expired(); });
    if (m_Requests.size() >= kRequests)
    {
        if (const auto pOldest = m_Requests.front().lock())
            pOldest->Drop();
        m_Requests.pop_front();
    }
    const auto pRequest = std::make_shared<BrowserHttp>(std::move(socket), m_House);
    m_Requests.push_back(pRequest);
    pRequest->Start();
}
