#include "host/program/HostProgress.h"

#include <cstdio>
#include <string>

namespace
{

constexpr UINT kCells = 50;
constexpr UINT kLines = 10;

}  // namespace

HostProgress::HostProgress(UINT total)
    : m_Total(total), m_bConsole(GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_CHAR)
{
}

void HostProgress::Update(UINT done)
{
    const UINT steps = static_cast<UINT>(UINT64{done} * (m_bConsole ? kCells : kLines) / m_Total);
    if (steps == m_Shown)
        return;
    m_Shown = steps;
    if (m_bConsole)
        std::printf("\r[%s%s] %u of %u%s", std::string(steps, '=').c_str(), std::string(kCells - steps, ' ').c_str(),
            done, m_Total, done == m_Total ? "\n" : "");
    else
        std::printf("%3u %%: %u of %u frames\n", steps * 100 / kLines, done, m_Total);
    std::fflush(stdout);
}
