// The trace facility: what prints, how a line looks, and what reaches the log file.
#include "TraceCapture.h"
#include "TraceMask.h"

#include "util/UMDUtilDebugTrace.h"

#include <d3d9.h>

#include <gmock/gmock.h>

#include <fstream>

#include <shlobj.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tesslo::test
{
namespace
{
/// What the log file gained since the object was made, of this process only: other tests write to the same file.
class LogFile
{
public:
    LogFile()
    {
        wchar_t folder[MAX_PATH];
        EXPECT_TRUE(SHGetSpecialFolderPathW(nullptr, folder, CSIDL_COMMON_DOCUMENTS, TRUE));
        m_Path = std::wstring(folder) + L"\\Tesslo.log";
        m_Prefix = "UMD: [" + std::to_string(GetCurrentProcessId() + 10000).substr(1) + ":";
        if (GetCurrentProcessId() >= 10000)
            m_Prefix = "UMD: [" + std::to_string(GetCurrentProcessId()) + ":";
        m_Start = Own().size();
    }

    /// Lines behind their prefix, without line ends.
    std::vector<std::string> NewLines() const
    {
        std::vector<std::string> lines = Own();
        lines.erase(lines.begin(), lines.begin() + m_Start);
        return lines;
    }

private:
    std::vector<std::string> Own() const
    {
        std::vector<std::string> lines;
        std::ifstream file(m_Path.c_str());
        for (std::string line; std::getline(file, line);)
        {
            if (line.starts_with(m_Prefix))
                lines.push_back(line.substr(line.find("] ") + 2));
        }
        return lines;
    }

    std::wstring m_Path;
    std::string m_Prefix;
    size_t m_Start;
};

/// Raw text of debugger output, prefix included.
std::string g_Raw;

LONG CALLBACK KeepRaw(EXCEPTION_POINTERS* pPointers)
{
    const EXCEPTION_RECORD& record = *pPointers->ExceptionRecord;
    if (record.ExceptionCode != 0x40010006)
        return EXCEPTION_CONTINUE_SEARCH;
    g_Raw = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    return EXCEPTION_CONTINUE_EXECUTION;
}

struct LevelCase
{
    UINT Mask;
    UINT Level;
    bool Prints;
};

TEST(DebugTrace, Level_AnyBitInTheMask_Prints)
{
    constexpr LevelCase kCases[] = {
        {0, UMDTRACE_ERROR, false},
        {0, UMDTRACE_ALWAYS, false},
        {0x1, 0x1, true},
        {0x2, 0x1, false},
        {0x1, 0x3, true},
        {0x2, 0x3, true},
        {0x4, 0x3, false},
        {0x10, 0x11, true},
        {0x800, 0x7FF, false},
        {0x800, UMDTRACE_ALWAYS, true},
        {0x80000000, UMDTRACE_ALWAYS, true},
        {0x200, 0x204, true},
        {0x4, 0x204, true},
    };
    for (const LevelCase& c : kCases)
    {
        const TraceMask mask(c.Mask & ~UMDTRACE_LOGFILE);
        const TraceCapture trace;
        UMDUtilDebugTrace(c.Level, L"line\n");
        EXPECT_EQ(trace.Lines().size(), c.Prints && (c.Mask & ~UMDTRACE_LOGFILE) ? 1u : 0u)
            << std::hex << c.Mask << " " << c.Level;
    }
}

TEST(DebugTrace, Macro_LevelOff_EvaluatesNoArgument)
{
    int evaluated = 0;
    {
        const TraceMask mask(UMDTRACE_DDI);
        UMD_TRACE(UMDTRACE_ERROR, L"%d\n", ++evaluated);
        EXPECT_EQ(evaluated, 0);
        UMD_TRACE(UMDTRACE_DDI, L"%d\n", ++evaluated);
    }
    EXPECT_EQ(evaluated, 1);
}

TEST(DebugTrace, Line_Prefix_HasProcessAndThreadWithFourDigits)
{
    const TraceMask mask(UMDTRACE_ERROR);
    void* hHandler = AddVectoredExceptionHandler(1, KeepRaw);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"hello %d\n", 7);
    RemoveVectoredExceptionHandler(hHandler);
    char expected[64];
    sprintf_s(expected, "UMD: [%04lu:%04lu] hello 7\n", GetCurrentProcessId(), GetCurrentThreadId());
    EXPECT_EQ(g_Raw, expected);
}

TEST(DebugTrace, Line_Strings_HaveThePlatformsMeaning)
{
    const TraceMask mask(UMDTRACE_ERROR);
    const TraceCapture trace;
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"%s|%S|%d|%u|0x%x|%02d\n", L"wide", "narrow", -1, 0xFFFFFFFFu, 0xABCDu, 5);
    EXPECT_THAT(trace.Lines(), ElementsAre("wide|narrow|-1|4294967295|0xabcd|05\n"));
}

