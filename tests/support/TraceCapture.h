// Catches the driver's trace lines on their way to the debugger.
//
//     TraceMask mask(0x3);              // unit tests: the driver's level mask
//     TraceCapture trace;
//     ...
//     EXPECT_EQ(trace.Lines(), (std::vector<std::string>{"=> UMDDdiVolBlt E_NOT_IMPL\n"}));
#pragma once

#include "Lines.h"

#include <windows.h>

#include <mutex>
#include <string>
#include <vector>

namespace tesslo::test
{

class TraceCapture
{
public:
    /// One message: the text behind the prefix "UMD: [process:thread] ", with its line feed, and its thread.
    struct Line
    {
        std::string m_Text;
        DWORD m_ThreadId;
    };

    /// Catches lines of all threads of the process, from now on. Several may live at once; each gets every line.
    TraceCapture();
    ~TraceCapture();
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    std::vector<std::string> Lines() const;
    /// The lines with their threads.
    std::vector<Line> ThreadLines() const;
    /// The lines of the calling thread only.
    std::vector<std::string> LinesOfThisThread() const;
    std::vector<std::string> LinesContaining(const std::string& text) const;
    /// How many lines are exactly this text.
    size_t Count(const std::string& line) const;
    void Clear();

private:
    static LONG CALLBACK InternalHandler(EXCEPTION_POINTERS* pPointers);
    void InternalAdd(const std::string& message);

    mutable std::mutex m_Mutex;
    std::vector<Line> m_Lines;
};

}  // namespace tesslo::test
