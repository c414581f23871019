// What an operation traces at certain levels.
#pragma once

#include "TraceCapture.h"
#include "TraceMask.h"

namespace tesslo::test
{

/// @return the lines that this thread traces while the operation runs with this mask.
template <typename Operation>
Lines TraceAt(UINT mask, const Operation& operation)
{
    const TraceMask only(mask);
    const TraceCapture trace;
    operation();
    return trace.LinesOfThisThread();
}

template <typename Operation>
Lines ErrorsOf(const Operation& operation)
{
    return TraceAt(UMDTRACE_ERROR, operation);
}

}  // namespace tesslo::test
