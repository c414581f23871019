// A process that writes to the machine's log file while others do.
#pragma once

#include <string>

namespace tesslo::test
{

/// Has the driver trace to the log file, on one thread and on several, and keeps what the debugger got in a file of the
/// process's number.
/// @param folder where that file is made.
void StressSettingsWriter(const std::string& folder);

/// Opens and closes adapters on several threads at once, which traces.
void StressTraceOnThreads(int threads, int times);

}  // namespace tesslo::test
