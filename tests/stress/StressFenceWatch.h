// Sees who touches what fences keep apart, though a guard swallows the fault.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace tesslo::test
{

/// One at a time in a process.
class StressFenceWatch
{
public:
    StressFenceWatch();
    ~StressFenceWatch();
    StressFenceWatch(const StressFenceWatch&) = delete;
    StressFenceWatch& operator=(const StressFenceWatch&) = delete;

    /// Faults of the calling thread are this entry's from now on. @param pEntry null for nobody's, which do not count.
    void Enter(const char* pEntry);
    /// What was touched since the last time, a line each: by entries, and by other threads.
    std::vector<std::string> Take();

private:
    void* m_pHandler;
};

}  // namespace tesslo::test
