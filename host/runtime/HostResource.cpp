#include "host/runtime/HostResource.h"

#include "host/runtime/HostDevice.h"

#include <algorithm>

HostResource::HostResource(HostDevice& device, const HostResourceDescription& description)
    : m_Device(device), m_Description(description)
{
    if (m_Description.m_LevelMemory.empty() && description.m_SystemMemoryPitch != 0)
        m_Description.m_LevelMemory = {{description.m_SystemMemoryPitch, description.m_Height}};
    for (const HostLevelMemory& level : m_Description.m_LevelMemory)
        m_SystemMemory.emplace_back(size_t{level.m_Pitch} * level.m_Rows);
    std::vector<D3DDDI_SURFACEINFO> surfaces(description.m_MipLevels);
    for (UINT level = 0; level < description.m_MipLevels; ++level)
    {
        surfaces[level].Width = std::max(1u, description.m_Width >> level);
        surfaces[level].Height = std::max(1u, description.m_Height >> level);
        surfaces[level].Depth = 1;
        surfaces[level].pSysMem = SystemMemory(level);
        if (level < m_Description.m_LevelMemory.size())
            surfaces[level].SysMemPitch = m_Description.m_LevelMemory[level].m_Pitch;
    }

    D3DDDIARG_CREATERESOURCE arg{};
    arg.Format = static_cast<D3DDDIFORMAT>(description.m_Format);
    arg.Pool = description.m_Pool;
    arg.pSurfList = surfaces.data();
    arg.SurfCount = static_cast<UINT>(surfaces.size());
    arg.MipLevels = description.m_MipLevels;
    arg.MultisampleType = description.m_MultisampleType;
    arg.MultisampleQuality = description.m_MultisampleQuality;
    arg.VidPnSourceId = description.m_VidPnSourceId;
    arg.RefreshRate = {60, 1};
    arg.hResource = RuntimeHandle();
    arg.Flags = description.m_Flags;
    arg.Rotation = description.m_Rotation;
    HOST_CALL(device, pfnCreateResource, &arg);
    m_hResource = arg.hResource;
}

HostResource::~HostResource()
{
    // Answers E_FAIL, always: the driver's way of saying that it is done.
    m_Device.Functions().pfnDestroyResource(m_Device.Handle(), m_hResource);
}

BYTE* HostResource::SystemMemory(UINT level)
{
    return level < m_SystemMemory.size() && !m_SystemMemory[level].empty() ? m_SystemMemory[level].data() : nullptr;
}

RECT HostResource::Rect() const
{
    return {0, 0, static_cast<LONG>(m_Description.m_Width), static_cast<LONG>(m_Description.m_Height)};
}
