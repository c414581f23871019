#include "BenchPlainLoops.h"

#include <emmintrin.h>

void BenchVectorCopy(BYTE* pDst, const BYTE* pSrc, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 16)
    {
        const __m128i part = _mm_load_si128(reinterpret_cast<const __m128i*>(pSrc + i));
        _mm_stream_si128(reinterpret_cast<__m128i*>(pDst + i), part);
    }
    _mm_sfence();
}

void BenchScatteredTurn90(BYTE* pDst, const BYTE* pSrc, UINT width, UINT height)
{
    const UINT* pFrom = reinterpret_cast<const UINT*>(pSrc);
    UINT* pTo = reinterpret_cast<UINT*>(pDst);
    for (UINT y = 0; y < height; ++y)
    {
        for (UINT x = 0; x < width; ++x)
            pTo[(width - 1 - x) * height + y] = pFrom[y * width + x];
    }
}

void BenchScatteredTurn270(BYTE* pDst, const BYTE* pSrc, UINT width, UINT height)
{
    const UINT* pFrom = reinterpret_cast<const UINT*>(pSrc);
    UINT* pTo = reinterpret_cast<UINT*>(pDst);
    for (UINT y = 0; y < height; ++y)
    {
        for (UINT x = 0; x < width; ++x)
            pTo[x * height + height - 1 - y] = pFrom[y * width + x];
    }
}
