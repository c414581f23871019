// A film through the driver's video processor onto an output.
#include "SamePixels.h"
#include "host/runtime/HostSession.h"
#include "host/scenes/HostVideoScene.h"

#include <cstdlib>

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

// The platform's service converts. Not all stretch the video range, 16 to 235, to 0 to 255: white may stay at 235.
constexpr int kTolerance = 24;

testing::AssertionResult Near(UINT actual, UINT expected)
{
    for (UINT shift : {0, 8, 16})
        if (std::abs(static_cast<int>(expected >> shift & 0xFF) - static_cast<int>(actual >> shift & 0xFF)) >
            kTolerance)
            return testing::AssertionFailure()
                   << "expected about " << ColorText(expected) << ", got " << ColorText(actual);
    return testing::AssertionSuccess();
}

}  // namespace

TEST(HostVideoScene, Place_OutputsOfAllShapes_FitsInTheMiddle)
{
    const auto expect = [](const RECT& output, const RECT& place) {
        const RECT got = HostVideoScene::Place(output);
        EXPECT_TRUE(EqualRect(&place, &got)) << got.left << "," << got.top << "," << got.right << "," << got.bottom;
    };
    expect({0, 0, 640, 360}, {0, 0, 640, 360});
    expect({0, 0, 640, 480}, {0, 60, 640, 420});
    expect({0, 0, 800, 360}, {80, 0, 720, 360});
}

TEST(HostVideoScene, Draw_BarsOnATallerOutput_ConvertedScaledAndFramed)
{
    HostSession session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0});
    const auto pPrimary = session.Device().CreatePrimary(640, 480, 0, D3DDDI_ROTATION_IDENTITY);
    HostVideoScene scene;
    scene.Draw(session.Device(), *pPrimary, 0);
    const HostImage picture = session.Device().ReadBack(*pPrimary);
    static constexpr UINT kColors[] = {0xFFFFFF, 0xFFFF00, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFF0000, 0x0000FF};
    for (UINT bar = 0; bar < std::size(kColors); ++bar)
        EXPECT_TRUE(Near(picture.At((2 * bar + 1) * 640 / 14, 150), kColors[bar])) << "bar " << bar;
    EXPECT_TRUE(Near(picture.At(320, 20), 0x000000)) << "frame above";
    EXPECT_TRUE(Near(picture.At(320, 460), 0x000000)) << "frame below";
    EXPECT_TRUE(Near(picture.At(20, 60 + 2 * 150), 0xFFFFFF)) << "the block, at its start";
    EXPECT_TRUE(Near(picture.At(320, 60 + 2 * 150), 0x000000)) << "its way";
    EXPECT_TRUE(session.Kernel().Violations().empty());
}

TEST(HostVideoScene, Draw_LaterFrame_BlockHasMoved)
{
    HostSession session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0});
    const auto pPrimary = session.Device().CreatePrimary(320, 180, 0, D3DDDI_ROTATION_IDENTITY);
    HostVideoScene scene;
    scene.Draw(session.Device(), *pPrimary, 0);
    scene.Draw(session.Device(), *pPrimary, 40);
    const HostImage picture = session.Device().ReadBack(*pPrimary);
    EXPECT_TRUE(Near(picture.At(10, 150), 0x000000));
    EXPECT_TRUE(Near(picture.At(170, 150), 0xFFFFFF));
}
