// Who gets what: the page to whoever asked by this machine's name or with the token, its sockets to the page alone.
#include "BrowserRoutes.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr std::string_view kToken = "0123456789abcdef";

BrowserRequest Get(std::string_view target)
{
    BrowserRequest request;
    request.m_Method = "GET";
    request.m_Target = target;
    request.m_Host = "127.0.0.1:7600";
    return request;
}

BrowserRequest Socket(std::string_view target)
{
    BrowserRequest request = Get(target);
    request.m_bUpgrade = true;
    request.m_Origin = "http://127.0.0.1:7600";
    return request;
}

BrowserRequest Join()
{
    BrowserRequest request = Socket("/join");
    request.m_Origin = {};
    request.m_bFromProcess = true;
    return request;
}

unsigned Refusal(const BrowserRequest& request, std::string_view token = {})
{
    const BrowserVerdict verdict = BrowserJudge(request, token);
    return verdict.m_Route == BrowserRoute::Refused ? verdict.m_Status : 0;
}

}  // namespace

TEST(BrowserRoutes, Target_OfThePage_IsItsFile)
{
    EXPECT_EQ(BrowserJudge(Get("/"), "").m_Route, BrowserRoute::File);
    EXPECT_EQ(BrowserJudge(Get("/"), "").m_File, "index.html");
    EXPECT_EQ(BrowserJudge(Get("/view.js"), "").m_File, "view.js");
    // No such file exists: the name is looked for among the page's own and never in a folder.
    EXPECT_EQ(BrowserJudge(Get("/../view.js"), "").m_File, "../view.js");
}

TEST(BrowserRoutes, Target_OfASocket_NeedsAnUpgrade)
{
    EXPECT_EQ(BrowserJudge(Socket("/watch"), "").m_Route, BrowserRoute::Watch);
    EXPECT_EQ(BrowserJudge(Join(), "").m_Route, BrowserRoute::Join);
    EXPECT_EQ(Refusal(Get("/watch")), 426u);
    EXPECT_EQ(Refusal(Socket("/")), 400u);
}

TEST(BrowserRoutes, Still_HasAScreensNumber)
{
    const BrowserVerdict verdict = BrowserJudge(Get("/still/17.png"), "");
    EXPECT_EQ(verdict.m_Route, BrowserRoute::Still);
    EXPECT_EQ(verdict.m_Screen, 17u);
    for (const char* pTarget : {"/still/.png", "/still/1.jpg", "/still/-1.png", "/still/1x.png",
             "/still/4294967296.png", "/still/../1.png", "/still.png"})
        EXPECT_NE(BrowserJudge(Get(pTarget), "").m_Route, BrowserRoute::Still) << pTarget;
}

TEST(BrowserRoutes, Join_FromAPage_IsRefused)
{
    BrowserRequest request = Socket("/join");
    EXPECT_EQ(Refusal(request), 403u) << "a page cannot add the field";
    request.m_bFromProcess = true;
    EXPECT_EQ(Refusal(request), 403u) << "and has an origin";
}

TEST(BrowserRoutes, Host_OtherNameForThisMachine_IsRefused)
{
    for (const char* pHost : {"127.0.0.1", "127.0.0.1:80", "localhost:7600", "[::1]:7600", "[::1]"})
    {
        BrowserRequest request = Get("/");
        request.m_Host = pHost;
        EXPECT_EQ(Refusal(request), 0u) << pHost;
    }
    for (const char* pHost : {"example.org", "example.org:7600", "127.0.0.1.example.org", "localhost.example.org:7600",
             "192.168.0.1:7600", "[::2]:7600"})
    {
        BrowserRequest request = Get("/");
        request.m_Host = pHost;
        EXPECT_EQ(Refusal(request), 403u) << pHost;
    }
    BrowserRequest nameless = Get("/");
    nameless.m_Host = {};
    EXPECT_EQ(Refusal(nameless), 400u);
}

TEST(BrowserRoutes, Origin_OtherThanTheHost_IsRefused)
{
    for (const char* pOrigin : {"http://example.org", "https://127.0.0.1:7600", "http://127.0.0.1:7601",
             "http://127.0.0.1", "http://localhost:7600", "null", "http://127.0.0.1:7600.example.org"})
    {
        BrowserRequest request = Socket("/watch");
        request.m_Origin = pOrigin;
        EXPECT_EQ(Refusal(request), 403u) << pOrigin;
    }
}

TEST(BrowserRoutes, Site_AnotherOne_MayLeadHereButNotUseOurAnswers)
{
    for (const char* pSite : {"cross-site", "same-site"})
    {
        BrowserRequest request = Get("/still/1.png");
        request.m_Site = pSite;
        EXPECT_EQ(Refusal(request), 403u) << pSite;
        request.m_Target = "/";
        EXPECT_EQ(Refusal(request), 0u) << pSite;
    }
    BrowserRequest own = Get("/still/1.png");
    own.m_Site = "same-origin";
    EXPECT_EQ(Refusal(own), 0u);
}

TEST(BrowserRoutes, Token_Wanted_BeginsEveryAddress)
{
    const std::string begin = "/" + std::string(kToken);
    BrowserRequest request = Get("/");
    const std::string wrong[] = {"/", begin, begin.substr(0, 16) + "/", begin + "x/", "/fedcba9876543210/", "//",
        "/x/" + std::string(kToken) + "/"};
    for (const std::string& target : wrong)
    {
        request.m_Target = target;
        EXPECT_EQ(Refusal(request, kToken), 403u) << target;
    }
    const std::string whole = begin + "/";
    request.m_Target = whole;
    EXPECT_EQ(BrowserJudge(request, kToken).m_File, "index.html");
    request.m_Host = "example.org";
    EXPECT_EQ(Refusal(request, kToken), 0u) << "whoever knows the token may call this machine as he likes";
    const std::string watch = begin + "/watch";
    BrowserRequest socket = Socket(watch);
    EXPECT_EQ(BrowserJudge(socket, kToken).m_Route, BrowserRoute::Watch);
    socket.m_Origin = "http://example.org";
    EXPECT_EQ(Refusal(socket, kToken), 403u);
}

TEST(BrowserRoutes, Request_NotAGet_IsRefused)
{
    for (const char* pMethod : {"POST", "HEAD", "PUT", "CONNECT", "OPTIONS", ""})
    {
        BrowserRequest request = Get("/");
        request.m_Method = pMethod;
        EXPECT_EQ(Refusal(request), 405u) << pMethod;
    }
    EXPECT_EQ(Refusal(Get("http://example.org/")), 400u);
    EXPECT_EQ(Refusal(Get("")), 400u);
}
