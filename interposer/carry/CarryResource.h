// What the driver has of one resource of the platform's.
#pragma once

#include "host/runtime/HostResource.h"

#include <d3d9.h>

#include <memory>
#include <span>
#include <vector>

class CarryDevice;

enum class CarryKind
{
    Target,  ///< a surface that can be drawn into, back buffers too
    Plain,   ///< an offscreen surface
    Memory,  ///< a surface in system memory
    Depth,
    Texture,  ///< with what can be drawn into
    VertexBuffer,
    IndexBuffer,
};

/// A lock that the program holds.
struct CarryLock
{
    BYTE* m_pBits = nullptr;  ///< null: none
    UINT m_Pitch = 0;         ///< bytes; of a buffer nothing
    RECT m_Rect{};            ///< of a buffer: left and right, bytes
    DWORD m_Flags = 0;
};

class CarryResource
{
public:
    /// Borrows the device.
    CarryResource(CarryDevice& device, CarryKind kind, const D3DSURFACE_DESC& desc, UINT levels)
        : m_Device(device), m_Kind(kind), m_Desc(desc), m_Locks(levels)
    {
    }

    CarryDevice& Device() const { return m_Device; }
    UINT Levels() const { return static_cast<UINT>(m_Locks.size()); }
    /// The whole of a level.
    RECT Rect(UINT level) const;
    bool IsTarget() const { return m_Desc.Usage & D3DUSAGE_RENDERTARGET; }
    /// Copies what lies at the bits into the memory that uploads are made from, and remembers to upload it.
    void Write(UINT level, const RECT& rect, const void* pBits, UINT pitch);
    /// Brings what was written to the driver's texture. What has no memory, or was not written, stays as it is.
    void Upload();

    CarryDevice& m_Device;
    CarryKind m_Kind;
    D3DSURFACE_DESC m_Desc;                   ///< of level 0; of a buffer only size in bytes, format and pool
    std::shared_ptr<HostResource> m_pVideo;   ///< what is drawn with; null for what is in system memory only
    std::shared_ptr<HostResource> m_pSystem;  ///< what is uploaded from; null for what is only drawn into
    std::vector<BYTE> m_Shadow;               ///< of a buffer: what the program has written
    std::vector<CarryLock> m_Locks;           ///< one a level; a buffer has one
    UINT64 m_Uploading = 0;                   ///< number of the work that reads the memory
    bool m_bDirty = false;
    RECT m_Dirty{};  ///< of level 0; other levels are uploaded whole
};

/// Copies rows of pixels, or of blocks of pixels.
/// @param pTo, pFrom the first pixel of the level, to which the rectangle refers.
void CarryCopyPixels(D3DFORMAT format, const RECT& rect, void* pTo, UINT toPitch, const void* pFrom, UINT fromPitch);
/// Whether brightness and colours of a format lie apart.
bool CarryIsPlanar(D3DFORMAT format);
/// Memory of a level of that size; no rows for a format that lies in a way of its own.
HostLevelMemory CarryMemoryOf(D3DFORMAT format, UINT width, UINT height);
/// Where a level's first pixel lies, when that of the place lies at those bits.
BYTE* CarryFirst(D3DFORMAT format, BYTE* pBits, UINT pitch, LONG x, LONG y);
