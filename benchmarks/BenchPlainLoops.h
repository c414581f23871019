// What the image routines are measured against: the simplest code that does the same.
#pragma once

#include <windows.h>

/// Copies with 16-byte loads and streaming stores. Both addresses and the size: multiples of 16.
void BenchVectorCopy(BYTE* pDst, const BYTE* pSrc, size_t bytes);

/// Turns by 90 degrees, pixel by pixel in the source's order.
void BenchScatteredTurn90(BYTE* pDst, const BYTE* pSrc, UINT width, UINT height);

/// Turns by 270 degrees, pixel by pixel in the source's order.
void BenchScatteredTurn270(BYTE* pDst, const BYTE* pSrc, UINT width, UINT height);
