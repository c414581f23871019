// Each call of the delegated device fails, faults or lies, at each of its calls in turn.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressDelegatedFailures(StressRun& run);

}  // namespace tesslo::test
