// A program that touches all limits of the driver: the report names each, with how often.
#include "InterposedProgram.h"
#include "interposer/run/RunLimits.h"

#include <algorithm>

namespace
{

struct Touched
{
    const char* m_pLimit;
    LONG64 m_Count;
};

constexpr Touched kTouched[] = {
    {kLimitBackBufferFormat, 1},
    {kLimitBlitFilter, 1},
    {kLimitBlitPart, 1},
    {kLimitCubeVolume, 2},
    {kLimitDepthBlit, 1},
    {kLimitDepthRange, 1},
    {kLimitDepthTexture, 1},
    {kLimitGeneratedLevels, 2},
    {kLimitInstancing, 1},
    {kLimitLevelTarget, 1},
    {kLimitLevels, 1},
    {kLimitLights, 1},
    {kLimitMaterials, 1},
    {kLimitMultisampling, 1},
    {kLimitNullPixelShader, 2},
    {kLimitNullVertexShader, 1},
    {kLimitPalettes, 1},
    {kLimitPatches, 2},
    {kLimitPlanarFormat, 1},
    {kLimitProcessVertices, 1},
    {kLimitQueries, 1},
    {kLimitSeveralTargets, 1},
    {kLimitStreams, 1},
    {kLimitTextureLod, 1},
    {kLimitVendorFormat, 1},
    {kLimitVertexConstants, 2},
    {kLimitVertexTextures, 1},
};

}  // namespace

TEST(InterposerLimits, ProgramTouchesAll_EachIsNamedAndCounted)
{
    const RunResult result = InterposedProgram(L"AllLimits");
    EXPECT_EQ(result.m_End, RunEnd::Itself);
    EXPECT_EQ(result.m_ExitCode, 0u);
    EXPECT_EQ(result.m_Record.m_Frames, 26);
    const std::string report = RunReportText(result);
    for (const Touched& touched : kTouched)
    {
        EXPECT_EQ(CountOf(result.m_Record.m_Limits, touched.m_pLimit), touched.m_Count) << touched.m_pLimit;
        EXPECT_NE(report.find(std::string("  ") + touched.m_pLimit + "\n"), std::string::npos) << touched.m_pLimit;
    }
    EXPECT_EQ(std::ranges::count_if(result.m_Record.m_Limits, [](const RunCount& count) { return count.m_Count != 0; }),
        std::ssize(kTouched));
    EXPECT_EQ(result.m_Record.m_Failures[0].m_Count, 0) << result.m_Record.m_Failures[0].m_Name;
    EXPECT_FALSE(RunIsDefective(result));
}
