#include "SamePixels.h"
#include "SupportProgram.h"
#include "SupportScenes.h"

#include "host/scenes/HostFillScene.h"

#include <gtest/gtest.h>

namespace tesslo::test
{

namespace
{

/// Draws a frame and reads it back from the delegated device.
testing::AssertionResult Draws(SupportProgram& program, HostFillScene& scene, UINT frame)
{
    scene.Draw(program.Device(), program.Screen(), frame);
    return SamePixels(program.Device().ReadBack(program.Screen()),
        HostFillScene::Expected(SupportProgram::kWidth, SupportProgram::kHeight, 0, frame));
}

/// All is drawn, one present succeeds, and nobody gets anything.
DWORD DrawWithoutDelivery(DWORD mask, const std::wstring& clientLibrary)
{
    SupportProgram program(mask, clientLibrary);
    EXPECT_EQ(program.Driver().ClientLibrary(), nullptr);
    HostFillScene scene;
    program.MakeScreen();
    EXPECT_TRUE(Draws(program, scene, 0));
    EXPECT_TRUE(program.Flip());
    program.FlipUntilRefused();
    EXPECT_TRUE(Draws(program, scene, 1)) << "the screen is drawn as before";
    EXPECT_EQ(program.Delivered(), 0u);
    return GetCurrentProcessId();
}

DWORD NameOfNothing(DWORD mask)
{
    return DrawWithoutDelivery(mask, L"none");
}

DWORD NameIsEmpty(DWORD mask)
{
    return DrawWithoutDelivery(mask, L"");
}

DWORD NoName(DWORD mask)
{
    SupportProgram program(mask, std::nullopt);
    EXPECT_EQ(program.Driver().ClientLibrary(), GetModuleHandleW(TESSLO_CLIENT_DEFAULT_DLL));
    HostFillScene scene;
    program.MakeScreen();
    EXPECT_TRUE(Draws(program, scene, 0));
    program.Show();
    return GetCurrentProcessId();
}

constexpr char kSymptom[] = "Draw without delivering frames";
constexpr SupportScene kScenes[] = {
    {kSymptom, "the value names a file that there is not", NameOfNothing},
    {kSymptom, "the value is empty", NameIsEmpty},
    {kSymptom, "the value is not there: no switch", NoName},
};

}  // namespace

std::span<const SupportScene> SupportScenesSwitch()
{
    return kScenes;
}

}  // namespace tesslo::test
