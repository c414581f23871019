/*
 * What TessloClientDllSample.dll offers beside the interface of tesslo/client.h: counters, for whoever wants to know
 * what became of the frames. Look its functions up by name. A client library of a vendor need not have them, and one
 * that is built from client/sample alone has none.
 */
#ifndef TESSLO_SAMPLE_CLIENT_H
#define TESSLO_SAMPLE_CLIENT_H

#include "client.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Folder that the frames are recorded to. Without the variable frames are only counted. Read by Plug. */
#define TESSLO_SAMPLE_RECORD_DIR L"TESSLO_RECORD_DIR"

/** Sources that the sample serves: ids 0 to 15, all that the platform has. Plug refuses others. */
#define TESSLO_SAMPLE_SOURCES 16

/** Frames of a source that wait to be written; when there are more, the next is dropped. */
#define TESSLO_SAMPLE_QUEUE 8

#define TESSLO_SAMPLE_GET_COUNTERS "TessloSampleGetCounters"
#define TESSLO_SAMPLE_GET_FAILURE "TessloSampleGetFailure"
#define TESSLO_SAMPLE_WAIT_RECEIVED "TessloSampleWaitReceived"
#define TESSLO_SAMPLE_WAIT_RECORDED "TessloSampleWaitRecorded"

/** What became of one source's frames since the library was loaded; connections add up. */
typedef struct TessloSampleCounters
{
    UINT64 Connections; /**< Plug calls that were accepted. */
    UINT64 Received;    /**< Frames that Update was called with. */
    UINT64 Recorded;    /**< Pictures written whole. */
    UINT64 Dropped;     /**< Frames not recorded because the writer was behind. */
    UINT64 Failed;      /**< Frames not recorded because memory, folder or disk was not to be had. */
} TessloSampleCounters;

/** The first frame of a source that failed to be recorded. */
typedef struct TessloSampleFailure
{
    UINT64 Frame; /**< Its number; the source's first frame is 0. */
    UINT64 Error; /**< The system's error code, for example ERROR_DISK_FULL. */
} TessloSampleFailure;

/** @return false for a null pointer or a source that the sample does not serve. Any thread. */
typedef BOOLEAN (*TessloSampleGetCountersFunction)(UINT VidPnSourceId, TessloSampleCounters* pCounters);
TESSLO_CLIENT_EXPORT BOOLEAN TessloSampleGetCounters(UINT VidPnSourceId, TessloSampleCounters* pCounters);

/** @return false for a null pointer, a source that the sample does not serve, or one that has no failure. Any thread.
 */
typedef BOOLEAN (*TessloSampleGetFailureFunction)(UINT VidPnSourceId, TessloSampleFailure* pFailure);
TESSLO_CLIENT_EXPORT BOOLEAN TessloSampleGetFailure(UINT VidPnSourceId, TessloSampleFailure* pFailure);

/**
 * Waits until the source has received that many frames. Any thread but the driver's own.
 *
 * @return false if the time ran out before, or for a source that the sample does not serve.
 */
typedef BOOLEAN (*TessloSampleWaitReceivedFunction)(UINT VidPnSourceId, UINT64 received, DWORD milliseconds);
TESSLO_CLIENT_EXPORT BOOLEAN TessloSampleWaitReceived(UINT VidPnSourceId, UINT64 received, DWORD milliseconds);

/**
 * Waits until so many of the source's frames are recorded, dropped or failed. Any thread but the driver's own.
 *
 * @return false if the time ran out before, or for a source that the sample does not serve.
 */
typedef BOOLEAN (*TessloSampleWaitRecordedFunction)(UINT VidPnSourceId, UINT64 settled, DWORD milliseconds);
TESSLO_CLIENT_EXPORT BOOLEAN TessloSampleWaitRecorded(UINT VidPnSourceId, UINT64 settled, DWORD milliseconds);

#ifdef __cplusplus
}
#endif

#endif
