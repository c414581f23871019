// The counters of every source, from the library's load on. Any thread.
#pragma once

#include <tesslo/sample_client.h>

TessloSampleCounters SampleCountersGet(UINT source);

/// Adds one to a counter of a source and wakes whoever waits.
/// @return the counter's value before.
UINT64 SampleCountersAdd(UINT source, UINT64 TessloSampleCounters::* pCounter);

/// Counts a frame that was not recorded, and keeps which was the first and why.
void SampleCountersFail(UINT source, UINT64 number, DWORD error);

/// @return false if no frame of the source has failed.
bool SampleCountersGetFailure(UINT source, TessloSampleFailure* pFailure);

/// @return false if the time ran out before so many frames of the source were recorded, dropped or failed.
bool SampleCountersWaitRecorded(UINT source, UINT64 settled, DWORD milliseconds);

/// @return false if the time ran out before the source had received that many frames.
bool SampleCountersWaitReceived(UINT source, UINT64 received, DWORD milliseconds);
