// Copies by the layout of a format, between images that end with their last pixel and with pages without access.
#include "resources/UMDPixelCopy.h"

#include "ExactImage.h"

#include "util/UMDFourCC.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <limits>

using namespace tesslo::test;

namespace
{
constexpr LONG kMost = std::numeric_limits<LONG>::max();
constexpr LONG kLeast = std::numeric_limits<LONG>::min();

const RECT kRects[] = {{0, 0, 1, 1}, {1, 2, 4, 5}, {3, 3, 5, 5}, {4, 4, 8, 8}, {-5, -7, 2, 2}, {2, 3, 100, 100},
    {kLeast, kLeast, kMost, kMost}, {5, 2, 6, kMost}, {0, 0, kMost, 1}};
const RECT kEmptyRects[] = {{0, 0, 0, 0}, {5, 5, 5, 5}, {2, 2, 2, 5}, {3, 5, 1, 1}, {1, 5, 3, 1}, {-9, 0, -1, 5},
    {0, -9, 5, 0}, {100, 0, 200, 5}, {0, 100, 5, 200}, {5, 0, 5, kMost}, {kMost, 0, kLeast, 5}};

struct Case
{
    D3DDDIFORMAT Format;
    UINT Width, Height, DstPadding, SrcPadding;
    GuardedBytes::Edge Edge;
};

UMDImage<BYTE> Written(const ExactImage& image)
{
    return {image.Bits(), image.Shape.Pitch, image.Shape.Width, image.Shape.Height};
}

UMDImage<const BYTE> Read(const ExactImage& image)
{
    return {image.Bits(), image.Shape.Pitch, image.Shape.Width, image.Shape.Height};
}

void Check(const Case& c, const RECT* pRect)
{
    const ExactImage dst(c.Format, c.Width, c.Height, c.DstPadding, 1, c.Edge);
    const ExactImage src(c.Format, c.Width, c.Height, c.SrcPadding, 2, c.Edge);
    const std::vector<BYTE> expected = WithPixels(dst.Bytes(), dst.Shape, src.Bits(), src.Shape, pRect);
    UMDCopyPixels(UMDPixelLayoutOf(c.Format), Written(dst), Read(src), pRect);
    ASSERT_TRUE(dst.Bytes() == expected) << FormatName(c.Format) << ' ' << c.Width << 'x' << c.Height << " padding "
                                         << c.DstPadding << ' ' << c.SrcPadding;
}

struct Extent
{
    UINT Width, Height, Padding;
};

/// Copies between new images of these extents, from either to the other. Expects that the rectangle's pixels move, and
/// no other byte.
template <typename Copy>
void CheckBothWays(D3DDDIFORMAT format, const Extent& one, const Extent& other, const RECT& common, Copy copy)
{
    for (bool swapped : {false, true})
    {
        const Extent& dstExtent = swapped ? other : one;
        const Extent& srcExtent = swapped ? one : other;
        const ExactImage dst(format, dstExtent.Width, dstExtent.Height, dstExtent.Padding, 1);
        const ExactImage src(format, srcExtent.Width, srcExtent.Height, srcExtent.Padding, 2);
        const std::vector<BYTE> expected = WithPixels(dst.Bytes(), dst.Shape, src.Bits(), src.Shape, &common);
        copy(dst, src);
        ASSERT_TRUE(dst.Bytes() == expected) << FormatName(format) << " swapped " << swapped;
    }
}

/// Calls the work with each format, size, pair of paddings and edge.
template <typename Work>
void EachCase(Work work)
{
    constexpr UINT kSizes[][2] = {{1, 1}, {2, 2}, {3, 5}, {4, 4}, {5, 3}, {8, 8}, {13, 7}, {7, 14}, {33, 9}};
    constexpr UINT kPaddings[][2] = {{0, 0}, {0, 4}, {4, 0}, {4, 4}, {8, 12}, {3, 0}, {0, 3}};
    for (D3DDDIFORMAT format : kPixelFormats)
        for (const auto& [width, height] : kSizes)
            for (const auto& [dst, src] : kPaddings)
                for (GuardedBytes::Edge edge : {GuardedBytes::Edge::Front, GuardedBytes::Edge::Back})
                {
                    // Its colours begin at half a row: there is no half of an odd pitch.
                    if (format == UMDFourCC("IMC4") && (dst | src) % 2 != 0)
                        continue;
                    ASSERT_NO_FATAL_FAILURE(work(Case{format, width, height, dst, src, edge}));
                }
}
}  // namespace

TEST(PixelCopy, EveryFormatSizeAndPadding_WholeImage_CopiesThePixelsAndNoOtherByte)
{
    EachCase([](const Case& c) { Check(c, nullptr); });
}

TEST(PixelCopy, EveryFormatSizeAndPadding_Rectangle_CopiesItsGroupsAndNoOtherByte)
{
    EachCase([](const Case& c) {
        for (const RECT& rect : kRects)
            ASSERT_NO_FATAL_FAILURE(Check(c, &rect));
    });
}

TEST(PixelCopy, EmptyRectangle_TouchesNothing)
{
    for (D3DDDIFORMAT format : kPixelFormats)
        for (const RECT& rect : kEmptyRects)
        {
            const ExactImage dst(format, 13, 7, 4, 1);
            const ExactImage src(format, 13, 7, 0, 2);
            const std::vector<BYTE> before = dst.Bytes();
            UMDCopyPixels(UMDPixelLayoutOf(format), Written(dst), Read(src), &rect);
            ASSERT_TRUE(dst.Bytes() == before) << FormatName(format) << ' ' << rect.left << ',' << rect.top;
        }
}

