// Numbers of a series of measurements.
#pragma once

#include <vector>

/// The smallest measured value that is not exceeded by `percent` of the values (nearest rank); 0 of none.
double HostPercentile(std::vector<double> values, double percent);
