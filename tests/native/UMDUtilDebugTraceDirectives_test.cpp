// The filter of trace lines on their way to the log file, in blocks that end with the line's terminating null.
#include "util/UMDUtilDebugTraceDirectives.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <regex>
#include <string>

namespace
{
std::wstring Filtered(const std::wstring& line)
{
    const std::unique_ptr<wchar_t[]> block(new wchar_t[line.size() + 1]);
    std::copy_n(line.c_str(), line.size() + 1, block.get());
    UMDUtilDebugTraceDropHarmfulDirectives(block.get());
    return block.get();
}

/// The same by regular expressions, one directive after the other.
std::wstring Expected(const std::wstring& line)
{
    static const std::wregex directive(L"%[-+ #0123456789.*hlLwIFN]*(.?)"), longNumber(L"[0-9]{4}");
    std::wstring kept = line;
    std::size_t dropped = 0;
    for (std::wsregex_iterator next(line.begin(), line.end(), directive), end; next != end; ++next)
    {
        if (next->str(1) != L"n" && !std::regex_search(next->str(), longNumber))
            continue;
        kept.erase(static_cast<std::size_t>(next->position()) - dropped, next->str().size());
        dropped += next->str().size();
    }
    return kept;
}
}  // namespace

TEST(UMDUtilDebugTraceDirectives, Line_EachKind_KeepsWhatIsHarmless)
{
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"", L""},
        {L"plain 100", L"plain 100"},
        {L"%d %s %S %08x %.3f %I64x %%", L"%d %s %S %08x %.3f %I64x %%"},
        {L"a%nb", L"ab"},
        {L"%n", L""},
        {L"a%n%n%nb%d", L"ab%d"},
        {L"a%-08.3I64nb", L"ab"},
        {L"a%*.*nb", L"ab"},
        {L"%%n", L"%%n"},
        {L"%%%n", L"%%"},
        {L"a%2000000000db", L"ab"},
        {L"a%.1000db", L"ab"},
        {L"a%999.999db", L"a%999.999db"},
        {L"a%", L"a%"},
        {L"a%5", L"a%5"},
        {L"a%12345", L"a"},
        {L"a%-*.*ll", L"a%-*.*ll"},
    };
    for (const auto& [pLine, pKept] : rows)
        EXPECT_EQ(Filtered(pLine), pKept) << testing::PrintToString(pLine);
}

TEST(UMDUtilDebugTraceDirectives, Line_AnyCharacters_SameAsTheExpression)
{
    constexpr wchar_t kLetters[] = L"%%%%nnd15.*-#lLIwhFNsx ";
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round)
    {
        std::wstring line(random() % 24, L' ');
        for (wchar_t& letter : line)
            letter = kLetters[random() % (std::size(kLetters) - 1)];
        ASSERT_EQ(Filtered(line), Expected(line)) << testing::PrintToString(line);
    }
}
