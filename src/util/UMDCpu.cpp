#include "util/UMDCpu.h"

#include <cpuid.h>

namespace
{
constexpr UINT kOsXSave = 1u << 27;  // of Leaf1Ecx: the system has enabled XGETBV
constexpr UINT kAvx = 1u << 28;      // of Leaf1Ecx
constexpr UINT kAvx2 = 1u << 5;      // of Leaf7Ebx
constexpr UINT kAvx512F = 1u << 16;  // of Leaf7Ebx
constexpr UINT64 kSavesYmm = 0x06;   // of Xcr0: both halves
constexpr UINT64 kSavesZmm = 0xE6;   // of Xcr0: the masks and all parts beside

bool HasAll(UINT64 bits, UINT64 wanted)
{
    return (bits & wanted) == wanted;
}

// The compiler's own intrinsic is for files that are compiled for wider CPUs.
UINT64 ReadXcr0()
{
    UINT low, high;
    __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return UINT64{high} << 32 | low;
}
}  // namespace

UMDCpuAnswers UMDCpuAsk()
{
    UMDCpuAnswers answers = {};
    UINT eax, ebx, ecx, edx;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx))
        answers.Leaf1Ecx = ecx;
    if (__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx))
        answers.Leaf7Ebx = ebx;
    if (HasAll(answers.Leaf1Ecx, kOsXSave))
        answers.Xcr0 = ReadXcr0();
    return answers;
}

UMDCpuIsa UMDCpuIsaOf(const UMDCpuAnswers& answers)
{
    // A CPU may have registers that the system does not save: another thread would find them changed.
    if (!HasAll(answers.Leaf1Ecx, kOsXSave | kAvx) || !HasAll(answers.Xcr0, kSavesYmm) ||
        !HasAll(answers.Leaf7Ebx, kAvx2))
        return UMDCpuIsa::Sse2;
    if (!HasAll(answers.Xcr0, kSavesZmm) || !HasAll(answers.Leaf7Ebx, kAvx512F))
        return UMDCpuIsa::Avx2;
    return UMDCpuIsa::Avx512;
}
