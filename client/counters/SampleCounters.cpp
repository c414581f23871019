// Beside the sample, not of it: whoever copies the sample need not have this.
#include "SampleCounters.h"

#include <string_view>

namespace
{

static_assert(TESSLO_SAMPLE_SOURCES == kSampleSources);
static_assert(TESSLO_SAMPLE_QUEUE == kSampleQueue);
static_assert(std::wstring_view(TESSLO_SAMPLE_RECORD_DIR) == kSampleFolder);

// They are ready without a constructor and need no destructor.
SRWLOCK g_Lock = SRWLOCK_INIT;
CONDITION_VARIABLE g_Changed = CONDITION_VARIABLE_INIT;
TessloSampleCounters g_Counters[TESSLO_SAMPLE_SOURCES];
TessloSampleFailure g_Failures[TESSLO_SAMPLE_SOURCES];  ///< of sources whose counter of failures is not 0

UINT64 Received(const TessloSampleCounters& counters)
{
    return counters.Received;
}

UINT64 Settled(const TessloSampleCounters& counters)
{
    return counters.Recorded + counters.Dropped + counters.Failed;
}

/// Waits until what is counted of a source is that many.
bool Wait(UINT source, UINT64 (*pCount)(const TessloSampleCounters&), UINT64 count, DWORD milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    AcquireSRWLockShared(&g_Lock);
    while (pCount(g_Counters[source]) < count)
    {
        const ULONGLONG now = GetTickCount64();
        if (now >= end)
            break;
        SleepConditionVariableSRW(
            &g_Changed, &g_Lock, static_cast<DWORD>(end - now), CONDITION_VARIABLE_LOCKMODE_SHARED);
    }
    const bool bThere = pCount(g_Counters[source]) >= count;
    ReleaseSRWLockShared(&g_Lock);
    return bThere;
}

/// The connections of the library that this is linked into tell it. There are none while it is attached.
[[maybe_unused]] const bool g_bWatching = (g_pSampleWatch = SampleCountersAdd, true);

}  // namespace

void SampleCountersAdd(UINT source, SampleEvent event, UINT64 number, DWORD error)
{
    constexpr UINT64 TessloSampleCounters::* kCounters[kSampleEvents] = {&TessloSampleCounters::Connections,
        &TessloSampleCounters::Received, &TessloSampleCounters::Recorded, &TessloSampleCounters::Dropped,
        &TessloSampleCounters::Failed};
    AcquireSRWLockExclusive(&g_Lock);
    if ((g_Counters[source].*kCounters[event])++ == 0 && event == kSampleFailed)
        g_Failures[source] = {number, error};
    ReleaseSRWLockExclusive(&g_Lock);
    WakeAllConditionVariable(&g_Changed);
}

extern "C" BOOLEAN TessloSampleGetCounters(UINT VidPnSourceId, TessloSampleCounters* pCounters)
{
    if (pCounters == nullptr || VidPnSourceId >= TESSLO_SAMPLE_SOURCES)
        return FALSE;
    AcquireSRWLockShared(&g_Lock);
    *pCounters = g_Counters[VidPnSourceId];
    ReleaseSRWLockShared(&g_Lock);
    return TRUE;
}

extern "C" BOOLEAN TessloSampleGetFailure(UINT VidPnSourceId, TessloSampleFailure* pFailure)
{
    if (pFailure == nullptr || VidPnSourceId >= TESSLO_SAMPLE_SOURCES)
        return FALSE;
    AcquireSRWLockShared(&g_Lock);
    const bool bFailed = g_Counters[VidPnSourceId].Failed != 0;
    if (bFailed)
        *pFailure = g_Failures[VidPnSourceId];
    ReleaseSRWLockShared(&g_Lock);
    return bFailed;
}

extern "C" BOOLEAN TessloSampleWaitReceived(UINT VidPnSourceId, UINT64 received, DWORD milliseconds)
{
    return VidPnSourceId < TESSLO_SAMPLE_SOURCES && Wait(VidPnSourceId, Received, received, milliseconds);
}

extern "C" BOOLEAN TessloSampleWaitRecorded(UINT VidPnSourceId, UINT64 settled, DWORD milliseconds)
{
    return VidPnSourceId < TESSLO_SAMPLE_SOURCES && Wait(VidPnSourceId, Settled, settled, milliseconds);
}
