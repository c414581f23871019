#include "tools/client_check/CheckBoard.h"

#include <algorithm>
#include <stdexcept>

namespace
{
thread_local const char* t_pCurrent;
}  // namespace

std::string CheckBoard::Unfinished() const
{
    for (const Step& step : m_Steps)
        if (step.m_bUsed)
            return step.m_Text;
    return "";
}

CheckStep::CheckStep(CheckBoard& board, const std::string& text) : m_Board(board)
{
    m_pStep = std::ranges::find_if(
        board.m_Steps, [](CheckBoard::Step& step) { return InterlockedExchange(&step.m_bUsed, TRUE) == FALSE; });
    if (m_pStep == std::end(board.m_Steps))
        throw std::logic_error("more threads than the board has lines");
    m_pStep->m_Text[text.copy(m_pStep->m_Text, CheckBoard::kLength - 1)] = '\0';
    t_pCurrent = m_pStep->m_Text;
    InterlockedIncrement64(&board.m_Beats);
}

CheckStep::~CheckStep()
{
    t_pCurrent = nullptr;
    InterlockedExchange(&m_pStep->m_bUsed, FALSE);
    InterlockedIncrement64(&m_Board.m_Beats);
}

const char* CheckStep::Current()
{
    return t_pCurrent;
}
