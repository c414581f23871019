// A client library that does not come back costs a present no time.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressHungClient(StressRun& run);

}  // namespace tesslo::test
