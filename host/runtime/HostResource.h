// One resource of the runtime: the driver's handle of it, the surfaces that it is made of, and the system memory that
// the runtime gives to those it keeps the pixels of.
#pragma once

#include "ddi/ddi.h"

#include <vector>

class HostDevice;

/// The runtime's memory of one level.
struct HostLevelMemory
{
    UINT m_Pitch = 0;  ///< bytes from row to row, or from blocks to blocks
    UINT m_Rows = 0;   ///< of blocks, where a format has blocks
};

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
    /// Of every level, where the runtime keeps the memory of all; m_SystemMemoryPitch is not looked at then.
    std::vector<HostLevelMemory> m_LevelMemory{};
    D3DDDIMULTISAMPLE_TYPE m_MultisampleType = D3DDDIMULTISAMPLE_NONE;
    UINT m_MultisampleQuality = 0;
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
    BYTE* SystemMemory(UINT level = 0);

private:
    HostDevice& m_Device;
    HostResourceDescription m_Description;
    HANDLE m_hResource = nullptr;
    std::vector<std::vector<BYTE>> m_SystemMemory;  ///< one a level of what the runtime keeps the pixels of
};
