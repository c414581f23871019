// Client libraries of every bad kind, each over a whole life.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressClients(StressRun& run);

}  // namespace tesslo::test
