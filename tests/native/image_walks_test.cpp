// The fast walks behind copies and rotations, each called alone, in blocks of exact size. The images that reach the
// streaming ones are too large to sweep sizes and addresses with.
#include "output/UMDImgProcWalks.h"

#include "ImageRegistersTest.h"
#include "exact_memory.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{
constexpr std::size_t kLineBytes = 64;

/// Bytes of rows that are a pitch apart, upwards or downwards.
std::size_t Span(std::size_t rows, std::ptrdiff_t pitch, std::size_t words)
{
    return (rows - 1) * static_cast<std::size_t>(std::abs(pitch)) + words * 4;
}

/// Where the first row lies in such bytes.
BYTE* FirstRow(const ExactBytes& bytes, std::size_t rows, std::ptrdiff_t pitch)
{
    return pitch < 0 ? bytes.Get() - static_cast<std::ptrdiff_t>(rows - 1) * pitch : bytes.Get();
}

struct Transpose
{
    std::size_t Width, Height;
    std::ptrdiff_t DstPitch, SrcPitch;
};

void CheckTranspose(const Transpose& t, std::size_t shift)
{
    ExactBytes src(Span(t.Height, t.SrcPitch, t.Width), 1);
    ExactBytes dst(Span(t.Width, t.DstPitch, t.Height), shift);
    src.FillWithNoise(static_cast<std::uint32_t>(t.Width * 64 + t.Height));
    const BYTE* pSrc = FirstRow(src, t.Height, t.SrcPitch);
    BYTE* pDst = FirstRow(dst, t.Width, t.DstPitch);
    std::vector<BYTE> expected = UntouchedBytes(dst.Size());
    for (std::size_t y = 0; y < t.Height; ++y)
    {
        for (std::size_t x = 0; x < t.Width; ++x)
        {
            const auto column = static_cast<std::ptrdiff_t>(x), row = static_cast<std::ptrdiff_t>(y);
            const std::ptrdiff_t to = pDst - dst.Get() + column * t.DstPitch + row * 4;
            std::copy_n(pSrc + row * t.SrcPitch + column * 4, 4, expected.begin() + to);
        }
    }

    UMDImgProcTranspose(pDst, t.DstPitch, pSrc, t.SrcPitch, t.Width, t.Height);

    ASSERT_TRUE(dst.Holds(expected) && dst.IsFrontUntouched())
        << t.Width << 'x' << t.Height << " pitches " << t.DstPitch << ' ' << t.SrcPitch << " shift " << shift;
}

/// Both ways of each side.
void CheckTransposes(std::size_t width, std::size_t height, std::ptrdiff_t dstPitch, std::ptrdiff_t srcPitch)
{
    for (std::size_t shift : {0u, 4u, 32u, 60u})
    {
        ASSERT_NO_FATAL_FAILURE(CheckTranspose({width, height, dstPitch, srcPitch}, shift));
        ASSERT_NO_FATAL_FAILURE(CheckTranspose({width, height, -dstPitch, srcPitch}, shift));
        ASSERT_NO_FATAL_FAILURE(CheckTranspose({width, height, dstPitch, -srcPitch}, shift));
    }
}

std::ptrdiff_t Pitch(std::size_t words, std::size_t multiple)
{
    return static_cast<std::ptrdiff_t>((words * 4 + multiple - 1) / multiple * multiple);
}

/// @param move moves this many words to a place from a place; @param isReversed in falling order.
template <typename Move>
void CheckMoveOf(std::size_t count, std::size_t shift, bool isReversed, Move move)
{
    ExactBytes src(count * 4, shift % 7);
    ExactBytes dst(count * 4, shift);
    src.FillWithNoise(static_cast<std::uint32_t>(count));
    std::vector<BYTE> expected = UntouchedBytes(dst.Size());
    for (std::size_t i = 0; i < count; ++i)
        std::copy_n(src.Get() + i * 4, 4, expected.begin() + 4 * (isReversed ? count - 1 - i : i));

    move(dst.Get(), src.Get(), count);

    ASSERT_TRUE(dst.Holds(expected) && dst.IsFrontUntouched()) << count << " words, shift " << shift;
}

template <typename Move>
void CheckMove(bool isReversed, Move move)
{
    for (std::size_t count = 0; count <= 100; ++count)
    {
        for (std::size_t shift = 0; shift < kLineBytes; shift += 4)
            ASSERT_NO_FATAL_FAILURE(CheckMoveOf(count, shift, isReversed, move));
    }
}
}  // namespace

TEST(ImageWalks, Stream_EachCountAtEachWordOfALine_SameWordsInOrder)
{
    CheckMove(false, UMDImgProcStream);
}

// Longer than the pages that are copied side by side, and by less than a line more.
TEST(ImageWalks, Stream_SeveralPages_SameWordsInOrder)
{
    for (std::size_t count : {4095u, 4096u, 4097u, 4112u, 8192u, 12345u})
    {
        for (std::size_t shift : {0u, 4u, 60u})
            ASSERT_NO_FATAL_FAILURE(CheckMoveOf(count, shift, false, UMDImgProcStream));
    }
}

TEST(ImageWalks, Reverse_EachCountAtEachWordOfALine_SameWordsInFallingOrder)
{
    CheckMove(true, [](BYTE* pDst, const BYTE* pSrc, std::size_t n) { UMDImgProcReverse(pDst, pSrc, n, false); });
    CheckMove(true, [](BYTE* pDst, const BYTE* pSrc, std::size_t n) { UMDImgProcReverse(pDst, pSrc, n, true); });
}

class ImageTransposes : public ImageRegistersTest<UMDCpuIsa>
{
};

INSTANTIATE_TEST_SUITE_P(Registers, ImageTransposes, testing::ValuesIn(kImageRegisters));

TEST_P(ImageTransposes, RowsThatBeginAnywhere_SameWordsTurned)
{
    for (std::size_t width : {1u, 2u, 15u, 16u, 17u, 33u, 769u})
    {
        for (std::size_t height : {1u, 2u, 15u, 16u, 17u, 31u, 47u, 50u})
            ASSERT_NO_FATAL_FAILURE(CheckTransposes(width, height, Pitch(height, kLineBytes) + 4, Pitch(width, 4)));
    }
}

TEST_P(ImageTransposes, RowsOfWholeLines_SameWordsTurned)
{
    for (std::size_t width : {1u, 15u, 16u, 17u, 33u, 769u, 785u})
    {
        for (std::size_t height : {1u, 15u, 16u, 17u, 33u, 50u})
            ASSERT_NO_FATAL_FAILURE(CheckTransposes(width, height, Pitch(height, kLineBytes), Pitch(width, 4) + 3));
    }
}

TEST_P(ImageTransposes, RowsThatAlias_SameWordsTurned)
{
    for (std::size_t width : {1u, 3u, 4u, 5u, 17u, 769u, 773u})
    {
        for (std::size_t height : {1u, 47u, 48u, 49u, 97u, 256u})
            ASSERT_NO_FATAL_FAILURE(CheckTransposes(width, height, Pitch(height, 1024), Pitch(width, 1024) + 4));
    }
}
