// A client library that shows the virtual monitors in a web browser: tesslo/browser_client.h tells how it is set up.
//
// A frame goes from the driver's worker into its source's mailbox and on, on the library's one thread, to every page
// that watches. The worker never waits for that thread, and the thread never for a page.
#include "BrowserConnection.h"
#include "BrowserDebug.h"

#include <tesslo/client.h>

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

extern "C" BOOL APIENTRY DllMain(HINSTANCE, DWORD, LPVOID)
{
    return TRUE;
}
