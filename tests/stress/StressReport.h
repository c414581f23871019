// The results of a campaign, for people and for programs.
#pragma once

#include "StressResult.h"
#include "StressSettings.h"

namespace tesslo::test
{

/// The table, the findings behind it, and for each of them the command that repeats it.
void StressPrint(const std::vector<StressResult>& results, const StressSettings& settings);
/// Throws std::runtime_error when the file cannot be written.
void StressWriteJson(const std::vector<StressResult>& results, const std::string& file);

}  // namespace tesslo::test
