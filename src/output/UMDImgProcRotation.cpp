#include "output/UMDImgProc.h"

#include "ddi/ddi.h"
#include "util/UMDUtilDebugTrace.h"

#include <cstring>

namespace
{
/// Where a rotation puts source pixel (x, y): at origin + x * stepX + y * stepY, in 32-bit unsigned bytes.
struct Walk
{
    UINT Origin;
    UINT StepX;
    UINT StepY;
};

void CopyPixels(BYTE* pDst, const BYTE* pSrc, UINT pitch, UINT width, UINT height, UINT bytesPerPixel, Walk walk)
{
    for (UINT y = 0; y < height; ++y)
    {
        for (UINT x = 0; x < width; ++x)
            std::memcpy(pDst + (walk.Origin + x * walk.StepX + y * walk.StepY), pSrc + (y * pitch + x * bytesPerPixel),
                sizeof(UINT));
    }
}
} // namespace

HRESULT UMDImgProcRotation(
    BYTE* pDst, const BYTE* pSrc, UINT* pPitch, UINT* pWidth, UINT* pHeight, UINT bytesPerPixel, UINT rotation)
{
    const UINT width = *pWidth;
    const UINT height = *pHeight;
    const UINT pitch = *pPitch;
    const UINT b = bytesPerPixel;
    switch (rotation)
    {
    case D3DDDI_ROTATION_IDENTITY:
        return UMDImgProcCopy(pDst, width * b, pSrc, pitch, width, height, b);
    case D3DDDI_ROTATION_90:
        CopyPixels(pDst, pSrc, pitch, width, height, b, {(width - 1) * height * b, 0 - height * b, b});
        break;
    case D3DDDI_ROTATION_180:
        CopyPixels(pDst, pSrc, pitch, width, height, b,
            {(height - 1) * width * b + (width - 1) * b, 0 - b, 0 - width * b});
        return S_OK;
    case D3DDDI_ROTATION_270:
        CopyPixels(pDst, pSrc, pitch, width, height, b, {(height - 1) * b, height * b, 0 - b});
        break;
    default:
        return UMDFail(E_FAIL, L"UMDThreadFrameBuffer::InternalCopyData failded no rotation %d\n", rotation);
    }
    *pWidth = height;
    *pHeight = width;
    *pPitch = height * b;
    return S_OK;
}
