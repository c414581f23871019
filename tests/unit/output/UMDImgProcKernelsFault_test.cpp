// What a fault in the midst of a kernel leaves: the guard finds the way out of frames that are aligned anew.
#include "output/UMDImgProcKernels.h"

#include "ImageMemory.h"
#include "ImageRegistersTest.h"
#include "TraceCapture.h"
#include "TraceMask.h"
#include "output/UMDImgProcWalks.h"
#include "util/UMDUtilGuard.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

class ImageKernelsFault : public ImageRegistersTest<UMDCpuIsa>
{
};

INSTANTIATE_TEST_SUITE_P(Registers, ImageKernelsFault, testing::ValuesIn(kImageRegisters));

// Heights of whole lines, and others.
TEST_P(ImageKernelsFault, SourceEndsHalfWay_GuardEndsTheCall)
{
    constexpr std::size_t kWidth = 64;
    const TraceMask mask(UMDTRACE_ERROR);
    const TraceCapture trace;
    for (const std::size_t height : {64, 72})
    {
        const GuardedBytes src(kWidth * height * 2, GuardedBytes::Edge::Back);
        const GuardedBytes dst(kWidth * height * 4, GuardedBytes::Edge::Back);
        BYTE* pDst = dst.Get();
        const BYTE* pSrc = src.Get();
        EXPECT_FALSE(UMDUtilGuard([=] {
            UMDImgProcTranspose(pDst, static_cast<std::ptrdiff_t>(height * 4), pSrc, kWidth * 4, kWidth, height);
        })) << height;
    }
    EXPECT_EQ(trace.Lines(), (Lines{"EXCEPTION_ACCESS_VIOLATION\n", "EXCEPTION_ACCESS_VIOLATION\n"}));
}
