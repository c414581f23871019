// The test card, as it comes out of the built driver on a real Direct3D 9Ex device.
#include "RotatedImage.h"
#include "SamePixels.h"
#include "Waiting.h"
#include "host/runtime/HostSession.h"
#include "host/scenes/HostCardScene.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr UINT kWidth = 320, kHeight = 240, kFrame = 907;
constexpr UINT kWhite = 0xFFFFFF;
constexpr UINT kArrow = 0xF0C020;

/// Where a rotation takes the marks of the corners and the arrow's tip, which is at 160,15 as presented.
struct Turned
{
    D3DDDI_ROTATION m_Rotation;
    UINT m_TopLeft, m_TopRight, m_BottomLeft, m_BottomRight;
    POINT m_Tip;
    POINT m_AboveTip;
};

constexpr UINT kRed = HostCardScene::kTopLeft, kGreen = HostCardScene::kTopRight;
constexpr UINT kBlue = HostCardScene::kBottomLeft, kYellow = HostCardScene::kBottomRight;
constexpr Turned kTurned[] = {
    {D3DDDI_ROTATION_IDENTITY, kRed, kGreen, kBlue, kYellow, {160, 15}, {160, 14}},
    {D3DDDI_ROTATION_90, kGreen, kYellow, kRed, kBlue, {15, 159}, {14, 159}},
    {D3DDDI_ROTATION_180, kYellow, kBlue, kGreen, kRed, {159, 224}, {159, 225}},
    {D3DDDI_ROTATION_270, kBlue, kRed, kYellow, kGreen, {224, 160}, {225, 160}},
};

void PrintTo(const Turned& turned, std::ostream* pStream)
{
    *pStream << (turned.m_Rotation - D3DDDI_ROTATION_IDENTITY) * 90;
}

class HostCardSceneTest : public testing::TestWithParam<Turned>
{
protected:
    /// What reaches the client library of one frame of the card.
    static HostImage Delivered(D3DDDI_ROTATION rotation)
    {
        HostSession session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0});
        session.Delivery().KeepFrames();
        const auto pPrimary = session.Device().CreatePrimary(kWidth, kHeight, 0, rotation);
        HostCardScene scene;
        scene.Draw(session.Device(), *pPrimary, kFrame);
        session.Present(*pPrimary);
        EXPECT_TRUE(session.Delivery().WaitDelivered(0, 1, kLong));
        EXPECT_TRUE(session.Kernel().Violations().empty());
        return session.Delivery().LastFrame(0);
    }
};

}  // namespace

TEST_P(HostCardSceneTest, Delivered_EachRotation_MarksAndArrowAreWhereItTakesThem)
{
    const Turned& turned = GetParam();
    const HostImage picture = Delivered(turned.m_Rotation);
    const bool bUpright = turned.m_Rotation == D3DDDI_ROTATION_IDENTITY || turned.m_Rotation == D3DDDI_ROTATION_180;
    const UINT width = bUpright ? kWidth : kHeight, height = bUpright ? kHeight : kWidth;
    ASSERT_EQ(picture.m_Width, width);
    ASSERT_EQ(picture.m_Height, height);
    for (const auto& [inside, outside] : {std::pair(2u, 1u), std::pair(9u, 10u)})
    {
        EXPECT_EQ(ColorText(picture.At(inside, inside)), ColorText(turned.m_TopLeft));
        EXPECT_EQ(ColorText(picture.At(width - 1 - inside, inside)), ColorText(turned.m_TopRight));
        EXPECT_EQ(ColorText(picture.At(inside, height - 1 - inside)), ColorText(turned.m_BottomLeft));
        EXPECT_EQ(ColorText(picture.At(width - 1 - inside, height - 1 - inside)), ColorText(turned.m_BottomRight));
        EXPECT_NE(picture.At(outside, outside), turned.m_TopLeft);
        EXPECT_NE(picture.At(width - 1 - outside, height - 1 - outside), turned.m_BottomRight);
    }
    const auto at = [&](const POINT& point) {
        return picture.At(static_cast<UINT>(point.x), static_cast<UINT>(point.y));
    };
    EXPECT_EQ(ColorText(at(turned.m_Tip)), ColorText(kArrow));
    EXPECT_NE(at(turned.m_AboveTip), kArrow);
}

