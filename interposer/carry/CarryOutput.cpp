#include "interposer/carry/CarryOutput.h"

#include "interposer/carry/CarryCreate.h"
#include "interposer/carry/CarryDevice.h"
#include "interposer/carry/CarryDriver.h"
#include "interposer/judge/JudgeFrame.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

namespace
{

// Generous: a software rasteriser on a busy machine still delivers within it.
constexpr DWORD kDeliveryMilliseconds = 30'000;

/// Where the frames of a swap chain begin on the screen.
POINT CornerOf(IDirect3DSwapChain9* pChain)
{
    D3DPRESENT_PARAMETERS parameters;
    HostCheck(pChain->GetPresentParameters(&parameters), "GetPresentParameters");
    POINT corner = {0, 0};
    if (parameters.Windowed)
        ClientToScreen(parameters.hDeviceWindow, &corner);
    return corner;
}

}  // namespace

void CarryOutput::Attach()
{
    ForEachChain(&CarryOutput::AttachChain);
    UMDComPtr<IDirect3DSurface9> pDepth;
    if (SUCCEEDED(m_Device.Platform()->GetDepthStencilSurface(pDepth.Put())) && !CarryFind(pDepth.Get()))
        CarryCreateSurface(m_Device, pDepth.Get());
}

void CarryOutput::AttachChain(IDirect3DSwapChain9* pChain)
{
    D3DPRESENT_PARAMETERS parameters;
    HostCheck(pChain->GetPresentParameters(&parameters), "GetPresentParameters");
    for (UINT i = 0; i < parameters.BackBufferCount; ++i)
    {
        UMDComPtr<IDirect3DSurface9> pBackBuffer;
        D3DSURFACE_DESC desc;
        HostCheck(pChain->GetBackBuffer(i, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put()), "GetBackBuffer");
        HostCheck(pBackBuffer->GetDesc(&desc), "GetDesc");
        if (desc.MultiSampleType != D3DMULTISAMPLE_NONE)
            RunLimit(kLimitMultisampling);
        auto pResource = std::make_shared<CarryResource>(m_Device, CarryKind::Target, desc, 1);
        pResource->m_pVideo = TakePrimary(desc.Width, desc.Height, desc.Format);
        // A program that has the screen for itself has set its mode.
        if (!parameters.Windowed && i == 0)
            m_Device.Post([pVideo = pResource->m_pVideo](HostDevice& driver) { driver.SetDisplayMode(*pVideo); });
        CarryHang(pBackBuffer.Get(), std::move(pResource));
    }
}

std::shared_ptr<HostResource> CarryOutput::TakePrimary(UINT width, UINT height, D3DFORMAT format)
{
    if (format != D3DFMT_X8R8G8B8 && format != D3DFMT_A8R8G8B8)
    {
        RunLimit(kLimitBackBufferFormat);
        format = D3DFMT_X8R8G8B8;
    }
    for (const std::shared_ptr<HostResource>& pPrimary : m_Primaries)
    {
        const HostResourceDescription& description = pPrimary->Description();
        if (pPrimary.use_count() == 1 && description.m_Width == width && description.m_Height == height &&
            description.m_Format == static_cast<UINT>(format))
            return pPrimary;
    }
    HostResourceDescription description{.m_Width = width,
        .m_Height = height,
        .m_Format = static_cast<UINT>(format),
        .m_VidPnSourceId = RunOf().m_SourceId};
    description.m_Flags.RenderTarget = 1;
    description.m_Flags.Primary = 1;
    return m_Primaries.emplace_back(m_Device.Create(description));
}

void CarryOutput::ForEachChain(void (CarryOutput::*pWork)(IDirect3DSwapChain9*))
{
    for (UINT chain = 0; chain < m_Device.Platform()->GetNumberOfSwapChains(); ++chain)
    {
        UMDComPtr<IDirect3DSwapChain9> pChain;
        HostCheck(m_Device.Platform()->GetSwapChain(chain, pChain.Put()), "GetSwapChain");
        (this->*pWork)(pChain.Get());
    }
}

