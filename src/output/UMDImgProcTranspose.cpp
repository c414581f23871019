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

struct Turn
{
    BYTE* pDst;
    Index DstPitch;
    const BYTE* pSrc;
    Index SrcPitch;
    Index Columns;
    Index Rows;

    const BYTE* Source(Index x, Index y) const { return pSrc + y * SrcPitch + x * 4; }
    BYTE* Destination(Index x, Index y) const { return pDst + x * DstPitch + y * 4; }
    /// How many rows further up a column's windows begin, so that each is one whole line of the destination.
    Index Shift(Index x) const
    {
        return static_cast<Index>(reinterpret_cast<std::uintptr_t>(Destination(x, 0)) % kLineBytes / 4);
    }
    bool IsWhole(Index y) const { return y >= 0 && y + kLineWords <= Rows; }
};

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

/// The words of a row that belong to four columns: neighbours (Step 1), or each second one (Step 2), of which the first
/// is an even (Odd 0) or an odd one.
template <Index Step, Index Odd>
__m128i LoadRow(const BYTE* p)
{
    if constexpr (Step == 1)
        return Load(p);
    constexpr int kPick = Odd ? _MM_SHUFFLE(3, 1, 3, 1) : _MM_SHUFFLE(2, 0, 2, 0);
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(Load(p)), _mm_castsi128_ps(Load(p + 16)), kPick));
}

/// 4 x 4 words: row i of the result is column i of the source.
template <Index Step, Index Odd>
void TransposeSquare(__m128i (&result)[4], const BYTE* p, Index pitch)
{
    const __m128i row0 = LoadRow<Step, Odd>(p);
    const __m128i row1 = LoadRow<Step, Odd>(p + pitch);
    const __m128i row2 = LoadRow<Step, Odd>(p + 2 * pitch);
    const __m128i row3 = LoadRow<Step, Odd>(p + 3 * pitch);
    const __m128i left01 = _mm_unpacklo_epi32(row0, row1);
    const __m128i left23 = _mm_unpacklo_epi32(row2, row3);
    const __m128i right01 = _mm_unpackhi_epi32(row0, row1);
    const __m128i right23 = _mm_unpackhi_epi32(row2, row3);
    result[0] = _mm_unpacklo_epi64(left01, left23);
    result[1] = _mm_unpackhi_epi64(left01, left23);
    result[2] = _mm_unpacklo_epi64(right01, right23);
    result[3] = _mm_unpackhi_epi64(right01, right23);
}

/// What the image's edge leaves of a window of one column.
void TurnRest(const Turn& turn, Index x, Index y)
{
    const Index end = std::min(y + kLineWords, turn.Rows);
    for (Index n = std::max<Index>(y, 0); n < end; ++n)
        std::memcpy(turn.Destination(x, n), turn.Source(x, n), 4);
}

/// One window of one column.
void TurnColumn(const Turn& turn, Index x, Index y)
{
    if (!turn.IsWhole(y))
        return TurnRest(turn, x, y);
    const BYTE* p = turn.Source(x, y);
    const Index pitch = turn.SrcPitch;
    StreamLine(turn.Destination(x, y), GatherFour(p, pitch), GatherFour(p + 4 * pitch, pitch),
        GatherFour(p + 8 * pitch, pitch), GatherFour(p + 12 * pitch, pitch));
}

/// One window of four columns, of the 4 * Step from x on those at Odd, Odd + Step and so on, whose lines begin at the
/// same rows.
template <Index Step, Index Odd>
void TurnFourColumns(const Turn& turn, Index x, Index y)
{
    if (!turn.IsWhole(y))
    {
        for (Index i = 0; i < 4; ++i)
            TurnRest(turn, x + Odd + i * Step, y);
        return;
    }
    const BYTE* p = turn.Source(x, y);
    const Index pitch = turn.SrcPitch;
    __m128i a[4], b[4], c[4], d[4];
    TransposeSquare<Step, Odd>(a, p, pitch);
    TransposeSquare<Step, Odd>(b, p + 4 * pitch, pitch);
    TransposeSquare<Step, Odd>(c, p + 8 * pitch, pitch);
    TransposeSquare<Step, Odd>(d, p + 12 * pitch, pitch);
    for (Index i = 0; i < 4; ++i)
        StreamLine(turn.Destination(x + Odd + i * Step, y), a[i], b[i], c[i], d[i]);
}

/// Ways to turn one window of some columns, by where the destination's rows begin in their lines.
/// All alike: neighbours go together.
struct Neighbours
{
    static constexpr Index kColumns = 4;
    const Index m_Shift;

    explicit Neighbours(const Turn& turn) : m_Shift(turn.Shift(0)) {}
    Index LargestShift() const { return m_Shift; }
    void Do(const Turn& turn, Index x, Index window) const { TurnFourColumns<1, 0>(turn, x, window - m_Shift); }
};

/// Rows half a line longer than whole lines: every second one begins alike.
struct Alternating
{
    static constexpr Index kColumns = 8;
    const Index m_EvenShift, m_OddShift;

    explicit Alternating(const Turn& turn) : m_EvenShift(turn.Shift(0)), m_OddShift(turn.Shift(1)) {}
    Index LargestShift() const { return std::max(m_EvenShift, m_OddShift); }
    void Do(const Turn& turn, Index x, Index window) const
    {
        TurnFourColumns<2, 0>(turn, x, window - m_EvenShift);
        TurnFourColumns<2, 1>(turn, x, window - m_OddShift);
    }
};

/// Each where it will.
struct Single
{
    static constexpr Index kColumns = 1;

    explicit Single(const Turn&) {}
    Index LargestShift() const { return kLineWords - 1; }
    void Do(const Turn& turn, Index x, Index window) const { TurnColumn(turn, x, window - turn.Shift(x)); }
};

/// The rows of the next window, spread over the columns: each line once, by the columns that it holds.
template <Index Rows>
void Prefetch(const Turn& turn, Index x, Index y)
{
    if (y + Rows <= turn.Rows)
        for (Index i = 0; i < Rows; ++i)
            _mm_prefetch(reinterpret_cast<const char*>(turn.Source(x, y + i)), _MM_HINT_T0);
}

template <typename Way>
void Walk(const Turn& turn)
{
    const Way way(turn);
    const Single single(turn);
    const Index lastRow = turn.Rows + way.LargestShift();
    for (Index begin = 0; begin < turn.Columns; begin += kStripColumns)
    {
        const Index end = std::min(begin + kStripColumns, turn.Columns);
        for (Index window = 0; window < lastRow; window += kLineWords)
        {
            Index x = begin;
            for (; x + Way::kColumns <= end; x += Way::kColumns)
            {
                Prefetch<Way::kColumns>(turn, x, window + kLineWords + x % kLineWords);
                way.Do(turn, x, window);
            }
            for (; x < end; ++x)
                single.Do(turn, x, window);
        }
    }
}
} // namespace

void UMDImgProcTranspose(
    BYTE* pDst, Index dstPitch, const BYTE* pSrc, Index srcPitch, std::size_t width, std::size_t height)
{
    const Turn turn = {pDst, dstPitch, pSrc, srcPitch, static_cast<Index>(width), static_cast<Index>(height)};
    if (dstPitch % kLineBytes == 0)
        Walk<Neighbours>(turn);
    else if (dstPitch % (kLineBytes / 2) == 0)
        Walk<Alternating>(turn);
    else
        Walk<Single>(turn);
    _mm_sfence();
}
