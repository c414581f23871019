// No allocation of this program fails on demand: what the capture of trace lines pauses is not there.
#include "FailNthAllocation.h"

namespace tesslo::test
{
FailNthAllocation::Pause::Pause() {}
FailNthAllocation::Pause::~Pause() {}
}  // namespace tesslo::test
