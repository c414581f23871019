#include "kernel/UMDUtilDebugTracePrintOpenResource.h"
#include "util/UMDUtilDebugTracePrint.h"

#include "OpenRequest.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
constexpr const char* kFlagNames[32] = {"RenderTarget | ", "ZBuffer | ", "Dynamic | ", "HintStatic | ",
    "AutogenMipmap | ", "DMap | ", "WriteOnly | ", "NotLockable | ", "Points | ", "RtPatches | ", "NPatches | ",
    "SharedResource | ", "DiscardRenderTarget | ", "Video | ", "CaptureBuffer | ", "Primary | ", "Texture | ",
    "CubeMap | ", "Volume | ", "VertexBuffer | ", "IndexBuffer | ", "DecodeRenderTarget | ",
    "DecodeCompressedBuffer | ", "VideoProcessRenderTarget | ", "CpuOptimized | ", "MightDrawFromLocked | ",
    "Overlay | ", "MatchGdiPrimary | ", "InterlacedRefresh | ", "TextApi | ", "RestrictedContent | ",
    "RestrictSharedAccess"};

/// Lines with the dump's level on, and none with every other level on.
template <typename Print, typename Argument>
Lines Printed(Print* pPrint, const Argument& argument)
{
    TraceCapture trace;
    {
        TraceMask mask(~(UMDTRACE_DDI | UMDTRACE_RESOURCE | UMDTRACE_LOGFILE));
        pPrint(&argument);
        EXPECT_TRUE(trace.Lines().empty());
    }
    TraceMask mask(UMDTRACE_DDI);
    pPrint(&argument);
    const Lines lines = trace.Lines();
    trace.Clear();
    {
        TraceMask other(UMDTRACE_RESOURCE);
        pPrint(&argument);
        EXPECT_EQ(trace.Lines(), lines);
    }
    return lines;
}

Lines PrintedFlags(UINT flags)
{
    D3DDDIARG_CREATERESOURCE create = {};
    create.Flags.Value = flags;
    const Lines lines = Printed(UMDUtilDebugTracePrintCreateResource, create);
    return Lines(lines.begin() + 1, lines.end());
}

/// An opened allocation with a record as the creator of a shared texture stores it.
class UMDUtilDebugTracePrintOpenResourceTest : public testing::Test, protected OpenRequest
{
protected:
    UMDUtilDebugTracePrintOpenResourceTest()
    {
        m_Record.Kind = UMDALLOCATIONKIND_OTHER;
        m_Record.Width = 320;
        m_Record.Height = 200;
        m_Record.Format = 21;
        m_Record.Levels = 2;
        m_Record.MultisampleQuality = 8;
        m_Record.MipLevels = 9;
        m_Record.ResourceFlags = 0x00010001;
        m_Record.DriverHandle = 0xABCD1234;
        m_Record.SharedHandle = 0x55;
        m_Allocation.hAllocation = 0xC0DE;
    }

    /// Lines behind the request's own.
    Lines PrintedAllocations() const
    {
        const Lines lines = Printed(UMDUtilDebugTracePrintOpenResource, m_Open);
        return Lines(lines.begin() + 1, lines.end());
    }
};

TEST(UMDUtilDebugTracePrintResourceType, Type_Each_PrintsItsNameOrNothing)
{
    const char* names[] = {"   Unknown\n", "   Shared\n", "   ZBuffer\n", "   IndexBuffer\n", "   VertexBuffer\n",
        "   RenderTarget\n", "   Texture\n", "   CubeTexture\n"};
    TraceMask mask(UMDTRACE_RESOURCE);
    TraceCapture trace;
    for (UINT type = 0; type < 12; ++type)
    {
        trace.Clear();
        UMDUtilDebugTracePrintResourceType(static_cast<UMDRESOURCETYPE>(type));
        EXPECT_EQ(trace.Lines(), type < ARRAYSIZE(names) ? Lines{names[type]} : Lines{}) << type;
    }
    trace.Clear();
    UMDUtilDebugTracePrintResourceType(UMDRESOURCETYPE_NONE);
    EXPECT_TRUE(trace.Lines().empty());
}

