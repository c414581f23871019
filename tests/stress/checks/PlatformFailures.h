// Each call of the platform that the driver makes fails, from its loading to its unloading.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressPlatformFailures(StressRun& run);

}  // namespace tesslo::test
