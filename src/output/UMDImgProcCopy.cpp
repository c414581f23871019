#include "output/UMDImgProc.h"

#include <cstring>

HRESULT UMDImgProcCopy(
    BYTE* pDst, UINT dstPitch, const BYTE* pSrc, UINT srcPitch, UINT width, UINT height, UINT bytesPerPixel)
{
    const UINT rowBytes = width * bytesPerPixel;
    if (srcPitch == rowBytes)
    {
        // Callers rely on the block: a packed source lands packed, whatever the destination's pitch.
        std::memcpy(pDst, pSrc, height * srcPitch);
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
