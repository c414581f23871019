// The clock that frames are dated with: the same for all processes of the machine, and never set back.
#pragma once

#include <chrono>
#include <cstdint>

/// Microseconds since some day.
inline uint64_t BrowserClockNow()
{
    using namespace std::chrono;
    return static_cast<uint64_t>(duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count());
}
