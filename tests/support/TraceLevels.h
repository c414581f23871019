// The trace of an operation with the exact level of every line.
#pragma once

#include "Lines.h"

#include <functional>

namespace tesslo::test
{

/// Runs the operation with all levels on, then with each level alone; it must trace the same lines each time.
/// @return this thread's lines in their order, each behind its level: "0x4 >>> UMDDdiDevice::Flush\n". Hexadecimal
///         numbers, which are handles and addresses, show as "0x#"; result codes stay.
Lines LevelledTrace(const std::function<void()>& operation);

/// Runs the operation with each level alone, and takes the lines of all threads.
/// @return each line once, behind its level, sorted; hexadecimal numbers show as above.
Lines LevelledTraceOfAllThreads(const std::function<void()>& operation);

}  // namespace tesslo::test
