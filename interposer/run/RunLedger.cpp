#include "interposer/run/RunLedger.h"

#include <algorithm>
#include <cstring>
#include <mutex>

namespace
{

RunRecord* Open()
{
    wchar_t name[MAX_PATH] = L"";
    if (GetEnvironmentVariableW(TESSLO_RUN_RECORD, name, MAX_PATH) != 0)
        if (HANDLE hMapping = OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, name))
            if (void* pRecord = MapViewOfFile(hMapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(RunRecord)))
                return static_cast<RunRecord*>(pRecord);
    static RunRecord own{};
    return &own;
}

}  // namespace

RunRecord& RunOf()
{
    static RunRecord* const pRecord = Open();
    return *pRecord;
}

LONG64* RunCountOf(std::span<RunCount> counts, std::string_view name)
{
    static std::mutex mutex;
    name = name.substr(0, sizeof(RunCount::m_Name) - 1);
    std::lock_guard lock(mutex);
    for (RunCount& count : counts)
    {
        if (count.m_Name[0] == '\0')
            std::memcpy(count.m_Name, name.data(), name.size());
        if (name == count.m_Name)
            return &count.m_Count;
    }
    return nullptr;
}
