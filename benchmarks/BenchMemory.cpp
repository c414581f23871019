#include "BenchMemory.h"

#include <emmintrin.h>

#include <cstring>

BenchMemory BenchMakeMemory(size_t bytes)
{
    BenchMemory memory(static_cast<BYTE*>(VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)));
    std::memset(memory.get(), 0x5A, bytes);
    return memory;
}

void BenchEvict(const BYTE* pMemory, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 64)
        _mm_clflush(pMemory + i);
}

void BenchFetch(const BYTE* pMemory, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 64)
        static_cast<void>(*static_cast<const volatile BYTE*>(pMemory + i));
}
