#include "output/UMDImgProcKernels.h"

#include <algorithm>

namespace
{
// A row for each UMDCpuIsa. Blocks gain nothing from AVX-512.
constexpr UMDImgProcKernels kKernels[] = {
    {UMDImgProcTurnBlocksSse2, UMDImgProcTurnColumnsSse2},
    {UMDImgProcTurnBlocksAvx2, UMDImgProcTurnColumnsAvx2},
    {UMDImgProcTurnBlocksAvx2, UMDImgProcTurnColumnsAvx512},
};

UMDCpuIsa Usable()
{
#if defined(_WIN32) && !defined(__clang__)
    // This platform's stacks are aligned to 16 bytes, and g++ puts wider registers on them as if they were to more.
    return UMDCpuIsa::Sse2;
#else
    return UMDCpuIsaOf(UMDCpuAsk());
#endif
}

// CPUID needs no other module, so that it may be asked while the loader's lock is held.
UMDCpuIsa g_ImgProcIsa = Usable();
}  // namespace

const UMDImgProcKernels& UMDImgProcBest()
{
    return kKernels[static_cast<int>(g_ImgProcIsa)];
}

UMDCpuIsa UMDImgProcLimit(UMDCpuIsa most)
{
    g_ImgProcIsa = std::min(most, Usable());
    return g_ImgProcIsa;
}
