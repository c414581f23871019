#include "TraceLevels.h"

#include "TraceMask.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <regex>

namespace tesslo::test
{

namespace
{
constexpr UINT kLevels[] = {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80, 0x100, 0x200, 0x400};
constexpr UINT kAllLevels = 0x7FF;

void HideHandles(std::vector<std::string>& lines)
{
    // Handles differ from run to run. Result codes begin with an 8; the addresses of the program and its heap do not.
    static const std::regex handle("0x(?!8[0-9a-f]{7}\\b)[0-9a-f]+");
    for (std::string& line : lines)
        line = std::regex_replace(line, handle, "0x#");
}

std::vector<std::string> LinesAt(UINT mask, TraceCapture& trace, const std::function<void()>& operation)
{
    const TraceMask only(mask);
    trace.Clear();
    operation();
    std::vector<std::string> lines = trace.LinesOfThisThread();
    HideHandles(lines);
    return lines;
}

std::string Levelled(UINT level, const std::string& line)
{
    char text[16];
    snprintf(text, sizeof text, "0x%x ", level);
    return text + line;
}
}  // namespace

std::vector<std::string> LevelledTrace(TraceCapture& trace, const std::function<void()>& operation)
{
    std::vector<std::string> lines = LinesAt(kAllLevels, trace, operation);
    std::map<std::string, UINT> levels;
    for (UINT level : kLevels)
        for (const std::string& line : LinesAt(level, trace, operation))
            levels[line] |= level;
    for (std::string& line : lines)
        line = Levelled(levels[line], line);
    return lines;
}

std::vector<std::string> LevelledTraceOfAllThreads(TraceCapture& trace, const std::function<void()>& operation)
{
    std::map<std::string, UINT> levels;
    for (UINT level : kLevels)
    {
        const TraceMask only(level);
        trace.Clear();
        operation();
        std::vector<std::string> lines = trace.Lines();
        HideHandles(lines);
        for (const std::string& line : lines)
            levels[line] |= level;
    }
    std::vector<std::string> lines;
    for (const auto& [line, level] : levels)
        lines.push_back(Levelled(level, line));
    std::ranges::sort(lines);
    return lines;
}

}  // namespace tesslo::test
