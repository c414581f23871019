// The counters of every source, from the library's load on, for the exports of tesslo/sample_client.h. Any thread.
#pragma once

#include "SampleConnection.h"

#include <tesslo/sample_client.h>

/// Counts what a connection tells, keeps the first failure of a source, and wakes whoever waits.
void SampleCountersAdd(UINT source, SampleEvent event, UINT64 number, DWORD error);
