// What came of one check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tesslo::test
{

/// Growth a run.
struct StressSlopes
{
    double m_Handles = 0;
    double m_Threads = 0;
    double m_WorkingSet = 0;
    double m_References = 0;
};

struct StressFinding
{
    uint64_t m_Run;  ///< in which it was seen
    std::string m_What;
};

struct StressResult
{
    std::string m_Name;
    uint64_t m_Seed = 0;
    uint64_t m_Runs = 0;
    bool m_bComplete = false;  ///< all runs of its form, not only those that the time was enough for
    double m_Seconds = 0;
    StressSlopes m_Slopes;
    uint64_t m_FindingCount = 0;
    std::vector<StressFinding> m_Findings;  ///< the first ones
    std::string m_Note;                     ///< a figure of the check's own, such as a percentile; may be empty
};

/// As one line of JSON, and back. Throws nlohmann's exceptions for what is none.
std::string StressToJson(const StressResult& result);
StressResult StressFromJson(const std::string& text);

}  // namespace tesslo::test
