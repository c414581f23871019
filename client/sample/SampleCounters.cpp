#include "SampleCounters.h"

namespace
{

// All three are ready without a constructor and need no destructor: nothing happens in DllMain.
SRWLOCK g_Lock = SRWLOCK_INIT;
CONDITION_VARIABLE g_Changed = CONDITION_VARIABLE_INIT;
TessloSampleCounters g_Counters[TESSLO_SAMPLE_SOURCES];

}  // namespace

TessloSampleCounters SampleCountersGet(UINT source)
{
    AcquireSRWLockShared(&g_Lock);
    TessloSampleCounters counters = g_Counters[source];
    ReleaseSRWLockShared(&g_Lock);
    return counters;
}

UINT64 SampleCountersAdd(UINT source, UINT64 TessloSampleCounters::* pCounter)
{
    AcquireSRWLockExclusive(&g_Lock);
    UINT64 before = (g_Counters[source].*pCounter)++;
    ReleaseSRWLockExclusive(&g_Lock);
    WakeAllConditionVariable(&g_Changed);
    return before;
}

bool SampleCountersWaitReceived(UINT source, UINT64 received, DWORD milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    AcquireSRWLockShared(&g_Lock);
    while (g_Counters[source].Received < received)
    {
        const ULONGLONG now = GetTickCount64();
        if (now >= end)
            break;
        SleepConditionVariableSRW(
            &g_Changed, &g_Lock, static_cast<DWORD>(end - now), CONDITION_VARIABLE_LOCKMODE_SHARED);
    }
    const bool bArrived = g_Counters[source].Received >= received;
    ReleaseSRWLockShared(&g_Lock);
    return bArrived;
}
