// The line of the trace as the portable units print it: same prefix, same meaning of the formats. The driver's own
// takes its arguments on from the log file as a block of memory, which no list of arguments is on this platform.
#include "util/UMDUtilDebugTraceLine.h"

#include <windows.h>

void UMDUtilDebugTraceLine(const wchar_t* pFormat, va_list arguments)
{
    constexpr size_t kLineLength = 4096;
    wchar_t line[kLineLength];
    const int prefix = _snwprintf(line, kLineLength, L"UMD: [%04d:%04d] ", GetCurrentProcessId(), GetCurrentThreadId());
    _vsnwprintf(line + prefix, kLineLength - static_cast<size_t>(prefix), pFormat, arguments);
    OutputDebugStringW(line);
}
