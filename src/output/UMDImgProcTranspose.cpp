// How the walk was found: a turn reads rows and writes columns, so one side always jumps from page to page. Plain tiles
// written where they are read fetch each line of the destination from memory first, and break it into parts. Here a
// tile is turned in a small buffer that stays in the nearest cache and leaves it by whole lines that are not fetched;
// tiles follow each other along the rows, and a strip of them is few enough columns that each one's page stays in the
// second-level TLB. docs/performance.md has the figures.
#include "output/UMDImgProcWalks.h"

#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace
{
using Index = std::ptrdiff_t;

constexpr Index kLineBytes = 64;
constexpr Index kLineWords = kLineBytes / 4;
/// Columns of a strip: each is one page of the destination at a time.
constexpr Index kStripColumns = 768;
/// How far ahead the rows of a tile are fetched, in tiles.
constexpr Index kAhead = 3;
/// Lines that are this far apart share so few sets of the caches that streaming one by one throws them out one by one.
constexpr Index kAliasBytes = 1024;

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
    /// How many rows further up a column's windows of one line each begin.
    Index Shift(Index x) const
    {
        return static_cast<Index>(reinterpret_cast<std::uintptr_t>(Destination(x, 0)) % kLineBytes / 4);
    }
};

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

/// 16 x 16 words of the source: one line of each of 16 columns.
struct Tile
{
    alignas(kLineBytes) BYTE Lines[kLineWords][kLineBytes];
};

/// Turns 4 x 4 words at (x, y) of a tile. @param p the first of them in the source.
void TurnSquare(Tile& tile, Index x, Index y, const BYTE* p, Index pitch)
{
    const auto load = [=](Index n) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + n * pitch)); };
    const auto store = [&, x, y](Index n, __m128i words) {
        _mm_store_si128(reinterpret_cast<__m128i*>(tile.Lines[x + n] + y * 4), words);
    };
    const __m128i left01 = _mm_unpacklo_epi32(load(0), load(1));
    const __m128i left23 = _mm_unpacklo_epi32(load(2), load(3));
    const __m128i right01 = _mm_unpackhi_epi32(load(0), load(1));
    const __m128i right23 = _mm_unpackhi_epi32(load(2), load(3));
    store(0, _mm_unpacklo_epi64(left01, left23));
    store(1, _mm_unpackhi_epi64(left01, left23));
    store(2, _mm_unpacklo_epi64(right01, right23));
    store(3, _mm_unpackhi_epi64(right01, right23));
}

void TurnTile(Tile& tile, const BYTE* p, Index pitch)
{
    for (Index y = 0; y < kLineWords; y += 4)
        for (Index x = 0; x < kLineWords; x += 4)
            TurnSquare(tile, x, y, p + y * pitch + x * 4, pitch);
}

// The functions from here on that are kept out of line would be half as fast inside of the loops around them: those
// take the registers that these need.

/// Turns a tile and fetches the rows of one to come, at pAhead.
__declspec(noinline) void KeepTile(Tile& tile, const BYTE* p, Index pitch, const BYTE* pAhead)
{
    for (Index y = 0; y < kLineWords; ++y)
        Prefetch(pAhead + y * pitch);
    TurnTile(tile, p, pitch);
}

/// Streams the lines of tiles that lie below each other, each column's together.
/// @param kept   all but the last.
/// @param p      the last one's place in the source.
/// @param pAhead the place of one to come, whose rows are fetched.
template <std::size_t Kept>
__declspec(noinline) void StreamTiles(
    BYTE* pDst, Index dstPitch, const std::array<Tile, Kept>& kept, const BYTE* p, Index pitch, const BYTE* pAhead)
{
    const auto stream = [](BYTE* pLine, const Tile& tile, Index x) {
        const __m128i* pParts = reinterpret_cast<const __m128i*>(tile.Lines[x]);
        StreamLine(pLine, pParts[0], pParts[1], pParts[2], pParts[3]);
    };
    Tile last;
    TurnTile(last, p, pitch);
    for (Index x = 0; x < kLineWords; ++x, pDst += dstPitch)
    {
        Prefetch(pAhead + x * pitch);
        BYTE* pLine = pDst;
        for (const Tile& tile : kept)
        {
            stream(pLine, tile, x);
            pLine += kLineBytes;
        }
        stream(pLine, last, x);
    }
}

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
        for (Index n = std::max<Index>(y, 0); n < std::min(y + kLineWords, turn.Rows); ++n)
            std::memcpy(turn.Destination(x, n), turn.Source(x, n), 4);
    }
}

/// Destination rows that all begin at the same place of a line: whole tiles.
/// @tparam Together how many lines of each column are streamed together.
template <Index Together>
void TurnByTiles(const Turn& turn)
{
    constexpr Index kRows = Together * kLineWords;
    // With two lines 48 KiB of the stack.
    std::array<std::array<Tile, Together - 1>, kStripColumns / kLineWords> kept;
    const Index shift = turn.Shift(0);
    for (Index begin = 0; begin < turn.Columns; begin += kStripColumns)
    {
        const Index end = std::min(begin + kStripColumns, turn.Columns);
        for (Index y = -shift; y < turn.Rows; y += kRows)
        {
            const Index tiles = y >= 0 && y + kRows <= turn.Rows ? (end - begin) / kLineWords : 0;
            const auto source = [&, y](Index tile, Index line) {
                return turn.Source(begin + tile * kLineWords, y + line * kLineWords);
            };
            // Behind the last tile of a line's rows comes the first of the next.
            const auto ahead = [&](Index tile, Index line) {
                return tile + kAhead < tiles ? source(tile + kAhead, line) : source(tile + kAhead - tiles, line + 1);
            };
            for (Index line = 0; line < Together - 1; ++line)
                for (Index tile = 0; tile < tiles; ++tile)
                    KeepTile(kept[tile][line], source(tile, line), turn.SrcPitch, ahead(tile, line));
            for (Index tile = 0; tile < tiles; ++tile)
                StreamTiles(turn.Destination(begin + tile * kLineWords, y), turn.DstPitch, kept[tile],
                    source(tile, Together - 1), turn.SrcPitch, ahead(tile, Together - 1));
            for (Index line = 0; line < Together; ++line)
                TurnWindow(turn, begin + tiles * kLineWords, end, y + shift + line * kLineWords);
        }
    }
}

/// Destination rows that begin anywhere: each column has windows of its own.
void TurnByColumns(const Turn& turn)
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
}
}  // namespace

void UMDImgProcTranspose(
    BYTE* pDst, Index dstPitch, const BYTE* pSrc, Index srcPitch, std::size_t width, std::size_t height)
{
    const Turn turn = {pDst, dstPitch, pSrc, srcPitch, static_cast<Index>(width), static_cast<Index>(height)};
    if (dstPitch % kLineBytes != 0)
        TurnByColumns(turn);
    else if (dstPitch % kAliasBytes != 0)
        TurnByTiles<1>(turn);
    else
        TurnByTiles<2>(turn);
    _mm_sfence();
}
