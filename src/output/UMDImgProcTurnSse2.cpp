// Why the walk goes as it does: a turn reads rows and writes columns, so one side always jumps from page to page. Plain
// tiles written where they are read fetch each line of the destination from memory first, and break it into parts. Here
// a tile is turned in a small buffer that stays in the nearest cache and leaves it by whole lines that are not fetched;
// tiles follow each other along the rows, and a strip of them is few enough columns that each one's page stays in the
// second-level TLB. docs/performance.md has the figures.
#include "output/UMDImgProcKernels.h"

#include <emmintrin.h>

#include <algorithm>

namespace
{
using Turn = UMDImgProcTurn;
using Index = Turn::Index;

constexpr Index kLineBytes = Turn::kLineBytes;
constexpr Index kLineWords = Turn::kLineWords;
constexpr Index kStripColumns = Turn::kStripColumns;

/// Fills one line, its four parts back to back so that they leave as one write.
void StreamLine(BYTE* pLine, __m128i a, __m128i b, __m128i c, __m128i d)
{
    __m128i* pParts = reinterpret_cast<__m128i*>(pLine);
    _mm_stream_si128(pParts, a);
    _mm_stream_si128(pParts + 1, b);
    _mm_stream_si128(pParts + 2, c);
    _mm_stream_si128(pParts + 3, d);
}

/// Asks for a line that is read soon. It may lie outside of the image.
void Prefetch(const BYTE* p)
{
    _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T0);
}

/// Turns 4 x 4 words.
void TurnSquare(__m128i (&columns)[4], const BYTE* p, Index pitch)
{
    const auto load = [=](Index y) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + y * pitch)); };
    const __m128i left01 = _mm_unpacklo_epi32(load(0), load(1));
    const __m128i left23 = _mm_unpacklo_epi32(load(2), load(3));
    const __m128i right01 = _mm_unpackhi_epi32(load(0), load(1));
    const __m128i right23 = _mm_unpackhi_epi32(load(2), load(3));
    columns[0] = _mm_unpacklo_epi64(left01, left23);
    columns[1] = _mm_unpackhi_epi64(left01, left23);
    columns[2] = _mm_unpacklo_epi64(right01, right23);
    columns[3] = _mm_unpackhi_epi64(right01, right23);
}

// The functions from here on that are kept out of line would be half as fast inside of the loops around them: those
// take the registers that these need.

/// A block that is streamed at once: one line of each of 16 columns, turned in a buffer.
struct Tile
{
    static constexpr Index kLines = 1;
    static constexpr Index kColumns = kLineWords;
    /// How far ahead rows are fetched, in columns.
    static constexpr Index kAhead = 3 * kLineWords;

    /// @param pAhead the place of a tile to come, whose rows are fetched.
    static __declspec(noinline) void Stream(BYTE* pDst, Index dstPitch, const BYTE* p, Index pitch, const BYTE* pAhead)
    {
        alignas(kLineBytes) __m128i lines[kColumns][4];
        for (Index part = 0; part < 4; ++part)
        {
            for (Index x = 0; x < kColumns; x += 4)
            {
                __m128i columns[4];
                TurnSquare(columns, p + part * 4 * pitch + x * 4, pitch);
                for (Index i = 0; i < 4; ++i)
                    lines[x + i][part] = columns[i];
            }
        }
        for (Index x = 0; x < kColumns; ++x, pDst += dstPitch)
        {
            Prefetch(pAhead + x * pitch);
            StreamLine(pDst, lines[x][0], lines[x][1], lines[x][2], lines[x][3]);
        }
    }
};

/// A block of three lines of each of 4 columns, turned in registers.
struct Column4
{
    static constexpr Index kLines = 3;
    static constexpr Index kColumns = 4;
    static constexpr Index kAhead = 2 * kLineWords;

    /// @param pAhead the place of a block to come, a quarter of whose rows are fetched: its lines hold four blocks.
    static __declspec(noinline) void Stream(BYTE* pDst, Index dstPitch, const BYTE* p, Index pitch, const BYTE* pAhead)
    {
        for (Index line = 0; line < kLines; ++line)
        {
            for (Index i = 0; i < 4; ++i)
                Prefetch(pAhead + i * pitch);
            __m128i parts[4][4];
            for (Index part = 0; part < 4; ++part)
                TurnSquare(parts[part], p + part * 4 * pitch, pitch);
            for (Index x = 0; x < kColumns; ++x)
                StreamLine(pDst + x * dstPitch, parts[0][x], parts[1][x], parts[2][x], parts[3][x]);
            p += kLineWords * pitch;
            pAhead += kLineWords * pitch;
            pDst += kLineBytes;
        }
    }
};