TEST(UMDUtilDebugTracePrintResourceType, Level_NotInTheMask_PrintsNothing)
{
    TraceMask mask(~(UMDTRACE_RESOURCE | UMDTRACE_LOGFILE));
    TraceCapture trace;
    for (UINT type = 0; type < 8; ++type)
        UMDUtilDebugTracePrintResourceType(static_cast<UMDRESOURCETYPE>(type));
    EXPECT_TRUE(trace.Lines().empty());
}

TEST(UMDUtilDebugTracePrintCreateResource, Pool_Each_HasItsName)
{
    const char* names[] = {"D3DDDIPOOL_ invalid value!", "D3DDDIPOOL_SYSTEMMEM", "D3DDDIPOOL_VIDEOMEMORY",
        "D3DDDIPOOL_LOCALVIDMEM", "D3DDDIPOOL_NONLOCALVIDMEM", "D3DDDIPOOL_ invalid value!"};
    for (UINT pool = 0; pool < ARRAYSIZE(names); ++pool)
    {
        D3DDDIARG_CREATERESOURCE create = {};
        create.Pool = static_cast<D3DDDI_POOL>(pool);
        create.Format = static_cast<D3DDDIFORMAT>(22);
        create.MultisampleType = static_cast<D3DDDIMULTISAMPLE_TYPE>(4);
        create.MultisampleQuality = 5;
        create.VidPnSourceId = 6;
        EXPECT_EQ(Printed(UMDUtilDebugTracePrintCreateResource, create)[0],
            "   " + std::string(names[pool]) +
                " Format:22 MultisampleType:4 MultisampleQuality:5 SurfCount:0 VidPnSourceId:6\n");
    }
}

TEST(UMDUtilDebugTracePrintCreateResource, Surfaces_Each_HasALineBetweenRecordAndFlags)
{
    const D3DDDI_SURFACEINFO surfaces[] = {
        {1, 2, 3, reinterpret_cast<void*>(0x1111111122222222), 4, 5},
        {6, 7, 8, nullptr, 9, 10},
    };
    D3DDDIARG_CREATERESOURCE create = {};
    create.Pool = D3DDDIPOOL_SYSTEMMEM;
    create.pSurfList = surfaces;
    create.SurfCount = 2;
    create.Flags.Value = 0x8001;
    EXPECT_EQ(Printed(UMDUtilDebugTracePrintCreateResource, create),
        (Lines{"   D3DDDIPOOL_SYSTEMMEM Format:0 MultisampleType:0 MultisampleQuality:0 SurfCount:2 VidPnSourceId:0\n",
            "   - Surface 0: width=1 height=2 depth=3 pSysMem=0x22222222 SysMemPitch=4 SysMemSlicePitch=5\n",
            "   - Surface 1: width=6 height=7 depth=8 pSysMem=0x0 SysMemPitch=9 SysMemSlicePitch=10\n",
            "   Flags: RenderTarget |  Primary | " + std::string(30, ' ') + "\n"}));
}

TEST(UMDUtilDebugTracePrintCreateResource, Flags_None_PrintsThirtyOneBlanks)
{
    EXPECT_EQ(PrintedFlags(0), Lines{"   Flags: " + std::string(31, ' ') + "\n"});
}

TEST(UMDUtilDebugTracePrintCreateResource, Flag_EachAlone_HasItsNameInTheFirstSlot)
{
    for (UINT bit = 0; bit < 32; ++bit)
        EXPECT_EQ(
            PrintedFlags(1u << bit), Lines{"   Flags: " + std::string(kFlagNames[bit]) + std::string(31, ' ') + "\n"})
            << "bit " << bit;
}

TEST(UMDUtilDebugTracePrintCreateResource, Flags_All_FillAllSlotsInBitOrder)
{
    std::string line = "   Flags: ";
    for (UINT bit = 0; bit < 32; ++bit)
        line += (bit ? " " : "") + std::string(kFlagNames[bit]);
    EXPECT_EQ(PrintedFlags(0xFFFFFFFF), Lines{line + "\n"});
}

