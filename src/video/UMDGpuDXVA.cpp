#include "video/UMDGpuDXVA.h"

#include "device/UMDDdiDevice.h"
#include "resources/UMDRscRenderTargetCapable.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"
#include "video/UMDDxva2Layout.h"

#include <bit>
#include <cstring>
#include <utility>

namespace
{
/// IID_IDirectXVideoProcessorService, which no import library holds.
constexpr GUID kIidProcessorService = {0xFC51A552, 0xD5E7, 0x11D9, {0xAF, 0x55, 0x00, 0x05, 0x4E, 0x43, 0xFF, 0x02}};

/// The delegated surface of a resource's sub-resource 0, null when the handle has none. Borrowed.
IDirect3DSurface9* SurfaceOf(HANDLE hResource)
{
    auto* pResource = dynamic_cast<UMDRscRenderTargetCapable*>(ToResource(hResource));
    return pResource ? pResource->GetSurface(0, 0) : nullptr;
}
}  // namespace

UMDGpuDXVA::UMDGpuDXVA(UMDDdiDevice* pDevice) : m_pDeviceContext(pDevice), m_hRenderTarget(nullptr) {}

UMDGpuDXVA::~UMDGpuDXVA()
{
    InternalRelease();
}

HRESULT UMDGpuDXVA::Create(const D3DDDIARG_CREATEVIDEOPROCESSDEVICE* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::Create %d %d\n", pArgs->RenderTargetFormat, pArgs->MaxSubStreams);

    IDirect3DDevice9Ex* pDevice = m_pDeviceContext->GetDevice();
    UMDComPtr<IDirectXVideoProcessorService> pService;
    HRESULT hr = E_FAIL;
    if (pDevice)
        hr = DXVA2CreateVideoService(pDevice, kIidProcessorService, reinterpret_cast<void**>(pService.Put()));
    if (FAILED(hr))
        return UMDFail(hr, L"UMDGpuDXVA::Create DXVA2CreateVideoService failed! 0x%x\n", hr);

    const auto desc = std::bit_cast<DXVA2_VideoDesc>(pArgs->VideoDesc);
    UMDComPtr<IDirectXVideoProcessor> pProcessor;
    hr = pService->CreateVideoProcessor(*pArgs->pVideoProcGuid, &desc,
        static_cast<D3DFORMAT>(pArgs->RenderTargetFormat), pArgs->MaxSubStreams, pProcessor.Put());
    if (FAILED(hr))
        return UMDFail(hr, L"UMDGpuDXVA::Create CreateVideoProcessor failed! 0x%x\n", hr);

    m_pVideoProcessor = std::move(pProcessor);
    m_pVideoProcessorService = std::move(pService);
    return S_OK;
}

HRESULT UMDGpuDXVA::Destroy()
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDDdiDevice::DeviceVideoProcessDestroy\n");
    InternalRelease();
    return S_OK;
}

HRESULT UMDGpuDXVA::SetRenderTarget(const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::SetRenderTarget hVideoProcess:0x%x hRenderTarget:0x%x\n",
        UMDLow32(pArgs->hVideoProcess), UMDLow32(pArgs->hRenderTarget));

    IDirect3DSurface9* pSurface = SurfaceOf(pArgs->hRenderTarget);
    if (!pSurface)
        return UMDFail(E_FAIL, L"UMDGpuDXVA::SetRenderTarget pSurface is NULL\n");

    m_hRenderTarget = pArgs->hRenderTarget;
    m_pRenderTarget.Share(pSurface);
    IDirect3DDevice9Ex* pDevice = m_pDeviceContext->GetDevice();
    if (HRESULT hr = pDevice ? pDevice->SetRenderTarget(0, pSurface) : E_FAIL; FAILED(hr))
        return UMDFail(hr, L"UMDGpuDXVA::SetRenderTarget SetRenderTarget failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDGpuDXVA::BeginFrame(HANDLE hVideoProcess)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::BeginFrame hVideoProcess:0x%x\n", UMDLow32(hVideoProcess));
    return S_OK;
}

HRESULT UMDGpuDXVA::EndFrame(const D3DDDIARG_VIDEOPROCESSENDFRAME* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::EndFrame hVideoProcess:0x%x\n", UMDLow32(pArgs->hVideoProcess));
    return S_OK;
}

