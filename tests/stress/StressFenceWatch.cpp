#include "StressFenceWatch.h"

#include "Fences.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cwchar>

namespace tesslo::test
{

namespace
{

struct Touch
{
    const char* m_pEntry;
    bool m_bWrites;
    FencePlace m_Place;
    DWORD64 m_Code;  ///< address of the instruction
};

// Written inside an exception handler: no memory is allocated there.
std::array<Touch, 64> s_Touches;
std::atomic<size_t> s_Count;
std::atomic<const char*> s_pEntry;
std::atomic<DWORD> s_ThreadId;

LONG CALLBACK Watch(EXCEPTION_POINTERS* pPointers)
{
    const EXCEPTION_RECORD& record = *pPointers->ExceptionRecord;
    if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION || record.NumberParameters < 2)
        return EXCEPTION_CONTINUE_SEARCH;
    const FencePlace place = FindFence(reinterpret_cast<const void*>(record.ExceptionInformation[1]));
    if (place != FencePlace::Fence && place != FencePlace::GivenBack)
        return EXCEPTION_CONTINUE_SEARCH;
    const char* pEntry = GetCurrentThreadId() == s_ThreadId ? s_pEntry.load() : "a thread of the driver's";
    if (!pEntry)
        return EXCEPTION_CONTINUE_SEARCH;
    const size_t index = s_Count++;
    if (index < s_Touches.size())
        s_Touches[index] = {pEntry, record.ExceptionInformation[0] == 1, place, pPointers->ContextRecord->Rip};
    return EXCEPTION_CONTINUE_SEARCH;
}

std::string Describe(const Touch& touch)
{
    HMODULE hModule = nullptr;
    wchar_t path[MAX_PATH] = L"?";
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<const wchar_t*>(touch.m_Code), &hModule))
        GetModuleFileNameW(hModule, path, MAX_PATH);
    const wchar_t* pName = std::wcsrchr(path, L'\\');
    char text[200];
    std::snprintf(text, sizeof(text), "%s %s %s, in %ls+0x%" PRIX64, touch.m_pEntry,
        touch.m_bWrites ? "writes" : "reads",
        touch.m_Place == FencePlace::Fence ? "behind the end of memory" : "memory that was given back",
        pName ? pName + 1 : path, touch.m_Code - reinterpret_cast<DWORD64>(hModule));
    return text;
}

}  // namespace

StressFenceWatch::StressFenceWatch() : m_pHandler(AddVectoredExceptionHandler(1, Watch))
{
    s_Count = 0;
    s_pEntry = nullptr;
    s_ThreadId = GetCurrentThreadId();
}

StressFenceWatch::~StressFenceWatch()
{
    RemoveVectoredExceptionHandler(m_pHandler);
}

void StressFenceWatch::Enter(const char* pEntry)
{
    s_pEntry = pEntry;
}

std::vector<std::string> StressFenceWatch::Take()
{
    std::vector<std::string> lines;
    const size_t count = std::min(s_Count.exchange(0), s_Touches.size());
    for (size_t i = 0; i < count; ++i)
        lines.push_back(Describe(s_Touches[i]));
    return lines;
}

}  // namespace tesslo::test
