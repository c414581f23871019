#include "output/UMDImgProcKernels.h"
#include "output/UMDImgProcWalks.h"

void UMDImgProcTranspose(BYTE* pDst, std::ptrdiff_t dstPitch, const BYTE* pSrc, std::ptrdiff_t srcPitch,
    std::size_t width, std::size_t height)
{
    const UMDImgProcTurn turn = {
        pDst, dstPitch, pSrc, srcPitch, static_cast<std::ptrdiff_t>(width), static_cast<std::ptrdiff_t>(height)};
    const UMDImgProcKernels& kernels = UMDImgProcBest();
    if (turn.HasEvenColumns())
        kernels.TurnBlocks(turn);
    else
        kernels.TurnColumns(turn);
}
