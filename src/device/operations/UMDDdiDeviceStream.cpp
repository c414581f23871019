#include "device/UMDDdiDevice.h"
#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscVertexBuffer.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT UMDDdiDevice::SetStreamSource(const D3DDDIARG_SETSTREAMSOURCE* pSetStreamSource)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetStreamSource\n");
    if (!pSetStreamSource->hVertexBuffer)
        return S_OK;
    if (pSetStreamSource->Stream != 0)
        return UMDFail(
            E_NOTIMPL, L"UMDDdiDevice::SetStreamSource stream not implemented! %d\n", pSetStreamSource->Stream);
    auto* pVertexBuffer = static_cast<UMDRscVertexBuffer*>(ToResource(pSetStreamSource->hVertexBuffer));
    if (HRESULT hr = GetDevice()->SetStreamSource(
            0, pVertexBuffer->GetVertexBuffer(), pSetStreamSource->Offset, pSetStreamSource->Stride);
        FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetStreamSource SetStreamSource failed! 0x%x\n", hr);
    m_StreamSource0Offset = pSetStreamSource->Offset;
    m_StreamSource0Stride = pSetStreamSource->Stride;
    m_pStreamSource0VertexBufferPointer = nullptr;
    m_pStreamSource0VertexBufferResource = pVertexBuffer;
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetStreamSource\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetStreamSourceUM(const D3DDDIARG_SETSTREAMSOURCEUM* pSetUMStream, const void* pData)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetStreamSourceUM\n");
    if (!pSetUMStream || !pData)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetStreamSourceUM pSetUMStream | pData is NULL\n");
        return S_OK;
    }
    if (pSetUMStream->Stream != 0)
        return UMDFail(E_NOTIMPL, L"UMDDdiDevice::SetStreamSourceUM Steam is not 0 %d\n", pSetUMStream->Stream);
    m_pStreamSource0VertexBufferResource = nullptr;
    m_pStreamSource0VertexBufferPointer = static_cast<const BYTE*>(pData);
    m_StreamSource0Stride = pSetUMStream->Stride;
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDDdiDevice::SetStreamSourceUM Resource:0x%x Pointer:0x%x Stride:%d\n",
        UMDLow32(m_pStreamSource0VertexBufferResource), UMDLow32(m_pStreamSource0VertexBufferPointer),
        m_StreamSource0Stride);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetStreamSourceUM\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetIndices(const D3DDDIARG_SETINDICES* pSetIndices)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetIndices\n");
    if (!pSetIndices)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetIndices pSetIndices is NULL\n");
        return S_OK;
    }
    if (!pSetIndices->hIndexBuffer)
        return S_OK;
    IDirect3DIndexBuffer9* pIndexBuffer =
        static_cast<UMDRscIndexBuffer*>(ToResource(pSetIndices->hIndexBuffer))->GetIndexBuffer();
    if (!pIndexBuffer)
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetIndices pIndexBuffer is NULL\n");
        return S_OK;
    }
    if (HRESULT hr = GetDevice()->SetIndices(pIndexBuffer); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetIndices SetIndices failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetIndices\n");
    return S_OK;
}