HRESULT UMDGpuDXVA::Blt(const D3DDDIARG_VIDEOPROCESSBLT* pArgs)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::Blt hVideoProcess:0x%x NumSrcSurfaces:%d\n",
        UMDLow32(pArgs->hVideoProcess), pArgs->NumSrcSurfaces);

    DXVA2_VideoProcessBltParams params = {};
    DXVA2_VideoSample sample = {};
    InternalSetBltParams(pArgs, &params);
    InternalSetBltSamples(pArgs, &sample);

    if (!m_pRenderTarget)
        return UMDFail(E_FAIL, L"UMDGpuDXVA::Blt pCurrentVideoSurface is NULL\n");
    if (pArgs->NumSrcSurfaces != 1)
        return UMDFail(E_NOTIMPL, L"UMDGpuDXVA::Blt NumSrcSurfaces:%d failed!\n", pArgs->NumSrcSurfaces);
    if (!sample.SrcSurface)
        return UMDFail(E_FAIL, L"UMDGpuDXVA::Blt pSurface is NULL\n");
    if (!m_pVideoProcessor)
        return UMDFail(E_FAIL, L"UMDGpuDXVA::Blt m_pVideoProcessor is NULL\n");

    HRESULT hr =
        m_pVideoProcessor->VideoProcessBlt(m_pRenderTarget.Get(), &params, &sample, pArgs->NumSrcSurfaces, nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDGpuDXVA::Blt UMDDdiVideoProcessBlt failed! 0x%x\n", hr);
    return S_OK;
}

void UMDGpuDXVA::InternalRelease()
{
    m_pVideoProcessor.Reset();
    m_pVideoProcessorService.Reset();
}

void UMDGpuDXVA::InternalSetBltParams(const D3DDDIARG_VIDEOPROCESSBLT* pArgs, DXVA2_VideoProcessBltParams* pParams)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::InternalSetBltParams\n");

    pParams->TargetFrame = pArgs->TargetFrame;
    pParams->TargetRect = pArgs->TargetRect;
    pParams->ConstrictionSize = pArgs->ConstrictionSize;
    pParams->StreamingFlags = pArgs->StreamingFlags;
    pParams->BackgroundColor = std::bit_cast<DXVA2_AYUVSample16>(pArgs->BackgroundColor);
    pParams->DestFormat = std::bit_cast<DXVA2_ExtendedFormat>(pArgs->DestFormat);
    pParams->ProcAmpValues = std::bit_cast<DXVA2_ProcAmpValues>(pArgs->ProcAmpValues);
    pParams->Alpha = std::bit_cast<DXVA2_Fixed32>(pArgs->Alpha);
    pParams->NoiseFilterLuma = std::bit_cast<DXVA2_FilterValues>(pArgs->NoiseFilterLuma);
    pParams->NoiseFilterChroma = std::bit_cast<DXVA2_FilterValues>(pArgs->NoiseFilterChroma);
    pParams->DetailFilterLuma = std::bit_cast<DXVA2_FilterValues>(pArgs->DetailFilterLuma);
    pParams->DetailFilterChroma = std::bit_cast<DXVA2_FilterValues>(pArgs->DetailFilterChroma);
    pParams->DestData = pArgs->DestFlags.DestData;  // the upper half of the flags word
    UMDUtilDebugTracePrintVideoProcessBlt(pArgs);
}

void UMDGpuDXVA::InternalSetBltSamples(const D3DDDIARG_VIDEOPROCESSBLT* pArgs, DXVA2_VideoSample* pSample)
{
    UMD_TRACE(UMDTRACE_VIDEO, L">>> UMDGpuDXVA::InternalSetBltSamples\n");
    if (pArgs->NumSrcSurfaces != 1)
        return;

    const DXVADDI_VIDEOSAMPLE& source = *pArgs->pSrcSurfaces;
    pSample->Start = source.Start;
    pSample->End = source.End;
    pSample->SampleFormat = std::bit_cast<DXVA2_ExtendedFormat>(source.SampleFormat);
    pSample->SrcSurface = SurfaceOf(source.SrcResource);
    pSample->SrcRect = source.SrcRect;
    pSample->DstRect = source.DstRect;
    std::memcpy(pSample->Pal, source.Pal, sizeof(pSample->Pal));
    pSample->PlanarAlpha = std::bit_cast<DXVA2_Fixed32>(source.PlanarAlpha);
    pSample->SampleData = source.SampleFlags.SampleData;  // the upper half of the flags word
    UMDUtilDebugTracePrintVideoSample(&source);
}
