/*
 * What TessloClientDllSample.dll offers beside the interface of tesslo/client.h: counters, for whoever wants to know
 * what became of the frames. Look both functions up by name; a client library of a vendor need not have them.
 */
#ifndef TESSLO_SAMPLE_CLIENT_H
#define TESSLO_SAMPLE_CLIENT_H

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Folder that the frames are recorded to. Without the variable frames are only counted. Read by Plug. */
#define TESSLO_SAMPLE_RECORD_DIR L"TESSLO_RECORD_DIR"

/** Sources that the sample serves: ids 0 to 15, all that the platform has. Plug refuses others. */
#define TESSLO_SAMPLE_SOURCES 16

#define TESSLO_SAMPLE_GET_COUNTERS "TessloSampleGetCounters"
#define TESSLO_SAMPLE_WAIT_RECEIVED "TessloSampleWaitReceived"

/** What became of one source's frames since the library was loaded; connections add up. */
typedef struct TessloSampleCounters
{
    UINT64 Connections; /**< Plug calls that were accepted. */
    UINT64 Received;    /**< Frames that Update was called with. */
    UINT64 Recorded;    /**< Pictures written whole. */
    UINT64 Dropped;     /**< Frames not recorded because the writer was behind. */
    UINT64 Failed;      /**< Frames not recorded because memory, folder or disk was not to be had. */
} TessloSampleCounters;

/** @return false for a null pointer or a source that the sample does not serve. Any thread. */
typedef BOOLEAN (*TessloSampleGetCountersFunction)(UINT VidPnSourceId, TessloSampleCounters* pCounters);

/**
 * Waits until the source has received that many frames. Any thread but the driver's own.
 *
 * @return false if the time ran out before, or for a source that the sample does not serve.
 */
typedef BOOLEAN (*TessloSampleWaitReceivedFunction)(UINT VidPnSourceId, UINT64 received, DWORD milliseconds);

#ifdef __cplusplus
}
#endif

#endif
