// What a process prints to the debugger, in a file.
#include "ImportPatch.h"
#include "TemporaryFolder.h"
#include "host/program/HostTraceFile.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace tesslo::test;

TEST(HostTraceFile, Complaint_AllWritten_IsEmpty)
{
    TemporaryFolder folder;
    const HostTraceFile trace((folder.Path() / "trace.log").wstring());
    OutputDebugStringW(L"one line\n");
    EXPECT_EQ(trace.Complaint(), "");
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "trace.log"), 9u);
}

TEST(HostTraceFile, Complaint_DiskFullForAWhile_TellsWhyAndHowMuchIsMissing)
{
    TemporaryFolder folder;
    const HostTraceFile trace((folder.Path() / "trace.log").wstring());
    OutputDebugStringW(L"before\n");
    {
        const FailingImport full(nullptr, "kernel32.dll", "WriteFile", FALSE, ERROR_DISK_FULL);
        OutputDebugStringW(L"lost\n");
        OutputDebugStringW(L"and lost\n");
    }
    OutputDebugStringW(L"after\n");
    EXPECT_EQ(trace.Complaint(), "disk full: trace.log is cut short, 14 bytes are missing");
}

TEST(HostTraceFile, Complaint_OfAnEarlierFile_IsForgotten)
{
    TemporaryFolder folder;
    const std::wstring path = (folder.Path() / "trace.log").wstring();
    {
        const HostTraceFile trace(path);
        const FailingImport full(nullptr, "kernel32.dll", "WriteFile", FALSE, ERROR_DISK_FULL);
        OutputDebugStringW(L"lost\n");
    }
    EXPECT_EQ(HostTraceFile(path).Complaint(), "");
}
