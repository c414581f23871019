#include "output/UMDFrameHandoff.h"

UMDFrame& UMDFrameHandoff::Prepare()
{
    UMDFrame& frame = m_Frames[m_Presenter];
    frame.Clear();  // a frame that nobody took in time
    return frame;
}

void UMDFrameHandoff::Publish()
{
    m_Presenter = m_Middle.exchange(m_Presenter | kFresh, std::memory_order_acq_rel) & kIndexMask;
}

void UMDFrameHandoff::Discard()
{
    m_Frames[m_Presenter].Clear();
    // The record comes back empty and not fresh; the middle then holds one that the worker skips.
    m_Presenter = m_Middle.exchange(m_Presenter, std::memory_order_acq_rel) & kIndexMask;
    m_Frames[m_Presenter].Clear();
}

UMDFrame* UMDFrameHandoff::Take()
{
    if (!(m_Middle.load(std::memory_order_acquire) & kFresh))
        return nullptr;
    const UINT middle = m_Middle.exchange(m_Worker, std::memory_order_acq_rel);
    m_Worker = middle & kIndexMask;
    // Discard may have come between the look and the exchange: what it left is empty.
    return middle & kFresh ? &m_Frames[m_Worker] : nullptr;
}

void UMDFrameHandoff::Done()
{
    m_Frames[m_Worker].Clear();
}
