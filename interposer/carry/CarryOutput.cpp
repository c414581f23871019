#include "interposer/carry/CarryOutput.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/carry/CarryDriver.h"
#include "interposer/judge/JudgeFrame.h"
#include "interposer/run/RunLedger.h"
#include "util/UMDComPtr.h"

namespace
{

// Generous: a software rasteriser on a busy machine still delivers within it.
constexpr DWORD kDeliveryMilliseconds = 30'000;

}  // namespace

void CarryOutput::Attach()
{
    for (UINT chain = 0; chain < m_Device.Platform()->GetNumberOfSwapChains(); ++chain)
    {
        UMDComPtr<IDirect3DSurface9> pBackBuffer;
        D3DSURFACE_DESC desc;
        HostCheck(
            m_Device.Platform()->GetBackBuffer(chain, 0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put()), "GetBackBuffer");
        HostCheck(pBackBuffer->GetDesc(&desc), "GetDesc");
        const HostResource& primary = Primary(pBackBuffer.Get(), desc);
        if (chain == 0)
            m_Device.Driver().SetRenderTarget(primary);
    }
}

HostResource& CarryOutput::Primary(IDirect3DSurface9* pBackBuffer, const D3DSURFACE_DESC& desc)
{
    std::unique_ptr<HostResource>& pPrimary = m_Primaries[pBackBuffer];
    if (pPrimary == nullptr)
        pPrimary =
            m_Device.Driver().CreatePrimary(desc.Width, desc.Height, RunOf().m_SourceId, D3DDDI_ROTATION_IDENTITY);
    return *pPrimary;
}

void CarryOutput::PresentAll()
{
    for (UINT chain = 0; chain < m_Device.Platform()->GetNumberOfSwapChains(); ++chain)
    {
        UMDComPtr<IDirect3DSwapChain9> pChain;
        HostCheck(m_Device.Platform()->GetSwapChain(chain, pChain.Put()), "GetSwapChain");
        Present(pChain.Get());
    }
}

void CarryOutput::Present(IDirect3DSwapChain9* pChain)
{
    UMDComPtr<IDirect3DSurface9> pBackBuffer;
    D3DSURFACE_DESC desc;
    HostCheck(pChain->GetBackBuffer(0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put()), "GetBackBuffer");
    HostCheck(pBackBuffer->GetDesc(&desc), "GetDesc");
    HostResource& primary = Primary(pBackBuffer.Get(), desc);
    CarryDriver::Get().Delivery().Presenting(RunOf().m_SourceId);
    m_Device.Driver().Flip(primary);
    if (RunOf().m_Mode != RunMode::Carry)
        Judge(pBackBuffer.Get(), desc);
}

void CarryOutput::Judge(IDirect3DSurface9* pBackBuffer, const D3DSURFACE_DESC& desc)
{
    HostDelivery& delivery = CarryDriver::Get().Delivery();
    const UINT sourceId = RunOf().m_SourceId;
    if (!delivery.WaitDelivered(sourceId, delivery.Counters(sourceId).m_Presented, kDeliveryMilliseconds))
        throw HostError("the client library has not taken the frame");
    const HostImage expected = JudgeReadPlatform(m_Device.Platform(), pBackBuffer, desc);
    JudgeFrame(delivery.LastFrame(sourceId), expected);
}
