#include "host/program/HostStatistics.h"

#include <algorithm>
#include <cmath>

double HostPercentile(std::vector<double> values, double percent)
{
    if (values.empty())
        return 0;
    std::ranges::sort(values);
    const double rank = std::ceil(percent / 100 * static_cast<double>(values.size()));
    return values[static_cast<size_t>(std::max(rank, 1.0)) - 1];
}
