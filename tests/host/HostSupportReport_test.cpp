// The report: what it tells, and what it does not.
#include "FakeFactory.h"
#include "TemporaryFolder.h"
#include "host/support/HostAdapterList.h"
#include "host/support/HostSupportReport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using namespace tesslo::test;

namespace
{

std::string Lower(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return text;
}

class HostSupportReportTest : public testing::Test
{
protected:
    std::string Report() const { return HostSupportText(m_Places); }
    void WriteLog(const std::string& text) const
    {
        std::ofstream(std::filesystem::path(m_Places.m_Log), std::ios::binary) << text;
    }

    TemporaryFolder m_Folder;
    HostSupportPlaces m_Places{
        L"TessloWddmUmode.dll", std::nullopt, std::nullopt, (m_Folder.Path() / "Tesslo.log").wstring()};
};

testing::AssertionResult Contains(const std::string& text, const std::string& part)
{
    if (text.find(part) != std::string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "\"" << part << "\" is not in:\n" << text;
}

}  // namespace

TEST_F(HostSupportReportTest, Text_OfAMachineThatIsSetUp_TellsAll)
{
    m_Places.m_TraceMask = 0x801;
    m_Places.m_ClientLibrary = L"TessloTestClientWithoutReserved2.dll";
    WriteLog("UMD: [0044:0048] one line\r\n");
    const std::string text = Report();
    EXPECT_TRUE(text.starts_with("Versions\n\ntesslo_host: 8.14.")) << text;
    EXPECT_TRUE(Contains(text, "\ndriver: 8.14."));
    EXPECT_TRUE(Contains(text, ", beside this program, not signed\ninstalled driver: "));
    EXPECT_TRUE(Contains(text, "\nDebugLevelUMD: 0x801\nDllNameInterface: \"TessloTestClientWithoutReserved2.dll\"\n"));
    EXPECT_TRUE(Contains(text,
        "\n\"TessloTestClientWithoutReserved2.dll\": without a version, beside this program, not signed\n"
        "TessloVirtualMonitorPlug: there\nTessloVirtualMonitorUpdate: there\nTessloVirtualMonitorUnplug: there\n"
        "TessloVirtualMonitorReserved1: there\nTessloVirtualMonitorReserved2: not there\n"
        "It may bring an adapter of its own, which the driver then draws on.\n"));
    EXPECT_TRUE(text.ends_with("\nLast trace\n\nThe last lines of 27 bytes:\nUMD: [0044:0048] one line\n")) << text;
}

TEST_F(HostSupportReportTest, Text_OfTwoAdapters_NamesTheDelegatedOneWithItsLuid)
{
    const std::vector<HostGraphicsAdapter> real = HostListAdapters();
    ASSERT_FALSE(real.empty());
    char luid[32];
    snprintf(luid, sizeof(luid), "LUID %08lX:%08lX\n", real[0].m_Luid.HighPart, real[0].m_Luid.LowPart);
    EXPECT_TRUE(Contains(Report(), "\nAdapters\n\n0: " + real[0].m_Description + ", " + real[0].m_Driver + " "));
    EXPECT_TRUE(Contains(Report(), luid));
    FakeDevice device;
    FakeFactory factory(device);
    factory.m_Adapters = {{"TessloWddmUmode.dll", "A screen"}, {"card.dll", "A card"}};
    EXPECT_TRUE(Contains(Report(), "\n0: A screen, TessloWddmUmode.dll "));
    EXPECT_TRUE(Contains(Report(), "\n1: A card, card.dll "));
    EXPECT_TRUE(Contains(Report(), "\nthe driver draws on: A card, card.dll "));
    factory.m_Adapters.pop_back();
    EXPECT_TRUE(Contains(Report(), "\nthe driver draws on: none of them\n"));
}

TEST_F(HostSupportReportTest, Text_NothingIsThere_SaysSoInEachPlace)
{
    FakeDevice device;
    FakeFactory factory(device);
    factory.m_hCreateResult = kRefused;
    m_Places.m_Driver = L"nosuch.dll";
    const std::string text = Report();
    EXPECT_TRUE(Contains(text, " (126)\ninstalled driver: "));
    EXPECT_TRUE(Contains(text, "\nDebugLevelUMD: none that the driver can read\n"));
    EXPECT_TRUE(Contains(text, "\nDllNameInterface: none that the driver can read\n"));
    EXPECT_TRUE(Contains(text, "\nAdapters\n\nDirect3DCreate9Ex failed: 0x8876086A\n"));
    EXPECT_TRUE(Contains(text, "\n\"TessloClientDllSample.dll\": ")) << "the driver's default";
    EXPECT_TRUE(text.ends_with("\nThere is no log.\n"));
}

TEST_F(HostSupportReportTest, Text_LogIsLong_EndsWithItsLastWholeLines)
{
    std::string log = "the first\n";
    for (int i = 0; i < 10'000; ++i)
        log += "line " + std::to_string(i) + "\n";
    WriteLog(log);
    const std::string text = Report();
    EXPECT_EQ(text.find("the first"), std::string::npos);
    EXPECT_TRUE(text.ends_with("\nline 9998\nline 9999\n"));
    EXPECT_TRUE(Contains(text, " bytes:\nline ")) << "a whole line comes first";
    EXPECT_LT(text.size(), 70'000u);
}

TEST_F(HostSupportReportTest, Text_NamesOfUserMachineAndProfile_AreNowhere)
{
    // An umlaut is one byte in the log, and two in the report.
    SetEnvironmentVariableW(L"USERNAME", L"J\u00FCrgen");
    SetEnvironmentVariableW(L"COMPUTERNAME", L"SCHREIBTISCH");
    SetEnvironmentVariableW(L"USERPROFILE", L"C:\\Users\\J\u00FCrgen");
    m_Places.m_TraceMask = 0x801;
    m_Places.m_ClientLibrary = L"C:\\Users\\J\u00FCrgen\\frames.dll";
    WriteLog("UMD: [0044:0048] Data: C:\\Users\\J\xFCrgen\\frames.dll of J\xFCRGEN on \\\\Schreibtisch\\c$\n");
    const std::string text = Report();
    EXPECT_TRUE(Contains(text, "\nDllNameInterface: \"<profile>\\frames.dll\"\n"));
    EXPECT_TRUE(text.ends_with("Data: <profile>\\frames.dll of <user> on \\\\<machine>\\c$\n")) << text;
    for (const char* pSecret : {"rgen", "schreibtisch", "c:\\users"})
        EXPECT_EQ(Lower(text).find(pSecret), std::string::npos) << pSecret;
}

TEST_F(HostSupportReportTest, Text_OfThisMachine_HoldsNoneOfItsNames)
{
    for (const wchar_t* pVariable : {L"USERNAME", L"COMPUTERNAME", L"USERPROFILE"})
    {
        wchar_t secret[256] = L"";
        ASSERT_NE(GetEnvironmentVariableW(pVariable, secret, ARRAYSIZE(secret)), 0u);
        const std::wstring wide = secret;
        const std::string narrow(wide.begin(), wide.end());
        WriteLog("of " + narrow + ".\n");
        // A short name may be a part of any word.
        const std::string text = Report();
        EXPECT_EQ(text.find(narrow.size() > 3 ? narrow : " " + narrow + "."), std::string::npos) << narrow;
        EXPECT_TRUE(text.ends_with(">.\n")) << text;
    }
}
