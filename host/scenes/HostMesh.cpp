#include "host/scenes/HostMesh.h"

#include "host/runtime/HostDevice.h"

namespace
{

constexpr UINT kStride = sizeof(HostVertex);
static_assert(kStride == 32);

template <typename Element>
std::unique_ptr<HostResource> MakeBuffer(
    HostDevice& device, const std::vector<Element>& elements, bool bIndices, bool bSystemMemory)
{
    const UINT bytes = static_cast<UINT>(elements.size() * sizeof(Element));
    HostResourceDescription description;
    description.m_Width = bytes;
    description.m_Format = bIndices ? UINT{D3DFMT_INDEX16} : UINT{D3DFMT_VERTEXDATA};
    description.m_Flags.IndexBuffer = bIndices;
    description.m_Flags.VertexBuffer = !bIndices;
    description.m_Flags.WriteOnly = !bSystemMemory;
    description.m_Pool = bSystemMemory ? D3DDDIPOOL_SYSTEMMEM : D3DDDIPOOL_VIDEOMEMORY;
    description.m_SystemMemoryPitch = bSystemMemory ? bytes : 0;
    auto pBuffer = std::make_unique<HostResource>(device, description);
    device.WriteBuffer(*pBuffer, elements.data(), bytes);
    return pBuffer;
}

}  // namespace

HostMesh::HostMesh(HostDevice& device, const HostGeometry& geometry)
    : m_Device(device), m_Corners(geometry.m_Corners), m_Indices(geometry.m_Indices), m_Spread(geometry.Spread())
{
    m_pSystemCorners = MakeBuffer(device, m_Corners, false, true);
    m_pSystemSpread = MakeBuffer(device, m_Spread, false, true);
    m_pVideoCorners = MakeBuffer(device, m_Corners, false, false);
    m_pVideoSpread = MakeBuffer(device, m_Spread, false, false);
    m_pVideoIndices = MakeBuffer(device, m_Indices, true, false);
}

void HostMesh::Draw(HostDrawPath path)
{
    switch (path)
    {
    case HostDrawPath::UserMemory:
        BindMemory(m_Spread);
        return DrawPlain();
    case HostDrawPath::UserMemoryIndexed:
        BindMemory(m_Corners);
        return DrawIndexed2();
    case HostDrawPath::SystemBuffer:
        BindBuffer(*m_pSystemSpread);
        return DrawPlain2();
    case HostDrawPath::SystemBufferIndexed:
        BindBuffer(*m_pSystemCorners);
        return DrawIndexed2();
    case HostDrawPath::VideoBuffer:
        BindBuffer(*m_pVideoSpread);
        return DrawPlain();
    case HostDrawPath::VideoBufferIndexed:
        BindBuffer(*m_pVideoCorners);
        return DrawIndexed();
    }
}

void HostMesh::BindMemory(const std::vector<HostVertex>& vertices)
{
    const D3DDDIARG_SETSTREAMSOURCEUM arg = {0, kStride};
    HostCheck(
        m_Device.Functions().pfnSetStreamSourceUm(m_Device.Handle(), &arg, vertices.data()), "pfnSetStreamSourceUm");
}

void HostMesh::BindBuffer(const HostResource& buffer)
{
    const D3DDDIARG_SETSTREAMSOURCE arg = {0, buffer.Handle(), 0, kStride};
    HostCheck(m_Device.Functions().pfnSetStreamSource(m_Device.Handle(), &arg), "pfnSetStreamSource");
}

// In two halves, so that the start vertex counts.
void HostMesh::DrawPlain()
{
    const UINT half = TriangleCount() / 2;
    const D3DDDIARG_DRAWPRIMITIVE first = {D3DPT_TRIANGLELIST, 0, half};
    const D3DDDIARG_DRAWPRIMITIVE second = {D3DPT_TRIANGLELIST, half * 3, TriangleCount() - half};
    HostCheck(m_Device.Functions().pfnDrawPrimitive(m_Device.Handle(), &first, nullptr), "pfnDrawPrimitive");
    HostCheck(m_Device.Functions().pfnDrawPrimitive(m_Device.Handle(), &second, nullptr), "pfnDrawPrimitive");
}

void HostMesh::DrawPlain2()
{
    const UINT half = TriangleCount() / 2;
    const D3DDDIARG_DRAWPRIMITIVE2 first = {D3DPT_TRIANGLELIST, 0, half};
    const D3DDDIARG_DRAWPRIMITIVE2 second = {D3DPT_TRIANGLELIST, half * 3 * kStride, TriangleCount() - half};
    HostCheck(m_Device.Functions().pfnDrawPrimitive2(m_Device.Handle(), &first), "pfnDrawPrimitive2");
    HostCheck(m_Device.Functions().pfnDrawPrimitive2(m_Device.Handle(), &second), "pfnDrawPrimitive2");
}

void HostMesh::DrawIndexed()
{
    const D3DDDIARG_SETINDICES indices = {m_pVideoIndices->Handle(), sizeof(UINT16)};
    HostCheck(m_Device.Functions().pfnSetIndices(m_Device.Handle(), &indices), "pfnSetIndices");
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {
        D3DPT_TRIANGLELIST, 0, 0, static_cast<UINT>(m_Corners.size()), 0, TriangleCount()};
    HostCheck(m_Device.Functions().pfnDrawIndexedPrimitive(m_Device.Handle(), &arg), "pfnDrawIndexedPrimitive");
}

void HostMesh::DrawIndexed2()
{
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {
        D3DPT_TRIANGLELIST, 0, 0, static_cast<UINT>(m_Corners.size()), 0, TriangleCount()};
    HostCheck(m_Device.Functions().pfnDrawIndexedPrimitive2(
                  m_Device.Handle(), &arg, sizeof(UINT16), m_Indices.data(), nullptr),
        "pfnDrawIndexedPrimitive2");
}
