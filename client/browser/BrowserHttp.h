// One HTTP request: read within limits of size and time, answered, or handed on as a WebSocket. Then the connection
// ends. Lives by the shared pointers in its own operations.
#pragma once

#include "BrowserAsio.h"
#include "BrowserRoutes.h"

#include <memory>

struct BrowserHouse;

class BrowserHttp : public std::enable_shared_from_this<BrowserHttp>
{
public:
    BrowserHttp(tcp::socket&& socket, const BrowserHouse& house);

    void Start();

    /// Ends it at once, in favour of a newer one.
    void Drop();

private:
    void Judge();
    void AnswerFile(std::string_view name);
    void AnswerStill(uint32_t screen);
    void AnswerStatus(http::status status);
    void Send();
    template <typename Socket>
    void HandOn();

    beast::tcp_stream m_Stream;
    beast::flat_buffer m_Buffer;
    http::request_parser<http::empty_body> m_Parser;
    http::response<http::string_body> m_Response;
    const BrowserHouse& m_House;
};
