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
}  // namespace

TEST(UMDSurfaceCopy, ToLocked_EveryFormatPaddingAndRectangle_CopiesThosePixelsAndNoOther)
{
    for (const Case& c : AllCases())
    {
        Image memory(c.Width * c.BytesPerPixel + c.MemoryPadding, c.Height, kSourceGuard);
        Image locked(c.Width * c.BytesPerPixel + c.LockedPadding, c.Height);
        memory.Number(1);
        const D3DDDI_SURFACEINFO info = {c.Width, c.Height, 0, memory.Bits(), memory.Pitch, 0};
        UMDCopyToLocked({static_cast<INT>(locked.Pitch), locked.Bits()}, info, c.WithRect ? &c.Rect : nullptr,
            Pixels(c.BytesPerPixel));

        const RECT area = c.WithRect ? c.Rect : RECT{0, 0, static_cast<LONG>(c.Width), static_cast<LONG>(c.Height)};
        for (UINT row = 0; row < c.Height; ++row)
        {
            for (UINT byte = 0; byte < locked.Pitch; ++byte)
            {
                const LONG x = static_cast<LONG>(byte / c.BytesPerPixel);
                const LONG y = static_cast<LONG>(row);
                const bool inside = x >= area.left && x < area.right && y >= area.top && y < area.bottom;
                ASSERT_EQ(locked.At(row, byte), inside ? memory.At(row, byte) : kGuard)
                    << "width " << c.Width << " bytes " << c.BytesPerPixel << " row " << row << " byte " << byte;
            }
        }
        EXPECT_TRUE(locked.MarginsIntact());
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
        const D3DDDI_SURFACEINFO info = {c.Width, c.Height, 0, memory.Bits(), memory.Pitch, 0};
        UMDCopyFromLocked(info, {static_cast<INT>(locked.Pitch), locked.Bits()}, Pixels(c.BytesPerPixel));
        for (UINT row = 0; row < c.Height; ++row)
        {
            for (UINT byte = 0; byte < memory.Pitch; ++byte)
                ASSERT_EQ(memory.At(row, byte), byte < c.Width * c.BytesPerPixel ? locked.At(row, byte) : kGuard);
        }
        EXPECT_TRUE(memory.MarginsIntact());
    }
}

TEST(UMDSurfaceCopy, ToLocked_PackedMemoryAndPaddedSurface_RowsLandAtTheSurfacesPitch)
{
    Image memory(8, 3, kSourceGuard);
    Image locked(12, 3);
    memory.Number(1);
    const D3DDDI_SURFACEINFO info = {2, 3, 0, memory.Bits(), memory.Pitch, 0};
    UMDCopyToLocked({12, locked.Bits()}, info, nullptr, Pixels(4));
    for (UINT row = 0; row < 3; ++row)
    {
        for (UINT byte = 0; byte < 12; ++byte)
            ASSERT_EQ(locked.At(row, byte), byte < 8 ? memory.At(row, byte) : kGuard) << row << ' ' << byte;
    }
    EXPECT_TRUE(locked.MarginsIntact());
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
        Image memory(5 * 4 + 4, 4, kSourceGuard);
        Image locked(5 * 4 + 8, 4);
        memory.Number(3);
        const D3DDDI_SURFACEINFO info = {5, 4, 0, memory.Bits(), memory.Pitch, 0};
        UMDCopyToLocked({static_cast<INT>(locked.Pitch), locked.Bits()}, info, &c.Rect, Pixels(4));
        for (LONG y = 0; y < 4; ++y)
        {
            for (LONG x = 0; x < 7; ++x)
            {
                const bool inside =
                    x >= c.Inside.left && x < c.Inside.right && y >= c.Inside.top && y < c.Inside.bottom;
                const UINT row = static_cast<UINT>(y);
                const UINT byte = static_cast<UINT>(x) * 4;
                ASSERT_EQ(locked.At(row, byte), inside ? memory.At(row, byte) : kGuard) << c.Rect.left << ' ' << x;
            }
        }
        EXPECT_TRUE(locked.MarginsIntact());
    }
}

TEST(UMDSurfaceCopy, ToLocked_TwoByteFormatCountedAsFour_CopiesWholeRowsAndNoMore)
{
    // 7 pixels of two bytes, in rows of 16: four bytes a pixel would be 28 bytes.
    Image memory(16, 6, kSourceGuard);
    Image locked(16, 6);
    memory.Number(5);
    const D3DDDI_SURFACEINFO info = {7, 6, 0, memory.Bits(), memory.Pitch, 0};
    UMDCopyToLocked({16, locked.Bits()}, info, nullptr, Pixels(4));
    for (UINT row = 0; row < 6; ++row)
    {
        for (UINT byte = 0; byte < 16; ++byte)
            ASSERT_EQ(locked.At(row, byte), memory.At(row, byte));
    }
    EXPECT_TRUE(locked.MarginsIntact());
}

TEST(UMDSurfaceCopy, BothWays_RowsOfNoWholePixels_StopAtTheLastWholeOne)
{
    for (const auto& [memoryPitch, lockedPitch] : {std::pair{19U, 24U}, {24U, 19U}, {19U, 19U}})
    {
        Image memory(memoryPitch, 1);
        Image locked(lockedPitch, 1);
        const D3DDDI_SURFACEINFO info = {5, 1, 0, memory.Bits(), memory.Pitch, 0};
        memory.Number(1);
        UMDCopyToLocked({static_cast<INT>(lockedPitch), locked.Bits()}, info, nullptr, Pixels(4));
        for (UINT byte = 0; byte < lockedPitch; ++byte)
            EXPECT_EQ(locked.At(0, byte), byte < 16 ? memory.At(0, byte) : kGuard) << byte;
        EXPECT_TRUE(locked.MarginsIntact());
        Image other(memoryPitch, 1);
        const D3DDDI_SURFACEINFO otherInfo = {5, 1, 0, other.Bits(), other.Pitch, 0};
        locked.Number(5);
        UMDCopyFromLocked(otherInfo, {static_cast<INT>(lockedPitch), locked.Bits()}, Pixels(4));
        for (UINT byte = 0; byte < memoryPitch; ++byte)
            EXPECT_EQ(other.At(0, byte), byte < 16 ? locked.At(0, byte) : kGuard) << byte;
        EXPECT_TRUE(other.MarginsIntact());
    }
}

TEST(UMDSurfaceCopy, ToLocked_NoBytesPerPixel_CopiesNothing)
{
    Image memory(16, 4, kSourceGuard);
    Image locked(16, 4);
    memory.Number(5);
    const D3DDDI_SURFACEINFO info = {4, 4, 0, memory.Bits(), memory.Pitch, 0};
    UMDCopyToLocked({16, locked.Bits()}, info, nullptr, Pixels(0));
    for (UINT byte = 0; byte < 64; ++byte)
        ASSERT_EQ(locked.Bits()[byte], kGuard);
}
