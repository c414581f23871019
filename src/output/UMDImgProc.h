// Copies and rotations of pixel rectangles in plain memory. No device, no lock, no allocation; any thread.
//
// Null pointers and overlapping areas are the caller's to avoid. Offsets are computed in 32-bit unsigned arithmetic.
#pragma once

#include <windows.h>

/// Copies rows of pixels between areas of different pitch.
/// A packed source (srcPitch == width * bytesPerPixel) is copied as one block: dstPitch is not used then, the
/// destination is taken as packed too.
/// @param dstPitch, srcPitch bytes from row to row.
/// @param width, height      pixels.
/// @return S_OK, always.
HRESULT UMDImgProcCopy(
    BYTE* pDst, UINT dstPitch, const BYTE* pSrc, UINT srcPitch, UINT width, UINT height, UINT bytesPerPixel);

/// Copies an image into a packed destination, rotated.
/// Rotating cases copy one 32-bit word per pixel whatever bytesPerPixel is, and use bytesPerPixel only to step.
/// @param pPitch, pWidth, pHeight in: the source, bytes and pixels; out, for 90 and 270 degrees: the rotated image.
/// @param rotation a D3DDDI_ROTATION value.
/// @return S_OK; E_FAIL, traced, for an unknown rotation, with the outputs unchanged.
HRESULT UMDImgProcRotation(
    BYTE* pDst, const BYTE* pSrc, UINT* pPitch, UINT* pWidth, UINT* pHeight, UINT bytesPerPixel, UINT rotation);
