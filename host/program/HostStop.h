// Hears Ctrl-C, or a window that is closed, while it lives: the program then ends behind its current frame, as if it
// were the last.
#pragma once

#include <windows.h>

class HostStop
{
public:
    /// One object at a time.
    HostStop();
    ~HostStop();
    HostStop(const HostStop&) = delete;
    HostStop& operator=(const HostStop&) = delete;

    /// Does what Ctrl-C does.
    void Ask() const { SetEvent(m_hAsked); }
    bool IsAsked() const { return Wait(0); }
    /// @return true as soon as it is asked for, false when the time has run out.
    bool Wait(DWORD milliseconds) const;

private:
    HANDLE m_hAsked;
};
