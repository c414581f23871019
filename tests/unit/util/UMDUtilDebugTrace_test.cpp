// The trace function itself: what prints, how it is formatted for the debugger, and how once more for the log file.
#include "util/UMDUtilDebugTrace.h"

#include "ImportPatch.h"
#include "TemporaryFolder.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

using namespace tesslo::test;

namespace
{
std::vector<std::wstring> s_Lines;
std::wstring s_Folder;
int s_FolderCalls;

void WINAPI TakeLine(const wchar_t* pLine)
{
    s_Lines.push_back(pLine);
}

BOOL WINAPI AnswerFolder(HWND hOwner, wchar_t* pPath, int folder, BOOL create)
{
    ++s_FolderCalls;
    EXPECT_EQ(hOwner, nullptr);
    EXPECT_EQ(folder, 46);
    EXPECT_FALSE(create);
    wcscpy_s(pPath, MAX_PATH, s_Folder.c_str());
    return !s_Folder.empty();
}

/// What a message made, and what of it stands in the log file.
struct MadeRow
{
    const wchar_t* m_pMade;
    const char* m_pInFile;
};

std::wstring Prefix()
{
    wchar_t prefix[64];
    swprintf_s(prefix, ARRAYSIZE(prefix), L"UMD: [%04u:%04u] ", static_cast<UINT>(GetCurrentProcessId()),
        static_cast<UINT>(GetCurrentThreadId()));
    return prefix;
}

/// Takes the lines instead of the debugger, and keeps the log file in a folder of the test's own.
class UMDUtilDebugTraceTest : public testing::Test
{
protected:
    UMDUtilDebugTraceTest()
    {
        s_Folder = m_Folder.Path().wstring();
        s_FolderCalls = 0;
        s_Lines.clear();
    }

    /// The lines behind the prefix of this thread, in one string.
    static std::wstring Debugger()
    {
        std::wstring text;
        for (const std::wstring& line : s_Lines)
            text += line.starts_with(Prefix()) ? line.substr(Prefix().size()) : L"without prefix: " + line;
        return text;
    }

    std::filesystem::path Path() const { return m_Folder.Path() / "Tesslo.log"; }

