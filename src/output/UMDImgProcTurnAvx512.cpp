// Turns with registers of 64 bytes, a whole line each. A column's line is put together from the words that came last
// and those that come now by one instruction, whatever its place in the line.
#include "output/UMDImgProcKernels.h"

#include <immintrin.h>

#define AVX512 __attribute__((target("avx512f")))
// Between functions the registers would go through memory.
#define AVX512_INLINE AVX512 __attribute__((always_inline)) inline

namespace
{
using Turn = UMDImgProcTurn;
using Index = Turn::Index;

constexpr Index kLineBytes = Turn::kLineBytes;
constexpr Index kLineWords = Turn::kLineWords;

/// From here on, 16 words are the numbers of those that follow a place among 32.
alignas(kLineBytes) constexpr UINT kNumbers[2 * kLineWords] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16,
    17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31};

/// Turns each 4 x 4 words of four rows: part i of column c holds column 4 * i + c.
AVX512_INLINE void TurnSquares(__m512i* pColumns, const BYTE* p, Index pitch)
{
    const __m512i rows[] = {_mm512_loadu_si512(p), _mm512_loadu_si512(p + pitch), _mm512_loadu_si512(p + 2 * pitch),
        _mm512_loadu_si512(p + 3 * pitch)};
    const __m512i left01 = _mm512_unpacklo_epi32(rows[0], rows[1]);
    const __m512i left23 = _mm512_unpacklo_epi32(rows[2], rows[3]);
    const __m512i right01 = _mm512_unpackhi_epi32(rows[0], rows[1]);
    const __m512i right23 = _mm512_unpackhi_epi32(rows[2], rows[3]);
    pColumns[0] = _mm512_unpacklo_epi64(left01, left23);
    pColumns[1] = _mm512_unpackhi_epi64(left01, left23);
    pColumns[2] = _mm512_unpacklo_epi64(right01, right23);
    pColumns[3] = _mm512_unpackhi_epi64(right01, right23);
}

/// Turns 16 x 16 words.
AVX512_INLINE void TurnSquare(__m512i (&columns)[kLineWords], const BYTE* p, Index pitch)
{
    constexpr int kEven = _MM_SHUFFLE(2, 0, 2, 0), kOdd = _MM_SHUFFLE(3, 1, 3, 1);
    __m512i squares[4][4];  // of each four rows
    for (Index i = 0; i < 4; ++i)
        TurnSquares(squares[i], p + 4 * i * pitch, pitch);
    for (Index c = 0; c < 4; ++c)
    {
        const __m512i upperEven = _mm512_shuffle_i32x4(squares[0][c], squares[1][c], kEven);
        const __m512i upperOdd = _mm512_shuffle_i32x4(squares[0][c], squares[1][c], kOdd);
        const __m512i lowerEven = _mm512_shuffle_i32x4(squares[2][c], squares[3][c], kEven);
        const __m512i lowerOdd = _mm512_shuffle_i32x4(squares[2][c], squares[3][c], kOdd);
        columns[c] = _mm512_shuffle_i32x4(upperEven, lowerEven, kEven);
        columns[4 + c] = _mm512_shuffle_i32x4(upperOdd, lowerOdd, kEven);
        columns[8 + c] = _mm512_shuffle_i32x4(upperEven, lowerEven, kOdd);
        columns[12 + c] = _mm512_shuffle_i32x4(upperOdd, lowerOdd, kOdd);
    }
}

/// Streams the line of each column that has become whole. @param pLast the 16 words before, of each.
AVX512_INLINE void Leave(const __m512i (&columns)[kLineWords], const __m512i* pLast, BYTE* pDst, Index dstPitch)
{
    for (Index i = 0; i < kLineWords; ++i, pDst += dstPitch)
    {
        const Index past = static_cast<Index>(reinterpret_cast<std::uintptr_t>(pDst) % kLineBytes / 4);
        const __m512i numbers = _mm512_loadu_si512(kNumbers + kLineWords - past);
        _mm512_stream_si512(
            reinterpret_cast<__m512i*>(pDst - past * 4), _mm512_permutex2var_epi32(pLast[i], numbers, columns[i]));
    }
}

/// The whole lines of some columns, as far as rows go by sixteens, but for a first one without words in front.
AVX512 void TurnWindows(const Turn& turn, Index begin, Index end)
{
    constexpr Index kAhead = 3 * kLineWords;
    __m512i last[Turn::kStripColumns];
    for (Index y = 0; y + kLineWords <= turn.Rows; y += kLineWords)
    {
        __m512i* pLast = last;
        for (Index x = begin; x < end; x += kLineWords, pLast += kLineWords)
        {
            const Index ahead = x + kAhead;
            const BYTE* pAhead = ahead < end ? turn.Source(ahead, y) : turn.Source(begin + ahead - end, y + kLineWords);
            for (Index i = 0; i < kLineWords; ++i)
                _mm_prefetch(reinterpret_cast<const char*>(pAhead + i * turn.SrcPitch), _MM_HINT_T0);
            __m512i columns[kLineWords];
            TurnSquare(columns, turn.Source(x, y), turn.SrcPitch);
            if (y != 0)
                Leave(columns, pLast, turn.Destination(x, y), turn.DstPitch);
            for (Index i = 0; i < kLineWords; ++i)
                pLast[i] = columns[i];
        }
    }
}

void TurnStrip(const Turn& turn, Index begin, Index end)
{
    TurnWindows(turn, begin, end);
    UMDImgProcTurnEndsAvx2(turn, begin, end);
}
}  // namespace

void UMDImgProcTurnColumnsAvx512(const UMDImgProcTurn& turn)
{
    if (turn.HasSeams())
        turn.ByStrips(TurnStrip, kLineWords);
    else
        UMDImgProcTurnColumnsSse2(turn);
    _mm_sfence();
}
