#include "util/UMDUtilDebugTrace.h"

#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
struct ExceptionRow
{
    DWORD m_Code;
    const char* m_pLine;
};

constexpr ExceptionRow kRows[] = {
    {0xC0000005, "EXCEPTION_ACCESS_VIOLATION\n"},
    {0xC000008C, "EXCEPTION_ARRAY_BOUNDS_EXCEEDED\n"},
    {0x80000003, "EXCEPTION_BREAKPOINT\n"},
    {0x80000002, "EXCEPTION_DATATYPE_MISALIGNMENT\n"},
    {0xC000008D, "EXCEPTION_FLT_DENORMAL_OPERAND\n"},
    {0xC000008E, "EXCEPTION_FLT_DIVIDE_BY_ZERO\n"},
    {0xC000008F, "EXCEPTION_FLT_INEXACT_RESULT\n"},
    {0xC0000090, "STATUS_FLOAT_INVALID_OPERATION\n"},
    {0xC0000091, "EXCEPTION_FLT_OVERFLOW\n"},
    {0xC0000092, "EXCEPTION_FLT_STACK_CHECK\n"},
    {0xC0000093, "EXCEPTION_FLT_UNDERFLOW\n"},
    {0x80000001, "EXCEPTION_GUARD_PAGE\n"},
    {0xC000001D, "EXCEPTION_ILLEGAL_INSTRUCTION\n"},
    {0xC0000094, "EXCEPTION_INT_DIVIDE_BY_ZERO\n"},
    {0xC0000095, "EXCEPTION_INT_OVERFLOW\n"},
    {0xC0000026, "EXCEPTION_INVALID_DISPOSITION\n"},
    {0xC0000008, "EXCEPTION_INVALID_HANDLE\n"},
    {0xC0000025, "EXCEPTION_NONCONTINUABLE_EXCEPTION\n"},
    {0xC0000096, "EXCEPTION_PRIV_INSTRUCTION\n"},
    {0x80000004, "EXCEPTION_SINGLE_STEP\n"},
    {0xC00000FD, "EXCEPTION_STACK_OVERFLOW\n"},
    {0x80000029, "STATUS_UNWIND_CONSOLIDATE\n"},
    {0xE06D7363, "EXCEPTION_XXX -529697949 unknown\n"},
    {0, "EXCEPTION_XXX 0 unknown\n"},
    {0x7FFFFFFF, "EXCEPTION_XXX 2147483647 unknown\n"},
    {0x80000000, "EXCEPTION_XXX -2147483648 unknown\n"},
    {0xC0000006, "EXCEPTION_XXX -1073741818 unknown\n"},
};

TEST(UMDUtilDebugTraceException, Code_KnownOrNot_PrintsItsOneLineAndRunsTheHandler)
{
    TraceMask mask(UMDTRACE_ERROR);
    TraceCapture trace;
    for (const ExceptionRow& row : kRows)
    {
        trace.Clear();
        EXPECT_EQ(UMDUtilDebugTraceException(row.m_Code), 1);
        EXPECT_EQ(trace.Lines(), Lines{row.m_pLine}) << std::hex << row.m_Code;
    }
}

TEST(UMDUtilDebugTraceException, Code_ErrorsOff_RunsTheHandlerWithoutALine)
{
    TraceMask mask(~(UMDTRACE_ERROR | UMDTRACE_LOGFILE));
    TraceCapture trace;
    for (const ExceptionRow& row : kRows)
        EXPECT_EQ(UMDUtilDebugTraceException(row.m_Code), 1);
    EXPECT_TRUE(trace.Lines().empty());
}
}  // namespace
