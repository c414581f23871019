#include "BrowserHttp.h"

#include "BrowserGuest.h"
#include "BrowserHouse.h"
#include "BrowserHub.h"
#include "BrowserPage.h"
#include "BrowserPainter.h"
#include "BrowserSettings.h"
#include "BrowserViewer.h"

namespace
{

constexpr uint32_t kHeadBytes = 8192;
constexpr std::chrono::seconds kWhole(10);  ///< for request and answer together
constexpr size_t kViewers = 64;

std::string_view View(beast::string_view text)
{
    return {text.data(), text.size()};
}

}  // namespace

BrowserHttp::BrowserHttp(tcp::socket&& socket, const BrowserHouse& house)
    : m_Stream(std::move(socket)), m_Buffer(kHeadBytes), m_House(house)
{
    m_Parser.header_limit(kHeadBytes);
    m_Parser.body_limit(0);
}

void BrowserHttp::Start()
{
    // Once, for all: a request that comes letter by letter has no more time than another.
    m_Stream.expires_after(kWhole);
    http::async_read(m_Stream, m_Buffer, m_Parser, [pThis = shared_from_this()](beast::error_code error, size_t) {
        if (!error)
            pThis->Judge();
        else if (error == http::error::header_limit || error == http::error::buffer_overflow)
            pThis->AnswerStatus(http::status::request_header_fields_too_large);
        else if (error.category() == http::make_error_code(http::error::bad_method).category() &&
                 error != http::error::end_of_stream)
            pThis->AnswerStatus(http::status::bad_request);
    });
}

void BrowserHttp::Drop()
{
    m_Stream.close();
}

void BrowserHttp::Judge()
{
    const auto& request = m_Parser.get();
    const auto field = [&](http::field name) { return View(request[name]); };
    const BrowserRequest judged = {View(request.method_string()), View(request.target()), field(http::field::host),
        field(http::field::origin), View(request["Sec-Fetch-Site"]), websocket::is_upgrade(request),
        request.find(kBrowserJoinField) != request.end()};
    // Two hosts, or bytes behind a request that has no body: somebody hopes to be read in two ways.
    if (request.count(http::field::host) != 1 || request.count(http::field::origin) > 1 || m_Buffer.size() != 0)
        return AnswerStatus(http::status::bad_request);
    const BrowserVerdict verdict = BrowserJudge(judged, m_House.m_Settings.m_Token);
    switch (verdict.m_Route)
    {
    case BrowserRoute::File:
        return AnswerFile(verdict.m_File);
    case BrowserRoute::Still:
        return AnswerStill(verdict.m_Screen);
    case BrowserRoute::Watch:
        return HandOn<BrowserViewer>();
    case BrowserRoute::Join:
        return HandOn<BrowserGuest>();
    default:
        return AnswerStatus(static_cast<http::status>(verdict.m_Status));
    }
}

template <typename Socket>
void BrowserHttp::HandOn()
{
    if (m_House.m_Hub.Watchers() >= kViewers)
        return AnswerStatus(http::status::service_unavailable);
    m_Stream.expires_never();
    std::make_shared<Socket>(m_Stream.release_socket(), m_House)->Accept(m_Parser.get());
}

void BrowserHttp::AnswerFile(std::string_view name)
{
    for (const BrowserPageFile& file : BrowserPageFiles())
    {
        if (file.m_Name != name)
            continue;
        m_Response.set(http::field::content_type, beast::string_view(file.m_Type.data(), file.m_Type.size()));
        m_Response.body() = file.m_Text;
        return Send();
    }
    AnswerStatus(http::status::not_found);
}

void BrowserHttp::AnswerStill(uint32_t screen)
{
    const std::shared_ptr<BrowserScreen> pScreen = m_House.m_Hub.Find(screen);
    if (pScreen == nullptr)
        return AnswerStatus(http::status::not_found);
    pScreen->Refresh();
    if (pScreen->Version() == 0)
        return AnswerStatus(http::status::not_found);
    const auto done = [pThis = shared_from_this()](const BrowserBytes& bytes) {
        if (bytes.empty())
            return pThis->AnswerStatus(http::status::service_unavailable);
        pThis->m_Response.set(http::field::content_type, "image/png");
        pThis->m_Response.body().assign(bytes.begin(), bytes.end());
        pThis->Send();
    };
    if (!m_House.m_Painter.Do([snapshot = BrowserSnapshot(*pScreen)] { return BrowserPng(snapshot); }, done))
        AnswerStatus(http::status::service_unavailable);
}

void BrowserHttp::AnswerStatus(http::status status)
{
    m_Response.result(status);
    m_Response.set(http::field::content_type, "text/plain; charset=utf-8");
    m_Response.body() = std::string(http::obsolete_reason(status)) + "\n";
    Send();
}

void BrowserHttp::Send()
{
    // Nothing of ours is part of another page, and the address, which may hold the token, is told to nobody.
    m_Response.set(http::field::cache_control, "no-store");
    m_Response.set("Content-Security-Policy", "default-src 'self'; img-src 'self' blob: data:; frame-ancestors 'none'");
    m_Response.set("Cross-Origin-Resource-Policy", "same-origin");
    m_Response.set("Referrer-Policy", "no-referrer");
    m_Response.set("X-Content-Type-Options", "nosniff");
    m_Response.keep_alive(false);
    m_Response.prepare_payload();
    http::async_write(m_Stream, m_Response, [pThis = shared_from_this()](beast::error_code, size_t) {
        beast::error_code ignored;
        pThis->m_Stream.socket().shutdown(tcp::socket::shutdown_send, ignored);
    });
}
