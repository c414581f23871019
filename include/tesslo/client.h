/*
 * The interface between the TessloWddmUmode display driver and a client library.
 *
 * A client library is a DLL that carries the frames of a virtual monitor to a screen somewhere. The driver
 * loads it into every process that uses Direct3D 9 on the virtual adapter. Its file name stands in the
 * registry: HKEY_LOCAL_MACHINE, "Software\Zembrilo\Tesslo", value "DllNameInterface" (REG_SZ, up to 127
 * characters, a bare file name or a path). Without the value the driver writes and uses
 * TESSLO_CLIENT_DEFAULT_DLL.
 *
 * A client library exports the first three functions below, undecorated, with the platform's 64-bit calling
 * convention. The two reserved ones are optional. Every function answers one byte: 0 is false, anything
 * else is true.
 *
 * Threads. Plug, Update and Unplug of one connection are called on one worker thread, in that order:
 * Plug once before the first frame, Update for each frame, Unplug once at the end. A process has several
 * connections at once, one thread each: state that they share is the library's to guard.
 *
 * Time. While Update runs, newer frames of that source replace each other: frames are dropped, never
 * queued, and the presenting application does not wait. Closing the adapter does wait for a running call.
 *
 * Unloading. The driver is detached from a process after all its threads have ended; the library is freed
 * then, inside the loader lock, so its own DllMain must not wait for threads.
 */
#ifndef TESSLO_CLIENT_H
#define TESSLO_CLIENT_H

#include <stddef.h>
#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

struct IDirect3DDevice9Ex;
struct IDirect3DSurface9;

/** The client library that is loaded while the registry names none. */
#define TESSLO_CLIENT_DEFAULT_DLL L"TessloClientDllSample.dll"

/** Names of the exports, as the driver looks them up. */
#define TESSLO_CLIENT_PLUG "TessloVirtualMonitorPlug"
#define TESSLO_CLIENT_UPDATE "TessloVirtualMonitorUpdate"
#define TESSLO_CLIENT_UNPLUG "TessloVirtualMonitorUnplug"
#define TESSLO_CLIENT_RESERVED1 "TessloVirtualMonitorReserved1"
#define TESSLO_CLIENT_RESERVED2 "TessloVirtualMonitorReserved2"

/** One frame, already rotated for its output. 32 bytes, little-endian. */
typedef struct TessloVirtualMonitorFrame
{
    UINT Reserved;      /**< Always 0. */
    UINT VidPnSourceId; /**< Video-present source that shows the frame. */
    UINT Width;         /**< Pixels, after rotation. */
    UINT Height;        /**< Pixels, after rotation. */
    UINT Pitch;         /**< Bytes from one row to the next, after rotation. */
    UINT Padding;       /**< Always 0. */
    const void* pBits;  /**< Top row first; 32 bits a pixel: blue, green, red, alpha (or nothing) in memory
                             order. The driver's memory, valid only during the call. */
} TessloVirtualMonitorFrame;

/**
 * Opens the connection of one source, before its first frame.
 *
 * @param ppConnection  the connection's slot, holding null; the library may store a pointer of its own.
 *                      The same address goes to every call of this connection.
 * @param VidPnSourceId the video-present source.
 * @return false to refuse: the source's worker ends, Unplug is not called, and presents to it fail from then on.
 */
typedef BOOLEAN (*TessloVirtualMonitorPlugFunction)(void** ppConnection, UINT VidPnSourceId);

/**
 * Delivers one frame. The library copies what it needs before it returns; the record and the pixels are
 * the driver's.
 *
 * @return false to end the connection: Unplug follows, and presents to the source fail from then on.
 */
typedef BOOLEAN (*TessloVirtualMonitorUpdateFunction)(void** ppConnection, const TessloVirtualMonitorFrame* pFrame);

/**
 * Closes the connection of one source; the library frees what it stored in the slot.
 *
 * @return false is traced and otherwise means the same as true.
 */
typedef BOOLEAN (*TessloVirtualMonitorUnplugFunction)(void** ppConnection, UINT VidPnSourceId);

/**
 * Optional: supplies the Direct3D 9Ex device that the driver renders on. Called on the driver's GPU thread,
 * once for each driver device.
 *
 * @param hWnd     the driver's hidden window, fit to be the device's focus window; owned by the driver.
 * @param ppDevice receives a device that several threads may use at once, with one reference that the driver
 *                 releases.
 * @return false to decline: the driver then creates a device itself.
 */
typedef BOOLEAN (*TessloVirtualMonitorReserved1Function)(HWND hWnd, struct IDirect3DDevice9Ex** ppDevice);

/**
 * Optional, looked up only if the first reserved export is there: told of each flip present, on the
 * presenting thread, before the frame is copied. Both objects are borrowed for the call.
 *
 * @return ignored.
 */
typedef BOOLEAN (*TessloVirtualMonitorReserved2Function)(
    struct IDirect3DDevice9Ex* pDevice, struct IDirect3DSurface9* pSurface);

#ifdef __cplusplus
}

static_assert(sizeof(TessloVirtualMonitorFrame) == 32, "wire record");
static_assert(offsetof(TessloVirtualMonitorFrame, VidPnSourceId) == 4, "wire record");
static_assert(offsetof(TessloVirtualMonitorFrame, Width) == 8, "wire record");
static_assert(offsetof(TessloVirtualMonitorFrame, Height) == 12, "wire record");
static_assert(offsetof(TessloVirtualMonitorFrame, Pitch) == 16, "wire record");
static_assert(offsetof(TessloVirtualMonitorFrame, Padding) == 20, "wire record");
static_assert(offsetof(TessloVirtualMonitorFrame, pBits) == 24, "wire record");
#endif

#endif
