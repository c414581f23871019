// Compressed textures on a real device: every level and rectangle up into video memory, by the colours that it shows.
#include "CompressedBlocks.h"
#include "ExactRequest.h"
#include "RealPixels.h"

#include "resources/UMDRscCubeTexture.h"
#include "util/UMDComPtr.h"

#include <cstring>

using namespace tesslo::test;

namespace
{
constexpr D3DDDIFORMAT kCompressed[] = {D3DDDIFMT_DXT1, D3DDDIFMT_DXT2, D3DDDIFMT_DXT3, D3DDDIFMT_DXT4, D3DDDIFMT_DXT5};

// 20x12, 10x6, 5x3, 2x1, 1x1: the device wants a level 0 of whole blocks, and only that.
constexpr UINT kTextureWidth = 20, kTextureHeight = 12, kTextureLevels = 5;

using Colours = std::vector<UINT>;

Colours ColoursIn(const ExactImage& image)
{
    Colours colours;
    for (UINT y = 0; y < image.Shape.Height; ++y)
        for (UINT x = 0; x < image.Shape.Width; ++x)
            colours.push_back(PureColourOf(image.Shape, image.Bits(), x, y));
    return colours;
}

class CompressedPixels : public RealPixels
{
protected:
    /// A request whose memory holds compressed pictures.
    static void Fill(ExactRequest& request, UINT seed)
    {
        for (UINT index = 0; index < request.m_Surfaces.size(); ++index)
        {
            ExactImage& image = request.Image(index);
            FillWithNoise(image.Bits(), image.Size, seed + index);
            KeepPureColours(image.Shape, image.Bits());
        }
    }

    /// What a surface in video memory shows.
    Colours Shown(IDirect3DSurface9* pSurface)
    {
        D3DSURFACE_DESC desc = {};
        EXPECT_EQ(pSurface->GetDesc(&desc), S_OK);
        UMDComPtr<IDirect3DSurface9> pTarget, pCopy;
        EXPECT_EQ(Delegated()->CreateRenderTarget(
                      desc.Width, desc.Height, D3DFMT_A8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, pTarget.Put(), nullptr),
            S_OK);
        EXPECT_EQ(Delegated()->StretchRect(pSurface, nullptr, pTarget.Get(), nullptr, D3DTEXF_NONE), S_OK);
        EXPECT_EQ(Delegated()->CreateOffscreenPlainSurface(
                      desc.Width, desc.Height, D3DFMT_A8R8G8B8, D3DPOOL_SYSTEMMEM, pCopy.Put(), nullptr),
            S_OK);
        EXPECT_EQ(Delegated()->GetRenderTargetData(pTarget.Get(), pCopy.Get()), S_OK);
        const Bytes bytes = PixelsOf(pCopy.Get(), 4);
        Colours colours(bytes.size() / 4);
        std::memcpy(colours.data(), bytes.data(), bytes.size());
        return colours;
    }
};
}  // namespace

TEST_F(CompressedPixels, TexBlt_EveryLevelShowsItsColours)
{
    for (D3DDDIFORMAT format : kCompressed)
        for (UINT padding : {0U, 4U, 16U})
        {
            SCOPED_TRACE(FormatName(format) + " padding " + std::to_string(padding));
            ExactRequest source(kFlagTexture, kSystem, format, kTextureWidth, kTextureHeight, kTextureLevels, padding);
            Fill(source, 1);
            CreateRequest destination(kFlagTexture, kVideo, format, kTextureWidth, kTextureHeight, kTextureLevels);
            auto* pSource = Create<UMDRscTexture>(source);
            auto* pDestination = Create<UMDRscTexture>(destination);
            EXPECT_EQ(TexBlt(pSource, pDestination, {0, 0, kTextureWidth, kTextureHeight}, {0, 0}), S_OK);
            for (UINT level = 0; level < kTextureLevels; level++)
                EXPECT_EQ(Shown(pDestination->GetSurface(0, level)), ColoursIn(source.Image(level))) << level;
            DestroyAll();
        }
}

