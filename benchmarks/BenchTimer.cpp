#include "BenchTimer.h"

#include <windows.h>

#include <algorithm>

double BenchNow()
{
    static const double step = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return 1.0 / static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * step;
}

double BenchMedian(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const size_t middle = values.size() / 2;
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(middle), values.end());
    const double upper = values[middle];
    if (values.size() % 2)
        return upper;
    return (upper + *std::max_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(middle))) / 2;
}

std::vector<double> BenchCompare(const std::vector<BenchWork>& works, unsigned rounds, unsigned repeat)
{
    std::vector<std::vector<double>> times(works.size());
    for (unsigned round = 0; round <= rounds; ++round)
    {
        for (size_t i = 0; i < works.size(); ++i)
        {
            // Each round begins with another piece: none always follows the same one.
            const size_t which = (i + round) % works.size();
            const BenchWork& work = works[which];
            if (work.Prepare)
                work.Prepare();
            const double begin = BenchNow();
            for (unsigned n = 0; n < repeat; ++n)
                work.Run();
            const double end = BenchNow();
            if (round > 0)
                times[which].push_back((end - begin) / repeat);
        }
    }
    std::vector<double> medians;
    for (std::vector<double>& values : times)
        medians.push_back(BenchMedian(std::move(values)));
    return medians;
}
