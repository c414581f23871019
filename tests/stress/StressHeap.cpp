#include "StressHeap.h"

#include "Fences.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <set>

namespace tesslo::test
{

namespace
{

constexpr size_t kAlignment = 16;
constexpr int kUnset = 0xA5;  ///< what a new block holds

void (*s_pFree)(void*);
void* (*s_pReallocate)(void*, size_t);

std::mutex s_Mutex;
std::set<void*> s_Blocks;  ///< that the driver has

/// A block of equal bytes; null when it is too large, as the heap's are.
void* Fill(size_t size, int byte)
try
{
    void* pBlock = std::memset(TakeFenced(size, kAlignment), byte, size);
    const std::lock_guard lock(s_Mutex);
    s_Blocks.insert(pBlock);
    return pBlock;
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

/// @return whether it was the driver's.
bool Forget(void* pBlock)
{
    const std::lock_guard lock(s_Mutex);
    return s_Blocks.erase(pBlock) == 1;
}

void Free(void* pBlock)
{
    // The platform hands out blocks of its own to be freed here.
    if (FindFence(pBlock) == FencePlace::Elsewhere)
    {
        s_pFree(pBlock);
        return;
    }
    if (Forget(pBlock))
        GiveFenced(pBlock);
    else
        *static_cast<volatile BYTE*>(pBlock);  // faults: it was freed before
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
    Free(pBlock);
    return pMoved;
}

}  // namespace

size_t StressHeap::Blocks() const
{
    const std::lock_guard lock(s_Mutex);
    return s_Blocks.size();
}

void StressHeap::GiveBack()
{
    const std::lock_guard lock(s_Mutex);
    for (void* pBlock : s_Blocks)
        GiveFenced(pBlock);
    s_Blocks.clear();
}

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
