#include "Fences.h"

#include <atomic>
#include <deque>
#include <map>
#include <mutex>
#include <new>
#include <vector>

namespace tesslo::test
{

namespace
{

constexpr size_t kPage = 4096;
constexpr size_t kRange = size_t{1} << 30;  ///< bytes of addresses, not of memory
constexpr size_t kPages = kRange / kPage;

std::mutex s_Mutex;
std::atomic<BYTE*> s_pRange;                      ///< null until the first taking
size_t s_Used;                                    ///< pages that were ever given out
std::vector<std::atomic<BYTE>> s_Places(kPages);  ///< FencePlace of each page
std::map<const void*, size_t> s_Sizes;            ///< of what is taken now
/// Slots that were given back, by pages, without memory. The longest unused one comes first: who touches one late is
/// found still.
std::map<size_t, std::deque<BYTE*>> s_Free;

void Mark(const BYTE* pSlot, size_t pages, FencePlace place)
{
    const size_t first = static_cast<size_t>(pSlot - s_pRange) / kPage;
    for (size_t i = 0; i < pages; ++i)
        s_Places[first + i] = static_cast<BYTE>(place);
}

/// A slot without access, with a fence behind it.
BYTE* FindSlot(size_t pages)
{
    if (!s_pRange)
        s_pRange = static_cast<BYTE*>(VirtualAlloc(nullptr, kRange, MEM_RESERVE, PAGE_NOACCESS));
    std::deque<BYTE*>& free = s_Free[pages];
    constexpr size_t kRest = 64;  // slots that stay untouched for a while, as long as there are others
    const bool bFull = s_Used + pages + 1 > kPages;
    if (free.size() > kRest || (bFull && !free.empty()))
    {
        BYTE* pSlot = free.front();
        free.pop_front();
        return pSlot;
    }
    if (!s_pRange || bFull)
        throw std::bad_alloc();
    BYTE* pSlot = s_pRange + s_Used * kPage;
    s_Used += pages + 1;
    Mark(pSlot + pages * kPage, 1, FencePlace::Fence);
    return pSlot;
}

size_t PagesOf(size_t bytes)
{
    return (bytes + kPage - 1) / kPage;
}

}  // namespace

FencePlace FindFence(const void* pAddress)
{
    const auto offset = static_cast<size_t>(static_cast<const BYTE*>(pAddress) - s_pRange.load());
    return s_pRange && offset < kRange ? static_cast<FencePlace>(s_Places[offset / kPage].load())
                                       : FencePlace::Elsewhere;
}

BYTE* TakeFenced(size_t bytes, size_t alignment)
{
    if (bytes >= kRange)
        throw std::bad_alloc();
    const size_t size = bytes ? bytes : 1;
    const size_t pages = PagesOf(size + alignment - 1);
    std::lock_guard lock(s_Mutex);
    BYTE* pSlot = FindSlot(pages);
    if (!VirtualAlloc(pSlot, pages * kPage, MEM_COMMIT, PAGE_READWRITE))
        throw std::bad_alloc();
    Mark(pSlot, pages, FencePlace::Inside);
    BYTE* pBytes = pSlot + (pages * kPage - size) / alignment * alignment;
    s_Sizes[pBytes] = size;
    return pBytes;
}

void GiveFenced(void* pBytes)
{
    if (!pBytes)
        return;
    std::lock_guard lock(s_Mutex);
    const auto found = s_Sizes.find(pBytes);
    if (found == s_Sizes.end())
        return;
    BYTE* pSlot = s_pRange + static_cast<size_t>(static_cast<BYTE*>(pBytes) - s_pRange) / kPage * kPage;
    const size_t pages = PagesOf(static_cast<size_t>(static_cast<BYTE*>(pBytes) - pSlot) + found->second);
    s_Sizes.erase(found);
    VirtualFree(pSlot, pages * kPage, MEM_DECOMMIT);
    Mark(pSlot, pages, FencePlace::GivenBack);
    s_Free[pages].push_back(pSlot);
}

size_t FencedSize(const void* pBytes)
{
    std::lock_guard lock(s_Mutex);
    const auto found = s_Sizes.find(pBytes);
    return found == s_Sizes.end() ? 0 : found->second;
}

}  // namespace tesslo::test
