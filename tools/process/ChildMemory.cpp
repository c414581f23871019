#include "tools/process/ChildMemory.h"

#include <stdexcept>
#include <string>

ChildMemory::ChildMemory(size_t bytes)
{
    SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
    m_hMapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, &inherited, PAGE_READWRITE, 0, static_cast<DWORD>(bytes), nullptr);
    m_pBytes = View(Handle(), bytes);
    if (!m_pBytes)
        throw std::runtime_error("no shared memory: " + std::to_string(GetLastError()));
}

ChildMemory::~ChildMemory()
{
    UnmapViewOfFile(m_pBytes);
    CloseHandle(m_hMapping);
}

void* ChildMemory::View(uint64_t handle, size_t bytes)
{
    return MapViewOfFile(reinterpret_cast<HANDLE>(handle), FILE_MAP_WRITE, 0, 0, bytes);
}
