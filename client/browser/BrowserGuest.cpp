#include "BrowserGuest.h"

#include "BrowserHouse.h"
#include "BrowserJoinedScreen.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace
{

constexpr size_t kScreens = 256;  ///< of all processes together

/// A screen of the longest sides in packets of which none saves anything.
constexpr size_t kMessageBytes = size_t{kBrowserPictureSide} * kBrowserPictureSide * 4 + (4 << 20);

/// The number of that name. @return false if there is none.
bool ReadNumber(const nlohmann::json& object, const char* pName, uint32_t* pNumber)
{
    const auto member = object.find(pName);
    if (member == object.end() || !member->is_number_unsigned())
        return false;
    *pNumber = member->get<uint32_t>();
    return true;
}

}  // namespace

BrowserGuest::BrowserGuest(tcp::socket&& socket, const BrowserHouse& house)
    : BrowserSocket(std::move(socket), kMessageBytes, kPatienceWithProcesses), m_Hub(house.m_Hub)
{
}

void BrowserGuest::Accept(const http::request<http::empty_body>& request)
{
    Stream().async_accept(
        request, [pThis = std::static_pointer_cast<BrowserGuest>(shared_from_this())](beast::error_code error) {
            if (!error)
                pThis->Open();
        });
}

void BrowserGuest::OnClosed()
{
    RemoveScreens(nlohmann::json::array());
}

bool BrowserGuest::Next(BrowserOutgoing* pOutgoing)
{
    for (const auto& [id, pScreen] : m_Screens)
    {
        if (!pScreen->TakeDrawn())
            continue;
        *pOutgoing = BrowserOutgoing::Text(nlohmann::json{{"drawn", id}}.dump());
        return true;
    }
    return false;
}

bool BrowserGuest::OnText(std::string_view text)
{
    const auto message = nlohmann::json::parse(text, nullptr, false);
    if (!message.is_object())
        return false;
    const auto screens = message.find("screens");
    if (screens == message.end() || !screens->is_array() || screens->size() > kScreens)
        return false;
    RemoveScreens(*screens);
    return std::ranges::all_of(*screens, [this](const nlohmann::json& told) { return AddScreen(told); });
}

void BrowserGuest::RemoveScreens(const nlohmann::json& told)
{
    const auto isTold = [&](uint32_t id) {
        return std::ranges::any_of(told, [&](const nlohmann::json& screen) {
            uint32_t number = 0;
            return screen.is_object() && ReadNumber(screen, "id", &number) && number == id;
        });
    };
    for (auto screen = m_Screens.begin(); screen != m_Screens.end();)
    {
        if (isTold(screen->first))
        {
            ++screen;
            continue;
        }
        m_Hub.Remove(screen->second.get());
        screen = m_Screens.erase(screen);
    }
}

bool BrowserGuest::AddScreen(const nlohmann::json& told)
{
    uint32_t id = 0;
    BrowserOrigin origin;
    if (!told.is_object() || !ReadNumber(told, "id", &id) || !ReadNumber(told, "source", &origin.m_Source) ||
        !ReadNumber(told, "process", &origin.m_Process) || !told.contains("program") || !told["program"].is_string())
        return false;
    if (m_Screens.contains(id))
        return true;
    if (m_Hub.Screens().size() >= kScreens)
        return false;
    origin.m_Program = told["program"].get<std::string>();
    const auto pScreen = std::make_shared<BrowserJoinedScreen>(std::move(origin), [this] { Wake(); });
    m_Screens.emplace(id, pScreen);
    m_Hub.Add(pScreen);
    return true;
}

bool BrowserGuest::OnBinary(std::span<const uint32_t> words)
{
    const auto head = BrowserMessageReadHead(words);
    const auto screen = head ? m_Screens.find(head->m_Screen) : m_Screens.end();
    if (screen == m_Screens.end() || !screen->second->Apply(words))
        return false;
    m_Hub.TellFrame();
    return true;
}
