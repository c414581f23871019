#include "tools/painters/DifferentialDriverResource.h"

#include <algorithm>

DifferentialDriverResource::DifferentialDriverResource(HostDevice& device, DifferentialDriverRequest request)
    : m_Device(device), m_Request(std::move(request))
{
    const std::vector<D3DDDI_SURFACEINFO> surfaces = MakeSurfaces();
    D3DDDIARG_CREATERESOURCE arg{};
    arg.Format = static_cast<D3DDDIFORMAT>(m_Request.m_Format);
    arg.Pool = m_Request.m_Pool;
    arg.pSurfList = surfaces.data();
    arg.SurfCount = m_Request.m_Levels;
    arg.MipLevels = m_Request.m_Levels;
    arg.hResource = this;
    arg.Flags = m_Request.m_Flags;
    arg.Rotation = D3DDDI_ROTATION_IDENTITY;
    HostCheck(device.Functions().pfnCreateResource(device.Handle(), &arg), "pfnCreateResource");
    m_Handle = arg.hResource;
}

DifferentialDriverResource::~DifferentialDriverResource()
{
    // Answers E_FAIL, always.
    m_Device.Functions().pfnDestroyResource(m_Device.Handle(), m_Handle);
}

std::vector<D3DDDI_SURFACEINFO> DifferentialDriverResource::MakeSurfaces()
{
    std::vector<D3DDDI_SURFACEINFO> surfaces(m_Request.m_Levels);
    for (UINT level = 0; level < m_Request.m_Levels; ++level)
    {
        surfaces[level].Width = std::max(1u, m_Request.m_Width >> level);
        surfaces[level].Height = std::max(1u, m_Request.m_Height >> level);
        surfaces[level].Depth = 1;
        if (level < m_Request.m_Memory.size())
        {
            surfaces[level].pSysMem = m_Request.m_Memory[level].m_Bytes.data();
            surfaces[level].SysMemPitch = m_Request.m_Memory[level].Pitch();
        }
    }
    const bool bBuffer = m_Request.m_Flags.VertexBuffer || m_Request.m_Flags.IndexBuffer;
    if (bBuffer && m_Request.m_Pool == D3DDDIPOOL_SYSTEMMEM)
    {
        m_BufferMemory.resize(m_Request.m_Width);
        surfaces[0].pSysMem = m_BufferMemory.data();
        surfaces[0].SysMemPitch = m_Request.m_Width;
    }
    return surfaces;
}
