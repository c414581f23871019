// Atomic counters, and pages with their protection.
#pragma once

inline LONG InterlockedIncrement(volatile LONG* pValue)
{
    return __atomic_add_fetch(pValue, 1, __ATOMIC_SEQ_CST);
}

inline LONG InterlockedDecrement(volatile LONG* pValue)
{
    return __atomic_sub_fetch(pValue, 1, __ATOMIC_SEQ_CST);
}

inline LONG InterlockedCompareExchange(volatile LONG* pValue, LONG exchange, LONG comparand)
{
    __atomic_compare_exchange_n(pValue, &comparand, exchange, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}

inline constexpr DWORD MEM_COMMIT = 0x1000;
inline constexpr DWORD MEM_RESERVE = 0x2000;
inline constexpr DWORD MEM_RELEASE = 0x8000;
inline constexpr DWORD PAGE_NOACCESS = 0x01;
inline constexpr DWORD PAGE_READWRITE = 0x04;

/// Reserves pages that nobody may touch, or makes reserved ones writable. Whole pages only.
void* VirtualAlloc(void* pAddress, size_t size, DWORD type, DWORD protection);
/// Gives a reservation back.
BOOL VirtualFree(void* pAddress, size_t size, DWORD type);
