// One line of the report: two times and what their ratio must be.
#pragma once

#include <string>
#include <vector>

/// Which way a target is to be met.
enum class BenchTarget
{
    None,  ///< a figure to know, nothing to meet
    AtLeast,
    AtMost
};

struct BenchRow
{
    std::string Name;
    std::string Unit;       ///< of both figures: "us", "ns", "KiB", "fps"
    double Ours = 0;        ///< median
    std::string OtherName;  ///< what stands beside it
    double Other = 0;       ///< median
    double Result = 0;      ///< what the target is about: a ratio, or the difference in Unit
    BenchTarget Kind = BenchTarget::None;
    double Must = 0;
    double Aim = 0;  ///< 0: none beyond the must

    bool IsMet() const
    {
        return Kind == BenchTarget::None || (Kind == BenchTarget::AtLeast ? Result >= Must : Result <= Must);
    }
};

using BenchRows = std::vector<BenchRow>;
