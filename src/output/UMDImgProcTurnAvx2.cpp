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

AVX2_INLINE void StreamLine(BYTE* pLine, const BYTE* pFrom)
{
    const auto* pParts = reinterpret_cast<const __m256i*>(pFrom);
    StreamLine(pLine, _mm256_loadu_si256(pParts), _mm256_loadu_si256(pParts + 1));
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
        StreamLine(pDst - past, window.Lower(i) - past);
    }
}

AVX2_INLINE void MoveUp(Window& window)
{
    for (auto& column : window.Columns)
    {
        column[0] = column[2];
        column[1] = column[3];
    }
}

/// The whole lines of some columns, as far as rows go by sixteens, but for a first one without words in front.
AVX2 void TurnWindows(const Turn& turn, Index begin, Index end)
{
    Window windows[Turn::kStripColumns / kSquare];
    for (Index y = 0; y + kLineWords <= turn.Rows; y += kLineWords)
    {
        Window* pWindow = windows;
        for (Index x = begin; x < end; x += kSquare, ++pWindow)
        {
            PrefetchRows(Ahead(turn, begin, end, x, y, 48, kLineWords), turn.SrcPitch);
            Fill(*pWindow, turn.Source(x, y), turn.SrcPitch);
            if (y != 0)
                Leave(*pWindow, turn.Destination(x, y), turn.DstPitch);
            MoveUp(*pWindow);
        }
    }
}

/// One whole line more of those columns that have it behind the rows that go by sixteens.
AVX2 void TurnLastLines(const Turn& turn, Index begin, Index end)
{
    const Index rest = turn.Rows % kLineWords;
    for (Index x = begin; x < end; x += kSquare)
    {
        Window window;
        Fill(window, turn.Source(x, turn.Rows - 2 * kLineWords), turn.SrcPitch);
        MoveUp(window);
        Fill(window, turn.Source(x, turn.Rows - kLineWords), turn.SrcPitch);
        for (Index i = 0; i < kSquare; ++i)
        {
            const Index words = rest + turn.Shift(x + i);
            if (words >= kLineWords)
                StreamLine(turn.Destination(x + i, turn.Rows - words), window.Lower(i) + (kLineWords - words) * 4);
        }
    }
}

/// The lines that the last words of a column share with the first ones of the column behind it in memory: of those
/// columns and of the one in front.
AVX2 void TurnSeams(const Turn& turn, Index begin, Index end)
{
    const Index next = turn.DstPitch > 0 ? 1 : 0;  // of two columns, the one behind the other
    const Index last = end - 1 - kSquare;
    for (Index at = std::max<Index>(begin - 1, 0); at < end - 1; at += kSquare)
    {
        const Index x = std::min(at, last);
        Window window;
        Fill(window, turn.Source(x + 1 - next, turn.Rows - kLineWords), turn.SrcPitch);
        MoveUp(window);
        Fill(window, turn.Source(x + next, 0), turn.SrcPitch);
        Leave(window, turn.Destination(x + next, 0), turn.DstPitch);
    }
}

/// Some columns that begin at the same place of a line.
AVX2 void TurnEvenStrip(const Turn& turn, Index begin, Index end)
{
    const Index shift = turn.Shift(0);
    const Index lines = (turn.Rows + shift) / kLineWords;
    Index line = shift == 0 ? 0 : 1;
    if (turn.DoesAlias())
    {
        for (; line + 2 <= lines; line += 2)
            TurnRows<2>(turn, begin, end, line * kLineWords - shift);
    }
    for (; line < lines; ++line)
        TurnRows<1>(turn, begin, end, line * kLineWords - shift);
    if (shift != 0)
        TurnSeams(turn, begin, end);
}

/// Some columns that begin anywhere.
AVX2 void TurnUnevenStrip(const Turn& turn, Index begin, Index end)
{
    TurnWindows(turn, begin, end);
    UMDImgProcTurnEndsAvx2(turn, begin, end);
}
}  // namespace

void UMDImgProcTurnEndsAvx2(const UMDImgProcTurn& turn, Index begin, Index end)
{
    TurnLastLines(turn, begin, end);
    TurnSeams(turn, begin, end);
}

void UMDImgProcTurnBlocksAvx2(const UMDImgProcTurn& turn)
{
    if (turn.HasSeams())
        turn.ByStrips(TurnEvenStrip, kSquare);
    else
        UMDImgProcTurnBlocksSse2(turn);
    _mm_sfence();
}

void UMDImgProcTurnColumnsAvx2(const UMDImgProcTurn& turn)
{
    if (turn.HasSeams())
        turn.ByStrips(TurnUnevenStrip, kSquare);
    else
        UMDImgProcTurnColumnsSse2(turn);
    _mm_sfence();
}
