#include "BrowserRoutes.h"

#include <charconv>

namespace
{

BrowserVerdict Refuse(unsigned status)
{
    return {BrowserRoute::Refused, status, {}, 0};
}

/// The name without the port.
std::string_view HostName(std::string_view host)
{
    const size_t colon = host.rfind(':');
    const bool bPort = colon != std::string_view::npos && host.find(']', colon) == std::string_view::npos;
    return bPort ? host.substr(0, colon) : host;
}

// Another name that leads to this machine is how a foreign page would make itself ours. Any port may stand behind the
// name, because a port that is forwarded is seldom the same.
bool IsThisMachine(std::string_view host)
{
    const std::string_view name = HostName(host);
    return name == "localhost" || name == "127.0.0.1" || name == "[::1]";
}

/// Takes as long for a wrong token as for the right one.
bool IsSameToken(std::string_view given, std::string_view token)
{
    if (given.size() != token.size())
        return false;
    unsigned different = 0;
    for (size_t i = 0; i < token.size(); ++i)
        different |= static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(token[i]);
    return different == 0;
}

/// Cuts "/token" off the target.
bool TakeToken(std::string_view* pTarget, std::string_view token)
{
    if (token.empty())
        return true;
    const size_t end = pTarget->find('/', 1);
    if (end == std::string_view::npos || !IsSameToken(pTarget->substr(1, end - 1), token))
        return false;
    pTarget->remove_prefix(end);
    return true;
}

bool IsOwnOrigin(const BrowserRequest& request)
{
    constexpr std::string_view kScheme = "http://";
    return request.m_Origin.empty() ||
           (request.m_Origin.starts_with(kScheme) && request.m_Origin.substr(kScheme.size()) == request.m_Host);
}

/// The number in "/still/NUMBER.png".
bool IsStill(std::string_view target, uint32_t* pScreen)
{
    constexpr std::string_view kBegin = "/still/";
    constexpr std::string_view kEnd = ".png";
    if (!target.starts_with(kBegin) || !target.ends_with(kEnd) || target.size() < kBegin.size() + kEnd.size())
        return false;
    target.remove_prefix(kBegin.size());
    target.remove_suffix(kEnd.size());
    const char* const pEnd = target.data() + target.size();
    // It reads up to the end that it is given. NOLINTNEXTLINE(bugprone-suspicious-stringview-data-usage)
    const auto result = std::from_chars(target.data(), pEnd, *pScreen);
    return result.ec == std::errc() && result.ptr == pEnd;
}

BrowserVerdict JudgeTarget(const BrowserRequest& request, std::string_view target)
{
    const auto socket = [&](BrowserRoute route) {
        return request.m_bUpgrade ? BrowserVerdict{route, 101, {}, 0} : Refuse(426);
    };
    if (target == "/watch")
        return socket(BrowserRoute::Watch);
    if (target == "/join")
        return request.m_bFromProcess && request.m_Origin.empty() ? socket(BrowserRoute::Join) : Refuse(403);
    if (request.m_bUpgrade)
        return Refuse(400);
    if (uint32_t screen = 0; IsStill(target, &screen))
        return {BrowserRoute::Still, 200, {}, screen};
    if (target == "/")
        return {BrowserRoute::File, 200, "index.html", 0};
    return {BrowserRoute::File, 200, target.substr(1), 0};
}

}  // namespace

BrowserVerdict BrowserJudge(const BrowserRequest& request, std::string_view token)
{
    if (request.m_Host.empty() || !request.m_Target.starts_with('/'))
        return Refuse(400);
    if (token.empty() && !IsThisMachine(request.m_Host))
        return Refuse(403);
    std::string_view target = request.m_Target;
    if (!TakeToken(&target, token) || !IsOwnOrigin(request))
        return Refuse(403);
    if (request.m_Method != "GET")
        return Refuse(405);
    const BrowserVerdict verdict = JudgeTarget(request, target);
    // Another page may lead here, but may not make our answers part of itself.
    const bool bForeign = request.m_Site == "cross-site" || request.m_Site == "same-site";
    return bForeign && target != "/" ? Refuse(403) : verdict;
}
