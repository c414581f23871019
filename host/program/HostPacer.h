// Keeps a pace: so many turns a second, as evenly as the machine can. A turn that came too late is not caught up with.
#pragma once

#include <windows.h>

class HostStop;

class HostPacer
{
public:
    /// @param turns a second; 0: as fast as it goes.
    explicit HostPacer(UINT turns);

    /// Waits for the next turn; the first is at once. Ends early when the program shall stop.
    void Wait(const HostStop& stop);

private:
    static LONGLONG Now();

    LONGLONG m_Frequency;  ///< of the performance counter
    LONGLONG m_Step = 0;   ///< counts from turn to turn
    LONGLONG m_Next;       ///< when the next turn is due
};
