// Triangles through the built driver on a real Direct3D 9Ex device: every way to draw shows the same picture.
#include "SamePixels.h"
#include "host/runtime/HostSession.h"
#include "host/scenes/HostMesh.h"
#include "host/scenes/HostShading.h"
#include "host/scenes/HostTurningScene.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr UINT kSize = 96;
constexpr UINT kBackground = 0x102030;
constexpr float kPi = 3.14159265f;

class HostTurningTest : public testing::Test
{
protected:
    HostTurningTest()
        : m_Session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0}), m_Device(m_Session.Device()),
          m_pTarget(m_Device.CreateRenderTarget(kSize, kSize)), m_pDepth(m_Device.CreateDepthStencil(kSize, kSize)),
          m_Shading(m_Device), m_pCube(std::make_unique<HostMesh>(m_Device, HostGeometry::Cube())),
          m_pSquare(std::make_unique<HostMesh>(m_Device, HostGeometry::Square()))
    {
    }

    void Begin(float depth = 1)
    {
        m_Device.SetRenderTarget(*m_pTarget);
        m_Device.SetDepthStencil(m_pDepth.get());
        m_Device.ClearAll(kBackground, depth);
        m_Shading.Bind();
    }

    std::unique_ptr<HostResource> Plain(UINT color)
    {
        HostImage image(8, 8);
        image.Fill({0, 0, 8, 8}, color);
        return m_Device.CreateTexture(image);
    }

    HostImage Picture() { return m_Device.ReadBack(*m_pTarget); }

    static HostMatrix View() { return HostMatrix::Perspective(kPi / 3, 1, 1, 20) * HostMatrix::Translation(0, 0, 4); }

    HostSession m_Session;
    HostDevice& m_Device;
    std::unique_ptr<HostResource> m_pTarget;
    std::unique_ptr<HostResource> m_pDepth;
    HostShading m_Shading;
    std::unique_ptr<HostMesh> m_pCube;
    std::unique_ptr<HostMesh> m_pSquare;
};

}  // namespace

TEST_F(HostTurningTest, Draw_AllPaths_GiveTheSamePicture)
{
    HostImage pattern(16, 16);
    for (UINT i = 0; i < pattern.m_Pixels.size(); ++i)
        pattern.m_Pixels[i] = i * 0x010305 & 0xFFFFFF;
    const auto pTexture = m_Device.CreateTexture(pattern);
    std::vector<HostImage> pictures;
    for (HostDrawPath path : kHostDrawPaths)
    {
        Begin();
        m_Shading.SetLamp();
        m_Shading.SetTexture(*pTexture);
        m_Shading.SetPlace(View(), HostMatrix::Rotation(1, 0.5f) * HostMatrix::Rotation(0, 0.4f));
        m_pCube->Draw(path);
        pictures.push_back(Picture());
    }
    const auto drawn = std::ranges::count_if(pictures[0].m_Pixels, [](UINT pixel) { return pixel != kBackground; });
    EXPECT_GT(drawn, kSize * kSize / 6) << "the cube is there";
    EXPECT_LT(drawn, kSize * kSize) << "and not everywhere";
    for (size_t i = 1; i < pictures.size(); ++i)
        EXPECT_TRUE(SamePixels(pictures[i], pictures[0])) << "path " << i;
}

TEST_F(HostTurningTest, Draw_FullLight_TexelsKeepTheirColours)
{
    // Four texels, each a quarter of the square; texture top at the picture's top.
    HostImage quarters(2, 2);
    quarters.m_Pixels = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};
    const auto pTexture = m_Device.CreateTexture(quarters);
    Begin();
    m_Shading.SetFullLight();
    m_Shading.SetTexture(*pTexture);
    m_Shading.SetPlace(HostMatrix::Identity(), HostMatrix::Identity());
    m_pSquare->Draw(HostDrawPath::UserMemory);
    const HostImage picture = Picture();
    EXPECT_EQ(picture.At(kSize / 4, kSize / 4), 0xFF0000u);
    EXPECT_EQ(picture.At(kSize * 3 / 4, kSize / 4), 0x00FF00u);
    EXPECT_EQ(picture.At(kSize / 4, kSize * 3 / 4), 0x0000FFu);
    EXPECT_EQ(picture.At(kSize * 3 / 4, kSize * 3 / 4), 0xFFFF00u);
}

