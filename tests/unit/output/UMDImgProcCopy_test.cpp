// UMDImgProcCopy, byte for byte, beside a loop over single bytes.
#include "output/UMDImgProc.h"

#include "ImageMemory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <ostream>

namespace
{
constexpr BYTE kUntouched = 0xC3;

struct Copy
{
    UINT Width, Height, BytesPerPixel, DstPitch, SrcPitch;
};

std::ostream& operator<<(std::ostream& out, const Copy& c)
{
    return out << c.Width << 'x' << c.Height << " bytes " << c.BytesPerPixel << " pitches " << c.DstPitch << ' '
               << c.SrcPitch;
}

bool IsPacked(const Copy& c)
{
    return c.SrcPitch == c.Width * c.BytesPerPixel;
}

/// Bytes from the first to the last that a copy touches with this pitch.
std::size_t Span(const Copy& c, UINT pitch)
{
    const std::size_t row = std::size_t{c.Width} * c.BytesPerPixel;
    return c.Height == 0 ? 0 : (c.Height - 1) * std::size_t{pitch} + row;
}

std::vector<BYTE> Expected(const Copy& c, const BYTE* pSrc, std::size_t room)
{
    std::vector<BYTE> bytes(room, kUntouched);
    const UINT dstPitch = IsPacked(c) ? c.SrcPitch : c.DstPitch;
    for (UINT y = 0; y < c.Height; ++y)
    {
        for (UINT i = 0; i < c.Width * c.BytesPerPixel; ++i)
            bytes[std::size_t{y} * dstPitch + i] = pSrc[std::size_t{y} * c.SrcPitch + i];
    }
    return bytes;
}

void Check(const Copy& c, GuardedBytes::Edge edge)
{
    const std::size_t srcBytes = Span(c, c.SrcPitch);
    const std::size_t dstBytes = Span(c, IsPacked(c) ? c.SrcPitch : c.DstPitch);
    GuardedBytes src(srcBytes, edge);
    GuardedBytes dst(dstBytes, edge);
    FillWithNoise(src.Get(), srcBytes, c.Width * 64 + c.Height);
    std::memset(dst.Get(), kUntouched, dstBytes);
    const std::vector<BYTE> expected = Expected(c, src.Get(), dstBytes);

    EXPECT_EQ(UMDImgProcCopy(dst.Get(), c.DstPitch, src.Get(), c.SrcPitch, c.Width, c.Height, c.BytesPerPixel), S_OK);

    ASSERT_TRUE(dstBytes == 0 || std::memcmp(dst.Get(), expected.data(), dstBytes) == 0) << c;
}

void CheckAtBothEdges(const Copy& c)
{
    Check(c, GuardedBytes::Edge::Front);
    Check(c, GuardedBytes::Edge::Back);
}
}  // namespace

TEST(ImageCopy, SmallSizes_AnyPitch_SameBytesAsTheLoop)
{
    for (UINT bytesPerPixel : {1u, 2u, 3u, 4u, 8u})
    {
        for (UINT width : {1u, 2u, 3u, 7u, 16u, 33u, 64u})
        {
            for (UINT height : {1u, 2u, 5u, 64u})
            {
                const UINT row = width * bytesPerPixel;
                for (UINT padding : {0u, 1u, 3u, 16u})
                    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({width, height, bytesPerPixel, row + 5, row + padding}));
            }
        }
    }
}

TEST(ImageCopy, OddFrames_PackedAndPadded_SameBytesAsTheLoop)
{
    for (UINT width : {1279u, 1366u, 1919u, 3440u})
    {
        ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({width, 768, 4, width * 4, width * 4}));
        ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({width, 768, 4, width * 4 + 12, width * 4 + 4}));
    }
}

TEST(ImageCopy, BlockBeyondTheCache_AnyAddress_SameBytesAsTheLoop)
{
    // Just below, at and above the size from where on blocks are streamed; the last ones end at odd addresses.
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({1023, 768, 4, 1023 * 4, 1023 * 4}));
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({1024, 768, 4, 1024 * 4, 1024 * 4}));
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({1025, 770, 4, 1025 * 4, 1025 * 4}));
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({1401, 1001, 3, 1401 * 3, 1401 * 3}));
    ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({1050002, 4, 1, 1050002, 1050002}));
}

TEST(ImageCopy, PackedSourceWiderDestination_OneBlock_PaddingUnwritten)
{
    BYTE dst[20];
    std::memset(dst, kUntouched, sizeof(dst));
    const BYTE src[8] = {1, 2, 3, 4, 5, 6, 7, 8};

    EXPECT_EQ(UMDImgProcCopy(dst, 10, src, 4, 1, 2, 4), S_OK);

    EXPECT_EQ(std::memcmp(dst, src, 8), 0);
    for (std::size_t i = 8; i < sizeof(dst); ++i)
        EXPECT_EQ(dst[i], kUntouched) << i;
}

TEST(ImageCopy, PaddedSource_RowsOnly_DestinationPaddingUnwritten)
{
    BYTE dst[8];
    std::memset(dst, kUntouched, sizeof(dst));
    const BYTE src[6] = {1, 2, 0xFF, 3, 4, 0xFF};

    EXPECT_EQ(UMDImgProcCopy(dst, 4, src, 3, 2, 2, 1), S_OK);

    const BYTE expected[8] = {1, 2, kUntouched, kUntouched, 3, 4, kUntouched, kUntouched};
    EXPECT_EQ(std::memcmp(dst, expected, sizeof(dst)), 0);
}

TEST(ImageCopy, NoWidthOrNoHeight_TouchesNothing)
{
    GuardedBytes nothing(0, GuardedBytes::Edge::Back);
    for (UINT pitch : {0u, 4u, 64u})
    {
        EXPECT_EQ(UMDImgProcCopy(nothing.Get(), pitch, nothing.Get(), pitch, 0, 7, 4), S_OK);
        EXPECT_EQ(UMDImgProcCopy(nothing.Get(), pitch, nothing.Get(), pitch, 7, 0, 4), S_OK);
    }
}

TEST(ImageCopy, NothingInARow_EndlessRows_ReturnsAtOnce)
{
    constexpr std::chrono::seconds kShort(2);  // rows of nothing, one by one, take several times that
    GuardedBytes nothing(0, GuardedBytes::Edge::Back);
    const auto begin = std::chrono::steady_clock::now();
    for (const auto& [width, bytesPerPixel] : {std::pair{0u, 4u}, {7u, 0u}})
        EXPECT_EQ(UMDImgProcCopy(nothing.Get(), 64, nothing.Get(), 64, width, 0xFFFFFFFF, bytesPerPixel), S_OK);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kShort);
}

TEST(ImageCopy, RandomSizes_SameBytesAsTheLoop)
{
    const auto seed = static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int n = 0; n < 300; ++n)
    {
        const UINT width = random() % 200;
        const UINT height = random() % 100;
        const UINT row = width * (1 + random() % 8);
        const UINT bytesPerPixel = width == 0 ? 4 : row / width;
        ASSERT_NO_FATAL_FAILURE(CheckAtBothEdges({width, height, bytesPerPixel, row + static_cast<UINT>(random() % 70),
            row + (random() % 2 == 0 ? 0 : static_cast<UINT>(random() % 70))}));
    }
}
