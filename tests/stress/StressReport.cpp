#include "StressReport.h"

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace tesslo::test
{

namespace
{

void PrintRow(const StressResult& result)
{
    const StressSlopes& slopes = result.m_Slopes;
    std::printf("%-12s %10" PRIu64 "%s %6" PRIu64 " %6.0f %6" PRIu64 " %9.4f %9.4f %9.0f %9.4f  %s\n",
        result.m_Name.c_str(), result.m_Runs, result.m_bComplete ? " " : "+", result.m_Seed, result.m_Seconds,
        result.m_FindingCount, slopes.m_Handles, slopes.m_Threads, slopes.m_WorkingSet, slopes.m_References,
        result.m_Note.c_str());
}

void PrintFindings(const StressResult& result, const StressSettings& settings)
{
    std::printf("\n%s:\n", result.m_Name.c_str());
    for (const StressFinding& finding : result.m_Findings)
        std::printf("  run %" PRIu64 ": %s\n    repeat: ./stress --only %s --seed %" PRIu64 " --from %" PRIu64
                    " --runs 1%s\n",
            finding.m_Run, finding.m_What.c_str(), result.m_Name.c_str(), result.m_Seed, finding.m_Run,
            settings.m_bCuzz ? " --cuzz" : "");
    if (result.m_FindingCount > result.m_Findings.size())
        std::printf("  and %" PRIu64 " more\n", result.m_FindingCount - result.m_Findings.size());
}

}  // namespace

void StressPrint(const std::vector<StressResult>& results, const StressSettings& settings)
{
    std::printf("\n%-12s %10s  %6s %6s %6s %9s %9s %9s %9s\n", "check", "runs", "seed", "s", "found", "handles",
        "threads", "bytes", "refs");
    bool partly = false;
    for (const StressResult& result : results)
    {
        PrintRow(result);
        partly |= !result.m_bComplete;
    }
    std::printf("Handles, threads, working set and references: growth a run.%s\n",
        partly ? " +: there are more runs than the time was enough for." : "");
    for (const StressResult& result : results)
        if (result.m_FindingCount > 0)
            PrintFindings(result, settings);
}

void StressWriteJson(const std::vector<StressResult>& results, const std::string& file)
{
    std::ofstream stream(file);
    stream << "[\n";
    for (const StressResult& result : results)
        stream << "  " << StressToJson(result) << (&result == &results.back() ? "\n" : ",\n");
    stream << "]\n";
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file);
}

}  // namespace tesslo::test
