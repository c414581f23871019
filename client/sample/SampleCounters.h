// The counters of every source, from the library's load on, for the exports of tesslo/sample_client.h. Any thread.
#pragma once

#include <tesslo/sample_client.h>

/// Adds one to a counter of a source and wakes whoever waits.
/// @return the counter's value before.
UINT64 SampleCountersAdd(UINT source, UINT64 TessloSampleCounters::* pCounter);

/// Counts a frame that was not recorded, and keeps which was the first and why.
void SampleCountersFail(UINT source, UINT64 number, DWORD error);
