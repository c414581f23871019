// Direct3D 9 user-mode display driver interface: argument records of the driver's entries.
// Published names and values of the binary interface, version 0x2003 (64-bit).
#pragma once

#include "ddi/ddi_records_common.h"
#include "ddi/ddi_records_video.h"

UMD_DDI_RECORDS_BEGIN

struct D3DDDIARG_AUTHENTICATEDCHANNELKEYEXCHANGE
{
    HANDLE hChannel;  // channel handle
    UINT DataSize;    // bytes
    void* pData;      // DataSize bytes
};
UMD_LAYOUT(D3DDDIARG_AUTHENTICATEDCHANNELKEYEXCHANGE, 24, 8);
UMD_OFFSET(D3DDDIARG_AUTHENTICATEDCHANNELKEYEXCHANGE, hChannel, 0);
UMD_OFFSET(D3DDDIARG_AUTHENTICATEDCHANNELKEYEXCHANGE, DataSize, 8);
UMD_OFFSET(D3DDDIARG_AUTHENTICATEDCHANNELKEYEXCHANGE, pData, 16);

struct D3DDDIARG_BLT
{
    HANDLE hSrcResource;       // source resource handle
    UINT SrcSubResourceIndex;  // sub-resource of the source
    RECT SrcRect;              // pixels
    HANDLE hDstResource;       // destination resource handle
    UINT DstSubResourceIndex;  // sub-resource of the destination
    RECT DstRect;              // pixels
    UINT ColorKey;             // A8R8G8B8
    D3DDDI_BLTFLAGS Flags;     // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_BLT, 72, 8);
UMD_OFFSET(D3DDDIARG_BLT, hSrcResource, 0);
UMD_OFFSET(D3DDDIARG_BLT, SrcSubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_BLT, SrcRect, 12);
UMD_OFFSET(D3DDDIARG_BLT, hDstResource, 32);
UMD_OFFSET(D3DDDIARG_BLT, DstSubResourceIndex, 40);
UMD_OFFSET(D3DDDIARG_BLT, DstRect, 44);
UMD_OFFSET(D3DDDIARG_BLT, ColorKey, 60);
UMD_OFFSET(D3DDDIARG_BLT, Flags, 64);

struct D3DDDIARG_BUFFERBLT
{
    HANDLE hDstResource;   // destination resource handle
    HANDLE hSrcResource;   // source resource handle
    UINT Offset;           // bytes
    D3DDDIRANGE SrcRange;  // bytes
};
UMD_LAYOUT(D3DDDIARG_BUFFERBLT, 32, 8);
UMD_OFFSET(D3DDDIARG_BUFFERBLT, hDstResource, 0);
UMD_OFFSET(D3DDDIARG_BUFFERBLT, hSrcResource, 8);
UMD_OFFSET(D3DDDIARG_BUFFERBLT, Offset, 16);
UMD_OFFSET(D3DDDIARG_BUFFERBLT, SrcRange, 20);

struct D3DDDIARG_CAPTURETOSYSMEM
{
    HANDLE hSrcResource;       // source resource handle
    RECT SrcRect;              // pixels
    HANDLE hDstResource;       // destination resource handle
    UINT DstSubResourceIndex;  // sub-resource of the destination
    RECT DstRect;              // pixels
};
UMD_LAYOUT(D3DDDIARG_CAPTURETOSYSMEM, 56, 8);
UMD_OFFSET(D3DDDIARG_CAPTURETOSYSMEM, hSrcResource, 0);
UMD_OFFSET(D3DDDIARG_CAPTURETOSYSMEM, SrcRect, 8);
UMD_OFFSET(D3DDDIARG_CAPTURETOSYSMEM, hDstResource, 24);
UMD_OFFSET(D3DDDIARG_CAPTURETOSYSMEM, DstSubResourceIndex, 32);
UMD_OFFSET(D3DDDIARG_CAPTURETOSYSMEM, DstRect, 36);

struct D3DDDIARG_CLEAR
{
    UINT Flags;        // see the record of the flags
    UINT FillColor;    // A8R8G8B8
    FLOAT FillDepth;   // 0.0 to 1.0
    UINT FillStencil;  // 0 to 255
};
UMD_LAYOUT(D3DDDIARG_CLEAR, 16, 4);
UMD_OFFSET(D3DDDIARG_CLEAR, Flags, 0);
UMD_OFFSET(D3DDDIARG_CLEAR, FillColor, 4);
UMD_OFFSET(D3DDDIARG_CLEAR, FillDepth, 8);
UMD_OFFSET(D3DDDIARG_CLEAR, FillStencil, 12);

struct D3DDDIARG_COLORFILL
{
    HANDLE hResource;             // resource handle
    UINT SubResourceIndex;        // level, or face x levels + level
    RECT DstRect;                 // pixels
    D3DCOLOR Color;               // A8R8G8B8
    D3DDDI_COLORFILLFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_COLORFILL, 40, 8);
UMD_OFFSET(D3DDDIARG_COLORFILL, hResource, 0);
UMD_OFFSET(D3DDDIARG_COLORFILL, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_COLORFILL, DstRect, 12);
UMD_OFFSET(D3DDDIARG_COLORFILL, Color, 28);
UMD_OFFSET(D3DDDIARG_COLORFILL, Flags, 32);

struct D3DDDIARG_COMPOSERECTS
{
    HANDLE hSrcResource;       // source resource handle
    UINT SrcSubResourceIndex;  // sub-resource of the source
    HANDLE hDstResource;       // destination resource handle
    UINT DstSubResourceIndex;  // sub-resource of the destination
    HANDLE hSrcRectDescsVB;
    UINT NumRects;  // rectangles
    HANDLE hDstRectDescsVB;
    D3DDDI_COMPOSERECTSOP Operation;  // what to do
    INT XOffset;
    INT YOffset;
};
UMD_LAYOUT(D3DDDIARG_COMPOSERECTS, 72, 8);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, hSrcResource, 0);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, SrcSubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, hDstResource, 16);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, DstSubResourceIndex, 24);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, hSrcRectDescsVB, 32);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, NumRects, 40);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, hDstRectDescsVB, 48);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, Operation, 56);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, XOffset, 60);
UMD_OFFSET(D3DDDIARG_COMPOSERECTS, YOffset, 64);

struct D3DDDIARG_CONFIGUREAUTHENTICATEDCHANNEL
{
    UINT InputSize;
    const void* pInputData;
    void* pOutputData;
};
UMD_LAYOUT(D3DDDIARG_CONFIGUREAUTHENTICATEDCHANNEL, 24, 8);
UMD_OFFSET(D3DDDIARG_CONFIGUREAUTHENTICATEDCHANNEL, InputSize, 0);
UMD_OFFSET(D3DDDIARG_CONFIGUREAUTHENTICATEDCHANNEL, pInputData, 8);
UMD_OFFSET(D3DDDIARG_CONFIGUREAUTHENTICATEDCHANNEL, pOutputData, 16);

struct D3DDDIARG_CREATEAUTHENTICATEDCHANNEL
{
    DDIAUTHENTICATEDCHANNELTYPE ChannelType;
    HANDLE hChannel;  // channel handle
};
UMD_LAYOUT(D3DDDIARG_CREATEAUTHENTICATEDCHANNEL, 16, 8);
UMD_OFFSET(D3DDDIARG_CREATEAUTHENTICATEDCHANNEL, ChannelType, 0);
UMD_OFFSET(D3DDDIARG_CREATEAUTHENTICATEDCHANNEL, hChannel, 8);

struct D3DDDIARG_CREATECRYPTOSESSION
{
    GUID CryptoType;
    GUID DecodeProfile;
    HANDLE hCryptoSession;  // session handle
};
UMD_LAYOUT(D3DDDIARG_CREATECRYPTOSESSION, 40, 8);
UMD_OFFSET(D3DDDIARG_CREATECRYPTOSESSION, CryptoType, 0);
UMD_OFFSET(D3DDDIARG_CREATECRYPTOSESSION, DecodeProfile, 16);
UMD_OFFSET(D3DDDIARG_CREATECRYPTOSESSION, hCryptoSession, 32);

