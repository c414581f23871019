// Worker thread base: starts a thread whose body is the derived class's Run, and lets the owner wait for its end.
#pragma once

#include <windows.h>

class UMDThreadBase
{
public:
    UMDThreadBase();

    /// Closes the thread's handle. The owner has waited for the thread before.
    virtual ~UMDThreadBase();

    UMDThreadBase(const UMDThreadBase&) = delete;
    UMDThreadBase& operator=(const UMDThreadBase&) = delete;

    /// Creates the thread; it runs at once. Not to be called twice. Owner's thread.
    /// @return false when the thread could not be created (traced).
    virtual bool Start();

    /// The thread's body. Worker's thread.
    virtual void Run() = 0;

    /// Waits for the thread's end; at once, any number of times, after it. Owner's thread.
    /// @param dwMilliseconds INFINITE, or the longest time to wait. A wait without limit tells after 5 s that it goes
    ///                       on, and then each minute.
    /// @return what WaitForSingleObject says; 0 without waiting when there never was a thread.
    DWORD Wait(DWORD dwMilliseconds);

protected:
    HANDLE m_hThread;    ///< null until Start succeeded
    DWORD m_dwThreadId;  ///< written by CreateThread

private:
    /// Traces who keeps a wait without limit waiting. Owner's thread.
    virtual void TellWaiting(UINT seconds) const;

    /// Called when a fault, whose name is traced, has ended Run: traces whose it was, and does what others still need
    /// of the thread. Worker's thread.
    virtual void Faulted();

    static DWORD WINAPI ThreadEntry(LPVOID pParameter);
};
