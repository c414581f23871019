// Direct3D 9 user-mode display driver interface: argument records of the runtime's callbacks.
// Published names and values of the binary interface, version 0x2003 (64-bit).
#pragma once

#include "ddi/ddi_records_common.h"

UMD_DDI_RECORDS_BEGIN

struct D3DDDICB_ALLOCATE
{
    const void* pPrivateDriverData;  // data between the two driver halves
    UINT PrivateDriverDataSize;      // bytes
    HANDLE hResource;                // resource handle
    D3DKMT_HANDLE hKMResource;       // kernel-mode resource
    UINT NumAllocations;             // entries
    union
    {
        D3DDDI_ALLOCATIONINFO* pAllocationInfo;  // one entry an allocation
        D3DDDI_ALLOCATIONINFO2* pAllocationInfo2;
    };
};
UMD_LAYOUT(D3DDDICB_ALLOCATE, 40, 8);
UMD_OFFSET(D3DDDICB_ALLOCATE, pPrivateDriverData, 0);
UMD_OFFSET(D3DDDICB_ALLOCATE, PrivateDriverDataSize, 8);
UMD_OFFSET(D3DDDICB_ALLOCATE, hResource, 16);
UMD_OFFSET(D3DDDICB_ALLOCATE, hKMResource, 24);
UMD_OFFSET(D3DDDICB_ALLOCATE, NumAllocations, 28);
UMD_OFFSET(D3DDDICB_ALLOCATE, pAllocationInfo, 32);
UMD_OFFSET(D3DDDICB_ALLOCATE, pAllocationInfo2, 32);

struct D3DDDICB_CREATECONTEXT
{
    UINT NodeOrdinal;                              // engine
    UINT EngineAffinity;                           // engines of a linked adapter
    D3DDDI_CREATECONTEXTFLAGS Flags;               // see the record of the flags
    void* pPrivateDriverData;                      // data between the two driver halves
    UINT PrivateDriverDataSize;                    // bytes
    HANDLE hContext;                               // kernel-mode context
    void* pCommandBuffer;                          // written by the driver, submitted by pfnRenderCb
    UINT CommandBufferSize;                        // bytes
    D3DDDI_ALLOCATIONLIST* pAllocationList;        // allocations that the command buffer names
    UINT AllocationListSize;                       // entries
    D3DDDI_PATCHLOCATIONLIST* pPatchLocationList;  // places of the command buffer to patch
    UINT PatchLocationListSize;                    // entries
    D3DGPU_VIRTUAL_ADDRESS CommandBuffer;          // unused at this version
};
UMD_LAYOUT(D3DDDICB_CREATECONTEXT, 96, 8);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, NodeOrdinal, 0);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, EngineAffinity, 4);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, Flags, 8);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, pPrivateDriverData, 16);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, PrivateDriverDataSize, 24);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, hContext, 32);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, pCommandBuffer, 40);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, CommandBufferSize, 48);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, pAllocationList, 56);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, AllocationListSize, 64);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, pPatchLocationList, 72);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, PatchLocationListSize, 80);
UMD_OFFSET(D3DDDICB_CREATECONTEXT, CommandBuffer, 88);

struct D3DDDICB_CREATEOVERLAY
{
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    D3DDDI_KERNELOVERLAYINFO OverlayInfo;
    D3DKMT_HANDLE hKernelOverlay;  // kernel-mode overlay
};
UMD_LAYOUT(D3DDDICB_CREATEOVERLAY, 72, 8);
UMD_OFFSET(D3DDDICB_CREATEOVERLAY, VidPnSourceId, 0);
UMD_OFFSET(D3DDDICB_CREATEOVERLAY, OverlayInfo, 8);
UMD_OFFSET(D3DDDICB_CREATEOVERLAY, hKernelOverlay, 64);

struct D3DDDICB_CREATESYNCHRONIZATIONOBJECT
{
    D3DDDI_SYNCHRONIZATIONOBJECTINFO Info;
    D3DKMT_HANDLE hSyncObject;  // kernel-mode object
};
UMD_LAYOUT(D3DDDICB_CREATESYNCHRONIZATIONOBJECT, 72, 4);
UMD_OFFSET(D3DDDICB_CREATESYNCHRONIZATIONOBJECT, Info, 0);
UMD_OFFSET(D3DDDICB_CREATESYNCHRONIZATIONOBJECT, hSyncObject, 68);

