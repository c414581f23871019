// Turns with registers of 32 bytes: a block of 8 columns and 16 rows is read, turned in registers and streamed at once,
// a whole line of each column. Of functions with such registers the compiler clears their upper halves on leaving.
#include "output/UMDImgProcKernels.h"

#include <immintrin.h>

#define AVX2 __attribute__((target("avx2")))
// Between functions the registers would go through memory.
#define AVX2_INLINE AVX2 __attribute__((always_inline)) inline

namespace
{
using Turn = UMDImgProcTurn;
using Index = Turn::Index;

constexpr Index kLineBytes = Turn::kLineBytes;
constexpr Index kLineWords = Turn::kLineWords;
constexpr Index kSquare = 8;  // words of a register

/// The right half of a square's row beside the left one of the row four further down would need a shuffle more: halves
/// that belong together are loaded together.
AVX2_INLINE __m256i LoadHalves(const BYTE* p, Index pitch)
{
    const auto* pUpper = reinterpret_cast<const __m128i*>(p);
    const auto* pLower = reinterpret_cast<const __m128i*>(p + 4 * pitch);
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(pUpper)), _mm_loadu_si128(pLower), 1);
}

/// Turns 4 columns of 8 words.
AVX2_INLINE void TurnHalf(__m256i* pColumns, const BYTE* p, Index pitch)
{
    const __m256i rows[] = {LoadHalves(p, pitch), LoadHalves(p + pitch, pitch), LoadHalves(p + 2 * pitch, pitch),
        LoadHalves(p + 3 * pitch, pitch)};
    const __m256i left01 = _mm256_unpacklo_epi32(rows[0], rows[1]);
    const __m256i left23 = _mm256_unpacklo_epi32(rows[2], rows[3]);
    const __m256i right01 = _mm256_unpackhi_epi32(rows[0], rows[1]);
    const __m256i right23 = _mm256_unpackhi_epi32(rows[2], rows[3]);
    pColumns[0] = _mm256_unpacklo_epi64(left01, left23);
    pColumns[1] = _mm256_unpackhi_epi64(left01, left23);
    pColumns[2] = _mm256_unpacklo_epi64(right01, right23);
    pColumns[3] = _mm256_unpackhi_epi64(right01, right23);
}

/// Turns 8 x 8 words.
AVX2_INLINE void TurnSquare(__m256i (&columns)[kSquare], const BYTE* p, Index pitch)
{
    TurnHalf(columns, p, pitch);
    TurnHalf(columns + 4, p + 16, pitch);
}

AVX2_INLINE void StreamLine(BYTE* pLine, __m256i front, __m256i back)
{
    _mm256_stream_si256(reinterpret_cast<__m256i*>(pLine), front);
    _mm256_stream_si256(reinterpret_cast<__m256i*>(pLine + 32), back);
}

AVX2_INLINE void StreamBlock(BYTE* pDst, Index dstPitch, const BYTE* p, Index pitch)
{
    __m256i front[kSquare], back[kSquare];
    TurnSquare(front, p, pitch);
    TurnSquare(back, p + kSquare * pitch, pitch);
    for (Index i = 0; i < kSquare; ++i, pDst += dstPitch)
        StreamLine(pDst, front[i], back[i]);
}

/// Asks for 8 rows of a line that is read soon. They may lie outside of the image.
void PrefetchRows(const BYTE* p, Index pitch)
{
    for (Index i = 0; i < kSquare; ++i, p += pitch)
        _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T0);
}

/// Where the rows of a strip go on that are read some columns later. Two blocks share lines and fetch half of them
/// each.
/// @param rows that are walked together.
const BYTE* Ahead(const Turn& turn, Index begin, Index end, Index x, Index y, Index columns, Index rows)
{
    const Index row = y + x % kLineWords / kSquare * kSquare;
    return x + columns < end ? turn.Source(x + columns, row) : turn.Source(begin + x + columns - end, row + rows);
}

/// Some rows of a strip, the given count of lines of each column.
template <Index kLines>
AVX2 void TurnRows(const Turn& turn, Index begin, Index end, Index y)
{
    constexpr Index kAhead = kLines == 1 ? 48 : 32;
    for (Index x = begin; x < end; x += kSquare)
    {
        const BYTE* pAhead = Ahead(turn, begin, end, x, y, kAhead, kLines * kLineWords);
        for (Index line = y; line < y + kLines * kLineWords; line += kLineWords, pAhead += kLineWords * turn.SrcPitch)
        {
            PrefetchRows(pAhead, turn.SrcPitch);
            StreamBlock(turn.Destination(x, line), turn.DstPitch, turn.Source(x, line), turn.SrcPitch);
        }
    }
}

/// The last 32 rows of 8 columns, each column's words in a row. A line that begins anywhere in the upper half is whole.
struct Window
{
    __m256i Columns[kSquare][4];

    AVX2_INLINE BYTE* Lower(Index column) { return reinterpret_cast<BYTE*>(&Columns[column][2]); }
};

