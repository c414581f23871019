// Fast walks over frames of 32-bit pixels: the same bytes as the simple loops, in an order that suits the memory.
//
// A streaming store writes a whole cache line without fetching it first, but leaves it in no cache. What was written is
// visible to other threads when a function returns. Destinations must be aligned to 4 bytes, sources may lie anywhere.
#pragma once

#include <windows.h>

#include <cstddef>

/// From these sizes on copies and turns by 180 degrees stream. A copy that finds both images in a cache loses a
/// twentieth by it and gains three quarters otherwise; a turn would lose a sixth, and waits until no cache holds them.
/// Turns by 90 and 270 degrees stream always: jumping from row to row, they would fetch each line anew.
inline constexpr std::size_t UMD_IMGPROC_STREAM_COPY_BYTES = std::size_t{3} * 1024 * 1024;
inline constexpr std::size_t UMD_IMGPROC_STREAM_REVERSE_BYTES = std::size_t{12} * 1024 * 1024;

/// Writes the word at (x, y) of the source to pDst + x * dstPitch + y * 4.
/// @param dstPitch, srcPitch bytes from row to row, multiples of 4 for the destination; negative if rows go upwards.
/// @param width, height      of the source, in words.
void UMDImgProcTranspose(BYTE* pDst, std::ptrdiff_t dstPitch, const BYTE* pSrc, std::ptrdiff_t srcPitch,
    std::size_t width, std::size_t height);

/// Writes a row of words in falling order.
/// @param bStream with streaming stores.
void UMDImgProcReverse(BYTE* pDst, const BYTE* pSrc, std::size_t count, bool bStream);

/// Copies a row of words with streaming stores.
void UMDImgProcStream(BYTE* pDst, const BYTE* pSrc, std::size_t count);
