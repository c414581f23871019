// A stand-in for the platform's DXVA2: records what it is asked, answers what a test scripts, counts what lives.
//
// While it lives, the executable's own calls of DXVA2CreateVideoService get it; for another module give that module's
// handle. One at a time.
#pragma once

#include "ImportPatch.h"
#include "Lines.h"

#include "ddi/ddi.h"

#include <dxva2api.h>

namespace tesslo::test
{

class FakeDxva2
{
public:
    /// @param hModule whose calls are answered; null for the executable.
    explicit FakeDxva2(HMODULE hModule = nullptr);
    ~FakeDxva2();
    FakeDxva2(const FakeDxva2&) = delete;
    FakeDxva2& operator=(const FakeDxva2&) = delete;

    // The script: what the three calls answer. A failing call creates nothing.
    HRESULT ServiceResult = S_OK;
    HRESULT ProcessorResult = S_OK;
    HRESULT BltResult = S_OK;

    // The record. Calls has one entry a creation, a blit, and an object's end, in order.
    Lines Calls;
    int LiveObjects = 0;

    IDirect3DDevice9* pServiceDevice = nullptr;
    IID ServiceIid = {};
    GUID ProcessorGuid = {};
    DXVA2_VideoDesc ProcessorDesc = {};
    D3DFORMAT ProcessorFormat = D3DFMT_UNKNOWN;
    UINT ProcessorSubStreams = 0;

    IDirect3DSurface9* pBltTarget = nullptr;
    DXVA2_VideoProcessBltParams BltParams = {};
    DXVA2_VideoSample BltSample = {};
    UINT BltSampleCount = 0;
    bool BltHasCompletion = false;

private:
    static HRESULT WINAPI InternalCreateService(IDirect3DDevice9* pDevice, REFIID iid, void** ppService);

    ImportPatch m_Patch;
};

}  // namespace tesslo::test