/// Puts the next 16 rows of 8 columns below the last ones.
AVX2_INLINE void Fill(Window& window, const BYTE* p, Index pitch)
{
    for (Index half = 0; half < 2; ++half, p += kSquare * pitch)
    {
        __m256i columns[kSquare];
        TurnSquare(columns, p, pitch);
        for (Index i = 0; i < kSquare; ++i)
            _mm256_store_si256(&window.Columns[i][2 + half], columns[i]);
    }
}

/// Streams the line of each column that has become whole.
AVX2_INLINE void Leave(Window& window, BYTE* pDst, Index dstPitch)
{
    for (Index i = 0; i < kSquare; ++i, pDst += dstPitch)
    {
        const Index past = static_cast<Index>(reinterpret_cast<std::uintptr_t>(pDst) % kLineBytes);
        const auto* pLine = reinterpret_cast<const __m256i*>(window.Lower(i) - past);
        StreamLine(pDst - past, _mm256_loadu_si256(pLine), _mm256_loadu_si256(pLine + 1));
    }
}

/// Writes the first words of each column, up to its first whole line.
AVX2_INLINE void Begin(Window& window, BYTE* pDst, Index dstPitch)
{
    for (Index i = 0; i < kSquare; ++i, pDst += dstPitch)
        std::memcpy(pDst, window.Lower(i), kLineBytes - reinterpret_cast<std::uintptr_t>(pDst) % kLineBytes);
}

AVX2_INLINE void MoveUp(Window& window)
{
    for (auto& column : window.Columns)
    {
        column[0] = column[2];
        column[1] = column[3];
    }
}

/// Some columns, whole lines only. @param rows a multiple of 16.
AVX2 void TurnStrip(const Turn& turn, Index begin, Index end, Index rows)
{
    Window windows[Turn::kStripColumns / kSquare];
    for (Index y = 0; y < rows; y += kLineWords)
    {
        Window* pWindow = windows;
        for (Index x = begin; x < end; x += kSquare, ++pWindow)
        {
            PrefetchRows(Ahead(turn, begin, end, x, y, 48, kLineWords), turn.SrcPitch);
            Fill(*pWindow, turn.Source(x, y), turn.SrcPitch);
            if (y == 0)
                Begin(*pWindow, turn.Destination(x, y), turn.DstPitch);
            else
                Leave(*pWindow, turn.Destination(x, y), turn.DstPitch);
            MoveUp(*pWindow);
        }
    }
}
/// What lies in front of the first whole line of each column, and behind the last.
void TurnEnds(const Turn& turn, Index first, Index last)
{
    for (Index x = 0; x < turn.Columns; ++x)
    {
        turn.MoveWords(x, 0, first);
        turn.MoveWords(x, last, turn.Rows);
    }
}
}  // namespace

AVX2 void UMDImgProcTurnBlocksAvx2(const UMDImgProcTurn& turn)
{
    if (turn.Columns < kSquare)
        return UMDImgProcTurnBlocksSse2(turn);
    const Index first = std::min((kLineWords - turn.Shift(0)) % kLineWords, turn.Rows);
    const Index last = turn.Rows - (turn.Rows - first) % kLineWords;
    const Index columns = turn.Columns - turn.Columns % kSquare;
    const Index pairs = turn.DoesAlias() ? (last - first) / (2 * kLineWords) : 0;
    for (Index begin = 0; begin < columns; begin += Turn::kStripColumns)
    {
        const Index end = std::min(begin + Turn::kStripColumns, columns);
        Index y = first;
        for (Index n = 0; n < pairs; ++n, y += 2 * kLineWords)
            TurnRows<2>(turn, begin, end, y);
        for (; y < last; y += kLineWords)
            TurnRows<1>(turn, begin, end, y);
    }
    // The last columns once more, together with some of those before.
    if (columns < turn.Columns)
    {
        for (Index y = first; y < last; y += kLineWords)
            TurnRows<1>(turn, turn.Columns - kSquare, turn.Columns, y);
    }
    TurnEnds(turn, first, last);
    _mm_sfence();
}

AVX2 void UMDImgProcTurnColumnsAvx2(const UMDImgProcTurn& turn)
{
    const Index rows = turn.Rows - turn.Rows % kLineWords;
    if (turn.Columns < kSquare || rows == 0)
        return UMDImgProcTurnColumnsSse2(turn);
    const Index columns = turn.Columns - turn.Columns % kSquare;
    for (Index begin = 0; begin < columns; begin += Turn::kStripColumns)
        TurnStrip(turn, begin, std::min(begin + Turn::kStripColumns, columns), rows);
    if (columns < turn.Columns)
        TurnStrip(turn, turn.Columns - kSquare, turn.Columns, rows);
    for (Index x = 0; x < turn.Columns; ++x)
        turn.MoveWords(x, rows - turn.Shift(x), turn.Rows);
    _mm_sfence();
}
