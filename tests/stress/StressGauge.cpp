#include "StressGauge.h"

#include "tools/process/ResourceCounts.h"

#include <cmath>

namespace tesslo::test
{

namespace
{

/// Growth over all runs that the platform explains: handles and threads that it makes when it first needs them, pages
/// that its heap keeps.
struct Allowance
{
    const char* m_pWhat;
    double StressSlopes::* m_pSlope;
    double m_Total;
};

constexpr Allowance kAllowances[] = {
    {"handles", &StressSlopes::m_Handles, 8},
    {"threads", &StressSlopes::m_Threads, 2},
    {"bytes of the working set", &StressSlopes::m_WorkingSet, 4 << 20},
    {"references", &StressSlopes::m_References, 0.5},
};

}  // namespace

void StressGauge::Sample(uint64_t runs, uint64_t references)
{
    const ResourceCounts now = ResourceCounts::Now();
    m_Points.push_back({static_cast<double>(runs), static_cast<double>(now.m_Handles),
        static_cast<double>(now.m_Threads), static_cast<double>(now.m_WorkingSet), static_cast<double>(references)});
}

double StressGauge::InternalSlope(double Point::* pQuantity) const
{
    const size_t first = m_Points.size() / 2;
    const auto count = static_cast<double>(m_Points.size() - first);
    if (count < 2)
        return 0;
    double runs = 0, quantity = 0;
    for (size_t i = first; i < m_Points.size(); ++i)
    {
        runs += m_Points[i].m_Runs / count;
        quantity += m_Points[i].*pQuantity / count;
    }
    double together = 0, square = 0;
    for (size_t i = first; i < m_Points.size(); ++i)
    {
        together += (m_Points[i].m_Runs - runs) * (m_Points[i].*pQuantity - quantity);
        square += (m_Points[i].m_Runs - runs) * (m_Points[i].m_Runs - runs);
    }
    return square > 0 ? together / square : 0;
}

double StressGauge::InternalSpan() const
{
    return m_Points.size() < 2 ? 0 : m_Points.back().m_Runs - m_Points[m_Points.size() / 2].m_Runs;
}

StressSlopes StressGauge::Slopes() const
{
    return {InternalSlope(&Point::m_Handles), InternalSlope(&Point::m_Threads), InternalSlope(&Point::m_WorkingSet),
        InternalSlope(&Point::m_References)};
}

std::vector<std::string> StressGauge::Findings() const
{
    std::vector<std::string> findings;
    const StressSlopes slopes = Slopes();
    for (const Allowance& allowance : kAllowances)
    {
        const double growth = slopes.*allowance.m_pSlope * InternalSpan();
        if (growth > allowance.m_Total)
            findings.push_back(std::string(allowance.m_pWhat) + " grow by " + std::to_string(std::lround(growth)) +
                               " in " + std::to_string(std::lround(InternalSpan())) + " runs");
    }
    return findings;
}

}  // namespace tesslo::test
