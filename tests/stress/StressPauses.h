// Random pauses of whatever thread asks for one: mostly none, sometimes the rest of a time slice, sometimes more.
#pragma once

#include <atomic>
#include <cstdint>

namespace tesslo::test
{

class StressPauses
{
public:
    /// From now on the n-th pause is as seed and run say. Some runs are quiet, some are slow.
    void Begin(uint64_t seed, uint64_t run);
    /// Any thread. The last error stays.
    void Pause();

private:
    std::atomic<uint64_t> m_Run = 0;    ///< seed and run, mixed
    std::atomic<uint64_t> m_Rate = 0;   ///< pauses of a thousand that take time
    std::atomic<uint64_t> m_Count = 0;  ///< pauses so far
};

}  // namespace tesslo::test
