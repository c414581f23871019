#include "BenchViewer.h"

#include "client/browser/BrowserClock.h"
#include "host/runtime/HostError.h"

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace
{
constexpr std::string_view kRequest = "GET /watch HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\n"
                                      "Upgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
                                      "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";

/// @return INVALID_SOCKET if nobody listens.
SOCKET Connect(u_short port)
{
    const SOCKET hSocket = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(hSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0)
        return hSocket;
    closesocket(hSocket);
    return INVALID_SOCKET;
}
}  // namespace

BenchViewer::BenchViewer(u_short port)
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    // The library's thread has only just begun to listen.
    for (UINT tries = 0; (m_hSocket = Connect(port)) == INVALID_SOCKET; ++tries)
    {
        if (tries == 500)
            throw HostError("nobody serves a page");
        Sleep(10);
    }
    send(m_hSocket, kRequest.data(), static_cast<int>(kRequest.size()), 0);
    std::string answer;
    char letter = 0;
    while (!answer.ends_with("\r\n\r\n") && Read(&letter, 1))
        answer += letter;
    if (!answer.starts_with("HTTP/1.1 101"))
        throw HostError("the page's server refuses a viewer: " + answer);
    m_Thread = std::thread([this] { Run(); });
}

BenchViewer::~BenchViewer()
{
    shutdown(m_hSocket, SD_BOTH);
    m_Thread.join();
    closesocket(m_hSocket);
}

std::vector<double> BenchViewer::TakeAges()
{
    const std::lock_guard lock(m_Mutex);
    return std::exchange(m_Ages, {});
}

void BenchViewer::Run()
{
    std::vector<char> message;
    while (ReadMessage(&message))
    {
        const UINT64 now = BrowserClockNow();
        UINT head[8];
        if (message.size() < sizeof(head) || message[0] == '{')
            continue;  // the list of screens
        std::memcpy(head, message.data(), sizeof(head));
        {
            const std::lock_guard lock(m_Mutex);
            m_Ages.push_back(static_cast<double>(now - (head[5] | static_cast<UINT64>(head[6]) << 32)) / 1e6);
        }
        ++m_Updates;
        if (!SendDrawn(head[1]))
            return;
    }
}

bool BenchViewer::ReadMessage(std::vector<char>* pMessage)
{
    BYTE head[2];
    if (!Read(head, sizeof(head)))
        return false;
    UINT64 length = head[1] & 127;
    if (const UINT more = length == 126 ? 2 : length == 127 ? 8 : 0)
    {
        BYTE digits[8];
        if (!Read(digits, more))
            return false;
        length = 0;
        for (UINT i = 0; i < more; ++i)
            length = length << 8 | digits[i];
    }
    pMessage->resize(length);
    return Read(pMessage->data(), length);
}

bool BenchViewer::Read(void* pData, size_t bytes)
{
    char* pNext = static_cast<char*>(pData);
    while (bytes != 0)
    {
        const int count = recv(m_hSocket, pNext, static_cast<int>(bytes), 0);
        if (count <= 0)
            return false;
        pNext += count;
        bytes -= static_cast<size_t>(count);
        m_Bytes += static_cast<size_t>(count);
    }
    return true;
}

// Masked with zeros, which leave the text as it is.
bool BenchViewer::SendDrawn(UINT screen) const
{
    const std::string text = "{\"drawn\":" + std::to_string(screen) + "}";
    const std::string frame = std::string{'\x81', static_cast<char>(0x80 | text.size()), '\0', '\0', '\0', '\0'} + text;
    return send(m_hSocket, frame.data(), static_cast<int>(frame.size()), 0) == static_cast<int>(frame.size());
}
