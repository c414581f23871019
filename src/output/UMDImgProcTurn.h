// A turn of 32-bit words as its walks see it, and what they have in common.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Writes the word at (x, y) of the source to pDst + x * DstPitch + y * 4.
struct UMDImgProcTurn
{
    using Index = std::ptrdiff_t;

    static constexpr Index kLineBytes = 64;
    static constexpr Index kLineWords = kLineBytes / 4;
    /// Columns of a strip: each is one page of the destination at a time.
    static constexpr Index kStripColumns = 768;
    /// Lines a multiple of this apart are slow to stream one by one while they are in the caches; several that follow
    /// each other are not. Measured; which part of the memory they contend for is not known.
    static constexpr Index kAliasBytes = 1024;

    BYTE* pDst;
    Index DstPitch;  ///< bytes from row to row; negative if rows go upwards; a multiple of 4
    const BYTE* pSrc;
    Index SrcPitch;
    Index Columns;  ///< of the source
    Index Rows;

    const BYTE* Source(Index x, Index y) const { return pSrc + y * SrcPitch + x * 4; }
    BYTE* Destination(Index x, Index y) const { return pDst + x * DstPitch + y * 4; }

    /// How many words of a line lie in front of a column.
    Index Shift(Index x) const
    {
        return static_cast<Index>(reinterpret_cast<std::uintptr_t>(Destination(x, 0)) % kLineBytes / 4);
    }
    /// Whether all columns begin at the same place of a line.
    bool HasEvenColumns() const { return DstPitch % kLineBytes == 0; }
    bool DoesAlias() const { return DstPitch % kAliasBytes == 0 && SrcPitch % kAliasBytes != 0; }

    /// Whether each column ends where the next one in memory begins, in an image large enough for wide registers. The
    /// line that two columns share is then written once and whole, like all others.
    bool HasSeams() const
    {
        return (DstPitch == Rows * 4 || DstPitch == -Rows * 4) && Columns >= kLineWords && Rows >= 2 * kLineWords;
    }

    /// Moves some rows of a column, word by word.
    void MoveWords(Index x, Index yBegin, Index yEnd) const
    {
        for (Index y = yBegin; y < yEnd; ++y)
            std::memcpy(Destination(x, y), Source(x, y), 4);
    }

    /// Turns an image with seams. @param turnStrip turns some columns, a multiple of step, with the seams within them
    /// and in front of them.
    void ByStrips(void (*turnStrip)(const UMDImgProcTurn&, Index, Index), Index step) const
    {
        const Index columns = Columns - Columns % step;
        for (Index begin = 0; begin < columns; begin += kStripColumns)
            turnStrip(*this, begin, std::min(begin + kStripColumns, columns));
        // The last columns once more, together with some of those before.
        if (columns < Columns)
            turnStrip(*this, Columns - step, Columns);
        // The ends of the whole image are no seams.
        const Index first = DstPitch > 0 ? 0 : Columns - 1;
        const Index last = Columns - 1 - first;
        MoveWords(first, 0, kLineWords - Shift(first));
        MoveWords(last, Rows - (Rows + Shift(last)) % kLineWords, Rows);
    }
};
