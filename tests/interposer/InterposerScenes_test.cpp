// Programs of our own, run with the interposer: every frame is what the platform draws without the driver.
#include "InterposedProgram.h"

namespace
{

using testing::Values;

class InterposerScenes : public testing::TestWithParam<const wchar_t*>
{
};

}  // namespace

TEST_P(InterposerScenes, EveryFrame_DriverAndPlatform_SamePixels)
{
    const RunResult result = InterposedProgram(GetParam());
    EXPECT_EQ(result.m_End, RunEnd::Itself);
    EXPECT_EQ(result.m_ExitCode, 0u);
    EXPECT_GT(result.m_Record.m_Frames, 0);
    EXPECT_EQ(result.m_Record.m_Equal, result.m_Record.m_Frames);
    EXPECT_EQ(result.m_Record.m_DifferentReads, 0);
    EXPECT_EQ(result.m_Record.m_Limits[0].m_Count, 0);
    EXPECT_FALSE(RunIsDefective(result));
    if (HasFailure())
        ADD_FAILURE() << RunReportText(result);
}

INSTANTIATE_TEST_SUITE_P(Groups, InterposerScenes,
    Values(L"draws", L"states", L"shaders", L"blits", L"fills", L"devices", L"frames", L"long", L"pixels", L"textures"),
    [](const auto& info) { return HostUtf8(info.param); });
INSTANTIATE_TEST_SUITE_P(Rude, InterposerScenes, Values(L"PresentsFromThread", L"SixteenChains", L"LosesWindow"),
    [](const auto& info) { return HostUtf8(info.param); });
