#include "util/UMDCpu.h"

#include <gtest/gtest.h>

namespace
{
constexpr UINT kOsXSave = 1u << 27, kAvx = 1u << 28, kAvx2 = 1u << 5, kAvx512F = 1u << 16;

struct Case
{
    const char* pName;
    UMDCpuAnswers Answers;
    UMDCpuIsa Expected;
};

constexpr Case kCases[] = {
    {"NoAvx", {0, 0, 0}, UMDCpuIsa::Sse2},
    {"AvxAlone", {kOsXSave | kAvx, 0, 7}, UMDCpuIsa::Sse2},
    {"Avx2SystemHasNotEnabledXGetBv", {kAvx, kAvx2, 0}, UMDCpuIsa::Sse2},
    {"Avx512SystemHasNotEnabledXGetBv", {kAvx, kAvx2 | kAvx512F, 0xE7}, UMDCpuIsa::Sse2},
    {"Avx2SystemSavesNoUpperHalves", {kOsXSave | kAvx, kAvx2, 3}, UMDCpuIsa::Sse2},
    {"Avx2SystemSavesUpperHalvesAlone", {kOsXSave | kAvx, kAvx2, 5}, UMDCpuIsa::Sse2},
    {"Avx2WithoutAvx", {kOsXSave, kAvx2, 7}, UMDCpuIsa::Sse2},
    {"Avx2", {kOsXSave | kAvx, kAvx2, 7}, UMDCpuIsa::Avx2},
    {"Avx512SystemSavesYmm", {kOsXSave | kAvx, kAvx2 | kAvx512F, 7}, UMDCpuIsa::Avx2},
    {"Avx512SystemSavesNoMasks", {kOsXSave | kAvx, kAvx2 | kAvx512F, 0xC7}, UMDCpuIsa::Avx2},
    {"Avx512SystemSavesNoUpperRegisters", {kOsXSave | kAvx, kAvx2 | kAvx512F, 0x67}, UMDCpuIsa::Avx2},
    {"Avx512SystemSavesNoUpperYmm", {kOsXSave | kAvx, kAvx2 | kAvx512F, 0xE3}, UMDCpuIsa::Sse2},
    {"Avx512WithoutAvx2", {kOsXSave | kAvx, kAvx512F, 0xE7}, UMDCpuIsa::Sse2},
    {"Avx512", {kOsXSave | kAvx, kAvx2 | kAvx512F, 0xE7}, UMDCpuIsa::Avx512},
    {"EveryBit", {~0u, ~0u, ~UINT64{0}}, UMDCpuIsa::Avx512},
};
}  // namespace

TEST(Cpu, EachAnswer_WhatMayBeUsed)
{
    for (const Case& c : kCases)
        EXPECT_EQ(UMDCpuIsaOf(c.Answers), c.Expected) << c.pName;
}

// The compiler's own look at the CPU, which asks the system as well.
TEST(Cpu, Ask_ThisMachine_AsTheCompilersOwnCheck)
{
    __builtin_cpu_init();
    const UMDCpuIsa isa = UMDCpuIsaOf(UMDCpuAsk());

    EXPECT_EQ(isa >= UMDCpuIsa::Avx2, __builtin_cpu_supports("avx2") != 0);
    EXPECT_EQ(isa >= UMDCpuIsa::Avx512, __builtin_cpu_supports("avx512f") != 0);
}
