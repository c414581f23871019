// Several devices at once, each used by several threads in turn.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressDevices(StressRun& run);

}  // namespace tesslo::test
