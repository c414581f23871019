// UMDImgProcCopy between blocks of exact size, beside a loop over single bytes.
#include "output/UMDImgProc.h"

#include "exact_memory.h"

#include <gtest/gtest.h>

namespace
{
struct Copy
{
    UINT Width, Height, BytesPerPixel, DstPadding, SrcPadding;
};

void Check(const Copy& c, std::size_t dstShift, std::size_t srcShift)
{
    const UINT row = c.Width * c.BytesPerPixel;
    const UINT srcPitch = row + c.SrcPadding;
    const UINT dstPitch = row + c.DstPadding;
    const UINT usedPitch = c.SrcPadding == 0 ? row : dstPitch;  // a packed source lands packed
    ExactBytes src(std::size_t{c.Height - 1} * srcPitch + row, srcShift);
    ExactBytes dst(std::size_t{c.Height - 1} * usedPitch + row, dstShift);
    src.FillWithNoise(c.Width * 64 + c.Height);
    std::vector<BYTE> expected = UntouchedBytes(dst.Size());
    for (UINT y = 0; y < c.Height; ++y)
    {
        for (UINT i = 0; i < row; ++i)
            expected[y * usedPitch + i] = src.Get()[y * srcPitch + i];
    }

    EXPECT_EQ(UMDImgProcCopy(dst.Get(), dstPitch, src.Get(), srcPitch, c.Width, c.Height, c.BytesPerPixel), S_OK);

    ASSERT_TRUE(dst.Holds(expected) && dst.IsFrontUntouched())
        << c.Width << 'x' << c.Height << " bytes " << c.BytesPerPixel << " padding " << c.DstPadding << ' '
        << c.SrcPadding << " shift " << dstShift << ' ' << srcShift;
}
}  // namespace

TEST(ImageCopyExact, OddSizesPitchesAndAddresses_SameBytesAsTheLoop)
{
    for (UINT bytesPerPixel : {1u, 2u, 3u, 4u, 8u})
    {
        for (UINT width : {1u, 2u, 3u, 5u, 8u, 13u, 31u, 33u})
        {
            for (UINT height : {1u, 2u, 3u, 9u})
            {
                for (UINT padding : {0u, 1u, 7u})
                {
                    ASSERT_NO_FATAL_FAILURE(Check({width, height, bytesPerPixel, 3, padding}, 0, 0));
                    ASSERT_NO_FATAL_FAILURE(Check({width, height, bytesPerPixel, 0, padding}, 1, 2));
                    ASSERT_NO_FATAL_FAILURE(Check({width, height, bytesPerPixel, 5, padding}, 3, 1));
                }
            }
        }
    }
}

TEST(ImageCopyExact, BlockThatIsStreamed_AtEachWord_SameBytesAsTheLoop)
{
    for (std::size_t shift : {0u, 4u, 60u})
        ASSERT_NO_FATAL_FAILURE(Check({1025, 769, 4, 0, 0}, shift, 1));
}
