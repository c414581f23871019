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
 * else is true. The header is for C from C89 and for C++ from C++98 on.
 *
 * Threads. Plug, Update and Unplug of one connection are called on one worker thread, in that order:
 * Plug once before the first frame, Update for each frame, Unplug once at the end. A process has several
 * connections at once, one thread each: state that they share is the library's to guard. Two of them have the
 * same source where a program has two devices. On that thread the library may call what it likes but two
 * things: it does not end the thread, and no exception leaves an export (the driver catches one, and ends the
 * connection of that source). Direct3D of the same program may be used from threads of the library's own;
 * Update itself had better not wait for it.
 *
 * Time. While Update runs, newer frames of that source replace each other: frames are dropped, never
 * queued, and the presenting application does not wait. Closing the adapter does wait for a running call.
 *
 * Unloading. The driver is detached from a process after all its threads have ended; the library is freed
 * then, inside the loader lock, so its own DllMain must not wait for threads. A process that ends without
 * closing its Direct3D devices ends the worker threads where they are: Unplug is not called then, only the
 * library's DllMain, with DLL_PROCESS_DETACH. What must outlive the program belongs to another process.
 *
 * Not delivered. A frame has no time stamp and no refresh rate: it is there when the program has presented it.
 * The driver adds no cursor to the picture; one is in it where the program itself has drawn one.
 *
 * Trace. What the library gives to OutputDebugString appears in the debugger between the driver's own lines,
 * in the order of time, and so it does in the trace that tesslo_host writes. The driver's log file holds the
 * driver's lines alone.
 *
 * Proof. tesslo_client_check LIBRARY.dll does to a library all that is said here, without a driver.
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

/**
 * Version of this interface. It grows when a record or a function is added; those of older versions stay as they
 * are. The driver does not ask for it: what it finds exported is what it calls.
 */
#define TESSLO_CLIENT_INTERFACE_VERSION 1

/** Stands before each export of a client library; empty where a definition file names the exports. */
#ifndef TESSLO_CLIENT_EXPORT
#ifdef _WIN32
#define TESSLO_CLIENT_EXPORT __declspec(dllexport)
#else
#define TESSLO_CLIENT_EXPORT
#endif
#endif

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
                             order. The driver's memory, valid only during the call: Width * 4 bytes of each
                             row may be read, at an address that is a multiple of 4, and none be written. */
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
TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId);

/**
 * Delivers one frame. The library copies what it needs before it returns; the record and the pixels are
 * the driver's.
 *
 * @return false to end the connection: Unplug follows, and presents to the source fail from then on.
 */
typedef BOOLEAN (*TessloVirtualMonitorUpdateFunction)(void** ppConnection, const TessloVirtualMonitorFrame* pFrame);
TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame);

/**
 * Closes the connection of one source; the library frees what it stored in the slot.
 *
 * @return false is traced and otherwise means the same as true.
 */
typedef BOOLEAN (*TessloVirtualMonitorUnplugFunction)(void** ppConnection, UINT VidPnSourceId);
TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT VidPnSourceId);

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
TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorReserved1(HWND hWnd, struct IDirect3DDevice9Ex** ppDevice);

/**
 * Optional, looked up only if the first reserved export is there: told of each flip present, on the
 * presenting thread, before the frame is copied. Both objects are borrowed for the call.
 *
 * @return ignored.
 */
typedef BOOLEAN (*TessloVirtualMonitorReserved2Function)(
    struct IDirect3DDevice9Ex* pDevice, struct IDirect3DSurface9* pSurface);
TESSLO_CLIENT_EXPORT BOOLEAN TessloVirtualMonitorReserved2(
    struct IDirect3DDevice9Ex* pDevice, struct IDirect3DSurface9* pSurface);

/* The layout, proved in every dialect. */
#define TESSLO_CLIENT_PROVE(name, holds) typedef char TessloClientProof##name[(holds) ? 1 : -1]
TESSLO_CLIENT_PROVE(Size, sizeof(TessloVirtualMonitorFrame) == 32);
TESSLO_CLIENT_PROVE(Reserved, offsetof(TessloVirtualMonitorFrame, Reserved) == 0);
TESSLO_CLIENT_PROVE(VidPnSourceId, offsetof(TessloVirtualMonitorFrame, VidPnSourceId) == 4);
TESSLO_CLIENT_PROVE(Width, offsetof(TessloVirtualMonitorFrame, Width) == 8);
TESSLO_CLIENT_PROVE(Height, offsetof(TessloVirtualMonitorFrame, Height) == 12);
TESSLO_CLIENT_PROVE(Pitch, offsetof(TessloVirtualMonitorFrame, Pitch) == 16);
TESSLO_CLIENT_PROVE(Padding, offsetof(TessloVirtualMonitorFrame, Padding) == 20);
TESSLO_CLIENT_PROVE(Bits, offsetof(TessloVirtualMonitorFrame, pBits) == 24);
#undef TESSLO_CLIENT_PROVE

#ifdef __cplusplus
}
#endif

#endif
