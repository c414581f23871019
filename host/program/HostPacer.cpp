#include "host/program/HostPacer.h"

#include "host/program/HostStop.h"

#include <algorithm>

HostPacer::HostPacer(UINT turns) : m_Next(Now())
{
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    m_Frequency = frequency.QuadPart;
    if (turns != 0)
        m_Step = m_Frequency / turns;
}

void HostPacer::Wait(const HostStop& stop)
{
    if (m_Step == 0)
        return;
    for (LONGLONG now = Now(); now < m_Next; now = Now())
        if (stop.Wait(static_cast<DWORD>(std::max<LONGLONG>(1, (m_Next - now) * 1000 / m_Frequency))))
            return;
    m_Next = std::max(m_Next, Now() - m_Step) + m_Step;
}

LONGLONG HostPacer::Now()
{
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}