struct D3DDDIARG_CREATEDECODEDEVICE
{
    const GUID* pGuid;
    DXVADDI_VIDEODESC VideoDesc;  // of the main stream
    DXVADDI_CONFIGPICTUREDECODE* pConfig;
    HANDLE hDecode;  // decode device handle
};
UMD_LAYOUT(D3DDDIARG_CREATEDECODEDEVICE, 64, 8);
UMD_OFFSET(D3DDDIARG_CREATEDECODEDEVICE, pGuid, 0);
UMD_OFFSET(D3DDDIARG_CREATEDECODEDEVICE, VideoDesc, 8);
UMD_OFFSET(D3DDDIARG_CREATEDECODEDEVICE, pConfig, 48);
UMD_OFFSET(D3DDDIARG_CREATEDECODEDEVICE, hDecode, 56);

struct D3DDDIARG_CREATEDEVICE
{
    HANDLE hDevice;                                // device handle
    UINT Interface;                                // interface version of the runtime
    UINT Version;                                  // of the runtime
    const D3DDDI_DEVICECALLBACKS* pCallbacks;      // the runtime's, valid during the call
    void* pCommandBuffer;                          // written by the driver, submitted by pfnRenderCb
    UINT CommandBufferSize;                        // bytes
    D3DDDI_ALLOCATIONLIST* pAllocationList;        // allocations that the command buffer names
    UINT AllocationListSize;                       // entries
    D3DDDI_PATCHLOCATIONLIST* pPatchLocationList;  // places of the command buffer to patch
    UINT PatchLocationListSize;                    // entries
    D3DDDI_DEVICEFUNCS* pDeviceFuncs;              // filled by the driver
    D3DDDI_CREATEDEVICEFLAGS Flags;                // see the record of the flags
    D3DGPU_VIRTUAL_ADDRESS CommandBuffer;          // unused at this version
};
UMD_LAYOUT(D3DDDIARG_CREATEDEVICE, 96, 8);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, hDevice, 0);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, Interface, 8);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, Version, 12);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, pCallbacks, 16);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, pCommandBuffer, 24);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, CommandBufferSize, 32);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, pAllocationList, 40);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, AllocationListSize, 48);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, pPatchLocationList, 56);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, PatchLocationListSize, 64);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, pDeviceFuncs, 72);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, Flags, 80);
UMD_OFFSET(D3DDDIARG_CREATEDEVICE, CommandBuffer, 88);

struct D3DDDIARG_CREATEEXTENSIONDEVICE
{
    const GUID* pGuid;
    DXVADDI_PRIVATEDATA* pPrivate;
    HANDLE hExtension;  // extension device handle
};
UMD_LAYOUT(D3DDDIARG_CREATEEXTENSIONDEVICE, 24, 8);
UMD_OFFSET(D3DDDIARG_CREATEEXTENSIONDEVICE, pGuid, 0);
UMD_OFFSET(D3DDDIARG_CREATEEXTENSIONDEVICE, pPrivate, 8);
UMD_OFFSET(D3DDDIARG_CREATEEXTENSIONDEVICE, hExtension, 16);

struct D3DDDIARG_CREATELIGHT
{
    UINT Index;  // index
};
UMD_LAYOUT(D3DDDIARG_CREATELIGHT, 4, 4);
UMD_OFFSET(D3DDDIARG_CREATELIGHT, Index, 0);

struct D3DDDIARG_CREATEOVERLAY
{
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    D3DDDI_OVERLAYINFO OverlayInfo;
    HANDLE hOverlay;  // overlay handle
};
UMD_LAYOUT(D3DDDIARG_CREATEOVERLAY, 80, 8);
UMD_OFFSET(D3DDDIARG_CREATEOVERLAY, VidPnSourceId, 0);
UMD_OFFSET(D3DDDIARG_CREATEOVERLAY, OverlayInfo, 8);
UMD_OFFSET(D3DDDIARG_CREATEOVERLAY, hOverlay, 72);

struct D3DDDIARG_CREATEPIXELSHADER
{
    UINT CodeSize;        // bytes
    HANDLE ShaderHandle;  // out: the driver's handle
};
UMD_LAYOUT(D3DDDIARG_CREATEPIXELSHADER, 16, 8);
UMD_OFFSET(D3DDDIARG_CREATEPIXELSHADER, CodeSize, 0);
UMD_OFFSET(D3DDDIARG_CREATEPIXELSHADER, ShaderHandle, 8);

struct D3DDDIARG_CREATEQUERY
{
    D3DDDIQUERYTYPE QueryType;  // which
    HANDLE hQuery;              // query handle
};
UMD_LAYOUT(D3DDDIARG_CREATEQUERY, 16, 8);
UMD_OFFSET(D3DDDIARG_CREATEQUERY, QueryType, 0);
UMD_OFFSET(D3DDDIARG_CREATEQUERY, hQuery, 8);

struct D3DDDIARG_CREATERESOURCE
{
    D3DDDIFORMAT Format;                           // of the pixels
    D3DDDI_POOL Pool;                              // where the runtime wants the memory
    D3DDDIMULTISAMPLE_TYPE MultisampleType;        // samples a pixel
    UINT MultisampleQuality;                       // 0 to quality levels - 1
    const D3DDDI_SURFACEINFO* pSurfList;           // one entry a sub-resource
    UINT SurfCount;                                // entries of pSurfList
    UINT MipLevels;                                // levels
    UINT Fvf;                                      // flexible vertex format bits
    D3DDDI_VIDEO_PRESENT_SOURCE_ID VidPnSourceId;  // video-present source
    D3DDDI_RATIONAL RefreshRate;                   // of the display mode
    HANDLE hResource;                              // resource handle
    D3DDDI_RESOURCEFLAGS Flags;                    // see the record of the flags
    D3DDDI_ROTATION Rotation;                      // of the output
};
UMD_LAYOUT(D3DDDIARG_CREATERESOURCE, 64, 8);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, Format, 0);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, Pool, 4);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, MultisampleType, 8);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, MultisampleQuality, 12);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, pSurfList, 16);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, SurfCount, 24);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, MipLevels, 28);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, Fvf, 32);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, VidPnSourceId, 36);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, RefreshRate, 40);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, hResource, 48);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, Flags, 56);
UMD_OFFSET(D3DDDIARG_CREATERESOURCE, Rotation, 60);

struct D3DDDIARG_CREATEVERTEXSHADERDECL
{
    UINT NumVertexElements;  // entries
    HANDLE ShaderHandle;     // out: the driver's handle
};
UMD_LAYOUT(D3DDDIARG_CREATEVERTEXSHADERDECL, 16, 8);
UMD_OFFSET(D3DDDIARG_CREATEVERTEXSHADERDECL, NumVertexElements, 0);
UMD_OFFSET(D3DDDIARG_CREATEVERTEXSHADERDECL, ShaderHandle, 8);

struct D3DDDIARG_CREATEVERTEXSHADERFUNC
{
    UINT Size;            // bytes
    HANDLE ShaderHandle;  // out: the driver's handle
};
UMD_LAYOUT(D3DDDIARG_CREATEVERTEXSHADERFUNC, 16, 8);
UMD_OFFSET(D3DDDIARG_CREATEVERTEXSHADERFUNC, Size, 0);
UMD_OFFSET(D3DDDIARG_CREATEVERTEXSHADERFUNC, ShaderHandle, 8);

struct D3DDDIARG_CREATEVIDEOPROCESSDEVICE
{
    const GUID* pVideoProcGuid;       // the video processor
    DXVADDI_VIDEODESC VideoDesc;      // of the main stream
    D3DDDIFORMAT RenderTargetFormat;  // of the output
    UINT MaxSubStreams;               // besides the main one
    HANDLE hVideoProcess;             // video process device handle
};
UMD_LAYOUT(D3DDDIARG_CREATEVIDEOPROCESSDEVICE, 64, 8);
UMD_OFFSET(D3DDDIARG_CREATEVIDEOPROCESSDEVICE, pVideoProcGuid, 0);
UMD_OFFSET(D3DDDIARG_CREATEVIDEOPROCESSDEVICE, VideoDesc, 8);
UMD_OFFSET(D3DDDIARG_CREATEVIDEOPROCESSDEVICE, RenderTargetFormat, 48);
UMD_OFFSET(D3DDDIARG_CREATEVIDEOPROCESSDEVICE, MaxSubStreams, 52);
UMD_OFFSET(D3DDDIARG_CREATEVIDEOPROCESSDEVICE, hVideoProcess, 56);