TEST(DebugTrace, Line_LongMessage_ComesWhole)
{
    const TraceMask mask(UMDTRACE_ERROR);
    const TraceCapture trace;
    const std::wstring message(4000, L'x');
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"%s\n", message.c_str());
    ASSERT_EQ(trace.Lines().size(), 1u);
    EXPECT_EQ(trace.Lines()[0].size(), 4001u);
}

TEST(DebugTrace, Fail_Off_GivesTheResultBackSilently)
{
    const TraceMask mask(UMDTRACE_DDI);
    const TraceCapture trace;
    EXPECT_EQ(UMDFail(E_OUTOFMEMORY, L"failed! 0x%x\n", E_OUTOFMEMORY), E_OUTOFMEMORY);
    EXPECT_THAT(trace.Lines(), IsEmpty());
}

TEST(DebugTrace, Fail_On_TracesAtTheErrorLevel)
{
    const TraceMask mask(UMDTRACE_ERROR);
    const TraceCapture trace;
    EXPECT_EQ(UMDFail(D3DERR_INVALIDCALL, L"failed! 0x%x\n", D3DERR_INVALIDCALL), D3DERR_INVALIDCALL);
    EXPECT_THAT(trace.Lines(), ElementsAre("failed! 0x8876086c\n"));
}

TEST(DebugTraceFile, Mask801_FailureLine_GoesToBoth)
{
    const LogFile file;
    const TraceCapture trace;
    {
        const TraceMask mask(UMDTRACE_LOGFILE | UMDTRACE_ERROR);
        UMDUtilDebugTrace(UMDTRACE_ERROR, L"kept failed! %d\n", 12);
        UMDUtilDebugTrace(UMDTRACE_DDI, L"not printed\n");
    }
    EXPECT_THAT(trace.Lines(), ElementsAre("kept failed! 12\n"));
    EXPECT_THAT(file.NewLines(), ElementsAre("kept failed! 12"));
}

TEST(DebugTraceFile, MaskWithoutFileBit_Line_StaysOutOfTheFile)
{
    const LogFile file;
    {
        const TraceMask mask(UMDTRACE_ERROR);
        UMDUtilDebugTrace(UMDTRACE_ERROR, L"debugger only\n");
    }
    EXPECT_THAT(file.NewLines(), IsEmpty());
}

TEST(DebugTraceFile, Mask800Alone_Message_PrintsNothingAndWritesNothing)
{
    const LogFile file;
    const TraceCapture trace;
    {
        const TraceMask mask(UMDTRACE_LOGFILE);
        for (UINT level : {0x1u, 0x2u, 0x3u, 0x11u, 0x22u, 0x200u, 0x280u})
            UMDUtilDebugTrace(level, L"silent\n");
    }
    EXPECT_THAT(trace.Lines(), IsEmpty());
    EXPECT_THAT(file.NewLines(), IsEmpty());
}

TEST(DebugTraceFile, PercentInTheMessage_IsRightInTheDebuggerAndInterpretedAgainInTheFile)
{
    const LogFile file;
    const TraceCapture trace;
    {
        const TraceMask mask(UMDTRACE_LOGFILE | UMDTRACE_ERROR);
        UMDUtilDebugTrace(UMDTRACE_ERROR, L"name %s end\n", L"50%d");
        UMDUtilDebugTrace(UMDTRACE_ERROR, L"name %s end\n", L"100%%");
        UMDUtilDebugTrace(UMDTRACE_ERROR, L"name %s end\n", L"%s and %S");
    }
    EXPECT_THAT(trace.Lines(), ElementsAre("name 50%d end\n", "name 100%% end\n", "name %s and %S end\n"));
    // What the second formatting reads is zero; null strings print as the platform prints them, wide and narrow alike.
    EXPECT_THAT(file.NewLines(), ElementsAre("name 500 end", "name 100% end", "name (null) and (null) end"));
}

TEST(DebugTraceFile, EveryLine_IsAppended)
{
    const LogFile file;
    {
        const TraceMask mask(UMDTRACE_LOGFILE | UMDTRACE_ERROR);
        for (int i = 0; i < 3; ++i)
            UMDUtilDebugTrace(UMDTRACE_ERROR, L"line %d\n", i);
    }
    EXPECT_THAT(file.NewLines(), ElementsAre("line 0", "line 1", "line 2"));
}
} // namespace
} // namespace tesslo::test
