#include "BrowserViewer.h"

#include "BrowserClock.h"
#include "BrowserHouse.h"
#include "BrowserMessage.h"
#include "BrowserPainter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace
{

/// The smallest rectangle around all tiles that changed after a version.
BrowserRect ChangedRect(const BrowserScreen& screen, uint64_t version)
{
    uint32_t left = UINT32_MAX, top = UINT32_MAX, right = 0, bottom = 0;
    for (uint32_t i = 0; i < screen.Tiles().size(); ++i)
    {
        if (screen.Tiles()[i].m_Version <= version)
            continue;
        const BrowserRect rect = screen.Grid().Rect(i);
        left = std::min(left, rect.m_X);
        top = std::min(top, rect.m_Y);
        right = std::max(right, rect.m_X + rect.m_Width);
        bottom = std::max(bottom, rect.m_Y + rect.m_Height);
    }
    return {left, top, right - left, bottom - top};
}

}  // namespace

BrowserViewer::BrowserViewer(tcp::socket&& socket, const BrowserHouse& house)
    : BrowserFeed(std::move(socket), house.m_Hub, kPatienceWithPages), m_Painter(house.m_Painter)
{
}

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
    if (NextAnswer(pOutgoing) || NextPainted(pOutgoing) || NextScreens(pOutgoing))
        return true;
    return !m_bPainting && NextUpdate(pOutgoing);
}

bool BrowserViewer::NextAnswer(BrowserOutgoing* pOutgoing)
{
    if (!m_Asked)
        return false;
    const nlohmann::json answer = {{"asked", *m_Asked}, {"clock", BrowserClockNow()}};
    m_Asked.reset();
    *pOutgoing = BrowserOutgoing::Text(answer.dump());
    return true;
}

bool BrowserViewer::NextPainted(BrowserOutgoing* pOutgoing)
{
    if (!m_Painted)
        return false;
    *pOutgoing = std::move(*m_Painted);
    m_Painted.reset();
    return true;
}

bool BrowserViewer::Update(const BrowserHub::Entry& entry, uint64_t version, BrowserOutgoing* pOutgoing)
{
    if (!m_bJpeg)
        return BrowserFeed::Update(entry, version, pOutgoing);
    const BrowserScreen& screen = *entry.m_pScreen;
    const BrowserRect rect = ChangedRect(screen, version);
    const BrowserMessageHead head = {
        kBrowserMessageJpeg, entry.m_Id, static_cast<uint32_t>(screen.Number()), screen.Grid(), screen.Time(), 0};
    const auto done = [pThis = std::static_pointer_cast<BrowserViewer>(shared_from_this()), head, rect](
                          const BrowserBytes& bytes) {
        auto pMessage = std::make_shared<const BrowserWords>(BrowserMessageOfJpeg(head, rect, bytes));
        pThis->m_bPainting = false;
        pThis->m_Painted = BrowserOutgoing::Binary(std::move(pMessage));
        pThis->Wake();
    };
    m_bPainting =
        m_Painter.Do([snapshot = BrowserSnapshot(screen), rect] { return BrowserJpeg(snapshot, rect); }, done);
    return !m_bPainting && BrowserFeed::Update(entry, version, pOutgoing);
}

bool BrowserViewer::OnRequest(const nlohmann::json& request)
{
    const auto clock = request.find("clock");
    const auto jpeg = request.find("jpeg");
    if (clock != request.end() && clock->is_number())
        m_Asked = clock->get<double>();
    else if (jpeg == request.end() || !jpeg->is_boolean())
        return false;
    else if (std::exchange(m_bJpeg, jpeg->get<bool>()) != m_bJpeg)
        Restart();  // what was drawn with loss is drawn anew
    Wake();
    return true;
}
