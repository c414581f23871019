#include "BrowserPainter.h"

#include <new>

namespace
{

BrowserBytes DoOrNothing(const BrowserPainter::Work& work)
{
    try
    {
        return work();
    }
    catch (const std::bad_alloc&)
    {
        return {};
    }
}

}  // namespace

bool BrowserPainter::Do(Work work, Done done)
{
    if (m_Waiting == kWaiting)
        return false;
    if (!m_Thread)
        m_Thread.emplace(1);
    ++m_Waiting;
    asio::post(*m_Thread, [this, work = std::move(work), done = std::move(done)] {
        asio::post(m_Context, [this, done, bytes = DoOrNothing(work)]() mutable { End(done, std::move(bytes)); });
    });
    return true;
}

void BrowserPainter::End(const Done& done, BrowserBytes bytes)
{
    --m_Waiting;
    done(std::move(bytes));
}
