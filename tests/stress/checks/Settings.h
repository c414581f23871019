// Whatever stands in the registry, and whatever becomes of the log file, the driver works.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tesslo::test
{

class StressRun;

struct StressSettingsCase
{
    std::string m_Name;
    /// Tells what is wrong by this; "" is nothing.
    std::function<void(const std::function<void(const std::string&)>& tell)> m_Run;
};

/// The driver's values in the registry.
std::vector<StressSettingsCase> StressRegistryCases();
/// The log file of the machine.
std::vector<StressSettingsCase> StressLogFileCases();

void StressSettingsOfAllKinds(StressRun& run);

}  // namespace tesslo::test
