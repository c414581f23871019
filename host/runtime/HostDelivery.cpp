#include "host/runtime/HostDelivery.h"

#include <chrono>

void HostDelivery::Presenting(UINT sourceId)
{
    std::lock_guard lock(m_Mutex);
    ++m_Sources[sourceId].m_Counters.m_Presented;
}

void HostDelivery::PlugEnded(UINT sourceId, bool bAccepted)
{
    std::lock_guard lock(m_Mutex);
    m_Sources[sourceId].m_Counters.m_bRefused = !bAccepted;
    m_Changed.notify_all();
}

void HostDelivery::UpdateBegins(const TessloVirtualMonitorFrame& frame)
{
    std::lock_guard lock(m_Mutex);
    Source& source = m_Sources[frame.VidPnSourceId];
    source.m_PresentedBefore = source.m_Counters.m_Presented;
    source.m_Counters.m_bInUpdate = true;
}

void HostDelivery::UpdateEnded(const TessloVirtualMonitorFrame& frame, bool bTaken)
{
    std::lock_guard lock(m_Mutex);
    Source& source = m_Sources[frame.VidPnSourceId];
    HostDeliveryCounters& counters = source.m_Counters;
    counters.m_Delivered += bTaken;
    counters.m_Late += bTaken && counters.m_Presented != source.m_PresentedBefore;
    counters.m_bRefused = !bTaken;
    counters.m_bInUpdate = false;
    if (bTaken && m_bKeepFrames)
        Copy(frame, source.m_LastFrame);
    m_Changed.notify_all();
}

HostDeliveryCounters HostDelivery::Counters(UINT sourceId) const
{
    std::lock_guard lock(m_Mutex);
    const auto found = m_Sources.find(sourceId);
    return found != m_Sources.end() ? found->second.m_Counters : HostDeliveryCounters{};
}

bool HostDelivery::WaitDelivered(UINT sourceId, UINT64 delivered, DWORD milliseconds) const
{
    const auto isThere = [&] {
        const auto found = m_Sources.find(sourceId);
        return found != m_Sources.end() && found->second.m_Counters.m_Delivered >= delivered;
    };
    const auto isOver = [&] {
        const auto found = m_Sources.find(sourceId);
        return isThere() || (found != m_Sources.end() && found->second.m_Counters.m_bRefused);
    };
    std::unique_lock lock(m_Mutex);
    m_Changed.wait_for(lock, std::chrono::milliseconds(milliseconds), isOver);
    return isThere();
}

void HostDelivery::KeepFrames()
{
    std::lock_guard lock(m_Mutex);
    m_bKeepFrames = true;
}

HostImage HostDelivery::LastFrame(UINT sourceId) const
{
    std::lock_guard lock(m_Mutex);
    const auto found = m_Sources.find(sourceId);
    return found != m_Sources.end() ? found->second.m_LastFrame : HostImage{};
}

void HostDelivery::Copy(const TessloVirtualMonitorFrame& frame, HostImage& image)
{
    if (image.m_Width != frame.Width || image.m_Height != frame.Height)
        image = HostImage(frame.Width, frame.Height);
    for (UINT y = 0; y < frame.Height; ++y)
    {
        const auto* pRow =
            reinterpret_cast<const UINT*>(static_cast<const BYTE*>(frame.pBits) + size_t{y} * frame.Pitch);
        for (UINT x = 0; x < frame.Width; ++x)
            image.m_Pixels[size_t{y} * frame.Width + x] = pRow[x] & 0xFFFFFF;
    }
}
