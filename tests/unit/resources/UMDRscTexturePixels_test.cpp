// Textures on a real device: every level up and down, rectangles, and the way into video memory.
#include "RealPixels.h"

#include "resources/UMDRscTexture.h"

#include <algorithm>

using namespace tesslo::test;

namespace
{
using TexturePixels = RealPixels;
}  // namespace

TEST_F(TexturePixels, WriteToDelegated_EveryLevelHoldsTheRuntimesPixels)
{
    EachFormat([&](const FormatRow& row) {
        MemoryRequest request(kFlagTexture, row, kWidth, kHeight, kLevels);
        auto* pTexture = Create<UMDRscTexture>(request);
        for (UINT level = 0; level < kLevels; level++)
            EXPECT_EQ(pTexture->WriteToDelegated(level, nullptr), S_OK);
        for (UINT level = 0; level < kLevels; level++)
            EXPECT_EQ(PixelsOf(pTexture->GetSurface(0, level), row.BytesPerPixel),
                MemoryOf(request, level, row.BytesPerPixel))
                << "level " << level;
    });
}

TEST_F(TexturePixels, WriteToDelegated_RectangleIsLevelZerosAlone)
{
    EachOf(kFormats, kRects, [&](const FormatRow& row, const RECT& rect) {
        MemoryRequest request(kFlagTexture, row, kWidth, kHeight, 2);
        auto* pTexture = Create<UMDRscTexture>(request);
        const Bytes before = Scribble(pTexture->GetSurface(0, 0), row.BytesPerPixel, 3);
        EXPECT_EQ(pTexture->WriteToDelegated(0, &rect), S_OK);
        EXPECT_EQ(pTexture->WriteToDelegated(1, &rect), S_OK);
        const Bytes memory = MemoryOf(request, 0, row.BytesPerPixel);
        EXPECT_EQ(PixelsOf(pTexture->GetSurface(0, 0), row.BytesPerPixel),
            Overlaid(before, kWidth, {rect.left, rect.top}, memory, kWidth, rect, row.BytesPerPixel));
        EXPECT_EQ(PixelsOf(pTexture->GetSurface(0, 1), row.BytesPerPixel), MemoryOf(request, 1, row.BytesPerPixel));
    });
}

TEST_F(TexturePixels, WriteFromDelegated_RefreshesThatLevelAndNoPadding)
{
    EachFormat([&](const FormatRow& row) {
        MemoryRequest request(kFlagTexture, row, kWidth, kHeight, kLevels);
        auto* pTexture = Create<UMDRscTexture>(request);
        for (UINT level = 0; level < kLevels; level++)
        {
            const Bytes pixels =
                Scribble(pTexture->GetSurface(0, level), row.BytesPerPixel, static_cast<BYTE>(level * 17));
            std::vector<Bytes> expected;
            for (UINT other = 0; other < kLevels; other++)
                expected.push_back(request.Memory(other));
            const D3DDDI_SURFACEINFO& surface = request.m_Surfaces[level];
            expected[level] = Landed(expected[level], surface.SysMemPitch, pixels, surface.Width * row.BytesPerPixel);
            EXPECT_EQ(pTexture->WriteFromDelegated(level), S_OK);
            for (UINT other = 0; other < kLevels; other++)
                EXPECT_EQ(request.Memory(other), expected[other]) << "level " << level << " memory " << other;
        }
    });
}

TEST_F(TexturePixels, TexBlt_EveryLevelReachesVideoMemory)
{
    EachFormat([&](const FormatRow& row) {
        MemoryRequest source(kFlagTexture, row, kWidth, kHeight, kLevels);
        CreateRequest destination(kFlagTexture, kVideo, row.Format, kWidth, kHeight, kLevels);
        auto* pSource = Create<UMDRscTexture>(source);
        auto* pDestination = Create<UMDRscTexture>(destination);
        EXPECT_EQ(TexBlt(pSource, pDestination, {0, 0, kWidth, kHeight}, {0, 0}), S_OK);
        for (UINT level = 0; level < kLevels; level++)
            EXPECT_EQ(PixelsOf(pDestination->GetSurface(0, level), row.BytesPerPixel),
                Kept(MemoryOf(source, level, row.BytesPerPixel), row.Format))
                << "level " << level;
    });
}

TEST_F(TexturePixels, TexBlt_RectangleGoesToItsPointOnLevelZeroAlone)
{
    const RECT rect = {5, 3, 18, 30};
    const POINT point = {1040, 1};
    EachFormat([&](const FormatRow& row) {
        MemoryRequest first(kFlagTexture, row, kWidth, kHeight, 3);
        MemoryRequest second(kFlagTexture, row, kWidth, kHeight, 3);
        for (UINT level = 0; level < 3; level++)
            std::ranges::reverse(second.Memory(level));
        CreateRequest destination(kFlagTexture, kVideo, row.Format, kWidth, kHeight, 3);
        auto* pFirst = Create<UMDRscTexture>(first);
        auto* pSecond = Create<UMDRscTexture>(second);
        auto* pDestination = Create<UMDRscTexture>(destination);
        EXPECT_EQ(TexBlt(pFirst, pDestination, {0, 0, kWidth, kHeight}, {0, 0}), S_OK);
        const Bytes before = Scribble(pSecond->GetSurface(0, 0), row.BytesPerPixel, 5);
        EXPECT_EQ(TexBlt(pSecond, pDestination, rect, point), S_OK);
        const Bytes above = MemoryOf(second, 0, row.BytesPerPixel);
        EXPECT_EQ(PixelsOf(pSecond->GetSurface(0, 0), row.BytesPerPixel),
            Overlaid(before, kWidth, {rect.left, rect.top}, above, kWidth, rect, row.BytesPerPixel));
        const Bytes expected =
            Overlaid(MemoryOf(first, 0, row.BytesPerPixel), kWidth, point, above, kWidth, rect, row.BytesPerPixel);
        EXPECT_EQ(PixelsOf(pDestination->GetSurface(0, 0), row.BytesPerPixel), Kept(expected, row.Format));
        for (UINT level = 1; level < 3; level++)
            EXPECT_EQ(PixelsOf(pDestination->GetSurface(0, level), row.BytesPerPixel),
                Kept(MemoryOf(second, level, row.BytesPerPixel), row.Format))
                << "level " << level;
    });
}

TEST_F(TexturePixels, BltToSystemTexture_PixelsReachTheRuntimesMemory)
{
    EachFormat([&](const FormatRow& row) {
        MemoryRequest source(kFlagTexture, row, 61, kHeight);
        CreateRequest target(kFlagTexture | kFlagRenderTarget, kVideo, row.Format, 61, kHeight);
        CreateRequest copy(kFlagTexture, kSystem, row.Format, 61, kHeight);
        copy.WithMemory(row.BytesPerPixel, 16);
        const RECT whole = {0, 0, 61, kHeight};
        auto* pSource = Create<UMDRscTexture>(source);
        auto* pTarget = Create<UMDRscTexture>(target);
        auto* pCopy = Create<UMDRscTexture>(copy);
        const Bytes expected = Landed(copy.Memory(0), copy.m_Surfaces[0].SysMemPitch,
            Kept(MemoryOf(source, 0, row.BytesPerPixel), row.Format), 61 * row.BytesPerPixel);
        EXPECT_EQ(Blt(pSource, whole, pTarget, whole), S_OK);
        EXPECT_EQ(Blt(pTarget, whole, pCopy, whole), S_OK);
        EXPECT_EQ(copy.Memory(0), expected);
    });
}