struct D3DDDIARG_CRYPTOSESSIONKEYEXCHANGE
{
    HANDLE hCryptoSession;  // session handle
    UINT DataSize;          // bytes
    void* pData;            // DataSize bytes
};
UMD_LAYOUT(D3DDDIARG_CRYPTOSESSIONKEYEXCHANGE, 24, 8);
UMD_OFFSET(D3DDDIARG_CRYPTOSESSIONKEYEXCHANGE, hCryptoSession, 0);
UMD_OFFSET(D3DDDIARG_CRYPTOSESSIONKEYEXCHANGE, DataSize, 8);
UMD_OFFSET(D3DDDIARG_CRYPTOSESSIONKEYEXCHANGE, pData, 16);

struct D3DDDIARG_DECODEBEGINFRAME
{
    HANDLE hDecode;  // decode device handle
    DXVADDI_PVP_SETKEY* pPVPSetKey;
};
UMD_LAYOUT(D3DDDIARG_DECODEBEGINFRAME, 16, 8);
UMD_OFFSET(D3DDDIARG_DECODEBEGINFRAME, hDecode, 0);
UMD_OFFSET(D3DDDIARG_DECODEBEGINFRAME, pPVPSetKey, 8);

struct D3DDDIARG_DECODEENDFRAME
{
    HANDLE hDecode;  // decode device handle
    HANDLE* pHandleComplete;
};
UMD_LAYOUT(D3DDDIARG_DECODEENDFRAME, 16, 8);
UMD_OFFSET(D3DDDIARG_DECODEENDFRAME, hDecode, 0);
UMD_OFFSET(D3DDDIARG_DECODEENDFRAME, pHandleComplete, 8);

struct D3DDDIARG_DECODEEXECUTE
{
    HANDLE hDecode;  // decode device handle
    UINT NumCompBuffers;
    DXVADDI_DECODEBUFFERDESC* pCompressedBuffers;
};
UMD_LAYOUT(D3DDDIARG_DECODEEXECUTE, 24, 8);
UMD_OFFSET(D3DDDIARG_DECODEEXECUTE, hDecode, 0);
UMD_OFFSET(D3DDDIARG_DECODEEXECUTE, NumCompBuffers, 8);
UMD_OFFSET(D3DDDIARG_DECODEEXECUTE, pCompressedBuffers, 16);

struct D3DDDIARG_DECODEEXTENSIONEXECUTE
{
    HANDLE hDecode;  // decode device handle
    UINT Function;
    DXVADDI_PRIVATEDATA* pPrivateInput;
    DXVADDI_PRIVATEDATA* pPrivateOutput;
    UINT NumBuffers;
    DXVADDI_PRIVATEBUFFER* pBuffers;
};
UMD_LAYOUT(D3DDDIARG_DECODEEXTENSIONEXECUTE, 48, 8);
UMD_OFFSET(D3DDDIARG_DECODEEXTENSIONEXECUTE, hDecode, 0);
UMD_OFFSET(D3DDDIARG_DECODEEXTENSIONEXECUTE, Function, 8);
UMD_OFFSET(D3DDDIARG_DECODEEXTENSIONEXECUTE, pPrivateInput, 16);
UMD_OFFSET(D3DDDIARG_DECODEEXTENSIONEXECUTE, pPrivateOutput, 24);
UMD_OFFSET(D3DDDIARG_DECODEEXTENSIONEXECUTE, NumBuffers, 32);
UMD_OFFSET(D3DDDIARG_DECODEEXTENSIONEXECUTE, pBuffers, 40);

struct D3DDDIARG_DECRYPTIONBLT
{
    HANDLE hCryptoSession;     // session handle
    HANDLE hSrcResource;       // source resource handle
    UINT SrcSubResourceIndex;  // sub-resource of the source
    HANDLE hDstResource;       // destination resource handle
    UINT DstSubResourceIndex;  // sub-resource of the destination
    UINT SrcResourceSize;
    D3DDDIENCRYPTED_BLOCK_INFO* pEncryptedBlockInfo;
    void* pContentKey;
    void* pIV;
};
UMD_LAYOUT(D3DDDIARG_DECRYPTIONBLT, 64, 8);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, hCryptoSession, 0);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, hSrcResource, 8);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, SrcSubResourceIndex, 16);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, hDstResource, 24);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, DstSubResourceIndex, 32);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, SrcResourceSize, 36);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, pEncryptedBlockInfo, 40);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, pContentKey, 48);
UMD_OFFSET(D3DDDIARG_DECRYPTIONBLT, pIV, 56);

struct D3DDDIARG_DEPTHFILL
{
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
    RECT DstRect;           // pixels
    UINT Depth;             // slices
};
UMD_LAYOUT(D3DDDIARG_DEPTHFILL, 32, 8);
UMD_OFFSET(D3DDDIARG_DEPTHFILL, hResource, 0);
UMD_OFFSET(D3DDDIARG_DEPTHFILL, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_DEPTHFILL, DstRect, 12);
UMD_OFFSET(D3DDDIARG_DEPTHFILL, Depth, 28);

struct D3DDDIARG_DESTROYAUTHENTICATEDCHANNEL
{
    HANDLE hChannel;  // channel handle
};
UMD_LAYOUT(D3DDDIARG_DESTROYAUTHENTICATEDCHANNEL, 8, 8);
UMD_OFFSET(D3DDDIARG_DESTROYAUTHENTICATEDCHANNEL, hChannel, 0);

struct D3DDDIARG_DESTROYCRYPTOSESSION
{
    HANDLE hCryptoSession;  // session handle
};
UMD_LAYOUT(D3DDDIARG_DESTROYCRYPTOSESSION, 8, 8);
UMD_OFFSET(D3DDDIARG_DESTROYCRYPTOSESSION, hCryptoSession, 0);

struct D3DDDIARG_DESTROYLIGHT
{
    UINT Index;  // index
};
UMD_LAYOUT(D3DDDIARG_DESTROYLIGHT, 4, 4);
UMD_OFFSET(D3DDDIARG_DESTROYLIGHT, Index, 0);

struct D3DDDIARG_DESTROYOVERLAY
{
    HANDLE hOverlay;  // overlay handle
};
UMD_LAYOUT(D3DDDIARG_DESTROYOVERLAY, 8, 8);
UMD_OFFSET(D3DDDIARG_DESTROYOVERLAY, hOverlay, 0);

struct D3DDDIARG_DRAWINDEXEDPRIMITIVE
{
    D3DPRIMITIVETYPE PrimitiveType;  // point list to triangle fan
    INT BaseVertexIndex;             // vertices, signed
    UINT MinIndex;                   // lowest vertex index used
    UINT NumVertices;                // vertices
    UINT StartIndex;                 // indices
    UINT PrimitiveCount;             // primitives
};
UMD_LAYOUT(D3DDDIARG_DRAWINDEXEDPRIMITIVE, 24, 4);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE, PrimitiveType, 0);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE, BaseVertexIndex, 4);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE, MinIndex, 8);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE, NumVertices, 12);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE, StartIndex, 16);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE, PrimitiveCount, 20);

struct D3DDDIARG_DRAWINDEXEDPRIMITIVE2
{
    D3DPRIMITIVETYPE PrimitiveType;  // point list to triangle fan
    INT BaseVertexOffset;            // bytes, signed
    UINT MinIndex;                   // lowest vertex index used
    UINT NumVertices;                // vertices
    UINT StartIndexOffset;           // bytes
    UINT PrimitiveCount;             // primitives
};
UMD_LAYOUT(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, 24, 4);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, PrimitiveType, 0);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, BaseVertexOffset, 4);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, MinIndex, 8);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, NumVertices, 12);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, StartIndexOffset, 16);
UMD_OFFSET(D3DDDIARG_DRAWINDEXEDPRIMITIVE2, PrimitiveCount, 20);

