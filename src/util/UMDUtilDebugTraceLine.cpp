// This file includes no header of the C++ library: libstdc++ replaces the platform's wide printf family with one of C99
// meaning, in which %s takes a narrow string.
#include "util/UMDUtilDebugTraceLine.h"

#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTraceDirectives.h"

#include <share.h>
#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>

#include <shlobj.h>

namespace
{
/// Characters of a line, prefix and terminating null included; of the log file's path as well.
constexpr size_t kLineLength = 4096;

/// How often the log file is asked for while another has it open; a millisecond passes at every fourth time.
constexpr int kOpenTries = 200;

/// Formats into a buffer of kLineLength characters. @return characters written.
int FormatBounded(wchar_t* pBuffer, const wchar_t* pFormat, ...)
{
    va_list arguments;
    va_start(arguments, pFormat);
    const int length = vswprintf_s(pBuffer, kLineLength, pFormat, arguments);
    va_end(arguments);
    return length;
}

/// Opens the log file for one writer alone, who may be another thread's or process's: two at once would write over each
/// other's lines. @return null when it cannot be opened, or not within 50 ms.
FILE* OpenLogFile(const wchar_t* pPath)
{
    for (int tries = 1; tries <= kOpenTries; ++tries)
    {
        FILE* pFile = _wfsopen(pPath, L"a+", _SH_DENYWR);
        if (pFile || _doserrno != ERROR_SHARING_VIOLATION)
            return pFile;
        if (tries % 4 == 0)
            Sleep(1);
        else
            SwitchToThread();
    }
    return nullptr;
}

/// Appends one line to the log file, which consumes it; a file that cannot be found or opened is skipped silently.
void AppendToLogFile(wchar_t* pLine)
{
    wchar_t path[kLineLength];
    if (!SHGetSpecialFolderPathW(nullptr, path, CSIDL_COMMON_DOCUMENTS, FALSE))
        return;
    if (wcscat_s(path, kLineLength, L"\\Tesslo.log") != 0)
        return;
    FILE* pFile = OpenLogFile(path);
    if (!pFile)
        return;
    // The line is the format: a % that the message produced is interpreted once more. It reads zeros, one for each
    // character at the most.
    static const UINT64 zeros[kLineLength] = {};
    UMDUtilDebugTraceDropHarmfulDirectives(pLine);
    vfwprintf(pFile, pLine, reinterpret_cast<va_list>(const_cast<UINT64*>(zeros)));
    fclose(pFile);
}
}  // namespace

void UMDUtilDebugTraceLine(const wchar_t* pFormat, va_list arguments)
{
    const DWORD error = GetLastError();  // the caller may not have asked for it yet
    wchar_t line[kLineLength];
    const int prefix = FormatBounded(line, L"UMD: [%04d:%04d] ", GetCurrentProcessId(), GetCurrentThreadId());
    vswprintf_s(line + prefix, kLineLength - prefix, pFormat, arguments);
    OutputDebugStringW(line);
    if (g_DebugLevelUMD & UMDTRACE_LOGFILE)
        AppendToLogFile(line);
    SetLastError(error);
}