TEST_P(HostCardSceneTest, Delivered_EachRotation_BorderIsOnePixelAtTheVeryEdge)
{
    const HostImage picture = Delivered(GetParam().m_Rotation);
    for (UINT x = 0; x < picture.m_Width; ++x)
    {
        EXPECT_EQ(picture.At(x, 0), kWhite) << x;
        EXPECT_EQ(picture.At(x, picture.m_Height - 1), kWhite) << x;
    }
    for (UINT y = 0; y < picture.m_Height; ++y)
    {
        EXPECT_EQ(picture.At(0, y), kWhite) << y;
        EXPECT_EQ(picture.At(picture.m_Width - 1, y), kWhite) << y;
    }
    EXPECT_NE(picture.At(20, 1), kWhite);
    EXPECT_NE(picture.At(1, 20), kWhite);
}

TEST_P(HostCardSceneTest, Delivered_EachRotation_EveryPixelIsTheExpectedCardTurned)
{
    const D3DDDI_ROTATION rotation = GetParam().m_Rotation;
    EXPECT_TRUE(SamePixels(
        Delivered(rotation), RotatedImage(HostCardScene::Expected(kWidth, kHeight, 0, rotation, kFrame), rotation)));
}

INSTANTIATE_TEST_SUITE_P(All, HostCardSceneTest, testing::ValuesIn(kTurned),
    [](const auto& info) { return std::to_string((info.param.m_Rotation - D3DDDI_ROTATION_IDENTITY) * 90); });

TEST(HostCardScene, Expected_OtherSourceSizeRotationOrFrame_IsAnotherPicture)
{
    const HostImage card = HostCardScene::Expected(kWidth, kHeight, 0, D3DDDI_ROTATION_IDENTITY, 1);
    EXPECT_NE(card, HostCardScene::Expected(kWidth, kHeight, 1, D3DDDI_ROTATION_IDENTITY, 1));
    EXPECT_NE(card, HostCardScene::Expected(kWidth, kHeight, 0, D3DDDI_ROTATION_90, 1));
    EXPECT_NE(card, HostCardScene::Expected(kWidth, kHeight, 0, D3DDDI_ROTATION_IDENTITY, 2));
    EXPECT_NE(card, HostCardScene::Expected(kHeight, kWidth, 0, D3DDDI_ROTATION_IDENTITY, 1));
}

TEST(HostCardScene, Expected_Bars_AreTheEightFullColours)
{
    const HostImage card = HostCardScene::Expected(kWidth, kHeight, 0, D3DDDI_ROTATION_IDENTITY, 0);
    static constexpr UINT kBars[] = {0xFFFFFF, 0xFFFF00, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFF0000, 0x0000FF, 0x000000};
    for (UINT bar = 0; bar < std::size(kBars); ++bar)
        EXPECT_EQ(ColorText(card.At(20 + 35 * bar + 17, 200)), ColorText(kBars[bar])) << bar;
}

TEST(HostCardScene, Draw_ModeChanges_CardIsMadeAnew)
{
    HostSession session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0});
    HostDevice& device = session.Device();
    HostCardScene scene;
    for (const auto& [width, height, rotation] : {std::tuple(kWidth, kHeight, D3DDDI_ROTATION_90),
             std::tuple(kHeight, kWidth, D3DDDI_ROTATION_90), std::tuple(kHeight, kWidth, D3DDDI_ROTATION_180)})
    {
        const auto pPrimary = device.CreatePrimary(width, height, 0, rotation);
        for (UINT frame = 0; frame < 2; ++frame)
        {
            scene.Draw(device, *pPrimary, frame);
            EXPECT_TRUE(
                SamePixels(device.ReadBack(*pPrimary), HostCardScene::Expected(width, height, 0, rotation, frame)));
        }
    }
}

TEST(HostCardScene, Draw_SmallestAndLargeCards_AreTheExpectedOnes)
{
    HostSession session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0});
    for (const auto& [width, height] : {std::pair(64u, 64u), std::pair(65u, 511u), std::pair(1279u, 723u)})
    {
        const auto pPrimary = session.Device().CreatePrimary(width, height, 2, D3DDDI_ROTATION_IDENTITY);
        HostCardScene scene;
        scene.Draw(session.Device(), *pPrimary, 999'999);
        EXPECT_TRUE(SamePixels(session.Device().ReadBack(*pPrimary),
            HostCardScene::Expected(width, height, 2, D3DDDI_ROTATION_IDENTITY, 999'999)));
    }
}
