// How far one check goes.
#pragma once

#include <cstdint>
#include <string>

namespace tesslo::test
{

struct StressSettings
{
    uint64_t m_Seed = 1;
    uint64_t m_From = 0;    ///< the first run
    uint64_t m_Runs = 0;    ///< how many at most; 0 for what the check's form has
    double m_Seconds = 60;  ///< no run begins behind them; 0 for no such limit
    bool m_bShort = false;  ///< the form that belongs to the tests
    bool m_bCuzz = false;   ///< random delays where threads meet
    /// Of a child: the parent's mapping that shows the number of the current run, whatever becomes of the child.
    uint64_t m_hNumber = 0;
};

}  // namespace tesslo::test
