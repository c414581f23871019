#include "output/UMDImgProcKernels.h"

#include "ImageRegisters.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(ImageKernels, Unlimited_BestOfThisCpu)
{
    EXPECT_EQ(UMDImgProcLimit(UMDCpuIsa::Avx512), UMDCpuIsaOf(UMDCpuAsk()));
}

TEST(ImageKernels, Limit_ThatAndNoMoreThanTheCpuHas)
{
    for (UMDCpuIsa most : {UMDCpuIsa::Sse2, UMDCpuIsa::Avx2, UMDCpuIsa::Avx512})
        EXPECT_EQ(UMDImgProcLimit(most), std::min(most, UMDCpuIsaOf(UMDCpuAsk())));
}

TEST(ImageKernels, FromTheStart_AsUnlimited)
{
    const UMDImgProcKernels& first = UMDImgProcBest();
    UMDImgProcLimit(UMDCpuIsa::Avx512);
    EXPECT_EQ(&UMDImgProcBest(), &first);
}

TEST(ImageKernels, Sse2_BothTurnsOfThatWidth)
{
    const ImageRegisters registers(UMDCpuIsa::Sse2);
    EXPECT_EQ(UMDImgProcBest().TurnBlocks, UMDImgProcTurnBlocksSse2);
    EXPECT_EQ(UMDImgProcBest().TurnColumns, UMDImgProcTurnColumnsSse2);
}
