// What the facility prints when the loader calls, and the names of exceptions.
#include "RegistryOverride.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include "util/UMDUtilDebugTrace.h"

#include <gmock/gmock.h>

#include <regex>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tesslo::test
{
namespace
{
constexpr const char kSeparator[] = " -----------------------------------------------\n";

TEST(DebugTraceDllMain, Attach_NoMaskInTheRegistry_PrintsNothingAtAll)
{
    const RegistryOverride registry;
    const TraceMask mask(0);
    const TraceCapture trace;
    for (DWORD reason : {1, 2, 3, 0, 9})
        UMDUtilDebugTraceDllMainReason(reason);
    EXPECT_EQ(g_DebugLevelUMD, 0u);
    EXPECT_THAT(trace.Lines(), IsEmpty());
}

TEST(DebugTraceDllMain, Attach_MaskInTheRegistry_IsTakenAndTheBannerPrints)
{
    RegistryOverride registry;
    registry.SetTraceMask(0x2);
    const TraceMask mask(0);
    const TraceCapture trace;
    UMDUtilDebugTraceDllMainReason(DLL_PROCESS_ATTACH);
    EXPECT_EQ(g_DebugLevelUMD, 0x2u);
    const std::vector<std::string> lines = trace.Lines();
    ASSERT_EQ(lines.size(), 12u); // five of them the logo
    EXPECT_EQ(lines[5], "\n");
    EXPECT_EQ(lines[6], kSeparator);
    EXPECT_EQ(lines[7], "| Tesslo WDDM Umode DllMain\n");
    EXPECT_TRUE(std::regex_match(lines[8], std::regex("\\| Build: [A-Z][a-z]{2} [ 1-3]\\d \\d{4} \\d\\d:\\d\\d:\\d\\d\n")))
        << lines[8];
    EXPECT_EQ(lines[10], kSeparator);
    EXPECT_EQ(lines[11], "DLL_PROCESS_ATTACH\n");
}

TEST(DebugTraceDllMain, Attach_CallLine_HasTheMonthBeforeTheDay)
{
    RegistryOverride registry;
    registry.SetTraceMask(0x1);
    const TraceMask mask(0);
    const TraceCapture trace;
    SYSTEMTIME before = {};
    GetLocalTime(&before);
    UMDUtilDebugTraceDllMainReason(DLL_PROCESS_ATTACH);
    int month = 0, day = 0, year = 0, hour = 0, minute = 0, second = 0;
    ASSERT_EQ(trace.LinesContaining("| Call:").size(), 1u);
    const std::string line = trace.LinesContaining("| Call:")[0];
    EXPECT_TRUE(std::regex_match(line, std::regex("\\| Call:  \\d\\d\\.\\d\\d\\. \\d+  \\d\\d:\\d\\d:\\d\\d\n")))
        << line;
    ASSERT_EQ(sscanf_s(line.c_str(), "| Call:  %d.%d. %d  %d:%d:%d", &month, &day, &year, &hour, &minute, &second), 6);
    EXPECT_EQ(year, before.wYear);
    EXPECT_EQ(month, before.wMonth);
    EXPECT_EQ(day, before.wDay);
}

TEST(DebugTraceDllMain, OtherReasons_AnyMask_PrintTheirName)
{
    const TraceMask mask(0x40);
    const TraceCapture trace;
    UMDUtilDebugTraceDllMainReason(DLL_THREAD_ATTACH);
    UMDUtilDebugTraceDllMainReason(DLL_THREAD_DETACH);
    UMDUtilDebugTraceDllMainReason(DLL_PROCESS_DETACH);
    UMDUtilDebugTraceDllMainReason(17);
    EXPECT_THAT(trace.Lines(),
        ElementsAre("DLL_THREAD_ATTACH\n", "DLL_THREAD_DETACH\n", "DLL_PROCESS_DETACH\n",
            "DllMain unknown reason! 17\n"));
}

struct ExceptionCase
{
    DWORD Code;
    const char* pLine;
};

TEST(DebugTraceException, EveryCode_PrintsItsNameAndTakesTheHandler)
{
    constexpr ExceptionCase kCases[] = {
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
    };
    const TraceMask mask(UMDTRACE_ERROR);
    for (const ExceptionCase& c : kCases)
    {
        const TraceCapture trace;
        EXPECT_EQ(UMDUtilDebugTraceException(c.Code), EXCEPTION_EXECUTE_HANDLER);
        EXPECT_THAT(trace.Lines(), ElementsAre(c.pLine));
    }
}

TEST(DebugTraceException, Code_ErrorsOff_TakesTheHandlerSilently)
{
    const TraceMask mask(~UMDTRACE_ERROR & ~UMDTRACE_LOGFILE);
    const TraceCapture trace;
    EXPECT_EQ(UMDUtilDebugTraceException(0xC0000005), EXCEPTION_EXECUTE_HANDLER);
    EXPECT_THAT(trace.Lines(), IsEmpty());
}
} // namespace
} // namespace tesslo::test
