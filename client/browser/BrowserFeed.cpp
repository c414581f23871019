#include "BrowserFeed.h"

#include <nlohmann/json.hpp>

namespace
{

constexpr size_t kRequestBytes = 4096;

}  // namespace

BrowserFeed::BrowserFeed(tcp::socket&& socket, BrowserHub& hub, std::chrono::seconds patience)
    : BrowserSocket(std::move(socket), kRequestBytes, patience), m_Hub(hub)
{
}

void BrowserFeed::OnOpen()
{
    m_Hub.Watch(this);
}

void BrowserFeed::OnClosed()
{
    m_Hub.Unwatch(this);
}

void BrowserFeed::OnScreens()
{
    std::erase_if(m_Sent, [this](const auto& sent) { return m_Hub.Find(sent.first) == nullptr; });
    m_bTellScreens = true;
    Wake();
}

void BrowserFeed::Restart()
{
    for (auto& [id, sent] : m_Sent)
        sent.m_Version = 0;
}

bool BrowserFeed::NextScreens(BrowserOutgoing* pOutgoing)
{
    if (!std::exchange(m_bTellScreens, false))
        return false;
    *pOutgoing = BrowserOutgoing::Text(ScreensText());
    return true;
}

// The screens take turns: one that always changes leaves room for the others.
bool BrowserFeed::NextUpdate(BrowserOutgoing* pOutgoing)
{
    const std::vector<BrowserHub::Entry>& screens = m_Hub.Screens();
    const auto behind = std::ranges::find_if(screens, [this](const auto& entry) { return entry.m_Id > m_Turn; });
    const size_t first = static_cast<size_t>(behind - screens.begin());
    for (size_t i = 0; i < screens.size(); ++i)
    {
        const BrowserHub::Entry& entry = screens[(first + i) % screens.size()];
        Sent& sent = m_Sent[entry.m_Id];
        if (sent.m_UnderWay == kUnderWay)
            continue;
        entry.m_pScreen->Refresh();
        if (entry.m_pScreen->Version() == sent.m_Version)
            continue;
        m_Turn = entry.m_Id;
        const uint64_t before = std::exchange(sent.m_Version, entry.m_pScreen->Version());
        ++sent.m_UnderWay;
        return Update(entry, before, pOutgoing);
    }
    return false;
}

bool BrowserFeed::Update(const BrowserHub::Entry& entry, uint64_t version, BrowserOutgoing* pOutgoing)
{
    *pOutgoing = BrowserOutgoing::Binary(entry.m_pScreen->UpdateSince(version, entry.m_Id));
    return true;
}

bool BrowserFeed::OnText(std::string_view text)
{
    const auto request = nlohmann::json::parse(text, nullptr, false);
    if (!request.is_object())
        return false;
    const auto drawn = request.find("drawn");
    if (drawn == request.end())
        return OnRequest(request);
    if (!drawn->is_number_unsigned())
        return false;
    const auto sent = m_Sent.find(drawn->get<uint32_t>());
    // A screen may have gone in the meantime.
    if (sent != m_Sent.end() && sent->second.m_UnderWay != 0)
        --sent->second.m_UnderWay;
    Wake();
    return true;
}

bool BrowserFeed::OnRequest(const nlohmann::json&)
{
    return false;
}

std::string BrowserFeed::ScreensText() const
{
    nlohmann::json screens = nlohmann::json::array();
    for (const BrowserHub::Entry& entry : m_Hub.Screens())
    {
        const BrowserOrigin& origin = entry.m_pScreen->Origin();
        screens.push_back({{"id", entry.m_Id}, {"source", origin.m_Source}, {"process", origin.m_Process},
            {"program", origin.m_Program}});
    }
    return nlohmann::json{{"screens", screens}}.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}
