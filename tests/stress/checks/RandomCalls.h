// Random calls of all entries and of the adapter's functions, with memory that ends at fences everywhere.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressRandomCalls(StressRun& run);

}  // namespace tesslo::test
