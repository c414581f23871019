#include "util/UMDFormatBytes.h"

#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
constexpr UINT UNTOUCHED = 0x5A5A5A5A;

struct Size
{
    UINT Format;
    UINT Bytes;
};

constexpr Size SIZES[] = {
    {21, 4},          // A8R8G8B8
    {22, 4},          // X8R8G8B8
    {20, 3},          // R8G8B8
    {23, 2},          // R5G6B5
    {0x59565955, 2},  // UYVY
    {50, 1},          // L8
    {0x32595559, 1},  // YUY2
    {0x3231564E, 1},  // NV12
    {0x31545844, 0},  // DXT1
};

bool IsKnown(UINT format)
{
    for (const Size& size : SIZES)
    {
        if (size.Format == format)
            return true;
    }
    return false;
}
}  // namespace

TEST(UMDGetFormatBytes, NineFormats_HaveTheirSizes)
{
    for (const Size& size : SIZES)
    {
        UINT bytes = UNTOUCHED;
        EXPECT_EQ(UMDGetFormatBytes(static_cast<D3DDDIFORMAT>(size.Format), &bytes), S_OK) << size.Format;
        EXPECT_EQ(bytes, size.Bytes) << size.Format;
    }
}

TEST(UMDGetFormatBytes, NineFormats_TraceNothing)
{
    TraceMask mask(0xFFFFF7FF);
    TraceCapture trace;
    for (const Size& size : SIZES)
    {
        UINT bytes;
        UMDGetFormatBytes(static_cast<D3DDDIFORMAT>(size.Format), &bytes);
    }
    EXPECT_EQ(trace.LinesOfThisThread(), Lines{});
}

TEST(UMDGetFormatBytes, EveryOtherNumberedFormat_RefusedAndOutputUntouched)
{
    for (UINT format = 0; format < 256; ++format)
    {
        if (IsKnown(format))
            continue;
        UINT bytes = UNTOUCHED;
        EXPECT_EQ(UMDGetFormatBytes(static_cast<D3DDDIFORMAT>(format), &bytes), E_FAIL) << format;
        EXPECT_EQ(bytes, UNTOUCHED) << format;
    }
}

TEST(UMDGetFormatBytes, UnknownFormat_TracedAsANumberAtTheErrorLevel)
{
    TraceMask mask(0x1);
    TraceCapture trace;
    UINT bytes;
    UMDGetFormatBytes(D3DDDIFMT_A1R5G5B5, &bytes);
    UMDGetFormatBytes(D3DDDIFMT_DXT5, &bytes);
    EXPECT_EQ(trace.LinesOfThisThread(), (Lines{"UMDGetFormatBytes failed! Format:25 unhandled!\n",
                                             "UMDGetFormatBytes failed! Format:894720068 unhandled!\n"}));
}

TEST(UMDGetFormatBytes, UnknownFormat_OtherLevels_TracesNothing)
{
    TraceMask mask(0xFFFFF7FE);
    TraceCapture trace;
    UINT bytes;
    UMDGetFormatBytes(D3DDDIFMT_A1R5G5B5, &bytes);
    EXPECT_EQ(trace.LinesOfThisThread(), Lines{});
}
