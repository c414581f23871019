// Copies between the runtime's pixels and locked surfaces, on plain memory with guard bytes around it.
#include "resources/UMDSurfaceCopy.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
constexpr BYTE kGuard = 0xEE;
constexpr BYTE kSourceGuard = 0xDD;  ///< another one: what is read beyond a source shows where it lands

/// An image of rows with padding. Every byte of it can be told from every other.
struct Image
{
    Image(UINT pitch, UINT height, BYTE guard = kGuard)
        : Pitch(pitch), Height(height), Bytes(std::size_t{pitch} * height + 2 * kMargin, guard)
    {
    }

    BYTE* Bits() { return Bytes.data() + kMargin; }
    BYTE At(UINT row, UINT byte) const { return Bytes[kMargin + std::size_t{row} * Pitch + byte]; }

    void Number(BYTE seed)
    {
        for (std::size_t i = 0; i < std::size_t{Pitch} * Height; ++i)
            Bits()[i] = static_cast<BYTE>(seed + i * 7 + (i >> 8) * 31);
    }

    bool MarginsIntact() const
    {
        for (std::size_t i = 0; i < kMargin; ++i)
        {
            if (Bytes[i] != kGuard || Bytes[Bytes.size() - 1 - i] != kGuard)
                return false;
        }
        return true;
    }

    static constexpr std::size_t kMargin = 256;
    UINT Pitch;
    UINT Height;
    std::vector<BYTE> Bytes;
};

/// A format of so many bytes a pixel; of none, when there are no pixels to copy.
UMDPixelLayout Pixels(UINT bytes)
{
    return {D3DDDIFMT_UNKNOWN, 1, 1, bytes ? 1U : 0U, {{1, 1, bytes, 1}}};
}

struct Case
{
    UINT Width, Height, BytesPerPixel;
    UINT MemoryPadding, LockedPadding;  // bytes behind a row
    RECT Rect;
    bool WithRect;
};

std::vector<Case> AllCases()
{
    const RECT rects[] = {{0, 0, 0, 0}, {0, 0, 1, 1}, {1, 2, 4, 5}, {0, 3, 5, 4}, {2, 0, 5, 5}};
    std::vector<Case> cases;
    for (UINT bytesPerPixel = 1; bytesPerPixel <= 4; ++bytesPerPixel)
    {
        for (UINT width : {1u, 5u, 7u, 33u})
        {
            for (UINT padding : {1u, 3u, 16u})
            {
                cases.push_back({width, 5, bytesPerPixel, padding, 2, {}, false});
                cases.push_back({width, 5, bytesPerPixel, padding, 0, {}, false});
            }
        }
        for (const RECT& rect : rects)
            cases.push_back({5, 5, bytesPerPixel, 3, 7, rect, true});
    }
    return cases;
}

D3DDDI_SURFACEINFO InfoOf(Image& memory, UINT width)
{
    return {width, memory.Height, 0, memory.Bits(), memory.Pitch, 0};
}

D3DLOCKED_RECT LockedOf(Image& locked)
{
    return {static_cast<INT>(locked.Pitch), locked.Bits()};
}

/// The destination has the source's pixels inside the area, and guard bytes everywhere else.
void ExpectCopied(const Image& destination, const Image& source, const RECT& area, UINT bytesPerPixel)
{
    for (UINT row = 0; row < destination.Height; ++row)
    {
        for (UINT byte = 0; byte < destination.Pitch; ++byte)
        {
            const LONG x = static_cast<LONG>(byte / bytesPerPixel);
            const LONG y = static_cast<LONG>(row);
            const bool inside = x >= area.left && x < area.right && y >= area.top && y < area.bottom;
            ASSERT_EQ(destination.At(row, byte), inside ? source.At(row, byte) : kGuard)
                << "row " << row << " byte " << byte;
        }
    }
    EXPECT_TRUE(destination.MarginsIntact());
}

/// Copies memory of so many pixels a row to a locked surface. Expects the area's pixels there, and no others.
void ExpectToLocked(Image&& memory, Image&& locked, UINT width, UINT bytesPerPixel, const RECT* pRect, const RECT& area)
{
    memory.Number(1);
    UMDCopyToLocked(LockedOf(locked), InfoOf(memory, width), pRect, Pixels(bytesPerPixel));
    ExpectCopied(locked, memory, area, 4);
}
}  // namespace

