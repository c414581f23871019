// Makes memory run out at a chosen point: the n-th allocation of the calling thread fails, all others work.
#pragma once

#include "ImportPatch.h"

namespace tesslo::test
{

class FailNthAllocation
{
public:
    /// @param nth     1 for the next allocation; 0 counts only.
    /// @param hModule whose allocations count (malloc, and operator new on top of it); null for the executable.
    /// One at a time in a process. Only allocations of the constructing thread count; those of the fakes do not.
    explicit FailNthAllocation(unsigned nth, HMODULE hModule = nullptr);
    ~FailNthAllocation();

    /// Allocations counted so far.
    unsigned Count() const;

    /// While it lives, allocations of the calling thread neither count nor fail. Used by the fakes.
    class Pause
    {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };

private:
    static void* InternalAllocate(size_t size);

    ImportPatch m_Patch;
};

}  // namespace tesslo::test
