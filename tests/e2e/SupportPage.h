// docs/support.md as its reader takes it: symptoms, and for each cause the mask to set and the lines to look for.
#pragma once

#include "Lines.h"

#include <windows.h>

#include <string>
#include <vector>

namespace tesslo::test
{

/// A line that the page tells to look for. In its text, "…" stands for anything.
struct SupportLine
{
    enum class Promise
    {
        There,      ///< it is in the log
        NotThere,   ///< "no" stands before it
        FewerThan,  ///< "than" stands before it: it is in the log less often than the one before it
    };

    std::string m_Text;
    Promise m_Promise;

    size_t Count(const Lines& log) const;
};

/// A row of the page's tables.
struct SupportCause
{
    std::string m_Symptom;  ///< the title above the table
    std::string m_Cause;
    DWORD m_Mask;
    std::vector<SupportLine> m_Lines;

    /// What the log has not that it had to have, or the other way round; empty if the page keeps its word.
    std::string Complaint(const Lines& log) const;
};

/// All causes, in the page's order. Throws std::runtime_error for a page that cannot be read.
std::vector<SupportCause> ReadSupportPage();

}  // namespace tesslo::test
