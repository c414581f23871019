// The private record of a kernel-mode allocation: written here, read by the kernel-mode driver, and read back when
// another process opens a shared texture. A wire format of 19 little-endian words; zero where a writer sets nothing.
#pragma once

#include "ddi/ddi_layout.h"

#include <windows.h>

#include <cstring>

/// First word of the record: what the allocation is.
inline constexpr UINT UMDALLOCATIONKIND_PRIMARY = 5;
inline constexpr UINT UMDALLOCATIONKIND_OTHER = 6;

struct UMDAllocationPrivateData
{
    UINT Kind;    ///< UMDALLOCATIONKIND_PRIMARY or UMDALLOCATIONKIND_OTHER
    UINT Width;   ///< pixels
    UINT Height;  ///< pixels
    UINT Format;  ///< D3DDDIFORMAT
    UINT Pool;    ///< D3DPOOL of the delegated object; textures only
    UINT Usage;   ///< D3DUSAGE; textures only
    UINT Levels;  ///< levels, of one face for cubes; textures only
    UINT Reserved1;
    UINT MultisampleQuality;  ///< surfaces only
    UINT MipLevels;           ///< surfaces only
    UINT VidPnSourceId;       ///< surfaces only
    UINT RefreshNumerator;    ///< hertz times RefreshDenominator; surfaces only
    UINT RefreshDenominator;  ///< surfaces only
    UINT ResourceFlags;       ///< D3DDDI_RESOURCEFLAGS
    UINT Rotation;            ///< D3DDDI_ROTATION; surfaces only
    UINT TextureKind;         ///< 6 texture, 7 cube texture, 0 surface
    UINT Reserved2;
    UINT DriverHandle;  ///< low 32 bits of the object's address; textures only
    UINT SharedHandle;  ///< low 32 bits of the delegated texture's shared handle; textures only
};
UMD_LAYOUT(UMDAllocationPrivateData, 76, 4);
UMD_OFFSET(UMDAllocationPrivateData, Kind, 0x00);
UMD_OFFSET(UMDAllocationPrivateData, Width, 0x04);
UMD_OFFSET(UMDAllocationPrivateData, Height, 0x08);
UMD_OFFSET(UMDAllocationPrivateData, Format, 0x0C);
UMD_OFFSET(UMDAllocationPrivateData, Pool, 0x10);
UMD_OFFSET(UMDAllocationPrivateData, Usage, 0x14);
UMD_OFFSET(UMDAllocationPrivateData, Levels, 0x18);
UMD_OFFSET(UMDAllocationPrivateData, Reserved1, 0x1C);
UMD_OFFSET(UMDAllocationPrivateData, MultisampleQuality, 0x20);
UMD_OFFSET(UMDAllocationPrivateData, MipLevels, 0x24);
UMD_OFFSET(UMDAllocationPrivateData, VidPnSourceId, 0x28);
UMD_OFFSET(UMDAllocationPrivateData, RefreshNumerator, 0x2C);
UMD_OFFSET(UMDAllocationPrivateData, RefreshDenominator, 0x30);
UMD_OFFSET(UMDAllocationPrivateData, ResourceFlags, 0x34);
UMD_OFFSET(UMDAllocationPrivateData, Rotation, 0x38);
UMD_OFFSET(UMDAllocationPrivateData, TextureKind, 0x3C);
UMD_OFFSET(UMDAllocationPrivateData, Reserved2, 0x40);
UMD_OFFSET(UMDAllocationPrivateData, DriverHandle, 0x44);
UMD_OFFSET(UMDAllocationPrivateData, SharedHandle, 0x48);

/// Takes the record out of an opened allocation's private data.
/// @return false when the data is not such a record of a surface or texture: somebody else's, or a primary's.
inline bool UMDReadAllocationPrivateData(const void* pData, UINT size, UMDAllocationPrivateData* pRecord)
{
    if (!pData || size != sizeof(*pRecord))
        return false;
    std::memcpy(pRecord, pData, sizeof(*pRecord));
    return pRecord->Kind == UMDALLOCATIONKIND_OTHER;
}
