#include "output/UMDFrameBuffer.h"

#include "util/UMDUtilDebugTrace.h"

UMDFrameBuffer::UMDFrameBuffer(IDirect3DDevice9Ex* pDevice)
    : m_pDevice(pDevice), m_pSurface(), m_pSurfaceMalloc(), m_nIndex(UMD_FRAMEBUFFER_SLOT_COUNT - 1), m_nIndexReady(0)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDFrameBuffer::UMDFrameBuffer\n");
}

UMDFrameBuffer::~UMDFrameBuffer()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDFrameBuffer::~UMDFrameBuffer\n");
    for (UINT i = 0; i < UMD_FRAMEBUFFER_SLOT_COUNT; ++i)
    {
        if (m_pSurface[i])
            m_Surface.Destroy(&m_pSurface[i], &m_pSurfaceMalloc[i]);
    }
}

HRESULT UMDFrameBuffer::DuplicateFrameBuffer(IDirect3DSurface9* pSrcSurface, UINT width, UINT height, D3DFORMAT format)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDFrameBuffer::DuplicateFrameBuffer\n");
    m_nIndex = m_nIndex == UMD_FRAMEBUFFER_SLOT_COUNT - 1 ? 0 : m_nIndex + 1;
    IDirect3DSurface9** ppSurface = &m_pSurface[m_nIndex];
    UMDFrameMemory** ppSurfaceMalloc = &m_pSurfaceMalloc[m_nIndex];
    // A shortage of memory may have left the slot half made. One that the worker has fallen behind with stays the
    // worker's: a copy into it would be refused while it is locked, and a newer frame than the worker took otherwise.
    if (*ppSurface && (!*ppSurfaceMalloc || (*ppSurfaceMalloc)->IsToBeRead()))
        m_Surface.Destroy(ppSurface, ppSurfaceMalloc);
    if (!*ppSurface)
    {
        if (HRESULT hr = m_Surface.Create(m_pDevice, ppSurface, ppSurfaceMalloc, width, height, format); FAILED(hr))
            return UMDFail(hr, L"UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x%x\n", hr);
    }
    if (HRESULT hr = m_Surface.Duplicate(ppSurface, ppSurfaceMalloc, pSrcSurface, width, height, format); FAILED(hr))
        return UMDFail(hr, L"UMDFrameBuffer::DuplicateFrameBuffer failed! hResult:0x%x\n", hr);
    m_nIndexReady = m_nIndex;
    return S_OK;
}

void UMDFrameBuffer::ShareNewest(UMDFrame* pFrame) const
{
    pFrame->m_pSurface.Share(m_pSurface[m_nIndexReady]);
    pFrame->m_pMemory.Share(m_pSurfaceMalloc[m_nIndexReady]);
}

IDirect3DSurface9* UMDFrameBuffer::GetDuplicateFrameBuffer(const UMDFrame& frame)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDFrameBuffer::GetDuplicateFrameBuffer\n");
    return frame.m_pSurface.Get();
}

BYTE* UMDFrameBuffer::GetDuplicateFrameBufferMalloc(const UMDFrame& frame)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDFrameBuffer::GetDuplicateFrameBufferMalloc\n");
    return frame.m_pMemory->Bits();
}
