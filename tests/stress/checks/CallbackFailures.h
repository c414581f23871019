// Each callback of the runtime's fails, at each of its calls in turn.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressCallbackFailures(StressRun& run);

}  // namespace tesslo::test
