// The table of layouts: complete, and of one mind with the formats that the adapter offers.
#include "util/UMDPixelLayout.h"

#include "PixelBytes.h"

#include "adapter/UMDAdapterFormats.h"
#include "util/UMDFourCC.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace tesslo::test;

namespace
{
std::vector<FORMATOP> AdapterFormats()
{
    std::vector<FORMATOP> formats(UMDGetAdapterFormatCount());
    UMDGetAdapterFormats(formats.data(), static_cast<UINT>(formats.size() * sizeof(FORMATOP)));
    return formats;
}

bool HasPixels(D3DDDIFORMAT format)
{
    return std::ranges::find(kPixelFormats, format) != kPixelFormats.end();
}
}  // namespace

TEST(UMDPixelLayout, EveryFormatOfTheAdapter_IsThere)
{
    for (const FORMATOP& format : AdapterFormats())
    {
        const UMDPixelLayout& layout = UMDPixelLayoutOf(format.Format);
        EXPECT_EQ(layout.Format, format.Format) << FormatName(format.Format);
        EXPECT_EQ(layout.PlaneCount > 0, HasPixels(format.Format)) << FormatName(format.Format);
    }
}

TEST(UMDPixelLayout, EveryFormatOfTheAdapterWithBits_HasAsManyBytes)
{
    for (const FORMATOP& format : AdapterFormats())
    {
        // Eight bits is what the adapter says of the pairs that share their colour.
        if (format.PrivateFormatBitCount == 0 || format.Format == D3DDDIFMT_UYVY || format.Format == D3DDDIFMT_YUY2)
            continue;
        const UMDPixelLayout& layout = UMDPixelLayoutOf(format.Format);
        EXPECT_EQ(layout.PlaneCount, 1U) << FormatName(format.Format);
        EXPECT_EQ(layout.RowBytes(0, 8), format.PrivateFormatBitCount) << FormatName(format.Format);
        EXPECT_EQ(layout.Rows(0, 8), 8U) << FormatName(format.Format);
    }
}

TEST(UMDPixelLayout, EveryRow_IsWhole)
{
    for (D3DDDIFORMAT format : kPixelFormats)
    {
        SCOPED_TRACE(FormatName(format));
        const UMDPixelLayout& layout = UMDPixelLayoutOf(format);
        EXPECT_EQ(layout.Format, format);
        EXPECT_EQ(layout.GroupWidth, GroupOf(format).Width);
        EXPECT_EQ(layout.GroupHeight, GroupOf(format).Height);
        ASSERT_LE(layout.PlaneCount, UMDPixelLayout::kMaxPlanes);
        for (UINT i = 0; i < layout.PlaneCount; ++i)
        {
            const UMDPixelPlane& plane = layout.Planes[i];
            EXPECT_GT(plane.BlockBytes, 0U);
            EXPECT_GT(plane.PitchDivisor, 0U);
            EXPECT_EQ(layout.GroupWidth % plane.BlockWidth, 0U);
            EXPECT_EQ(layout.GroupHeight % plane.BlockHeight, 0U);
        }
    }
}

TEST(UMDPixelLayout, RowBytesAndRows_EndInTheMiddleOfABlock)
{
    const struct
    {
        D3DDDIFORMAT Format;
        UINT Plane, RowBytesOf13, RowsOf7;
    } rows[] = {
        {D3DDDIFMT_A8R8G8B8, 0, 52, 7},
        {D3DDDIFMT_R8G8B8, 0, 39, 7},
        {D3DDDIFMT_X1R5G5B5, 0, 26, 7},
        {D3DDDIFMT_DXT1, 0, 32, 2},
        {D3DDDIFMT_DXT5, 0, 64, 2},
        {D3DDDIFMT_YUY2, 0, 28, 7},
        {D3DDDIFMT_UYVY, 0, 28, 7},
        {UMDFourCC("NV12"), 0, 13, 7},
        {UMDFourCC("NV12"), 1, 14, 3},
        {UMDFourCC("YV12"), 2, 7, 3},
        {UMDFourCC("IF09"), 3, 4, 1},
        {UMDFourCC("YVU9"), 3, 0, 0},
        {UMDFourCC("NV11"), 1, 8, 7},
        {UMDFourCC("IMC4"), 1, 7, 6},
        {D3DDDIFMT_A8R8G8B8, 1, 0, 0},
    };
    for (const auto& row : rows)
    {
        const UMDPixelLayout& layout = UMDPixelLayoutOf(row.Format);
        EXPECT_EQ(layout.RowBytes(row.Plane, 13), row.RowBytesOf13) << FormatName(row.Format);
        EXPECT_EQ(layout.Rows(row.Plane, 7), row.RowsOf7) << FormatName(row.Format);
    }
}

TEST(UMDPixelLayout, UnknownFormat_HasNoPixels)
{
    for (D3DDDIFORMAT format : {D3DDDIFMT_UNKNOWN, UMDFourCC("XXXX"), D3DDDIFMT_VERTEXDATA, D3DDDIFMT_A1})
    {
        const UMDPixelLayout& layout = UMDPixelLayoutOf(format);
        EXPECT_EQ(layout.PlaneCount, 0U);
        EXPECT_EQ(layout.RowBytes(0, 16), 0U);
        EXPECT_EQ(layout.Rows(0, 16), 0U);
    }
}
