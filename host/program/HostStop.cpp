#include "host/program/HostStop.h"

#include "host/runtime/HostError.h"

#include <atomic>

namespace
{

std::atomic<HANDLE> g_hAsked;

// On a thread of the system's own.
BOOL WINAPI Handler(DWORD)
{
    SetEvent(g_hAsked);
    return TRUE;
}

}  // namespace

HostStop::HostStop() : m_hAsked(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
    if (m_hAsked == nullptr)
        HostThrowSystemError("cannot make an event", GetLastError());
    g_hAsked = m_hAsked;
    // Whoever started the program may have let it ignore Ctrl-C.
    SetConsoleCtrlHandler(nullptr, FALSE);
    SetConsoleCtrlHandler(Handler, TRUE);
}

HostStop::~HostStop()
{
    SetConsoleCtrlHandler(Handler, FALSE);
    CloseHandle(m_hAsked);
}

bool HostStop::Wait(DWORD milliseconds) const
{
    return WaitForSingleObject(m_hAsked, milliseconds) == WAIT_OBJECT_0;
}
