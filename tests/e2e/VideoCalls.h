// The runtime's six video-process calls, with records that hold a different number in every field.
#pragma once

#include "host/runtime/HostDevice.h"

namespace tesslo::test
{

class VideoCalls
{
public:
    explicit VideoCalls(HostDevice& device) : m_Device(device) {}

    HRESULT Create(D3DDDIARG_CREATEVIDEOPROCESSDEVICE& create) const
    {
        return m_Device.Functions().pfnCreateVideoProcessDevice(m_Device.Handle(), &create);
    }
    HRESULT Destroy(HANDLE hVideo) const
    {
        return m_Device.Functions().pfnDestroyVideoProcessDevice(m_Device.Handle(), hVideo);
    }
    HRESULT SetRenderTarget(HANDLE hVideo, HANDLE hTarget) const
    {
        const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET set = {hVideo, hTarget, 0};
        return m_Device.Functions().pfnSetVideoProcessRenderTarget(m_Device.Handle(), &set);
    }
    HRESULT BeginFrame(HANDLE hVideo) const
    {
        return m_Device.Functions().pfnVideoProcessBeginFrame(m_Device.Handle(), hVideo);
    }
    HRESULT EndFrame(HANDLE hVideo, HANDLE* phComplete = nullptr) const
    {
        D3DDDIARG_VIDEOPROCESSENDFRAME end = {hVideo, phComplete};
        return m_Device.Functions().pfnVideoProcessEndFrame(m_Device.Handle(), &end);
    }
    HRESULT Blt(const D3DDDIARG_VIDEOPROCESSBLT& blt) const
    {
        return m_Device.Functions().pfnVideoProcessBlt(m_Device.Handle(), &blt);
    }

    static const GUID kProgressive;

    /// Words 101 to 110 in the description.
    static D3DDDIARG_CREATEVIDEOPROCESSDEVICE DistinctCreate();
    /// Without handles.
    static DXVADDI_VIDEOSAMPLE DistinctSample();
    static D3DDDIARG_VIDEOPROCESSBLT DistinctBlt(HANDLE hVideo, DXVADDI_VIDEOSAMPLE* pSamples, UINT count);

private:
    HostDevice& m_Device;
};

}  // namespace tesslo::test
