#include "ResourceCounts.h"

#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <vector>

namespace tesslo::test
{

namespace
{

/// One entry of the system's list of handles, and the list: information class 64.
struct HandleEntry
{
    void* m_pObject;
    ULONG_PTR m_ProcessId;
    ULONG_PTR m_Handle;
    ULONG m_Access;
    USHORT m_BackTrace;
    USHORT m_Type;
    ULONG m_Attributes;
    ULONG m_Reserved;
};

struct HandleList
{
    ULONG_PTR m_Count;
    ULONG_PTR m_Reserved;
    HandleEntry m_Entries[1];
};

constexpr ULONG kExtendedHandleInformation = 64;

unsigned CountHandles()
{
    using QueryFunction = NTSTATUS(NTAPI*)(ULONG, PVOID, ULONG, PULONG);
    auto pQuery = reinterpret_cast<QueryFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<BYTE> buffer(1 << 20);
    ULONG size = 0;
    while (pQuery(kExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), &size) != 0)
        buffer.resize(buffer.size() * 2);
    const auto* pList = reinterpret_cast<const HandleList*>(buffer.data());
    unsigned count = 0;
    for (ULONG_PTR i = 0; i < pList->m_Count; i++)
        count += pList->m_Entries[i].m_ProcessId == GetCurrentProcessId();
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

}  // namespace tesslo::test
