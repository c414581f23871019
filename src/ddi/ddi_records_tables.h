// Direct3D 9 user-mode display driver interface: function tables.
// Published names and values of the binary interface, version 0x2003 (64-bit).
#pragma once

#include "ddi/ddi_functions.h"
#include "ddi/ddi_layout.h"

UMD_DDI_RECORDS_BEGIN

struct D3DDDI_ADAPTERCALLBACKS
{
    PFND3DDDI_QUERYADAPTERINFOCB pfnQueryAdapterInfoCb;                  // slot 0
    PFND3DDDI_GETMULTISAMPLEMETHODLISTCB pfnGetMultisampleMethodListCb;  // slot 1
};
UMD_LAYOUT(D3DDDI_ADAPTERCALLBACKS, 16, 8);
UMD_OFFSET(D3DDDI_ADAPTERCALLBACKS, pfnQueryAdapterInfoCb, 0);
UMD_OFFSET(D3DDDI_ADAPTERCALLBACKS, pfnGetMultisampleMethodListCb, 8);

struct D3DDDI_ADAPTERFUNCS
{
    PFND3DDDI_GETCAPS pfnGetCaps;            // slot 0
    PFND3DDDI_CREATEDEVICE pfnCreateDevice;  // slot 1
    PFND3DDDI_CLOSEADAPTER pfnCloseAdapter;  // slot 2
};
UMD_LAYOUT(D3DDDI_ADAPTERFUNCS, 24, 8);
UMD_OFFSET(D3DDDI_ADAPTERFUNCS, pfnGetCaps, 0);
UMD_OFFSET(D3DDDI_ADAPTERFUNCS, pfnCreateDevice, 8);
UMD_OFFSET(D3DDDI_ADAPTERFUNCS, pfnCloseAdapter, 16);

struct D3DDDI_DEVICECALLBACKS
{
    PFND3DDDI_ALLOCATECB pfnAllocateCb;                                            // slot 0
    PFND3DDDI_DEALLOCATECB pfnDeallocateCb;                                        // slot 1
    PFND3DDDI_SETPRIORITYCB pfnSetPriorityCb;                                      // slot 2
    PFND3DDDI_QUERYRESIDENCYCB pfnQueryResidencyCb;                                // slot 3
    PFND3DDDI_SETDISPLAYMODECB pfnSetDisplayModeCb;                                // slot 4
    PFND3DDDI_PRESENTCB pfnPresentCb;                                              // slot 5
    PFND3DDDI_RENDERCB pfnRenderCb;                                                // slot 6
    PFND3DDDI_LOCKCB pfnLockCb;                                                    // slot 7
    PFND3DDDI_UNLOCKCB pfnUnlockCb;                                                // slot 8
    PFND3DDDI_ESCAPECB pfnEscapeCb;                                                // slot 9
    PFND3DDDI_CREATEOVERLAYCB pfnCreateOverlayCb;                                  // slot 10
    PFND3DDDI_UPDATEOVERLAYCB pfnUpdateOverlayCb;                                  // slot 11
    PFND3DDDI_FLIPOVERLAYCB pfnFlipOverlayCb;                                      // slot 12
    PFND3DDDI_DESTROYOVERLAYCB pfnDestroyOverlayCb;                                // slot 13
    PFND3DDDI_CREATECONTEXTCB pfnCreateContextCb;                                  // slot 14
    PFND3DDDI_DESTROYCONTEXTCB pfnDestroyContextCb;                                // slot 15
    PFND3DDDI_CREATESYNCHRONIZATIONOBJECTCB pfnCreateSynchronizationObjectCb;      // slot 16
    PFND3DDDI_DESTROYSYNCHRONIZATIONOBJECTCB pfnDestroySynchronizationObjectCb;    // slot 17
    PFND3DDDI_WAITFORSYNCHRONIZATIONOBJECTCB pfnWaitForSynchronizationObjectCb;    // slot 18
    PFND3DDDI_SIGNALSYNCHRONIZATIONOBJECTCB pfnSignalSynchronizationObjectCb;      // slot 19
    PFND3DDDI_SETASYNCCALLBACKSCB pfnSetAsyncCallbacksCb;                          // slot 20
    PFND3DDDI_SETDISPLAYPRIVATEDRIVERFORMATCB pfnSetDisplayPrivateDriverFormatCb;  // slot 21
};
UMD_LAYOUT(D3DDDI_DEVICECALLBACKS, 176, 8);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnAllocateCb, 0);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnDeallocateCb, 8);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnSetPriorityCb, 16);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnQueryResidencyCb, 24);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnSetDisplayModeCb, 32);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnPresentCb, 40);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnRenderCb, 48);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnLockCb, 56);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnUnlockCb, 64);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnEscapeCb, 72);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnCreateOverlayCb, 80);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnUpdateOverlayCb, 88);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnFlipOverlayCb, 96);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnDestroyOverlayCb, 104);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnCreateContextCb, 112);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnDestroyContextCb, 120);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnCreateSynchronizationObjectCb, 128);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnDestroySynchronizationObjectCb, 136);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnWaitForSynchronizationObjectCb, 144);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnSignalSynchronizationObjectCb, 152);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnSetAsyncCallbacksCb, 160);
UMD_OFFSET(D3DDDI_DEVICECALLBACKS, pfnSetDisplayPrivateDriverFormatCb, 168);

