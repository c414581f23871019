#include "BrowserSettings.h"

#include <algorithm>
#include <charconv>

namespace
{

bool IsToken(std::string_view text)
{
    const auto isLetter = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
    };
    return text.size() >= 16 && text.size() <= 64 && std::ranges::all_of(text, isLetter);
}

bool IsPort(std::string_view text, uint16_t* pPort)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), *pPort);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && *pPort != 0;
}

bool IsLoopback(std::string_view address)
{
    return address == "127.0.0.1" || address == "::1";
}

bool IsNumbers(std::string_view address)
{
    return address.find_first_not_of("0123456789abcdefABCDEF.:") == std::string_view::npos;
}

}  // namespace

BrowserSettings BrowserSettings::Read(std::string_view address, std::string_view port, std::string_view token)
{
    BrowserSettings settings;
    uint16_t number = 0;
    if (IsPort(port, &number))
        settings.m_Port = number;
    else if (!port.empty())
        settings.m_Complaint += "the port is no number from 1 to 65535; ";
    if (IsToken(token))
        settings.m_Token = token;
    else if (!token.empty())
        settings.m_Complaint += "the token is not 16 to 64 letters, digits, - and _; ";
    if (address.empty())
        return settings;
    if (!IsNumbers(address))
        settings.m_Complaint += "the address is no number; ";
    else if (!IsLoopback(address) && settings.m_Token.empty())
        settings.m_Complaint += "an address that other machines reach needs a token; ";
    else
        settings.m_Address = address;
    return settings;
}

std::string BrowserSettings::Root() const
{
    return m_Token.empty() ? "/" : "/" + m_Token + "/";
}

std::string BrowserSettings::Url() const
{
    const bool bColons = m_Address.find(':') != std::string::npos;
    const std::string host = bColons ? "[" + m_Address + "]" : m_Address;
    return "http://" + host + ":" + std::to_string(m_Port) + Root();
}
