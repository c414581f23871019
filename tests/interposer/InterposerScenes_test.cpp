// Programs of our own, run with the interposer: every frame is what the platform draws without the driver.
#include "interposer/run/RunReport.h"

#include <gtest/gtest.h>

namespace
{

RunResult RunScene(const std::wstring& name, RunMode mode)
{
    RunRecord settings{};
    settings.m_Mode = mode;
    return RunProgram(settings, L"interposer\\interposed_program.exe", {name}, 100'000);
}

}  // namespace

TEST(InterposerScenes, Clears_Compared_AreEqual)
{
    const RunResult result = RunScene(L"Clears", RunMode::Compare);
    EXPECT_EQ(result.m_End, RunEnd::Itself);
    EXPECT_EQ(result.m_ExitCode, 0u);
    EXPECT_EQ(result.m_Record.m_Equal, 3) << RunReportText(result);
    EXPECT_EQ(result.m_Record.m_Frames, 3);
    EXPECT_FALSE(RunIsDefective(result)) << RunReportText(result);
}

TEST(InterposerScenes, Clears_Off_AreCountedOnly)
{
    const RunResult result = RunScene(L"Clears", RunMode::Off);
    EXPECT_EQ(result.m_Record.m_Frames, 3);
    EXPECT_EQ(result.m_Record.m_Equal, 0);
    EXPECT_EQ(result.m_Record.m_Devices, 0);
}
