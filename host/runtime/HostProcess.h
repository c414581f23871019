// Starts programs.
#pragma once

#include <windows.h>

#include <string>

/// CreateProcessW without what nobody here asks for; tried a second time when Wine has lost the first.
/// @param pProgram path of the program; null if the command line begins with it.
/// @param bInherit whether the process gets the handles that may be inherited.
/// @param pFolder that it begins in; null for the one of this process.
/// @param pProcess receives what it is known by; the caller closes both handles.
/// @return whether it has begun. If not, the last error tells why.
bool HostStartProcess(const wchar_t* pProgram, std::wstring commandLine, bool bInherit, const wchar_t* pFolder,
    STARTUPINFOW startup, PROCESS_INFORMATION* pProcess);
