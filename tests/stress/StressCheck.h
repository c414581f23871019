// One promise of the driver, and the load that it is put under.
#pragma once

#include <cstdint>
#include <vector>

namespace tesslo::test
{

class StressRun;

struct StressCheck
{
    const char* m_pName;  ///< as --only names it
    const char* m_pWhat;  ///< one line for whoever reads --help
    uint64_t m_Short;     ///< runs of the short form; 0 for a third of all cases, or all
    uint64_t m_Long;      ///< runs of the long form; 0 for all cases
    /// Runs while run.Next() says so. A fault in it ends the process, and is found by whoever started that.
    void (*m_pRun)(StressRun& run);
};

/// Every check, in the order in which they are run.
const std::vector<StressCheck>& StressChecks();

}  // namespace tesslo::test
