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
      m_pGetFailure(Find<TessloSampleGetFailureFunction>(hClientLibrary, TESSLO_SAMPLE_GET_FAILURE)),
      m_pWaitReceived(Find<TessloSampleWaitReceivedFunction>(hClientLibrary, TESSLO_SAMPLE_WAIT_RECEIVED)),
      m_pWaitRecorded(Find<TessloSampleWaitRecordedFunction>(hClientLibrary, TESSLO_SAMPLE_WAIT_RECORDED))
{
}

std::optional<TessloSampleCounters> HostRecording::Counters(UINT sourceId) const
{
    TessloSampleCounters counters{};
    if (m_pGetCounters == nullptr || !m_pGetCounters(sourceId, &counters))
        return std::nullopt;
    return counters;
}

std::optional<TessloSampleFailure> HostRecording::Failure(UINT sourceId) const
{
    TessloSampleFailure failure{};
    if (m_pGetFailure == nullptr || !m_pGetFailure(sourceId, &failure))
        return std::nullopt;
    return failure;
}

bool HostRecording::WaitReceived(UINT sourceId, UINT64 received, DWORD milliseconds) const
{
    return m_pWaitReceived != nullptr && m_pWaitReceived(sourceId, received, milliseconds);
}

bool HostRecording::WaitRecorded(UINT sourceId, UINT64 settled, DWORD milliseconds) const
{
    return m_pWaitRecorded != nullptr && m_pWaitRecorded(sourceId, settled, milliseconds);
}
