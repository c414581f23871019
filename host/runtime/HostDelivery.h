// What the client library says of the frames that it was given: the counters of the sample library, if it is the
// sample or offers the same two functions (tesslo/sample_client.h).
#pragma once

#include <tesslo/sample_client.h>

#include <optional>

class HostDelivery
{
public:
    /// @param hClientLibrary borrowed; null for none.
    explicit HostDelivery(HMODULE hClientLibrary);

    /// No value if the library does not count.
    std::optional<TessloSampleCounters> Counters(UINT sourceId) const;
    /// Waits until the source has received that many frames. False if the time ran out or the library does not count.
    bool WaitReceived(UINT sourceId, UINT64 received, DWORD milliseconds) const;

private:
    TessloSampleGetCountersFunction m_pGetCounters = nullptr;
    TessloSampleWaitReceivedFunction m_pWaitReceived = nullptr;
};
