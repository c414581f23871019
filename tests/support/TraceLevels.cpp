#include "TraceLevels.h"

#include "TraceAt.h"
#include "TraceText.h"

#include <algorithm>
#include <map>
#include <regex>

namespace tesslo::test
{

namespace
{
constexpr UINT kLevels[] = {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80, 0x100, 0x200, 0x400};

void HideHandles(Lines& lines)
{
    // Handles differ from run to run. Result codes begin with an 8; the addresses of the program and its heap do not.
    static const std::regex handle("0x(?!8[0-9a-f]{7}\\b)[0-9a-f]+");
    for (std::string& line : lines)
        line = std::regex_replace(line, handle, "0x#");
}

Lines LinesAt(UINT mask, const std::function<void()>& operation)
{
    Lines lines = TraceAt(mask, operation);
    HideHandles(lines);
    return lines;
}

std::string Levelled(UINT level, const std::string& line)
{
    return Text("0x%x ", level) + line;
}
}  // namespace

Lines LevelledTrace(const std::function<void()>& operation)
{
    Lines lines = LinesAt(kAllLevels, operation);
    std::map<std::string, UINT> levels;
    for (UINT level : kLevels)
        for (const std::string& line : LinesAt(level, operation))
            levels[line] |= level;
    for (std::string& line : lines)
        line = Levelled(levels[line], line);
    return lines;
}

Lines LevelledTraceOfAllThreads(const std::function<void()>& operation)
{
    std::map<std::string, UINT> levels;
    for (UINT level : kLevels)
    {
        const TraceMask only(level);
        const TraceCapture trace;
        operation();
        Lines lines = trace.Lines();
        HideHandles(lines);
        for (const std::string& line : lines)
            levels[line] |= level;
    }
    Lines lines;
    for (const auto& [line, level] : levels)
        lines.push_back(Levelled(level, line));
    std::ranges::sort(lines);
    return lines;
}

}  // namespace tesslo::test
