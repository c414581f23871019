// Surfaces on a real device: rectangles up and into video memory, and the formats that the device has not.
#include "RealPixels.h"

#include "resources/UMDRscSurface.h"
#include "util/UMDFourCC.h"

#include <algorithm>

using namespace tesslo::test;

namespace
{
using SurfacePixels = RealPixels;
}  // namespace

TEST_F(SurfacePixels, WriteToDelegatedAndBlt_RectangleReachesVideoMemory)
{
    EachOf(kFormats, kRects, [&](const FormatRow& row, const RECT& rect) {
        MemoryRequest first(0, row, kWidth, kHeight);
        MemoryRequest second(0, row, kWidth, kHeight);
        std::ranges::reverse(second.Memory(0));
        CreateRequest target(kFlagRenderTarget, kVideo, row.Format, kWidth + 2, kHeight + 1);
        const RECT whole = {0, 0, kWidth, kHeight};
        const RECT moved = {rect.left + 2, rect.top + 1, rect.right + 2, rect.bottom + 1};
        auto* pFirst = Create<UMDRscSurface>(first);
        auto* pSecond = Create<UMDRscSurface>(second);
        auto* pTarget = Create<UMDRscSurface>(target);
        EXPECT_EQ(Blt(pFirst, whole, pTarget, whole), S_OK);
        const Bytes below = PixelsOf(pTarget->GetSurface(0, 0), row.BytesPerPixel);
        const Bytes before = Scribble(pSecond->GetSurface(0, 0), row.BytesPerPixel, 5);
        EXPECT_EQ(Blt(pSecond, rect, pTarget, moved), S_OK);
        const Bytes above = MemoryOf(second, 0, row.BytesPerPixel);
        EXPECT_EQ(PixelsOf(pSecond->GetSurface(0, 0), row.BytesPerPixel),
            Overlaid(before, kWidth, {rect.left, rect.top}, above, kWidth, rect, row.BytesPerPixel));
        EXPECT_EQ(PixelsOf(pTarget->GetSurface(0, 0), row.BytesPerPixel),
            Kept(Overlaid(below, kWidth + 2, {moved.left, moved.top}, above, kWidth, rect, row.BytesPerPixel),
                row.Format));
    });
}

TEST_F(SurfacePixels, WriteToDelegated_FormatsOfNoTextureToo)
{
    // The video formats have a file of their own.
    const FormatRow rows[] = {
        {D3DDDIFMT_R8G8B8, 3, 0},
        {D3DDDIFMT_R8G8B8, 3, 2},
        {D3DDDIFMT_R8G8B8, 3, 7},
    };
    constexpr UINT kEvenWidth = 62, kEvenHeight = 36;
    const RECT rects[] = {{0, 0, 1, 1}, {4, 2, 10, 9}, {60, 35, 62, 36}, {0, 0, 62, 36}};
    EachOf(rows, rects, [&](const FormatRow& row, const RECT& rect) {
        MemoryRequest request(0, row, kEvenWidth, kEvenHeight);
        auto* pSurface = Create<UMDRscSurface>(request);
        const Bytes before = Scribble(pSurface->GetSurface(0, 0), row.BytesPerPixel, 9);
        EXPECT_EQ(pSurface->WriteToDelegated(0, &rect), S_OK);
        EXPECT_EQ(PixelsOf(pSurface->GetSurface(0, 0), row.BytesPerPixel),
            Overlaid(before, kEvenWidth, {rect.left, rect.top}, MemoryOf(request, 0, row.BytesPerPixel), kEvenWidth,
                rect, row.BytesPerPixel));
    });
}

TEST_F(SurfacePixels, Create_FormatThatTheDeviceHasNotForTheKind_IsRefusedAndNothingIsLeft)
{
    struct Row
    {
        UINT Flags;
        std::vector<D3DDDIFORMAT> Formats;
        std::string Error;
    };
    const std::vector<D3DDDIFORMAT> noTexture = {
        D3DDDIFMT_R8G8B8, UMDFourCC("UYVY"), UMDFourCC("YUY2"), UMDFourCC("NV12")};
    const Row rows[] = {
        {kFlagTexture, noTexture, "UMDRscTexture::Create CreateTexture failed! 0x8876086c\n"},
        {kFlagTexture | kFlagCubeMap, noTexture, "UMDRscCubeTexture::Create CreateCubeTexture failed! 0x8876086c\n"},
        {kFlagRenderTarget, {UMDFourCC("UYVY"), UMDFourCC("YUY2"), UMDFourCC("NV12"), UMDFourCC("DXT1")},
            "UMDRscSurface::Create CreateRenderTarget failed! 0x8876086c\n"},
    };
    const TraceMask mask(UMDTRACE_ERROR);
    for (const Row& row : rows)
    {
        for (D3DDDIFORMAT format : row.Formats)
        {
            CreateRequest request(row.Flags, kVideo, format, 16, 16);
            const TraceCapture trace;
            EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL);
            EXPECT_EQ(trace.LinesOfThisThread(), Lines{row.Error}) << "format " << format;
            EXPECT_EQ(AllocationCount(), 0U);
        }
    }
}
