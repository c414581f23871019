// How a line of the trace leaves the process.
#pragma once

#include <stdarg.h>

/// Formats one line behind its prefix and prints it to the debugger, and to the log file if the mask says so. Leaves
/// the thread's last error as it was.
void UMDUtilDebugTraceLine(const wchar_t* pFormat, va_list arguments);
