// This program once more, in a role of its own: a process beside the check's, which may be ended at any time.
#pragma once

#include <windows.h>

#include <string>

namespace tesslo::test
{

/// What a process does in a role. @param argument as whoever started it says.
struct StressRole
{
    const char* m_pName;
    void (*m_pRun)(const std::string& argument);
};

/// The role of this name; null when there is none.
const StressRole* StressFindRole(const std::string& name);

class StressProcess
{
public:
    /// Throws std::runtime_error when it does not start.
    StressProcess(const char* pRole, const std::string& argument);
    /// Ends it, if it still runs.
    ~StressProcess();
    StressProcess(const StressProcess&) = delete;
    StressProcess& operator=(const StressProcess&) = delete;

    DWORD Id() const { return m_Process.dwProcessId; }
    /// Ends it where it stands, and waits for its end.
    void Kill();
    /// Waits for its end. @return its code; STILL_ACTIVE when it does not end for long.
    DWORD Wait();

private:
    PROCESS_INFORMATION m_Process{};
};

}  // namespace tesslo::test
