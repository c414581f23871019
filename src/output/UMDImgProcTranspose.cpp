// How the walk was found: a turn reads rows and writes columns, so one side always jumps from page to page. Plain tiles
// keep both sides in the cache but break the reads into snippets and fetch each written line from memory first. Here
// the reads stay wide (strips of rows), every store fills a whole line, and a strip's columns are few enough pages for
// the second-level TLB. docs/performance.md has the figures.
#include "output/UMDImgProcWalks.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace
{
using Index = std::ptrdiff_t;

constexpr Index kLineBytes = 64;
constexpr Index kLineWords = kLineBytes / 4;
/// Columns of a strip: each is one page of the destination at a time.
constexpr Index kStripColumns = 768;

__m128i Load(const BYTE* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

/// Fills one line, its four parts back to back so that they leave as one write.
void StreamLine(BYTE* pLine, __m128i a, __m128i b, __m128i c, __m128i d)
{
    __m128i* pParts = reinterpret_cast<__m128i*>(pLine);
    _mm_stream_si128(pParts, a);
    _mm_stream_si128(pParts + 1, b);
    _mm_stream_si128(pParts + 2, c);
    _mm_stream_si128(pParts + 3, d);
}

/// Four words below each other.
__m128i GatherFour(const BYTE* p, Index pitch)
{
    const __m128i ab = _mm_unpacklo_epi32(_mm_loadu_si32(p), _mm_loadu_si32(p + pitch));
    const __m128i cd = _mm_unpacklo_epi32(_mm_loadu_si32(p + 2 * pitch), _mm_loadu_si32(p + 3 * pitch));
    return _mm_unpacklo_epi64(ab, cd);
}

/// One column of 16 words to one line.
void TurnColumn(BYTE* pLine, const BYTE* p, Index pitch)
{
    StreamLine(pLine, GatherFour(p, pitch), GatherFour(p + 4 * pitch, pitch), GatherFour(p + 8 * pitch, pitch),
        GatherFour(p + 12 * pitch, pitch));
}

/// 4 x 4 words: row i of the result is column i of the source.
void TransposeSquare(__m128i (&result)[4], const BYTE* p, Index pitch)
{
    const __m128i row0 = Load(p);
    const __m128i row1 = Load(p + pitch);
    const __m128i row2 = Load(p + 2 * pitch);
    const __m128i row3 = Load(p + 3 * pitch);
    const __m128i left01 = _mm_unpacklo_epi32(row0, row1);
    const __m128i left23 = _mm_unpacklo_epi32(row2, row3);
    const __m128i right01 = _mm_unpackhi_epi32(row0, row1);
    const __m128i right23 = _mm_unpackhi_epi32(row2, row3);
    result[0] = _mm_unpacklo_epi64(left01, left23);
    result[1] = _mm_unpackhi_epi64(left01, left23);
    result[2] = _mm_unpacklo_epi64(right01, right23);
    result[3] = _mm_unpackhi_epi64(right01, right23);
}

/// Four columns of 16 words to four lines.
void TurnFourColumns(BYTE* pLine, Index dstPitch, const BYTE* p, Index pitch)
{
    __m128i a[4], b[4], c[4], d[4];
    TransposeSquare(a, p, pitch);
    TransposeSquare(b, p + 4 * pitch, pitch);
    TransposeSquare(c, p + 8 * pitch, pitch);
    TransposeSquare(d, p + 12 * pitch, pitch);
    for (Index i = 0; i < 4; ++i)
        StreamLine(pLine + i * dstPitch, a[i], b[i], c[i], d[i]);
}

/// The rows that the next window needs, spread over 16 columns: one line of each of 16 rows.
void Prefetch(const BYTE* pColumn, Index pitch, Index first, Index last)
{
    for (Index y = first; y < last; ++y)
        _mm_prefetch(reinterpret_cast<const char*>(pColumn + y * pitch), _MM_HINT_T0);
}
} // namespace

void UMDImgProcTranspose(
    BYTE* pDst, Index dstPitch, const BYTE* pSrc, Index srcPitch, std::size_t width, std::size_t height)
{
    const Index columns = static_cast<Index>(width);
    const Index rows = static_cast<Index>(height);
    // Rows of the destination that all begin at the same place of a line can be turned four at a time.
    const Index step = dstPitch % kLineBytes == 0 ? 4 : 1;
    for (Index begin = 0; begin < columns; begin += kStripColumns)
    {
        const Index end = std::min(begin + kStripColumns, columns);
        for (Index window = 0; window < rows + kLineWords - 1; window += kLineWords)
        {
            for (Index x = begin, done; x < end; x += done)
            {
                done = x + step <= end ? step : 1;
                BYTE* pTo = pDst + x * dstPitch;
                const BYTE* pFrom = pSrc + x * 4;
                const Index ahead = window + kLineWords + x % kLineWords;
                Prefetch(pFrom, srcPitch, std::min(ahead, rows), std::min(ahead + done, rows));
                // Each column's window is shifted so that it is a whole line there.
                const Index y = window - static_cast<Index>(reinterpret_cast<std::uintptr_t>(pTo) % kLineBytes / 4);
                const bool whole = y >= 0 && y + kLineWords <= rows;
                if (whole && done == 4)
                    TurnFourColumns(pTo + y * 4, dstPitch, pFrom + y * srcPitch, srcPitch);
                else if (whole)
                    TurnColumn(pTo + y * 4, pFrom + y * srcPitch, srcPitch);
                else
                {
                    done = 1;
                    for (Index n = std::max<Index>(y, 0); n < std::min(y + kLineWords, rows); ++n)
                        std::memcpy(pTo + n * 4, pFrom + n * srcPitch, 4);
                }
            }
        }
    }
    _mm_sfence();
}
