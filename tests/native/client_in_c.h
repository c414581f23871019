/* A client library in plain C, to prove that the client kit's header is C, and that both languages see one record. */
#ifndef TESSLO_CLIENT_IN_C_H
#define TESSLO_CLIENT_IN_C_H

#include <tesslo/client.h>
#include <tesslo/sample_client.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The three exports, as the driver holds them. */
typedef struct ClientInC
{
    TessloVirtualMonitorPlugFunction pPlug;
    TessloVirtualMonitorUpdateFunction pUpdate;
    TessloVirtualMonitorUnplugFunction pUnplug;
} ClientInC;

extern const ClientInC g_ClientInC;

/** What Plug stores in the slot. */
typedef struct ClientInCConnection
{
    UINT Source;
    UINT Frames;
    UINT64 Sum; /**< Of all bytes of all pixels; those between rows do not count. */
} ClientInCConnection;

/** Where C finds the record's last member and the counters' last one. */
size_t ClientInCOffsetOfBits(void);
size_t ClientInCOffsetOfFailed(void);

#ifdef __cplusplus
}
#endif

#endif
