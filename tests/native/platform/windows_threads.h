// Threads, and the locks and conditions that are ready without a constructor.
#pragma once

#include <pthread.h>

using SRWLOCK = pthread_mutex_t;
using CONDITION_VARIABLE = pthread_cond_t;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
#define SRWLOCK_INIT PTHREAD_MUTEX_INITIALIZER
#define CONDITION_VARIABLE_INIT PTHREAD_COND_INITIALIZER

inline constexpr ULONG CONDITION_VARIABLE_LOCKMODE_SHARED = 1;

void AcquireSRWLockExclusive(SRWLOCK* pLock);
void ReleaseSRWLockExclusive(SRWLOCK* pLock);
/// Readers exclude each other here.
void AcquireSRWLockShared(SRWLOCK* pLock);
void ReleaseSRWLockShared(SRWLOCK* pLock);

BOOL SleepConditionVariableSRW(CONDITION_VARIABLE* pCondition, SRWLOCK* pLock, DWORD milliseconds, ULONG flags);
void WakeConditionVariable(CONDITION_VARIABLE* pCondition);
void WakeAllConditionVariable(CONDITION_VARIABLE* pCondition);

/// Monotonic milliseconds.
ULONGLONG GetTickCount64();

DWORD GetCurrentProcessId();
DWORD GetCurrentThreadId();

using LPTHREAD_START_ROUTINE = DWORD (*)(void*);
HANDLE CreateThread(
    void* pSecurity, size_t stack, LPTHREAD_START_ROUTINE pRoutine, void* pParameter, DWORD flags, DWORD* pId);
HANDLE CreateSemaphoreW(void* pSecurity, LONG count, LONG most, const wchar_t* pName);
BOOL ReleaseSemaphore(HANDLE hSemaphore, LONG count, LONG* pBefore);
/// Waits for a thread's end, or takes one of a semaphore's count, without limit.
DWORD WaitForSingleObject(HANDLE hObject, DWORD milliseconds);
