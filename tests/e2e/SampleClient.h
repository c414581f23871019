// The sample client library, loaded and called as the driver calls it.
#pragma once

#include "host/runtime/HostImage.h"
#include "host/runtime/HostRecording.h"

#include <tesslo/client.h>

#include <vector>

namespace tesslo::test
{

class SampleClient
{
public:
    SampleClient();
    ~SampleClient();
    SampleClient(const SampleClient&) = delete;
    SampleClient& operator=(const SampleClient&) = delete;

    HMODULE Module() const { return m_hModule; }
    TessloSampleCounters Counters(UINT source) const { return HostRecording(m_hModule).Counters(source).value(); }

    TessloVirtualMonitorPlugFunction Plug;
    TessloVirtualMonitorUpdateFunction Update;
    TessloVirtualMonitorUnplugFunction Unplug;

private:
    HMODULE m_hModule;
};

/// One connection, with pictures as frames.
class SampleClientConnection
{
public:
    SampleClientConnection(const SampleClient& client, UINT source);
    ~SampleClientConnection();
    SampleClientConnection(const SampleClientConnection&) = delete;
    SampleClientConnection& operator=(const SampleClientConnection&) = delete;

    /// Sends a picture with garbage where its alpha would be and behind the end of every row.
    bool Send(const HostImage& image);
    void Close();

private:
    const SampleClient& m_Client;
    UINT m_Source;
    void* m_pSlot = nullptr;
    bool m_bOpen;
};

}  // namespace tesslo::test
