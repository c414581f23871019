// The frame-buffer thread of one video-present source: takes the newest frame, rotates it and passes it to the client
// library.
//
// The presenting thread copies each frame (FrameBufferAvailable) and wakes the worker; the worker opens the client
// library's connection on its first frame, sends, and closes it at its end. Frames that come faster than the client
// library takes them are dropped, never queued. The first failure ends the worker for good; so does a fault, of the
// client library or of anything else that the worker calls.
#pragma once

#include "gpu/UMDThreadBase.h"
#include "output/UMDFrameBuffer.h"
#include "output/UMDFrameHandoff.h"
#include "tesslo/client.h"

#include <atomic>
#include <memory>

class UMDDdiDevice;

class UMDThreadFrameBuffer : public UMDThreadBase
{
public:
    UMDThreadFrameBuffer();
    ~UMDThreadFrameBuffer() override;

    /// Makes the ring and starts the worker. A second call, even after the worker has ended, answers true and does
    /// nothing. Owner's thread.
    /// @param pDeviceContext   borrowed; null is refused.
    /// @param hClientDll       the client library, borrowed; null ends the worker at its first frame.
    /// @param pDeviceDelegated the device that frames are copied on, borrowed; null lets every frame fail.
    bool Start(
        UMDDdiDevice* pDeviceContext, UINT VidPnSourceId, HMODULE hClientDll, IDirect3DDevice9Ex* pDeviceDelegated);

    /// Deletes the ring, then tells the worker to end. Owner's thread.
    /// @return false when it was never started: there is nothing to wait for.
    bool RequestExit();

    /// Copies a presented render target and wakes the worker. Presenting thread.
    /// @param width, height pixels. @param rotation a D3DDDI_ROTATION.
    bool FrameBufferAvailable(IDirect3DSurface9* pSrcSurface, UINT width, UINT height, D3DFORMAT format, UINT rotation);

    void Run() override;

private:
    using UMDThreadBase::Start;

    void InternalPublishFrame(UINT width, UINT height, UINT rotation);
    bool InternalWasEndedInClient();
    bool InternalWaitForFrame();
    bool InternalProcessNewestFrame();
    void InternalEnd();
    bool InternalInitializeConnection(void** ppConnection, UINT VidPnSourceId);
    bool InternalProcessFrameBuffer(
        void** ppConnection, BYTE* pBuffer, IDirect3DSurface9* pSurface, UMDFrame* pFrame, UINT VidPnSourceId);
    bool InternalSendFrameBuffer(
        void** ppConnection, const BYTE* pBuffer, UINT width, UINT height, UINT pitch, UINT VidPnSourceId);
    bool InternalUninitializeConnection(void** ppConnection, UINT VidPnSourceId);
    /// Calls one export of the client library. @return its answer; false when it faulted, which is traced.
    template <typename Call>
    bool InternalCallClient(const char* pExport, const Call& call);
    void TellWaiting(UINT seconds) const override;
    void Faulted() override;

    HANDLE m_hEventFrameBufferAvailable;
    HANDLE m_hEventRequestExit;
    bool m_bInit;                                    ///< set by the first Start and never cleared; owner's thread
    std::atomic<bool> m_bExit;                       ///< exit requested, or the worker has ended
    UMDDdiDevice* m_pDeviceContext;                  ///< borrowed
    std::unique_ptr<UMDFrameBuffer> m_pFrameBuffer;  ///< presenting thread
    UMDFrameHandoff m_Handoff;
    UINT m_VidPnSourceId;
    HMODULE m_hClientDll;                    ///< borrowed
    void* m_pConnection;                     ///< the slot of the client library's own; worker's thread
    bool m_bConnected;                       ///< Plug has accepted, Unplug is due; worker's thread
    std::atomic<const char*> m_pClientCall;  ///< the export that the worker is in, null while in none
    TessloVirtualMonitorPlugFunction m_TessloVirtualMonitorPlug;
    TessloVirtualMonitorUnplugFunction m_TessloVirtualMonitorUnplug;
    TessloVirtualMonitorUpdateFunction m_TessloVirtualMonitorUpdate;
};
