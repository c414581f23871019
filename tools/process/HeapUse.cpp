#include "tools/process/HeapUse.h"

#include <algorithm>
#include <vector>

HeapUse HeapUse::Now()
{
    HeapUse use;
    use.Add(reinterpret_cast<HANDLE>(
        reinterpret_cast<intptr_t (*)()>(GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "_get_heap_handle"))()));
    return use;
}

HeapUse HeapUse::OfAll()
{
    std::vector<HANDLE> heaps(256);
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    heaps.resize(std::min<size_t>(count, heaps.size()));
    HeapUse use;
    for (const HANDLE hHeap : heaps)
        use.Add(hHeap);
    return use;
}

void HeapUse::Add(HANDLE hHeap)
{
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(hHeap);
    while (HeapWalk(hHeap, &entry))
    {
        if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY))
            continue;
        ++m_Blocks;
        m_Bytes += entry.cbData;
    }
    HeapUnlock(hHeap);
}
