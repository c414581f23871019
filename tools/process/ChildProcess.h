// A child of this program, and the pipe that it writes to.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

class ChildProcess
{
public:
    /// Starts a program, or this one again, with what it inherits. Throws std::runtime_error when it does not start.
    /// @param pFolder that it begins in; null for the one of this process.
    explicit ChildProcess(std::wstring commandLine, const wchar_t* pFolder = nullptr);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Path of this program, in quotes, as the command line of its child begins.
    static std::wstring OwnPath();

    /// Calls back with each line of its standard output, until it has ended. The pipe may stay open behind it: a
    /// desktop that the child began has inherited its end.
    void ReadLines(const std::function<void(std::string line)>& onLine);
    /// @return whether it has ended in that time. Any thread.
    bool Wait(double seconds) const;
    /// Any thread.
    void Kill() { TerminateProcess(m_Process.hProcess, 1); }
    DWORD ExitCode() const;

private:
    HANDLE m_hRead = nullptr;
    PROCESS_INFORMATION m_Process{};
};
