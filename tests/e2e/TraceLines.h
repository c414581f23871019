// The driver's trace lines of this thread while the object lives.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

class TraceLines
{
public:
    /// One object at a time.
    TraceLines();
    ~TraceLines();

    TraceLines(const TraceLines&) = delete;
    TraceLines& operator=(const TraceLines&) = delete;

    /// The lines behind the prefix "UMD: [process:thread] ", without their line feeds.
    const std::vector<std::string>& Lines() const { return m_Lines; }

private:
    static LONG CALLBACK Handler(EXCEPTION_POINTERS* pPointers);

    std::vector<std::string> m_Lines;
    void* m_pHandler;
};
