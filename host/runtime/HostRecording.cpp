#include "host/runtime/HostRecording.h"

namespace
{

template <typename Function>
Function Find(HMODULE hModule, const char* pName)
{
    return hModule == nullptr ? nullptr
                              : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(hModule, pName)));
}

}  // namespace

HostRecording::HostRecording(HMODULE hClientLibrary)
    : m_pGetCounters(Find<TessloSampleGetCountersFunction>(hClientLibrary, TESSLO_SAMPLE_GET_COUNTERS)),
      m_pWaitReceived(Find<TessloSampleWaitReceivedFunction>(hClientLibrary, TESSLO_SAMPLE_WAIT_RECEIVED))
{
}

std::optional<TessloSampleCounters> HostRecording::Counters(UINT sourceId) const
{
    TessloSampleCounters counters{};
    if (m_pGetCounters == nullptr || !m_pGetCounters(sourceId, &counters))
        return std::nullopt;
    return counters;
}

bool HostRecording::WaitReceived(UINT sourceId, UINT64 received, DWORD milliseconds) const
{
    return m_pWaitReceived != nullptr && m_pWaitReceived(sourceId, received, milliseconds);
}
