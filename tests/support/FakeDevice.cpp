#include "FakeDevice.h"

#include <algorithm>
#include <new>
#include <utility>

namespace tesslo::test
{

namespace
{

thread_local FakeSurface* t_pNewest;

}  // namespace

FakeDevice::FakeDevice() : FakeDeviceMethods(static_cast<FakeObjects&>(*this), "") {}

FakeDevice::~FakeDevice()
{
    for (IDirect3DSurface9*& pTarget : m_RenderTargets)
        pTarget = nullptr;
    DeleteLeaks();
}

void FakeDevice::InternalShare(HANDLE* pSharedHandle)
{
    if (pSharedHandle)
        m_hLastShared = *pSharedHandle;
    if (pSharedHandle && !*pSharedHandle)
        *pSharedHandle = m_hShared;
}

// What a test's script fails or counts is the driver's own memory, not the fakes'.
template <typename Object, typename Interface, typename... Arguments>
HRESULT FakeDevice::InternalMake(Interface** ppObject, const char* pName, const Arguments&... arguments)
{
    FailNthAllocation::Pause pause;
    try
    {
        *ppObject = new Object(*this, NextName(pName), arguments...);
        return S_OK;
    }
    catch (const std::bad_alloc&)
    {
        *ppObject = nullptr;
        return D3DERR_OUTOFVIDEOMEMORY;
    }
}

HRESULT FakeDevice::InternalMakeSurface(
    const D3DSURFACE_DESC& desc, IDirect3DSurface9** ppSurface, HANDLE* pSharedHandle)
{
    if (std::max(desc.Width, desc.Height) > m_Largest)
        return D3DERR_INVALIDCALL;
    InternalShare(pSharedHandle);
    const HRESULT hr = InternalMake<FakeSurface>(ppSurface, "surface", desc, m_Rows);
    t_pNewest = static_cast<FakeSurface*>(*ppSurface);
    return hr;
}

FakeSurface* FakeDevice::NewestSurface()
{
    return t_pNewest;
}

HRESULT FakeDevice::CreateTexture(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
    IDirect3DTexture9** ppTexture, HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateTexture(width, height, levels, usage, format, pool, ppTexture, pSharedHandle);
    if (FAILED(hr))
        return hr;
    if (std::max(width, height) > m_Largest)
        return D3DERR_INVALIDCALL;
    InternalShare(pSharedHandle);
    const D3DSURFACE_DESC desc{format, D3DRTYPE_SURFACE, usage, pool, D3DMULTISAMPLE_NONE, 0, width, height};
    return InternalMake<FakeTexture>(ppTexture, "texture", desc, levels, m_Rows);
}

HRESULT FakeDevice::CreateCubeTexture(UINT edge, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
    IDirect3DCubeTexture9** ppTexture, HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateCubeTexture(edge, levels, usage, format, pool, ppTexture, pSharedHandle);
    if (FAILED(hr))
        return hr;
    if (edge > m_Largest)
        return D3DERR_INVALIDCALL;
    InternalShare(pSharedHandle);
    const D3DSURFACE_DESC desc{format, D3DRTYPE_SURFACE, usage, pool, D3DMULTISAMPLE_NONE, 0, edge, edge};
    return InternalMake<FakeCubeTexture>(ppTexture, "cube", desc, levels, m_Rows);
}

HRESULT FakeDevice::CreateVertexBuffer(
    UINT size, DWORD usage, DWORD fvf, D3DPOOL pool, IDirect3DVertexBuffer9** ppBuffer, HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateVertexBuffer(size, usage, fvf, pool, ppBuffer, pSharedHandle);
    if (FAILED(hr))
        return hr;
    if (size > m_Largest)
        return D3DERR_INVALIDCALL;
    const D3DVERTEXBUFFER_DESC desc{D3DFMT_VERTEXDATA, D3DRTYPE_VERTEXBUFFER, usage, pool, size, fvf};
    return InternalMake<FakeVertexBuffer>(ppBuffer, "vertexbuffer", desc, m_Rows.m_bFenced);
}

HRESULT FakeDevice::CreateIndexBuffer(
    UINT size, DWORD usage, D3DFORMAT format, D3DPOOL pool, IDirect3DIndexBuffer9** ppBuffer, HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateIndexBuffer(size, usage, format, pool, ppBuffer, pSharedHandle);
    if (FAILED(hr))
        return hr;
    if (size > m_Largest)
        return D3DERR_INVALIDCALL;
    const D3DINDEXBUFFER_DESC desc{format, D3DRTYPE_INDEXBUFFER, usage, pool, size};
    return InternalMake<FakeIndexBuffer>(ppBuffer, "indexbuffer", desc, m_Rows.m_bFenced);
}

HRESULT FakeDevice::CreateRenderTarget(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE multisampleType,
    DWORD multisampleQuality, BOOL lockable, IDirect3DSurface9** ppSurface, HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateRenderTarget(
        width, height, format, multisampleType, multisampleQuality, lockable, ppSurface, pSharedHandle);
    if (FAILED(hr))
        return hr;
    return InternalMakeSurface({format, D3DRTYPE_SURFACE, D3DUSAGE_RENDERTARGET, D3DPOOL_DEFAULT, multisampleType,
                                   multisampleQuality, width, height},
        ppSurface, pSharedHandle);
}

HRESULT FakeDevice::CreateDepthStencilSurface(UINT width, UINT height, D3DFORMAT format,
    D3DMULTISAMPLE_TYPE multisampleType, DWORD multisampleQuality, BOOL discard, IDirect3DSurface9** ppSurface,
    HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateDepthStencilSurface(
        width, height, format, multisampleType, multisampleQuality, discard, ppSurface, pSharedHandle);
    if (FAILED(hr))
        return hr;
    return InternalMakeSurface({format, D3DRTYPE_SURFACE, D3DUSAGE_DEPTHSTENCIL, D3DPOOL_DEFAULT, multisampleType,
                                   multisampleQuality, width, height},
        ppSurface, pSharedHandle);
}

HRESULT FakeDevice::CreateOffscreenPlainSurface(
    UINT width, UINT height, D3DFORMAT format, D3DPOOL pool, IDirect3DSurface9** ppSurface, HANDLE* pSharedHandle)
{
    HRESULT hr = FakeDeviceMethods::CreateOffscreenPlainSurface(width, height, format, pool, ppSurface, pSharedHandle);
    if (FAILED(hr))
        return hr;
    return InternalMakeSurface(
        {format, D3DRTYPE_SURFACE, 0, pool, D3DMULTISAMPLE_NONE, 0, width, height}, ppSurface, pSharedHandle);
}

HRESULT FakeDevice::CreateVertexDeclaration(
    const D3DVERTEXELEMENT9* pElements, IDirect3DVertexDeclaration9** ppDeclaration)
{
    if (HRESULT hr = FakeDeviceMethods::CreateVertexDeclaration(pElements, ppDeclaration); FAILED(hr))
        return hr;
    return InternalMake<FakeVertexDeclaration>(ppDeclaration, "declaration");
}

HRESULT FakeDevice::CreateVertexShader(const DWORD* pByteCode, IDirect3DVertexShader9** ppShader)
{
    if (HRESULT hr = FakeDeviceMethods::CreateVertexShader(pByteCode, ppShader); FAILED(hr))
        return hr;
    return InternalMake<FakeVertexShader>(ppShader, "vertexshader");
}

HRESULT FakeDevice::CreatePixelShader(const DWORD* pByteCode, IDirect3DPixelShader9** ppShader)
{
    if (HRESULT hr = FakeDeviceMethods::CreatePixelShader(pByteCode, ppShader); FAILED(hr))
        return hr;
    return InternalMake<FakePixelShader>(ppShader, "pixelshader");
}

HRESULT FakeDevice::SetRenderTarget(DWORD index, IDirect3DSurface9* pSurface)
{
    if (HRESULT hr = FakeDeviceMethods::SetRenderTarget(index, pSurface); FAILED(hr))
        return hr;
    if (index >= kRenderTargetCount)
        return D3DERR_INVALIDCALL;
    if (pSurface)
        pSurface->AddRef();
    if (IDirect3DSurface9* pPrevious = std::exchange(m_RenderTargets[index], pSurface))
        pPrevious->Release();
    return S_OK;
}

HRESULT FakeDevice::GetRenderTarget(DWORD index, IDirect3DSurface9** ppSurface)
{
    if (HRESULT hr = FakeDeviceMethods::GetRenderTarget(index, ppSurface); FAILED(hr))
        return hr;
    if (index >= kRenderTargetCount || !m_RenderTargets[index])
        return D3DERR_NOTFOUND;
    m_RenderTargets[index]->AddRef();
    *ppSurface = m_RenderTargets[index];
    return S_OK;
}

HRESULT FakeDevice::GetRenderTargetData(IDirect3DSurface9* pRenderTarget, IDirect3DSurface9* pDestination)
{
    if (HRESULT hr = FakeDeviceMethods::GetRenderTargetData(pRenderTarget, pDestination); FAILED(hr))
        return hr;
    auto* pFrom = dynamic_cast<FakeSurface*>(pRenderTarget);
    auto* pTo = dynamic_cast<FakeSurface*>(pDestination);
    if (!pFrom || !pTo || pFrom->Desc().Format != pTo->Desc().Format || pFrom->Desc().Width != pTo->Desc().Width ||
        pFrom->Desc().Height != pTo->Desc().Height)
        return D3DERR_INVALIDCALL;
    return pTo->Pixels().CopyFrom(pFrom->Pixels()) ? S_OK : kSurfaceBusy;
}

}  // namespace tesslo::test
