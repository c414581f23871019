// One resource of the runtime: the driver's handle of it, the surfaces that it is made of, and the system memory that
// the runtime gives to those it keeps the pixels of.
#pragma once

#include "ddi/ddi.h"

#include <vector>

class HostDevice;

/// What a resource is made from. Fields that a kind of resource has no use for stay 0.
struct HostResourceDescription
{
    UINT m_Width = 0;  ///< pixels; bytes of a buffer
    UINT m_Height = 1;
    UINT m_Format = D3DFMT_X8R8G8B8;
    D3DDDI_POOL m_Pool = D3DDDIPOOL_VIDEOMEMORY;
    UINT m_MipLevels = 1;
    D3DDDI_RESOURCEFLAGS m_Flags{};
    UINT m_VidPnSourceId = 0;
    D3DDDI_ROTATION m_Rotation = D3DDDI_ROTATION_IDENTITY;
    UINT m_SystemMemoryPitch = 0;  ///< bytes from row to row; not 0: the runtime keeps the memory of level 0
};

class HostResource
{
public:
    /// Creates it. Throws HostError. The device is borrowed and must outlive the resource.
    HostResource(HostDevice& device, const HostResourceDescription& description);
    ~HostResource();
    HostResource(const HostResource&) = delete;
    HostResource& operator=(const HostResource&) = delete;

    /// The driver's handle.
    HANDLE Handle() const { return m_hResource; }
    /// The runtime's handle, which the callbacks name.
    HANDLE RuntimeHandle() { return this; }
    const HostResourceDescription& Description() const { return m_Description; }
    RECT Rect() const;
    /// The runtime's memory, null if the driver keeps the pixels.
    BYTE* SystemMemory() { return m_SystemMemory.empty() ? nullptr : m_SystemMemory.data(); }

private:
    HostDevice& m_Device;
    HostResourceDescription m_Description;
    HANDLE m_hResource = nullptr;
    std::vector<BYTE> m_SystemMemory;
};
