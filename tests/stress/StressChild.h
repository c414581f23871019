// A check in a process of its own: one that ends by a fault, or not at all, is a finding like any other.
#pragma once

#include "StressCheck.h"
#include "StressResult.h"
#include "StressSettings.h"

#include <functional>

namespace tesslo::test
{

/// What the child does: runs the check, and prints how far it is and what came of it.
void StressRunChild(const StressCheck& check, const StressSettings& settings);

/// Starts this program once more as the child of the check and waits for its end, or for a while beyond its time.
/// @param onProgress called as the child tells it.
StressResult StressStartChild(const StressCheck& check, const StressSettings& settings,
    const std::function<void(uint64_t done, uint64_t all)>& onProgress);

}  // namespace tesslo::test
