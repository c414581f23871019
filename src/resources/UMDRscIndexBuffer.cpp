#include "resources/UMDRscIndexBuffer.h"

#include "resources/UMDSurfaceList.h"
#include "util/UMDUtilDebugTrace.h"

UMDRscIndexBuffer::UMDRscIndexBuffer(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
    BOOL openResource, DWORD usage, D3DPOOL pool)
    : UMDRscBase(pDevice, hResourceOS, UMDRESOURCETYPE_INDEXBUFFER), m_Length(0), m_IBPool(D3DPOOL_DEFAULT),
      m_IBFormat(D3DDDIFMT_UNKNOWN), m_IBUsage(0), m_pLocked(nullptr), m_LockedSize(0), m_SurfCount(0)
{
    if (openResource)
        return;
    const D3DDDI_SURFACEINFO surface = UMDFirstSurface(pCreate);
    m_Length = surface.Width * surface.Height;
    m_IBPool = pool;
    m_IBFormat = pCreate->Format;
    m_IBUsage = usage;
    m_SurfCount = UMDSurfaceCount(pCreate);
}

UMDRscIndexBuffer::~UMDRscIndexBuffer() = default;

HRESULT UMDRscIndexBuffer::Create()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscIndexBuffer::Create failed! m_pDeviceDelegated = NULL\n");
    if (!m_SurfCount)
        return UMDFail(E_FAIL, L"UMDRscIndexBuffer::Create failed! m_SurfCount = %d\n", m_SurfCount);
    const HRESULT hr = m_pDeviceDelegated->CreateIndexBuffer(
        m_Length, m_IBUsage, static_cast<D3DFORMAT>(m_IBFormat), m_IBPool, m_pIndexBuffer.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscIndexBuffer::Create CreateIndexBuffer failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_DETAIL,
        L"UMDRscIndexBuffer::Create Length=%d Usage=%d Format=%d Pool=%d IndexBuffer:0x%x this:0x%x\n", m_Length,
        m_IBUsage, m_IBFormat, m_IBPool, UMDLow32(m_pIndexBuffer.Get()), UMDLow32(this));
    return S_OK;
}

void UMDRscIndexBuffer::Destroy()
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscIndexBuffer::Destroy m_pIndexBuffer:0x%x this:0x%x\n",
        UMDLow32(m_pIndexBuffer.Get()), UMDLow32(this));
    m_pIndexBuffer.Reset();
}

HRESULT UMDRscIndexBuffer::Lock(UINT, UINT offset, UINT size, void** ppData, UINT*, DWORD flags)
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"UMDRscIndexBuffer::Lock 0x%x m_Pool:%d\n", UMDLow32(m_pIndexBuffer.Get()), m_IBPool);
    if (!m_pIndexBuffer)
        return UMDFail(E_FAIL, L"UMDRscIndexBuffer::Lock Lock not supported!\n");
    if (HRESULT hr = m_pIndexBuffer->Lock(offset, size, &m_pLocked, flags); FAILED(hr))
        return UMDFail(hr, L"UMDRscIndexBuffer::Lock Lock failed! 0x%x\n", hr);
    *ppData = m_pLocked;
    m_LockedSize = size;
    return S_OK;
}

HRESULT UMDRscIndexBuffer::Unlock()
{
    // The text says Lock here too.
    UMD_TRACE(UMDTRACE_RESOURCE, L"UMDRscIndexBuffer::Lock 0x%x\n", UMDLow32(m_pIndexBuffer.Get()));
    if (!m_pIndexBuffer)
        return E_FAIL;
    if (HRESULT hr = m_pIndexBuffer->Unlock(); FAILED(hr))
        return UMDFail(hr, L"UMDRscIndexBuffer::Unlock Unlock failed! 0x%x\n", hr);
    return S_OK;
}