struct D3DDDI_DEVICEFUNCS
{
    PFND3DDDI_SETRENDERSTATE pfnSetRenderState;                                               // slot 0
    PFND3DDDI_UPDATEWINFO pfnUpdateWInfo;                                                     // slot 1
    PFND3DDDI_VALIDATEDEVICE pfnValidateDevice;                                               // slot 2
    PFND3DDDI_SETTEXTURESTAGESTATE pfnSetTextureStageState;                                   // slot 3
    PFND3DDDI_SETTEXTURE pfnSetTexture;                                                       // slot 4
    PFND3DDDI_SETPIXELSHADER pfnSetPixelShader;                                               // slot 5
    PFND3DDDI_SETPIXELSHADERCONST pfnSetPixelShaderConst;                                     // slot 6
    PFND3DDDI_SETSTREAMSOURCEUM pfnSetStreamSourceUm;                                         // slot 7
    PFND3DDDI_SETINDICES pfnSetIndices;                                                       // slot 8
    PFND3DDDI_SETINDICESUM pfnSetIndicesUm;                                                   // slot 9
    PFND3DDDI_DRAWPRIMITIVE pfnDrawPrimitive;                                                 // slot 10
    PFND3DDDI_DRAWINDEXEDPRIMITIVE pfnDrawIndexedPrimitive;                                   // slot 11
    PFND3DDDI_DRAWRECTPATCH pfnDrawRectPatch;                                                 // slot 12
    PFND3DDDI_DRAWTRIPATCH pfnDrawTriPatch;                                                   // slot 13
    PFND3DDDI_DRAWPRIMITIVE2 pfnDrawPrimitive2;                                               // slot 14
    PFND3DDDI_DRAWINDEXEDPRIMITIVE2 pfnDrawIndexedPrimitive2;                                 // slot 15
    PFND3DDDI_VOLBLT pfnVolBlt;                                                               // slot 16
    PFND3DDDI_BUFBLT pfnBufBlt;                                                               // slot 17
    PFND3DDDI_TEXBLT pfnTexBlt;                                                               // slot 18
    PFND3DDDI_STATESET pfnStateSet;                                                           // slot 19
    PFND3DDDI_SETPRIORITY pfnSetPriority;                                                     // slot 20
    PFND3DDDI_CLEAR pfnClear;                                                                 // slot 21
    PFND3DDDI_UPDATEPALETTE pfnUpdatePalette;                                                 // slot 22
    PFND3DDDI_SETPALETTE pfnSetPalette;                                                       // slot 23
    PFND3DDDI_SETVERTEXSHADERCONST pfnSetVertexShaderConst;                                   // slot 24
    PFND3DDDI_MULTIPLYTRANSFORM pfnMultiplyTransform;                                         // slot 25
    PFND3DDDI_SETTRANSFORM pfnSetTransform;                                                   // slot 26
    PFND3DDDI_SETVIEWPORT pfnSetViewport;                                                     // slot 27
    PFND3DDDI_SETZRANGE pfnSetZRange;                                                         // slot 28
    PFND3DDDI_SETMATERIAL pfnSetMaterial;                                                     // slot 29
    PFND3DDDI_SETLIGHT pfnSetLight;                                                           // slot 30
    PFND3DDDI_CREATELIGHT pfnCreateLight;                                                     // slot 31
    PFND3DDDI_DESTROYLIGHT pfnDestroyLight;                                                   // slot 32
    PFND3DDDI_SETCLIPPLANE pfnSetClipPlane;                                                   // slot 33
    PFND3DDDI_GETINFO pfnGetInfo;                                                             // slot 34
    PFND3DDDI_LOCK pfnLock;                                                                   // slot 35
    PFND3DDDI_UNLOCK pfnUnlock;                                                               // slot 36
    PFND3DDDI_CREATERESOURCE pfnCreateResource;                                               // slot 37
    PFND3DDDI_DESTROYRESOURCE pfnDestroyResource;                                             // slot 38
    PFND3DDDI_SETDISPLAYMODE pfnSetDisplayMode;                                               // slot 39
    PFND3DDDI_PRESENT pfnPresent;                                                             // slot 40
    PFND3DDDI_FLUSH pfnFlush;                                                                 // slot 41
    PFND3DDDI_CREATEVERTEXSHADERFUNC pfnCreateVertexShaderFunc;                               // slot 42
    PFND3DDDI_DELETEVERTEXSHADERFUNC pfnDeleteVertexShaderFunc;                               // slot 43
    PFND3DDDI_SETVERTEXSHADERFUNC pfnSetVertexShaderFunc;                                     // slot 44
    PFND3DDDI_CREATEVERTEXSHADERDECL pfnCreateVertexShaderDecl;                               // slot 45
    PFND3DDDI_DELETEVERTEXSHADERDECL pfnDeleteVertexShaderDecl;                               // slot 46
    PFND3DDDI_SETVERTEXSHADERDECL pfnSetVertexShaderDecl;                                     // slot 47
    PFND3DDDI_SETVERTEXSHADERCONSTI pfnSetVertexShaderConstI;                                 // slot 48
    PFND3DDDI_SETVERTEXSHADERCONSTB pfnSetVertexShaderConstB;                                 // slot 49
    PFND3DDDI_SETSCISSORRECT pfnSetScissorRect;                                               // slot 50
    PFND3DDDI_SETSTREAMSOURCE pfnSetStreamSource;                                             // slot 51
    PFND3DDDI_SETSTREAMSOURCEFREQ pfnSetStreamSourceFreq;                                     // slot 52
    PFND3DDDI_SETCONVOLUTIONKERNELMONO pfnSetConvolutionKernelMono;                           // slot 53
    PFND3DDDI_COMPOSERECTS pfnComposeRects;                                                   // slot 54
    PFND3DDDI_BLT pfnBlt;                                                                     // slot 55
    PFND3DDDI_COLORFILL pfnColorFill;                                                         // slot 56
    PFND3DDDI_DEPTHFILL pfnDepthFill;                                                         // slot 57
    PFND3DDDI_CREATEQUERY pfnCreateQuery;                                                     // slot 58
    PFND3DDDI_DESTROYQUERY pfnDestroyQuery;                                                   // slot 59
    PFND3DDDI_ISSUEQUERY pfnIssueQuery;                                                       // slot 60
    PFND3DDDI_GETQUERYDATA pfnGetQueryData;                                                   // slot 61
    PFND3DDDI_SETRENDERTARGET pfnSetRenderTarget;                                             // slot 62
    PFND3DDDI_SETDEPTHSTENCIL pfnSetDepthStencil;                                             // slot 63
    PFND3DDDI_GENERATEMIPSUBLEVELS pfnGenerateMipSubLevels;                                   // slot 64
    PFND3DDDI_SETPIXELSHADERCONSTI pfnSetPixelShaderConstI;                                   // slot 65
    PFND3DDDI_SETPIXELSHADERCONSTB pfnSetPixelShaderConstB;                                   // slot 66
    PFND3DDDI_CREATEPIXELSHADER pfnCreatePixelShader;                                         // slot 67
    PFND3DDDI_DELETEPIXELSHADER pfnDeletePixelShader;                                         // slot 68
    PFND3DDDI_CREATEDECODEDEVICE pfnCreateDecodeDevice;                                       // slot 69
    PFND3DDDI_DESTROYDECODEDEVICE pfnDestroyDecodeDevice;                                     // slot 70
    PFND3DDDI_SETDECODERENDERTARGET pfnSetDecodeRenderTarget;                                 // slot 71
    PFND3DDDI_DECODEBEGINFRAME pfnDecodeBeginFrame;                                           // slot 72
    PFND3DDDI_DECODEENDFRAME pfnDecodeEndFrame;                                               // slot 73
    PFND3DDDI_DECODEEXECUTE pfnDecodeExecute;                                                 // slot 74
    PFND3DDDI_DECODEEXTENSIONEXECUTE pfnDecodeExtensionExecute;                               // slot 75
    PFND3DDDI_CREATEVIDEOPROCESSDEVICE pfnCreateVideoProcessDevice;                           // slot 76
    PFND3DDDI_DESTROYVIDEOPROCESSDEVICE pfnDestroyVideoProcessDevice;                         // slot 77
    PFND3DDDI_VIDEOPROCESSBEGINFRAME pfnVideoProcessBeginFrame;                               // slot 78
    PFND3DDDI_VIDEOPROCESSENDFRAME pfnVideoProcessEndFrame;                                   // slot 79
    PFND3DDDI_SETVIDEOPROCESSRENDERTARGET pfnSetVideoProcessRenderTarget;                     // slot 80
    PFND3DDDI_VIDEOPROCESSBLT pfnVideoProcessBlt;                                             // slot 81
    PFND3DDDI_CREATEEXTENSIONDEVICE pfnCreateExtensionDevice;                                 // slot 82
    PFND3DDDI_DESTROYEXTENSIONDEVICE pfnDestroyExtensionDevice;                               // slot 83
    PFND3DDDI_EXTENSIONEXECUTE pfnExtensionExecute;                                           // slot 84
    PFND3DDDI_CREATEOVERLAY pfnCreateOverlay;                                                 // slot 85
    PFND3DDDI_UPDATEOVERLAY pfnUpdateOverlay;                                                 // slot 86
    PFND3DDDI_FLIPOVERLAY pfnFlipOverlay;                                                     // slot 87
    PFND3DDDI_GETOVERLAYCOLORCONTROLS pfnGetOverlayColorControls;                             // slot 88
    PFND3DDDI_SETOVERLAYCOLORCONTROLS pfnSetOverlayColorControls;                             // slot 89
    PFND3DDDI_DESTROYOVERLAY pfnDestroyOverlay;                                               // slot 90
    PFND3DDDI_DESTROYDEVICE pfnDestroyDevice;                                                 // slot 91
    PFND3DDDI_QUERYRESOURCERESIDENCY pfnQueryResourceResidency;                               // slot 92
    PFND3DDDI_OPENRESOURCE pfnOpenResource;                                                   // slot 93
    PFND3DDDI_GETCAPTUREALLOCATIONHANDLE pfnGetCaptureAllocationHandle;                       // slot 94
    PFND3DDDI_CAPTURETOSYSMEM pfnCaptureToSysMem;                                             // slot 95
    PFND3DDDI_LOCKASYNC pfnLockAsync;                                                         // slot 96
    PFND3DDDI_UNLOCKASYNC pfnUnlockAsync;                                                     // slot 97
    PFND3DDDI_RENAME pfnRename;                                                               // slot 98
    PFND3DDDI_DXVAHD_CREATEVIDEOPROCESSOR pfnCreateVideoProcessor;                            // slot 99
    PFND3DDDI_DXVAHD_SETVIDEOPROCESSBLTSTATE pfnSetVideoProcessBltState;                      // slot 100
    PFND3DDDI_DXVAHD_GETVIDEOPROCESSBLTSTATEPRIVATE pfnGetVideoProcessBltStatePrivate;        // slot 101
    PFND3DDDI_DXVAHD_SETVIDEOPROCESSSTREAMSTATE pfnSetVideoProcessStreamState;                // slot 102
    PFND3DDDI_DXVAHD_GETVIDEOPROCESSSTREAMSTATEPRIVATE pfnGetVideoProcessStreamStatePrivate;  // slot 103
    PFND3DDDI_DXVAHD_VIDEOPROCESSBLTHD pfnVideoProcessBltHD;                                  // slot 104
    PFND3DDDI_DXVAHD_DESTROYVIDEOPROCESSOR pfnDestroyVideoProcessor;                          // slot 105
    PFND3DDDI_CREATEAUTHENTICATEDCHANNEL pfnCreateAuthenticatedChannel;                       // slot 106
    PFND3DDDI_AUTHENTICATEDCHANNELKEYEXCHANGE pfnAuthenticatedChannelKeyExchange;             // slot 107
    PFND3DDDI_QUERYAUTHENTICATEDCHANNEL pfnQueryAuthenticatedChannel;                         // slot 108
    PFND3DDDI_CONFIGUREAUTHENICATEDCHANNEL pfnConfigureAuthenticatedChannel;                  // slot 109
    PFND3DDDI_DESTROYAUTHENTICATEDCHANNEL pfnDestroyAuthenticatedChannel;                     // slot 110
    PFND3DDDI_CREATECRYPTOSESSION pfnCreateCryptoSession;                                     // slot 111
    PFND3DDDI_CRYPTOSESSIONKEYEXCHANGE pfnCryptoSessionKeyExchange;                           // slot 112
    PFND3DDDI_DESTROYCRYPTOSESSION pfnDestroyCryptoSession;                                   // slot 113
    PFND3DDDI_ENCRYPTIONBLT pfnEncryptionBlt;                                                 // slot 114
    PFND3DDDI_GETPITCH pfnGetPitch;                                                           // slot 115
    PFND3DDDI_STARTSESSIONKEYREFRESH pfnStartSessionKeyRefresh;                               // slot 116
    PFND3DDDI_FINISHSESSIONKEYREFRESH pfnFinishSessionKeyRefresh;                             // slot 117
    PFND3DDDI_GETENCRYPTIONBLTKEY pfnGetEncryptionBltKey;                                     // slot 118
    PFND3DDDI_DECRYPTIONBLT pfnDecryptionBlt;                                                 // slot 119
    PFND3DDDI_RESOLVESHAREDRESOURCE pfnResolveSharedResource;                                 // slot 120
};
UMD_LAYOUT(D3DDDI_DEVICEFUNCS, 968, 8);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetRenderState, 0);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnUpdateWInfo, 8);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnValidateDevice, 16);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetTextureStageState, 24);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetTexture, 32);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetPixelShader, 40);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetPixelShaderConst, 48);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetStreamSourceUm, 56);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetIndices, 64);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetIndicesUm, 72);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDrawPrimitive, 80);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDrawIndexedPrimitive, 88);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDrawRectPatch, 96);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDrawTriPatch, 104);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDrawPrimitive2, 112);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDrawIndexedPrimitive2, 120);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnVolBlt, 128);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnBufBlt, 136);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnTexBlt, 144);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnStateSet, 152);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetPriority, 160);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnClear, 168);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnUpdatePalette, 176);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetPalette, 184);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVertexShaderConst, 192);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnMultiplyTransform, 200);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetTransform, 208);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetViewport, 216);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetZRange, 224);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetMaterial, 232);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetLight, 240);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateLight, 248);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyLight, 256);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetClipPlane, 264);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetInfo, 272);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnLock, 280);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnUnlock, 288);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateResource, 296);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyResource, 304);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetDisplayMode, 312);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnPresent, 320);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnFlush, 328);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateVertexShaderFunc, 336);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDeleteVertexShaderFunc, 344);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVertexShaderFunc, 352);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateVertexShaderDecl, 360);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDeleteVertexShaderDecl, 368);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVertexShaderDecl, 376);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVertexShaderConstI, 384);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVertexShaderConstB, 392);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetScissorRect, 400);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetStreamSource, 408);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetStreamSourceFreq, 416);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetConvolutionKernelMono, 424);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnComposeRects, 432);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnBlt, 440);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnColorFill, 448);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDepthFill, 456);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateQuery, 464);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyQuery, 472);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnIssueQuery, 480);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetQueryData, 488);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetRenderTarget, 496);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetDepthStencil, 504);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGenerateMipSubLevels, 512);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetPixelShaderConstI, 520);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetPixelShaderConstB, 528);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreatePixelShader, 536);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDeletePixelShader, 544);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateDecodeDevice, 552);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyDecodeDevice, 560);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetDecodeRenderTarget, 568);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDecodeBeginFrame, 576);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDecodeEndFrame, 584);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDecodeExecute, 592);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDecodeExtensionExecute, 600);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateVideoProcessDevice, 608);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyVideoProcessDevice, 616);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnVideoProcessBeginFrame, 624);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnVideoProcessEndFrame, 632);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVideoProcessRenderTarget, 640);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnVideoProcessBlt, 648);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateExtensionDevice, 656);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyExtensionDevice, 664);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnExtensionExecute, 672);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateOverlay, 680);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnUpdateOverlay, 688);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnFlipOverlay, 696);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetOverlayColorControls, 704);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetOverlayColorControls, 712);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyOverlay, 720);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyDevice, 728);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnQueryResourceResidency, 736);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnOpenResource, 744);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetCaptureAllocationHandle, 752);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCaptureToSysMem, 760);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnLockAsync, 768);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnUnlockAsync, 776);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnRename, 784);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateVideoProcessor, 792);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVideoProcessBltState, 800);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetVideoProcessBltStatePrivate, 808);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnSetVideoProcessStreamState, 816);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetVideoProcessStreamStatePrivate, 824);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnVideoProcessBltHD, 832);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyVideoProcessor, 840);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateAuthenticatedChannel, 848);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnAuthenticatedChannelKeyExchange, 856);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnQueryAuthenticatedChannel, 864);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnConfigureAuthenticatedChannel, 872);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyAuthenticatedChannel, 880);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCreateCryptoSession, 888);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnCryptoSessionKeyExchange, 896);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDestroyCryptoSession, 904);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnEncryptionBlt, 912);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetPitch, 920);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnStartSessionKeyRefresh, 928);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnFinishSessionKeyRefresh, 936);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnGetEncryptionBltKey, 944);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnDecryptionBlt, 952);
UMD_OFFSET(D3DDDI_DEVICEFUNCS, pfnResolveSharedResource, 960);

UMD_DDI_RECORDS_END
