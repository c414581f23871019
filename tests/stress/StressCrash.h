// Tells where a check's process ends when an exception ends it.
#pragma once

namespace tesslo::test
{

/// From now on an exception that nobody handles is printed with its code and its calls as module+offset, on one line
/// that begins with this text.
inline constexpr char kStressCrash[] = "@crash ";
void StressReportCrashes();

}  // namespace tesslo::test
