#include "resources/UMDRscVertexBuffer.h"

#include "resources/UMDSurfaceList.h"
#include "util/UMDUtilDebugTrace.h"

#include <cstring>

UMDRscVertexBuffer::UMDRscVertexBuffer(UMDDdiDevice* pDevice, HANDLE hResourceOS,
    const D3DDDIARG_CREATERESOURCE* pCreate, BOOL openResource, DWORD usage, D3DPOOL pool)
    : UMDRscBase(pDevice, hResourceOS, UMDRESOURCETYPE_VERTEXBUFFER), m_Length(0), m_VBUsage(0), m_Fvf(0),
      m_VBPool(D3DPOOL_DEFAULT), m_pLocked(nullptr), m_LockedSize(0), m_pSysMem(nullptr), m_SysMemPitch(0),
      m_SurfCount(0)
{
    if (openResource)
        return;
    const D3DDDI_SURFACEINFO surface = UMDFirstSurface(pCreate);
    m_Length = surface.Width * surface.Height;
    m_VBUsage = usage;
    m_Fvf = pCreate->Fvf;
    m_VBPool = pool;
    // The runtime's to write: a lock hands it back.
    m_pSysMem = static_cast<BYTE*>(const_cast<void*>(surface.pSysMem));
    m_SysMemPitch = surface.SysMemPitch;
    m_SurfCount = UMDSurfaceCount(pCreate);
}

UMDRscVertexBuffer::~UMDRscVertexBuffer() = default;

HRESULT UMDRscVertexBuffer::Create()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscVertexBuffer::Create failed! m_pDeviceDelegated = NULL\n");
    if (!m_SurfCount)
        return UMDFail(E_FAIL, L"UMDRscVertexBuffer::Create failed! m_SurfCount = %d\n", m_SurfCount);
    const HRESULT hr =
        m_pDeviceDelegated->CreateVertexBuffer(m_Length, m_VBUsage, m_Fvf, m_VBPool, m_pVertexBuffer.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscVertexBuffer::Create CreateVertexBuffer failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscVertexBuffer::Create Length=%d Usage=%d Pool=%d IndexBuffer:0x%x this:0x%x\n",
        m_Length, m_VBUsage, m_VBPool, UMDLow32(m_pVertexBuffer.Get()), UMDLow32(this));
    return S_OK;
}

void UMDRscVertexBuffer::Destroy()
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscVertexBuffer::Destroy m_pVertexBuffer:0x%x this:0x%x\n",
        UMDLow32(m_pVertexBuffer.Get()), UMDLow32(this));
    m_pVertexBuffer.Reset();
}

HRESULT UMDRscVertexBuffer::Lock(UINT, UINT offset, UINT size, void** ppData, UINT*, DWORD flags)
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"UMDRscVertexBuffer::VertexBuffer 0x%x\n", UMDLow32(m_pVertexBuffer.Get()));
    if (!m_pVertexBuffer)
        return UMDFail(E_FAIL, L"UMDRscVertexBuffer::Lock NULL == m_pVertexBuffer\n");
    if (m_VBPool == D3DPOOL_SYSTEMMEM)
    {
        *ppData = m_pSysMem;
        m_pLocked = m_pSysMem;
        m_LockedSize = m_SysMemPitch;
        return S_OK;
    }
    if (HRESULT hr = m_pVertexBuffer->Lock(offset, size, &m_pLocked, flags); FAILED(hr))
        return UMDFail(hr, L"UMDRscVertexBuffer::Lock Lock failed! 0x%x\n", hr);
    *ppData = m_pLocked;
    m_LockedSize = size;
    return S_OK;
}

HRESULT UMDRscVertexBuffer::Unlock()
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"UMDRscVertexBuffer::Unlock VertexBuffer 0x%x\n", UMDLow32(m_pVertexBuffer.Get()));
    if (!m_pVertexBuffer)
        return UMDFail(E_FAIL, L"UMDRscVertexBuffer::Unlock failed! NULL == m_pVertexBuffer\n");
    if (m_VBPool == D3DPOOL_SYSTEMMEM)
        return S_OK;
    if (HRESULT hr = m_pVertexBuffer->Unlock(); FAILED(hr))
        return UMDFail(hr, L"UMDRscVertexBuffer::Unlock Unlock failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDRscVertexBuffer::WriteToDelegated(UINT offset)
{
    UMD_TRACE(
        UMDTRACE_DETAIL, L"UMDRscVertexBuffer::WriteToDelegated VertexBuffer 0x%x\n", UMDLow32(m_pVertexBuffer.Get()));
    if (!m_pSysMem)
        return S_OK;
    // Whether offset and length fit together is the delegated buffer's to decide.
    void* pLocked = nullptr;
    if (HRESULT hr = m_pVertexBuffer->Lock(offset, m_Length, &pLocked, 0); FAILED(hr))
        return UMDFail(hr, L"UMDRscVertexBuffer::WriteToDelegated Lock failed! 0x%x\n", hr);
    std::memcpy(pLocked, m_pSysMem, m_Length);
    if (HRESULT hr = m_pVertexBuffer->Unlock(); FAILED(hr))
        return UMDFail(hr, L"UMDRscVertexBuffer::WriteToDelegated Unlock failed! 0x%x\n", hr);
    return S_OK;
}
