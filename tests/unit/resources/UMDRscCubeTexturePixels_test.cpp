// Cube textures on a real device: every face and level up and down, and the way into video memory.
#include "RealPixels.h"

#include "resources/UMDRscCubeTexture.h"

using namespace tesslo::test;

namespace
{
using CubeTexturePixels = RealPixels;
}  // namespace

TEST_F(CubeTexturePixels, WriteToDelegatedAndTexBlt_EveryFaceAndLevelReachesVideoMemory)
{
    struct Row
    {
        UINT Edge;
        UINT Levels;
    };
    for (const Row& size : {Row{256, 9}, Row{37, 6}, Row{7, 1}})
    {
        for (const FormatRow& row : kFormats)
        {
            SCOPED_TRACE(NameOf(row) + " edge " + std::to_string(size.Edge));
            const UINT flags = kFlagTexture | kFlagCubeMap;
            MemoryRequest source(flags, row, size.Edge, size.Edge, size.Levels);
            CreateRequest destination(flags, kVideo, row.Format, size.Edge, size.Edge, size.Levels);
            auto* pSource = Create<UMDRscCubeTexture>(source);
            auto* pDestination = Create<UMDRscCubeTexture>(destination);
            for (UINT index = 0; index < 6 * size.Levels; index++)
                EXPECT_EQ(pSource->WriteToDelegated(index, nullptr), S_OK);
            EXPECT_EQ(TexBlt(pSource, pDestination, {1, 1, 2, 2}, {3, 3}), S_OK);
            for (UINT index = 0; index < 6 * size.Levels; index++)
            {
                const UINT face = index / size.Levels;
                const UINT level = index % size.Levels;
                const Bytes memory = MemoryOf(source, index, row.BytesPerPixel);
                EXPECT_EQ(PixelsOf(pSource->GetSurface(face, level), row.BytesPerPixel), memory)
                    << "face " << face << " level " << level;
                EXPECT_EQ(PixelsOf(pDestination->GetSurface(face, level), row.BytesPerPixel), Kept(memory, row.Format))
                    << "face " << face << " level " << level;
            }
            DestroyAll();
        }
    }
}

TEST_F(CubeTexturePixels, WriteFromDelegated_RefreshesThatFaceAndLevel)
{
    constexpr UINT kEdge = 37, kCubeLevels = 6;
    EachFormat([&](const FormatRow& row) {
        MemoryRequest request(kFlagTexture | kFlagCubeMap, row, kEdge, kEdge, kCubeLevels);
        auto* pCube = Create<UMDRscCubeTexture>(request);
        std::vector<Bytes> expected;
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
        {
            const D3DDDI_SURFACEINFO& surface = request.m_Surfaces[index];
            IDirect3DSurface9* pSurface = pCube->GetSurface(index / kCubeLevels, index % kCubeLevels);
            const Bytes pixels = Scribble(pSurface, row.BytesPerPixel, static_cast<BYTE>(index * 13 + 1));
            expected.push_back(
                Landed(request.Memory(index), surface.SysMemPitch, pixels, surface.Width * row.BytesPerPixel));
        }
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
            EXPECT_EQ(pCube->WriteFromDelegated(index), S_OK);
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
            EXPECT_EQ(request.Memory(index), expected[index]) << "sub-resource " << index;
    });
}
