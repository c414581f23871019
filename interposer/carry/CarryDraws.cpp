#include "interposer/carry/CarryDraws.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/carry/CarryParts.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

namespace
{

UINT IndexBytes(D3DFORMAT format)
{
    return format == D3DFMT_INDEX16 ? 2 : 4;
}

bool IsLongFan(D3DPRIMITIVETYPE type, UINT count)
{
    return type == D3DPT_TRIANGLEFAN && count > kCarryMostPrimitives;
}

}  // namespace

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
    if (place && (m_pStream != place.m_pResource || m_Offset != offset || m_Stride != stride))
        BindStream(std::move(place.m_pResource), offset, stride);
}

void CarryDraws::BindStream(std::shared_ptr<CarryResource> pStream, UINT offset, UINT stride)
{
    const D3DDDIARG_SETSTREAMSOURCE arg = {0, pStream->m_pVideo->Handle(), offset, stride};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetStreamSource, &arg); });
    m_pStream = std::move(pStream);
    m_Offset = offset;
    m_Stride = stride;
}

void CarryDraws::StreamFrequency(UINT stream, UINT divider)
{
    if (divider != 1)
        RunLimit(kLimitInstancing);
    const D3DDDIARG_SETSTREAMSOURCEFREQ arg = {stream, divider};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetStreamSourceFreq, &arg); });
}

void CarryDraws::Indices(IDirect3DIndexBuffer9* pBuffer)
{
    CarryPlace place = pBuffer != nullptr ? CarryFind(pBuffer) : CarryPlace{};
    if (place && m_pIndices != place.m_pResource)
        BindIndices(std::move(place.m_pResource));
}

void CarryDraws::BindIndices(std::shared_ptr<CarryResource> pIndices)
{
    const D3DDDIARG_SETINDICES arg = {pIndices->m_pVideo->Handle(), IndexBytes(pIndices->m_Desc.Format)};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetIndices, &arg); });
    m_pIndices = std::move(pIndices);
}

void CarryDraws::Draw(D3DPRIMITIVETYPE type, UINT first, UINT count)
{
    if (m_pStream == nullptr)
        return;
    if (IsLongFan(type, count))
        return DrawLongFan([&](const BYTE* pVertices, const BYTE*) {
            DrawMemory(type, count, pVertices + size_t{first} * m_Stride, m_Stride);
        });
    m_Device.State().BeforeDraw();
    CarryParts(type, count, [&](UINT skipped, UINT part) {
        const D3DDDIARG_DRAWPRIMITIVE arg = {type, first + skipped, part};
        m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnDrawPrimitive, &arg, nullptr); });
    });
}

void CarryDraws::DrawIndexed(D3DPRIMITIVETYPE type, INT base, UINT least, UINT vertices, UINT first, UINT count)
{
    if (m_pStream == nullptr || m_pIndices == nullptr)
        return;
    if (IsLongFan(type, count))
        return DrawLongFan([&](const BYTE* pVertices, const BYTE* pIndices) {
            const D3DFORMAT format = m_pIndices->m_Desc.Format;
            DrawIndexedMemory(type, least, vertices, count, pIndices + size_t{first} * IndexBytes(format), format,
                pVertices + ptrdiff_t{base} * static_cast<ptrdiff_t>(m_Stride), m_Stride);
        });
    m_Device.State().BeforeDraw();
    CarryParts(type, count, [&](UINT skipped, UINT part) {
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {type, base, least, vertices, first + skipped, part};
        m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnDrawIndexedPrimitive, &arg); });
    });
}

// Its first vertex belongs to each part, and does not lie before it: the parts are made in memory.
void CarryDraws::DrawLongFan(const std::function<void(const BYTE* pVertices, const BYTE* pIndices)>& draw)
{
    const std::shared_ptr<CarryResource> pStream = m_pStream, pIndices = m_pIndices;
    draw(pStream->m_Shadow.data() + m_Offset, pIndices ? pIndices->m_Shadow.data() : nullptr);
    BindStream(pStream, m_Offset, m_Stride);
    if (pIndices)
        BindIndices(pIndices);
}

void CarryDraws::DrawMemory(D3DPRIMITIVETYPE type, UINT count, const void* pVertices, UINT stride)
{
    m_Device.State().BeforeDraw();
    m_pStream = nullptr;
    const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, stride};
    CarryParts(type, count, [&](UINT skipped, UINT part) {
        const D3DDDIARG_DRAWPRIMITIVE arg = {type, 0, part};
        m_Device.Post(
            [stream, arg, vertices = CarryPartOf(type, pVertices, stride, skipped, part)](HostDevice& driver) {
                HOST_CALL(driver, pfnSetStreamSourceUm, &stream, vertices.data());
                HOST_CALL(driver, pfnDrawPrimitive, &arg, nullptr);
            });
    });
}

void CarryDraws::DrawIndexedMemory(D3DPRIMITIVETYPE type, UINT least, UINT vertices, UINT count, const void* pIndices,
    D3DFORMAT format, const void* pVertices, UINT stride)
{
    m_Device.State().BeforeDraw();
    m_pStream = nullptr;
    m_pIndices = nullptr;
    const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, stride};
    const UINT indexBytes = IndexBytes(format);
    // The copy begins with the least vertex that an index names.
    const BYTE* pLeast = static_cast<const BYTE*>(pVertices) + size_t{least} * stride;
    const auto pCopy = std::make_shared<std::vector<BYTE>>(pLeast, pLeast + size_t{vertices} * stride);
    const INT base = -static_cast<INT>(least * stride);
    CarryParts(type, count, [&](UINT skipped, UINT part) {
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {type, base, least, vertices, 0, part};
        m_Device.Post([stream, arg, indexBytes, pCopy,
                          indices = CarryPartOf(type, pIndices, indexBytes, skipped, part)](HostDevice& driver) {
            HOST_CALL(driver, pfnSetStreamSourceUm, &stream, pCopy->data());
            HOST_CALL(driver, pfnDrawIndexedPrimitive2, &arg, indexBytes, indices.data(), nullptr);
        });
    });
}

void CarryDraws::Forget(const CarryResource& resource)
{
    if (m_pStream.get() == &resource)
        m_pStream = nullptr;
    if (m_pIndices.get() == &resource)
        m_pIndices = nullptr;
}
