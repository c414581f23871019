#include "util/UMDUtilDebugTracePrint.h"

#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
/// Line of the flags with these filled slots: eleven slots, single blanks between them.
std::string FlagsLine(const Lines& filled)
{
    std::string line = "   Flags: ";
    for (size_t slot = 0; slot < 11; ++slot)
        line += (slot ? " " : "") + (slot < filled.size() ? filled[slot] : "");
    return line + "\n";
}

std::string PrintedFlags(UINT flags, UMDRESOURCETYPE type)
{
    TraceMask mask(UMDTRACE_RESOURCE);
    TraceCapture trace;
    D3DDDIARG_LOCK lock = {};
    lock.Flags.Value = flags;
    UMDUtilDebugTracePrintLock(&lock, type);
    return trace.Lines().size() == 2 ? trace.Lines()[1] : "not two lines";
}

TEST(UMDUtilDebugTracePrintLock, Request_EachField_StandsInItsPlace)
{
    D3DDDIARG_LOCK lock = {};
    lock.hResource = reinterpret_cast<HANDLE>(0x123456789ABCDEF0);
    lock.SubResourceIndex = 2;
    lock.Area = {3, 4, 5, -6};
    for (const UINT level : {UMDTRACE_DDI, UMDTRACE_RESOURCE})
    {
        TraceMask mask(level);
        TraceCapture trace;
        UMDUtilDebugTracePrintLock(&lock, UMDRESOURCETYPE_TEXTURE);
        EXPECT_EQ(trace.Lines(),
            (Lines{"   Lock: hResource:0x9abcdef0 SubResourceIndex:2 Offset:3 Size:4 left:3 right:5 top:4 bottom:-6\n",
                "   Flags: TEXTURE |           \n"}));
    }
}

TEST(UMDUtilDebugTracePrintLock, Kind_Each_FillsTheFirstSlotOrNone)
{
    EXPECT_EQ(PrintedFlags(0, UMDRESOURCETYPE_TEXTURE), FlagsLine({"TEXTURE | "}));
    EXPECT_EQ(PrintedFlags(0, UMDRESOURCETYPE_RENDERTARGET), FlagsLine({"RENDERTARGET | "}));
    EXPECT_EQ(PrintedFlags(0, UMDRESOURCETYPE_VERTEXBUFFER), FlagsLine({"VERTEXBUFFER | "}));
    EXPECT_EQ(PrintedFlags(0, UMDRESOURCETYPE_INDEXBUFFER), FlagsLine({"INDEXBUFFER | "}));
    for (const UMDRESOURCETYPE type :
        {UMDRESOURCETYPE_UNKNOWN, UMDRESOURCETYPE_SHARED, UMDRESOURCETYPE_ZBUFFER, UMDRESOURCETYPE_CUBETEXTURE,
            UMDRESOURCETYPE_PIXELSHADER, UMDRESOURCETYPE_VERTEXSHADER, UMDRESOURCETYPE_NONE})
        EXPECT_EQ(PrintedFlags(0, type), "   Flags:           \n");
}

TEST(UMDUtilDebugTracePrintLock, Flag_Each_HasItsName)
{
    const char* names[] = {"ReadOnly | ", "WriteOnly | ", "NoOverwrite | ", "Discard | ", "RangeValid | ",
        "AreaValid | ", "BoxValid | ", "NotifyOnly | ", "MightDrawFromLocked | ", "DoNotWait | "};
    for (UINT bit = 0; bit < 32; ++bit)
    {
        const Lines filled = bit < ARRAYSIZE(names) ? Lines{names[bit]} : Lines{};
        EXPECT_EQ(PrintedFlags(1u << bit, UMDRESOURCETYPE_ZBUFFER), FlagsLine(filled)) << "bit " << bit;
    }
}

TEST(UMDUtilDebugTracePrintLock, Flags_AllOfAVertexBuffer_FillAllElevenSlots)
{
    EXPECT_EQ(PrintedFlags(0xFFFFFFFF, UMDRESOURCETYPE_VERTEXBUFFER),
        "   Flags: VERTEXBUFFER |  ReadOnly |  WriteOnly |  NoOverwrite |  Discard |  RangeValid |  AreaValid |  BoxValid |  NotifyOnly |  MightDrawFromLocked |  DoNotWait | \n");
}

TEST(UMDUtilDebugTracePrintLock, Level_NotInTheMask_PrintsNothing)
{
    TraceMask mask(~(UMDTRACE_DDI | UMDTRACE_RESOURCE | UMDTRACE_LOGFILE));
    TraceCapture trace;
    const D3DDDIARG_LOCK lock = {};
    UMDUtilDebugTracePrintLock(&lock, UMDRESOURCETYPE_TEXTURE);
    EXPECT_TRUE(trace.Lines().empty());
}
}  // namespace