struct D3DDDIARG_DRAWPRIMITIVE
{
    D3DPRIMITIVETYPE PrimitiveType;  // point list to triangle fan
    UINT VStart;                     // vertices
    UINT PrimitiveCount;             // primitives
};
UMD_LAYOUT(D3DDDIARG_DRAWPRIMITIVE, 12, 4);
UMD_OFFSET(D3DDDIARG_DRAWPRIMITIVE, PrimitiveType, 0);
UMD_OFFSET(D3DDDIARG_DRAWPRIMITIVE, VStart, 4);
UMD_OFFSET(D3DDDIARG_DRAWPRIMITIVE, PrimitiveCount, 8);

struct D3DDDIARG_DRAWPRIMITIVE2
{
    D3DPRIMITIVETYPE PrimitiveType;  // point list to triangle fan
    UINT FirstVertexOffset;          // bytes
    UINT PrimitiveCount;             // primitives
};
UMD_LAYOUT(D3DDDIARG_DRAWPRIMITIVE2, 12, 4);
UMD_OFFSET(D3DDDIARG_DRAWPRIMITIVE2, PrimitiveType, 0);
UMD_OFFSET(D3DDDIARG_DRAWPRIMITIVE2, FirstVertexOffset, 4);
UMD_OFFSET(D3DDDIARG_DRAWPRIMITIVE2, PrimitiveCount, 8);

struct D3DDDIARG_DRAWRECTPATCH
{
    UINT Handle;
};
UMD_LAYOUT(D3DDDIARG_DRAWRECTPATCH, 4, 4);
UMD_OFFSET(D3DDDIARG_DRAWRECTPATCH, Handle, 0);

struct D3DDDIARG_DRAWTRIPATCH
{
    UINT Handle;
};
UMD_LAYOUT(D3DDDIARG_DRAWTRIPATCH, 4, 4);
UMD_OFFSET(D3DDDIARG_DRAWTRIPATCH, Handle, 0);

struct D3DDDIARG_DXVAHD_CREATEVIDEOPROCESSOR
{
    const GUID* pVPGuid;
    HANDLE hVideoProcessor;  // video processor handle
};
UMD_LAYOUT(D3DDDIARG_DXVAHD_CREATEVIDEOPROCESSOR, 16, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_CREATEVIDEOPROCESSOR, pVPGuid, 0);
UMD_OFFSET(D3DDDIARG_DXVAHD_CREATEVIDEOPROCESSOR, hVideoProcessor, 8);

struct D3DDDIARG_DXVAHD_GETVIDEOPROCESSBLTSTATEPRIVATE
{
    HANDLE hVideoProcessor;                   // video processor handle
    DXVAHDDDI_BLT_STATE_PRIVATE_DATA* pData;  // output
};
UMD_LAYOUT(D3DDDIARG_DXVAHD_GETVIDEOPROCESSBLTSTATEPRIVATE, 16, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_GETVIDEOPROCESSBLTSTATEPRIVATE, hVideoProcessor, 0);
UMD_OFFSET(D3DDDIARG_DXVAHD_GETVIDEOPROCESSBLTSTATEPRIVATE, pData, 8);

struct D3DDDIARG_DXVAHD_GETVIDEOPROCESSSTREAMSTATEPRIVATE
{
    HANDLE hVideoProcessor;  // video processor handle
    UINT StreamNumber;
    DXVAHDDDI_STREAM_STATE_PRIVATE_DATA* pData;  // output
};
UMD_LAYOUT(D3DDDIARG_DXVAHD_GETVIDEOPROCESSSTREAMSTATEPRIVATE, 24, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_GETVIDEOPROCESSSTREAMSTATEPRIVATE, hVideoProcessor, 0);
UMD_OFFSET(D3DDDIARG_DXVAHD_GETVIDEOPROCESSSTREAMSTATEPRIVATE, StreamNumber, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_GETVIDEOPROCESSSTREAMSTATEPRIVATE, pData, 16);

struct D3DDDIARG_DXVAHD_SETVIDEOPROCESSBLTSTATE
{
    HANDLE hVideoProcessor;     // video processor handle
    DXVAHDDDI_BLT_STATE State;  // which
    UINT DataSize;              // bytes
    const void* pData;          // the state, DataSize bytes
};
UMD_LAYOUT(D3DDDIARG_DXVAHD_SETVIDEOPROCESSBLTSTATE, 24, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSBLTSTATE, hVideoProcessor, 0);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSBLTSTATE, State, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSBLTSTATE, DataSize, 12);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSBLTSTATE, pData, 16);

struct D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE
{
    HANDLE hVideoProcessor;  // video processor handle
    UINT StreamNumber;
    DXVAHDDDI_STREAM_STATE State;  // which
    UINT DataSize;                 // bytes
    const void* pData;             // the state, DataSize bytes
};
UMD_LAYOUT(D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE, 32, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE, hVideoProcessor, 0);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE, StreamNumber, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE, State, 12);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE, DataSize, 16);
UMD_OFFSET(D3DDDIARG_DXVAHD_SETVIDEOPROCESSSTREAMSTATE, pData, 24);

struct D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD
{
    HANDLE hVideoProcessor;  // video processor handle
    DXVAHDDDI_SURFACE OutputSurface;
    UINT OutputFrame;
    UINT StreamCount;
    const DXVAHDDDI_STREAM_DATA* pStreams;
};
UMD_LAYOUT(D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD, 40, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD, hVideoProcessor, 0);
UMD_OFFSET(D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD, OutputSurface, 8);
UMD_OFFSET(D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD, OutputFrame, 24);
UMD_OFFSET(D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD, StreamCount, 28);
UMD_OFFSET(D3DDDIARG_DXVAHD_VIDEOPROCESSBLTHD, pStreams, 32);

struct D3DDDIARG_ENCRYPTIONBLT
{
    HANDLE hCryptoSession;     // session handle
    HANDLE hSrcResource;       // source resource handle
    UINT SrcSubResourceIndex;  // sub-resource of the source
    HANDLE hDstResource;       // destination resource handle
    UINT DstSubResourceIndex;  // sub-resource of the destination
    UINT DstResourceSize;
    void* pIV;
};
UMD_LAYOUT(D3DDDIARG_ENCRYPTIONBLT, 48, 8);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, hCryptoSession, 0);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, hSrcResource, 8);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, SrcSubResourceIndex, 16);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, hDstResource, 24);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, DstSubResourceIndex, 32);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, DstResourceSize, 36);
UMD_OFFSET(D3DDDIARG_ENCRYPTIONBLT, pIV, 40);

struct D3DDDIARG_EXTENSIONEXECUTE
{
    HANDLE hExtension;  // extension device handle
    UINT Function;
    DXVADDI_PRIVATEDATA* pPrivateInput;
    DXVADDI_PRIVATEDATA* pPrivateOutput;
    UINT NumBuffers;
    DXVADDI_PRIVATEBUFFER* pBuffers;
};
UMD_LAYOUT(D3DDDIARG_EXTENSIONEXECUTE, 48, 8);
UMD_OFFSET(D3DDDIARG_EXTENSIONEXECUTE, hExtension, 0);
UMD_OFFSET(D3DDDIARG_EXTENSIONEXECUTE, Function, 8);
UMD_OFFSET(D3DDDIARG_EXTENSIONEXECUTE, pPrivateInput, 16);
UMD_OFFSET(D3DDDIARG_EXTENSIONEXECUTE, pPrivateOutput, 24);
UMD_OFFSET(D3DDDIARG_EXTENSIONEXECUTE, NumBuffers, 32);
UMD_OFFSET(D3DDDIARG_EXTENSIONEXECUTE, pBuffers, 40);

struct D3DDDIARG_FINISHSESSIONKEYREFRESH
{
    HANDLE hCryptoSession;  // session handle
};
UMD_LAYOUT(D3DDDIARG_FINISHSESSIONKEYREFRESH, 8, 8);
UMD_OFFSET(D3DDDIARG_FINISHSESSIONKEYREFRESH, hCryptoSession, 0);

struct D3DDDIARG_FLIPOVERLAY
{
    HANDLE hOverlay;                // overlay handle
    HANDLE hSource;                 // resource handle
    UINT SourceIndex;               // sub-resource
    D3DDDI_FLIPOVERLAYFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_FLIPOVERLAY, 24, 8);
UMD_OFFSET(D3DDDIARG_FLIPOVERLAY, hOverlay, 0);
UMD_OFFSET(D3DDDIARG_FLIPOVERLAY, hSource, 8);
UMD_OFFSET(D3DDDIARG_FLIPOVERLAY, SourceIndex, 16);
UMD_OFFSET(D3DDDIARG_FLIPOVERLAY, Flags, 20);

