// What the entries themselves trace, with names in the place of handles and addresses.
#pragma once

#include "TraceAt.h"
#include "TraceText.h"

#include <utility>

namespace tesslo::test
{

/// Names, and what lines show them for.
using Names = std::vector<std::pair<std::string, const void*>>;

inline Lines Named(Lines lines, const Names& names)
{
    for (std::string& line : lines)
    {
        for (const auto& [name, pointer] : names)
        {
            const std::string text = Low(pointer);
            for (size_t at; (at = line.find(text)) != std::string::npos;)
                line.replace(at, text.size(), name);
        }
    }
    return lines;
}

/// The lines of an entry's own levels, without those of the objects that it makes.
template <typename Operation>
Lines EntryLines(const Operation& operation)
{
    return Without(TraceAt(UMDTRACE_DDI | UMDTRACE_RESOURCE, operation), "UMDRsc");
}

template <typename Operation>
Lines EntryLines(const Names& names, const Operation& operation)
{
    return Named(EntryLines(operation), names);
}

}  // namespace tesslo::test
