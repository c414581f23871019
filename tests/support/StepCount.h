// Counts the instructions that a call runs inside one module, by the processor's single steps: the same number on any
// machine, however busy it is.
#pragma once

#include <windows.h>

#include <functional>

namespace tesslo::test
{

/// Instructions of the module alone; what it calls elsewhere passes uncounted. One thread at a time.
unsigned StepCount(HMODULE hModule, const std::function<void()>& call);

}  // namespace tesslo::test