TEST(PixelCopy, ImagesOfDifferentSizes_CopyWhatBothHave)
{
    for (D3DDDIFORMAT format : kPixelFormats)
        ASSERT_NO_FATAL_FAILURE(CheckBothWays(
            format, {16, 12, 4}, {8, 8, 16}, {0, 0, 8, 8}, [&](const ExactImage& dst, const ExactImage& src) {
                UMDCopyPixels(UMDPixelLayoutOf(format), Written(dst), Read(src), nullptr);
            }));
}

TEST(PixelCopy, RowsThatDoNotHoldTheWidth_StopAtTheLastWholeBlock)
{
    // Both say that they are as wide as the wide one.
    for (D3DDDIFORMAT format : {D3DDDIFMT_A8R8G8B8, D3DDDIFMT_DXT1, D3DDDIFMT_DXT5, D3DDDIFMT_YUY2})
        ASSERT_NO_FATAL_FAILURE(CheckBothWays(
            format, {8, 8, 3}, {16, 8, 0}, {0, 0, 8, 8}, [&](const ExactImage& dst, const ExactImage& src) {
                UMDCopyPixels(UMDPixelLayoutOf(format), {dst.Bits(), dst.Shape.Pitch, 16, 8},
                    {src.Bits(), src.Shape.Pitch, 16, 8}, nullptr);
            }));
}

TEST(PixelCopy, NoPitchOrNoPlanes_TouchesNothing)
{
    const GuardedBytes nothing(0, GuardedBytes::Edge::Back);
    BYTE pixels[16] = {};
    for (D3DDDIFORMAT format : kPixelFormats)
    {
        UMDCopyPixels(UMDPixelLayoutOf(format), {pixels, 0, 4, 4}, {nothing.Get(), 16, 4, 4}, nullptr);
        UMDCopyPixels(UMDPixelLayoutOf(format), {nothing.Get(), 16, 4, 4}, {pixels, 0, 4, 4}, nullptr);
    }
    UMDCopyPixels(UMDPixelLayoutOf(UMDFourCC("INST")), {nothing.Get(), 16, 4, 4}, {nothing.Get(), 16, 4, 4}, nullptr);
}

TEST(PixelCopy, Rows_AnyPitches_LandAtTheirOwn)
{
    for (UINT rowBytes : {1U, 26U, 64U})
        for (UINT dstPadding : {0U, 2U, 38U})
            for (UINT srcPadding : {0U, 2U, 6U})
            {
                constexpr UINT kRows = 5;
                const UINT dstPitch = rowBytes + dstPadding, srcPitch = rowBytes + srcPadding;
                const GuardedBytes dst((kRows - 1) * dstPitch + rowBytes, GuardedBytes::Edge::Back);
                const GuardedBytes src((kRows - 1) * srcPitch + rowBytes, GuardedBytes::Edge::Back);
                FillWithNoise(src.Get(), (kRows - 1) * srcPitch + rowBytes, 3);
                UMDCopyRows(dst.Get(), dstPitch, src.Get(), srcPitch, rowBytes, kRows);
                for (UINT y = 0; y < kRows; ++y)
                {
                    ASSERT_EQ(std::memcmp(dst.Get() + y * dstPitch, src.Get() + y * srcPitch, rowBytes), 0) << y;
                    for (UINT i = rowBytes; y + 1 < kRows && i < dstPitch; ++i)
                        ASSERT_EQ(dst.Get()[y * dstPitch + i], 0) << y << ' ' << i;
                }
            }
}

TEST(PixelCopy, Rows_NoneOrOfNothing_ReturnAtOnce)
{
    constexpr std::chrono::seconds kShort(2);  // rows of nothing, one by one, take several times that
    const GuardedBytes nothing(0, GuardedBytes::Edge::Back);
    const auto begin = std::chrono::steady_clock::now();
    for (UINT pitch : {0U, 16U})
    {
        UMDCopyRows(nothing.Get(), pitch, nothing.Get(), 16, 0, 0xFFFFFFFF);
        UMDCopyRows(nothing.Get(), 16, nothing.Get(), pitch, 0, 0xFFFFFFFF);
        UMDCopyRows(nothing.Get(), pitch, nothing.Get(), pitch, 8, 0);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kShort);
}

TEST(PixelCopy, Inside_CutsEveryEdge)
{
    const struct
    {
        RECT Rect;
        UINT Width, Height;
        RECT Inside;
    } rows[] = {
        {{1, 2, 3, 4}, 5, 6, {1, 2, 3, 4}},
        {{-1, -2, 30, 40}, 5, 6, {0, 0, 5, 6}},
        {{9, 9, 12, 12}, 5, 6, {5, 6, 5, 6}},
        {{4, 5, 1, 2}, 5, 6, {4, 5, 4, 5}},
        {{1, 1, 2, 2}, 0, 0, {0, 0, 0, 0}},
        {{1, 1, kMost, kMost}, 0xFFFFFFFF, 0xFFFFFFFF, {1, 1, kMost, kMost}},
    };
    for (const auto& row : rows)
    {
        const RECT inside = UMDInside(row.Rect, row.Width, row.Height);
        EXPECT_EQ(std::memcmp(&inside, &row.Inside, sizeof(inside)), 0) << inside.left << ',' << inside.top;
    }
}

TEST(PixelCopy, FittingPixels_Sweep_IsTheSmallerOfWidthAndRow)
{
    const struct
    {
        UINT Width, Pitch, BytesPerPixel, Expected;
    } cases[] = {{4, 16, 4, 4}, {4, 15, 4, 3}, {4, 20, 4, 4}, {7, 14, 4, 3}, {4, 0, 4, 0}, {4, 0, 0, 4}, {0, 16, 4, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(UMDFittingPixels(c.Width, c.Pitch, c.BytesPerPixel), c.Expected);
}