TEST(UMDSurfaceCopy, ToLocked_EveryFormatPaddingAndRectangle_CopiesThosePixelsAndNoOther)
{
    for (const Case& c : AllCases())
    {
        SCOPED_TRACE(testing::Message() << "width " << c.Width << " bytes " << c.BytesPerPixel);
        Image memory(c.Width * c.BytesPerPixel + c.MemoryPadding, c.Height, kSourceGuard);
        Image locked(c.Width * c.BytesPerPixel + c.LockedPadding, c.Height);
        memory.Number(1);
        UMDCopyToLocked(
            LockedOf(locked), InfoOf(memory, c.Width), c.WithRect ? &c.Rect : nullptr, Pixels(c.BytesPerPixel));
        const RECT whole = {0, 0, static_cast<LONG>(c.Width), static_cast<LONG>(c.Height)};
        ExpectCopied(locked, memory, c.WithRect ? c.Rect : whole, c.BytesPerPixel);
    }
}

TEST(UMDSurfaceCopy, FromLocked_EveryFormatAndPadding_CopiesThePixelsAndNoPadding)
{
    for (const Case& c : AllCases())
    {
        if (c.WithRect || c.LockedPadding == 0)
            continue;
        Image memory(c.Width * c.BytesPerPixel + c.MemoryPadding, c.Height);
        Image locked(c.Width * c.BytesPerPixel + c.LockedPadding, c.Height, kSourceGuard);
        locked.Number(9);
        UMDCopyFromLocked(InfoOf(memory, c.Width), LockedOf(locked), Pixels(c.BytesPerPixel));
        ExpectCopied(memory, locked, {0, 0, static_cast<LONG>(c.Width), static_cast<LONG>(c.Height)}, c.BytesPerPixel);
    }
}

TEST(UMDSurfaceCopy, ToLocked_PackedMemoryAndPaddedSurface_RowsLandAtTheSurfacesPitch)
{
    ExpectToLocked(Image(8, 3, kSourceGuard), Image(12, 3), 2, 4, nullptr, {0, 0, 2, 3});
}

TEST(UMDSurfaceCopy, ToLocked_RectanglePartlyOutside_CopiesOnlyWhatIsInside)
{
    const struct
    {
        RECT Rect, Inside;
    } cases[] = {
        {{-3, -2, 2, 2}, {0, 0, 2, 2}},
        {{3, 3, 100, 100}, {3, 3, 5, 4}},
        {{100, 100, 200, 200}, {0, 0, 0, 0}},
        {{4, 3, 1, 1}, {0, 0, 0, 0}},
        {{4, 1, 1, 3}, {0, 0, 0, 0}},
        {{1, 3, 3, 1}, {0, 0, 0, 0}},
        {{-1000000000, -1000000000, 1000000000, 1000000000}, {0, 0, 5, 4}},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.Rect.left);
        ExpectToLocked(Image(5 * 4 + 4, 4, kSourceGuard), Image(5 * 4 + 8, 4), 5, 4, &c.Rect, c.Inside);
    }
}

TEST(UMDSurfaceCopy, ToLocked_TwoByteFormatCountedAsFour_CopiesWholeRowsAndNoMore)
{
    // 7 pixels of two bytes, in rows of 16: four bytes a pixel would be 28 bytes.
    ExpectToLocked(Image(16, 6, kSourceGuard), Image(16, 6), 7, 4, nullptr, {0, 0, 4, 6});
}

TEST(UMDSurfaceCopy, BothWays_RowsOfNoWholePixels_StopAtTheLastWholeOne)
{
    for (const auto& [memoryPitch, lockedPitch] : {std::pair{19U, 24U}, {24U, 19U}, {19U, 19U}})
    {
        Image memory(memoryPitch, 1), locked(lockedPitch, 1), other(memoryPitch, 1);
        memory.Number(1);
        UMDCopyToLocked(LockedOf(locked), InfoOf(memory, 5), nullptr, Pixels(4));
        ExpectCopied(locked, memory, {0, 0, 4, 1}, 4);
        locked.Number(5);
        UMDCopyFromLocked(InfoOf(other, 5), LockedOf(locked), Pixels(4));
        ExpectCopied(other, locked, {0, 0, 4, 1}, 4);
    }
}

TEST(UMDSurfaceCopy, ToLocked_NoBytesPerPixel_CopiesNothing)
{
    ExpectToLocked(Image(16, 4, kSourceGuard), Image(16, 4), 4, 0, nullptr, {});
}
