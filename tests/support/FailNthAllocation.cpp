#include "FailNthAllocation.h"

#include <cstdlib>

namespace tesslo::test
{

namespace
{

DWORD s_ThreadId;            ///< the thread whose allocations count, 0 for none
unsigned s_Nth;              ///< the allocation that fails
volatile LONG s_Count;       ///< allocations counted
volatile LONG s_PauseDepth;  ///< of the counted thread
void* (*s_pOriginal)(size_t);

}  // namespace

FailNthAllocation::FailNthAllocation(unsigned nth, HMODULE hModule)
    : m_Patch(hModule, "msvcrt.dll", "malloc", InternalAllocate, &s_pOriginal)
{
    s_Nth = nth;
    s_Count = 0;
    s_PauseDepth = 0;
    s_ThreadId = GetCurrentThreadId();
}

FailNthAllocation::~FailNthAllocation()
{
    s_ThreadId = 0;
}

unsigned FailNthAllocation::Count() const
{
    return static_cast<unsigned>(s_Count);
}

void* FailNthAllocation::InternalAllocate(size_t size)
{
    if (GetCurrentThreadId() != s_ThreadId || s_PauseDepth > 0)
        return s_pOriginal(size);
    const LONG count = InterlockedIncrement(&s_Count);
    return static_cast<unsigned>(count) == s_Nth ? nullptr : s_pOriginal(size);
}

FailNthAllocation::Pause::Pause()
{
    if (GetCurrentThreadId() == s_ThreadId)
        s_PauseDepth = s_PauseDepth + 1;
}

FailNthAllocation::Pause::~Pause()
{
    if (GetCurrentThreadId() == s_ThreadId && s_PauseDepth > 0)
        s_PauseDepth = s_PauseDepth - 1;
}

}  // namespace tesslo::test
