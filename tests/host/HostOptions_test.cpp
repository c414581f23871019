// The host program's command line.
#include "host/program/HostOptions.h"

#include <gtest/gtest.h>

namespace
{

struct BadInput
{
    const char* m_pName;
    std::vector<std::string> m_Arguments;
    const char* m_pMessage;
};

void PrintTo(const BadInput& input, std::ostream* pStream)
{
    *pStream << input.m_pName;
}

class HostOptionsBadInput : public testing::TestWithParam<BadInput>
{
};

const BadInput kBadInputs[] = {
    {"UnknownOption", {"--bogus"}, "The following argument was not expected: --bogus"},
    {"LooseWord", {"extra"}, "The following argument was not expected: extra"},
    {"SourceWithoutValue", {"--source"}, "--source: 1 required WxH missing"},
    {"SourceWithoutHeight", {"--source", "640"}, "--source 640: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SourceOfNothing", {"--source", "x"}, "--source x: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SourceTooLow", {"--source", "640x63"}, "--source 640x63: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SourceNegative", {"--source", "640x-480"}, "--source 640x-480: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SourceTooWide", {"--source", "8193x480"}, "--source 8193x480: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SourceBeyondAllNumbers", {"--source", "99999999999x1"},
        "--source 99999999999x1: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SourceWithTail", {"--source", "640x480x32"},
        "--source 640x480x32: expected WIDTHxHEIGHT, each 64 to 8192 pixels"},
    {"SevenSources",
        {"--source", "64x64", "--source", "64x64", "--source", "64x64", "--source", "64x64", "--source", "64x64",
            "--source", "64x64", "--source", "64x64"},
        "more than 6 sources"},
    {"RotationOfAnotherAngle", {"--rotation", "45"}, "--rotation 45: expected 0, 90, 180 or 270"},
    {"RotationWithoutSource", {"--rotation", "0", "--rotation", "90"}, "more --rotation than --source"},
    {"SceneOfAnotherName", {"--scene", "still"}, "--scene still: expected turning, fill, video or card"},
    {"SceneWithoutSource", {"--scene", "fill", "--scene", "fill"}, "more --scene than --source"},
    {"FramesTooMany", {"--frames", "1000001"}, "--frames 1000001: expected 0 to 1000000"},
    {"FramesOfWords", {"--frames", "many"}, "--frames many: expected 0 to 1000000"},
    {"PaceTooFast", {"--fps", "1001"}, "--fps 1001: expected 0 to 1000"},
    {"ChangeOfWords", {"--change-every", "-5"}, "--change-every -5: expected 0 to 1000000"},
    {"TraceOfWords", {"--trace", "all", "--out", "x"}, "--trace all: expected a bit mask, for example 0x1 or 255"},
    {"ReportWithoutName", {"--report", ""}, "--report needs the name of a file"},
    {"ReportWithFrames", {"--report", "x.txt", "--frames", "3"}, "--report shows nothing: leave --frames out"},
    {"FlagWithReport", {"--every-frame", "--report", "x.txt"}, "--report shows nothing: leave --every-frame out"},
    {"TraceWithoutFolder", {"--trace", "1"}, "--trace needs --out: the trace is written there"},
};

}  // namespace

TEST_P(HostOptionsBadInput, Parse_Fails_WithOneLine)
{
    try
    {
        HostParseOptions(GetParam().m_Arguments);
        FAIL() << "accepted";
    }
    catch (const HostError& error)
    {
        EXPECT_STREQ(error.what(), GetParam().m_pMessage);
    }
}

INSTANTIATE_TEST_SUITE_P(All, HostOptionsBadInput, testing::ValuesIn(kBadInputs),
    [](const auto& info) { return std::string(info.param.m_pName); });

TEST(HostOptions, Parse_Nothing_GivesTheDefaults)
{
    const HostOptions options = HostParseOptions({});
    ASSERT_EQ(options.m_Sources.size(), 1u);
    EXPECT_EQ(options.m_Sources[0].m_Width, 1280u);
    EXPECT_EQ(options.m_Sources[0].m_Height, 720u);
    EXPECT_EQ(options.m_Sources[0].m_Degrees, 0u);
    EXPECT_EQ(options.m_Sources[0].m_Scene, HostSceneKind::Turning);
    EXPECT_EQ(options.m_Frames, 120u);
    EXPECT_EQ(options.m_FramesPerSecond, 0u);
    EXPECT_EQ(options.m_ChangeEvery, 0u);
    EXPECT_EQ(options.m_Output, L"");
    EXPECT_FALSE(options.m_bEveryFrame);
    EXPECT_EQ(options.m_Report, L"");
    EXPECT_EQ(options.m_Driver.m_TraceMask, 0u);
    EXPECT_EQ(options.m_Driver.m_Path, L"TessloWddmUmode.dll");
    EXPECT_EQ(options.m_Driver.m_ClientLibrary, L"TessloClientDllSample.dll");
}

TEST(HostOptions, Parse_Everything_KeepsOrderAndText)
{
    const HostOptions options = HostParseOptions(
        {"--source", "640x480", "--source", "800x600", "--rotation", "180", "--rotation", "270", "--scene", "fill",
            "--scene", "video", "--frames", "7", "--fps", "30", "--change-every", "100", "--every-frame", "--out",
            "B\xC3\xBC"
            "cher",
            "--trace", "0x201", "--client", "c.dll", "--driver", "d.dll"});
    ASSERT_EQ(options.m_Sources.size(), 2u);
    EXPECT_EQ(options.m_Sources[0].m_Height, 480u);
    EXPECT_EQ(options.m_Sources[0].m_Degrees, 180u);
    EXPECT_EQ(options.m_Sources[0].m_Scene, HostSceneKind::Fill);
    EXPECT_EQ(options.m_Sources[1].m_Scene, HostSceneKind::Video);
    EXPECT_EQ(options.m_Sources[1].m_Width, 800u);
    EXPECT_EQ(options.m_Sources[1].m_Degrees, 270u);
    EXPECT_EQ(options.m_Frames, 7u);
    EXPECT_EQ(options.m_FramesPerSecond, 30u);
    EXPECT_EQ(options.m_ChangeEvery, 100u);
    EXPECT_TRUE(options.m_bEveryFrame);
    EXPECT_EQ(options.m_Output, L"B\u00FCcher");
    EXPECT_EQ(options.m_Driver.m_TraceMask, 0x201u);
    EXPECT_EQ(options.m_Driver.m_ClientLibrary, L"c.dll");
    EXPECT_EQ(options.m_Driver.m_Path, L"d.dll");
}

TEST(HostOptions, Parse_ReportOfADriver_KeepsBoth)
{
    const HostOptions options = HostParseOptions({"--report", "x.txt", "--driver", "d.dll"});
    EXPECT_EQ(options.m_Report, L"x.txt");
    EXPECT_EQ(options.m_Driver.m_Path, L"d.dll");
}

TEST(HostOptions, Parse_OneValueGivenTwice_TheLastWins)
{
    EXPECT_EQ(HostParseOptions({"--frames", "5", "--frames", "9"}).m_Frames, 9u);
}

TEST(HostOptions, Parse_Help_NamesEveryOption)
{
    try
    {
        HostParseOptions({"--help"});
        FAIL() << "no help";
    }
    catch (const HostHelp& help)
    {
        for (const char* pOption : {"--source", "--rotation", "--scene", "--frames", "--fps", "--change-every",
                 "--every-frame", "--out", "--trace", "--client", "--driver", "--report"})
            EXPECT_NE(std::string(help.what()).find(pOption), std::string::npos) << pOption;
    }
}
