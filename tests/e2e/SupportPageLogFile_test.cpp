// Each cause that docs/support.md names is played through the host, with the mask that the page tells to set; the lines
// that it tells to look for are then in the log file.
#include "MachineLog.h"
#include "SupportPage.h"
#include "SupportScenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace tesslo::test
{
static void PrintTo(const SupportScene& scene, std::ostream* pStream)
{
    *pStream << scene.m_pCause;
}
}  // namespace tesslo::test

using namespace tesslo::test;

namespace
{
std::vector<SupportScene> AllScenes()
{
    std::vector<SupportScene> scenes;
    for (const auto& some : {SupportScenesClient(), SupportScenesDevice(), SupportScenesSwitch()})
        scenes.insert(scenes.end(), some.begin(), some.end());
    return scenes;
}

std::string Title(const std::string& symptom, const std::string& cause)
{
    return symptom + ": " + cause;
}

std::string Name(const testing::TestParamInfo<SupportScene>& info)
{
    std::string name = Title(info.param.m_pSymptom, info.param.m_pCause);
    bool bBegins = true;
    for (char& letter : name)
    {
        const auto code = static_cast<unsigned char>(letter);
        letter = static_cast<char>(bBegins ? std::toupper(code) : code);
        bBegins = !std::isalnum(code);
    }
    std::erase_if(name, [](unsigned char letter) { return !std::isalnum(letter); });
    return name;
}

class SupportPageLogFile : public testing::TestWithParam<SupportScene>
{
};

TEST(SupportPage, Causes_OfThePage_EachHasItsScene)
{
    std::vector<std::string> onThePage, played;
    for (const SupportCause& cause : ReadSupportPage())
        onThePage.push_back(Title(cause.m_Symptom, cause.m_Cause));
    for (const SupportScene& scene : AllScenes())
        played.push_back(Title(scene.m_pSymptom, scene.m_pCause));
    std::ranges::sort(onThePage);
    std::ranges::sort(played);
    EXPECT_EQ(onThePage, played);
}

TEST_P(SupportPageLogFile, Cause_Played_LeavesTheLinesThatThePagePromises)
{
    const std::vector<SupportCause> page = ReadSupportPage();
    const std::string title = Title(GetParam().m_pSymptom, GetParam().m_pCause);
    const auto cause = std::ranges::find_if(
        page, [&](const SupportCause& some) { return Title(some.m_Symptom, some.m_Cause) == title; });
    ASSERT_NE(cause, page.end()) << title;
    const MachineLog log;
    const DWORD process = GetParam().m_pPlay(cause->m_Mask);
    EXPECT_EQ(cause->Complaint(log.MessagesOf(process)), "");
}

// A line that a program prints though all is well would lead astray.
TEST(SupportPageHealthLogFile, HealthyProgram_Traced_LeavesNoLineThatTellsOfAFailure)
{
    const std::vector<SupportScene> scenes = AllScenes();
    const auto healthy = std::ranges::find(
        scenes, std::string("the trace is on"), [](const SupportScene& scene) { return scene.m_pCause; });
    ASSERT_NE(healthy, scenes.end());
    const MachineLog file;
    const Lines log = file.MessagesOf(healthy->m_pPlay(0xAFF));
    ASSERT_FALSE(log.empty());
    size_t looked = 0;
    for (const SupportCause& cause : ReadSupportPage())
        for (const SupportLine& line : cause.m_Lines)
            if (line.m_Text.find("failed") != std::string::npos || line.m_Text.find("exited") != std::string::npos)
            {
                EXPECT_EQ(line.Count(log), 0u) << line.m_Text;
                ++looked;
            }
    EXPECT_GT(looked, 15u);
}

INSTANTIATE_TEST_SUITE_P(All, SupportPageLogFile, testing::ValuesIn(AllScenes()), Name);
}  // namespace
