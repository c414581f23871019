#include "BrowserSocket.h"

namespace
{

/// What the side that has to mask its bytes copies at a time.
constexpr size_t kWriteBuffer = size_t{256} * 1024;

}  // namespace

BrowserOutgoing BrowserOutgoing::Text(std::string text)
{
    auto pText = std::make_shared<const std::string>(std::move(text));
    return {true, pText, asio::buffer(*pText)};
}

BrowserOutgoing BrowserOutgoing::Binary(std::shared_ptr<const std::vector<uint32_t>> pWords)
{
    const asio::const_buffer bytes = asio::buffer(*pWords);
    return {false, std::move(pWords), bytes};
}

BrowserSocket::BrowserSocket(tcp::socket&& socket, size_t messageBytes, std::chrono::seconds patience)
    : m_Stream(std::move(socket))
{
    m_Stream.read_message_max(messageBytes);
    m_Stream.auto_fragment(false);
    m_Stream.write_buffer_bytes(kWriteBuffer);
    m_Stream.set_option(websocket::stream_base::timeout{std::chrono::seconds(10), patience, true});
}

void BrowserSocket::Open()
{
    m_bOpen = true;
    OnOpen();
    Read();
    Wake();
}

void BrowserSocket::Drop()
{
    beast::get_lowest_layer(m_Stream).close();
}

void BrowserSocket::Wake()
{
    if (!m_bOpen || m_bSending || !Next(&m_Outgoing))
        return;
    m_bSending = true;
    m_Stream.text(m_Outgoing.m_bText);
    m_Stream.async_write(m_Outgoing.m_Bytes, [pThis = shared_from_this()](beast::error_code error, size_t) {
        pThis->m_bSending = false;
        pThis->m_Outgoing = {};
        if (error)
            pThis->Close();
        else
            pThis->Wake();
    });
}

void BrowserSocket::Read()
{
    m_Stream.async_read(m_Incoming, [pThis = shared_from_this()](beast::error_code error, size_t) {
        if (error || !pThis->m_bOpen || !pThis->Deliver())
            return pThis->Close();
        pThis->m_Incoming.clear();
        pThis->Read();
    });
}

bool BrowserSocket::Deliver()
{
    const auto bytes = m_Incoming.cdata();
    if (m_Stream.got_text())
        return OnText({static_cast<const char*>(bytes.data()), bytes.size()});
    if (bytes.size() % sizeof(uint32_t) != 0)
        return false;
    return OnBinary({static_cast<const uint32_t*>(bytes.data()), bytes.size() / sizeof(uint32_t)});
}

// Reading and sending both end here. What is still under way ends with an error.
void BrowserSocket::Close()
{
    if (!m_bOpen)
        return;
    m_bOpen = false;
    Drop();
    OnClosed();
}
