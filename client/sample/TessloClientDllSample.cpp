// The sample client library, meant to be copied: numbers the frames of every virtual monitor and, if the environment
// variable TESSLO_RECORD_DIR names a folder, records them there as pictures. It loses what its disk is too slow for,
// and the alpha of each pixel; it counts what it loses and says so when a source is closed.
//
// The exports below are all that the driver knows of a client library; put your transport in the place of
// SampleConnection. Three rules keep the driver, and the application it runs in, well:
//   - Update copies the pixels and returns. What takes time (compressing, sending, writing) is another thread's.
//   - Unplug ends that thread. The library is freed inside the loader lock, where nothing may wait for a thread, so
//     none may be left running after the last Unplug.
//   - No exception leaves an export. Nothing here throws.
#include "SampleConnection.h"

extern "C" BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    if (ppConnection == nullptr || VidPnSourceId >= kSampleSources)
        return FALSE;
    *ppConnection = SampleConnection::Open(VidPnSourceId);
    return *ppConnection != nullptr;
}

extern "C" BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    if (ppConnection == nullptr || *ppConnection == nullptr || pFrame == nullptr || pFrame->pBits == nullptr)
        return FALSE;
    static_cast<SampleConnection*>(*ppConnection)->Update(*pFrame);
    return TRUE;
}

extern "C" BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT)
{
    if (ppConnection == nullptr || *ppConnection == nullptr)
        return FALSE;
    static_cast<SampleConnection*>(*ppConnection)->Close();
    *ppConnection = nullptr;
    return TRUE;
}
