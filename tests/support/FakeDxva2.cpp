#include "FakeDxva2.h"

namespace tesslo::test
{

namespace
{
FakeDxva2* g_pDxva2 = nullptr;

/// Counted references, and an entry in the record when the last one goes.
template <typename Interface>
class Counted : public Interface
{
public:
    explicit Counted(const char* pName) : m_pName(pName) { ++g_pDxva2->LiveObjects; }
    virtual ~Counted() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_References; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG references = --m_References;
        if (!references)
        {
            g_pDxva2->Calls.push_back(std::string(m_pName) + " freed");
            --g_pDxva2->LiveObjects;
            delete this;
        }
        return references;
    }

private:
    const char* m_pName;
    ULONG m_References = 1;
};

// Only what the driver calls is recorded; everything else is refused.
class Processor final : public Counted<IDirectXVideoProcessor>
{
public:
    Processor() : Counted("processor") {}

    HRESULT STDMETHODCALLTYPE GetVideoProcessorService(IDirectXVideoProcessorService**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCreationParameters(GUID*, DXVA2_VideoDesc*, D3DFORMAT*, UINT*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetVideoProcessorCaps(DXVA2_VideoProcessorCaps*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetProcAmpRange(UINT, DXVA2_ValueRange*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFilterPropertyRange(UINT, DXVA2_ValueRange*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE VideoProcessBlt(IDirect3DSurface9* pRenderTarget,
        const DXVA2_VideoProcessBltParams* pBltParams, const DXVA2_VideoSample* pSamples, UINT count,
        HANDLE* pHandleComplete) override
    {
        g_pDxva2->Calls.push_back("VideoProcessBlt");
        g_pDxva2->pBltTarget = pRenderTarget;
        g_pDxva2->BltParams = *pBltParams;
        g_pDxva2->BltSample = *pSamples;
        g_pDxva2->BltSampleCount = count;
        g_pDxva2->BltHasCompletion = pHandleComplete != nullptr;
        return g_pDxva2->BltResult;
    }
};

class Service final : public Counted<IDirectXVideoProcessorService>
{
public:
    Service() : Counted("service") {}

    HRESULT STDMETHODCALLTYPE CreateSurface(
        UINT, UINT, UINT, D3DFORMAT, D3DPOOL, DWORD, DWORD, IDirect3DSurface9**, HANDLE*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RegisterVideoProcessorSoftwareDevice(void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVideoProcessorDeviceGuids(const DXVA2_VideoDesc*, UINT*, GUID**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetVideoProcessorRenderTargets(
        REFGUID, const DXVA2_VideoDesc*, UINT*, D3DFORMAT**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetVideoProcessorSubStreamFormats(
        REFGUID, const DXVA2_VideoDesc*, D3DFORMAT, UINT*, D3DFORMAT**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetVideoProcessorCaps(
        REFGUID, const DXVA2_VideoDesc*, D3DFORMAT, DXVA2_VideoProcessorCaps*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetProcAmpRange(
        REFGUID, const DXVA2_VideoDesc*, D3DFORMAT, UINT, DXVA2_ValueRange*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetFilterPropertyRange(
        REFGUID, const DXVA2_VideoDesc*, D3DFORMAT, UINT, DXVA2_ValueRange*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateVideoProcessor(REFGUID guid, const DXVA2_VideoDesc* pVideoDesc, D3DFORMAT format,
        UINT subStreams, IDirectXVideoProcessor** ppProcessor) override
    {
        g_pDxva2->Calls.push_back("CreateVideoProcessor");
        g_pDxva2->ProcessorGuid = guid;
        g_pDxva2->ProcessorDesc = *pVideoDesc;
        g_pDxva2->ProcessorFormat = format;
        g_pDxva2->ProcessorSubStreams = subStreams;
        if (SUCCEEDED(g_pDxva2->ProcessorResult))
            *ppProcessor = new Processor;
        return g_pDxva2->ProcessorResult;
    }
};
}  // namespace

FakeDxva2::FakeDxva2(HMODULE hModule) : m_Patch(hModule, "dxva2.dll", "DXVA2CreateVideoService", InternalCreateService)
{
    g_pDxva2 = this;
}

FakeDxva2::~FakeDxva2()
{
    g_pDxva2 = nullptr;
}

HRESULT WINAPI FakeDxva2::InternalCreateService(IDirect3DDevice9* pDevice, REFIID iid, void** ppService)
{
    g_pDxva2->Calls.push_back("DXVA2CreateVideoService");
    g_pDxva2->pServiceDevice = pDevice;
    g_pDxva2->ServiceIid = iid;
    if (SUCCEEDED(g_pDxva2->ServiceResult))
        *ppService = static_cast<IDirectXVideoProcessorService*>(new Service);
    return g_pDxva2->ServiceResult;
}

}  // namespace tesslo::test
