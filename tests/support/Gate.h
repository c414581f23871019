// A place that threads pass: a test hears of each that comes, and holds it there until it opens the gate for good.
#pragma once

#include "Waiting.h"

#include <climits>

namespace tesslo::test
{

class Gate
{
public:
    Gate()
        : m_hComing(CreateSemaphoreW(nullptr, 0, LONG_MAX, nullptr)),
          m_hOpen(CreateEventW(nullptr, TRUE, FALSE, nullptr))
    {
    }
    ~Gate()
    {
        CloseHandle(m_hComing);
        CloseHandle(m_hOpen);
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    /// For the threads: waits until the gate is open.
    void Pass()
    {
        ReleaseSemaphore(m_hComing, 1, nullptr);
        WaitForSingleObject(m_hOpen, INFINITE);
    }

    /// Waits until one more thread has come. @return false when none does.
    bool WaitForOne() const { return WaitForSingleObject(m_hComing, kLong) == WAIT_OBJECT_0; }

    void Open() { SetEvent(m_hOpen); }

private:
    HANDLE m_hComing;  ///< semaphore: threads that have come and were not waited for
    HANDLE m_hOpen;
};

}  // namespace tesslo::test
