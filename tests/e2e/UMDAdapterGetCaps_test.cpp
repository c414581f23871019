// Every capability query, asked through the adapter entry of the DLL.
#include "CapsAdapter.h"
#include "CapsExpected.h"
#include "TraceText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

using namespace tesslo::test;

namespace
{

enum class Written
{
    Nothing,       ///< not a byte
    Words,         ///< the words of the row, whatever DataSize says
    Zeros,         ///< DataSize zeros
    WordAndZeros,  ///< DataSize zeros, then the row's word over the first of them
};

struct Query
{
    UINT Type;
    HRESULT Result;
    Written What;
    std::vector<UINT> Words;
    Lines Trace;  ///< with the mask 0x13 and a DataSize of 2048, behind the entry's own line
};

constexpr UINT kFourccNv12 = 0x3231564E;
constexpr UINT kFourccAyuv = 0x56555941;

std::vector<UINT> FormatWords()
{
    std::vector<UINT> words;
    for (const auto& row : caps_expected::kFormats)
        words.insert(
            words.end(), {row.Format, row.Operations, row.FlipMsTypes, row.BltMsTypes, row.PrivateFormatBitCount});
    return words;
}

std::vector<UINT> RecordWords()
{
    std::vector<UINT> words;
    for (const auto& row : caps_expected::kRecord)
        words.push_back(row.Word);
    return words;
}

// clang-format off
const std::vector<Query> kQueries = {
    {1, S_OK, Written::Zeros, {}, {"UMDAdapter::GetCaps D3DDDICAPS_DDRAW"}},
    {2, S_OK, Written::Zeros, {}, {"UMDAdapter::GetCaps D3DDDICAPS_DDRAW_MODE_SPECIFIC"}},
    {3, S_OK, Written::Words, {62},
        {"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATCOUNT",
         "UMDGetAdapterFormatCount 62"}},
    {4, S_OK, Written::Words, FormatWords(),
        {"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATDATA",
         "UMDGetAdapterFormats 102"}},
    {5, S_OK, Written::Words, {CapsAdapter::kFillWord, 0, 0, 0},
        {"UMDAdapter::GetCaps D3DDDICAPS_GETMULTISAMPLEQUALITYLEVELS"}},
    {6, S_OK, Written::Words, {15}, {"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYCOUNT"}},
    {7, S_OK, Written::Words, {4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18},
        {"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count 512"}},
    {8, S_OK, Written::WordAndZeros, {200}, {"UMDAdapter::GetCaps D3DDDICAPS_GETD3D3CAPS"}},
    {9, S_OK, Written::Zeros, {}, {"UMDAdapter::GetCaps unknown caps 0x9"}},
    {10, S_OK, Written::Zeros, {}, {"UMDAdapter::GetCaps unknown caps 0xa"}},
    {11, S_OK, Written::WordAndZeros, {116}, {"UMDAdapter::GetCaps D3DDDICAPS_GETD3D7CAPS"}},
    {12, S_OK, Written::Zeros, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETD3D8CAPS"}},
    {13, S_OK, Written::Words, RecordWords(),
        {"UMDAdapter::GetCaps D3DDDICAPS_GETD3D9CAPS",
         ">>> UMDGetAdapterCapabilitiesD3D9"}},
    {14, S_OK, Written::Words, {1},
        {"=> UMDAdapter::GetCaps 14 GETDECODEGUIDCOUNT",
         "UMDAdapter::GetCaps D3DDDICAPS_GETDECODEGUIDCOUNT 2048"}},
    {15, S_OK, Written::Words, {0xBF22AD00, 0x469003EA, 0x33477780, 0x7E9B2046},
        {"=> UMDAdapter::GetCaps 15 GETDECODEGUIDS",
         "UMDAdapter::GetCaps D3DDDICAPS_GETDECODEGUIDS 2048 32"}},
    {16, E_NOTIMPL, Written::Nothing, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETDECODERTFORMATCOUNT 2048"}},
    {17, E_NOTIMPL, Written::Nothing, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETDECODERTFORMATS"}},
    {18, E_NOTIMPL, Written::Nothing, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECOMPRESSEDBUFFERINFOCOUNT"}},
    {19, E_NOTIMPL, Written::Nothing, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECOMPRESSEDBUFFERINFO"}},
    {20, E_NOTIMPL, Written::Nothing, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECONFIGURATIONCOUNT"}},
    {21, E_NOTIMPL, Written::Nothing, {}, {"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECONFIGURATIONS"}},
    {22, S_OK, Written::Words, {1},
        {"=> UMDAdapter::GetCaps 22 GETVIDEOPROCESSORDEVICEGUIDCOUNT",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDCOUNT 2048",
         ">>> UMDGetAdapterCapabilitiesDXVAGuidCnt 1"}},
    {23, S_OK, Written::Words, {0x5A54A0C9, 0x4BD9C7EC, 0xC7F3DE8E, 0x3B39C45D},
        {"=> UMDAdapter::GetCaps 23 GETVIDEOPROCESSORDEVICEGUIDS",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDS 2048 32",
         ">>> UMDGetAdapterCapabilitiesDXVAGuid"}},
    {24, S_OK, Written::Words, {2},
        {"=> UMDAdapter::GetCaps 24 GETVIDEOPROCESSORRTFORMATCOUNT",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTFORMATCOUNT 2048",
         "<<< UMDGetAdapterCapabilitiesDXVAFmtCnt 2"}},
    {25, S_OK, Written::Words, {22, kFourccNv12},
        {"=> UMDAdapter::GetCaps 25 GETVIDEOPROCESSORRTFORMATS",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTFORMATS 2048 12",
         "<<< UMDGetAdapterCapabilitiesDXVAFmt:",
         ">>> 22",
         ">>> 842094158"}},
    {26, S_OK, Written::Words, {1},
        {"=> UMDAdapter::GetCaps 26 GETVIDEOPROCESSORRTSUBSTREAMFORMATCOUNT",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATCOUNT 2048",
         ">>> UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt 1"}},
    {27, S_OK, Written::Words, {kFourccAyuv},
        {"=> UMDAdapter::GetCaps 27 GETVIDEOPROCESSORRTSUBSTREAMFORMATS",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATS 2048 8",
         ">>> UMDGetAdapterCapabilitiesDXVARTSubstreamFmt"}},
    {28, S_OK, Written::Words, {3, 0, 0, kFourccNv12, 0, 15, 0x2F7, 0, 0},
        {"=> UMDAdapter::GetCaps 28 GETVIDEOPROCESSORCAPS",
         "UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORCAPS 2048 36",
         ">>> UMDGetAdapterCapabilitiesDXVACaps",
         ">>> 3 0 0 842094158 0 15 759 0 0"}},
    {29, S_OK, Written::Words, {0xFF9C0000, 0x00640000, 0, 0x1999},
        {"=> UMDAdapter::GetCaps 29 GETPROCAMPRANGE",
         "UMDAdapter::GetCaps D3DDDICAPS_GETPROCAMPRANGE",
         ">>> UMDGetAdapterCapabilitiesDXVAProcAmpRange",
         "UMDUtilDebugTracePrintValueRange",
         ">>> 4288413696 6553600 0 6553"}},
    {34, S_OK, Written::Words, {1}, {"UMDAdapter::GetCaps D3DDDICAPS_GETGAMMARAMPCAPS"}},
};
// clang-format on

/// The row of a type; types without one are unknown to the driver.
Query QueryOf(UINT type)
{
    for (const Query& query : kQueries)
    {
        if (query.Type == type)
            return query;
    }
    return {type, S_OK, Written::Zeros, {}, {Text("UMDAdapter::GetCaps unknown caps 0x%x", type)}};
}

/// The caller's memory behind a query: untouched but for what the row says.
std::vector<BYTE> MemoryAfter(const Query& query, UINT size)
{
    std::vector<BYTE> memory = CapsAdapter::FreshMemory();
    auto data = memory.begin() + CapsAdapter::kGuardSize;
    if (query.What == Written::Zeros || query.What == Written::WordAndZeros)
        std::fill_n(data, size, BYTE{0});
    const auto* pWords = reinterpret_cast<const BYTE*>(query.Words.data());
    std::copy_n(pWords, query.Words.size() * sizeof(UINT), data);
    return memory;
}

std::vector<UINT> AllTypes()
{
    std::vector<UINT> types = {0xFFFFFFFF, 0x80000000, 0x7FFFFFFF};
    for (UINT type = 0; type <= 64; ++type)
        types.push_back(type);
    return types;
}

/// "=> " lines come at the entry level, the unknown type's at the error level too, all others at the caps level.
Lines LinesAt(UINT mask, const Lines& lines)
{
    Lines printed;
    for (const std::string& line : lines)
    {
        UINT level = line.starts_with("=> ") ? 0x2 : 0x10;
        if (line.find("unknown") != std::wstring::npos)
            level = 0x11;
        if (mask & level)
            printed.push_back(line);
    }
    return printed;
}

Lines AllLines(UINT type)
{
    return Joined({Text("=> UMDAdapter::DdiGetCaps %d", type)}, QueryOf(type).Trace);
}
}  // namespace

// Four sizes: none, less than any record, the format table's, and more than every record.
TEST(AdapterGetCaps, EveryTypeAndSize_WritesWhatItShallAndNoByteMore)
{
    for (UINT size : {0u, 4u, 1240u, 2048u})
    {
        CapsAdapter adapter(0);
        for (UINT type : AllTypes())
        {
            SCOPED_TRACE(testing::Message() << "type " << type << " size " << size);
            const CapsAnswer answer = adapter.Ask(type, size);
            EXPECT_EQ(answer.Result, QueryOf(type).Result);
            EXPECT_EQ(CapsAdapter::FirstDifference(answer.Memory, MemoryAfter(QueryOf(type), size)), "");
            EXPECT_EQ(answer.Trace, Lines{});
        }
    }
}

TEST(AdapterGetCaps, EveryType_TracesEntryThenNameThenAnswerEachAtItsLevel)
{
    for (UINT mask : {0x1u, 0x2u, 0x10u, 0x13u, 0x7ECu, 0xFFFFF7FFu})
    {
        CapsAdapter adapter(mask);
        for (UINT type : AllTypes())
        {
            SCOPED_TRACE(testing::Message() << "type " << type << " mask " << mask);
            EXPECT_EQ(adapter.Ask(type, 2048).Trace, LinesAt(mask, AllLines(type)));
        }
    }
}

TEST(AdapterGetCaps, QueryTypes_SizeTracedInWordsAndRoundedDown)
{
    CapsAdapter adapter(0x10);
    EXPECT_EQ(adapter.Ask(7, 60).Trace, Lines{"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count 15"});
    EXPECT_EQ(adapter.Ask(7, 63).Trace, Lines{"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count 15"});
    EXPECT_EQ(adapter.Ask(7, 3).Trace, Lines{"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count 0"});
    EXPECT_EQ(
        adapter.Ask(7, 0xFFFFFFFF).Trace, Lines{"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count 1073741823"});
}

TEST(AdapterGetCaps, FormatData_SizeTracedInRecordsAndNotLookedAt)
{
    CapsAdapter adapter(0x10);
    const Lines whole = {"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATDATA", "UMDGetAdapterFormats 62"};
    const Lines none = {"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATDATA", "UMDGetAdapterFormats 0"};
    EXPECT_EQ(adapter.Ask(4, 1240).Trace, whole);
    const Lines less = {"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATDATA", "UMDGetAdapterFormats 61"};
    EXPECT_EQ(adapter.Ask(4, 1239).Trace, less);
    EXPECT_EQ(adapter.Ask(4, 0).Trace, none);
    EXPECT_EQ(adapter.Ask(4, 0).Words(62 * 5), FormatWords());
}

TEST(AdapterGetCaps, FormatCount_IsTheNumberOfRowsOfTheTable)
{
    CapsAdapter adapter(0);
    EXPECT_EQ(adapter.Ask(3, 4).Words(1)[0], std::size(caps_expected::kFormats));
}

TEST(AdapterGetCaps, D3D9Record_EveryFieldHasItsWord)
{
    CapsAdapter adapter(0);
    const std::vector<UINT> words = adapter.Ask(13, sizeof(D3DCAPS9)).Words(std::size(caps_expected::kRecord));
    ASSERT_EQ(sizeof(D3DCAPS9), sizeof(UINT) * words.size());
    for (std::size_t i = 0; i < words.size(); ++i)
        EXPECT_EQ(words[i], caps_expected::kRecord[i].Word) << caps_expected::kRecord[i].pField;
}

TEST(AdapterGetCaps, FormatTable_EveryRowHasItsFiveColumnsInOrder)
{
    CapsAdapter adapter(0);
    const std::vector<UINT> words = adapter.Ask(4, 1240).Words(62 * 5);
    for (std::size_t i = 0; i < 62; ++i)
    {
        const std::vector<UINT> row(words.begin() + 5 * i, words.begin() + 5 * i + 5);
        const caps_expected::FormatRow& expected = caps_expected::kFormats[i];
        EXPECT_EQ(row, (std::vector<UINT>{expected.Format, expected.Operations, expected.FlipMsTypes,
                           expected.BltMsTypes, expected.PrivateFormatBitCount}))
            << "row " << i + 1;
    }
}

TEST(AdapterGetCaps, MultisampleQualityLevels_AnyFormat_FormatKeptAndNoLevels)
{
    CapsAdapter adapter(0);
    for (UINT size : {0u, 16u})
    {
        const std::vector<UINT> noLevels = {CapsAdapter::kFillWord, 0, 0, 0, CapsAdapter::kFillWord};
        EXPECT_EQ(adapter.Ask(5, size).Words(5), noLevels);
    }
}