void CarryOutput::Present(IDirect3DSwapChain9* pChain)
{
    UMDComPtr<IDirect3DSurface9> pBackBuffer;
    D3DSURFACE_DESC desc;
    HostCheck(pChain->GetBackBuffer(0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put()), "GetBackBuffer");
    HostCheck(pBackBuffer->GetDesc(&desc), "GetDesc");
    const CarryPlace place = CarryFind(pBackBuffer.Get());
    if (!place)
        throw HostError("a present of what the driver does not have");
    Flip(place->m_pVideo);
    if (RunOf().m_Mode != RunMode::Carry)
        Judge(pChain, pBackBuffer.Get(), desc);
}

// The frame is drawn before the program goes on, for the platform lets no two devices draw at once; the flip, which
// copies it and pauses, runs beside the program's next frame.
void CarryOutput::Flip(std::shared_ptr<HostResource> pPrimary)
{
    m_Device.Do([](HostDevice&) {});
    const UINT64 flip = m_Device.Post([pPrimary = std::move(pPrimary)](HostDevice& driver) {
        CarryDriver::Get().Delivery().Presenting(RunOf().m_SourceId);
        driver.Flip(*pPrimary);
    });
    if (RunOf().m_Mode == RunMode::Carry)
        CarryThread::Get().Start(flip);
    else
        CarryThread::Get().Wait(flip);
}

void CarryOutput::Judge(IDirect3DSwapChain9* pChain, IDirect3DSurface9* pBackBuffer, const D3DSURFACE_DESC& desc)
{
    HostDelivery& delivery = CarryDriver::Get().Delivery();
    const UINT sourceId = RunOf().m_SourceId;
    if (!delivery.WaitDelivered(sourceId, delivery.Counters(sourceId).m_Presented, kDeliveryMilliseconds))
        throw HostError("the client library has not taken the frame");
    const HostImage expected = JudgeReadPlatform(m_Device.Platform(), pBackBuffer, desc);
    HostImage& front = m_Fronts[pChain] = delivery.LastFrame(sourceId);
    JudgeFrame(front, expected);
}

void CarryOutput::AnswerFront(IDirect3DSwapChain9* pChain, IDirect3DSurface9* pMemory)
{
    const auto front = m_Fronts.find(pChain);
    if (RunOf().m_Mode != RunMode::Answer || front == m_Fronts.end())
        return;
    D3DSURFACE_DESC desc;
    D3DLOCKED_RECT locked;
    const POINT corner = CornerOf(pChain);
    HostCheck(pMemory->GetDesc(&desc), "GetDesc");
    HostCheck(pMemory->LockRect(&locked, nullptr, 0), "LockRect");
    const HostImage& image = front->second;
    const RECT screen = {0, 0, static_cast<LONG>(desc.Width), static_cast<LONG>(desc.Height)};
    const RECT frame = {
        corner.x, corner.y, corner.x + static_cast<LONG>(image.m_Width), corner.y + static_cast<LONG>(image.m_Height)};
    RECT seen{};
    IntersectRect(&seen, &screen, &frame);
    for (LONG y = seen.top; y < seen.bottom; ++y)
        for (LONG x = seen.left; x < seen.right; ++x)
        {
            UINT& pixel = reinterpret_cast<UINT*>(static_cast<BYTE*>(locked.pBits) + y * locked.Pitch)[x];
            pixel = (pixel & 0xFF000000) | image.At(static_cast<UINT>(x - corner.x), static_cast<UINT>(y - corner.y));
        }
    if (const CarryPlace memory = CarryFind(pMemory))
        memory->Write(memory.m_Level, screen, locked.pBits, static_cast<UINT>(locked.Pitch));
    pMemory->UnlockRect();
}
