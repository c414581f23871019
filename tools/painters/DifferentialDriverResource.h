// A resource of the driver's painter, made as the runtime makes one.
#pragma once

#include "host/runtime/HostDevice.h"
#include "tools/painters/DifferentialPainter.h"

/// What a resource is made from; like the runtime's record, with the memory of the sub-resources.
struct DifferentialDriverRequest
{
    UINT m_Width = 0;
    UINT m_Height = 1;
    UINT m_Format = D3DFMT_UNKNOWN;
    UINT m_Levels = 1;
    D3DDDI_POOL m_Pool = D3DDDIPOOL_VIDEOMEMORY;
    D3DDDI_RESOURCEFLAGS m_Flags{};
    std::vector<DifferentialPicture> m_Memory;  ///< one a level of what lies in system memory
};

struct DifferentialDriverResource : PainterObject
{
    /// Creates it. Throws HostError. The device is borrowed and must outlive the resource.
    DifferentialDriverResource(HostDevice& device, DifferentialDriverRequest request);
    ~DifferentialDriverResource() override;

    HostDevice& m_Device;
    DifferentialDriverRequest m_Request;
    std::vector<BYTE> m_BufferMemory;  ///< the runtime's memory of a buffer
    HANDLE m_Handle = nullptr;         ///< the driver's

private:
    std::vector<D3DDDI_SURFACEINFO> MakeSurfaces();
};