TEST_F(HostTurningTest, Draw_Tint_MultipliesTheTexture)
{
    const auto pTexture = Plain(0xFF80FF);
    Begin();
    m_Shading.SetFullLight();
    m_Shading.SetTexture(*pTexture);
    m_Shading.SetPlace(HostMatrix::Identity(), HostMatrix::Identity(), 0xFFFF00);
    m_pSquare->Draw(HostDrawPath::SystemBuffer);
    EXPECT_EQ(Picture().At(kSize / 2, kSize / 2), 0xFF8000u);
}

TEST_F(HostTurningTest, Draw_FartherSquareLast_StaysHiddenBehindTheNearer)
{
    const auto pNear = Plain(0x00FF00), pFar = Plain(0xFF0000);
    Begin();
    m_Shading.SetFullLight();
    m_Shading.SetTexture(*pNear);
    m_Shading.SetPlace(View(), HostMatrix::Scaling(0.5f));
    m_pSquare->Draw(HostDrawPath::VideoBuffer);
    m_Shading.SetTexture(*pFar);
    m_Shading.SetPlace(View(), HostMatrix::Translation(0, 0, 1));
    m_pSquare->Draw(HostDrawPath::VideoBufferIndexed);
    const HostImage picture = Picture();
    EXPECT_EQ(picture.At(kSize / 2, kSize / 2), 0x00FF00u) << "the nearer one";
    EXPECT_EQ(picture.At(kSize / 2, kSize * 36 / 100), 0xFF0000u) << "the farther one around it";
    EXPECT_EQ(picture.At(2, 2), kBackground);
}

TEST_F(HostTurningTest, Draw_LampOnTheOtherSide_LeavesTheLightOfAllRound)
{
    const auto pTexture = Plain(0xFFFFFF);
    Begin();
    m_Shading.SetLamp();
    m_Shading.SetTexture(*pTexture);
    // Half a turn: the square's normal points away from the lamp.
    m_Shading.SetPlace(View(), HostMatrix::Rotation(1, kPi));
    m_pSquare->Draw(HostDrawPath::UserMemoryIndexed);
    EXPECT_EQ(Picture().At(kSize / 2, kSize / 2), 0x333333u) << "a fifth of white";
}

TEST_F(HostTurningTest, Scene_FramesApart_ShowDifferentPicturesAndTheSameAgain)
{
    const auto pPrimary = m_Device.CreatePrimary(160, 120, 0, D3DDDI_ROTATION_IDENTITY);
    HostTurningScene scene;
    const auto draw = [&](UINT frame) {
        scene.Draw(m_Device, *pPrimary, frame);
        return m_Device.ReadBack(*pPrimary);
    };
    const HostImage first = draw(0);
    EXPECT_FALSE(SamePixels(draw(20), first));
    EXPECT_TRUE(SamePixels(draw(0), first));
    EXPECT_TRUE(m_Session.Kernel().Violations().empty());
}

TEST_F(HostTurningTest, Scene_Tiles_AreAllTheSameCanvas)
{
    // A fifth of the canvas, an odd number: every pixel has one texel in its middle, wherever the tile lies.
    constexpr UINT tile = 96;
    const auto pPrimary = m_Device.CreatePrimary(6 * tile, 3 * tile, 0, D3DDDI_ROTATION_IDENTITY);
    HostTurningScene scene;
    scene.Draw(m_Device, *pPrimary, 10);
    const HostImage picture = m_Device.ReadBack(*pPrimary);
    const auto cut = [&](UINT left, UINT top) {
        HostImage image(tile, tile);
        for (UINT y = 0; y < tile; ++y)
            for (UINT x = 0; x < tile; ++x)
                image.m_Pixels[y * tile + x] = picture.At(left + x, top + y);
        return image;
    };
    const HostImage first = cut(0, 0);
    for (UINT row = 0; row < 3; ++row)
    {
        EXPECT_TRUE(SamePixels(cut(0, row * tile), first)) << row;
        EXPECT_TRUE(SamePixels(cut(5 * tile, row * tile), first)) << row;
    }
    EXPECT_FALSE(SamePixels(cut(2 * tile, tile), first)) << "the turning square stands in the middle";
}
