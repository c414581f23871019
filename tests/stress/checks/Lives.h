// Adapter and device come and go while frames are on their way to a slow client library.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressLives(StressRun& run);

}  // namespace tesslo::test
