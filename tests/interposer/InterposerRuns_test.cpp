// How a run ends and what its report says then.
#include "InterposedProgram.h"
#include "PngImage.h"
#include "TemporaryFolder.h"
#include "interposer/run/RunLimits.h"

#include <nlohmann/json.hpp>

using namespace tesslo::test;

TEST(InterposerRuns, ModeOff_FramesAreCountedAndNothingCarried)
{
    const RunResult result = InterposedProgram(L"Clears", WithMode(RunMode::Off));
    EXPECT_EQ(result.m_Record.m_Frames, 3);
    EXPECT_EQ(result.m_Record.m_Equal, 0);
    EXPECT_EQ(result.m_Record.m_Devices, 0);
    EXPECT_EQ(result.m_Record.m_Calls[0].m_Count, 0);
}

TEST(InterposerRuns, ModeCarry_FramesAreDrawnAndNotCompared)
{
    const RunResult result = InterposedProgram(L"Clears", WithMode(RunMode::Carry));
    EXPECT_EQ(result.m_Record.m_Frames, 3);
    EXPECT_EQ(result.m_Record.m_Equal + result.m_Record.m_Different, 0);
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnPresent"), 3);
}

TEST(InterposerRuns, FrameLimit_ProgramGoesOn_IsEndedBehindThatFrame)
{
    RunRecord settings{};
    settings.m_FrameLimit = 2;
    const RunResult result = InterposedProgram(L"Clears", settings);
    EXPECT_EQ(result.m_End, RunEnd::FrameLimit);
    EXPECT_EQ(result.m_Record.m_Frames, 2);
    EXPECT_EQ(result.m_Record.m_Equal, 2);
}

TEST(InterposerRuns, TimeLimit_ProgramNeverPresents_IsEndedAndReported)
{
    const RunResult result = InterposedProgram(L"NeverPresents", {}, 4000);
    EXPECT_EQ(result.m_End, RunEnd::TimeLimit);
    EXPECT_EQ(result.m_Record.m_Frames, 0);
    EXPECT_NE(RunReportText(result).find("0 frames: 0 equal, 0 different"), std::string::npos);
}

TEST(InterposerRuns, TimeLimit_ProgramPresentsForEver_EachFrameIsEqual)
{
    RunResult result;
    // A busy machine may need all of the shortest limit to start the program.
    for (const DWORD limit : {4000, 16'000, 64'000})
    {
        result = InterposedProgram(L"ShowsForEver", {}, limit);
        EXPECT_EQ(result.m_End, RunEnd::TimeLimit);
        if (result.m_Record.m_Frames > 0)
            break;
    }
    EXPECT_GT(result.m_Record.m_Frames, 0);
    EXPECT_EQ(result.m_Record.m_Equal, result.m_Record.m_Frames);
}

TEST(InterposerRuns, Crash_BehindAFrame_IsReportedWithTheFrame)
{
    const RunResult result = InterposedProgram(L"Crashes");
    EXPECT_EQ(result.m_End, RunEnd::Crash);
    EXPECT_EQ(result.m_Record.m_Equal, 1);
    EXPECT_NE(RunReportText(result).find("the program crashed: exception 0xC000001D"), std::string::npos);
}

TEST(InterposerRuns, Kill_BehindAFrame_IsReportedWithTheFrame)
{
    const RunResult result = InterposedProgram(L"IsKilled");
    EXPECT_EQ(result.m_End, RunEnd::Itself);
    EXPECT_EQ(result.m_ExitCode, 7u);
    EXPECT_EQ(result.m_Record.m_Equal, 1);
}

// The second rectangle is on no frame: nobody has waited for it.
TEST(InterposerRuns, Exit_DeviceIsLeft_WhatWasPostedIsDrawnBefore)
{
    const RunResult result = InterposedProgram(L"LeavesItsDevice", WithMode(RunMode::Carry));
    EXPECT_EQ(result.m_End, RunEnd::Itself);
    EXPECT_EQ(result.m_ExitCode, 5u);
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnPresent"), 1);
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnDrawPrimitive"), 2);
}

TEST(InterposerRuns, Lights_ThatTheDriverDoesNotKnow_DifferAndTheLimitIsNamed)
{
    const RunResult result = InterposedProgram(L"Lights");
    EXPECT_EQ(result.m_Record.m_Different, 1);
    EXPECT_EQ(result.m_Record.m_FirstDifferent, 1);
    EXPECT_GT(result.m_Record.m_WorstPixels, 1000);
    EXPECT_EQ(result.m_Record.m_WorstOf, 160 * 120);
    EXPECT_EQ(result.m_Record.m_GreatestDifference, 255);
    EXPECT_EQ(CountOf(result.m_Record.m_Limits, kLimitLights), 1);
    EXPECT_FALSE(RunIsDefective(result));
}

