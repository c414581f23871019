#include "StressRun.h"

#include "StressCuzz.h"

#include <algorithm>
#include <utility>

namespace tesslo::test
{

namespace
{

constexpr size_t kFindingsKept = 20;
constexpr uint64_t kFindingsEnough = 200;  ///< a check that finds this many has been answered
constexpr uint64_t kSamples = 200;
constexpr double kTellEvery = 0.5;  ///< seconds
constexpr uint64_t kThird = 3;

}  // namespace

StressRun::StressRun(
    const StressCheck& check, const StressSettings& settings, std::function<void(uint64_t, uint64_t)> onProgress)
    : m_Settings(settings), m_OnProgress(std::move(onProgress)), m_First(settings.m_From),
      m_All(settings.m_Runs     ? settings.m_Runs
            : settings.m_bShort ? check.m_Short
                                : check.m_Long)
{
    m_Result.m_Name = check.m_pName;
    m_Result.m_Seed = settings.m_Seed;
    if (settings.m_bCuzz)
        StressCuzz::Want();
}

void StressRun::SetCases(uint64_t count, Share ofShortForm)
{
    m_Cases = count;
    m_Share = ofShortForm;
    // Seeds take turns at the thirds.
    m_First = m_Settings.m_From + (InternalStep() > 1 ? m_Settings.m_Seed % kThird : 0);
    const uint64_t left = count - std::min(count, m_First);
    m_All = std::min(m_All ? m_All : count, (left + InternalStep() - 1) / InternalStep());
}

uint64_t StressRun::InternalStep() const
{
    const bool third = m_Cases > 0 && m_Share == Share::Third;
    return m_Settings.m_bShort && m_Settings.m_Runs == 0 && third ? kThird : 1;
}

double StressRun::InternalSeconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_Begin).count();
}

void StressRun::InternalBegin(uint64_t number)
{
    m_Number = number;
    if (m_pNumber)
        *m_pNumber = number;
    std::seed_seq seed{static_cast<uint32_t>(m_Settings.m_Seed), static_cast<uint32_t>(m_Settings.m_Seed >> 32),
        static_cast<uint32_t>(number), static_cast<uint32_t>(number >> 32)};
    m_Random.seed(seed);
    StressCuzz::Begin(m_Settings.m_Seed, number);
    m_bRunning = true;
}

bool StressRun::Next()
{
    if (std::exchange(m_bRunning, false))
        ++m_Done;
    const uint64_t every = std::max<uint64_t>(1, m_All / kSamples);
    if (m_Done % every == 0)
        m_Gauge.Sample(m_Done, m_References);
    const double seconds = InternalSeconds();
    if (seconds >= m_Told + kTellEvery)
    {
        m_Told = seconds;
        m_OnProgress(m_Done, m_All);
    }
    const bool late = m_Settings.m_Seconds > 0 && seconds >= m_Settings.m_Seconds;
    if (m_Done >= m_All || late || m_Result.m_FindingCount >= kFindingsEnough)
        return false;
    InternalBegin(m_First + m_Done * InternalStep());
    return true;
}

void StressRun::Find(const std::string& what)
{
    if (++m_Result.m_FindingCount <= kFindingsKept)
        m_Result.m_Findings.push_back({m_Number, what});
}

bool StressRun::Expect(bool condition, const std::string& what)
{
    if (!condition)
        Find(what);
    return condition;
}

StressResult StressRun::Result()
{
    m_Result.m_Runs = m_Done;
    m_Result.m_bComplete = m_Done >= m_All;
    m_Result.m_Seconds = InternalSeconds();
    m_Result.m_Slopes = m_Gauge.Slopes();
    for (const std::string& what : m_Gauge.Findings())
        Find(what);
    return m_Result;
}

}  // namespace tesslo::test
