#include "gpu/UMDThreadBase.h"

#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilGuard.h"

namespace
{
// Seconds of a wait without limit until it first tells of itself, and then between two times.
constexpr UINT kFirstWait = 5;
constexpr UINT kNextWait = 60;
}  // namespace

UMDThreadBase::UMDThreadBase() : m_hThread(nullptr), m_dwThreadId(0) {}

UMDThreadBase::~UMDThreadBase()
{
    if (m_hThread)
        CloseHandle(m_hThread);
}

bool UMDThreadBase::Start()
{
    m_hThread = CreateThread(nullptr, 0, ThreadEntry, this, 0, &m_dwThreadId);
    if (!m_hThread)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadBase::Start CreateThread failed. LastError %d", GetLastError());
        return false;
    }
    return true;
}

DWORD UMDThreadBase::Wait(DWORD dwMilliseconds)
{
    if (!m_hThread)
        return 0;
    if (dwMilliseconds != INFINITE)
        return WaitForSingleObject(m_hThread, dwMilliseconds);
    UINT seconds = 0;
    for (UINT slice = kFirstWait;; slice = kNextWait)
    {
        if (const DWORD result = WaitForSingleObject(m_hThread, slice * 1000); result != WAIT_TIMEOUT)
            return result;
        seconds += slice;
        TellWaiting(seconds);
    }
}

void UMDThreadBase::TellWaiting(UINT seconds) const
{
    UMD_TRACE(UMDTRACE_ERROR, L"UMDThreadBase::Wait thread %d has not ended after %d s\n", m_dwThreadId, seconds);
}

void UMDThreadBase::Faulted()
{
    UMD_TRACE(UMDTRACE_ERROR, L"Exception in thread! UMDThreadBase::Run failed!\n");
}

DWORD WINAPI UMDThreadBase::ThreadEntry(LPVOID pParameter)
{
    auto* pThread = static_cast<UMDThreadBase*>(pParameter);
    if (!UMDUtilGuard([pThread] { pThread->Run(); }))
        (void)UMDUtilGuard([pThread] { pThread->Faulted(); });
    return 0;
}
