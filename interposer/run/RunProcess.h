// Starts a program with the shared record and waits for its end, whatever that is.
#pragma once

#include "interposer/run/RunRecord.h"

#include <memory>
#include <string>
#include <vector>

enum class RunEnd
{
    Itself,      ///< with an exit code of its own
    FrameLimit,  ///< behind the last frame that was asked for
    TimeLimit,   ///< ended from here
    Crash,       ///< by an exception that nobody took
};

struct RunResult
{
    RunRecord m_Record{};  ///< as it was at the end
    RunEnd m_End = RunEnd::Itself;
    DWORD m_ExitCode = 0;
    double m_Seconds = 0;
};

/// @param settings        the first half of a record; the results are zero.
/// @param program         path of the program.
/// @param arguments       its own.
/// @param timeLimit       milliseconds; INFINITE for none.
/// Throws HostError when the program cannot be started.
RunResult RunProgram(const RunRecord& settings, const std::wstring& program, const std::vector<std::wstring>& arguments,
    DWORD timeLimit);
