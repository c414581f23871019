// Triangles of one shape, kept in every way that the interface knows, so that each way of drawing can show them.
#pragma once

#include "host/runtime/HostResource.h"
#include "host/scenes/HostGeometry.h"

#include <memory>
#include <vector>

/// Where a draw finds its vertices and its indices.
enum class HostDrawPath
{
    UserMemory,           ///< vertices from the caller's memory
    UserMemoryIndexed,    ///< vertices and 16-bit indices from the caller's memory
    SystemBuffer,         ///< vertices from a buffer whose memory is the runtime's
    SystemBufferIndexed,  ///< the same, indices from the caller's memory
    VideoBuffer,          ///< vertices from a buffer that is locked and filled through the driver
    VideoBufferIndexed,   ///< the same, with an index buffer
};

inline constexpr HostDrawPath kHostDrawPaths[] = {HostDrawPath::UserMemory, HostDrawPath::UserMemoryIndexed,
    HostDrawPath::SystemBuffer, HostDrawPath::SystemBufferIndexed, HostDrawPath::VideoBuffer,
    HostDrawPath::VideoBufferIndexed};

class HostMesh
{
public:
    HostMesh(HostDevice& device, const HostGeometry& geometry);

    void Draw(HostDrawPath path);

private:
    UINT TriangleCount() const { return static_cast<UINT>(m_Indices.size() / 3); }
    void BindMemory(const std::vector<HostVertex>& vertices);
    void BindBuffer(const HostResource& buffer);
    void DrawPlain();
    void DrawPlain2();
    void DrawIndexed();
    void DrawIndexed2();

    HostDevice& m_Device;
    std::vector<HostVertex> m_Corners;  ///< each once
    std::vector<UINT16> m_Indices;      ///< three a triangle, into the corners
    std::vector<HostVertex> m_Spread;   ///< three a triangle
    std::unique_ptr<HostResource> m_pSystemCorners;
    std::unique_ptr<HostResource> m_pSystemSpread;
    std::unique_ptr<HostResource> m_pVideoCorners;
    std::unique_ptr<HostResource> m_pVideoSpread;
    std::unique_ptr<HostResource> m_pVideoIndices;
};
