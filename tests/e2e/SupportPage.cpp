#include "SupportPage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tesslo::test
{

namespace
{

constexpr std::string_view kAnything = "\xE2\x80\xA6";
constexpr std::string_view kHeader = "| cause | mask | line | what to do |";

/// @param line a message with its line feed.
bool Matches(std::string_view line, std::string_view text)
{
    if (!line.ends_with('\n'))
        return false;
    line.remove_suffix(1);
    size_t open = text.find(kAnything);
    if (open == std::string_view::npos)
        return line == text;
    if (!line.starts_with(text.substr(0, open)))
        return false;
    line.remove_prefix(open);
    for (text.remove_prefix(open + kAnything.size());; text.remove_prefix(open + kAnything.size()))
    {
        open = text.find(kAnything);
        const std::string_view piece = text.substr(0, open);
        if (open == std::string_view::npos)
            return line.ends_with(piece);
        const size_t found = line.find(piece);
        if (found == std::string_view::npos)
            return false;
        line.remove_prefix(found + piece.size());
    }
}

std::vector<std::string> Cells(const std::string& row)
{
    std::vector<std::string> cells;
    for (size_t begin = 2, end; (end = row.find(" |", begin)) != std::string::npos; begin = end + 3)
        cells.push_back(row.substr(begin, end - begin));
    return cells;
}

SupportLine::Promise PromiseAfter(std::string_view words)
{
    if (words.ends_with("no "))
        return SupportLine::Promise::NotThere;
    return words.ends_with("than ") ? SupportLine::Promise::FewerThan : SupportLine::Promise::There;
}

std::vector<SupportLine> ParseLines(const std::string& cell)
{
    std::vector<SupportLine> lines;
    for (size_t begin = 0, words = 0; (begin = cell.find('`', words)) != std::string::npos;)
    {
        const size_t end = cell.find('`', begin + 1);
        if (end == std::string::npos)
            throw std::runtime_error("a line without its end: " + cell);
        const std::string_view before = std::string_view(cell).substr(words, begin - words);
        lines.push_back({cell.substr(begin + 1, end - begin - 1), PromiseAfter(before)});
        words = end + 1;
    }
    return lines;
}

SupportCause ParseCause(const std::string& symptom, const std::string& row)
{
    const std::vector<std::string> cells = Cells(row);
    if (cells.size() != 4 || !cells[1].starts_with("`0x"))
        throw std::runtime_error("not a row of causes: " + row);
    return {symptom, cells[0], std::stoul(cells[1].substr(1), nullptr, 16), ParseLines(cells[2])};
}

}  // namespace

size_t SupportLine::Count(const Lines& log) const
{
    return std::ranges::count_if(log, [this](const std::string& line) { return Matches(line, m_Text); });
}

std::string SupportCause::Complaint(const Lines& log) const
{
    if (m_Lines.empty())
        return "no line is promised";
    for (size_t i = 0; i < m_Lines.size(); ++i)
    {
        const SupportLine& line = m_Lines[i];
        const size_t count = line.Count(log);
        if (line.m_Promise == SupportLine::Promise::There && count == 0)
            return "not in the log: " + line.m_Text;
        if (line.m_Promise == SupportLine::Promise::NotThere && count != 0)
            return "in the log: " + line.m_Text;
        if (line.m_Promise == SupportLine::Promise::FewerThan && count >= m_Lines[i - 1].Count(log))
            return "in the log as often as the one before it: " + line.m_Text;
    }
    return "";
}

std::vector<SupportCause> ReadSupportPage()
{
    std::ifstream page(std::filesystem::path(TESSLO_SOURCE_DIR) / "docs" / "support.md", std::ios::binary);
    if (!page)
        throw std::runtime_error("docs/support.md cannot be read");
    std::vector<SupportCause> causes;
    std::string title;
    bool bInTable = false;
    for (std::string line; std::getline(page, line);)
    {
        if (line.starts_with("## "))
            title = line.substr(3);
        else if (line == kHeader)
            bInTable = true;
        else if (!line.starts_with("|"))
            bInTable = false;
        else if (bInTable && !line.starts_with("|---"))
            causes.push_back(ParseCause(title, line));
    }
    return causes;
}

}  // namespace tesslo::test
