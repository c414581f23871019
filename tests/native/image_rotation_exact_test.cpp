// UMDImgProcRotation between blocks of exact size, beside a loop that puts one pixel after the other where it belongs.
#include "output/UMDImgProc.h"

#include "ImageRegistersTest.h"
#include "ddi/ddi.h"
#include "exact_memory.h"

#include <gtest/gtest.h>

namespace
{
struct Turn
{
    UINT Rotation, Width, Height, Padding;
    UINT BytesPerPixel = 4;
};

std::size_t DestinationPixel(const Turn& t, UINT x, UINT y)
{
    switch (t.Rotation)
    {
    case D3DDDI_ROTATION_90:
        return std::size_t{t.Width - 1 - x} * t.Height + y;
    case D3DDDI_ROTATION_180:
        return std::size_t{t.Height - 1 - y} * t.Width + (t.Width - 1 - x);
    case D3DDDI_ROTATION_270:
        return std::size_t{x} * t.Height + (t.Height - 1 - y);
    default:
        return std::size_t{y} * t.Width + x;
    }
}

void Check(const Turn& t, std::size_t dstShift, std::size_t srcShift)
{
    // Turned pixels are words, which reach beyond narrow pixels and end before wide ones do.
    const std::size_t pixel = t.BytesPerPixel;
    const std::size_t moved = t.Rotation == D3DDDI_ROTATION_IDENTITY ? pixel : 4;
    UINT pitch = t.Width * t.BytesPerPixel + t.Padding, width = t.Width, height = t.Height;
    const UINT srcPitch = pitch;
    ExactBytes src(std::size_t{t.Height - 1} * pitch + (t.Width - 1) * pixel + moved, srcShift);
    ExactBytes dst((std::size_t{t.Width} * t.Height - 1) * pixel + moved, dstShift);
    src.FillWithNoise(t.Width * 64 + t.Height);
    std::vector<BYTE> expected = UntouchedBytes(dst.Size());
    for (UINT y = 0; y < t.Height; ++y)
    {
        for (UINT x = 0; x < t.Width; ++x)
            std::copy_n(src.Get() + y * srcPitch + x * pixel, moved, &expected[DestinationPixel(t, x, y) * pixel]);
    }

    EXPECT_EQ(UMDImgProcRotation(dst.Get(), src.Get(), &pitch, &width, &height, t.BytesPerPixel, t.Rotation), S_OK);

    ASSERT_TRUE(dst.Holds(expected) && dst.IsFrontUntouched())
        << "rotation " << t.Rotation << ' ' << t.Width << 'x' << t.Height << " padding " << t.Padding << " bytes "
        << t.BytesPerPixel << " shift " << dstShift << ' ' << srcShift;
}

class ImageRotationExact : public ImageTurnTest
{
};

INSTANTIATE_TEST_SUITE_P(Turns, ImageRotationExact,
    testing::Combine(
        testing::Values(D3DDDI_ROTATION_IDENTITY, D3DDDI_ROTATION_90, D3DDDI_ROTATION_180, D3DDDI_ROTATION_270),
        testing::ValuesIn(kImageRegisters)));

TEST_P(ImageRotationExact, SizesTo40_SameBytesAsTheLoop)
{
    for (UINT height = 1; height <= 40; ++height)
    {
        for (UINT width = 1; width <= 40; ++width)
            ASSERT_NO_FATAL_FAILURE(Check({Rotation(), width, height, 0}, 0, 0));
    }
}

TEST_P(ImageRotationExact, EachWordOfALineAndOddAddresses_SameBytesAsTheLoop)
{
    for (std::size_t shift = 0; shift <= 64; shift += 4)
    {
        for (UINT size : {1u, 15u, 16u, 17u, 48u, 65u})
        {
            ASSERT_NO_FATAL_FAILURE(Check({Rotation(), size, 81 - size, 0}, shift, 0));
            ASSERT_NO_FATAL_FAILURE(Check({Rotation(), 81 - size, size, 3}, shift, 1));
            ASSERT_NO_FATAL_FAILURE(Check({Rotation(), size, 64, 20}, shift + 1, 2));
        }
    }
}

// Rows of the turned image that are whole lines, and whole multiples of 1024 bytes: the walks by blocks.
TEST_P(ImageRotationExact, HeightsOfWholeLines_SameBytesAsTheLoop)
{
    for (UINT height : {16u, 48u, 64u, 256u, 512u})
    {
        for (UINT width : {1u, 3u, 4u, 5u, 15u, 16u, 33u, 783u})
        {
            for (std::size_t shift : {0u, 4u, 60u})
                ASSERT_NO_FATAL_FAILURE(Check({Rotation(), width, height, 12}, shift, 0));
        }
    }
}

TEST_P(ImageRotationExact, PixelsOfOtherSizes_SameBytesAsTheLoop)
{
    for (UINT bytesPerPixel : {1u, 2u, 3u, 8u})
    {
        // Words of narrow pixels overlap where they land: the loop and the routine go in the same order.
        for (UINT size : {1u, 2u, 5u, 17u})
            ASSERT_NO_FATAL_FAILURE(Check({Rotation(), size, 19 - size, 3, bytesPerPixel}, 0, 0));
    }
}
}  // namespace
