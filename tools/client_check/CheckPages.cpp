#include "tools/client_check/CheckPages.h"

#include "tools/client_check/CheckFailure.h"

#include <map>
#include <mutex>

namespace
{

struct Meaning
{
    size_t m_Bytes;
    std::string m_What;
};

std::mutex g_Mutex;
std::map<const BYTE*, Meaning> g_Meanings;  ///< by the first address

}  // namespace

CheckPages::CheckPages(size_t pages)
    : m_Pages(pages),
      m_pBytes(static_cast<BYTE*>(VirtualAlloc(nullptr, pages * kCheckPage, MEM_RESERVE, PAGE_NOACCESS)))
{
    if (!m_pBytes)
        throw CheckFailure("there is not enough memory for the check itself");
}

CheckPages::~CheckPages()
{
    {
        const std::lock_guard lock(g_Mutex);
        g_Meanings.erase(m_pBytes);
    }
    VirtualFree(m_pBytes, 0, MEM_RELEASE);
}

void CheckPages::Open(size_t page, size_t pages)
{
    if (!VirtualAlloc(At(page), pages * kCheckPage, MEM_COMMIT, PAGE_READWRITE))
        throw CheckFailure("there is not enough memory for the check itself");
}

void CheckPages::SetReadOnly(size_t page, size_t pages)
{
    DWORD before = 0;
    VirtualProtect(At(page), pages * kCheckPage, PAGE_READONLY, &before);
}

void CheckPages::Close()
{
    VirtualFree(m_pBytes, m_Pages * kCheckPage, MEM_DECOMMIT);
}

void CheckPages::Name(const std::string& what)
{
    const std::lock_guard lock(g_Mutex);
    g_Meanings[m_pBytes] = {m_Pages * kCheckPage, what};
}

std::string CheckPages::MeaningOf(const void* pAddress)
{
    const auto* pByte = static_cast<const BYTE*>(pAddress);
    const std::lock_guard lock(g_Mutex);
    auto found = g_Meanings.upper_bound(pByte);
    if (found == g_Meanings.begin())
        return "";
    --found;
    return pByte < found->first + found->second.m_Bytes ? found->second.m_What : "";
}
