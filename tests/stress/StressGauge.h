// What a process holds of the system from run to run, and whether that grows.
#pragma once

#include "StressResult.h"

#include <cstdint>
#include <vector>

namespace tesslo::test
{

class StressGauge
{
public:
    /// Takes a sample behind so many runs.
    /// @param references what the check itself counts: references of the delegated device, living objects.
    void Sample(uint64_t runs, uint64_t references);

    /// Growth of each quantity a run, by least squares over the second half of the samples: the first warms up what
    /// the platform keeps.
    StressSlopes Slopes() const;
    /// What has grown beyond the platform's own noise, a line each.
    std::vector<std::string> Findings() const;

private:
    struct Point
    {
        double m_Runs, m_Handles, m_Threads, m_WorkingSet, m_References;
    };

    double InternalSlope(double Point::* pQuantity) const;
    double InternalSpan() const;

    std::vector<Point> m_Points;
};

}  // namespace tesslo::test
