#include "tools/client_check/CheckReport.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace
{

const char* Verdict(const CheckResult& result)
{
    if (!result.m_bRun)
        return "not run";
    return result.HasPassed() ? "passed" : "FAILED";
}

void PrintTimes(const CheckResult& result, const CheckOptions& options)
{
    const auto figure = [&](const char* pName) { return result.m_Figures.at(pName); };
    if (result.m_Figures.contains("longest_ms"))
        std::printf(
            "            %u Updates of %ux%u: median %.2f ms, 99th percentile %.2f ms, longest %.2f ms; the limit "
            "is %.2f ms\n",
            options.m_Frames, options.m_Width, options.m_Height, figure("median_ms"), figure("percentile_99_ms"),
            figure("longest_ms"), options.m_Limit);
}

nlohmann::json ToJson(const CheckResult& result)
{
    return {{"name", result.m_Name}, {"what", result.m_What}, {"verdict", Verdict(result)},
        {"seconds", result.m_Seconds}, {"findings", result.m_Findings}, {"change", result.m_Change},
        {"figures", result.m_Figures}};
}

bool AllPassed(const std::vector<CheckResult>& results)
{
    return std::ranges::all_of(results, &CheckResult::HasPassed);
}

}  // namespace

void CheckPrint(const CheckResult& result, const CheckOptions& options)
{
    std::printf("%-10s  %-7s %s\n", result.m_Name.c_str(), Verdict(result), result.m_What.c_str());
    PrintTimes(result, options);
    for (const std::string& finding : result.m_Findings)
        std::printf("            found:  %s\n", finding.c_str());
    if (!result.m_Change.empty())
        std::printf("            change: %s\n", result.m_Change.c_str());
    std::fflush(stdout);
}

bool CheckPrintSum(const std::vector<CheckResult>& results)
{
    const auto passed = std::ranges::count_if(results, &CheckResult::HasPassed);
    const auto run = std::ranges::count_if(results, &CheckResult::m_bRun);
    std::printf("%d passed, %d failed", static_cast<int>(passed), static_cast<int>(run - passed));
    if (const size_t rest = results.size() - static_cast<size_t>(run); rest > 0)
        std::printf(", %d not run", static_cast<int>(rest));
    std::printf("\n");
    return AllPassed(results);
}

void CheckWriteJson(const std::vector<CheckResult>& results, const CheckOptions& options)
{
    nlohmann::json checks = nlohmann::json::array();
    for (const CheckResult& result : results)
        checks.push_back(ToJson(result));
    const nlohmann::json all = {{"library", HostUtf8(options.m_Library)}, {"passed", AllPassed(results)},
        {"limit_ms", options.m_Limit}, {"checks", checks}};
    std::ofstream stream(std::filesystem::path(options.m_Json));
    stream << all.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    if (!stream.flush())
        throw HostError("cannot write " + HostUtf8(options.m_Json));
}
