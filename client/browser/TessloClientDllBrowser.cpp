// A client library that shows the virtual monitors in a web browser: tesslo/browser_client.h tells how it is set up.
//
// A frame goes from the driver's worker into its source's mailbox and on, on the library's one thread, to every page
// that watches. The worker never waits for that thread, and the thread never for a page.
#include "BrowserConnection.h"
#include "BrowserDebug.h"

#include <tesslo/client.h>

namespace __gnu_cxx
{
/// The C++ library's own: frees the memory that it has set aside on attach for exceptions thrown while memory is short.
void __freeres();
}  // namespace __gnu_cxx

namespace
{

/// No exception leaves an export: what throws has failed.
template <typename Work>
BOOLEAN Guarded(const Work& work)
{
    try
    {
        return work();
    }
    catch (const std::exception& error)
    {
        BrowserDebugTell(error.what());
        return FALSE;
    }
}

BrowserConnection* ToConnection(void** ppConnection)
{
    return ppConnection != nullptr ? static_cast<BrowserConnection*>(*ppConnection) : nullptr;
}

}  // namespace

extern "C" BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    if (ppConnection == nullptr)
        return FALSE;
    return Guarded([&]() -> BOOLEAN {
        *ppConnection = BrowserConnection::Open(VidPnSourceId);
        return *ppConnection != nullptr;
    });
}

extern "C" BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    BrowserConnection* pConnection = ToConnection(ppConnection);
    if (pConnection == nullptr || pFrame == nullptr || pFrame->pBits == nullptr)
        return FALSE;
    // A frame for which memory is not to be had is one that does not arrive; the next may.
    Guarded([&]() -> BOOLEAN {
        pConnection->Update(*pFrame);
        return TRUE;
    });
    return TRUE;
}

extern "C" BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT)
{
    BrowserConnection* pConnection = ToConnection(ppConnection);
    if (pConnection == nullptr)
        return FALSE;
    *ppConnection = nullptr;
    return Guarded([&]() -> BOOLEAN {
        pConnection->Close();
        return TRUE;
    });
}

extern "C" BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID pProcessEnds)
{
    // A process that loads and frees the library again and again would lose a block a time.
    if (reason == DLL_PROCESS_DETACH && !pProcessEnds)
        __gnu_cxx::__freeres();
    return TRUE;
}