struct D3DDDICB_DEALLOCATE
{
    HANDLE hResource;                 // resource handle
    UINT NumAllocations;              // entries
    const D3DKMT_HANDLE* HandleList;  // kernel-mode allocations
};
UMD_LAYOUT(D3DDDICB_DEALLOCATE, 24, 8);
UMD_OFFSET(D3DDDICB_DEALLOCATE, hResource, 0);
UMD_OFFSET(D3DDDICB_DEALLOCATE, NumAllocations, 8);
UMD_OFFSET(D3DDDICB_DEALLOCATE, HandleList, 16);

struct D3DDDICB_DESTROYCONTEXT
{
    HANDLE hContext;  // kernel-mode context
};
UMD_LAYOUT(D3DDDICB_DESTROYCONTEXT, 8, 8);
UMD_OFFSET(D3DDDICB_DESTROYCONTEXT, hContext, 0);

struct D3DDDICB_DESTROYOVERLAY
{
    D3DKMT_HANDLE hKernelOverlay;  // kernel-mode overlay
};
UMD_LAYOUT(D3DDDICB_DESTROYOVERLAY, 4, 4);
UMD_OFFSET(D3DDDICB_DESTROYOVERLAY, hKernelOverlay, 0);

struct D3DDDICB_DESTROYSYNCHRONIZATIONOBJECT
{
    D3DKMT_HANDLE hSyncObject;  // kernel-mode object
};
UMD_LAYOUT(D3DDDICB_DESTROYSYNCHRONIZATIONOBJECT, 4, 4);
UMD_OFFSET(D3DDDICB_DESTROYSYNCHRONIZATIONOBJECT, hSyncObject, 0);

struct D3DDDICB_ESCAPE
{
    HANDLE hDevice;              // device handle
    D3DDDI_ESCAPEFLAGS Flags;    // see the record of the flags
    void* pPrivateDriverData;    // data between the two driver halves
    UINT PrivateDriverDataSize;  // bytes
    HANDLE hContext;             // kernel-mode context
};
UMD_LAYOUT(D3DDDICB_ESCAPE, 40, 8);
UMD_OFFSET(D3DDDICB_ESCAPE, hDevice, 0);
UMD_OFFSET(D3DDDICB_ESCAPE, Flags, 8);
UMD_OFFSET(D3DDDICB_ESCAPE, pPrivateDriverData, 16);
UMD_OFFSET(D3DDDICB_ESCAPE, PrivateDriverDataSize, 24);
UMD_OFFSET(D3DDDICB_ESCAPE, hContext, 32);

struct D3DDDICB_FLIPOVERLAY
{
    D3DKMT_HANDLE hKernelOverlay;  // kernel-mode overlay
    D3DKMT_HANDLE hSource;         // resource handle
    void* pPrivateDriverData;      // data between the two driver halves
    UINT PrivateDriverDataSize;    // bytes
};
UMD_LAYOUT(D3DDDICB_FLIPOVERLAY, 24, 8);
UMD_OFFSET(D3DDDICB_FLIPOVERLAY, hKernelOverlay, 0);
UMD_OFFSET(D3DDDICB_FLIPOVERLAY, hSource, 4);
UMD_OFFSET(D3DDDICB_FLIPOVERLAY, pPrivateDriverData, 8);
UMD_OFFSET(D3DDDICB_FLIPOVERLAY, PrivateDriverDataSize, 16);

struct D3DDDICB_GETMULTISAMPLEMETHODLIST
{
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    UINT Width;                                    // pixels
    UINT Height;                                   // pixels
    D3DDDIFORMAT Format;                           // of the pixels
    D3DDDI_MULTISAMPLINGMETHOD* pMethodList;
    UINT MethodCount;
};
UMD_LAYOUT(D3DDDICB_GETMULTISAMPLEMETHODLIST, 32, 8);
UMD_OFFSET(D3DDDICB_GETMULTISAMPLEMETHODLIST, VidPnSourceId, 0);
UMD_OFFSET(D3DDDICB_GETMULTISAMPLEMETHODLIST, Width, 4);
UMD_OFFSET(D3DDDICB_GETMULTISAMPLEMETHODLIST, Height, 8);
UMD_OFFSET(D3DDDICB_GETMULTISAMPLEMETHODLIST, Format, 12);
UMD_OFFSET(D3DDDICB_GETMULTISAMPLEMETHODLIST, pMethodList, 16);
UMD_OFFSET(D3DDDICB_GETMULTISAMPLEMETHODLIST, MethodCount, 24);

