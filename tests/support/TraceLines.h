// The trace lines of this thread while the object lives, as a reader sees them: without their line feeds.
#pragma once

#include "TraceCapture.h"

namespace tesslo::test
{

class TraceLines
{
public:
    /// A line that lacks its line feed says so.
    std::vector<std::string> Lines() const
    {
        std::vector<std::string> lines = m_Capture.LinesOfThisThread();
        for (std::string& line : lines)
            line = line.ends_with('\n') ? line.substr(0, line.size() - 1) : line + "<no line feed>";
        return lines;
    }

private:
    TraceCapture m_Capture;
};

}  // namespace tesslo::test
