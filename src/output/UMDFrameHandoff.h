// Hands the newest frame from the presenting thread to the worker, without a lock and without allocating.
//
// Three records: one belongs to the presenter, one to the worker, and the third, in the middle, changes sides by an
// atomic exchange of its index. A record holds references of its own on what it shows, so a frame that the worker is
// reading outlives the ring it came from. Frames that are not taken in time are replaced, never queued.
#pragma once

#include "output/UMDFrame.h"

#include <atomic>

class UMDFrameHandoff
{
public:
    /// The record to fill, with no frame in it. Presenting thread.
    UMDFrame& Prepare();
    /// Makes the prepared record the newest frame. Presenting thread.
    void Publish();
    /// Drops what was published and not taken. Presenting thread, or the owner in its place.
    void Discard();

    /// The newest frame, null if there is none that was not taken before. Valid until Done. Worker's thread.
    UMDFrame* Take();
    /// Gives up the frame that Take returned. Worker's thread.
    void Done();

private:
    static constexpr UINT kIndexMask = 3;
    static constexpr UINT kFresh = 4;  ///< with the middle index: published and not taken

    UMDFrame m_Frames[3];
    UINT m_Presenter = 0;
    UINT m_Worker = 1;
    std::atomic<UINT> m_Middle = 2;
};
