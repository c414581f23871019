// Uploads and refreshes in every format on the fake device, from and into memory that ends with its last pixel.
#include "ExactRequest.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscSurface.h"

using namespace tesslo::test;

namespace
{
struct Size
{
    UINT Width, Height, Levels;
};
struct Paddings
{
    UINT Memory, Delegated;  ///< bytes behind a row
};

constexpr Size kSizes[] = {{64, 64, 2}, {13, 7, 4}, {4, 4, 3}, {6, 10, 2}};
constexpr Paddings kPaddings[] = {{0, 0}, {0, 8}, {8, 0}, {4, 12}};

class ResourceFormats : public ResourceFixture
{
protected:
    static constexpr D3DDDIFORMAT kPixel = D3DDDIFMT_A8R8G8B8;

    /// Calls the case with each format, size and pair of paddings.
    template <typename Case>
    void EachOf(Case run)
    {
        for (D3DDDIFORMAT format : kPixelFormats)
            for (const Size& size : kSizes)
                for (const Paddings& paddings : kPaddings)
                {
                    SCOPED_TRACE(FormatName(format) + " " + std::to_string(size.Width) + "x" +
                                 std::to_string(size.Height) + " padding " + std::to_string(paddings.Memory) + " " +
                                 std::to_string(paddings.Delegated));
                    m_Fake.RestartNames();
                    m_Fake.SetPitchPadding(paddings.Delegated);
                    ASSERT_NO_FATAL_FAILURE(run(format, size, paddings.Memory));
                    DestroyAll();
                    ForgetCalls();
                }
    }

    /// Calls the case with each level of a texture of each format, size and pair of paddings.
    template <typename Case>
    void EachLevel(Case run)
    {
        EachOf([&](D3DDDIFORMAT format, const Size& size, UINT padding) {
            ExactRequest request(
                kFlagTexture, D3DDDIPOOL_SYSTEMMEM, format, size.Width, size.Height, size.Levels, padding);
            auto* pTexture = Create<UMDRscTexture>(request);
            for (UINT level = 0; level < size.Levels; level++)
                run(pTexture, level, m_Fake.Find<FakeTexture>("texture#1").Level(level).Pixels(), request.Image(level));
        });
    }

    /// Noise in the delegated surface, which an upload must leave where it has nothing to say.
    static std::vector<BYTE> Scribble(FakePixels& pixels)
    {
        FillWithNoise(pixels.Bytes().data(), pixels.Bytes().size(), 77);
        return pixels.Bytes();
    }

    /// Expects an upload of the pixels that the delegated surface has, and none in what is put behind them.
    template <typename Upload>
    static void ExpectNothingBehind(FakePixels& pixels, const ExactImage& memory, Upload upload)
    {
        constexpr BYTE kBehind = 0xEE;
        pixels.Bytes().resize(pixels.Bytes().size() + memory.Size, kBehind);
        const std::vector<BYTE> expected =
            WithPixels(pixels.Bytes(), pixels.Shape(), memory.Bits(), memory.Shape, nullptr);
        EXPECT_EQ(upload(), S_OK);
        EXPECT_TRUE(pixels.Bytes() == expected);
    }

    void ExpectUploaded(FakePixels& pixels, const std::vector<BYTE>& before, ExactImage& memory, const RECT* pRect)
    {
        EXPECT_TRUE(pixels.Bytes() == WithPixels(before, pixels.Shape(), memory.Bits(), memory.Shape, pRect));
    }
};
}  // namespace

TEST_F(ResourceFormats, Texture_WriteToDelegated_EveryLevelHoldsItsPixels)
{
    EachLevel([&](UMDRscTexture* pTexture, UINT level, FakePixels& pixels, ExactImage& memory) {
        const std::vector<BYTE> before = Scribble(pixels);
        EXPECT_EQ(pTexture->WriteToDelegated(level, nullptr), S_OK);
        ExpectUploaded(pixels, before, memory, nullptr);
    });
}

TEST_F(ResourceFormats, Texture_WriteToDelegatedByRectangle_AlignsItOutwardsAndStaysInside)
{
    const RECT rects[] = {{0, 0, 1, 1}, {1, 2, 4, 5}, {3, 3, 5, 5}, {-5, -5, 2, 2}, {2, 3, 100, 100}, {5, 2, 6, 3},
        {0, 0, 1000000, 1}, {2, 2, 2, 5}, {5, 5, 5, 5}, {3, 5, 1, 1}};
    EachOf([&](D3DDDIFORMAT format, const Size& size, UINT padding) {
        ExactRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, format, size.Width, size.Height, 1, padding);
        auto* pTexture = Create<UMDRscTexture>(request);
        FakePixels& pixels = m_Fake.Find<FakeTexture>("texture#1").Level(0).Pixels();
        for (const RECT& rect : rects)
        {
            SCOPED_TRACE(std::to_string(rect.left) + "," + std::to_string(rect.top));
            const std::vector<BYTE> before = Scribble(pixels);
            EXPECT_EQ(pTexture->WriteToDelegated(0, &rect), S_OK);
            ExpectUploaded(pixels, before, request.Image(0), &rect);
        }
    });
}

