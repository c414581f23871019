#include "CreateRequest.h"

#include <algorithm>

namespace tesslo::test
{

CreateRequest::CreateRequest(UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width, UINT height, UINT levels)
{
    constexpr UINT kCubeFaces = 6;
    const UINT faces = flags & kFlagCubeMap ? kCubeFaces : 1;
    for (UINT face = 0; face < faces; face++)
        for (UINT level = 0; level < levels; level++)
            m_Surfaces.push_back({std::max(width >> level, 1U), std::max(height >> level, 1U), 0, nullptr, 0, 0});
    m_Arg.Format = format;
    m_Arg.Pool = pool;
    m_Arg.pSurfList = m_Surfaces.data();
    m_Arg.SurfCount = static_cast<UINT>(m_Surfaces.size());
    m_Arg.MipLevels = levels;
    m_Arg.hResource = reinterpret_cast<HANDLE>(0x1234500000ABCDE0);
    m_Arg.Flags.Value = flags;
    m_Arg.Rotation = D3DDDI_ROTATION_IDENTITY;
}

CreateRequest& CreateRequest::WithMemory(UINT bytesPerPixel, UINT padding)
{
    m_Memory.clear();
    BYTE next = 1;
    for (D3DDDI_SURFACEINFO& surface : m_Surfaces)
    {
        surface.SysMemPitch = surface.Width * bytesPerPixel + padding;
        std::vector<BYTE>& bytes = m_Memory.emplace_back(size_t{surface.SysMemPitch} * surface.Height);
        for (BYTE& byte : bytes)
            byte = next = static_cast<BYTE>(next * 5 + 1);
    }
    for (size_t i = 0; i < m_Surfaces.size(); i++)
        m_Surfaces[i].pSysMem = m_Memory[i].data();
    return *this;
}

CreateRequest& CreateRequest::WithSurfaces(UINT count)
{
    const D3DDDI_SURFACEINFO first = m_Surfaces.front();
    m_Surfaces.assign(count, first);
    m_Arg.pSurfList = m_Surfaces.data();
    m_Arg.SurfCount = count;
    return *this;
}

}  // namespace tesslo::test