struct D3DDDICB_LOCKFLAGS
{
    union
    {
        struct
        {
            UINT ReadOnly : 1;
            UINT WriteOnly : 1;
            UINT DonotWait : 1;
            UINT IgnoreSync : 1;
            UINT LockEntire : 1;
            UINT DonotEvict : 1;
            UINT AcquireAperture : 1;
            UINT Discard : 1;
            UINT NoExistingReference : 1;
            UINT UseAlternateVA : 1;
            UINT IgnoreReadSync : 1;
            UINT Reserved : 21;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDICB_LOCKFLAGS, 4, 4);
UMD_OFFSET(D3DDDICB_LOCKFLAGS, Value, 0);

struct D3DDDICB_LOCK
{
    D3DKMT_HANDLE hAllocation;  // kernel-mode allocation
    UINT PrivateDriverData;
    UINT NumPages;
    const UINT* pPages;
    void* pData;                               // output
    D3DDDICB_LOCKFLAGS Flags;                  // see the record of the flags
    D3DGPU_VIRTUAL_ADDRESS GpuVirtualAddress;  // unused at this version
};
UMD_LAYOUT(D3DDDICB_LOCK, 48, 8);
UMD_OFFSET(D3DDDICB_LOCK, hAllocation, 0);
UMD_OFFSET(D3DDDICB_LOCK, PrivateDriverData, 4);
UMD_OFFSET(D3DDDICB_LOCK, NumPages, 8);
UMD_OFFSET(D3DDDICB_LOCK, pPages, 16);
UMD_OFFSET(D3DDDICB_LOCK, pData, 24);
UMD_OFFSET(D3DDDICB_LOCK, Flags, 32);
UMD_OFFSET(D3DDDICB_LOCK, GpuVirtualAddress, 40);

struct D3DDDICB_PRESENT
{
    D3DKMT_HANDLE hSrcAllocation;  // kernel-mode allocation
    D3DKMT_HANDLE hDstAllocation;  // kernel-mode allocation
    HANDLE hContext;               // kernel-mode context
    UINT BroadcastContextCount;    // entries of BroadcastContext
    HANDLE BroadcastContext[64];
};
UMD_LAYOUT(D3DDDICB_PRESENT, 536, 8);
UMD_OFFSET(D3DDDICB_PRESENT, hSrcAllocation, 0);
UMD_OFFSET(D3DDDICB_PRESENT, hDstAllocation, 4);
UMD_OFFSET(D3DDDICB_PRESENT, hContext, 8);
UMD_OFFSET(D3DDDICB_PRESENT, BroadcastContextCount, 16);
UMD_OFFSET(D3DDDICB_PRESENT, BroadcastContext, 24);

struct D3DDDICB_QUERYADAPTERINFO
{
    void* pPrivateDriverData;    // data between the two driver halves
    UINT PrivateDriverDataSize;  // bytes
};
UMD_LAYOUT(D3DDDICB_QUERYADAPTERINFO, 16, 8);
UMD_OFFSET(D3DDDICB_QUERYADAPTERINFO, pPrivateDriverData, 0);
UMD_OFFSET(D3DDDICB_QUERYADAPTERINFO, PrivateDriverDataSize, 8);

struct D3DDDICB_QUERYRESIDENCY
{
    HANDLE hResource;                 // resource handle
    UINT NumAllocations;              // entries
    const D3DKMT_HANDLE* HandleList;  // kernel-mode allocations
    D3DDDI_RESIDENCYSTATUS* pResidencyStatus;
};
UMD_LAYOUT(D3DDDICB_QUERYRESIDENCY, 32, 8);
UMD_OFFSET(D3DDDICB_QUERYRESIDENCY, hResource, 0);
UMD_OFFSET(D3DDDICB_QUERYRESIDENCY, NumAllocations, 8);
UMD_OFFSET(D3DDDICB_QUERYRESIDENCY, HandleList, 16);
UMD_OFFSET(D3DDDICB_QUERYRESIDENCY, pResidencyStatus, 24);

struct D3DDDICB_RENDERFLAGS
{
    union
    {
        struct
        {
            UINT ResizeCommandBuffer : 1;
            UINT ResizeAllocationList : 1;
            UINT ResizePatchLocationList : 1;
            UINT NullRendering : 1;
            UINT Reserved : 28;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDICB_RENDERFLAGS, 4, 4);
UMD_OFFSET(D3DDDICB_RENDERFLAGS, Value, 0);

struct D3DDDICB_RENDER
{
    UINT CommandLength;                               // bytes
    UINT CommandOffset;                               // bytes
    UINT NumAllocations;                              // entries
    UINT NumPatchLocations;                           // entries
    void* pNewCommandBuffer;                          // out: the next buffer
    UINT NewCommandBufferSize;                        // bytes
    D3DDDI_ALLOCATIONLIST* pNewAllocationList;        // out: the next list
    UINT NewAllocationListSize;                       // entries
    D3DDDI_PATCHLOCATIONLIST* pNewPatchLocationList;  // out: the next list
    UINT NewPatchLocationListSize;                    // entries
    D3DDDICB_RENDERFLAGS Flags;                       // see the record of the flags
    HANDLE hContext;                                  // kernel-mode context
    UINT BroadcastContextCount;                       // entries of BroadcastContext
    HANDLE BroadcastContext[64];
    ULONG QueuedBufferCount;
    D3DGPU_VIRTUAL_ADDRESS NewCommandBuffer;
    void* pPrivateDriverData;    // data between the two driver halves
    UINT PrivateDriverDataSize;  // bytes
};
UMD_LAYOUT(D3DDDICB_RENDER, 624, 8);
UMD_OFFSET(D3DDDICB_RENDER, CommandLength, 0);
UMD_OFFSET(D3DDDICB_RENDER, CommandOffset, 4);
UMD_OFFSET(D3DDDICB_RENDER, NumAllocations, 8);
UMD_OFFSET(D3DDDICB_RENDER, NumPatchLocations, 12);
UMD_OFFSET(D3DDDICB_RENDER, pNewCommandBuffer, 16);
UMD_OFFSET(D3DDDICB_RENDER, NewCommandBufferSize, 24);
UMD_OFFSET(D3DDDICB_RENDER, pNewAllocationList, 32);
UMD_OFFSET(D3DDDICB_RENDER, NewAllocationListSize, 40);
UMD_OFFSET(D3DDDICB_RENDER, pNewPatchLocationList, 48);
UMD_OFFSET(D3DDDICB_RENDER, NewPatchLocationListSize, 56);
UMD_OFFSET(D3DDDICB_RENDER, Flags, 60);
UMD_OFFSET(D3DDDICB_RENDER, hContext, 64);
UMD_OFFSET(D3DDDICB_RENDER, BroadcastContextCount, 72);
UMD_OFFSET(D3DDDICB_RENDER, BroadcastContext, 80);
UMD_OFFSET(D3DDDICB_RENDER, QueuedBufferCount, 592);
UMD_OFFSET(D3DDDICB_RENDER, NewCommandBuffer, 600);
UMD_OFFSET(D3DDDICB_RENDER, pPrivateDriverData, 608);
UMD_OFFSET(D3DDDICB_RENDER, PrivateDriverDataSize, 616);

struct D3DDDICB_SETDISPLAYMODE
{
    D3DKMT_HANDLE hPrimaryAllocation;  // kernel-mode allocation of the primary
    UINT PrivateDriverFormatAttribute;
};
UMD_LAYOUT(D3DDDICB_SETDISPLAYMODE, 8, 4);
UMD_OFFSET(D3DDDICB_SETDISPLAYMODE, hPrimaryAllocation, 0);
UMD_OFFSET(D3DDDICB_SETDISPLAYMODE, PrivateDriverFormatAttribute, 4);

struct D3DDDICB_SETDISPLAYPRIVATEDRIVERFORMAT
{
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    UINT PrivateDriverFormatAttribute;
};
UMD_LAYOUT(D3DDDICB_SETDISPLAYPRIVATEDRIVERFORMAT, 8, 4);
UMD_OFFSET(D3DDDICB_SETDISPLAYPRIVATEDRIVERFORMAT, VidPnSourceId, 0);
UMD_OFFSET(D3DDDICB_SETDISPLAYPRIVATEDRIVERFORMAT, PrivateDriverFormatAttribute, 4);

struct D3DDDICB_SETPRIORITY
{
    HANDLE hResource;                 // resource handle
    UINT NumAllocations;              // entries
    const D3DKMT_HANDLE* HandleList;  // kernel-mode allocations
    const UINT* pPriorities;
};
UMD_LAYOUT(D3DDDICB_SETPRIORITY, 32, 8);
UMD_OFFSET(D3DDDICB_SETPRIORITY, hResource, 0);
UMD_OFFSET(D3DDDICB_SETPRIORITY, NumAllocations, 8);
UMD_OFFSET(D3DDDICB_SETPRIORITY, HandleList, 16);
UMD_OFFSET(D3DDDICB_SETPRIORITY, pPriorities, 24);

struct D3DDDICB_SIGNALFLAGS
{
    union
    {
        struct
        {
            UINT SignalAtSubmission : 1;
            UINT Reserved : 31;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(D3DDDICB_SIGNALFLAGS, 4, 4);
UMD_OFFSET(D3DDDICB_SIGNALFLAGS, Value, 0);

struct D3DDDICB_SIGNALSYNCHRONIZATIONOBJECT
{
    HANDLE hContext;   // kernel-mode context
    UINT ObjectCount;  // entries of ObjectHandleArray
    D3DKMT_HANDLE ObjectHandleArray[32];
    D3DDDICB_SIGNALFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDICB_SIGNALSYNCHRONIZATIONOBJECT, 144, 8);
UMD_OFFSET(D3DDDICB_SIGNALSYNCHRONIZATIONOBJECT, hContext, 0);
UMD_OFFSET(D3DDDICB_SIGNALSYNCHRONIZATIONOBJECT, ObjectCount, 8);
UMD_OFFSET(D3DDDICB_SIGNALSYNCHRONIZATIONOBJECT, ObjectHandleArray, 12);
UMD_OFFSET(D3DDDICB_SIGNALSYNCHRONIZATIONOBJECT, Flags, 140);

struct D3DDDICB_UNLOCK
{
    UINT NumAllocations;                 // entries
    const D3DKMT_HANDLE* phAllocations;  // kernel-mode allocations
};
UMD_LAYOUT(D3DDDICB_UNLOCK, 16, 8);
UMD_OFFSET(D3DDDICB_UNLOCK, NumAllocations, 0);
UMD_OFFSET(D3DDDICB_UNLOCK, phAllocations, 8);

struct D3DDDICB_UPDATEOVERLAY
{
    D3DKMT_HANDLE hKernelOverlay;  // kernel-mode overlay
    D3DDDI_KERNELOVERLAYINFO OverlayInfo;
};
UMD_LAYOUT(D3DDDICB_UPDATEOVERLAY, 64, 8);
UMD_OFFSET(D3DDDICB_UPDATEOVERLAY, hKernelOverlay, 0);
UMD_OFFSET(D3DDDICB_UPDATEOVERLAY, OverlayInfo, 8);

struct D3DDDICB_WAITFORSYNCHRONIZATIONOBJECT
{
    HANDLE hContext;   // kernel-mode context
    UINT ObjectCount;  // entries of ObjectHandleArray
    D3DKMT_HANDLE ObjectHandleArray[32];
};
UMD_LAYOUT(D3DDDICB_WAITFORSYNCHRONIZATIONOBJECT, 144, 8);
UMD_OFFSET(D3DDDICB_WAITFORSYNCHRONIZATIONOBJECT, hContext, 0);
UMD_OFFSET(D3DDDICB_WAITFORSYNCHRONIZATIONOBJECT, ObjectCount, 8);
UMD_OFFSET(D3DDDICB_WAITFORSYNCHRONIZATIONOBJECT, ObjectHandleArray, 12);

UMD_DDI_RECORDS_END
