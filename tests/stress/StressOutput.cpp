#include "StressOutput.h"

#include "CreateRequest.h"
#include "FakeDevice.h"

namespace tesslo::test
{

namespace
{

constexpr UINT kSourcesOfDevice = 6;

}  // namespace

StressOutput::StressOutput(DriverDll& driver, FakeKernel& kernel, StressFrames& frames, UINT firstSource)
    : m_Driver(driver), m_Kernel(kernel), m_Frames(frames), m_FirstSource(firstSource)
{
    for (UINT i = 0; i < kSourcesOfDevice; ++i)
        m_Kernel.SetVidPnSourceId(i, firstSource + i);
}

HRESULT StressOutput::Open()
{
    const HRESULT hr = m_Driver.OpenAdapter(m_Kernel);
    return FAILED(hr) ? hr : m_Driver.CreateDevice(m_Kernel);
}

HRESULT StressOutput::CreatePrimary(UINT source, const StressShape& shape, StressPrimary* pPrimary)
{
    CreateRequest request(kFlagRenderTarget | kFlagPrimary, kVideo, D3DDDIFMT_X8R8G8B8, shape.m_Width, shape.m_Height);
    request.m_Arg.VidPnSourceId = source;
    request.m_Arg.Rotation = static_cast<D3DDDI_ROTATION>(shape.m_Rotation);
    const HRESULT hr = m_Driver.m_DeviceFuncs.pfnCreateResource(m_Driver.m_hDevice, &request.m_Arg);
    if (SUCCEEDED(hr))
        *pPrimary = {request.m_Arg.hResource, FakeDevice::NewestSurface(), source, m_FirstSource + source, shape};
    return hr;
}

HRESULT StressOutput::Flip(const StressPrimary& primary)
{
    m_Frames.Paint(*primary.m_pTarget, primary.m_SourceName, primary.m_Shape);
    D3DDDIARG_PRESENT present{};
    present.hSrcResource = primary.m_hResource;
    present.Flags.Flip = 1;
    return m_Driver.m_DeviceFuncs.pfnPresent(m_Driver.m_hDevice, &present);
}

HRESULT StressOutput::Destroy(const StressPrimary& primary)
{
    return m_Driver.m_DeviceFuncs.pfnDestroyResource(m_Driver.m_hDevice, primary.m_hResource);
}

HRESULT StressOutput::DestroyDevice()
{
    return m_Driver.m_DeviceFuncs.pfnDestroyDevice(m_Driver.m_hDevice);
}

HRESULT StressOutput::Close()
{
    return m_Driver.CloseAdapter();
}

}  // namespace tesslo::test
