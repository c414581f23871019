// The video processor of the delegated device: turns the driver interface's records into DXVA2's.
//
// One source stream, no substreams. Runtime's thread only.
#pragma once

#include "ddi/ddi.h"
#include "util/UMDComPtr.h"

#include <dxva2api.h>

class UMDDdiDevice;

class UMDGpuDXVA
{
public:
    /// @param pDevice gives the delegated device; borrowed, it outlives the object.
    explicit UMDGpuDXVA(UMDDdiDevice* pDevice);
    ~UMDGpuDXVA();

    UMDGpuDXVA(const UMDGpuDXVA&) = delete;
    UMDGpuDXVA& operator=(const UMDGpuDXVA&) = delete;

    /// Creates service and processor; both or none.
    HRESULT Create(const D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pArgs);
    /// Releases processor and service. May be called again.
    HRESULT Destroy();

    /// Takes the target of the blits to come, and makes it the delegated device's render target 0.
    HRESULT SetRenderTarget(const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pArgs);
    HRESULT BeginFrame(HANDLE hVideoProcess);
    HRESULT EndFrame(const D3DDDIARG_VIDEOPROCESSENDFRAME* pArgs);
    /// @return E_NOTIMPL for any number of source samples but one.
    HRESULT Blt(const D3DDDIARG_VIDEOPROCESSBLT* pArgs);

private:
    void InternalRelease();
    void InternalSetBltParams(const D3DDDIARG_VIDEOPROCESSBLT* pArgs, DXVA2_VideoProcessBltParams* pParams);
    /// Converts the sample of a blit that has exactly one; otherwise the sample is left zero.
    void InternalSetBltSamples(const D3DDDIARG_VIDEOPROCESSBLT* pArgs, DXVA2_VideoSample* pSample);

    UMDDdiDevice* m_pDeviceContext;  ///< borrowed
    UMDComPtr<IDirectXVideoProcessor> m_pVideoProcessor;
    UMDComPtr<IDirectXVideoProcessorService> m_pVideoProcessorService;
    HANDLE m_hRenderTarget;                        ///< the target set last, null before the first
    UMDComPtr<IDirect3DSurface9> m_pRenderTarget;  ///< its surface: the resource may be gone before the next blit
};
