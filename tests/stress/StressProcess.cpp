#include "StressProcess.h"

#include "Waiting.h"
#include "checks/Kills.h"
#include "checks/SettingsWriter.h"
#include "host/runtime/HostProcess.h"

#include <algorithm>
#include <stdexcept>

namespace tesslo::test
{

namespace
{

constexpr StressRole kRoles[] = {
    {"presenter", StressPresenter},
    {"writer", StressSettingsWriter},
};

}  // namespace

const StressRole* StressFindRole(const std::string& name)
{
    const auto* pFound = std::ranges::find(kRoles, name, &StressRole::m_pName);
    return pFound == std::end(kRoles) ? nullptr : pFound;
}

StressProcess::StressProcess(const char* pRole, const std::string& argument)
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::string arguments = std::string(" --role ") + pRole + " --argument \"" + argument + "\"";
    std::wstring line = L'"' + std::wstring(path) + L'"' + std::wstring(arguments.begin(), arguments.end());
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    if (!HostStartProcess(nullptr, std::move(line), false, nullptr, startup, &m_Process))
        throw std::runtime_error("a process does not start: " + std::to_string(GetLastError()));
}

StressProcess::~StressProcess()
{
    Kill();
    CloseHandle(m_Process.hThread);
    CloseHandle(m_Process.hProcess);
}

void StressProcess::Kill()
{
    TerminateProcess(m_Process.hProcess, 1);
    WaitForSingleObject(m_Process.hProcess, kLong);
}

DWORD StressProcess::Wait()
{
    WaitForSingleObject(m_Process.hProcess, kLong);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(m_Process.hProcess, &code);
    return code;
}

}  // namespace tesslo::test
