#include "StressTeam.h"

#include <iterator>
#include <utility>

namespace tesslo::test
{

StressTeam::StressTeam(size_t members)
{
    for (size_t i = 0; i < members; ++i)
    {
        Member& member = m_Members.emplace_back();
        member.m_Thread = std::thread([&member] { member.Work(); });
    }
}

StressTeam::~StressTeam()
{
    for (Member& member : m_Members)
    {
        const std::lock_guard lock(member.m_Mutex);
        member.m_bEnd = true;
        member.m_Asked.notify_one();
    }
    for (Member& member : m_Members)
        member.m_Thread.join();
}

void StressTeam::Ask(size_t member, std::function<void()> job)
{
    Member& asked = *std::next(m_Members.begin(), static_cast<ptrdiff_t>(member));
    const std::lock_guard lock(asked.m_Mutex);
    asked.m_Jobs.push_back(std::move(job));
    asked.m_Asked.notify_one();
}

void StressTeam::Member::Work()
{
    std::unique_lock lock(m_Mutex);
    for (;;)
    {
        m_Asked.wait(lock, [this] { return m_bEnd || !m_Jobs.empty(); });
        if (m_bEnd)
            return;
        const std::function<void()> job = std::move(m_Jobs.front());
        m_Jobs.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
}

}  // namespace tesslo::test
