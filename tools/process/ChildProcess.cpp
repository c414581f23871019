#include "tools/process/ChildProcess.h"

#include "host/runtime/HostProcess.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace
{
constexpr double kLookEvery = 0.05;  ///< seconds between looks at a child that says nothing
}  // namespace

ChildProcess::ChildProcess(std::wstring commandLine, const wchar_t* pFolder)
{
    SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
    HANDLE hWrite = nullptr;
    if (!CreatePipe(&m_hRead, &hWrite, &inherited, 0))
        throw std::runtime_error("no pipe: " + std::to_string(GetLastError()));
    SetHandleInformation(m_hRead, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = hWrite;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    const bool bStarted = HostStartProcess(nullptr, std::move(commandLine), true, pFolder, startup, &m_Process);
    const DWORD error = GetLastError();
    CloseHandle(hWrite);
    if (!bStarted)
    {
        CloseHandle(m_hRead);
        throw std::runtime_error("the check does not start: " + std::to_string(error));
    }
}

ChildProcess::~ChildProcess()
{
    CloseHandle(m_hRead);
    CloseHandle(m_Process.hThread);
    CloseHandle(m_Process.hProcess);
}

std::wstring ChildProcess::OwnPath()
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return L'"' + std::wstring(path) + L'"';
}

void ChildProcess::ReadLines(const std::function<void(std::string line)>& onLine)
{
    std::string line;
    char buffer[4096];
    for (;;)
    {
        const bool ended = Wait(0);  // before the look: what it has written is there
        DWORD size = 0;
        if (!PeekNamedPipe(m_hRead, nullptr, 0, nullptr, &size, nullptr) || (size == 0 && ended))
            return;
        if (size == 0)
            Wait(kLookEvery);
        else if (!ReadFile(m_hRead, buffer, std::min<DWORD>(size, sizeof(buffer)), &size, nullptr))
            return;
        for (DWORD i = 0; i < size; ++i)
        {
            if (buffer[i] == '\n')
                onLine(std::exchange(line, {}));
            else if (buffer[i] != '\r')
                line += buffer[i];
        }
    }
}

bool ChildProcess::Wait(double seconds) const
{
    return WaitForSingleObject(m_Process.hProcess, static_cast<DWORD>(seconds * 1000)) == WAIT_OBJECT_0;
}

DWORD ChildProcess::ExitCode() const
{
    DWORD code = 0;
    GetExitCodeProcess(m_Process.hProcess, &code);
    return code;
}
