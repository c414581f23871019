#include "StressCheck.h"

#include "checks/CallbackFailures.h"
#include "checks/DelegatedFailures.h"

namespace tesslo::test
{

const std::vector<StressCheck>& StressChecks()
{
    static const std::vector<StressCheck> checks{
        {"callbacks", "each callback of the runtime's fails at each of its calls, with five codes", 0, 0,
            StressCallbackFailures},
        {"delegated", "each call of the delegated device fails, faults or gives nothing, at each of its calls", 0, 0,
            StressDelegatedFailures},
    };
    return checks;
}

}  // namespace tesslo::test
