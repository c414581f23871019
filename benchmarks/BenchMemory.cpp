#include "BenchMemory.h"

#include <cpuid.h>
#include <immintrin.h>

#include <cstring>

namespace
{
bool HasUnorderedFlush()
{
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    return __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) && (ebx & bit_CLFLUSHOPT) != 0;
}

// The ordered instruction waits for each line, and took most of the time of the rows with cold caches.
__attribute__((target("clflushopt"))) void EvictUnordered(const BYTE* pMemory, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 64)
        _mm_clflushopt(const_cast<BYTE*>(pMemory) + i);
}
}  // namespace

BenchMemory BenchMakeMemory(size_t bytes)
{
    BenchMemory memory(static_cast<BYTE*>(VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)));
    std::memset(memory.get(), 0x5A, bytes);
    return memory;
}

void BenchEvict(const BYTE* pMemory, size_t bytes)
{
    static const bool bUnordered = HasUnorderedFlush();
    if (bUnordered)
        return EvictUnordered(pMemory, bytes);
    for (size_t i = 0; i < bytes; i += 64)
        _mm_clflush(pMemory + i);
}

void BenchFetch(const BYTE* pMemory, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 64)
        static_cast<void>(*static_cast<const volatile BYTE*>(pMemory + i));
}
