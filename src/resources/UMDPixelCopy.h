// Copies of pixels between images in plain memory, by the true layout of their format. No device, no lock; any thread.
#pragma once

#include "util/UMDPixelLayout.h"

/// An image in memory: BYTE for one to be written, const BYTE for one to be read.
template <typename Byte>
struct UMDImage
{
    Byte* pBits;
    UINT Pitch;   ///< bytes from row to row of the first plane
    UINT Width;   ///< pixels
    UINT Height;  ///< pixels
};

/// Copies pixels to the same place in another image. Never touches what lies beyond a row of either, beyond its last
/// row, or between its rows.
/// @param pRect pixels to copy, widened to whole groups and cut to what both images have; null for all.
void UMDCopyPixels(
    const UMDPixelLayout& layout, const UMDImage<BYTE>& dst, const UMDImage<const BYTE>& src, const RECT* pRect);

/// Copies rows, each to its own pitch.
void UMDCopyRows(BYTE* pDst, UINT dstPitch, const BYTE* pSrc, UINT srcPitch, UINT rowBytes, UINT rows);

/// The pixels of a row that fit into its bytes, where their size is not the format's own.
UINT UMDFittingPixels(UINT width, UINT rowBytes, UINT bytesPerPixel);

/// The part of a rectangle that lies inside an image; empty, at some place inside, when there is none.
RECT UMDInside(const RECT& rect, UINT width, UINT height);
