// What the sample client library says of the pictures that it records (tesslo/sample_client.h). Another library says
// nothing, unless it offers the same functions.
#pragma once

#include <tesslo/sample_client.h>

#include <optional>

class HostRecording
{
public:
    /// @param hClientLibrary borrowed; null for none.
    explicit HostRecording(HMODULE hClientLibrary);

    /// No value if the library does not count.
    std::optional<TessloSampleCounters> Counters(UINT sourceId) const;
    /// Waits until the source has received that many frames. False if the time ran out or the library does not count.
    bool WaitReceived(UINT sourceId, UINT64 received, DWORD milliseconds) const;

private:
    TessloSampleGetCountersFunction m_pGetCounters = nullptr;
    TessloSampleWaitReceivedFunction m_pWaitReceived = nullptr;
};
