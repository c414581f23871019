#include "host/runtime/HostProcess.h"

namespace
{

bool Start(const wchar_t* pProgram, std::wstring commandLine, bool bInherit, const wchar_t* pFolder,
    STARTUPINFOW* pStartup, PROCESS_INFORMATION* pProcess)
{
    // The function writes to the line.
    return CreateProcessW(
               pProgram, commandLine.data(), nullptr, nullptr, bInherit, 0, nullptr, pFolder, pStartup, pProcess) != 0;
}

}  // namespace

bool HostStartProcess(const wchar_t* pProgram, std::wstring commandLine, bool bInherit, const wchar_t* pFolder,
    STARTUPINFOW startup, PROCESS_INFORMATION* pProcess)
{
    // Now and then, on a machine with much else to do, a process of Wine ends before it has begun to load the program.
    // Wine tells that as an internal error, Windows never does.
    return Start(pProgram, commandLine, bInherit, pFolder, &startup, pProcess) ||
           (GetLastError() == ERROR_INTERNAL_ERROR &&
               Start(pProgram, commandLine, bInherit, pFolder, &startup, pProcess));
}
