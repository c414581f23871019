#include "interposer/hooks/HookMethod.h"

#include <mutex>

thread_local int HookDepth::s_Depth;

void HookInstall(void* pObject, std::span<const HookRow> rows)
{
    static std::mutex mutex;
    std::lock_guard lock(mutex);
    void** pTable = *static_cast<void***>(pObject);
    for (const HookRow& row : rows)
    {
        void*& slot = pTable[row.m_Slot];
        // A second table of the same kind would need a place of its own for what it held: it stays as it is.
        if (slot == row.m_pHook || (*row.m_ppPlatform != nullptr && *row.m_ppPlatform != slot))
            continue;
        DWORD protection = 0;
        VirtualProtect(&slot, sizeof(slot), PAGE_READWRITE, &protection);
        *row.m_ppPlatform = slot;
        InterlockedExchangePointer(&slot, row.m_pHook);
        VirtualProtect(&slot, sizeof(slot), protection, &protection);
    }
}
