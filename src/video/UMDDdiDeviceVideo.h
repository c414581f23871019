// The video process device: the object behind the runtime's video process handle.
//
// Its address is the handle. Created and freed by the video entries. Runtime's thread only.
#pragma once

#include "ddi/ddi.h"

#include <memory>

class UMDDdiDevice;
class UMDGpuDXVA;

class UMDDdiDeviceVideo
{
public:
    explicit UMDDdiDeviceVideo(UMDDdiDevice* pDevice);
    ~UMDDdiDeviceVideo();

    UMDDdiDeviceVideo(const UMDDdiDeviceVideo&) = delete;
    UMDDdiDeviceVideo& operator=(const UMDDdiDeviceVideo&) = delete;

    HRESULT Create(const D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pArgs);
    /// Releases the DXVA2 objects; the object itself stays.
    HRESULT Destroy();
    HRESULT SetRenderTarget(const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pArgs);
    HRESULT BeginFrame(HANDLE hVideoProcess);
    HRESULT EndFrame(const D3DDDIARG_VIDEOPROCESSENDFRAME* pArgs);
    HRESULT Blt(const D3DDDIARG_VIDEOPROCESSBLT* pArgs);

private:
    std::unique_ptr<UMDGpuDXVA> m_pGpuDXVA;  ///< null when memory ran out: every operation then fails
};

/// Video process handles become objects here and nowhere else. Null stays null.
inline UMDDdiDeviceVideo* ToDeviceVideo(HANDLE hVideoProcess)
{
    return static_cast<UMDDdiDeviceVideo*>(hVideoProcess);
}
