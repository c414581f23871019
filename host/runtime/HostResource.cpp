#include "host/runtime/HostResource.h"

#include "host/runtime/HostDevice.h"

#include <algorithm>

HostResource::HostResource(HostDevice& device, const HostResourceDescription& description)
    : m_Device(device), m_Description(description)
{
    m_SystemMemory.resize(size_t{description.m_SystemMemoryPitch} * description.m_Height);
    std::vector<D3DDDI_SURFACEINFO> surfaces(description.m_MipLevels);
    for (UINT level = 0; level < description.m_MipLevels; ++level)
    {
        surfaces[level].Width = std::max(1u, description.m_Width >> level);
        surfaces[level].Height = std::max(1u, description.m_Height >> level);
        surfaces[level].Depth = 1;
    }
    surfaces[0].pSysMem = SystemMemory();
    surfaces[0].SysMemPitch = description.m_SystemMemoryPitch;

    D3DDDIARG_CREATERESOURCE arg{};
    arg.Format = static_cast<D3DDDIFORMAT>(description.m_Format);
    arg.Pool = description.m_Pool;
    arg.pSurfList = surfaces.data();
    arg.SurfCount = static_cast<UINT>(surfaces.size());
    arg.MipLevels = description.m_MipLevels;
    arg.VidPnSourceId = description.m_VidPnSourceId;
    arg.RefreshRate = {60, 1};
    arg.hResource = RuntimeHandle();
    arg.Flags = description.m_Flags;
    arg.Rotation = description.m_Rotation;
    HostCheck(device.Functions().pfnCreateResource(device.Handle(), &arg), "pfnCreateResource");
    m_hResource = arg.hResource;
}

HostResource::~HostResource()
{
    // Answers E_FAIL, always: the driver's way of saying that it is done.
    m_Device.Functions().pfnDestroyResource(m_Device.Handle(), m_hResource);
}

RECT HostResource::Rect() const
{
    return {0, 0, static_cast<LONG>(m_Description.m_Width), static_cast<LONG>(m_Description.m_Height)};
}