    std::string File() const
    {
        std::ifstream file(Path());
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    /// What the file has behind the prefix of a line whose message is this text. The debugger gets the text as it is.
    std::string LoggedOf(const std::wstring& text) const
    {
        const TraceMask mask(UMDTRACE_ERROR | UMDTRACE_LOGFILE);
        std::filesystem::remove(Path());
        s_Lines.clear();
        UMDUtilDebugTrace(UMDTRACE_ERROR, L"%s", text.c_str());
        EXPECT_EQ(Debugger(), text);
        EXPECT_TRUE(File().starts_with(NarrowPrefix()));
        return File().substr(NarrowPrefix().size());
    }

    static std::string NarrowPrefix()
    {
        const std::wstring prefix = Prefix();
        return std::string(prefix.begin(), prefix.end());
    }

    TemporaryFolder m_Folder;
    ImportPatch m_Output{nullptr, "kernel32.dll", "OutputDebugStringW", TakeLine};
    ImportPatch m_FolderPath{nullptr, "shell32.dll", "SHGetSpecialFolderPathW", AnswerFolder};
};

TEST_F(UMDUtilDebugTraceTest, Mask_EachBitAgainstEachLevel_PrintsWhereTheyMeet)
{
    const UINT levels[] = {0x1, 0x2, 0x3, 0x4, 0x6, 0x8, 0x10, 0x11, 0x20, 0x22, 0x40, 0x80, 0x100, 0x102, 0x200, 0x204,
        0x280, 0xFFFFFFFF};
    for (UINT bit = 0; bit < 32; ++bit)
    {
        if (1u << bit == UMDTRACE_LOGFILE)
            continue;
        TraceMask mask(1u << bit);
        for (const UINT level : levels)
        {
            s_Lines.clear();
            UMDUtilDebugTrace(level, L"line\n");
            EXPECT_EQ(s_Lines.size(), (level >> bit) & 1) << "bit " << bit << " level " << level;
        }
    }
    EXPECT_EQ(s_FolderCalls, 0);
}

TEST_F(UMDUtilDebugTraceTest, Mask_Zero_PrintsNothingAtAnyLevel)
{
    TraceMask mask(0);
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"line\n");
    UMD_TRACE(UMDTRACE_ALWAYS, L"line\n");
    EXPECT_EQ(UMDFail(E_FAIL, L"failed! 0x%x\n", E_FAIL), E_FAIL);
    EXPECT_TRUE(s_Lines.empty());
}

TEST_F(UMDUtilDebugTraceTest, Mask_LogFileBitAlone_PrintsNothingAndWritesNoFile)
{
    TraceMask mask(UMDTRACE_LOGFILE);
    for (UINT bit = 0; bit < 32; ++bit)
    {
        if (1u << bit != UMDTRACE_LOGFILE)
            UMDUtilDebugTrace(1u << bit, L"line\n");
    }
    EXPECT_TRUE(s_Lines.empty());
    EXPECT_EQ(s_FolderCalls, 0);
    EXPECT_FALSE(std::filesystem::exists(Path()));
}

TEST_F(UMDUtilDebugTraceTest, Macro_LevelOff_DoesNotEvaluateItsArguments)
{
    int evaluated = 0;
    TraceMask mask(UMDTRACE_ERROR);
    UMD_TRACE(UMDTRACE_DDI, L"%d\n", ++evaluated);
    EXPECT_EQ(evaluated, 0);
    UMD_TRACE(UMDTRACE_ERROR, L"%d\n", ++evaluated);
    EXPECT_EQ(evaluated, 1);
    EXPECT_EQ(Debugger(), L"1\n");
}

TEST_F(UMDUtilDebugTraceTest, Line_AnyMessage_StandsBehindProcessAndThreadInOneString)
{
    TraceMask mask(UMDTRACE_DDI);
    UMDUtilDebugTrace(UMDTRACE_DDI, L"=> Name %d 0x%x\n", -7, 0xBEEFu);
    ASSERT_EQ(s_Lines.size(), 1u);
    EXPECT_EQ(s_Lines[0], Prefix() + L"=> Name -7 0xbeef\n");
}

TEST_F(UMDUtilDebugTraceTest, Line_OtherThread_CarriesItsId)
{
    TraceMask mask(UMDTRACE_DDI);
    std::wstring expected;
    std::thread([&] {
        expected = Prefix() + L"worker\n";
        UMDUtilDebugTrace(UMDTRACE_DDI, L"worker\n");
    }).join();
    EXPECT_EQ(s_Lines, std::vector<std::wstring>{expected});
    EXPECT_NE(Prefix() + L"worker\n", expected);
}

TEST_F(UMDUtilDebugTraceTest, Message_WithoutLineFeed_GetsNone)
{
    TraceMask mask(UMDTRACE_DDI);
    UMDUtilDebugTrace(UMDTRACE_DDI, L"open end");
    EXPECT_EQ(Debugger(), L"open end");
}

TEST_F(UMDUtilDebugTraceTest, Strings_WideAndNarrow_HaveThePlatformsMeaning)
{
    TraceMask mask(UMDTRACE_DDI | UMDTRACE_LOGFILE);
    UMDUtilDebugTrace(UMDTRACE_DDI, L"%s %S\n", L"wide", "narrow");
    EXPECT_EQ(Debugger(), L"wide narrow\n");
    EXPECT_EQ(File(), NarrowPrefix() + "wide narrow\n");
}

TEST_F(UMDUtilDebugTraceTest, Message_FillsTheRoomBehindThePrefix_PrintsWhole)
{
    TraceMask mask(UMDTRACE_DDI);
    const std::wstring longest(4096 - Prefix().size() - 1, L'x');
    UMDUtilDebugTrace(UMDTRACE_DDI, L"%s", longest.c_str());
    EXPECT_EQ(Debugger(), longest);
}

TEST_F(UMDUtilDebugTraceTest, Message_OneCharacterTooLong_IsDroppedNotCut)
{
    TraceMask mask(UMDTRACE_DDI);
    const std::wstring tooLong(4096 - Prefix().size(), L'x');
    UMDUtilDebugTrace(UMDTRACE_DDI, L"%s", tooLong.c_str());
    EXPECT_EQ(s_Lines, std::vector<std::wstring>{Prefix()});
}

TEST_F(UMDUtilDebugTraceTest, LogFile_LinesOfBothKinds_AreAppendedInOrder)
{
    TraceMask mask(UMDTRACE_ERROR | UMDTRACE_LOGFILE);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"first\n");
    UMDUtilDebugTrace(UMDTRACE_DDI, L"off\n");
    EXPECT_EQ(UMDFail(E_INVALIDARG, L"second failed! 0x%x\n", E_INVALIDARG), E_INVALIDARG);
    EXPECT_EQ(Debugger(), L"first\nsecond failed! 0x80070057\n");
    EXPECT_EQ(File(), NarrowPrefix() + "first\n" + NarrowPrefix() + "second failed! 0x80070057\n");
    EXPECT_EQ(s_FolderCalls, 2) << "one look-up a line";
}

