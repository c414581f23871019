// UMDImgProcRotation, byte for byte, beside a loop that puts one pixel after the other where it belongs.
#include "output/UMDImgProc.h"

#include "ImageMemory.h"
#include "ImageRegistersTest.h"
#include "TraceCapture.h"
#include "TraceMask.h"
#include "ddi/ddi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <ostream>

using namespace tesslo::test;

namespace
{
constexpr BYTE kUntouched = 0xC3;
constexpr UINT kTurns[] = {D3DDDI_ROTATION_IDENTITY, D3DDDI_ROTATION_90, D3DDDI_ROTATION_180, D3DDDI_ROTATION_270};

struct Turn
{
    UINT Rotation, Width, Height, Padding;
    UINT BytesPerPixel = 4;
    UINT Shift = 0;  ///< bytes that both addresses lie behind, or in front of, the edge
};

std::ostream& operator<<(std::ostream& out, const Turn& t)
{
    return out << "rotation " << t.Rotation << ' ' << t.Width << 'x' << t.Height << " padding " << t.Padding
               << " bytes " << t.BytesPerPixel << " shift " << t.Shift;
}

std::size_t DestinationOffset(const Turn& t, UINT x, UINT y)
{
    const std::size_t b = t.BytesPerPixel;
    switch (t.Rotation)
    {
    case D3DDDI_ROTATION_90:
        return ((t.Width - 1 - x) * std::size_t{t.Height} + y) * b;
    case D3DDDI_ROTATION_180:
        return ((t.Height - 1 - y) * std::size_t{t.Width} + (t.Width - 1 - x)) * b;
    case D3DDDI_ROTATION_270:
        return (x * std::size_t{t.Height} + (t.Height - 1 - y)) * b;
    default:
        return (y * std::size_t{t.Width} + x) * b;
    }
}

/// Turned pixels are words; copied ones are as wide as they are.
UINT MovedBytes(const Turn& t)
{
    return t.Rotation == D3DDDI_ROTATION_IDENTITY ? t.BytesPerPixel : 4;
}

std::vector<BYTE> Expected(const Turn& t, const BYTE* pSrc, UINT pitch, std::size_t room)
{
    std::vector<BYTE> bytes(room, kUntouched);
    for (UINT y = 0; y < t.Height; ++y)
    {
        for (UINT x = 0; x < t.Width; ++x)
        {
            BYTE* pTo = &bytes[DestinationOffset(t, x, y)];
            const BYTE* pFrom = pSrc + std::size_t{y} * pitch + std::size_t{x} * t.BytesPerPixel;
            // A call of memcpy for each pixel would take most of a frame's time, unless it is told the count.
            if (MovedBytes(t) == 4)
                std::memcpy(pTo, pFrom, 4);
            else
                std::copy_n(pFrom, MovedBytes(t), pTo);
        }
    }
    return bytes;
}

void Check(const Turn& t, GuardedBytes::Edge edge)
{
    // A word of a narrow pixel reaches beyond it.
    const UINT excess = MovedBytes(t) > t.BytesPerPixel ? MovedBytes(t) - t.BytesPerPixel : 0;
    const UINT unread = t.BytesPerPixel > MovedBytes(t) ? t.BytesPerPixel - MovedBytes(t) : 0;
    const UINT pitch = t.Width * t.BytesPerPixel + t.Padding;
    const std::size_t srcBytes = std::size_t{t.Height} * pitch - t.Padding + excess - unread;
    const std::size_t dstBytes = std::size_t{t.Height} * t.Width * t.BytesPerPixel + excess - unread;
    GuardedBytes src(srcBytes + t.Shift, edge);
    GuardedBytes dst(dstBytes + t.Shift, edge);
    const UINT shift = edge == GuardedBytes::Edge::Front ? t.Shift : 0;
    FillWithNoise(src.Get(), srcBytes + t.Shift, t.Width * 64 + t.Height);
    std::memset(dst.Get(), kUntouched, dstBytes + t.Shift);
    const std::vector<BYTE> expected = Expected(t, src.Get() + shift, pitch, dstBytes);

    UINT outPitch = pitch, outWidth = t.Width, outHeight = t.Height;
    ASSERT_EQ(UMDImgProcRotation(
                  dst.Get() + shift, src.Get() + shift, &outPitch, &outWidth, &outHeight, t.BytesPerPixel, t.Rotation),
        S_OK);

    ASSERT_EQ(std::memcmp(dst.Get() + shift, expected.data(), dstBytes), 0) << t;
    for (UINT i = 0; i < t.Shift; ++i)
        ASSERT_EQ(dst.Get()[shift != 0 ? i : dstBytes + i], kUntouched) << t;
    const bool turned = t.Rotation == D3DDDI_ROTATION_90 || t.Rotation == D3DDDI_ROTATION_270;
    EXPECT_EQ(outWidth, turned ? t.Height : t.Width) << t;
    EXPECT_EQ(outHeight, turned ? t.Width : t.Height) << t;
    EXPECT_EQ(outPitch, turned ? t.Height * t.BytesPerPixel : pitch) << t;
}

void CheckAtBothEdges(const Turn& t)
{
    ASSERT_NO_FATAL_FAILURE(Check(t, GuardedBytes::Edge::Front));
    ASSERT_NO_FATAL_FAILURE(Check(t, GuardedBytes::Edge::Back));
}
}  // namespace

class ImageRotation : public ImageTurnTest
{
};

INSTANTIATE_TEST_SUITE_P(
    Turns, ImageRotation, testing::Combine(testing::ValuesIn(kTurns), testing::ValuesIn(kImageRegisters)));

