// The sample client library, loaded and called as the driver calls it.
#pragma once

#include "ClientDll.h"
#include "host/runtime/HostImage.h"
#include "host/runtime/HostRecording.h"

#include <tesslo/client.h>

#include <vector>

namespace tesslo::test
{

class SampleClient : public ClientDll
{
public:
    SampleClient() : ClientDll(TESSLO_CLIENT_DEFAULT_DLL) {}

    TessloSampleCounters Counters(UINT source) const { return HostRecording(Module()).Counters(source).value(); }
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
