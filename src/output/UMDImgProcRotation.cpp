#include "output/UMDImgProc.h"

#include "ddi/ddi.h"
#include "output/UMDImgProcWalks.h"
#include "util/UMDUtilDebugTrace.h"

#include <cstdint>
#include <cstring>

namespace
{
struct Source
{
    const BYTE* pBits;
    UINT Pitch;
    UINT Width;
    UINT Height;
    UINT BytesPerPixel;
};

/// Where a rotation puts source pixel (x, y): at origin + x * stepX + y * stepY, in 32-bit unsigned bytes.
struct Walk
{
    UINT Origin;
    UINT StepX;
    UINT StepY;
};

/// Any pixel size: the words of pixels that are not 4 bytes wide overlap, so their order counts.
void RotatePixels(BYTE* pDst, const Source& src, Walk walk)
{
    for (UINT y = 0; y < src.Height; ++y)
    {
        for (UINT x = 0; x < src.Width; ++x)
            std::memcpy(pDst + (walk.Origin + x * walk.StepX + y * walk.StepY),
                src.pBits + (y * src.Pitch + x * src.BytesPerPixel), sizeof(UINT));
    }
}

/// Whole 32-bit pixels at word addresses, in images of less than 4 GiB: there offsets do not wrap around.
bool HasFastWalk(const BYTE* pDst, const Source& src)
{
    constexpr UINT64 kLimit = UINT64{1} << 32;
    return src.BytesPerPixel == 4 && reinterpret_cast<std::uintptr_t>(pDst) % 4 == 0 && src.Width != 0 &&
           src.Height != 0 && UINT64{src.Width} * src.Height < kLimit / 4 &&
           UINT64{src.Height - 1} * src.Pitch + UINT64{src.Width} * 4 < kLimit;
}

void Rotate90(BYTE* pDst, const Source& src)
{
    const UINT row = src.Height * src.BytesPerPixel;
    const UINT lastRow = (src.Width - 1) * row;
    if (HasFastWalk(pDst, src))
        UMDImgProcTranspose(
            pDst + lastRow, -static_cast<std::ptrdiff_t>(row), src.pBits, src.Pitch, src.Width, src.Height);
    else
        RotatePixels(pDst, src, {lastRow, 0 - row, src.BytesPerPixel});
}

void Rotate270(BYTE* pDst, const Source& src)
{
    const UINT row = src.Height * src.BytesPerPixel;
    if (HasFastWalk(pDst, src))
        UMDImgProcTranspose(pDst, row, src.pBits + std::size_t{src.Height - 1} * src.Pitch,
            -static_cast<std::ptrdiff_t>(src.Pitch), src.Width, src.Height);
    else
        RotatePixels(pDst, src, {row - src.BytesPerPixel, row, 0 - src.BytesPerPixel});
}

void Rotate180(BYTE* pDst, const Source& src)
{
    const UINT row = src.Width * src.BytesPerPixel;
    const UINT lastRow = (src.Height - 1) * row;
    if (!HasFastWalk(pDst, src))
        return RotatePixels(pDst, src, {lastRow + row - src.BytesPerPixel, 0 - src.BytesPerPixel, 0 - row});
    const std::size_t pixels = std::size_t{src.Width} * src.Height;
    const bool bStream = pixels * 4 >= UMD_IMGPROC_STREAM_REVERSE_BYTES;
    if (src.Pitch == row)
        return UMDImgProcReverse(pDst, src.pBits, pixels, bStream);
    for (UINT y = 0; y < src.Height; ++y)
        UMDImgProcReverse(
            pDst + lastRow - std::size_t{y} * row, src.pBits + std::size_t{y} * src.Pitch, src.Width, bStream);
}
}  // namespace

HRESULT UMDImgProcRotation(
    BYTE* pDst, const BYTE* pSrc, UINT* pPitch, UINT* pWidth, UINT* pHeight, UINT bytesPerPixel, UINT rotation)
{
    const Source src = {pSrc, *pPitch, *pWidth, *pHeight, bytesPerPixel};
    switch (rotation)
    {
    case D3DDDI_ROTATION_IDENTITY:
        return UMDImgProcCopy(pDst, src.Width * bytesPerPixel, pSrc, src.Pitch, src.Width, src.Height, bytesPerPixel);
    case D3DDDI_ROTATION_90:
        Rotate90(pDst, src);
        break;
    case D3DDDI_ROTATION_180:
        Rotate180(pDst, src);
        return S_OK;
    case D3DDDI_ROTATION_270:
        Rotate270(pDst, src);
        break;
    default:
        return UMDFail(E_FAIL, L"UMDThreadFrameBuffer::InternalCopyData failded no rotation %d\n", rotation);
    }
    *pWidth = src.Height;
    *pHeight = src.Width;
    *pPitch = src.Height * bytesPerPixel;
    return S_OK;
}
