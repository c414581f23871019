#include "gpu/UMDThreadBase.h"

#include "util/UMDUtilDebugTrace.h"

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
    return m_hThread ? WaitForSingleObject(m_hThread, dwMilliseconds) : 0;
}

DWORD WINAPI UMDThreadBase::ThreadEntry(LPVOID pParameter)
{
    static_cast<UMDThreadBase*>(pParameter)->Run();
    return 0;
}
