// The log file while others have it open: other threads of ours, other writers, readers.
#include "util/UMDUtilDebugTrace.h"

#include "ImportPatch.h"
#include "Lines.h"
#include "TemporaryFolder.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

using namespace tesslo::test;

namespace
{
std::wstring s_Folder;
std::vector<std::wstring> s_Debugger;
int s_Sleeps;
int s_SleepsUntilClosed;  ///< the file that is held is closed in this one
HANDLE s_hHeld;

BOOL WINAPI AnswerFolder(HWND, wchar_t* pPath, int, BOOL)
{
    wcscpy_s(pPath, MAX_PATH, s_Folder.c_str());
    return TRUE;
}

void WINAPI TakeNothing(const wchar_t*) {}

void WINAPI TakeLine(const wchar_t* pLine)
{
    s_Debugger.push_back(pLine);
}

void WINAPI CountSleep(DWORD milliseconds)
{
    EXPECT_EQ(milliseconds, 1u);
    if (++s_Sleeps == s_SleepsUntilClosed)
        CloseHandle(s_hHeld);
}

/// A log file in a folder of the test's own.
class LogFileTest : public testing::Test
{
protected:
    LogFileTest()
    {
        s_Folder = m_Folder.Path().wstring();
        s_Debugger.clear();
        s_Sleeps = 0;
        s_SleepsUntilClosed = 0;
    }

    std::wstring Path() const { return (m_Folder.Path() / "Tesslo.log").wstring(); }

    /// The lines of the file; what has no end is one, too.
    Lines File() const
    {
        std::ifstream file(m_Folder.Path() / "Tesslo.log");
        Lines lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    /// Opens the file as somebody else does.
    HANDLE Hold(DWORD access, DWORD share) const
    {
        return CreateFileW(Path().c_str(), access, share, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    static std::string Prefix(DWORD thread)
    {
        char prefix[64];
        snprintf(prefix, sizeof(prefix), "UMD: [%04u:%04u] ", static_cast<UINT>(GetCurrentProcessId()),
            static_cast<UINT>(thread));
        return prefix;
    }

    TemporaryFolder m_Folder;
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_LOGFILE};
    ImportPatch m_FolderPath{nullptr, "shell32.dll", "SHGetSpecialFolderPathW", AnswerFolder};
};

TEST_F(LogFileTest, Append_EightThreadsAtOnce_EveryLineArrivesWholeAndInTheOrderOfItsThread)
{
    constexpr int kThreads = 8;
    constexpr int kLines = 250;
    const ImportPatch output(nullptr, "kernel32.dll", "OutputDebugStringW", TakeNothing);
    std::vector<Lines> expected(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&expected, i] {
            for (int line = 0; line < kLines; ++line)
            {
                UMDUtilDebugTrace(UMDTRACE_ERROR, L"line %d of a usual length, ending in a word\n", line);
                expected[i].push_back(Prefix(GetCurrentThreadId()) + "line " + std::to_string(line) +
                                      " of a usual length, ending in a word");
            }
        });
    for (std::thread& thread : threads)
        thread.join();

    const Lines lines = File();
    EXPECT_EQ(lines.size(), size_t{kThreads * kLines});
    for (const Lines& ofThread : expected)
    {
        Lines found;
        std::ranges::copy_if(lines, std::back_inserter(found), [&](const std::string& line) {
            return line.starts_with(ofThread[0].substr(0, ofThread[0].find(']') + 1));
        });
        EXPECT_EQ(found, ofThread);
    }
}

TEST_F(LogFileTest, Append_AnotherWriterHasTheFile_WaitsUntilItIsClosed)
{
    const ImportPatch sleep(nullptr, "kernel32.dll", "Sleep", CountSleep);
    s_hHeld = Hold(GENERIC_WRITE, FILE_SHARE_READ);
    ASSERT_NE(s_hHeld, INVALID_HANDLE_VALUE);
    s_SleepsUntilClosed = 3;
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"late\n");
    EXPECT_EQ(s_Sleeps, 3);
    EXPECT_EQ(File(), Lines{Prefix(GetCurrentThreadId()) + "late"});
}

TEST_F(LogFileTest, Append_AnotherKeepsTheFile_GivesTheLineUpAfterFiftyMilliseconds)
{
    const ImportPatch output(nullptr, "kernel32.dll", "OutputDebugStringW", TakeLine);
    const ImportPatch sleep(nullptr, "kernel32.dll", "Sleep", CountSleep);
    const HANDLE hFile = Hold(GENERIC_READ, 0);
    ASSERT_NE(hFile, INVALID_HANDLE_VALUE);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"lost\n");
    CloseHandle(hFile);
    EXPECT_EQ(s_Sleeps, 50);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"next\n");
    EXPECT_EQ(s_Sleeps, 50);
    EXPECT_EQ(File(), Lines{Prefix(GetCurrentThreadId()) + "next"});
    EXPECT_EQ(s_Debugger.size(), 2u);
}

TEST_F(LogFileTest, Append_AReaderHasTheFile_WritesAtOnce)
{
    const ImportPatch sleep(nullptr, "kernel32.dll", "Sleep", CountSleep);
    const HANDLE hFile = Hold(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_NE(hFile, INVALID_HANDLE_VALUE);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"watched\n");
    EXPECT_EQ(s_Sleeps, 0);
    CloseHandle(hFile);
    EXPECT_EQ(File(), Lines{Prefix(GetCurrentThreadId()) + "watched"});
}

TEST_F(LogFileTest, Append_FileMayNotBeWritten_StopsAtOnce)
{
    const ImportPatch sleep(nullptr, "kernel32.dll", "Sleep", CountSleep);
    std::filesystem::create_directory(Path());
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"nowhere\n");
    EXPECT_EQ(s_Sleeps, 0);
}

TEST_F(LogFileTest, Append_FolderMissing_StopsAtOnce)
{
    const ImportPatch sleep(nullptr, "kernel32.dll", "Sleep", CountSleep);
    s_Folder += L"\\missing";
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"nowhere\n");
    EXPECT_EQ(s_Sleeps, 0);
    EXPECT_FALSE(std::filesystem::exists(s_Folder));
}

TEST_F(LogFileTest, Append_WhateverItMeets_LeavesTheLastErrorAlone)
{
    SetLastError(4711);
    UMDUtilDebugTrace(UMDTRACE_ERROR, L"line\n");
    EXPECT_EQ(GetLastError(), 4711u);
    s_Folder += L"\\missing";
    SetLastError(4711);
    EXPECT_EQ(UMDFail(E_FAIL, L"line\n"), E_FAIL);
    EXPECT_EQ(GetLastError(), 4711u);
}
}  // namespace
