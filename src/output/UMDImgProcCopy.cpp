#include "output/UMDImgProc.h"

#include "output/UMDImgProcWalks.h"

#include <cstdint>
#include <cstring>

namespace
{
void CopyBlock(BYTE* pDst, const BYTE* pSrc, UINT bytes)
{
    if (bytes < UMD_IMGPROC_STREAM_COPY_BYTES || reinterpret_cast<std::uintptr_t>(pDst) % 4 != 0 || bytes % 4 != 0)
        std::memcpy(pDst, pSrc, bytes);
    else
        UMDImgProcStream(pDst, pSrc, bytes / 4);
}
}  // namespace

HRESULT UMDImgProcCopy(
    BYTE* pDst, UINT dstPitch, const BYTE* pSrc, UINT srcPitch, UINT width, UINT height, UINT bytesPerPixel)
{
    const UINT rowBytes = width * bytesPerPixel;
    // A rectangle of no width can have any height: its rows are not worth counting.
    if (rowBytes == 0)
        return S_OK;
    if (srcPitch == rowBytes)
    {
        // Callers rely on the block: a packed source lands packed, whatever the destination's pitch.
        CopyBlock(pDst, pSrc, height * srcPitch);
        return S_OK;
    }
    for (UINT y = 0; y < height; ++y)
    {
        std::memcpy(pDst, pSrc, rowBytes);
        pSrc += srcPitch;
        pDst += dstPitch;
    }
    return S_OK;
}