struct D3DDDIARG_GENERATEMIPSUBLEVELS
{
    HANDLE hResource;  // resource handle
    D3DDDITEXTUREFILTERTYPE Filter;
};
UMD_LAYOUT(D3DDDIARG_GENERATEMIPSUBLEVELS, 16, 8);
UMD_OFFSET(D3DDDIARG_GENERATEMIPSUBLEVELS, hResource, 0);
UMD_OFFSET(D3DDDIARG_GENERATEMIPSUBLEVELS, Filter, 8);

struct D3DDDIARG_GETCAPS
{
    D3DDDICAPS_TYPE Type;  // which
    void* pInfo;           // input that belongs to the type
    void* pData;           // output
    UINT DataSize;         // bytes
};
UMD_LAYOUT(D3DDDIARG_GETCAPS, 32, 8);
UMD_OFFSET(D3DDDIARG_GETCAPS, Type, 0);
UMD_OFFSET(D3DDDIARG_GETCAPS, pInfo, 8);
UMD_OFFSET(D3DDDIARG_GETCAPS, pData, 16);
UMD_OFFSET(D3DDDIARG_GETCAPS, DataSize, 24);

struct D3DDDIARG_GETCAPTUREALLOCATIONHANDLE
{
    HANDLE hResource;           // resource handle
    D3DKMT_HANDLE hAllocation;  // kernel-mode allocation
};
UMD_LAYOUT(D3DDDIARG_GETCAPTUREALLOCATIONHANDLE, 16, 8);
UMD_OFFSET(D3DDDIARG_GETCAPTUREALLOCATIONHANDLE, hResource, 0);
UMD_OFFSET(D3DDDIARG_GETCAPTUREALLOCATIONHANDLE, hAllocation, 8);

struct D3DDDIARG_GETENCRYPTIONBLTKEY
{
    HANDLE hCryptoSession;  // session handle
    void* pReadBackKey;
    UINT KeySize;
};
UMD_LAYOUT(D3DDDIARG_GETENCRYPTIONBLTKEY, 24, 8);
UMD_OFFSET(D3DDDIARG_GETENCRYPTIONBLTKEY, hCryptoSession, 0);
UMD_OFFSET(D3DDDIARG_GETENCRYPTIONBLTKEY, pReadBackKey, 8);
UMD_OFFSET(D3DDDIARG_GETENCRYPTIONBLTKEY, KeySize, 16);

struct D3DDDIARG_GETOVERLAYCOLORCONTROLS
{
    HANDLE hOverlay;   // overlay handle
    HANDLE hResource;  // resource handle
    D3DDDI_OVERLAYCOLORCONTROLS ColorControls;
};
UMD_LAYOUT(D3DDDIARG_GETOVERLAYCOLORCONTROLS, 48, 8);
UMD_OFFSET(D3DDDIARG_GETOVERLAYCOLORCONTROLS, hOverlay, 0);
UMD_OFFSET(D3DDDIARG_GETOVERLAYCOLORCONTROLS, hResource, 8);
UMD_OFFSET(D3DDDIARG_GETOVERLAYCOLORCONTROLS, ColorControls, 16);

struct D3DDDIARG_GETPITCH
{
    HANDLE hCryptoSession;  // session handle
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
    UINT Pitch;             // bytes from row to row
};
UMD_LAYOUT(D3DDDIARG_GETPITCH, 24, 8);
UMD_OFFSET(D3DDDIARG_GETPITCH, hCryptoSession, 0);
UMD_OFFSET(D3DDDIARG_GETPITCH, hResource, 8);
UMD_OFFSET(D3DDDIARG_GETPITCH, SubResourceIndex, 16);
UMD_OFFSET(D3DDDIARG_GETPITCH, Pitch, 20);

struct D3DDDIARG_GETQUERYDATA
{
    HANDLE hQuery;  // query handle
    void* pData;    // output
};
UMD_LAYOUT(D3DDDIARG_GETQUERYDATA, 16, 8);
UMD_OFFSET(D3DDDIARG_GETQUERYDATA, hQuery, 0);
UMD_OFFSET(D3DDDIARG_GETQUERYDATA, pData, 8);

struct D3DDDIARG_ISSUEQUERY
{
    HANDLE hQuery;                 // query handle
    D3DDDI_ISSUEQUERYFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_ISSUEQUERY, 16, 8);
UMD_OFFSET(D3DDDIARG_ISSUEQUERY, hQuery, 0);
UMD_OFFSET(D3DDDIARG_ISSUEQUERY, Flags, 8);

struct D3DDDIARG_LOCK
{
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
    union
    {
        D3DDDIRANGE Range;
        RECT Area;
        D3DDDIBOX Box;
    };
    void* pSurfData;         // out: address of the locked bits
    UINT Pitch;              // bytes from row to row
    UINT SlicePitch;         // bytes from slice to slice
    D3DDDI_LOCKFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_LOCK, 64, 8);
UMD_OFFSET(D3DDDIARG_LOCK, hResource, 0);
UMD_OFFSET(D3DDDIARG_LOCK, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_LOCK, Range, 12);
UMD_OFFSET(D3DDDIARG_LOCK, Area, 12);
UMD_OFFSET(D3DDDIARG_LOCK, Box, 12);
UMD_OFFSET(D3DDDIARG_LOCK, pSurfData, 40);
UMD_OFFSET(D3DDDIARG_LOCK, Pitch, 48);
UMD_OFFSET(D3DDDIARG_LOCK, SlicePitch, 52);
UMD_OFFSET(D3DDDIARG_LOCK, Flags, 56);

struct D3DDDIARG_LOCKASYNC
{
    HANDLE hResource;             // resource handle
    UINT SubResourceIndex;        // level, or face x levels + level
    D3DDDI_LOCKASYNCFLAGS Flags;  // see the record of the flags
    union
    {
        D3DDDIRANGE Range;
        RECT Area;
        D3DDDIBOX Box;
    };
    HANDLE hCookie;                            // of an earlier lock
    void* pSurfData;                           // out: address of the locked bits
    UINT Pitch;                                // bytes from row to row
    UINT SlicePitch;                           // bytes from slice to slice
    D3DGPU_VIRTUAL_ADDRESS GpuVirtualAddress;  // unused at this version
};
UMD_LAYOUT(D3DDDIARG_LOCKASYNC, 72, 8);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, hResource, 0);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, Flags, 12);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, Range, 16);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, Area, 16);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, Box, 16);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, hCookie, 40);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, pSurfData, 48);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, Pitch, 56);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, SlicePitch, 60);
UMD_OFFSET(D3DDDIARG_LOCKASYNC, GpuVirtualAddress, 64);

struct D3DDDIARG_MULTIPLYTRANSFORM
{
    D3DTRANSFORMSTATETYPE TransformType;  // world, view, projection or texture
    D3DMATRIX Matrix;                     // row vectors
};
UMD_LAYOUT(D3DDDIARG_MULTIPLYTRANSFORM, 68, 4);
UMD_OFFSET(D3DDDIARG_MULTIPLYTRANSFORM, TransformType, 0);
UMD_OFFSET(D3DDDIARG_MULTIPLYTRANSFORM, Matrix, 4);

struct D3DDDIARG_OPENADAPTER
{
    HANDLE hAdapter;                                   // adapter handle
    UINT Interface;                                    // interface version of the runtime
    UINT Version;                                      // of the runtime
    const D3DDDI_ADAPTERCALLBACKS* pAdapterCallbacks;  // the runtime's, valid during the call
    D3DDDI_ADAPTERFUNCS* pAdapterFuncs;                // filled by the driver
    UINT DriverVersion;                                // out: interface version of the driver
};
UMD_LAYOUT(D3DDDIARG_OPENADAPTER, 40, 8);
UMD_OFFSET(D3DDDIARG_OPENADAPTER, hAdapter, 0);
UMD_OFFSET(D3DDDIARG_OPENADAPTER, Interface, 8);
UMD_OFFSET(D3DDDIARG_OPENADAPTER, Version, 12);
UMD_OFFSET(D3DDDIARG_OPENADAPTER, pAdapterCallbacks, 16);
UMD_OFFSET(D3DDDIARG_OPENADAPTER, pAdapterFuncs, 24);
UMD_OFFSET(D3DDDIARG_OPENADAPTER, DriverVersion, 32);

