#include "StressChild.h"

#include "StressCrash.h"
#include "StressRun.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tesslo::test
{

namespace
{

constexpr char kProgress[] = "@progress ";
constexpr char kResult[] = "@result ";
constexpr double kLookEvery = 0.05;  ///< seconds between looks at a child that says nothing
constexpr double kGrace = 120;       ///< seconds beyond its time after which a child counts as hung

SECURITY_ATTRIBUTES g_Inherited{sizeof(g_Inherited), nullptr, TRUE};

/// Where the child writes the number of its current run.
class SharedNumber
{
public:
    SharedNumber()
        : m_hMapping(
              CreateFileMappingW(INVALID_HANDLE_VALUE, &g_Inherited, PAGE_READWRITE, 0, sizeof(uint64_t), nullptr)),
          m_pNumber(View(m_hMapping))
    {
        if (!m_pNumber)
            throw std::runtime_error("no shared memory: " + std::to_string(GetLastError()));
    }
    ~SharedNumber()
    {
        UnmapViewOfFile(const_cast<uint64_t*>(m_pNumber));
        CloseHandle(m_hMapping);
    }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;

    static volatile uint64_t* View(HANDLE hMapping)
    {
        return static_cast<volatile uint64_t*>(MapViewOfFile(hMapping, FILE_MAP_WRITE, 0, 0, sizeof(uint64_t)));
    }
    uint64_t Handle() const { return reinterpret_cast<uint64_t>(m_hMapping); }
    uint64_t Value() const { return *m_pNumber; }

private:
    HANDLE m_hMapping;
    volatile uint64_t* m_pNumber;
};

std::wstring CommandLineOf(const StressCheck& check, const StressSettings& settings, const SharedNumber& number)
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::string arguments = std::string(" --child ") + check.m_pName + " --seed " + std::to_string(settings.m_Seed) +
                            " --from " + std::to_string(settings.m_From) + " --runs " +
                            std::to_string(settings.m_Runs) + " --seconds " + std::to_string(settings.m_Seconds) +
                            " --number " + std::to_string(number.Handle());
    if (settings.m_bShort)
        arguments += " --short";
    if (settings.m_bCuzz)
        arguments += " --cuzz";
    return L'"' + std::wstring(path) + L'"' + std::wstring(arguments.begin(), arguments.end());
}

/// A child and the end of its pipe that this process reads.
class Child
{
public:
    explicit Child(std::wstring commandLine)
    {
        HANDLE hWrite = nullptr;
        if (!CreatePipe(&m_hRead, &hWrite, &g_Inherited, 0))
            throw std::runtime_error("no pipe: " + std::to_string(GetLastError()));
        SetHandleInformation(m_hRead, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = hWrite;
        startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
        const BOOL started = CreateProcessW(
            nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &m_Process);
        CloseHandle(hWrite);
        if (!started)
            throw std::runtime_error("the check does not start: " + std::to_string(GetLastError()));
    }
    ~Child()
    {
        CloseHandle(m_hRead);
        CloseHandle(m_Process.hThread);
        CloseHandle(m_Process.hProcess);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Calls back with each line, until the child has ended. The pipe may stay open behind it: a desktop that the child
    /// began has inherited its end.
    template <typename OnLine>
    void ReadLines(OnLine onLine)
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

    /// @return whether it has ended in that time.
    bool Wait(double seconds)
    {
        return WaitForSingleObject(m_Process.hProcess, DWORD(seconds * 1000)) == WAIT_OBJECT_0;
    }
    void Kill() { TerminateProcess(m_Process.hProcess, 1); }
    DWORD ExitCode()
    {
        DWORD code = 0;
        GetExitCodeProcess(m_Process.hProcess, &code);
        return code;
    }

private:
    HANDLE m_hRead = nullptr;
    PROCESS_INFORMATION m_Process{};
};

std::string EndOf(DWORD code, bool hung, double limit)
{
    char text[64];
    if (hung)
        std::snprintf(text, sizeof(text), "did not end within %.0f s", limit);
    else
        std::snprintf(text, sizeof(text), "the process ended with code 0x%08lX", code);
    return text;
}

}  // namespace

void StressRunChild(const StressCheck& check, const StressSettings& settings)
{
    StressReportCrashes();
    StressRun run(check, settings, [](uint64_t done, uint64_t all) {
        std::printf("%s%" PRIu64 " %" PRIu64 "\n", kProgress, done, all);
        std::fflush(stdout);
    });
    if (settings.m_hNumber)
        run.ShowNumber(SharedNumber::View(reinterpret_cast<HANDLE>(settings.m_hNumber)));
    check.m_pRun(run);
    std::printf("%s%s\n", kResult, StressToJson(run.Result()).c_str());
    std::fflush(stdout);
}

StressResult StressStartChild(const StressCheck& check, const StressSettings& settings,
    const std::function<void(uint64_t done, uint64_t all)>& onProgress)
{
    const SharedNumber number;
    Child child(CommandLineOf(check, settings, number));
    const double limit = settings.m_Seconds + kGrace;
    std::atomic<bool> hung = false;
    std::thread watch([&] {
        hung = !child.Wait(limit);
        if (hung)
            child.Kill();
    });
    StressResult result;
    result.m_Name = check.m_pName;
    result.m_Seed = settings.m_Seed;
    bool complete = false;
    std::string crash;
    child.ReadLines([&](const std::string& line) {
        uint64_t done = 0, all = 0;
        if (std::sscanf(line.c_str(), "@progress %" SCNu64 " %" SCNu64, &done, &all) == 2)
        {
            result.m_Runs = done;
            onProgress(done, all);
        }
        else if (line.starts_with(kStressCrash))
            crash = ": " + line.substr(sizeof(kStressCrash) - 1);
        else if (line.starts_with(kResult))
        {
            result = StressFromJson(line.substr(sizeof(kResult) - 1));
            complete = true;
        }
    });
    watch.join();
    if (!complete || hung || child.ExitCode() != 0)
    {
        ++result.m_FindingCount;
        result.m_bComplete = false;
        result.m_Findings.push_back({number.Value(), EndOf(child.ExitCode(), hung, limit) + crash});
    }
    return result;
}

}  // namespace tesslo::test
