// What a report must not tell.
#include "host/support/HostPrivacy.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace
{

/// A process of somebody else's, on a machine of somebody else's.
class HostPrivacyTest : public testing::Test
{
protected:
    HostPrivacyTest()
    {
        SetEnvironmentVariableW(L"USERNAME", L"Wilhelmine");
        SetEnvironmentVariableW(L"COMPUTERNAME", L"M7");
        SetEnvironmentVariableW(L"USERPROFILE", L"C:\\Users\\wilhe.CORP");
    }
};

}  // namespace

TEST_F(HostPrivacyTest, Without_NamesAndPaths_AreReplaced)
{
    const HostPrivacy privacy;
    EXPECT_EQ(privacy.Without(L"C:\\Users\\wilhe.CORP\\x.dll"), L"<profile>\\x.dll");
    EXPECT_EQ(privacy.Without(L"c:/users/WILHE.corp/x.dll"), L"<profile>/x.dll");
    EXPECT_EQ(privacy.Without(L"D:\\home\\wilhe.CORP"), L"D:\\home\\<user>");
    EXPECT_EQ(privacy.Without(L"of wilhelmine's"), L"of <user>'s");
    EXPECT_EQ(privacy.Without(L"WilhelmineWilhelmine"), L"<user><user>") << "a long name is found in a word";
    EXPECT_EQ(privacy.Without(L"\\\\m7\\share"), L"\\\\<machine>\\share");
    EXPECT_EQ(privacy.Without(L"M7"), L"<machine>");
}

TEST_F(HostPrivacyTest, Without_ShortNameInAWord_IsKept)
{
    const HostPrivacy privacy;
    EXPECT_EQ(privacy.Without(L"XM7 M70 M7"), L"XM7 M70 <machine>");
}

TEST_F(HostPrivacyTest, Without_NameOfAnyLetters_IsFoundInAnyCase)
{
    SetEnvironmentVariableW(L"USERNAME", L"\u00D6\u0416\u00E9n");
    EXPECT_EQ(HostPrivacy().Without(L"\u00F6\u0436\u00C9N"), L"<user>");
    SetEnvironmentVariableW(L"USERNAME", L"\u00E9\u00E9");
    EXPECT_EQ(HostPrivacy().Without(L"\u00E9\u00E9 \u00E9\u00E9\u00E9"), L"<user> \u00E9\u00E9\u00E9");
}

TEST_F(HostPrivacyTest, Without_NothingPrivate_IsTheText)
{
    const std::wstring text = L"UMD: [0044:0048] => UMDDdiPresent 100%\n\u00FC\n";
    EXPECT_EQ(HostPrivacy().Without(text), text);
    EXPECT_EQ(HostPrivacy().Without(L""), L"");
}

TEST(HostPrivacy, Without_WhatThePlatformItselfKnows_IsReplaced)
{
    wchar_t user[256] = L"", machine[256] = L"";
    DWORD userLength = ARRAYSIZE(user), machineLength = ARRAYSIZE(machine);
    ASSERT_TRUE(GetUserNameW(user, &userLength));
    ASSERT_TRUE(GetComputerNameW(machine, &machineLength));
    for (const wchar_t* pName : {L"USERNAME", L"COMPUTERNAME", L"USERPROFILE"})
        SetEnvironmentVariableW(pName, nullptr);
    const HostPrivacy privacy;
    EXPECT_EQ(privacy.Without(std::wstring(user) + L" " + machine), L"<user> <machine>");
    EXPECT_EQ(privacy.Without(std::wstring(L"C:\\users\\") + user + L"\\x"), L"<profile>\\x");
}
