// What goes wrong on a virtual monitor, played: a scene for each cause that docs/support.md names.
#pragma once

#include <windows.h>

#include <span>

namespace tesslo::test
{

struct SupportScene
{
    const char* m_pSymptom;  ///< as the page calls it
    const char* m_pCause;
    /// Plays it, checks that it shows what the symptom says, and gives the id of the process that did it.
    DWORD (*m_pPlay)(DWORD mask);
};

/// Client libraries that do harm.
std::span<const SupportScene> SupportScenesClient();
/// What draws, and the program itself.
std::span<const SupportScene> SupportScenesDevice();
/// Without a client library.
std::span<const SupportScene> SupportScenesSwitch();

}  // namespace tesslo::test
