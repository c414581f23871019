#include "TraceLevels.h"

#include "TraceMask.h"

#include <map>
#include <regex>

namespace tesslo::test
{

namespace
{
constexpr UINT kLevels[] = {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80, 0x100, 0x200, 0x400};
constexpr UINT kAllLevels = 0x7FF;

std::vector<std::string> LinesAt(UINT mask, TraceCapture& trace, const std::function<void()>& operation)
{
    // Handles differ from run to run. Result codes begin with an 8; the addresses of the program and its heap do not.
    static const std::regex handle("0x(?!8[0-9a-f]{7}\\b)[0-9a-f]+");
    const TraceMask only(mask);
    trace.Clear();
    operation();
    std::vector<std::string> lines = trace.LinesOfThisThread();
    for (std::string& line : lines)
        line = std::regex_replace(line, handle, "0x#");
    return lines;
}
} // namespace

std::vector<std::string> LevelledTrace(TraceCapture& trace, const std::function<void()>& operation)
{
    std::vector<std::string> lines = LinesAt(kAllLevels, trace, operation);
    std::map<std::string, UINT> levels;
    for (UINT level : kLevels)
        for (const std::string& line : LinesAt(level, trace, operation))
            levels[line] |= level;
    for (std::string& line : lines)
    {
        char level[16];
        snprintf(level, sizeof level, "0x%x ", levels[line]);
        line = level + line;
    }
    return lines;
}

} // namespace tesslo::test
