// Each cause that docs/support.md names is played through the host, with the mask that the page tells to set; the lines
// that it tells to look for are then in the log file.
#include "MachineLog.h"
#include "SupportPage.h"
#include "SupportScenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

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

INSTANTIATE_TEST_SUITE_P(All, SupportPageLogFile, testing::ValuesIn(AllScenes()), Name);
}  // namespace
