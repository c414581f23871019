#include "interposer/run/RunProcess.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostProcess.h"
#include "host/runtime/HostText.h"

#include <algorithm>
#include <atomic>

namespace
{

/// Memory that the program finds by its name.
class SharedRecord
{
public:
    explicit SharedRecord(const RunRecord& settings)
    {
        static std::atomic<unsigned> number;
        m_Name = L"TessloRun-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(number++);
        m_hMapping =
            CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(RunRecord), m_Name.c_str());
        if (m_hMapping != nullptr)
            m_pRecord = static_cast<RunRecord*>(MapViewOfFile(m_hMapping, FILE_MAP_ALL_ACCESS, 0, 0, 0));
        if (m_pRecord == nullptr)
            HostThrowSystemError("cannot make memory to share with the program", GetLastError());
        *m_pRecord = settings;
    }
    ~SharedRecord()
    {
        UnmapViewOfFile(m_pRecord);
        CloseHandle(m_hMapping);
    }
    SharedRecord(const SharedRecord&) = delete;
    SharedRecord& operator=(const SharedRecord&) = delete;

    const std::wstring& Name() const { return m_Name; }
    const RunRecord& Record() const { return *m_pRecord; }

private:
    std::wstring m_Name;
    HANDLE m_hMapping = nullptr;
    RunRecord* m_pRecord = nullptr;
};

// As the C library of the started program takes a command line apart.
void Append(std::wstring& line, const std::wstring& argument)
{
    line += line.empty() ? L"\"" : L" \"";
    size_t backslashes = 0;
    for (wchar_t character : argument)
    {
        if (character == L'"')
            line.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        line += character;
    }
    line.append(backslashes, L'\\');
    line += L'"';
}

PROCESS_INFORMATION Start(const std::wstring& program, const std::vector<std::wstring>& arguments)
{
    std::wstring line;
    Append(line, program);
    for (const std::wstring& argument : arguments)
        Append(line, argument);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!HostStartProcess(program.c_str(), std::move(line), true, nullptr, startup, &process))
        HostThrowSystemError("cannot start " + HostUtf8(program), GetLastError());
    CloseHandle(process.hThread);
    return process;
}

RunEnd EndOf(const RunRecord& record, bool bEndedHere, DWORD exitCode)
{
    if (bEndedHere)
        return RunEnd::TimeLimit;
    if (record.m_bFrameLimitReached)
        return RunEnd::FrameLimit;
    return exitCode >= 0xC0000000 ? RunEnd::Crash : RunEnd::Itself;
}

}  // namespace

RunResult RunProgram(
    const RunRecord& settings, const std::wstring& program, const std::vector<std::wstring>& arguments, DWORD timeLimit)
{
    const SharedRecord shared(settings);
    SetEnvironmentVariableW(TESSLO_RUN_RECORD, shared.Name().c_str());
    const ULONGLONG begin = GetTickCount64();
    const PROCESS_INFORMATION process = Start(program, arguments);
    SetEnvironmentVariableW(TESSLO_RUN_RECORD, nullptr);
    const bool bEndedHere = WaitForSingleObject(process.hProcess, timeLimit) == WAIT_TIMEOUT;
    if (bEndedHere)
        TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, INFINITE);
    RunResult result;
    result.m_Seconds = static_cast<double>(GetTickCount64() - begin) / 1000;
    GetExitCodeProcess(process.hProcess, &result.m_ExitCode);
    CloseHandle(process.hProcess);
    result.m_Record = shared.Record();
    // One that was ended within a present has compared the frame, and not counted it yet.
    result.m_Record.m_Frames =
        std::max(result.m_Record.m_Frames, result.m_Record.m_Equal + result.m_Record.m_Different);
    result.m_End = EndOf(result.m_Record, bEndedHere, result.m_ExitCode);
    return result;
}