TEST_P(ImageRotation, SizesTo64_SameBytesAsTheLoop)
{
    for (UINT height = 1; height <= 64; ++height)
    {
        for (UINT width = 1; width <= 64; ++width)
            ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), width, height, 0}));
    }
}

TEST_P(ImageRotation, SmallSizes_PaddedAndAtOddAddresses_SameBytesAsTheLoop)
{
    for (UINT shift : {1u, 2u, 3u, 4u, 8u, 12u, 20u, 60u})
    {
        for (UINT size : {1u, 15u, 16u, 17u, 31u, 48u, 65u})
        {
            for (UINT padding : {0u, 1u, 4u, 64u})
                ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), size, 80 - size, padding, 4, shift}));
        }
    }
}

TEST_P(ImageRotation, OddFrames_SameBytesAsTheLoop)
{
    const std::pair<UINT, UINT> sizes[] = {
        {1279, 719}, {1280, 720}, {1366, 768}, {1919, 1079}, {1920, 1080}, {3440, 1440}};
    for (const auto& [width, height] : sizes)
    {
        ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), width, height, 0}));
        ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), width, height, 20}));
    }
}

// Turned rows of 1024, 2048 and 3072 bytes.
TEST_P(ImageRotation, HeightsOfManyWholeLines_ShiftedWithinThem_SameBytesAsTheLoop)
{
    for (UINT height : {256u, 512u, 768u})
    {
        for (UINT width : {1u, 15u, 16u, 47u, 401u, 800u})
        {
            for (UINT shift : {0u, 4u, 16u, 60u})
                ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), width, height, 12, 4, shift}));
        }
    }
}

// Rows of either image fall onto the same few lines of the cache, and so do those of both.
TEST_P(ImageRotation, RowsOfWholePages_SameBytesAsTheLoop)
{
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), 1024, 1024, 0}));
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), 1024, 512, 0}));
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), 512, 1024, 0}));
}

TEST_P(ImageRotation, RandomSizes_SameBytesAsTheLoop)
{
    const auto seed = static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int n = 0; n < 100; ++n)
    {
        const UINT width = 1 + random() % 1700;
        const UINT height = 1 + random() % 150;
        const UINT padding = static_cast<UINT>(random() % 3) * static_cast<UINT>(random() % 40);
        ASSERT_NO_FATAL_FAILURE(
            CheckAtBothEdges({Rotation(), width, height, padding, 4, static_cast<UINT>(random() % 17)}));
    }
}

TEST_P(ImageRotation, PixelsOfOtherSizes_WordsMovedInOrder)
{
    for (UINT bytesPerPixel : {1u, 2u, 3u, 8u})
    {
        for (UINT width : {1u, 2u, 5u, 16u, 33u})
        {
            for (UINT height : {1u, 2u, 7u, 32u})
            {
                for (UINT padding : {0u, 3u})
                    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({Rotation(), width, height, padding, bytesPerPixel}));
            }
        }
    }
}

TEST_P(ImageRotation, NoWidthOrNoHeight_TouchesNothing)
{
    GuardedBytes nothing(0, GuardedBytes::Edge::Back);
    for (const auto& [width, height] : {std::pair{0u, 9u}, std::pair{9u, 0u}, std::pair{0u, 0u}})
    {
        UINT outPitch = 36, outWidth = width, outHeight = height;
        EXPECT_EQ(
            UMDImgProcRotation(nothing.Get(), nothing.Get(), &outPitch, &outWidth, &outHeight, 4, Rotation()), S_OK);
    }
}

TEST(ImageRotationTwoPixels, EachTurn_OrderOfThePixels)
{
    constexpr UINT a = 0x11223344, b = 0xAABBCCDD;
    const UINT src[2] = {a, b};
    const UINT orders[][3] = {{D3DDDI_ROTATION_90, b, a}, {D3DDDI_ROTATION_180, b, a}, {D3DDDI_ROTATION_270, a, b}};
    for (const auto& [rotation, first, second] : orders)
    {
        UINT dst[2] = {};
        UINT pitch = 8, width = 2, height = 1;
        EXPECT_EQ(UMDImgProcRotation(reinterpret_cast<BYTE*>(dst), reinterpret_cast<const BYTE*>(src), &pitch, &width,
                      &height, 4, rotation),
            S_OK);
        EXPECT_EQ(dst[0], first) << rotation;
        EXPECT_EQ(dst[1], second) << rotation;
        EXPECT_EQ(width, rotation == D3DDDI_ROTATION_180 ? 2u : 1u) << rotation;
        EXPECT_EQ(pitch, rotation == D3DDDI_ROTATION_180 ? 8u : 4u) << rotation;
    }
}

TEST(ImageRotationUnknown, TracedAndRefused_OutputsAndImageUntouched)
{
    const TraceMask mask(UMDTRACE_ERROR);
    for (UINT rotation : {0u, 5u, 90u})
    {
        const TraceCapture trace;
        const BYTE src[8] = {1, 2, 3, 4, 5, 6, 7, 8};
        BYTE dst[8] = {};
        UINT pitch = 8, width = 2, height = 1;
        EXPECT_EQ(UMDImgProcRotation(dst, src, &pitch, &width, &height, 4, rotation), E_FAIL);
        EXPECT_EQ(trace.Lines(),
            Lines{"UMDThreadFrameBuffer::InternalCopyData failded no rotation " + std::to_string(rotation) + "\n"});
        EXPECT_EQ(pitch, 8u);
        EXPECT_EQ(width, 2u);
        EXPECT_EQ(height, 1u);
        EXPECT_EQ(std::count(dst, dst + 8, 0), 8);
    }
}