/// Four words below each other.
__m128i GatherFour(const BYTE* p, Index pitch)
{
    const __m128i ab = _mm_unpacklo_epi32(_mm_loadu_si32(p), _mm_loadu_si32(p + pitch));
    const __m128i cd = _mm_unpacklo_epi32(_mm_loadu_si32(p + 2 * pitch), _mm_loadu_si32(p + 3 * pitch));
    return _mm_unpacklo_epi64(ab, cd);
}

/// Turns one line of one column.
__declspec(noinline) void TurnLine(BYTE* pLine, const BYTE* p, Index pitch)
{
    StreamLine(pLine, GatherFour(p, pitch), GatherFour(p + 4 * pitch, pitch), GatherFour(p + 8 * pitch, pitch),
        GatherFour(p + 12 * pitch, pitch));
}

/// One line's window of some columns, as much of it as lies in the image.
void TurnWindow(const Turn& turn, Index begin, Index end, Index window)
{
    for (Index x = begin; x < end; ++x)
    {
        const Index y = window - turn.Shift(x);
        if (y >= 0 && y + kLineWords <= turn.Rows)
        {
            TurnLine(turn.Destination(x, y), turn.Source(x, y), turn.SrcPitch);
            continue;
        }
        turn.MoveWords(x, std::max<Index>(y, 0), std::min(y + kLineWords, turn.Rows));
    }
}

/// Destination rows that all begin at the same place of a line: whole blocks.
template <typename Block>
void TurnByBlocks(const Turn& turn)
{
    constexpr Index kRows = Block::kLines * kLineWords;
    const Index shift = turn.Shift(0);
    for (Index begin = 0; begin < turn.Columns; begin += kStripColumns)
    {
        const Index end = std::min(begin + kStripColumns, turn.Columns);
        const Index blocksEnd = end - (end - begin) % Block::kColumns;
        for (Index y = -shift; y < turn.Rows; y += kRows)
        {
            Index x = begin;
            if (y >= 0 && y + kRows <= turn.Rows)
            {
                for (; x < blocksEnd; x += Block::kColumns)
                {
                    // Behind the last block of some rows comes the first of the next. Blocks that share lines fetch
                    // different rows of them.
                    const Index ahead = x + Block::kAhead;
                    const Index row = y + x % kLineWords / Block::kColumns * Block::kColumns;
                    const BYTE* pAhead = ahead < blocksEnd ? turn.Source(ahead, row)
                                                           : turn.Source(begin + ahead - blocksEnd, row + kRows);
                    Block::Stream(turn.Destination(x, y), turn.DstPitch, turn.Source(x, y), turn.SrcPitch, pAhead);
                }
            }
            for (Index line = 0; line < Block::kLines; ++line)
                TurnWindow(turn, x, end, y + shift + line * kLineWords);
        }
    }
}
}  // namespace

void UMDImgProcTurnBlocksSse2(const UMDImgProcTurn& turn)
{
    if (turn.DoesAlias())
        TurnByBlocks<Column4>(turn);
    else
        TurnByBlocks<Tile>(turn);
    _mm_sfence();
}

// Each column has windows of its own.
void UMDImgProcTurnColumnsSse2(const UMDImgProcTurn& turn)
{
    const Index dstPitch = turn.DstPitch;
    const Index srcPitch = turn.SrcPitch;
    for (Index begin = 0; begin < turn.Columns; begin += kStripColumns)
    {
        const Index end = std::min(begin + kStripColumns, turn.Columns);
        for (Index window = 0; window < turn.Rows + kLineWords - 1; window += kLineWords)
        {
            if (window < kLineWords || window + kLineWords > turn.Rows)
            {
                TurnWindow(turn, begin, end, window);
                continue;
            }
            const BYTE* pSrc = turn.Source(begin, window);
            BYTE* pDst = turn.Destination(begin, window);
            for (Index x = begin; x < end; ++x, pSrc += 4, pDst += dstPitch)
            {
                // The rows of the next window, each line once, by the columns that it holds.
                Prefetch(pSrc + (kLineWords + x % kLineWords) * srcPitch);
                const Index past = static_cast<Index>(reinterpret_cast<std::uintptr_t>(pDst) % kLineBytes);
                TurnLine(pDst - past, pSrc - past / 4 * srcPitch, srcPitch);
            }
        }
    }
    _mm_sfence();
}
