// The one thread that the driver is used on. What the program's calls become is posted to it, with a copy of all that
// it needs, and runs when somebody waits for it: a thread that changes from one device to another with each draw spends
// more on that than on drawing.
#pragma once

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

class CarryThread
{
public:
    using Work = std::function<void()>;

    /// More is not kept waiting: a program may draw for long before it presents.
    static constexpr size_t kMostPosted = 20'000;
    /// Generous for a frame; no program hangs at its end.
    static constexpr std::chrono::seconds kMostAtTheEnd{5};

    /// Begins at the first call, and ends with the process.
    static CarryThread& Get();

    /// Runs the work behind all that was posted before. A HostError is written down as a failure of the run. Where
    /// kMostPosted wait with it, it waits for them.
    /// @return its number, for those below.
    UINT64 Post(Work work);
    /// Runs it behind all that was posted before, and waits for it. Throws what the work throws.
    void Do(const Work& work);
    /// From now on what was posted up to that one may run.
    void Start(UINT64 number);
    /// Waits until that one has run.
    void Wait(UINT64 number);
    /// Before the process ends: waits until all that was posted has run, kMostAtTheEnd at most.
    void Finish();

private:
    CarryThread();
    void Run();

    DWORD m_Id = 0;
    std::mutex m_Mutex;  ///< guards all below
    std::condition_variable m_Changed;
    std::vector<Work> m_Posted;
    UINT64 m_LastPosted = 0;
    UINT64 m_LastStarted = 0;  ///< may run
    UINT64 m_LastDone = 0;
};
