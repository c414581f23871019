// Faults to raise inside a scripted call.
#pragma once

#include <windows.h>

namespace tesslo::test
{

/// Reads an address that nothing is mapped at.
void RaiseAccessViolation();
/// Divides an integer by zero.
void RaiseDivisionByZero();
/// Raises an exception of a program's own.
void RaiseCode(DWORD code);

}  // namespace tesslo::test
