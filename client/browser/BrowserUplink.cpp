#include "BrowserUplink.h"

#include "BrowserRoutes.h"
#include "BrowserSettings.h"

namespace
{

constexpr std::chrono::seconds kConnect(5);

/// Where the server is reached that listens at the settings' address.
tcp::endpoint ServerEndpoint(const BrowserSettings& settings)
{
    beast::error_code ignored;
    const auto address = asio::ip::make_address(settings.m_Address, ignored);
    if (!address.is_unspecified())
        return {address, settings.m_Port};
    if (address.is_v6())
        return {asio::ip::address_v6::loopback(), settings.m_Port};
    return {asio::ip::address_v4::loopback(), settings.m_Port};
}

}  // namespace

BrowserUplink::BrowserUplink(asio::io_context& context, BrowserHub& hub, std::function<void(bool)> ended)
    : BrowserFeed(tcp::socket(context), hub, kPatienceWithProcesses), m_Ended(std::move(ended))
{
}

void BrowserUplink::Connect(const BrowserSettings& settings)
{
    auto& stream = beast::get_lowest_layer(Stream());
    stream.expires_after(kConnect);
    stream.async_connect(ServerEndpoint(settings), [pThis = std::static_pointer_cast<BrowserUplink>(shared_from_this()),
                                                       target = settings.Root() + "join"](beast::error_code error) {
        if (error)
            return pThis->m_Ended(false);
        pThis->Shake(target);
    });
}

void BrowserUplink::Shake(const std::string& target)
{
    auto& stream = beast::get_lowest_layer(Stream());
    stream.expires_never();  // the handshake has a time of its own
    beast::error_code ignored;
    stream.socket().set_option(tcp::no_delay(true), ignored);
    Stream().set_option(websocket::stream_base::decorator(
        [](websocket::request_type& request) { request.set(kBrowserJoinField, "1"); }));
    Stream().async_handshake("localhost", target,
        [pThis = std::static_pointer_cast<BrowserUplink>(shared_from_this())](beast::error_code error) {
            if (error)
                return pThis->m_Ended(false);
            pThis->Open();
        });
}

void BrowserUplink::OnClosed()
{
    BrowserFeed::OnClosed();
    m_Ended(true);
}
