#include <windows.h>

#include <sys/mman.h>

#include <map>
#include <mutex>

namespace
{
std::mutex s_Mutex;
std::map<void*, size_t> s_Sizes;  // of the reservations
}  // namespace

void* VirtualAlloc(void* pAddress, size_t size, DWORD type, DWORD)
{
    if (type == MEM_COMMIT)
        return mprotect(pAddress, size, PROT_READ | PROT_WRITE) == 0 ? pAddress : nullptr;
    void* pPages = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (pPages == MAP_FAILED)
        return nullptr;
    std::lock_guard lock(s_Mutex);
    s_Sizes[pPages] = size;
    return pPages;
}

BOOL VirtualFree(void* pAddress, size_t, DWORD)
{
    std::lock_guard lock(s_Mutex);
    const auto reservation = s_Sizes.extract(pAddress);
    return reservation && munmap(pAddress, reservation.mapped()) == 0;
}
