// Threads that work off what they are asked for, each in order.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace tesslo::test
{

class StressTeam
{
public:
    explicit StressTeam(size_t members);
    /// Ends with jobs that have begun.
    ~StressTeam();
    StressTeam(const StressTeam&) = delete;
    StressTeam& operator=(const StressTeam&) = delete;

    size_t Size() const { return m_Members.size(); }
    /// Has a job done by one of the members, behind what it was given before. Any thread, also one of theirs.
    void Ask(size_t member, std::function<void()> job);

private:
    struct Member
    {
        void Work();

        std::mutex m_Mutex;
        std::condition_variable m_Asked;
        std::deque<std::function<void()>> m_Jobs;
        bool m_bEnd = false;
        std::thread m_Thread;
    };

    std::list<Member> m_Members;
};

}  // namespace tesslo::test