TEST_F(CompressedPixels, TexBltAndBlt_RectangleGoesToItsPoint)
{
    const RECT rect = {4, 4, 16, 12};
    const POINT point = {8, 0};
    for (D3DDDIFORMAT format : kCompressed)
        for (bool byBlt : {false, true})
        {
            SCOPED_TRACE(FormatName(format) + (byBlt ? " Blt" : " TexBlt"));
            ExactRequest first(kFlagTexture, kSystem, format, kTextureWidth, kTextureHeight, 1, 4);
            Fill(first, 1);
            ExactRequest second(kFlagTexture, kSystem, format, kTextureWidth, kTextureHeight, 1, 0);
            Fill(second, 50);
            CreateRequest destination(kFlagTexture, kVideo, format, kTextureWidth, kTextureHeight);
            auto* pFirst = Create<UMDRscTexture>(first);
            auto* pSecond = Create<UMDRscTexture>(second);
            auto* pDestination = Create<UMDRscTexture>(destination);
            EXPECT_EQ(TexBlt(pFirst, pDestination, {0, 0, kTextureWidth, kTextureHeight}, {0, 0}), S_OK);
            const RECT to = {point.x, point.y, point.x + 12, point.y + 8};
            EXPECT_EQ(byBlt ? Blt(pSecond, rect, pDestination, to) : TexBlt(pSecond, pDestination, rect, point), S_OK);
            Colours expected = ColoursIn(first.Image(0));
            const Colours above = ColoursIn(second.Image(0));
            for (LONG y = 0; y < 8; ++y)
                for (LONG x = 0; x < 12; ++x)
                    expected[static_cast<size_t>((y + point.y) * LONG{kTextureWidth} + x + point.x)] =
                        above[static_cast<size_t>((y + rect.top) * LONG{kTextureWidth} + x + rect.left)];
            EXPECT_EQ(Shown(pDestination->GetSurface(0, 0)), expected);
            DestroyAll();
        }
}

TEST_F(CompressedPixels, Cube_TexBlt_EveryFaceAndLevelShowsItsColours)
{
    constexpr UINT kEdge = 12, kCubeLevels = 4;
    const UINT flags = kFlagTexture | kFlagCubeMap;
    for (D3DDDIFORMAT format : kCompressed)
    {
        SCOPED_TRACE(FormatName(format));
        ExactRequest source(flags, kSystem, format, kEdge, kEdge, kCubeLevels, 8);
        Fill(source, 1);
        CreateRequest destination(flags, kVideo, format, kEdge, kEdge, kCubeLevels);
        auto* pSource = Create<UMDRscCubeTexture>(source);
        auto* pDestination = Create<UMDRscCubeTexture>(destination);
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
            EXPECT_EQ(pSource->WriteToDelegated(index, nullptr), S_OK);
        EXPECT_EQ(TexBlt(pSource, pDestination, {0, 0, kEdge, kEdge}, {0, 0}), S_OK);
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
            EXPECT_EQ(Shown(pDestination->GetSurface(index / kCubeLevels, index % kCubeLevels)),
                ColoursIn(source.Image(index)))
                << index;
        DestroyAll();
    }
}

TEST_F(CompressedPixels, WriteFromDelegated_RefreshesEveryLevelAndNoPadding)
{
    for (D3DDDIFORMAT format : kCompressed)
    {
        SCOPED_TRACE(FormatName(format));
        ExactRequest source(kFlagTexture, kSystem, format, kTextureWidth, kTextureHeight, kTextureLevels, 8);
        auto* pTexture = Create<UMDRscTexture>(source);
        for (UINT level = 0; level < kTextureLevels; level++)
        {
            ExactImage& memory = source.Image(level);
            const Bytes before = memory.Bytes();
            EXPECT_EQ(pTexture->WriteToDelegated(level, nullptr), S_OK);
            FillWithNoise(memory.Bits(), memory.Size, 200);
            const Bytes expected = WithPixels(memory.Bytes(), memory.Shape, before.data(), memory.Shape, nullptr);
            EXPECT_EQ(pTexture->WriteFromDelegated(level), S_OK);
            EXPECT_EQ(memory.Bytes(), expected) << level;
        }
        DestroyAll();
    }
}
