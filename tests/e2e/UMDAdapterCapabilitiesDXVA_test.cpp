// The video processor's capabilities, asked through the adapter entry of the DLL.
#include "CapsAdapter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using namespace tesslo::test;

namespace
{
using Words = std::vector<UINT>;

constexpr UINT kGetProcAmpRange = 29;

const Words kBrightness = {0xFF9C0000, 0x00640000, 0x00000000, 0x00001999};
const Words kContrast = {0x00000006, 0x00020000, 0x00010000, 0x00000006};
const Words kHue = {0xFF4C0000, 0x00B40000, 0x00000000, 0x00001999};
const Words kSaturation = {0x00000006, 0x00030000, 0x00010000, 0x00000006};

const std::vector<Words> kTurns = {
    kBrightness, kContrast, kHue, kSaturation, kBrightness, kContrast, kHue, kSaturation, kBrightness};

/// A description with a different number in every field.
DXVADDI_VIDEODESC DistinctDesc()
{
    DXVADDI_VIDEODESC desc = {};
    desc.SampleWidth = 101;
    desc.SampleHeight = 102;
    desc.SampleFormat = {{{2, 3, 4, 5, 6, 7, 8}}};
    desc.Format = D3DDDIFMT_A8R8G8B8;
    desc.InputSampleFreq = {103, 104};
    desc.OutputFrameFreq = {105, 106};
    desc.UABProtectionLevel = 107;
    return desc;
}

// 2 | 3 << 8 | 4 << 12 | 5 << 15 | 6 << 18 | 7 << 22 | 8 << 27
const Lines kDescLines = {
    "UMDUtilDebugTracePrintVideoDesc",
    "SampleWidth: 101  SampleHeight: 102  Format: 21",
    "[SampleFormat: 1104855810]  SampleFormat:2  VideoChromaSubsampling:3  NominalRange:4  VideoTransferMatrix:5  "
    "VideoLighting:6  VideoPrimaries:7  VideoTransferFunction:8",
    "InputSampleFreq: 103 104  OutputFrameFreq: 105 106  UABProtectionLevel: 107",
};

/// The lines of a query without input, with the input's dump in its place: behind a line of an entry, before one of an
/// exit.
Lines WithDump(Lines lines, const Lines& dump)
{
    auto own = std::find_if(lines.begin(), lines.end(),
        [](const std::string& line) { return line.find(" UMDGetAdapterCapabilitiesDXVA") == 3; });
    EXPECT_NE(own, lines.end());
    if (own != lines.end())
        lines.insert(own->starts_with(">>>") ? own + 1 : own, dump.begin(), dump.end());
    return lines;
}
}  // namespace

TEST(AdapterCapabilitiesDXVA, ProcAmpRange_NineQueries_FourControlsInTurn)
{
    CapsAdapter adapter(0);
    for (const Words& turn : kTurns)
        EXPECT_EQ(adapter.Ask(kGetProcAmpRange, 16).Words(4), turn);
}

TEST(AdapterCapabilitiesDXVA, ProcAmpRange_QueryNamesOneControl_AnswerIsTheNextInTurnAnyway)
{
    CapsAdapter adapter(0);
    for (const Words& turn : kTurns)
    {
        DXVADDI_QUERYPROCAMPINPUT input = {};
        input.ProcAmpCap = DXVADDI_PROCAMP_HUE;
        EXPECT_EQ(adapter.Ask(kGetProcAmpRange, 16, &input).Words(4), turn);
    }
}

TEST(AdapterCapabilitiesDXVA, ProcAmpRange_TwoAdapters_ShareOneTurn)
{
    CapsAdapter one(0);
    CapsAdapter other(0);
    for (std::size_t i = 0; i < kTurns.size(); ++i)
        EXPECT_EQ((i % 2 ? other : one).Ask(kGetProcAmpRange, 16).Words(4), kTurns[i]) << "query " << i + 1;
}

TEST(AdapterCapabilitiesDXVA, ProcAmpRange_OtherQueriesBetween_TurnStays)
{
    CapsAdapter adapter(0);
    for (const Words& turn : kTurns)
    {
        for (UINT type = 0; type <= 64; ++type)
        {
            if (type != kGetProcAmpRange)
                adapter.Ask(type, 64);
        }
        EXPECT_EQ(adapter.Ask(kGetProcAmpRange, 16).Words(4), turn);
    }
}

TEST(AdapterCapabilitiesDXVA, ProcAmpRange_EachTurn_PrintsTheRange)
{
    CapsAdapter adapter(0x10);
    for (const char* pRange : {">>> 4288413696 6553600 0 6553", ">>> 6 131072 65536 6",
             ">>> 4283170816 11796480 0 6553", ">>> 6 196608 65536 6"})
    {
        const Lines expected = {"UMDAdapter::GetCaps D3DDDICAPS_GETPROCAMPRANGE",
            ">>> UMDGetAdapterCapabilitiesDXVAProcAmpRange", "UMDUtilDebugTracePrintValueRange", pRange};
        EXPECT_EQ(adapter.Ask(kGetProcAmpRange, 16).Trace, expected);
    }
}

TEST(AdapterCapabilitiesDXVA, GuidQueries_GivenADescription_PrintItBehindTheirName)
{
    CapsAdapter adapter(0x10);
    DXVADDI_VIDEODESC desc = DistinctDesc();
    for (UINT type : {22u, 23u})
        EXPECT_EQ(adapter.Ask(type, 64, &desc).Trace, WithDump(adapter.Ask(type, 64).Trace, kDescLines))
            << "type " << type;
}

TEST(AdapterCapabilitiesDXVA, FormatAndCapsQueries_GivenAnInput_PrintItInItsPlace)
{
    CapsAdapter adapter(0x10);
    const GUID guid = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
    DXVADDI_VIDEOPROCESSORINPUT input = {&guid, DistinctDesc(), D3DDDIFMT_R5G6B5};
    Lines dump = {"UMDUtilDebugTracePrintVideoProcessorInput"};
    dump.insert(dump.end(), kDescLines.begin(), kDescLines.end());
    dump.push_back("RenderTargetFormat: 23");
    for (UINT type : {24u, 25u, 26u, 27u, 28u})
        EXPECT_EQ(adapter.Ask(type, 64, &input).Trace, WithDump(adapter.Ask(type, 64).Trace, dump)) << "type " << type;
}

TEST(AdapterCapabilitiesDXVA, AnyInput_AnswersStayAndInputIsNotWritten)
{
    CapsAdapter adapter(0);
    const GUID guid = {0xFFFFFFFF, 0xFFFF, 0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
    DXVADDI_VIDEOPROCESSORINPUT input = {&guid, DistinctDesc(), D3DDDIFMT_R5G6B5};
    const DXVADDI_VIDEOPROCESSORINPUT before = input;
    for (UINT type : {22u, 23u, 24u, 25u, 26u, 27u, 28u})
    {
        EXPECT_EQ(adapter.Ask(type, 64, &input).Memory, adapter.Ask(type, 64).Memory) << "type " << type;
        EXPECT_EQ(std::memcmp(&input, &before, sizeof(input)), 0) << "type " << type;
    }
}