TEST_F(UMDUtilDebugTraceTest, LogFile_BehindEachLine_IsClosed)
{
    TraceMask mask(UMDTRACE_ERROR | UMDTRACE_LOGFILE);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"line\n");
    EXPECT_TRUE(std::filesystem::remove(Path()));
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"new file\n");
    EXPECT_EQ(File(), NarrowPrefix() + "new file\n");
}

TEST_F(UMDUtilDebugTraceTest, LogFile_PercentThatTheMessageMade_IsInterpretedAgain)
{
    // Zeros stand behind the line, as many as it asks for.
    const MadeRow rows[] = {
        {L"100%% %d.", "100% 0."},
        {L"a%sb", "a(null)b"},
        {L"a%Sb", "a(null)b"},
        {L"%d%d%d%d%d%d%d%d", "00000000"},
        {L"%x %u %04d", "0 0 0000"},
        {L"%.1f", "0.0"},
        {L"%%", "%"},
    };
    for (const MadeRow& row : rows)
        EXPECT_EQ(LoggedOf(std::wstring(row.m_pMade) + L"\n"), std::string(row.m_pInFile) + "\n");
}

TEST_F(UMDUtilDebugTraceTest, LogFile_LineFullOfDirectives_ReadsAZeroForEach)
{
    struct Case
    {
        std::wstring m_Unit;  ///< repeated until the line is full
        std::string m_InFile;
    };
    const Case cases[] = {{L"%d", "0"}, {L"%s", "(null)"}, {L"%S", "(null)"}, {L"%*.*f", "0"}, {L"%I64x", "0"},
        {L"%p", "0000000000000000"}, {L"%hs", "(null)"}, {L"%%", "%"}};
    for (const Case& row : cases)
    {
        std::wstring made;
        std::string expected;
        while (Prefix().size() + made.size() + row.m_Unit.size() < 4096)
        {
            made += row.m_Unit;
            expected += row.m_InFile;
        }
        EXPECT_EQ(LoggedOf(made), expected);
    }
}

TEST_F(UMDUtilDebugTraceTest, LogFile_HarmfulDirective_IsLeftOut)
{
    const MadeRow rows[] = {
        // Writes through its argument.
        {L"a%nb", "ab"},
        {L"a%n%n%nb%d", "ab0"},
        {L"a%-08.3I64nb", "ab"},
        {L"a%lnb", "ab"},
        {L"a%*.*nb", "ab"},
        {L"%%n", "%n"},
        {L"%%%n", "%"},
        {L"%5d%n%x", "    00"},
        // Fills the disk.
        {L"a%2000000000db", "ab"},
        {L"a%.1000db", "ab"},
        {L"a%3.3db", "a000b"},
        {L"a%*.*fb", "a0b"},
        // Ends in the middle.
        {L"a%", "a"},
        {L"a%5", "a"},
        {L"a%-*.*ll", "a"},
    };
    for (const MadeRow& row : rows)
        EXPECT_EQ(LoggedOf(row.m_pMade), row.m_pInFile);
}

TEST_F(UMDUtilDebugTraceTest, LogFile_FolderUnknown_SkipsTheFileAlone)
{
    s_Folder.clear();
    TraceMask mask(UMDTRACE_ERROR | UMDTRACE_LOGFILE);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"line\n");
    EXPECT_EQ(Debugger(), L"line\n");
    EXPECT_EQ(s_FolderCalls, 1);
    EXPECT_FALSE(std::filesystem::exists(Path()));
}

TEST_F(UMDUtilDebugTraceTest, LogFile_CannotBeOpened_SkipsTheFileAlone)
{
    std::filesystem::create_directory(Path());
    TraceMask mask(UMDTRACE_ERROR | UMDTRACE_LOGFILE);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"line\n");
    EXPECT_EQ(Debugger(), L"line\n");
    EXPECT_TRUE(std::filesystem::is_directory(Path()));
}

TEST_F(UMDUtilDebugTraceTest, Low32_AddressAboveFourGigabytes_KeepsItsLowHalf)
{
    EXPECT_EQ(UMDLow32(reinterpret_cast<void*>(0x123456789ABCDEF0)), 0x9ABCDEF0u);
    EXPECT_EQ(UMDLow32(nullptr), 0u);
}
}  // namespace