struct D3DDDIARG_OPENRESOURCE
{
    UINT NumAllocations;  // entries
    union
    {
        D3DDDI_OPENALLOCATIONINFO* pOpenAllocationInfo;  // one entry an allocation
        D3DDDI_OPENALLOCATIONINFO2* pOpenAllocationInfo2;
    };
    D3DKMT_HANDLE hKMResource;       // kernel-mode resource
    void* pPrivateDriverData;        // data between the two driver halves
    UINT PrivateDriverDataSize;      // bytes
    HANDLE hResource;                // resource handle
    D3DDDI_ROTATION Rotation;        // of the output
    D3DDDI_OPENRESOURCEFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_OPENRESOURCE, 56, 8);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, NumAllocations, 0);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, pOpenAllocationInfo, 8);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, pOpenAllocationInfo2, 8);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, hKMResource, 16);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, pPrivateDriverData, 24);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, PrivateDriverDataSize, 32);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, hResource, 40);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, Rotation, 48);
UMD_OFFSET(D3DDDIARG_OPENRESOURCE, Flags, 52);

struct D3DDDIARG_PRESENT
{
    HANDLE hSrcResource;                    // source resource handle
    UINT SrcSubResourceIndex;               // sub-resource of the source
    HANDLE hDstResource;                    // destination resource handle
    UINT DstSubResourceIndex;               // sub-resource of the destination
    D3DDDI_PRESENTFLAGS Flags;              // see the record of the flags
    D3DDDI_FLIPINTERVAL_TYPE FlipInterval;  // frames to wait for
};
UMD_LAYOUT(D3DDDIARG_PRESENT, 40, 8);
UMD_OFFSET(D3DDDIARG_PRESENT, hSrcResource, 0);
UMD_OFFSET(D3DDDIARG_PRESENT, SrcSubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_PRESENT, hDstResource, 16);
UMD_OFFSET(D3DDDIARG_PRESENT, DstSubResourceIndex, 24);
UMD_OFFSET(D3DDDIARG_PRESENT, Flags, 28);
UMD_OFFSET(D3DDDIARG_PRESENT, FlipInterval, 32);

struct D3DDDIARG_QUERYAUTHENTICATEDCHANNEL
{
    UINT InputSize;
    const void* pInputData;
    UINT OutputSize;
    void* pOutputData;
};
UMD_LAYOUT(D3DDDIARG_QUERYAUTHENTICATEDCHANNEL, 32, 8);
UMD_OFFSET(D3DDDIARG_QUERYAUTHENTICATEDCHANNEL, InputSize, 0);
UMD_OFFSET(D3DDDIARG_QUERYAUTHENTICATEDCHANNEL, pInputData, 8);
UMD_OFFSET(D3DDDIARG_QUERYAUTHENTICATEDCHANNEL, OutputSize, 16);
UMD_OFFSET(D3DDDIARG_QUERYAUTHENTICATEDCHANNEL, pOutputData, 24);

struct D3DDDIARG_QUERYRESOURCERESIDENCY
{
    const HANDLE* pHandleList;  // resource handles
    UINT NumResources;          // entries of pHandleList
};
UMD_LAYOUT(D3DDDIARG_QUERYRESOURCERESIDENCY, 16, 8);
UMD_OFFSET(D3DDDIARG_QUERYRESOURCERESIDENCY, pHandleList, 0);
UMD_OFFSET(D3DDDIARG_QUERYRESOURCERESIDENCY, NumResources, 8);

struct D3DDDIARG_RENAME
{
    HANDLE hResource;                          // resource handle
    UINT SubResourceIndex;                     // level, or face x levels + level
    HANDLE hCookie;                            // of an earlier lock
    D3DGPU_VIRTUAL_ADDRESS GpuVirtualAddress;  // unused at this version
};
UMD_LAYOUT(D3DDDIARG_RENAME, 32, 8);
UMD_OFFSET(D3DDDIARG_RENAME, hResource, 0);
UMD_OFFSET(D3DDDIARG_RENAME, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_RENAME, hCookie, 16);
UMD_OFFSET(D3DDDIARG_RENAME, GpuVirtualAddress, 24);

struct D3DDDIARG_RENDERSTATE
{
    D3DDDIRENDERSTATETYPE State;  // which
    UINT Value;                   // the new value; of a float its bits
};
UMD_LAYOUT(D3DDDIARG_RENDERSTATE, 8, 4);
UMD_OFFSET(D3DDDIARG_RENDERSTATE, State, 0);
UMD_OFFSET(D3DDDIARG_RENDERSTATE, Value, 4);

struct D3DDDIARG_RESOLVESHAREDRESOURCE
{
    HANDLE hResource;  // resource handle
};
UMD_LAYOUT(D3DDDIARG_RESOLVESHAREDRESOURCE, 8, 8);
UMD_OFFSET(D3DDDIARG_RESOLVESHAREDRESOURCE, hResource, 0);

struct D3DDDIARG_SETCLIPPLANE
{
    UINT Index;      // index
    FLOAT Plane[4];  // a, b, c, d of ax + by + cz + d >= 0
};
UMD_LAYOUT(D3DDDIARG_SETCLIPPLANE, 20, 4);
UMD_OFFSET(D3DDDIARG_SETCLIPPLANE, Index, 0);
UMD_OFFSET(D3DDDIARG_SETCLIPPLANE, Plane, 4);

struct D3DDDIARG_SETCONVOLUTIONKERNELMONO
{
    UINT Width;   // pixels
    UINT Height;  // pixels
    FLOAT* pKernelRow;
    FLOAT* pKernelCol;
};
UMD_LAYOUT(D3DDDIARG_SETCONVOLUTIONKERNELMONO, 24, 8);
UMD_OFFSET(D3DDDIARG_SETCONVOLUTIONKERNELMONO, Width, 0);
UMD_OFFSET(D3DDDIARG_SETCONVOLUTIONKERNELMONO, Height, 4);
UMD_OFFSET(D3DDDIARG_SETCONVOLUTIONKERNELMONO, pKernelRow, 8);
UMD_OFFSET(D3DDDIARG_SETCONVOLUTIONKERNELMONO, pKernelCol, 16);

struct D3DDDIARG_SETDECODERENDERTARGET
{
    HANDLE hDecode;         // decode device handle
    HANDLE hRenderTarget;   // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
};
UMD_LAYOUT(D3DDDIARG_SETDECODERENDERTARGET, 24, 8);
UMD_OFFSET(D3DDDIARG_SETDECODERENDERTARGET, hDecode, 0);
UMD_OFFSET(D3DDDIARG_SETDECODERENDERTARGET, hRenderTarget, 8);
UMD_OFFSET(D3DDDIARG_SETDECODERENDERTARGET, SubResourceIndex, 16);

struct D3DDDIARG_SETDEPTHSTENCIL
{
    HANDLE hZBuffer;  // resource handle, null for none
};
UMD_LAYOUT(D3DDDIARG_SETDEPTHSTENCIL, 8, 8);
UMD_OFFSET(D3DDDIARG_SETDEPTHSTENCIL, hZBuffer, 0);

struct D3DDDIARG_SETDISPLAYMODE
{
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
};
UMD_LAYOUT(D3DDDIARG_SETDISPLAYMODE, 16, 8);
UMD_OFFSET(D3DDDIARG_SETDISPLAYMODE, hResource, 0);
UMD_OFFSET(D3DDDIARG_SETDISPLAYMODE, SubResourceIndex, 8);

struct D3DDDIARG_SETINDICES
{
    HANDLE hIndexBuffer;  // resource handle
    UINT Stride;          // bytes an index, 2 or 4
};
UMD_LAYOUT(D3DDDIARG_SETINDICES, 16, 8);
UMD_OFFSET(D3DDDIARG_SETINDICES, hIndexBuffer, 0);
UMD_OFFSET(D3DDDIARG_SETINDICES, Stride, 8);

