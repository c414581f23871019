#include "HeapUse.h"

namespace tesslo::test
{

HeapUse HeapUse::Now()
{
    const auto hHeap = reinterpret_cast<HANDLE>(
        reinterpret_cast<intptr_t (*)()>(GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "_get_heap_handle"))());
    HeapUse use;
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(hHeap);
    while (HeapWalk(hHeap, &entry))
    {
        if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY))
            continue;
        ++use.m_Blocks;
        use.m_Bytes += entry.cbData;
    }
    HeapUnlock(hHeap);
    return use;
}

}  // namespace tesslo::test
