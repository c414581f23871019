// Settings from texts: this machine alone, unless an address and a token say otherwise.
#include "BrowserSettings.h"

#include <gtest/gtest.h>

namespace
{
constexpr char kToken[] = "0123456789abcdef";
}  // namespace

TEST(BrowserSettings, Read_NoTexts_StaysWithThisMachine)
{
    const BrowserSettings settings = BrowserSettings::Read("", "", "");
    EXPECT_EQ(settings.Url(), "http://127.0.0.1:7600/");
    EXPECT_EQ(settings.m_Complaint, "");
}

TEST(BrowserSettings, Read_AddressAndToken_TokenIsInTheUrl)
{
    EXPECT_EQ(BrowserSettings::Read("0.0.0.0", "80", kToken).Url(), "http://0.0.0.0:80/0123456789abcdef/");
    EXPECT_EQ(BrowserSettings::Read("::1", "", "").Url(), "http://[::1]:7600/");
    EXPECT_EQ(BrowserSettings::Read("", "65535", kToken).Url(), "http://127.0.0.1:65535/0123456789abcdef/");
}

TEST(BrowserSettings, Read_OtherAddressWithoutAToken_StaysWithThisMachine)
{
    for (const char* pToken : {"", "short", "0123456789abcde/", "0123456789 bcdef"})
    {
        const BrowserSettings settings = BrowserSettings::Read("0.0.0.0", "", pToken);
        EXPECT_EQ(settings.Url(), "http://127.0.0.1:7600/") << pToken;
        EXPECT_NE(settings.m_Complaint.find("needs a token"), std::string::npos) << pToken;
    }
    EXPECT_EQ(BrowserSettings::Read("", "", std::string(65, 'a')).m_Token, "");
}

TEST(BrowserSettings, Read_WhatIsNoNumber_IsLeftOutAndTold)
{
    for (const char* pPort : {"0", "65536", "-1", "80 ", "x", "0x50"})
    {
        const BrowserSettings settings = BrowserSettings::Read("", pPort, "");
        EXPECT_EQ(settings.m_Port, TESSLO_BROWSER_DEFAULT_PORT) << pPort;
        EXPECT_NE(settings.m_Complaint, "") << pPort;
    }
    EXPECT_EQ(BrowserSettings::Read("example.org", "", kToken).m_Address, "127.0.0.1");
}
