// How a run ends and what its report says then.
#include "InterposedProgram.h"
#include "interposer/run/RunLimits.h"

#include <nlohmann/json.hpp>

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
