#include "StressResult.h"

#include <nlohmann/json.hpp>

namespace tesslo::test
{

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(StressSlopes, m_Handles, m_Threads, m_WorkingSet, m_References)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(StressFinding, m_Run, m_What)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(
    StressResult, m_Name, m_Seed, m_Runs, m_bComplete, m_Seconds, m_Slopes, m_FindingCount, m_Findings, m_Note)

std::string StressToJson(const StressResult& result)
{
    return nlohmann::json(result).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

StressResult StressFromJson(const std::string& text)
{
    return nlohmann::json::parse(text).get<StressResult>();
}

}  // namespace tesslo::test
