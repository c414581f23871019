// The counters of every source, from the library's load on. Any thread.
#pragma once

#include <tesslo/sample_client.h>

TessloSampleCounters SampleCountersGet(UINT source);

/// Adds one to a counter of a source and wakes whoever waits.
/// @return the counter's value before.
UINT64 SampleCountersAdd(UINT source, UINT64 TessloSampleCounters::* pCounter);

/// @return false if the time ran out before the source had received that many frames.
bool SampleCountersWaitReceived(UINT source, UINT64 received, DWORD milliseconds);
