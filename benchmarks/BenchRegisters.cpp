#include "BenchRegisters.h"

#include "output/UMDImgProcKernels.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
struct Name
{
    const char* pName;
    UMDCpuIsa Isa;
};

constexpr Name kNames[] = {{"sse2", UMDCpuIsa::Sse2}, {"avx2", UMDCpuIsa::Avx2}, {"avx512", UMDCpuIsa::Avx512}};
}  // namespace

bool BenchLimitRegisters()
{
    const char* pWanted = std::getenv("TESSLO_MAX_ISA");
    if (!pWanted)
        return true;
    for (const auto& [pName, isa] : kNames)
    {
        if (std::strcmp(pWanted, pName) != 0)
            continue;
        if (UMDImgProcLimit(isa) == isa)
            return true;
        std::fprintf(stderr, "tesslo_bench: TESSLO_MAX_ISA=%s: this machine has no such registers\n", pWanted);
        return false;
    }
    std::fprintf(stderr, "tesslo_bench: TESSLO_MAX_ISA=%s: known are sse2, avx2 and avx512\n", pWanted);
    return false;
}
