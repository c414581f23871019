#include "StressHeap.h"

#include "Fences.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace tesslo::test
{

namespace
{

constexpr size_t kAlignment = 16;
constexpr int kUnset = 0xA5;  ///< what a new block holds

void (*s_pFree)(void*);
void* (*s_pReallocate)(void*, size_t);

/// A block of equal bytes; null when it is too large, as the heap's are.
void* Fill(size_t size, int byte)
try
{
    return std::memset(TakeFenced(size, kAlignment), byte, size);
}
catch (const std::bad_alloc&)
{
    return nullptr;
}

void* Allocate(size_t size)
{
    return Fill(size, kUnset);
}

void* AllocateZeroes(size_t count, size_t size)
{
    return Fill(count * size, 0);
}

void Free(void* pBlock)
{
    // The platform hands out blocks of its own to be freed here.
    if (FindFence(pBlock) == FencePlace::Elsewhere)
        s_pFree(pBlock);
    else
        GiveFenced(pBlock);
}

void* Reallocate(void* pBlock, size_t size)
{
    if (pBlock && FindFence(pBlock) == FencePlace::Elsewhere)
        return s_pReallocate(pBlock, size);
    void* pMoved = Allocate(size);
    if (!pMoved)
        return nullptr;
    if (pBlock)
        std::memcpy(pMoved, pBlock, std::min(size, FencedSize(pBlock)));
    GiveFenced(pBlock);
    return pMoved;
}

}  // namespace

StressLoad::Patches StressHeap::InternalPatch(HMODULE hModule)
{
    constexpr char kRuntime[] = "msvcrt.dll";
    StressLoad::Patches patches;
    patches.push_back(std::make_unique<ImportPatch>(hModule, kRuntime, "malloc", Allocate));
    patches.push_back(std::make_unique<ImportPatch>(hModule, kRuntime, "calloc", AllocateZeroes));
    patches.push_back(std::make_unique<ImportPatch>(hModule, kRuntime, "realloc", Reallocate, &s_pReallocate));
    patches.push_back(std::make_unique<ImportPatch>(hModule, kRuntime, "free", Free, &s_pFree));
    return patches;
}

}  // namespace tesslo::test
