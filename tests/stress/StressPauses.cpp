#include "StressPauses.h"

#include <windows.h>

#include <chrono>
#include <iterator>

namespace tesslo::test
{

namespace
{

// Of a thousand pauses.
constexpr uint64_t kSlow[] = {10, 50, 50, 250};
constexpr uint64_t kYielding = 150;
constexpr uint64_t kShortest = 100, kLongest = 2000;  ///< microseconds

/// Spreads the bits of neighbouring numbers over the whole word.
uint64_t Mix(uint64_t value)
{
    value += 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

/// The platform's own sleep counts in milliseconds.
void PauseFor(std::chrono::microseconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end)
        SwitchToThread();
}

}  // namespace

void StressPauses::Begin(uint64_t seed, uint64_t run)
{
    m_Run = Mix(seed ^ Mix(run));
    m_Rate = kSlow[m_Run % std::size(kSlow)];
    m_Count = 0;
}

void StressPauses::Pause()
{
    const DWORD error = GetLastError();
    const uint64_t chance = Mix(m_Run + m_Count++);
    const uint64_t rate = m_Rate;
    if (chance % 1000 < rate)
        PauseFor(std::chrono::microseconds(kShortest + (chance >> 32) % (kLongest - kShortest)));
    else if (chance % 1000 < rate + kYielding)
        SwitchToThread();
    SetLastError(error);
}

}  // namespace tesslo::test
