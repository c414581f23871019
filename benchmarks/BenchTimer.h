// Times pieces of work against each other: all of them in every round, so that whatever else the machine does in
// between falls on all alike, and the median of the rounds, so that single disturbances fall out.
#pragma once

#include <functional>
#include <vector>

/// Seconds of the performance counter.
double BenchNow();

double BenchMedian(std::vector<double> values);

struct BenchWork
{
    std::function<void()> Run;
    std::function<void()> Prepare = {};  ///< before each run, not timed
};

/// @param rounds how often each piece runs.
/// @param repeat runs inside one timing: for work shorter than the counter's step.
/// @return the median time of one run of each piece, in seconds. One round before the first is not counted.
std::vector<double> BenchCompare(const std::vector<BenchWork>& works, unsigned rounds, unsigned repeat = 1);
