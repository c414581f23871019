// One WebSocket: reads messages, and sends one at a time, asked for when the one before is out. So nothing queues up,
// however slow the other side is.
//
// Lives by the shared pointers in its own operations, until the connection ends. The library's own thread alone.
#pragma once

#include "BrowserAsio.h"

#include <chrono>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// What is sent next.
struct BrowserOutgoing
{
    bool m_bText = false;
    std::shared_ptr<const void> m_pOwner;  ///< keeps the bytes
    asio::const_buffer m_Bytes;

    static BrowserOutgoing Text(std::string text);
    static BrowserOutgoing Binary(std::shared_ptr<const std::vector<uint32_t>> pWords);
};

class BrowserSocket : public std::enable_shared_from_this<BrowserSocket>
{
public:
    virtual ~BrowserSocket() = default;
    BrowserSocket(const BrowserSocket&) = delete;
    BrowserSocket& operator=(const BrowserSocket&) = delete;

    /// Ends the connection without a word. OnClosed follows.
    void Drop();

protected:
    /// A page may be far away, with a whole frame still before our question; another process is not.
    static constexpr std::chrono::seconds kPatienceWithPages{60};
    static constexpr std::chrono::seconds kPatienceWithProcesses{10};

    /// @param messageBytes the longest message that is taken from the other side
    /// @param patience     nothing heard for that long, in spite of pings at half the time: the other side is gone
    BrowserSocket(tcp::socket&& socket, size_t messageBytes, std::chrono::seconds patience);

    BrowserStream& Stream() { return m_Stream; }

    /// Begins to read and to send; the handshake is done.
    void Open();

    /// Sends if there is something to send and nothing on its way.
    void Wake();

    virtual void OnOpen() = 0;
    virtual void OnClosed() = 0;  ///< once, if OnOpen was called
    /// The message to send now. @return false for none.
    virtual bool Next(BrowserOutgoing* pOutgoing) = 0;
    /// A message that came. @return false to end the connection.
    virtual bool OnText(std::string_view text) = 0;
    virtual bool OnBinary(std::span<const uint32_t> words) = 0;

private:
    void Read();
    bool Deliver();
    void Close();

    BrowserStream m_Stream;
    beast::flat_buffer m_Incoming;
    BrowserOutgoing m_Outgoing;
    bool m_bOpen = false;
    bool m_bSending = false;
};