struct D3DDDIARG_SETLIGHT
{
    UINT Index;  // index
    D3DDDI_SETLIGHT_TYPE DataType;
};
UMD_LAYOUT(D3DDDIARG_SETLIGHT, 8, 4);
UMD_OFFSET(D3DDDIARG_SETLIGHT, Index, 0);
UMD_OFFSET(D3DDDIARG_SETLIGHT, DataType, 4);

struct D3DDDIARG_SETMATERIAL
{
    D3DCOLORVALUE Diffuse;
    D3DCOLORVALUE Ambient;
    D3DCOLORVALUE Specular;
    D3DCOLORVALUE Emissive;
    FLOAT Power;
};
UMD_LAYOUT(D3DDDIARG_SETMATERIAL, 68, 4);
UMD_OFFSET(D3DDDIARG_SETMATERIAL, Diffuse, 0);
UMD_OFFSET(D3DDDIARG_SETMATERIAL, Ambient, 16);
UMD_OFFSET(D3DDDIARG_SETMATERIAL, Specular, 32);
UMD_OFFSET(D3DDDIARG_SETMATERIAL, Emissive, 48);
UMD_OFFSET(D3DDDIARG_SETMATERIAL, Power, 64);

struct D3DDDIARG_SETOVERLAYCOLORCONTROLS
{
    HANDLE hOverlay;   // overlay handle
    HANDLE hResource;  // resource handle
    D3DDDI_OVERLAYCOLORCONTROLS ColorControls;
};
UMD_LAYOUT(D3DDDIARG_SETOVERLAYCOLORCONTROLS, 48, 8);
UMD_OFFSET(D3DDDIARG_SETOVERLAYCOLORCONTROLS, hOverlay, 0);
UMD_OFFSET(D3DDDIARG_SETOVERLAYCOLORCONTROLS, hResource, 8);
UMD_OFFSET(D3DDDIARG_SETOVERLAYCOLORCONTROLS, ColorControls, 16);

struct D3DDDIARG_SETPALETTE
{
    UINT PaletteHandle;
    UINT PaletteFlags;
    HANDLE hResource;  // resource handle
};
UMD_LAYOUT(D3DDDIARG_SETPALETTE, 16, 8);
UMD_OFFSET(D3DDDIARG_SETPALETTE, PaletteHandle, 0);
UMD_OFFSET(D3DDDIARG_SETPALETTE, PaletteFlags, 4);
UMD_OFFSET(D3DDDIARG_SETPALETTE, hResource, 8);

struct D3DDDIARG_SETPIXELSHADERCONST
{
    UINT Register;  // first register
    UINT Count;     // registers
};
UMD_LAYOUT(D3DDDIARG_SETPIXELSHADERCONST, 8, 4);
UMD_OFFSET(D3DDDIARG_SETPIXELSHADERCONST, Register, 0);
UMD_OFFSET(D3DDDIARG_SETPIXELSHADERCONST, Count, 4);

struct D3DDDIARG_SETPRIORITY
{
    HANDLE hResource;  // resource handle
    UINT Priority;
};
UMD_LAYOUT(D3DDDIARG_SETPRIORITY, 16, 8);
UMD_OFFSET(D3DDDIARG_SETPRIORITY, hResource, 0);
UMD_OFFSET(D3DDDIARG_SETPRIORITY, Priority, 8);

struct D3DDDIARG_SETRENDERTARGET
{
    UINT RenderTargetIndex;  // 0 to 3
    HANDLE hRenderTarget;    // resource handle
    UINT SubResourceIndex;   // level, or face x levels + level
};
UMD_LAYOUT(D3DDDIARG_SETRENDERTARGET, 24, 8);
UMD_OFFSET(D3DDDIARG_SETRENDERTARGET, RenderTargetIndex, 0);
UMD_OFFSET(D3DDDIARG_SETRENDERTARGET, hRenderTarget, 8);
UMD_OFFSET(D3DDDIARG_SETRENDERTARGET, SubResourceIndex, 16);

struct D3DDDIARG_SETSTREAMSOURCE
{
    UINT Stream;           // vertex stream
    HANDLE hVertexBuffer;  // resource handle
    UINT Offset;           // bytes
    UINT Stride;           // bytes from vertex to vertex
};
UMD_LAYOUT(D3DDDIARG_SETSTREAMSOURCE, 24, 8);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCE, Stream, 0);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCE, hVertexBuffer, 8);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCE, Offset, 16);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCE, Stride, 20);

struct D3DDDIARG_SETSTREAMSOURCEFREQ
{
    UINT Stream;   // vertex stream
    UINT Divider;  // frequency divider
};
UMD_LAYOUT(D3DDDIARG_SETSTREAMSOURCEFREQ, 8, 4);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCEFREQ, Stream, 0);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCEFREQ, Divider, 4);

struct D3DDDIARG_SETSTREAMSOURCEUM
{
    UINT Stream;  // vertex stream
    UINT Stride;  // bytes from vertex to vertex
};
UMD_LAYOUT(D3DDDIARG_SETSTREAMSOURCEUM, 8, 4);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCEUM, Stream, 0);
UMD_OFFSET(D3DDDIARG_SETSTREAMSOURCEUM, Stride, 4);

struct D3DDDIARG_SETTRANSFORM
{
    D3DTRANSFORMSTATETYPE TransformType;  // world, view, projection or texture
    D3DMATRIX Matrix;                     // row vectors
};
UMD_LAYOUT(D3DDDIARG_SETTRANSFORM, 68, 4);
UMD_OFFSET(D3DDDIARG_SETTRANSFORM, TransformType, 0);
UMD_OFFSET(D3DDDIARG_SETTRANSFORM, Matrix, 4);

struct D3DDDIARG_SETVERTEXSHADERCONST
{
    UINT Register;  // first register
    UINT Count;     // registers
};
UMD_LAYOUT(D3DDDIARG_SETVERTEXSHADERCONST, 8, 4);
UMD_OFFSET(D3DDDIARG_SETVERTEXSHADERCONST, Register, 0);
UMD_OFFSET(D3DDDIARG_SETVERTEXSHADERCONST, Count, 4);

struct D3DDDIARG_SETVIDEOPROCESSRENDERTARGET
{
    HANDLE hVideoProcess;   // video process device handle
    HANDLE hRenderTarget;   // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
};
UMD_LAYOUT(D3DDDIARG_SETVIDEOPROCESSRENDERTARGET, 24, 8);
UMD_OFFSET(D3DDDIARG_SETVIDEOPROCESSRENDERTARGET, hVideoProcess, 0);
UMD_OFFSET(D3DDDIARG_SETVIDEOPROCESSRENDERTARGET, hRenderTarget, 8);
UMD_OFFSET(D3DDDIARG_SETVIDEOPROCESSRENDERTARGET, SubResourceIndex, 16);

struct D3DDDIARG_STARTSESSIONKEYREFRESH
{
    HANDLE hCryptoSession;  // session handle
    void* pRandomNumber;
    UINT RandomNumberSize;
};
UMD_LAYOUT(D3DDDIARG_STARTSESSIONKEYREFRESH, 24, 8);
UMD_OFFSET(D3DDDIARG_STARTSESSIONKEYREFRESH, hCryptoSession, 0);
UMD_OFFSET(D3DDDIARG_STARTSESSIONKEYREFRESH, pRandomNumber, 8);
UMD_OFFSET(D3DDDIARG_STARTSESSIONKEYREFRESH, RandomNumberSize, 16);

struct D3DDDIARG_STATESET
{
    UINT Operation;  // what to do
    D3DSTATEBLOCKTYPE StateBlockType;
    HANDLE hStateSet;
};
UMD_LAYOUT(D3DDDIARG_STATESET, 16, 8);
UMD_OFFSET(D3DDDIARG_STATESET, Operation, 0);
UMD_OFFSET(D3DDDIARG_STATESET, StateBlockType, 4);
UMD_OFFSET(D3DDDIARG_STATESET, hStateSet, 8);

struct D3DDDIARG_TEXBLT
{
    HANDLE hDstResource;  // destination resource handle
    HANDLE hSrcResource;  // source resource handle
    UINT CubeMapFace;     // 0 to 5
    POINT DstPoint;       // pixels
    RECT SrcRect;         // pixels
};
UMD_LAYOUT(D3DDDIARG_TEXBLT, 48, 8);
UMD_OFFSET(D3DDDIARG_TEXBLT, hDstResource, 0);
UMD_OFFSET(D3DDDIARG_TEXBLT, hSrcResource, 8);
UMD_OFFSET(D3DDDIARG_TEXBLT, CubeMapFace, 16);
UMD_OFFSET(D3DDDIARG_TEXBLT, DstPoint, 20);
UMD_OFFSET(D3DDDIARG_TEXBLT, SrcRect, 28);

