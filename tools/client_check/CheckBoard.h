// What the threads of a check are at, in memory that its parent reads: where the check stood still, or ended.
#pragma once

#include <windows.h>

#include <string>

struct CheckBoard
{
    static constexpr size_t kSteps = 16;
    static constexpr size_t kLength = 128;

    struct Step
    {
        volatile LONG m_bUsed;
        char m_Text[kLength];
    };

    volatile LONG64 m_Beats;  ///< grows with each step's begin and end
    Step m_Steps[kSteps];

    /// A step that was begun and has not ended; empty when there is none.
    std::string Unfinished() const;
};

/// From its making to its end the calling thread is at this.
class CheckStep
{
public:
    CheckStep(CheckBoard& board, const std::string& text);
    ~CheckStep();
    CheckStep(const CheckStep&) = delete;
    CheckStep& operator=(const CheckStep&) = delete;

    /// The calling thread's; null when it is at none.
    static const char* Current();

private:
    CheckBoard& m_Board;
    CheckBoard::Step* m_pStep;
};
