#include "interposer/carry/CarryThread.h"

#include "host/runtime/HostError.h"
#include "interposer/hooks/HookMethod.h"
#include "interposer/run/RunLedger.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <utility>

namespace
{

void RunOne(const CarryThread::Work& work)
{
    try
    {
        work();
    }
    catch (const HostError& error)
    {
        RunCountOne(RunOf().m_Failures, error.what());
    }
}

}  // namespace

CarryThread& CarryThread::Get()
{
    static CarryThread& thread = *new CarryThread;
    return thread;
}

CarryThread::CarryThread()
{
    std::thread([this] { Run(); }).detach();
}

UINT64 CarryThread::Post(Work work)
{
    std::unique_lock lock(m_Mutex);
    m_Posted.push_back(std::move(work));
    const UINT64 number = ++m_LastPosted;
    const bool bFull = m_Posted.size() >= kMostPosted && GetCurrentThreadId() != m_Id;
    lock.unlock();
    if (bFull)
        Wait(number);
    return number;
}

void CarryThread::Do(const Work& work)
{
    std::exception_ptr pError;
    Wait(Post([&] {
        try
        {
            work();
        }
        catch (const HostError&)
        {
            pError = std::current_exception();
        }
    }));
    if (pError)
        std::rethrow_exception(pError);
}

void CarryThread::Start(UINT64 number)
{
    std::lock_guard lock(m_Mutex);
    m_LastStarted = std::max(m_LastStarted, number);
    m_Changed.notify_all();
}

void CarryThread::Wait(UINT64 number)
{
    Start(number);
    std::unique_lock lock(m_Mutex);
    m_Changed.wait(lock, [&] { return m_LastDone >= number; });
}

void CarryThread::Finish()
{
    std::unique_lock lock(m_Mutex);
    // It cannot wait for itself.
    if (GetCurrentThreadId() == m_Id)
        return;
    m_LastStarted = m_LastPosted;
    m_Changed.notify_all();
    m_Changed.wait_for(lock, kMostAtTheEnd, [&] { return m_LastDone >= m_LastStarted; });
}

void CarryThread::Run()
{
    // What the driver calls of the platform is not the program's.
    const HookDepth depth;
    std::vector<Work> running;
    std::unique_lock lock(m_Mutex);
    m_Id = GetCurrentThreadId();
    for (;;)
    {
        m_Changed.wait(lock, [&] { return m_LastStarted > m_LastDone; });
        running.swap(m_Posted);
        for (Work& work : running)
        {
            lock.unlock();
            RunOne(std::exchange(work, nullptr));
            lock.lock();
            if (++m_LastDone == m_LastStarted)
                m_Changed.notify_all();
        }
        running.clear();
    }
}
