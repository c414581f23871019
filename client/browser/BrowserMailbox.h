// Hands frames from the driver's worker to the library's own thread. Newer ones replace each other; neither side waits
// for the other's work, only for a swap of pointers.
#pragma once

#include "BrowserPicture.h"

#include <mutex>

class BrowserMailbox
{
public:
    enum class Outcome
    {
        Refused,   ///< a frame that cannot be shown
        Arrived,   ///< nothing was waiting before: the other side wants to be told
        Replaced,  ///< one that nobody took in between is gone
    };

    /// Copies a frame in. The driver's worker alone.
    Outcome Put(const TessloVirtualMonitorFrame& frame, uint64_t time);

    /// Swaps the newest frame with what the picture holds.
    ///
    /// @return false if there is none since the last call.
    bool Take(BrowserPicture* pPicture);

private:
    BrowserPicture m_Filling;  ///< the worker's own
    uint64_t m_Number = 0;     ///< the worker's own

    std::mutex m_Mutex;  ///< guards the two below
    BrowserPicture m_Newest;
    bool m_bWaiting = false;
};
