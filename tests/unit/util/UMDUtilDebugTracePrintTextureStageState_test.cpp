#include "util/UMDUtilDebugTracePrint.h"

#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
struct StateRow
{
    UINT m_State;
    const char* m_pLine;
};

constexpr StateRow kRows[] = {
    {0, "D3DDDITSS_TEXTUREMAP Stage:3 Value:-9\n"},
    {1, "D3DDDITSS_COLOROP Stage:3 Value:-9\n"},
    {2, "D3DDDITSS_COLORARG1 Stage:3 Value:-9\n"},
    {3, "D3DDDITSS_COLORARG2 Stage:3 Value:-9\n"},
    {4, "D3DDDITSS_ALPHAOP Stage:3 Value:-9\n"},
    {5, "D3DDDITSS_ALPHAARG1 Stage:3 Value:-9\n"},
    {6, "D3DDDITSS_ALPHAARG2 Stage:3 Value:-9\n"},
    {7, "D3DDDITSS_BUMPENVMAT00 Stage:3 Value:-9\n"},
    {8, "D3DDDITSS_BUMPENVMAT01 Stage:3 Value:-9\n"},
    {9, "D3DDDITSS_BUMPENVMAT10 Stage:3 Value:-9\n"},
    {10, "D3DDDITSS_BUMPENVMAT11 Stage:3 Value:-9\n"},
    {11, "D3DDDITSS_TEXCOORDINDEX Stage:3 Value:-9\n"},
    {12, "pTextureStageState->State unknown:12\n"},
    {13, "D3DDDITSS_ADDRESSU Stage:3 Value:-9\n"},
    {14, "D3DDDITSS_ADDRESSV Stage:3 Value:-9\n"},
    {15, "D3DDDITSS_BORDERCOLOR Stage:3 Value:-9\n"},
    {16, "D3DDDITSS_MAGFILTER Stage:3 Value:-9\n"},
    {17, "D3DDDITSS_MINFILTER Stage:3 Value:-9\n"},
    {18, "D3DDDITSS_MIPFILTER Stage:3 Value:-9\n"},
    {19, "D3DDDITSS_MIPMAPLODBIAS Stage:3 Value:-9\n"},
    {20, "D3DDDITSS_MAXMIPLEVEL Stage:3 Value:-9\n"},
    {21, "D3DDDITSS_MAXANISOTROPY Stage:3 Value:-9\n"},
    {22, "D3DDDITSS_BUMPENVLSCALE Stage:3 Value:-9\n"},
    {23, "D3DDDITSS_BUMPENVLOFFSET Stage:3 Value:-9\n"},
    {24, "D3DDDITSS_TEXTURETRANSFORMFLAGS Stage:3 Value:-9\n"},
    {25, "D3DDDITSS_ADDRESSW Stage:3 Value:-9\n"},
    {26, "D3DDDITSS_COLORARG0 Stage:3 Value:-9\n"},
    {27, "D3DDDITSS_ALPHAARG0 Stage:3 Value:-9\n"},
    {28, "D3DDDITSS_RESULTARG Stage:3 Value:-9\n"},
    {29, "D3DDDITSS_SRGBTEXTURE Stage:3 Value:-9\n"},
    {30, "D3DDDITSS_ELEMENTINDEX Stage:3 Value:-9\n"},
    {31, "D3DDDITSS_DMAPOFFSET Stage:3 Value:-9\n"},
    {32, "D3DDDITSS_CONSTANT Stage:3 Value:-9\n"},
    {33, "D3DDDITSS_DISABLETEXTURECOLORKEY Stage:3 Value:-9\n"},
    {34, "D3DDDITSS_TEXTURECOLORKEYVAL Stage:3 Value:-9\n"},
    {35, "pTextureStageState->State unknown:35\n"},
    {36, "pTextureStageState->State unknown:36\n"},
    {37, "pTextureStageState->State unknown:37\n"},
    {38, "pTextureStageState->State unknown:38\n"},
    {39, "pTextureStageState->State unknown:39\n"},
    {40, "pTextureStageState->State unknown:40\n"},
    {0x7FFFFFFF, "D3DDDITSS_FORCE_DWORD Stage:3 Value:-9\n"},
    {0xFFFFFFFF, "pTextureStageState->State unknown:-1\n"},
};

D3DDDIARG_TEXTURESTAGESTATE Argument(UINT state)
{
    D3DDDIARG_TEXTURESTAGESTATE argument = {};
    argument.Stage = 3;
    argument.State = static_cast<D3DDDITEXTURESTAGESTATETYPE>(state);
    argument.Value = static_cast<UINT>(-9);
    return argument;
}

TEST(UMDUtilDebugTracePrintTextureStageState, State_Each_PrintsItsLine)
{
    TraceMask mask(UMDTRACE_DDI);
    TraceCapture trace;
    for (const StateRow& row : kRows)
    {
        trace.Clear();
        const D3DDDIARG_TEXTURESTAGESTATE argument = Argument(row.m_State);
        UMDUtilDebugTracePrintTextureStageState(UMDTRACE_DDI, &argument);
        EXPECT_EQ(trace.Lines(), Lines{row.m_pLine});
    }
}

TEST(UMDUtilDebugTracePrintTextureStageState, Level_NotInTheMask_PrintsNothing)
{
    TraceMask mask(~UMDTRACE_GPU & ~UMDTRACE_LOGFILE);
    TraceCapture trace;
    const D3DDDIARG_TEXTURESTAGESTATE known = Argument(1), unknown = Argument(12);
    UMDUtilDebugTracePrintTextureStageState(UMDTRACE_GPU, &known);
    UMDUtilDebugTracePrintTextureStageState(UMDTRACE_GPU, &unknown);
    EXPECT_TRUE(trace.Lines().empty());
}
}  // namespace
