#include "tools/client_check/CheckSlot.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <vector>

namespace
{

constexpr BYTE kNeighbour = 0x5A;
constexpr size_t kNeighbours = kCheckPage - sizeof(void*);

/// Addresses stay taken for the life of the process: none comes twice.
std::shared_ptr<CheckPages> TakePages()
{
    static std::mutex mutex;
    static std::vector<std::shared_ptr<CheckPages>> taken;
    const std::lock_guard lock(mutex);
    return taken.emplace_back(std::make_shared<CheckPages>(2));
}

}  // namespace

CheckSlot::CheckSlot(Where where) : m_ppSlot(&m_pUsual)
{
    if (where == Where::Usual)
        return;
    m_pPages = TakePages();
    m_pPages->Open(0, 1);
    m_pPages->Name("what lies behind a connection's slot");
    std::memset(Neighbours(), kNeighbour, kNeighbours);
    m_ppSlot = reinterpret_cast<void**>(m_pPages->At(1)) - 1;
    *m_ppSlot = nullptr;
}

bool CheckSlot::IsAlone() const
{
    return !m_pPages ||
           std::all_of(Neighbours(), Neighbours() + kNeighbours, [](BYTE byte) { return byte == kNeighbour; });
}

void CheckSlot::Retire()
{
    if (!m_pPages)
        return;
    m_pPages->Close();
    m_pPages->Name("the slot of a connection that is closed");
}
