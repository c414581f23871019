#include "interposer/carry/CarryDraws.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

void CarryDraws::Sync()
{
    UMDComPtr<IDirect3DVertexBuffer9> pStream;
    UMDComPtr<IDirect3DIndexBuffer9> pIndices;
    UINT offset = 0, stride = 0;
    if (SUCCEEDED(m_Device.Platform()->GetStreamSource(0, pStream.Put(), &offset, &stride)))
        Stream(0, pStream.Get(), offset, stride);
    if (SUCCEEDED(m_Device.Platform()->GetIndices(pIndices.Put())))
        Indices(pIndices.Get());
}

void CarryDraws::Stream(UINT stream, IDirect3DVertexBuffer9* pBuffer, UINT offset, UINT stride)
{
    if (stream > 0)
    {
        if (pBuffer != nullptr)
            RunLimit(kLimitStreams);
        return;
    }
    CarryPlace place = pBuffer != nullptr ? CarryFind(pBuffer) : CarryPlace{};
    // The driver keeps the stream that it has when it is given none: nothing can be drawn then, anyway.
    if (!place || (m_pStream == place.m_pResource && m_Offset == offset && m_Stride == stride))
        return;
    const D3DDDIARG_SETSTREAMSOURCE arg = {0, place->m_pVideo->Handle(), offset, stride};
    HOST_CALL(m_Device.Driver(), pfnSetStreamSource, &arg);
    m_pStream = std::move(place.m_pResource);
    m_Offset = offset;
    m_Stride = stride;
}

void CarryDraws::StreamFrequency(UINT stream, UINT divider)
{
    if (divider != 1)
        RunLimit(kLimitInstancing);
    const D3DDDIARG_SETSTREAMSOURCEFREQ arg = {stream, divider};
    HOST_CALL(m_Device.Driver(), pfnSetStreamSourceFreq, &arg);
}

void CarryDraws::Indices(IDirect3DIndexBuffer9* pBuffer)
{
    CarryPlace place = pBuffer != nullptr ? CarryFind(pBuffer) : CarryPlace{};
    if (!place || m_pIndices == place.m_pResource)
        return;
    const D3DDDIARG_SETINDICES arg = {place->m_pVideo->Handle(), place->m_Desc.Format == D3DFMT_INDEX16 ? 2u : 4u};
    HOST_CALL(m_Device.Driver(), pfnSetIndices, &arg);
    m_pIndices = std::move(place.m_pResource);
}

void CarryDraws::Draw(D3DPRIMITIVETYPE type, UINT first, UINT count)
{
    m_Device.State().BeforeDraw();
    const D3DDDIARG_DRAWPRIMITIVE arg = {type, first, count};
    HOST_CALL(m_Device.Driver(), pfnDrawPrimitive, &arg, nullptr);
}

void CarryDraws::DrawIndexed(D3DPRIMITIVETYPE type, INT base, UINT least, UINT vertices, UINT first, UINT count)
{
    m_Device.State().BeforeDraw();
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {type, base, least, vertices, first, count};
    HOST_CALL(m_Device.Driver(), pfnDrawIndexedPrimitive, &arg);
}

void CarryDraws::DrawMemory(D3DPRIMITIVETYPE type, UINT count, const void* pVertices, UINT stride)
{
    m_Device.State().BeforeDraw();
    m_pStream = nullptr;
    const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, stride};
    HOST_CALL(m_Device.Driver(), pfnSetStreamSourceUm, &stream, pVertices);
    const D3DDDIARG_DRAWPRIMITIVE arg = {type, 0, count};
    HOST_CALL(m_Device.Driver(), pfnDrawPrimitive, &arg, nullptr);
}

void CarryDraws::DrawIndexedMemory(D3DPRIMITIVETYPE type, UINT least, UINT vertices, UINT count, const void* pIndices,
    D3DFORMAT format, const void* pVertices, UINT stride)
{
    m_Device.State().BeforeDraw();
    m_pStream = nullptr;
    m_pIndices = nullptr;
    const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, stride};
    HOST_CALL(m_Device.Driver(), pfnSetStreamSourceUm, &stream, pVertices);
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {type, 0, least, vertices, 0, count};
    HOST_CALL(m_Device.Driver(), pfnDrawIndexedPrimitive2, &arg, format == D3DFMT_INDEX16 ? 2u : 4u, pIndices, nullptr);
}

void CarryDraws::Forget(const CarryResource& resource)
{
    if (m_pStream.get() == &resource)
        m_pStream = nullptr;
    if (m_pIndices.get() == &resource)
        m_pIndices = nullptr;
}
