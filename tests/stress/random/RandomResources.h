// Random calls that make resources, shaders and video process devices, and that end them.
#pragma once

#include "RandomEntries.h"

namespace tesslo::test
{

/// Rows that stand in place of those of the same name.
const std::vector<RandomEntry>& RandomResourceEntries();

}  // namespace tesslo::test
