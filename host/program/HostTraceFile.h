// Everything that this process prints to the debugger, written to a file while the object lives: the driver's trace
// and the client library's remarks.
#pragma once

#include <windows.h>

#include <string>

class HostTraceFile
{
public:
    /// Throws HostError if the file cannot be made. One object at a time.
    explicit HostTraceFile(const std::wstring& path);
    ~HostTraceFile();
    HostTraceFile(const HostTraceFile&) = delete;
    HostTraceFile& operator=(const HostTraceFile&) = delete;

    /// What is missing of it, in one line; empty while all is there.
    std::string Complaint() const;

private:
    void* m_pHandler = nullptr;
};
