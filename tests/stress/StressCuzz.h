// Random delays before and behind the platform calls by which the driver's threads hand over to each other: rare orders
// of two threads become frequent ones.
#pragma once

#include "ImportPatch.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tesslo::test
{

class StressCuzz
{
public:
    /// While it lives, the module's calls that it imports of these are delayed. One at a time in a process.
    explicit StressCuzz(HMODULE hModule);
    ~StressCuzz();
    StressCuzz(const StressCuzz&) = delete;
    StressCuzz& operator=(const StressCuzz&) = delete;

    /// Says that this process is to delay: whoever loads the driver looks here.
    static void Want();
    static bool IsWanted();
    /// Seed and number of the run that begins: the n-th call of a run is delayed as they say.
    static void Begin(uint64_t seed, uint64_t run);

private:
    std::vector<std::unique_ptr<ImportPatch>> m_Patches;
};

}  // namespace tesslo::test
