// The trace function as the portable units call it: same mask, same prefix, same meaning of the formats. The driver's
// own takes its arguments on from the log file as a block of memory, which no list of arguments is on this platform.
#include "util/UMDUtilDebugTrace.h"

#include <stdarg.h>

UINT g_DebugLevelUMD = 0;

namespace
{
constexpr size_t kLineLength = 4096;

void TraceLine(const wchar_t* pFormat, va_list arguments)
{
    wchar_t line[kLineLength];
    const int prefix = _snwprintf(line, kLineLength, L"UMD: [%04d:%04d] ", GetCurrentProcessId(), GetCurrentThreadId());
    _vsnwprintf(line + prefix, kLineLength - static_cast<size_t>(prefix), pFormat, arguments);
    OutputDebugStringW(line);
}
}  // namespace

void UMDUtilDebugTrace(UINT level, const wchar_t* pFormat, ...)
{
    if (!(g_DebugLevelUMD & level))
        return;
    va_list arguments;
    va_start(arguments, pFormat);
    TraceLine(pFormat, arguments);
    va_end(arguments);
}

HRESULT UMDFail(HRESULT hResult, const wchar_t* pFormat, ...)
{
    va_list arguments;
    va_start(arguments, pFormat);
    if (g_DebugLevelUMD & UMDTRACE_ERROR)
        TraceLine(pFormat, arguments);
    va_end(arguments);
    return hResult;
}
