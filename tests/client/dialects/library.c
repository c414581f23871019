/* A client library of the header's own prototypes, in words that every dialect knows; compiled as C and as C++. */
#include <tesslo/client.h>

#if TESSLO_CLIENT_INTERFACE_VERSION != 1
#error The version is a number that the preprocessor can compare.
#endif

TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    *ppConnection = 0;
    return VidPnSourceId < 6;
}

TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    return *ppConnection == 0 && pFrame->Pitch >= pFrame->Width * 4;
}

TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT VidPnSourceId)
{
    return *ppConnection == 0 && VidPnSourceId < 6;
}

/* The prototypes are those of the pointer types. */
TessloVirtualMonitorPlugFunction pPlug = TessloVirtualMonitorPlug;
TessloVirtualMonitorUpdateFunction pUpdate = TessloVirtualMonitorUpdate;
TessloVirtualMonitorUnplugFunction pUnplug = TessloVirtualMonitorUnplug;
TessloVirtualMonitorReserved1Function pReserved1 = 0;
TessloVirtualMonitorReserved2Function pReserved2 = 0;
