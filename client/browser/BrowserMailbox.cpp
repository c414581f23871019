#include "BrowserMailbox.h"

#include <utility>

BrowserMailbox::Outcome BrowserMailbox::Put(const TessloVirtualMonitorFrame& frame, uint64_t time)
{
    ++m_Number;
    if (!m_Filling.Copy(frame))
        return Outcome::Refused;
    m_Filling.m_Number = m_Number;
    m_Filling.m_Time = time;
    const std::lock_guard lock(m_Mutex);
    std::swap(m_Filling, m_Newest);
    return std::exchange(m_bWaiting, true) ? Outcome::Replaced : Outcome::Arrived;
}

bool BrowserMailbox::Take(BrowserPicture* pPicture)
{
    const std::lock_guard lock(m_Mutex);
    if (!std::exchange(m_bWaiting, false))
        return false;
    std::swap(*pPicture, m_Newest);
    return true;
}
