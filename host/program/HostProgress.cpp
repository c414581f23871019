#include "host/program/HostProgress.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr UINT kCells = 50;
constexpr UINT kCellsMin = 5;
constexpr UINT kLines = 10;
constexpr UINT kEndless = 600;       // frames from line to line when there is no end
constexpr UINT kNarrowColumns = 24;  // of a console that does not tell its width

UINT ConsoleColumns()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) || info.dwSize.X < 2)
        return kNarrowColumns;
    return static_cast<UINT>(info.dwSize.X);
}

std::string Text(UINT done, UINT total)
{
    char text[64];
    if (total == 0)
        std::snprintf(text, sizeof(text), "%u frames", done);
    else
        std::snprintf(
            text, sizeof(text), "%3u %%: %u of %u frames", static_cast<UINT>(UINT64{done} * 100 / total), done, total);
    return text;
}

}  // namespace

std::string HostProgressLine(UINT done, UINT total, UINT columns)
{
    std::string line = Text(done, total);
    const UINT used = static_cast<UINT>(line.size()) + 4;  // brackets, a blank, the free column
    if (total != 0 && columns >= used + kCellsMin)
    {
        const UINT cells = std::min(kCells, columns - used);
        const UINT full = static_cast<UINT>(UINT64{done} * cells / total);
        line = "[" + std::string(full, '=') + std::string(cells - full, ' ') + "] " + line;
    }
    return line.substr(0, columns - 1);
}

HostProgress::HostProgress(UINT total)
    : m_Total(total), m_bConsole(GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_CHAR)
{
}

void HostProgress::Update(UINT done)
{
    const UINT step = Step(done);
    if (step == m_Shown)
        return;
    m_Shown = step;
    if (m_bConsole)
        std::printf("\r%s%s", HostProgressLine(done, m_Total, ConsoleColumns()).c_str(), done == m_Total ? "\n" : "");
    else
        std::printf("%s\n", Text(done, m_Total).c_str());
    std::fflush(stdout);
}

UINT HostProgress::Step(UINT done) const
{
    if (m_Total == 0)
        return done / kEndless;
    return static_cast<UINT>(UINT64{done} * (m_bConsole ? kCells : kLines) / m_Total);
}
