// Waits of tests: generous, and over as soon as what they wait for is there.
#pragma once

#include <windows.h>

namespace tesslo::test
{

inline constexpr DWORD kLong = 30000;  ///< milliseconds; reached only by a failing test

/// Waits for something that another thread is about to do and that no event tells of.
/// @return whether it has come true.
template <typename Condition>
bool WaitUntil(Condition condition)
{
    const DWORD begin = GetTickCount();
    while (!condition())
    {
        if (GetTickCount() - begin >= kLong)
            return false;
        Sleep(1);
    }
    return true;
}

}  // namespace tesslo::test
