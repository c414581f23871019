// What became of the frames that were presented, told by what the driver's client library was called with and what it
// answered. Any library that follows tesslo/client.h is counted: HostClientWatch sees its calls.
#pragma once

#include "host/runtime/HostImage.h"

#include <tesslo/client.h>

#include <condition_variable>
#include <map>
#include <mutex>

/// Of one source. What is neither delivered nor on its way was dropped: a newer frame took its place.
struct HostDeliveryCounters
{
    UINT64 m_Presented = 0;  ///< frames that were about to be presented
    UINT64 m_Delivered = 0;  ///< frames that the library has taken: Update came back with true
    UINT64 m_Late = 0;       ///< of these, those that Update was still at when the next frame was about to be presented
    bool m_bRefused = false;   ///< Plug or Update answered false: no frame of the source follows
    bool m_bInUpdate = false;  ///< Update has not come back; never, if it faulted or ended its thread

    /// When all are through: the frames that never reached the library.
    UINT64 Dropped() const { return m_Presented > m_Delivered ? m_Presented - m_Delivered : 0; }
};

class HostDelivery
{
public:
    /// The presenter's word: the next frame of the source is about to be presented.
    void Presenting(UINT sourceId);

    // The watch's words, on the driver's threads.
    void PlugEnded(UINT sourceId, bool bAccepted);
    void UpdateBegins(const TessloVirtualMonitorFrame& frame);
    void UpdateEnded(const TessloVirtualMonitorFrame& frame, bool bTaken);

    HostDeliveryCounters Counters(UINT sourceId) const;
    /// Waits until the library has taken that many frames of the source. False if the time ran out or it has refused.
    bool WaitDelivered(UINT sourceId, UINT64 delivered, DWORD milliseconds) const;

    /// From now on the newest frame of each source is kept. Costs a copy of its pixels.
    void KeepFrames();
    /// The frame that the library has taken last, as it was given: turned. Empty if there is none.
    HostImage LastFrame(UINT sourceId) const;

private:
    struct Source
    {
        HostDeliveryCounters m_Counters;
        UINT64 m_PresentedBefore = 0;  ///< when the running Update began
        HostImage m_LastFrame;
    };

    static void Copy(const TessloVirtualMonitorFrame& frame, HostImage& image);

    mutable std::mutex m_Mutex;  ///< guards all below; never held while the library is called
    mutable std::condition_variable m_Changed;
    std::map<UINT, Source> m_Sources;
    bool m_bKeepFrames = false;
};
