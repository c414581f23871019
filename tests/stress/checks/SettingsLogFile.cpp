// The log file of the machine while somebody or something is in the way, and while many write to it.
#include "ImportPatch.h"
#include "MachineLog.h"
#include "RegistryOverride.h"
#include "Settings.h"
#include "SettingsWriter.h"
#include "StressProcess.h"
#include "StressShortLife.h"
#include "TemporaryFolder.h"
#include "TraceCapture.h"

#include "DriverDll.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <list>
#include <map>
#include <thread>

namespace tesslo::test
{

namespace
{

using Tell = std::function<void(const std::string&)>;

constexpr int kProcesses = 8, kThreads = 8, kOpenings = 30;

// What is in the way of the log file, as long as it lives.

struct Nothing
{
};

class ReadOnly
{
public:
    ReadOnly() { SetFileAttributesW(MachineLogPath().c_str(), FILE_ATTRIBUTE_READONLY); }
    ~ReadOnly() { SetFileAttributesW(MachineLogPath().c_str(), FILE_ATTRIBUTE_NORMAL); }
};

/// A folder of the file's name.
class Folder
{
public:
    Folder()
    {
        std::filesystem::rename(MachineLogPath(), InternalKept());
        std::filesystem::create_directory(MachineLogPath());
    }
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove(MachineLogPath(), ignored);
        std::filesystem::rename(InternalKept(), MachineLogPath(), ignored);
    }

private:
    static std::filesystem::path InternalKept() { return MachineLogPath().replace_extension(L"kept"); }
};

HANDLE OpenForMyself()
{
    return CreateFileW(MachineLogPath().c_str(), GENERIC_READ, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

class Locked
{
public:
    ~Locked() { CloseHandle(m_hFile); }

private:
    HANDLE m_hFile = OpenForMyself();
};

/// For a moment, again and again.
class LockedNowAndThen
{
public:
    ~LockedNowAndThen()
    {
        m_bEnd = true;
        m_Thread.join();
    }

private:
    void InternalLock()
    {
        while (!m_bEnd)
        {
            const HANDLE hFile = OpenForMyself();
            SwitchToThread();
            if (hFile != INVALID_HANDLE_VALUE)
                CloseHandle(hFile);
            Sleep(1);
        }
    }

    std::atomic<bool> m_bEnd = false;
    std::thread m_Thread{[this] { InternalLock(); }};
};

/// Whatever the C library writes to a file is refused for want of room.
class DiskFull
{
private:
    static BOOL WINAPI InternalWrite(
        HANDLE hFile, const void* pData, DWORD size, DWORD* pWritten, OVERLAPPED* pOverlapped)
    {
        if (GetFileType(hFile) != FILE_TYPE_DISK)
            return s_pWrite(hFile, pData, size, pWritten, pOverlapped);
        if (pWritten)
            *pWritten = 0;
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }

    inline static decltype(&WriteFile) s_pWrite;
    ImportPatch m_Patch{GetModuleHandleW(L"msvcrt.dll"), "kernel32.dll", "WriteFile", InternalWrite, &s_pWrite};
};

/// Whether the file may be written, once nobody has it open.
bool MayBeWritten()
{
    const HANDLE hFile = CreateFileW(MachineLogPath().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION;
    CloseHandle(hFile);
    return true;
}

template <typename Obstacle>
StressSettingsCase CaseOf(const char* pName, bool logged)
{
    return {std::string("log file ") + pName, [logged](const Tell& tell) {
                RegistryOverride registry;
                registry.SetTraceMask(kStressTraceMask);
                registry.SetClientDllName(L"NoSuchLibrary.dll");
                MayBeWritten();  // makes it, should there be none
                StressTracedLife before;
                bool writable = false;
                {
                    [[maybe_unused]] const Obstacle obstacle{};
                    // Some users may write to what is read-only.
                    writable = MayBeWritten();
                    before.Live();
                }
                tell(before.Judge(logged && writable));
                StressTracedLife behind;
                behind.Live();
                tell(behind.Judge(true));
            }};
}

void TraceOnThreads(const Tell& tell)
{
    RegistryOverride registry;
    registry.SetTraceMask(kStressTraceMask);
    registry.SetClientDllName(L"NoSuchLibrary.dll");
    const DriverDll driver;
    const MachineLog log;
    const TraceCapture trace;
    StressTraceOnThreads(kThreads, kOpenings);
    size_t lines = 0;
    std::map<DWORD, Lines> expected;
    for (const TraceCapture::Line& line : trace.ThreadLines())
    {
        char prefix[64];
        std::snprintf(prefix, sizeof(prefix), "UMD: [%04lu:%04lu] ", GetCurrentProcessId(), line.m_ThreadId);
        expected[line.m_ThreadId].push_back(prefix + line.m_Text.substr(0, line.m_Text.find('\n')));
        ++lines;
    }
    const Lines all = log.Lines();
    for (const auto& [thread, ofThread] : expected)
    {
        Lines found;
        const std::string prefix = ofThread[0].substr(0, ofThread[0].find(']') + 1);
        std::ranges::copy_if(
            all, std::back_inserter(found), [&](const std::string& line) { return line.starts_with(prefix); });
        if (found != ofThread)
            tell("thread " + std::to_string(thread) + " finds " + std::to_string(found.size()) + " lines of " +
                 std::to_string(ofThread.size()) + ", or not in order");
    }
    if (all.size() != lines || lines < size_t{kThreads} * kOpenings * 2)
        tell(std::to_string(all.size()) + " lines of " + std::to_string(lines));
}

void TraceInProcesses(const Tell& tell)
{
    const TemporaryFolder folder;
    const MachineLog log;
    std::list<StressProcess> writers;
    for (int i = 0; i < kProcesses; ++i)
        writers.emplace_back("writer", folder.Path().string());
    size_t lines = 0;
    for (StressProcess& writer : writers)
    {
        if (const DWORD code = writer.Wait(); code != 0)
            tell("a process ends with code " + std::to_string(code));
        std::ifstream file(folder.Path() / std::to_string(writer.Id()), std::ios::binary);
        Lines expected;
        for (std::string line; std::getline(file, line);)
            expected.push_back(line + "\n");
        Lines found = log.MessagesOf(writer.Id());
        lines += expected.size();
        std::ranges::sort(expected);
        std::ranges::sort(found);
        if (expected.empty() || found != expected)
            tell(std::to_string(found.size()) + " lines of " + std::to_string(expected.size()) + " of one process");
    }
    if (log.Lines().size() != lines)
        tell(std::to_string(log.Lines().size()) + " lines of " + std::to_string(lines) + " of all processes");
}

}  // namespace

std::vector<StressSettingsCase> StressLogFileCases()
{
    return {
        CaseOf<Nothing>("with nothing in its way", true),
        CaseOf<ReadOnly>("read-only", true),
        CaseOf<Folder>("that is a folder", false),
        CaseOf<Locked>("locked", false),
        CaseOf<LockedNowAndThen>("locked now and then", true),
        CaseOf<DiskFull>("on a full disk", false),
        {"log file of eight threads", TraceOnThreads},
        {"log file of eight processes", TraceInProcesses},
    };
}

}  // namespace tesslo::test
