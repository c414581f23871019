#include "device/UMDDdiDevice.h"
#include "resources/UMDRscVertexBuffer.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT UMDDdiDevice::DrawPrimitive(const D3DDDIARG_DRAWPRIMITIVE* pDraw)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DrawPrimitive\n");
    IDirect3DDevice9Ex* pDevice = GetDevice();
    if (!pDevice)
        return UMDFail(E_FAIL, L"UMDDdiDevice::DrawPrimitive NULL == pDelegatedDevice\n");
    if (m_pStreamSource0VertexBufferPointer)
    {
        const size_t offset = size_t{pDraw->VStart} * m_StreamSource0Stride;
        const BYTE* pVertices = m_pStreamSource0VertexBufferPointer + offset;
        if (HRESULT hr =
                pDevice->DrawPrimitiveUP(pDraw->PrimitiveType, pDraw->PrimitiveCount, pVertices, m_StreamSource0Stride);
            FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::DrawPrimitive DrawPrimitiveUP failed! 0x%x\n", hr);
    }
    else
    {
        if (!m_pStreamSource0VertexBufferResource)
            return UMDFail(E_FAIL, L"UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n");
        if (HRESULT hr = m_pStreamSource0VertexBufferResource->WriteToDelegated(m_StreamSource0Offset); FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::DrawPrimitive WriteToDelegated failed! 0x%x\n", hr);
        if (HRESULT hr = pDevice->DrawPrimitive(pDraw->PrimitiveType, pDraw->VStart, pDraw->PrimitiveCount); FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::DrawPrimitive m_ThreadGpuD3D9.DrawPrimitive failed! 0x%x\n", hr);
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DrawPrimitive\n");
    return S_OK;
}

HRESULT UMDDdiDevice::DrawPrimitive2(const D3DDDIARG_DRAWPRIMITIVE2* pDraw)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DrawPrimitive2\n");
    if (m_pStreamSource0VertexBufferResource)
    {
        m_pStreamSource0VertexBufferResource->WriteToDelegated(0);  // a failed upload draws what was there before
        // A stride of 0 faults here; the entry's guard answers for it.
        const UINT startVertex = pDraw->FirstVertexOffset / m_StreamSource0Stride;
        if (HRESULT hr = GetDevice()->DrawPrimitive(pDraw->PrimitiveType, startVertex, pDraw->PrimitiveCount);
            FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::DrawPrimitive2 DrawPrimitive failed! 0x%x\n", hr);
    }
    else
    {
        if (!m_pStreamSource0VertexBufferPointer)
            return UMDFail(E_FAIL, L"UMDDdiDevice::DrawPrimitive2 failed! stream 0 is not set\n");
        // FirstVertexOffset is not applied to user memory.
        if (HRESULT hr = GetDevice()->DrawPrimitiveUP(pDraw->PrimitiveType, pDraw->PrimitiveCount,
                m_pStreamSource0VertexBufferPointer, m_StreamSource0Stride);
            FAILED(hr))
            return UMDFail(hr, L"UMDDdiDevice::DrawPrimitive2 DrawPrimitiveUP failed! 0x%x\n", hr);
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DrawPrimitive2\n");
    return S_OK;
}

HRESULT UMDDdiDevice::DrawIndexedPrimitive(const D3DDDIARG_DRAWINDEXEDPRIMITIVE* pDraw)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DrawIndexedPrimitive\n");
    if (HRESULT hr = GetDevice()->DrawIndexedPrimitive(pDraw->PrimitiveType, pDraw->BaseVertexIndex, pDraw->MinIndex,
            pDraw->NumVertices, pDraw->StartIndex, pDraw->PrimitiveCount);
        FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::DrawIndexedPrimitive DrawIndexedPrimitive failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DrawIndexedPrimitive\n");
    return S_OK;
}

HRESULT UMDDdiDevice::DrawIndexedPrimitive2(
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2* pDraw, UINT indexSize, const void* pIndices)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DrawIndexedPrimitive2\n");
    if (!m_pStreamSource0VertexBufferPointer)
    {
        if (!m_pStreamSource0VertexBufferResource)
            return UMDFail(E_FAIL, L"UMDDdiDevice::DrawIndexedPrimitive2 failed! stream 0 is not set\n");
        if (HRESULT hr = m_pStreamSource0VertexBufferResource->WriteToDelegated(0); FAILED(hr))
            return UMDFail(hr,
                L"UMDDdiDevice::DrawIndexedPrimitive2 m_pStreamSource0VertexBufferResource->WriteToDelegated failed! 0x%x\n",
                hr);
        // Stays until the next stream source: later draws without indices take the user-memory path too.
        m_pStreamSource0VertexBufferPointer = m_pStreamSource0VertexBufferResource->SystemMemory();
        if (!m_pStreamSource0VertexBufferPointer)
            return UMDFail(
                E_FAIL, L"UMDDdiDevice::DrawIndexedPrimitive2 m_pStreamSource0VertexBufferPointer is NULL\n");
    }
    // StartIndexOffset is not applied.
    if (HRESULT hr = GetDevice()->DrawIndexedPrimitiveUP(pDraw->PrimitiveType, pDraw->MinIndex, pDraw->NumVertices,
            pDraw->PrimitiveCount, pIndices, indexSize == 2 ? D3DFMT_INDEX16 : D3DFMT_INDEX32,
            m_pStreamSource0VertexBufferPointer + pDraw->BaseVertexOffset, m_StreamSource0Stride);
        FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::DrawIndexedPrimitive2 DrawIndexedPrimitive failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DrawIndexedPrimitive2\n");
    return S_OK;
}