TEST(InterposerRuns, Difference_WithoutALimit_IsADefect)
{
    RunResult result;
    result.m_Record.m_Different = 1;
    EXPECT_TRUE(RunIsDefective(result));
    EXPECT_NE(RunReportText(result).find("DEFECT"), std::string::npos);
    result.m_Record.m_Limits[0] = {"a limit", 1};
    EXPECT_FALSE(RunIsDefective(result));
    EXPECT_EQ(RunReportText(result).find("DEFECT"), std::string::npos);
}

TEST(InterposerRuns, FullScreen_ItsMode_IsToldToTheDriver)
{
    const RunResult result = InterposedProgram(L"FullScreen");
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnSetDisplayMode"), 1);
    EXPECT_EQ(CountOf(InterposedProgram(L"Clears").m_Record.m_Calls, "pfnSetDisplayMode"), 0);
}

TEST(InterposerRuns, Extended_PresentEx_EachFrameIsCompared)
{
    const RunResult result = InterposedProgram(L"Extended");
    EXPECT_EQ(result.m_Record.m_Frames, 2);
    EXPECT_EQ(result.m_Record.m_Equal, 2);
}

TEST(InterposerRuns, Pictures_OfAFrameThatDiffers_AreThreeAndShowWhere)
{
    TemporaryFolder folder;
    RunRecord settings{};
    folder.Path().wstring().copy(settings.m_Pictures, RunRecord::kPath - 1);
    const RunResult result = InterposedProgram(L"Lights", settings);
    const auto fromDriver = ReadPng(folder.Path() / "frame1-driver.png");
    const auto fromPlatform = ReadPng(folder.Path() / "frame1-platform.png");
    const auto difference = ReadPng(folder.Path() / "frame1-difference.png");
    LONG64 different = 0;
    for (UINT y = 0; y < 120; ++y)
        for (UINT x = 0; x < 160; ++x)
        {
            const bool bDiffers = fromDriver.At(x, y) != fromPlatform.At(x, y);
            ASSERT_EQ(difference.At(x, y), bDiffers ? 0xFFFFFFu : 0u) << x << "," << y;
            different += bDiffers;
        }
    EXPECT_EQ(different, result.m_Record.m_WorstPixels);
    EXPECT_EQ(fromPlatform.At(80, 60), 0xFFFF00u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 3);
}

TEST(InterposerRuns, Point_TexturesFiltered_AreReadByPointOnBothSides)
{
    RunRecord settings{};
    for (UINT bPoint : {0u, 1u})
    {
        settings.m_bPoint = bPoint;
        const RunResult result = InterposedProgram(L"LinearGreys", settings);
        EXPECT_EQ(result.m_Record.m_Equal, 1);
        // The program fails where the halves of its texture run into each other.
        EXPECT_EQ(result.m_ExitCode, bPoint ? 0u : 1u);
    }
}

TEST(InterposerRuns, LongDraws_OfMoreThanTheDriverTakes_ComeInParts)
{
    const RunResult result = InterposedProgram(L"long");
    // Two parts of each; fans come from memory.
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnDrawPrimitive"), 24);
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnDrawIndexedPrimitive"), 11);
    EXPECT_EQ(CountOf(result.m_Record.m_Calls, "pfnDrawIndexedPrimitive2"), 14);
}

TEST(InterposerRuns, Queries_Refused_AreNamedAndTheFrameIsEqual)
{
    const RunResult result = InterposedProgram(L"Queries");
    EXPECT_EQ(CountOf(result.m_Record.m_Limits, kLimitQueries), 1);
    EXPECT_EQ(result.m_Record.m_Equal, 1);
}

TEST(InterposerRuns, ModeAnswer_ProgramReads_GetsTheDriversPixels)
{
    const RunResult compared = InterposedProgram(L"Lights", WithMode(RunMode::Compare));
    EXPECT_EQ(compared.m_ExitCode, 0u);
    EXPECT_EQ(compared.m_Record.m_DifferentReads, 1);
    const RunResult answered = InterposedProgram(L"Lights", WithMode(RunMode::Answer));
    EXPECT_EQ(answered.m_ExitCode, 1u);
    EXPECT_EQ(answered.m_Record.m_DifferentReads, 1);
}

// Wine's own front buffer is black.
TEST(InterposerRuns, ModeAnswer_ProgramReadsFrontBuffer_GetsTheDriversFrame)
{
    const RunResult result = InterposedProgram(L"FrontBuffer", WithMode(RunMode::Answer));
    EXPECT_EQ(result.m_ExitCode, 0u);
    EXPECT_EQ(result.m_Record.m_Equal, 1);
    EXPECT_FALSE(RunIsDefective(result));
}

TEST(InterposerRuns, Json_OfARun_TellsWhatTheTextTells)
{
    const RunResult result = InterposedProgram(L"Clears");
    const auto report = nlohmann::json::parse(RunReportJson(result));
    EXPECT_EQ(report["mode"], "compare");
    EXPECT_EQ(report["end"], "itself");
    EXPECT_EQ(report["frames"], 3);
    EXPECT_EQ(report["equal"], 3);
    EXPECT_EQ(report["calls"]["pfnPresent"], 3);
    EXPECT_FALSE(report["defect"]);
}
