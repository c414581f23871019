// The sample client library, meant to be copied: counts the frames of every virtual monitor and, if the environment
// variable TESSLO_RECORD_DIR names a folder, records them there as pictures. It loses what its disk is too slow for,
// and the alpha of each pixel; it counts and tells what it loses.
//
// The exports below are all that the driver knows of a client library; put your transport in the place of
// SampleConnection. SampleCounters is there for who asks what became of the frames; yours need not have it.
// Three rules keep the driver, and the application it runs in, well:
//   - Update copies the pixels and returns. What takes time (compressing, sending, writing) is another thread's.
//   - Unplug ends that thread. The library is freed inside the loader lock, where nothing may wait for a thread, so
//     none may be left running after the last Unplug.
//   - No exception leaves an export. This library is built without them.
#include "SampleConnection.h"

#ifdef __GLIBCXX__
namespace __gnu_cxx
{
/// The C++ library's own: frees the memory that it has set aside on attach for exceptions thrown while memory is short.
void __freeres();
}  // namespace __gnu_cxx
#endif

static SampleConnection* ToConnection(void** ppConnection)
{
    return ppConnection != nullptr ? static_cast<SampleConnection*>(*ppConnection) : nullptr;
}

extern "C" BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    if (ppConnection == nullptr || VidPnSourceId >= TESSLO_SAMPLE_SOURCES)
        return FALSE;
    *ppConnection = SampleConnection::Open(VidPnSourceId);
    return *ppConnection != nullptr;
}

extern "C" BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    SampleConnection* pConnection = ToConnection(ppConnection);
    if (pConnection == nullptr || pFrame == nullptr || pFrame->pBits == nullptr)
        return FALSE;
    pConnection->Update(*pFrame);
    return TRUE;
}

extern "C" BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT)
{
    SampleConnection* pConnection = ToConnection(ppConnection);
    if (pConnection == nullptr)
        return FALSE;
    pConnection->Close();
    *ppConnection = nullptr;
    return TRUE;
}

#ifdef __GLIBCXX__
extern "C" BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID pProcessEnds)
{
    // A process that loads and frees the library again and again would lose a block a time.
    if (reason == DLL_PROCESS_DETACH && !pProcessEnds)
        __gnu_cxx::__freeres();
    return TRUE;
}
#endif
