// Scenes that the driver must show exactly as a plain device of the same adapter does.
#include "DifferentialScenes.h"
#include "host/runtime/HostError.h"
#include "tools/painters/DifferentialDriverPainter.h"
#include "tools/painters/DifferentialPlainPainter.h"

#include <gtest/gtest.h>

namespace
{

class DifferentialScenes : public testing::TestWithParam<DifferentialScene>
{
};

template <typename AnyPainter>
std::vector<DifferentialPicture> FramesOf(const DifferentialScene& scene)
{
    AnyPainter painter;
    try
    {
        scene.m_Draw(painter);
    }
    catch (const HostError& error)
    {
        ADD_FAILURE() << error.what();
    }
    return painter.Frames();
}

}  // namespace

TEST_P(DifferentialScenes, EveryFrame_DriverAndPlainDevice_SamePixels)
{
    // One after the other: with both devices in the process at once, Wine's never ends the driver's.
    const std::vector<DifferentialPicture> fromPlain = FramesOf<DifferentialPlainPainter>(GetParam());
    const std::vector<DifferentialPicture> fromDriver = FramesOf<DifferentialDriverPainter>(GetParam());
    ASSERT_EQ(fromDriver.size(), fromPlain.size());
    ASSERT_FALSE(fromPlain.empty());
    for (size_t i = 0; i < fromPlain.size(); ++i)
    {
        const std::string name = GetParam().m_Name + "-" + std::to_string(i);
        EXPECT_EQ(DifferentialCompare(name, fromDriver[i], fromPlain[i]), "") << "frame " << i;
        EXPECT_FALSE(fromPlain[i].IsOneColor()) << "frame " << i << " shows nothing";
        if (i > 0)
        {
            EXPECT_FALSE(fromPlain[i - 1] == fromPlain[i]) << "frame " << i << " adds nothing";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Draws, DifferentialScenes, testing::ValuesIn(DifferentialDrawScenes()),
    [](const auto& info) { return info.param.m_Name; });
INSTANTIATE_TEST_SUITE_P(States, DifferentialScenes, testing::ValuesIn(DifferentialStateScenes()),
    [](const auto& info) { return info.param.m_Name; });
INSTANTIATE_TEST_SUITE_P(Shaders, DifferentialScenes, testing::ValuesIn(DifferentialShaderScenes()),
    [](const auto& info) { return info.param.m_Name; });
INSTANTIATE_TEST_SUITE_P(Blits, DifferentialScenes, testing::ValuesIn(DifferentialBlitScenes()),
    [](const auto& info) { return info.param.m_Name; });
INSTANTIATE_TEST_SUITE_P(Fills, DifferentialScenes, testing::ValuesIn(DifferentialFillScenes()),
    [](const auto& info) { return info.param.m_Name; });
