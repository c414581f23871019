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
    /// The first frame that could not be recorded. No value if there is none, or the library does not say.
    std::optional<TessloSampleFailure> Failure(UINT sourceId) const;
    /// Waits until the source has received that many frames. False if the time ran out or the library does not count.
    bool WaitReceived(UINT sourceId, UINT64 received, DWORD milliseconds) const;
    /// Waits until so many frames are recorded, dropped or failed. False as above.
    bool WaitRecorded(UINT sourceId, UINT64 settled, DWORD milliseconds) const;

private:
    TessloSampleGetCountersFunction m_pGetCounters = nullptr;
    TessloSampleGetFailureFunction m_pGetFailure = nullptr;
    TessloSampleWaitReceivedFunction m_pWaitReceived = nullptr;
    TessloSampleWaitRecordedFunction m_pWaitRecorded = nullptr;
};
