// The command line of tesslo_bench.exe.
#pragma once

#include <string>

struct BenchOptions
{
    std::string Filter;  ///< part of the names of the rows to measure
    std::string Json;    ///< file to write, empty for none
};
