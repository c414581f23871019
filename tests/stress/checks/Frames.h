// Frames arrive whole, turned as they should be, and in order, however slow the client library and the device are.
#pragma once

namespace tesslo::test
{

class StressRun;

void StressManyFrames(StressRun& run);

}  // namespace tesslo::test