struct D3DDDIARG_TEXTURESTAGESTATE
{
    UINT Stage;                         // texture stage
    D3DDDITEXTURESTAGESTATETYPE State;  // which
    UINT Value;                         // the new value; of a float its bits
};
UMD_LAYOUT(D3DDDIARG_TEXTURESTAGESTATE, 12, 4);
UMD_OFFSET(D3DDDIARG_TEXTURESTAGESTATE, Stage, 0);
UMD_OFFSET(D3DDDIARG_TEXTURESTAGESTATE, State, 4);
UMD_OFFSET(D3DDDIARG_TEXTURESTAGESTATE, Value, 8);

struct D3DDDIARG_UNLOCK
{
    HANDLE hResource;          // resource handle
    UINT SubResourceIndex;     // level, or face x levels + level
    D3DDDI_UNLOCKFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_UNLOCK, 16, 8);
UMD_OFFSET(D3DDDIARG_UNLOCK, hResource, 0);
UMD_OFFSET(D3DDDIARG_UNLOCK, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_UNLOCK, Flags, 12);

struct D3DDDIARG_UNLOCKASYNC
{
    HANDLE hResource;               // resource handle
    UINT SubResourceIndex;          // level, or face x levels + level
    D3DDDI_UNLOCKASYNCFLAGS Flags;  // see the record of the flags
};
UMD_LAYOUT(D3DDDIARG_UNLOCKASYNC, 16, 8);
UMD_OFFSET(D3DDDIARG_UNLOCKASYNC, hResource, 0);
UMD_OFFSET(D3DDDIARG_UNLOCKASYNC, SubResourceIndex, 8);
UMD_OFFSET(D3DDDIARG_UNLOCKASYNC, Flags, 12);

struct D3DDDIARG_UPDATEOVERLAY
{
    HANDLE hOverlay;  // overlay handle
    D3DDDI_OVERLAYINFO OverlayInfo;
};
UMD_LAYOUT(D3DDDIARG_UPDATEOVERLAY, 72, 8);
UMD_OFFSET(D3DDDIARG_UPDATEOVERLAY, hOverlay, 0);
UMD_OFFSET(D3DDDIARG_UPDATEOVERLAY, OverlayInfo, 8);

struct D3DDDIARG_UPDATEPALETTE
{
    UINT PaletteHandle;
    UINT StartIndex;  // indices
    UINT NumEntries;
};
UMD_LAYOUT(D3DDDIARG_UPDATEPALETTE, 12, 4);
UMD_OFFSET(D3DDDIARG_UPDATEPALETTE, PaletteHandle, 0);
UMD_OFFSET(D3DDDIARG_UPDATEPALETTE, StartIndex, 4);
UMD_OFFSET(D3DDDIARG_UPDATEPALETTE, NumEntries, 8);

struct D3DDDIARG_VALIDATETEXTURESTAGESTATE
{
    UINT NumPasses;  // out: rendering passes
};
UMD_LAYOUT(D3DDDIARG_VALIDATETEXTURESTAGESTATE, 4, 4);
UMD_OFFSET(D3DDDIARG_VALIDATETEXTURESTAGESTATE, NumPasses, 0);

struct D3DDDIARG_VIDEOPROCESSBLT
{
    REFERENCE_TIME TargetFrame;            // 100 ns units
    HANDLE hVideoProcess;                  // video process device handle
    RECT TargetRect;                       // pixels
    SIZE ConstrictionSize;                 // pixels
    UINT StreamingFlags;                   // reserved
    DXVADDI_AYUVSAMPLE16 BackgroundColor;  // behind all samples
    DXVADDI_EXTENDEDFORMAT DestFormat;     // interlacing and colour description
    DXVADDI_VIDEOPROCESSBLTFLAGS DestFlags;
    DXVADDI_PROCAMPVALUES ProcAmpValues;  // brightness, contrast, hue, saturation
    DXVADDI_FIXED32 Alpha;                // 0.0 to 1.0, 16.16 fixed point
    DXVADDI_FILTERVALUES NoiseFilterLuma;
    DXVADDI_FILTERVALUES NoiseFilterChroma;
    DXVADDI_FILTERVALUES DetailFilterLuma;
    DXVADDI_FILTERVALUES DetailFilterChroma;
    DXVADDI_VIDEOSAMPLE* pSrcSurfaces;  // input samples
    UINT NumSrcSurfaces;                // entries of pSrcSurfaces
};
UMD_LAYOUT(D3DDDIARG_VIDEOPROCESSBLT, 144, 8);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, TargetFrame, 0);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, hVideoProcess, 8);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, TargetRect, 16);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, ConstrictionSize, 32);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, StreamingFlags, 40);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, BackgroundColor, 44);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, DestFormat, 52);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, DestFlags, 56);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, ProcAmpValues, 60);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, Alpha, 76);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, NoiseFilterLuma, 80);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, NoiseFilterChroma, 92);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, DetailFilterLuma, 104);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, DetailFilterChroma, 116);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, pSrcSurfaces, 128);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSBLT, NumSrcSurfaces, 136);

struct D3DDDIARG_VIDEOPROCESSENDFRAME
{
    HANDLE hVideoProcess;  // video process device handle
    HANDLE* pHandleComplete;
};
UMD_LAYOUT(D3DDDIARG_VIDEOPROCESSENDFRAME, 16, 8);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSENDFRAME, hVideoProcess, 0);
UMD_OFFSET(D3DDDIARG_VIDEOPROCESSENDFRAME, pHandleComplete, 8);

struct D3DDDIARG_VIEWPORTINFO
{
    UINT X;       // pixels
    UINT Y;       // pixels
    UINT Width;   // pixels
    UINT Height;  // pixels
};
UMD_LAYOUT(D3DDDIARG_VIEWPORTINFO, 16, 4);
UMD_OFFSET(D3DDDIARG_VIEWPORTINFO, X, 0);
UMD_OFFSET(D3DDDIARG_VIEWPORTINFO, Y, 4);
UMD_OFFSET(D3DDDIARG_VIEWPORTINFO, Width, 8);
UMD_OFFSET(D3DDDIARG_VIEWPORTINFO, Height, 12);

struct D3DDDIARG_VOLUMEBLT
{
    HANDLE hDstResource;  // destination resource handle
    HANDLE hSrcResource;  // source resource handle
    UINT DstX;
    UINT DstY;
    UINT DstZ;
    D3DDDIBOX SrcBox;
};
UMD_LAYOUT(D3DDDIARG_VOLUMEBLT, 56, 8);
UMD_OFFSET(D3DDDIARG_VOLUMEBLT, hDstResource, 0);
UMD_OFFSET(D3DDDIARG_VOLUMEBLT, hSrcResource, 8);
UMD_OFFSET(D3DDDIARG_VOLUMEBLT, DstX, 16);
UMD_OFFSET(D3DDDIARG_VOLUMEBLT, DstY, 20);
UMD_OFFSET(D3DDDIARG_VOLUMEBLT, DstZ, 24);
UMD_OFFSET(D3DDDIARG_VOLUMEBLT, SrcBox, 28);

struct D3DDDIARG_WINFO
{
    FLOAT WNear;  // view space
    FLOAT WFar;   // view space
};
UMD_LAYOUT(D3DDDIARG_WINFO, 8, 4);
UMD_OFFSET(D3DDDIARG_WINFO, WNear, 0);
UMD_OFFSET(D3DDDIARG_WINFO, WFar, 4);

struct D3DDDIARG_ZRANGE
{
    FLOAT MinZ;  // 0.0 to 1.0
    FLOAT MaxZ;  // 0.0 to 1.0
};
UMD_LAYOUT(D3DDDIARG_ZRANGE, 8, 4);
UMD_OFFSET(D3DDDIARG_ZRANGE, MinZ, 0);
UMD_OFFSET(D3DDDIARG_ZRANGE, MaxZ, 4);

UMD_DDI_RECORDS_END
