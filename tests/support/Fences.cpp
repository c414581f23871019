#include "Fences.h"

#include <algorithm>
#include <array>
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

struct Range
{
    std::atomic<BYTE*> m_pFirst;  ///< null until the first taking
    size_t m_Used = 0;            ///< pages that were ever given out
    std::vector<std::atomic<BYTE>> m_Places = std::vector<std::atomic<BYTE>>(kPages);  ///< FencePlace of each page
    /// Slots that were given back, by pages, without memory. The longest unused one comes first: who touches one late
    /// is found still.
    std::map<size_t, std::deque<BYTE*>> m_Free;

    bool Has(const void* pAddress) const
    {
        return m_pFirst && static_cast<size_t>(static_cast<const BYTE*>(pAddress) - m_pFirst.load()) < kRange;
    }
    size_t PageOf(const void* pAddress) const
    {
        return static_cast<size_t>(static_cast<const BYTE*>(pAddress) - m_pFirst.load()) / kPage;
    }
    void Mark(const BYTE* pSlot, size_t pages, FencePlace place)
    {
        for (size_t i = PageOf(pSlot), end = i + pages; i < end; ++i)
            m_Places[i] = static_cast<BYTE>(place);
    }
    BYTE* FindSlot(size_t pages);
};

std::mutex s_Mutex;
std::array<Range, 2> s_Ranges;          ///< by FencedFor
std::map<const void*, size_t> s_Sizes;  ///< of what is taken now

/// A slot without access, with a fence behind it.
BYTE* Range::FindSlot(size_t pages)
{
    if (!m_pFirst)
        m_pFirst = static_cast<BYTE*>(VirtualAlloc(nullptr, kRange, MEM_RESERVE, PAGE_NOACCESS));
    std::deque<BYTE*>& free = m_Free[pages];
    constexpr size_t kRest = 64;  // slots that stay untouched for a while, as long as there are others
    const bool bFull = m_Used + pages + 1 > kPages;
    if (free.size() > kRest || (bFull && !free.empty()))
    {
        BYTE* pSlot = free.front();
        free.pop_front();
        return pSlot;
    }
    if (!m_pFirst || bFull)
        throw std::bad_alloc();
    BYTE* pSlot = m_pFirst + m_Used * kPage;
    m_Used += pages + 1;
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
    for (const Range& range : s_Ranges)
        if (range.Has(pAddress))
            return static_cast<FencePlace>(range.m_Places[range.PageOf(pAddress)].load());
    return FencePlace::Elsewhere;
}

BYTE* TakeFenced(size_t bytes, size_t alignment, FencedFor use)
{
    if (bytes >= kRange)
        throw std::bad_alloc();
    const size_t size = bytes ? bytes : 1;
    const size_t pages = PagesOf(size + alignment - 1);
    std::lock_guard lock(s_Mutex);
    Range& range = s_Ranges[static_cast<size_t>(use)];
    BYTE* pSlot = range.FindSlot(pages);
    if (!VirtualAlloc(pSlot, pages * kPage, MEM_COMMIT, PAGE_READWRITE))
        throw std::bad_alloc();
    range.Mark(pSlot, pages, FencePlace::Inside);
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
    Range& range = *std::ranges::find_if(s_Ranges, [&](const Range& each) { return each.Has(pBytes); });
    BYTE* pSlot = range.m_pFirst + range.PageOf(pBytes) * kPage;
    const size_t pages = PagesOf(static_cast<size_t>(static_cast<BYTE*>(pBytes) - pSlot) + found->second);
    s_Sizes.erase(found);
    VirtualFree(pSlot, pages * kPage, MEM_DECOMMIT);
    range.Mark(pSlot, pages, FencePlace::GivenBack);
    range.m_Free[pages].push_back(pSlot);
}

size_t FencedSize(const void* pBytes)
{
    std::lock_guard lock(s_Mutex);
    const auto found = s_Sizes.find(pBytes);
    return found == s_Sizes.end() ? 0 : found->second;
}

}  // namespace tesslo::test
