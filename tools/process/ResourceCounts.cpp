#include "tools/process/ResourceCounts.h"

#include <psapi.h>
#include <tlhelp32.h>

namespace
{

/// So many values in a row that are no handle end the search: the platform gives the lowest free one.
constexpr unsigned kGap = 256;

// The system's own list of handles is not asked for: Wine's server reads past the table of a process that has no handle
// yet, or none left, and takes all programs of its session with it.
unsigned CountHandles()
{
    unsigned count = 0;
    unsigned unused = 0;
    for (ULONG_PTR value = 4; unused < kGap; value += 4)
    {
        DWORD flags = 0;
        const bool bOpen = GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags);
        count += bOpen;
        unused = bOpen ? 0 : unused + 1;
    }
    return count;
}

unsigned CountThreads()
{
    HANDLE hSnapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    unsigned count = 0;
    for (BOOL more = Thread32First(hSnapshot, &entry); more; more = Thread32Next(hSnapshot, &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(hSnapshot);
    return count;
}

}  // namespace

ResourceCounts ResourceCounts::Now()
{
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    return {CountHandles(), CountThreads(), memory.WorkingSetSize};
}
