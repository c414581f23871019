// Direct3D 9 user-mode display driver interface: records that other records are made of.
// Published names and values of the binary interface, version 0x2003 (64-bit).
#pragma once

#include "ddi/ddi_functions.h"
#include "ddi/ddi_layout.h"

UMD_DDI_RECORDS_BEGIN

struct D3DDDI_BLTFLAGS
{
    union
    {
        struct
        {
            UINT Point : 1;
            UINT Linear : 1;
            UINT SrcColorKey : 1;
            UINT DstColorKey : 1;
            UINT MirrorLeftRight : 1;
            UINT MirrorUpDown : 1;
            UINT LinearToSrgb : 1;
            UINT Rotate : 1;
            UINT BeginPresentToDwm : 1;
            UINT ContinuePresentToDwm : 1;
            UINT EndPresentToDwm : 1;
            UINT Reserved : 21;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_BLTFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_BLTFLAGS, Value, 0);

struct D3DDDIRANGE
{
    UINT Offset;  // bytes
    UINT Size;    // bytes
};
UMD_LAYOUT(D3DDDIRANGE, 8, 4);
UMD_OFFSET(D3DDDIRANGE, Offset, 0);
UMD_OFFSET(D3DDDIRANGE, Size, 4);

struct D3DDDI_COLORFILLFLAGS
{
    union
    {
        struct
        {
            UINT PresentToDwm : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_COLORFILLFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_COLORFILLFLAGS, Value, 0);

struct D3DDDI_CREATEDEVICEFLAGS
{
    union
    {
        struct
        {
            UINT AllowMultithreading : 1;
            UINT AllowFlipBatching : 1;
            UINT Reserved : 30;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_CREATEDEVICEFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_CREATEDEVICEFLAGS, Value, 0);

struct D3DDDI_OVERLAYINFOFLAGS
{
    union
    {
        struct
        {
            UINT DstColorKey : 1;
            UINT DstColorKeyRange : 1;
            UINT SrcColorKey : 1;
            UINT SrcColorKeyRange : 1;
            UINT Bob : 1;
            UINT Interleaved : 1;
            UINT MirrorLeftRight : 1;
            UINT MirrorUpDown : 1;
            UINT Deinterlace : 1;
            UINT LimitedRGB : 1;
            UINT YCbCrBT709 : 1;
            UINT YCbCrxvYCC : 1;
            UINT Reserved : 20;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_OVERLAYINFOFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_OVERLAYINFOFLAGS, Value, 0);

struct D3DDDI_OVERLAYINFO
{
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
    RECT DstRect;           // pixels
    RECT SrcRect;           // pixels
    UINT DstColorKeyLow;
    UINT DstColorKeyHigh;
    UINT SrcColorKeyLow;
    UINT SrcColorKeyHigh;
    D3DDDI_OVERLAYINFOFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDI_OVERLAYINFO, 64, 8);
UMD_OFFSET(D3DDDI_OVERLAYINFO, hResource, 0);
UMD_OFFSET(D3DDDI_OVERLAYINFO, SubResourceIndex, 8);
UMD_OFFSET(D3DDDI_OVERLAYINFO, DstRect, 12);
UMD_OFFSET(D3DDDI_OVERLAYINFO, SrcRect, 28);
UMD_OFFSET(D3DDDI_OVERLAYINFO, DstColorKeyLow, 44);
UMD_OFFSET(D3DDDI_OVERLAYINFO, DstColorKeyHigh, 48);
UMD_OFFSET(D3DDDI_OVERLAYINFO, SrcColorKeyLow, 52);
UMD_OFFSET(D3DDDI_OVERLAYINFO, SrcColorKeyHigh, 56);
UMD_OFFSET(D3DDDI_OVERLAYINFO, Flags, 60);

struct D3DDDI_RATIONAL
{
    UINT Numerator;    // hertz times Denominator
    UINT Denominator;  // seconds
};
UMD_LAYOUT(D3DDDI_RATIONAL, 8, 4);
UMD_OFFSET(D3DDDI_RATIONAL, Numerator, 0);
UMD_OFFSET(D3DDDI_RATIONAL, Denominator, 4);

struct D3DDDI_RESOURCEFLAGS
{
    union
    {
        struct
        {
            UINT RenderTarget : 1;
            UINT ZBuffer : 1;
            UINT Dynamic : 1;
            UINT HintStatic : 1;
            UINT AutogenMipmap : 1;
            UINT DMap : 1;
            UINT WriteOnly : 1;
            UINT NotLockable : 1;
            UINT Points : 1;
            UINT RtPatches : 1;
            UINT NPatches : 1;
            UINT SharedResource : 1;
            UINT DiscardRenderTarget : 1;
            UINT Video : 1;
            UINT CaptureBuffer : 1;
            UINT Primary : 1;
            UINT Texture : 1;
            UINT CubeMap : 1;
            UINT Volume : 1;
            UINT VertexBuffer : 1;
            UINT IndexBuffer : 1;
            UINT DecodeRenderTarget : 1;
            UINT DecodeCompressedBuffer : 1;
            UINT VideoProcessRenderTarget : 1;
            UINT CpuOptimized : 1;
            UINT MightDrawFromLocked : 1;
            UINT Overlay : 1;
            UINT MatchGdiPrimary : 1;
            UINT InterlacedRefresh : 1;
            UINT TextApi : 1;
            UINT RestrictedContent : 1;
            UINT RestrictSharedAccess : 1;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_RESOURCEFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_RESOURCEFLAGS, Value, 0);

struct D3DDDI_FLIPOVERLAYFLAGS
{
    union
    {
        struct
        {
            UINT Even : 1;
            UINT Odd : 1;
            UINT Reserved : 30;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_FLIPOVERLAYFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_FLIPOVERLAYFLAGS, Value, 0);

struct D3DDDI_OVERLAYCOLORCONTROLSFLAGS
{
    union
    {
        struct
        {
            UINT Brightness : 1;
            UINT Contrast : 1;
            UINT Hue : 1;
            UINT Saturation : 1;
            UINT Sharpness : 1;
            UINT Gamma : 1;
            UINT ColorEnable : 1;
            UINT Reserved : 25;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_OVERLAYCOLORCONTROLSFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLSFLAGS, Value, 0);

struct D3DDDI_OVERLAYCOLORCONTROLS
{
    INT BrightnessSetting;
    INT ContrastSetting;
    INT HueSetting;
    INT SaturationSetting;
    INT SharpnessSetting;
    INT GammaSetting;
    INT ColorEnableSetting;
    D3DDDI_OVERLAYCOLORCONTROLSFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDI_OVERLAYCOLORCONTROLS, 32, 4);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, BrightnessSetting, 0);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, ContrastSetting, 4);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, HueSetting, 8);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, SaturationSetting, 12);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, SharpnessSetting, 16);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, GammaSetting, 20);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, ColorEnableSetting, 24);
UMD_OFFSET(D3DDDI_OVERLAYCOLORCONTROLS, Flags, 28);

struct D3DDDI_ISSUEQUERYFLAGS
{
    union
    {
        struct
        {
            UINT Begin : 1;
            UINT End : 1;
            UINT Reserved : 30;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_ISSUEQUERYFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_ISSUEQUERYFLAGS, Value, 0);

struct D3DDDIBOX
{
    UINT Left;    // pixels
    UINT Top;     // pixels
    UINT Right;   // pixels
    UINT Bottom;  // pixels
    UINT Front;
    UINT Back;
};
UMD_LAYOUT(D3DDDIBOX, 24, 4);
UMD_OFFSET(D3DDDIBOX, Left, 0);
UMD_OFFSET(D3DDDIBOX, Top, 4);
UMD_OFFSET(D3DDDIBOX, Right, 8);
UMD_OFFSET(D3DDDIBOX, Bottom, 12);
UMD_OFFSET(D3DDDIBOX, Front, 16);
UMD_OFFSET(D3DDDIBOX, Back, 20);

struct D3DDDI_LOCKFLAGS
{
    union
    {
        struct
        {
            UINT ReadOnly : 1;
            UINT WriteOnly : 1;
            UINT NoOverwrite : 1;
            UINT Discard : 1;
            UINT RangeValid : 1;
            UINT AreaValid : 1;
            UINT BoxValid : 1;
            UINT NotifyOnly : 1;
            UINT MightDrawFromLocked : 1;
            UINT DoNotWait : 1;
            UINT Reserved : 22;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_LOCKFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_LOCKFLAGS, Value, 0);

struct D3DDDI_LOCKASYNCFLAGS
{
    union
    {
        struct
        {
            UINT NoOverwrite : 1;
            UINT Discard : 1;
            UINT RangeValid : 1;
            UINT AreaValid : 1;
            UINT BoxValid : 1;
            UINT NoExistingReferences : 1;
            UINT NotifyOnly : 1;
            UINT Reserved : 25;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_LOCKASYNCFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_LOCKASYNCFLAGS, Value, 0);

struct D3DDDI_OPENRESOURCEFLAGS
{
    union
    {
        struct
        {
            UINT Fullscreen : 1;
            UINT AlphaOverride : 1;
            UINT Reserved : 30;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_OPENRESOURCEFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_OPENRESOURCEFLAGS, Value, 0);

struct D3DDDI_PRESENTFLAGS
{
    union
    {
        struct
        {
            UINT Blt : 1;
            UINT ColorFill : 1;
            UINT Flip : 1;
            UINT AllowTearing : 1;
            UINT AllowFlexibleRefresh : 1;
            UINT Reserved : 27;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_PRESENTFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_PRESENTFLAGS, Value, 0);

struct D3DDDI_UNLOCKFLAGS
{
    union
    {
        struct
        {
            UINT NotifyOnly : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_UNLOCKFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_UNLOCKFLAGS, Value, 0);

struct D3DDDI_UNLOCKASYNCFLAGS
{
    union
    {
        struct
        {
            UINT NotifyOnly : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_UNLOCKASYNCFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_UNLOCKASYNCFLAGS, Value, 0);

struct D3DDDI_CREATECONTEXTFLAGS
{
    union
    {
        struct
        {
            UINT NullRendering : 1;
            UINT InitialData : 1;
            UINT Reserved : 30;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_CREATECONTEXTFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_CREATECONTEXTFLAGS, Value, 0);

struct D3DDDIRECT
{
    LONG left;    // pixels
    LONG top;     // pixels
    LONG right;   // pixels
    LONG bottom;  // pixels
};
UMD_LAYOUT(D3DDDIRECT, 16, 4);
UMD_OFFSET(D3DDDIRECT, left, 0);
UMD_OFFSET(D3DDDIRECT, top, 4);
UMD_OFFSET(D3DDDIRECT, right, 8);
UMD_OFFSET(D3DDDIRECT, bottom, 12);

struct D3DDDI_KERNELOVERLAYINFO
{
    D3DKMT_HANDLE hAllocation;   // kernel-mode allocation
    D3DDDIRECT DstRect;          // pixels
    D3DDDIRECT SrcRect;          // pixels
    void* pPrivateDriverData;    // data between the two driver halves
    UINT PrivateDriverDataSize;  // bytes
};
UMD_LAYOUT(D3DDDI_KERNELOVERLAYINFO, 56, 8);
UMD_OFFSET(D3DDDI_KERNELOVERLAYINFO, hAllocation, 0);
UMD_OFFSET(D3DDDI_KERNELOVERLAYINFO, DstRect, 4);
UMD_OFFSET(D3DDDI_KERNELOVERLAYINFO, SrcRect, 20);
UMD_OFFSET(D3DDDI_KERNELOVERLAYINFO, pPrivateDriverData, 40);
UMD_OFFSET(D3DDDI_KERNELOVERLAYINFO, PrivateDriverDataSize, 48);

struct D3DDDI_SYNCHRONIZATIONOBJECTINFO
{
    D3DDDI_SYNCHRONIZATIONOBJECT_TYPE Type;  // which
    union
    {
        struct
        {
            BOOL InitialState;
        } SynchronizationMutex;
        struct
        {
            UINT MaxCount;
            UINT InitialCount;
        } Semaphore;
        struct
        {
            UINT Reserved[16];  // zero
        } Reserved;
    };
};
UMD_LAYOUT(D3DDDI_SYNCHRONIZATIONOBJECTINFO, 68, 4);
UMD_OFFSET(D3DDDI_SYNCHRONIZATIONOBJECTINFO, Type, 0);
UMD_OFFSET(D3DDDI_SYNCHRONIZATIONOBJECTINFO, SynchronizationMutex.InitialState, 4);
UMD_OFFSET(D3DDDI_SYNCHRONIZATIONOBJECTINFO, Semaphore.MaxCount, 4);
UMD_OFFSET(D3DDDI_SYNCHRONIZATIONOBJECTINFO, Semaphore.InitialCount, 8);
UMD_OFFSET(D3DDDI_SYNCHRONIZATIONOBJECTINFO, Reserved.Reserved, 4);

struct D3DDDI_ESCAPEFLAGS
{
    union
    {
        struct
        {
            UINT HardwareAccess : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_ESCAPEFLAGS, 4, 4);
UMD_OFFSET(D3DDDI_ESCAPEFLAGS, Value, 0);

struct D3DDDIENCRYPTED_BLOCK_INFO
{
    UINT NumEncryptedBytesAtBeginning;
    UINT NumBytesInSkipPattern;
    UINT NumBytesInEncryptPattern;
};
UMD_LAYOUT(D3DDDIENCRYPTED_BLOCK_INFO, 12, 4);
UMD_OFFSET(D3DDDIENCRYPTED_BLOCK_INFO, NumEncryptedBytesAtBeginning, 0);
UMD_OFFSET(D3DDDIENCRYPTED_BLOCK_INFO, NumBytesInSkipPattern, 4);
UMD_OFFSET(D3DDDIENCRYPTED_BLOCK_INFO, NumBytesInEncryptPattern, 8);

struct D3DDDIRECTPATCH_INFO
{
    UINT StartVertexOffsetWidth;
    UINT StartVertexOffsetHeight;
    UINT Width;   // pixels
    UINT Height;  // pixels
    UINT Stride;  // bytes from vertex to vertex
    D3DDDIBASISTYPE Basis;
    D3DDDIDEGREETYPE Degree;
};
UMD_LAYOUT(D3DDDIRECTPATCH_INFO, 28, 4);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, StartVertexOffsetWidth, 0);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, StartVertexOffsetHeight, 4);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, Width, 8);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, Height, 12);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, Stride, 16);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, Basis, 20);
UMD_OFFSET(D3DDDIRECTPATCH_INFO, Degree, 24);

struct D3DDDITRIPATCH_INFO
{
    UINT StartVertexOffset;
    UINT NumVertices;  // vertices
    D3DDDIBASISTYPE Basis;
    D3DDDIDEGREETYPE Degree;
};
UMD_LAYOUT(D3DDDITRIPATCH_INFO, 16, 4);
UMD_OFFSET(D3DDDITRIPATCH_INFO, StartVertexOffset, 0);
UMD_OFFSET(D3DDDITRIPATCH_INFO, NumVertices, 4);
UMD_OFFSET(D3DDDITRIPATCH_INFO, Basis, 8);
UMD_OFFSET(D3DDDITRIPATCH_INFO, Degree, 12);

struct D3DDDIVERTEXELEMENT
{
    USHORT Stream;  // vertex stream
    USHORT Offset;  // bytes
    UCHAR Type;     // which
    UCHAR Method;
    UCHAR Usage;
    UCHAR UsageIndex;
};
UMD_LAYOUT(D3DDDIVERTEXELEMENT, 8, 2);
UMD_OFFSET(D3DDDIVERTEXELEMENT, Stream, 0);
UMD_OFFSET(D3DDDIVERTEXELEMENT, Offset, 2);
UMD_OFFSET(D3DDDIVERTEXELEMENT, Type, 4);
UMD_OFFSET(D3DDDIVERTEXELEMENT, Method, 5);
UMD_OFFSET(D3DDDIVERTEXELEMENT, Usage, 6);
UMD_OFFSET(D3DDDIVERTEXELEMENT, UsageIndex, 7);

struct D3DDDI_ALLOCATIONINFO
{
    D3DKMT_HANDLE hAllocation;                     // kernel-mode allocation
    const void* pSystemMem;                        // memory of the caller, null for memory of the system
    void* pPrivateDriverData;                      // data between the two driver halves
    UINT PrivateDriverDataSize;                    // bytes
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    union
    {
        struct
        {
            UINT Primary : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    } Flags;
};
UMD_LAYOUT(D3DDDI_ALLOCATIONINFO, 40, 8);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO, hAllocation, 0);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO, pSystemMem, 8);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO, pPrivateDriverData, 16);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO, PrivateDriverDataSize, 24);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO, VidPnSourceId, 28);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO, Flags.Value, 32);

struct D3DDDI_ALLOCATIONINFO2
{
    D3DKMT_HANDLE hAllocation;  // kernel-mode allocation
    union
    {
        HANDLE hSection;
        const void* pSystemMem;  // memory of the caller, null for memory of the system
    };
    void* pPrivateDriverData;                      // data between the two driver halves
    UINT PrivateDriverDataSize;                    // bytes
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    union
    {
        struct
        {
            UINT Primary : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    } Flags;
    D3DGPU_VIRTUAL_ADDRESS GpuVirtualAddress;  // unused at this version
    ULONG_PTR Reserved[6];                     // zero
};
UMD_LAYOUT(D3DDDI_ALLOCATIONINFO2, 96, 8);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, hAllocation, 0);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, hSection, 8);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, pSystemMem, 8);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, pPrivateDriverData, 16);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, PrivateDriverDataSize, 24);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, VidPnSourceId, 28);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, Flags.Value, 32);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, GpuVirtualAddress, 40);
UMD_OFFSET(D3DDDI_ALLOCATIONINFO2, Reserved, 48);

struct D3DDDI_ALLOCATIONLIST
{
    D3DKMT_HANDLE hAllocation;  // kernel-mode allocation
    union
    {
        struct
        {
            UINT WriteOperation : 1;
            UINT DoNotRetireInstance : 1;
            UINT Reserved : 30;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDI_ALLOCATIONLIST, 8, 4);
UMD_OFFSET(D3DDDI_ALLOCATIONLIST, hAllocation, 0);
UMD_OFFSET(D3DDDI_ALLOCATIONLIST, Value, 4);

struct D3DDDI_LIGHT
{
    D3DLIGHTTYPE Type;  // which
    D3DCOLORVALUE Diffuse;
    D3DCOLORVALUE Specular;
    D3DCOLORVALUE Ambient;
    D3DVECTOR Position;
    D3DVECTOR Direction;
    FLOAT Range;
    FLOAT Falloff;
    FLOAT Attenuation0;
    FLOAT Attenuation1;
    FLOAT Attenuation2;
    FLOAT Theta;
    FLOAT Phi;
};
UMD_LAYOUT(D3DDDI_LIGHT, 104, 4);
UMD_OFFSET(D3DDDI_LIGHT, Type, 0);
UMD_OFFSET(D3DDDI_LIGHT, Diffuse, 4);
UMD_OFFSET(D3DDDI_LIGHT, Specular, 20);
UMD_OFFSET(D3DDDI_LIGHT, Ambient, 36);
UMD_OFFSET(D3DDDI_LIGHT, Position, 52);
UMD_OFFSET(D3DDDI_LIGHT, Direction, 64);
UMD_OFFSET(D3DDDI_LIGHT, Range, 76);
UMD_OFFSET(D3DDDI_LIGHT, Falloff, 80);
UMD_OFFSET(D3DDDI_LIGHT, Attenuation0, 84);
UMD_OFFSET(D3DDDI_LIGHT, Attenuation1, 88);
UMD_OFFSET(D3DDDI_LIGHT, Attenuation2, 92);
UMD_OFFSET(D3DDDI_LIGHT, Theta, 96);
UMD_OFFSET(D3DDDI_LIGHT, Phi, 100);

struct D3DDDI_MULTISAMPLINGMETHOD
{
    UINT NumSamples;
    UINT NumQualityLevels;
};
UMD_LAYOUT(D3DDDI_MULTISAMPLINGMETHOD, 8, 4);
UMD_OFFSET(D3DDDI_MULTISAMPLINGMETHOD, NumSamples, 0);
UMD_OFFSET(D3DDDI_MULTISAMPLINGMETHOD, NumQualityLevels, 4);

struct D3DDDI_OPENALLOCATIONINFO
{
    D3DKMT_HANDLE hAllocation;       // kernel-mode allocation
    const void* pPrivateDriverData;  // data between the two driver halves
    UINT PrivateDriverDataSize;      // bytes
};
UMD_LAYOUT(D3DDDI_OPENALLOCATIONINFO, 24, 8);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO, hAllocation, 0);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO, pPrivateDriverData, 8);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO, PrivateDriverDataSize, 16);

struct D3DDDI_OPENALLOCATIONINFO2
{
    D3DKMT_HANDLE hAllocation;                 // kernel-mode allocation
    const void* pPrivateDriverData;            // data between the two driver halves
    UINT PrivateDriverDataSize;                // bytes
    D3DGPU_VIRTUAL_ADDRESS GpuVirtualAddress;  // unused at this version
    ULONG_PTR Reserved[6];                     // zero
};
UMD_LAYOUT(D3DDDI_OPENALLOCATIONINFO2, 80, 8);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO2, hAllocation, 0);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO2, pPrivateDriverData, 8);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO2, PrivateDriverDataSize, 16);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO2, GpuVirtualAddress, 24);
UMD_OFFSET(D3DDDI_OPENALLOCATIONINFO2, Reserved, 32);

struct D3DDDI_PATCHLOCATIONLIST
{
    UINT AllocationIndex;
    union
    {
        struct
        {
            UINT SlotId : 24;
            UINT Reserved : 8;
        };
        UINT Value;  // all bits as one word
    };
    UINT DriverId;
    UINT AllocationOffset;
    UINT PatchOffset;
    UINT SplitOffset;
};
UMD_LAYOUT(D3DDDI_PATCHLOCATIONLIST, 24, 4);
UMD_OFFSET(D3DDDI_PATCHLOCATIONLIST, AllocationIndex, 0);
UMD_OFFSET(D3DDDI_PATCHLOCATIONLIST, Value, 4);
UMD_OFFSET(D3DDDI_PATCHLOCATIONLIST, DriverId, 8);
UMD_OFFSET(D3DDDI_PATCHLOCATIONLIST, AllocationOffset, 12);
UMD_OFFSET(D3DDDI_PATCHLOCATIONLIST, PatchOffset, 16);
UMD_OFFSET(D3DDDI_PATCHLOCATIONLIST, SplitOffset, 20);

struct D3DDDI_SURFACEINFO
{
    UINT Width;             // pixels
    UINT Height;            // pixels
    UINT Depth;             // slices
    const void* pSysMem;    // the runtime's pixels, null when the driver owns the memory
    UINT SysMemPitch;       // bytes from row to row
    UINT SysMemSlicePitch;  // bytes from slice to slice
};
UMD_LAYOUT(D3DDDI_SURFACEINFO, 32, 8);
UMD_OFFSET(D3DDDI_SURFACEINFO, Width, 0);
UMD_OFFSET(D3DDDI_SURFACEINFO, Height, 4);
UMD_OFFSET(D3DDDI_SURFACEINFO, Depth, 8);
UMD_OFFSET(D3DDDI_SURFACEINFO, pSysMem, 16);
UMD_OFFSET(D3DDDI_SURFACEINFO, SysMemPitch, 24);
UMD_OFFSET(D3DDDI_SURFACEINFO, SysMemSlicePitch, 28);

struct DDIMULTISAMPLEQUALITYLEVELSDATA
{
    D3DDDIFORMAT Format;  // of the pixels
    BOOL Flip;
    D3DDDIMULTISAMPLE_TYPE MsType;  // asked type
    UINT QualityLevels;             // levels of the type
};
UMD_LAYOUT(DDIMULTISAMPLEQUALITYLEVELSDATA, 16, 4);
UMD_OFFSET(DDIMULTISAMPLEQUALITYLEVELSDATA, Format, 0);
UMD_OFFSET(DDIMULTISAMPLEQUALITYLEVELSDATA, Flip, 4);
UMD_OFFSET(DDIMULTISAMPLEQUALITYLEVELSDATA, MsType, 8);
UMD_OFFSET(DDIMULTISAMPLEQUALITYLEVELSDATA, QualityLevels, 12);

struct FORMATOP
{
    D3DDDIFORMAT Format;         // of the pixels
    UINT Operations;             // FORMATOP bits
    UINT FlipMsTypes;            // multisample types, a bit each
    UINT BltMsTypes;             // multisample types, a bit each
    UINT PrivateFormatBitCount;  // bits per pixel
};
UMD_LAYOUT(FORMATOP, 20, 4);
UMD_OFFSET(FORMATOP, Format, 0);
UMD_OFFSET(FORMATOP, Operations, 4);
UMD_OFFSET(FORMATOP, FlipMsTypes, 8);
UMD_OFFSET(FORMATOP, BltMsTypes, 12);
UMD_OFFSET(FORMATOP, PrivateFormatBitCount, 16);

UMD_DDI_RECORDS_END
