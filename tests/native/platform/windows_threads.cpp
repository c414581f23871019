#include <windows.h>

#include "Object.h"

#include <time.h>
#include <unistd.h>

#include <semaphore>
#include <thread>

namespace
{
struct Thread : Object
{
    explicit Thread(std::thread started) : thread(std::move(started)) {}
    ~Thread() override
    {
        if (thread.joinable())
            thread.detach();
    }

    void Wait() override { thread.join(); }

    std::thread thread;
};

struct Semaphore : Object
{
    explicit Semaphore(LONG count) : queued(count) {}
    void Wait() override { queued.acquire(); }

    std::counting_semaphore<> queued;
};

timespec Now()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now;
}

timespec After(DWORD milliseconds)
{
    timespec end = Now();
    end.tv_sec += milliseconds / 1000;
    end.tv_nsec += milliseconds % 1000 * 1000000L;
    if (end.tv_nsec >= 1000000000)
    {
        end.tv_nsec -= 1000000000;
        ++end.tv_sec;
    }
    return end;
}
}  // namespace

void AcquireSRWLockExclusive(SRWLOCK* pLock)
{
    pthread_mutex_lock(pLock);
}

void ReleaseSRWLockExclusive(SRWLOCK* pLock)
{
    pthread_mutex_unlock(pLock);
}

void AcquireSRWLockShared(SRWLOCK* pLock)
{
    pthread_mutex_lock(pLock);
}

void ReleaseSRWLockShared(SRWLOCK* pLock)
{
    pthread_mutex_unlock(pLock);
}

BOOL SleepConditionVariableSRW(CONDITION_VARIABLE* pCondition, SRWLOCK* pLock, DWORD milliseconds, ULONG)
{
    if (milliseconds == INFINITE)
        return pthread_cond_wait(pCondition, pLock) == 0;
    const timespec end = After(milliseconds);
    return pthread_cond_clockwait(pCondition, pLock, CLOCK_MONOTONIC, &end) == 0;
}

void WakeConditionVariable(CONDITION_VARIABLE* pCondition)
{
    pthread_cond_signal(pCondition);
}

void WakeAllConditionVariable(CONDITION_VARIABLE* pCondition)
{
    pthread_cond_broadcast(pCondition);
}

ULONGLONG GetTickCount64()
{
    const timespec now = Now();
    return static_cast<ULONGLONG>(now.tv_sec) * 1000 + static_cast<ULONGLONG>(now.tv_nsec) / 1000000;
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

DWORD GetCurrentThreadId()
{
    return static_cast<DWORD>(gettid());
}

HANDLE CreateThread(void*, size_t, LPTHREAD_START_ROUTINE pRoutine, void* pParameter, DWORD, DWORD*)
{
    return new Thread(std::thread(pRoutine, pParameter));
}

HANDLE CreateSemaphoreW(void*, LONG count, LONG, const wchar_t*)
{
    return new Semaphore(count);
}

BOOL ReleaseSemaphore(HANDLE hSemaphore, LONG count, LONG*)
{
    static_cast<Semaphore*>(static_cast<Object*>(hSemaphore))->queued.release(count);
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE hObject, DWORD)
{
    static_cast<Object*>(hObject)->Wait();
    return WAIT_OBJECT_0;
}