TEST_F(ResourceFormats, Texture_WriteFromDelegated_RefreshesEveryLevelAndNothingElse)
{
    EachLevel([&](UMDRscTexture* pTexture, UINT level, FakePixels& pixels, ExactImage& memory) {
        Scribble(pixels);
        const std::vector<BYTE> expected =
            WithPixels(memory.Bytes(), memory.Shape, pixels.Bytes().data(), pixels.Shape(), nullptr);
        EXPECT_EQ(pTexture->WriteFromDelegated(level), S_OK);
        EXPECT_TRUE(memory.Bytes() == expected) << "level " << level;
    });
}

TEST_F(ResourceFormats, Cube_WriteToAndFromDelegated_EveryFaceAndLevel)
{
    EachOf([&](D3DDDIFORMAT format, const Size& size, UINT padding) {
        ExactRequest request(
            kFlagTexture | kFlagCubeMap, D3DDDIPOOL_SYSTEMMEM, format, size.Width, size.Width, size.Levels, padding);
        auto* pCube = Create<UMDRscCubeTexture>(request);
        for (UINT index = 0; index < 6 * size.Levels; index += 5)
        {
            FakePixels& pixels =
                m_Fake.Find<FakeCubeTexture>("cube#1").Level(index / size.Levels, index % size.Levels).Pixels();
            ExactImage& memory = request.Image(index);
            std::vector<BYTE> before = Scribble(pixels);
            EXPECT_EQ(pCube->WriteToDelegated(index, nullptr), S_OK);
            ExpectUploaded(pixels, before, memory, nullptr);
            Scribble(pixels);
            before = memory.Bytes();
            EXPECT_EQ(pCube->WriteFromDelegated(index), S_OK);
            EXPECT_TRUE(
                memory.Bytes() == WithPixels(before, memory.Shape, pixels.Bytes().data(), pixels.Shape(), nullptr));
        }
    });
}

TEST_F(ResourceFormats, Surface_WriteToDelegated_WholeAndByRectangle)
{
    const RECT rect = {3, 2, 6, 4};
    EachOf([&](D3DDDIFORMAT format, const Size& size, UINT padding) {
        ExactRequest request(0, D3DDDIPOOL_SYSTEMMEM, format, size.Width, size.Height, 1, padding);
        auto* pSurface = Create<UMDRscSurface>(request);
        FakePixels& pixels = m_Fake.Find<FakeSurface>("surface#1").Pixels();
        for (const RECT* pRect : {static_cast<const RECT*>(nullptr), &rect})
        {
            const std::vector<BYTE> before = Scribble(pixels);
            EXPECT_EQ(pSurface->WriteToDelegated(0, pRect), S_OK);
            ExpectUploaded(pixels, before, request.Image(0), pRect);
        }
    });
}

// Memory of more pixels than the sub-resource has on the device.

TEST_F(ResourceFormats, Level_MemoryLargerThanIt_CopiesWhatItHas)
{
    for (UINT level : {1U, 2U})
    {
        const ExactImage memory(kPixel, 64, 64, 0, 3);
        CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, kPixel, 8, 4, 3);
        request.m_Surfaces[level] = memory.Info();
        m_Fake.RestartNames();
        auto* pTexture = Create<UMDRscTexture>(request);
        ExpectNothingBehind(m_Fake.Find<FakeTexture>("texture#1").Level(level).Pixels(), memory,
            [&] { return pTexture->WriteToDelegated(level, nullptr); });
        DestroyAll();
    }
}

TEST_F(ResourceFormats, CubeFace_MemoryLargerThanIt_CopiesWhatItHas)
{
    for (UINT index : {1U, 3U, 10U, 11U})
    {
        const ExactImage memory(kPixel, 64, 64, 0, 3);
        CreateRequest request(kFlagTexture | kFlagCubeMap, D3DDDIPOOL_SYSTEMMEM, kPixel, 8, 8, 2);
        request.m_Surfaces[index] = memory.Info();
        m_Fake.RestartNames();
        auto* pCube = Create<UMDRscCubeTexture>(request);
        ExpectNothingBehind(m_Fake.Find<FakeCubeTexture>("cube#1").Level(index / 2, index % 2).Pixels(), memory,
            [&] { return pCube->WriteToDelegated(index, nullptr); });
        DestroyAll();
    }
}

TEST_F(ResourceFormats, SecondSubResourceOfASurface_MemoryLargerThanIt_CopiesWhatItHas)
{
    const ExactImage memory(kPixel, 64, 64, 0, 3);
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, kPixel, 8, 8, 2);
    request.m_Surfaces[1] = memory.Info();
    auto* pSurface = Create<UMDRscSurface>(request);
    ExpectNothingBehind(
        m_Fake.Find<FakeSurface>("surface#1").Pixels(), memory, [&] { return pSurface->WriteToDelegated(1, nullptr); });
}
