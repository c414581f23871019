// The DLL comes and goes, and leaves nothing in the heap that all modules of the process share.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressLoads(StressRun& run);

}  // namespace tesslo::test