TEST_F(UMDUtilDebugTracePrintOpenResourceTest, Request_EachField_StandsInItsPlace)
{
    m_Open.NumAllocations = 0;
    m_Open.hResource = reinterpret_cast<HANDLE>(0x123456789ABCDEF0);
    m_Open.hKMResource = 0x77;
    m_Open.PrivateDriverDataSize = 12;
    const char* flagLines[] = {"", "   Fullscreen\n", "   AlphaOverride\n", "   Fullscreen\n   AlphaOverride\n"};
    for (UINT flags = 0; flags < ARRAYSIZE(flagLines); ++flags)
    {
        m_Open.Flags.Value = flags;
        std::string text;
        for (const std::string& line : Printed(UMDUtilDebugTracePrintOpenResource, m_Open))
            text += line;
        EXPECT_EQ(text, "   OpenResource hResource: 0x9abcdef0 hKMResource: 0x77 PrivateDriverDataSize: 12 Flags: 0x" +
                            std::to_string(flags) + "\n" + flagLines[flags]);
    }
}

TEST_F(UMDUtilDebugTracePrintOpenResourceTest, Allocation_WithAStoredDescription_PrintsIt)
{
    EXPECT_EQ(PrintedAllocations(),
        (Lines{"   - Allocation 0: hAllocation:0xc0de PrivateDriverDataSize:76\n", "   ResourceHandle: 0xabcd1234\n",
            "   D3DDDIPOOL_VIDEOMEMORY Format:21 MultisampleType:0 MultisampleQuality:0 SurfCount:2\n",
            "   - Surface 0: width=320 height=200 depth=2 pSysMem=0x0 SysMemPitch=0 SysMemSlicePitch=0\n",
            "   - Surface 1: width=320 height=200 depth=2 pSysMem=0x0 SysMemPitch=0 SysMemSlicePitch=0\n",
            "   Flags: RenderTarget |  Texture | \n"}));
}

TEST_F(UMDUtilDebugTracePrintOpenResourceTest, StoredFlags_Each_KeepTheirSlots)
{
    const std::pair<UINT, const char*> rows[] = {
        {0x00010000, "   Flags:  Texture | \n"},
        {0x00000001, "   Flags: RenderTarget |  \n"},
        {0xFFFEFFFE, "   Flags:  \n"},
    };
    for (const auto& [flags, pLine] : rows)
    {
        m_Record.ResourceFlags = flags;
        EXPECT_EQ(PrintedAllocations().back(), pLine);
    }
}

TEST_F(UMDUtilDebugTracePrintOpenResourceTest, Allocation_WithOtherPrivateData_PrintsItsLineAlone)
{
    const Lines whole = {"   - Allocation 0: hAllocation:0xc0de PrivateDriverDataSize:76\n"};
    m_Record.Kind = UMDALLOCATIONKIND_PRIMARY;
    EXPECT_EQ(PrintedAllocations(), whole);
    m_Record.Kind = 7;
    EXPECT_EQ(PrintedAllocations(), whole);
    m_Record.Kind = UMDALLOCATIONKIND_OTHER;
    m_Allocation.pPrivateDriverData = nullptr;
    EXPECT_EQ(PrintedAllocations(), whole);
    m_Allocation.pPrivateDriverData = &m_Record;
    m_Allocation.PrivateDriverDataSize = 75;
    EXPECT_EQ(PrintedAllocations(), Lines{"   - Allocation 0: hAllocation:0xc0de PrivateDriverDataSize:75\n"});
}

TEST_F(UMDUtilDebugTracePrintOpenResourceTest, Allocations_Several_EachHasItsLine)
{
    D3DDDI_OPENALLOCATIONINFO allocations[2] = {};
    allocations[0].hAllocation = 0xA;
    allocations[1].hAllocation = 0xB;
    m_Open.NumAllocations = 2;
    m_Open.pOpenAllocationInfo = allocations;
    EXPECT_EQ(PrintedAllocations(), (Lines{"   - Allocation 0: hAllocation:0xa PrivateDriverDataSize:0\n",
                                        "   - Allocation 1: hAllocation:0xb PrivateDriverDataSize:0\n"}));
}
}  // namespace
