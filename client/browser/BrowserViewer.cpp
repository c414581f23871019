#include "BrowserViewer.h"

#include "BrowserClock.h"

#include <nlohmann/json.hpp>

void BrowserViewer::Accept(const http::request<http::empty_body>& request)
{
    Stream().async_accept(
        request, [pThis = std::static_pointer_cast<BrowserViewer>(shared_from_this())](beast::error_code error) {
            if (!error)
                pThis->Open();
        });
}

bool BrowserViewer::Next(BrowserOutgoing* pOutgoing)
{
    if (!m_Asked)
        return BrowserFeed::Next(pOutgoing);
    const nlohmann::json answer = {{"asked", *m_Asked}, {"clock", BrowserClockNow()}};
    m_Asked.reset();
    *pOutgoing = BrowserOutgoing::Text(answer.dump());
    return true;
}

bool BrowserViewer::OnRequest(const nlohmann::json& request)
{
    const auto clock = request.find("clock");
    if (clock == request.end() || !clock->is_number())
        return false;
    m_Asked = clock->get<double>();
    Wake();
    return true;
}
