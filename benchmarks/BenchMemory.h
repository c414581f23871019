// Memory for whole frames, and the state of the caches that a run finds it in.
#pragma once

#include <windows.h>

#include <memory>

struct BenchMemoryFreed
{
    void operator()(BYTE* pMemory) const { VirtualFree(pMemory, 0, MEM_RELEASE); }
};
using BenchMemory = std::unique_ptr<BYTE, BenchMemoryFreed>;

/// Whole pages, written once so that none is missing when the clock runs.
BenchMemory BenchMakeMemory(size_t bytes);

/// Leaves no line of it in any cache, behind a fence.
void BenchEvict(const BYTE* pMemory, size_t bytes);

/// Reads each line, so that it is in the cache if there is room for it.
void BenchFetch(const BYTE* pMemory, size_t bytes);
