#include "adapter/UMDAdapterCapabilitiesD3D9.h"

#include "util/UMDUtilDebugTrace.h"

namespace
{
// Published flags of the driver side of the interface, which d3d9caps.h leaves out.
constexpr DWORD kDevCapsFloatTLVertex = 0x00000001;
constexpr DWORD kDevCapsHwVertexBuffer = 0x02000000;
constexpr DWORD kDevCapsHwIndexBuffer = 0x04000000;
constexpr DWORD kDevCapsSubvolumeLock = 0x08000000;

// Bits that only the runtime and drivers know; no header names them.
constexpr DWORD kCaps2Unnamed = 0x00480000;
constexpr DWORD kPrimitiveMiscCapsUnnamed = 0x00002000;
constexpr DWORD kRasterCapsUnnamed = 0x00004220;
constexpr DWORD kTextureCapsUnnamed = 0x00000008;

// clang-format off
constexpr DWORD kCompareAll = D3DPCMPCAPS_NEVER
    | D3DPCMPCAPS_LESS
    | D3DPCMPCAPS_EQUAL
    | D3DPCMPCAPS_LESSEQUAL
    | D3DPCMPCAPS_GREATER
    | D3DPCMPCAPS_NOTEQUAL
    | D3DPCMPCAPS_GREATEREQUAL
    | D3DPCMPCAPS_ALWAYS;
// clang-format on

/// Texture coordinate sets of a flexible vertex format: the low word of FVFCaps.
constexpr DWORD kTexcoordSets = 8;

// One line a field and a flag, in the record's order.
// clang-format off
constexpr D3DCAPS9 kCapabilities = {
    .DeviceType = D3DDEVTYPE_HAL,
    .AdapterOrdinal = 0,
    .Caps = D3DCAPS_READ_SCANLINE,
    .Caps2 = D3DCAPS2_DYNAMICTEXTURES
        | D3DCAPS2_FULLSCREENGAMMA
        | kCaps2Unnamed,
    .Caps3 = D3DCAPS3_COPY_TO_VIDMEM
        | D3DCAPS3_ALPHA_FULLSCREEN_FLIP_OR_DISCARD,
    .PresentationIntervals = 0,
    .CursorCaps = 0,
    .DevCaps = kDevCapsFloatTLVertex
        | D3DDEVCAPS_EXECUTESYSTEMMEMORY
        | D3DDEVCAPS_EXECUTEVIDEOMEMORY
        | D3DDEVCAPS_TLVERTEXSYSTEMMEMORY
        | D3DDEVCAPS_TLVERTEXVIDEOMEMORY
        | D3DDEVCAPS_TEXTUREVIDEOMEMORY
        | D3DDEVCAPS_DRAWPRIMTLVERTEX
        | D3DDEVCAPS_CANRENDERAFTERFLIP
        | D3DDEVCAPS_DRAWPRIMITIVES2
        | D3DDEVCAPS_DRAWPRIMITIVES2EX
        | D3DDEVCAPS_HWRASTERIZATION
        | D3DDEVCAPS_PUREDEVICE
        | kDevCapsHwVertexBuffer
        | kDevCapsHwIndexBuffer
        | kDevCapsSubvolumeLock,
    .PrimitiveMiscCaps = D3DPMISCCAPS_MASKZ
        | D3DPMISCCAPS_CULLNONE
        | D3DPMISCCAPS_CULLCW
        | D3DPMISCCAPS_CULLCCW
        | D3DPMISCCAPS_COLORWRITEENABLE
        | D3DPMISCCAPS_BLENDOP
        | D3DPMISCCAPS_INDEPENDENTWRITEMASKS
        | D3DPMISCCAPS_SEPARATEALPHABLEND
        | D3DPMISCCAPS_MRTINDEPENDENTBITDEPTHS
        | D3DPMISCCAPS_MRTPOSTPIXELSHADERBLENDING
        | kPrimitiveMiscCapsUnnamed,
    .RasterCaps = D3DPRASTERCAPS_DITHER
        | D3DPRASTERCAPS_ZTEST
        | D3DPRASTERCAPS_FOGVERTEX
        | D3DPRASTERCAPS_FOGTABLE
        | D3DPRASTERCAPS_MIPMAPLODBIAS
        | D3DPRASTERCAPS_ANISOTROPY
        | D3DPRASTERCAPS_WFOG
        | D3DPRASTERCAPS_ZFOG
        | D3DPRASTERCAPS_COLORPERSPECTIVE
        | D3DPRASTERCAPS_SCISSORTEST
        | D3DPRASTERCAPS_SLOPESCALEDEPTHBIAS
        | D3DPRASTERCAPS_DEPTHBIAS
        | kRasterCapsUnnamed,
    .ZCmpCaps = kCompareAll,
    .SrcBlendCaps = D3DPBLENDCAPS_ZERO
        | D3DPBLENDCAPS_ONE
        | D3DPBLENDCAPS_SRCCOLOR
        | D3DPBLENDCAPS_INVSRCCOLOR
        | D3DPBLENDCAPS_SRCALPHA
        | D3DPBLENDCAPS_INVSRCALPHA
        | D3DPBLENDCAPS_DESTALPHA
        | D3DPBLENDCAPS_INVDESTALPHA
        | D3DPBLENDCAPS_DESTCOLOR
        | D3DPBLENDCAPS_INVDESTCOLOR
        | D3DPBLENDCAPS_SRCALPHASAT
        | D3DPBLENDCAPS_BOTHSRCALPHA
        | D3DPBLENDCAPS_BOTHINVSRCALPHA
        | D3DPBLENDCAPS_BLENDFACTOR,
    .DestBlendCaps = D3DPBLENDCAPS_ZERO
        | D3DPBLENDCAPS_ONE
        | D3DPBLENDCAPS_SRCCOLOR
        | D3DPBLENDCAPS_INVSRCCOLOR
        | D3DPBLENDCAPS_SRCALPHA
        | D3DPBLENDCAPS_INVSRCALPHA
        | D3DPBLENDCAPS_DESTALPHA
        | D3DPBLENDCAPS_INVDESTALPHA
        | D3DPBLENDCAPS_DESTCOLOR
        | D3DPBLENDCAPS_INVDESTCOLOR
        | D3DPBLENDCAPS_BLENDFACTOR,
    .AlphaCmpCaps = kCompareAll,
    .ShadeCaps = D3DPSHADECAPS_COLORGOURAUDRGB
        | D3DPSHADECAPS_SPECULARGOURAUDRGB
        | D3DPSHADECAPS_ALPHAGOURAUDBLEND
        | D3DPSHADECAPS_FOGGOURAUD,
    .TextureCaps = D3DPTEXTURECAPS_PERSPECTIVE
        | D3DPTEXTURECAPS_POW2
        | D3DPTEXTURECAPS_ALPHA
        | D3DPTEXTURECAPS_TEXREPEATNOTSCALEDBYSIZE
        | D3DPTEXTURECAPS_NONPOW2CONDITIONAL
        | D3DPTEXTURECAPS_PROJECTED
        | D3DPTEXTURECAPS_CUBEMAP
        | D3DPTEXTURECAPS_VOLUMEMAP
        | D3DPTEXTURECAPS_MIPMAP
        | D3DPTEXTURECAPS_MIPVOLUMEMAP
        | D3DPTEXTURECAPS_MIPCUBEMAP
        | D3DPTEXTURECAPS_CUBEMAP_POW2
        | D3DPTEXTURECAPS_VOLUMEMAP_POW2
        | kTextureCapsUnnamed,
    .TextureFilterCaps = D3DPTFILTERCAPS_MINFPOINT
        | D3DPTFILTERCAPS_MINFLINEAR
        | D3DPTFILTERCAPS_MINFANISOTROPIC
        | D3DPTFILTERCAPS_MIPFPOINT
        | D3DPTFILTERCAPS_MIPFLINEAR
        | D3DPTFILTERCAPS_MAGFPOINT
        | D3DPTFILTERCAPS_MAGFLINEAR,
    .CubeTextureFilterCaps = 0,
    .VolumeTextureFilterCaps = 0,
    .TextureAddressCaps = D3DPTADDRESSCAPS_WRAP
        | D3DPTADDRESSCAPS_MIRROR
        | D3DPTADDRESSCAPS_CLAMP
        | D3DPTADDRESSCAPS_BORDER
        | D3DPTADDRESSCAPS_INDEPENDENTUV
        | D3DPTADDRESSCAPS_MIRRORONCE,
    .VolumeTextureAddressCaps = 0,
    .LineCaps = D3DLINECAPS_TEXTURE
        | D3DLINECAPS_ZTEST
        | D3DLINECAPS_BLEND
        | D3DLINECAPS_ALPHACMP
        | D3DLINECAPS_FOG,
    .MaxTextureWidth = 2048,
    .MaxTextureHeight = 2048,
    .MaxVolumeExtent = 512,
    .MaxTextureRepeat = 128,
    .MaxTextureAspectRatio = 0,
    .MaxAnisotropy = 8,
    .MaxVertexW = 1.0e10f,
    .GuardBandLeft = -2880.0f,
    .GuardBandTop = -2880.0f,
    .GuardBandRight = 2880.0f,
    .GuardBandBottom = 2880.0f,
    .ExtentsAdjust = 0.0f,
    .StencilCaps = D3DSTENCILCAPS_KEEP
        | D3DSTENCILCAPS_ZERO
        | D3DSTENCILCAPS_REPLACE
        | D3DSTENCILCAPS_INCRSAT
        | D3DSTENCILCAPS_DECRSAT
        | D3DSTENCILCAPS_INVERT
        | D3DSTENCILCAPS_INCR
        | D3DSTENCILCAPS_DECR
        | D3DSTENCILCAPS_TWOSIDED,
    .FVFCaps = kTexcoordSets
        | D3DFVFCAPS_DONOTSTRIPELEMENTS
        | D3DFVFCAPS_PSIZE,
    .TextureOpCaps = D3DTEXOPCAPS_DISABLE
        | D3DTEXOPCAPS_SELECTARG1
        | D3DTEXOPCAPS_SELECTARG2
        | D3DTEXOPCAPS_MODULATE
        | D3DTEXOPCAPS_MODULATE2X
        | D3DTEXOPCAPS_MODULATE4X
        | D3DTEXOPCAPS_ADD
        | D3DTEXOPCAPS_ADDSIGNED
        | D3DTEXOPCAPS_ADDSIGNED2X
        | D3DTEXOPCAPS_SUBTRACT
        | D3DTEXOPCAPS_ADDSMOOTH
        | D3DTEXOPCAPS_BLENDDIFFUSEALPHA
        | D3DTEXOPCAPS_BLENDTEXTUREALPHA
        | D3DTEXOPCAPS_BLENDFACTORALPHA
        | D3DTEXOPCAPS_BLENDTEXTUREALPHAPM
        | D3DTEXOPCAPS_BLENDCURRENTALPHA
        | D3DTEXOPCAPS_PREMODULATE
        | D3DTEXOPCAPS_MODULATEALPHA_ADDCOLOR
        | D3DTEXOPCAPS_MODULATECOLOR_ADDALPHA
        | D3DTEXOPCAPS_MODULATEINVALPHA_ADDCOLOR
        | D3DTEXOPCAPS_MODULATEINVCOLOR_ADDALPHA
        | D3DTEXOPCAPS_BUMPENVMAP
        | D3DTEXOPCAPS_BUMPENVMAPLUMINANCE
        | D3DTEXOPCAPS_DOTPRODUCT3,
    .MaxTextureBlendStages = 8,
    .MaxSimultaneousTextures = 8,
    .VertexProcessingCaps = 0,
    .MaxActiveLights = 8,
    .MaxUserClipPlanes = 6,
    .MaxVertexBlendMatrices = 4,
    .MaxVertexBlendMatrixIndex = 0,
    .MaxPointSize = 64.0f,
    .MaxPrimitiveCount = 0xFFFF,
    .MaxVertexIndex = 0x3FFFF,
    .MaxStreams = 16,
    .MaxStreamStride = 255,
    .VertexShaderVersion = D3DVS_VERSION(2, 0),
    .MaxVertexShaderConst = 256,
    .PixelShaderVersion = D3DPS_VERSION(2, 0),
    .PixelShader1xMaxValue = 1.0f,
    .DevCaps2 = D3DDEVCAPS2_STREAMOFFSET
        | D3DDEVCAPS2_CAN_STRETCHRECT_FROM_TEXTURES,
    .MaxNpatchTessellationLevel = 0.0f,
    .Reserved5 = 0,
    .MasterAdapterOrdinal = 0,
    .AdapterOrdinalInGroup = 0,
    .NumberOfAdaptersInGroup = 0,
    .DeclTypes = D3DDTCAPS_UBYTE4
        | D3DDTCAPS_UBYTE4N
        | D3DDTCAPS_SHORT2N
        | D3DDTCAPS_SHORT4N
        | D3DDTCAPS_FLOAT16_2
        | D3DDTCAPS_FLOAT16_4,
    .NumSimultaneousRTs = 1,
    .StretchRectFilterCaps = D3DPTFILTERCAPS_MINFPOINT
        | D3DPTFILTERCAPS_MINFLINEAR
        | D3DPTFILTERCAPS_MAGFPOINT
        | D3DPTFILTERCAPS_MAGFLINEAR,
    .VS20Caps = {.Caps = 0, .DynamicFlowControlDepth = 0, .NumTemps = 12, .StaticFlowControlDepth = 1},
    .PS20Caps = {.Caps = 0, .DynamicFlowControlDepth = 0, .NumTemps = 12, .StaticFlowControlDepth = 0,
        .NumInstructionSlots = 96},
    .VertexTextureFilterCaps = 0,
    .MaxVShaderInstructionsExecuted = 0,
    .MaxPShaderInstructionsExecuted = 0,
    .MaxVertexShader30InstructionSlots = 0,
    .MaxPixelShader30InstructionSlots = 0,
};
// clang-format on

// The names against the words: a flag added or lost above does not compile.
static_assert(kCapabilities.Caps == 0x00020000);
static_assert(kCapabilities.Caps2 == 0x204A0000);
static_assert(kCapabilities.Caps3 == 0x00000120);
static_assert(kCapabilities.DevCaps == 0x0E18AEF1);
static_assert(kCapabilities.PrimitiveMiscCaps == 0x000E68F2);
static_assert(kCapabilities.RasterCaps == 0x077263B1);
static_assert(kCapabilities.ZCmpCaps == 0xFF);
static_assert(kCapabilities.SrcBlendCaps == 0x3FFF);
static_assert(kCapabilities.DestBlendCaps == 0x23FF);
static_assert(kCapabilities.AlphaCmpCaps == 0xFF);
static_assert(kCapabilities.ShadeCaps == 0x00084208);
static_assert(kCapabilities.TextureCaps == 0x0007ED4F);
static_assert(kCapabilities.TextureFilterCaps == 0x03030700);
static_assert(kCapabilities.TextureAddressCaps == 0x3F);
static_assert(kCapabilities.LineCaps == 0x1F);
static_assert(kCapabilities.StencilCaps == 0x1FF);
static_assert(kCapabilities.FVFCaps == 0x00180008);
static_assert(kCapabilities.TextureOpCaps == 0x00FFFFFF);
static_assert(kCapabilities.VertexShaderVersion == 0xFFFE0200);
static_assert(kCapabilities.PixelShaderVersion == 0xFFFF0200);
static_assert(kCapabilities.DevCaps2 == 0x11);
static_assert(kCapabilities.DeclTypes == 0x30F);
static_assert(kCapabilities.StretchRectFilterCaps == 0x03000300);
}  // namespace

HRESULT UMDGetAdapterCapabilitiesD3D9(D3DCAPS9* pCaps)
{
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesD3D9\n");
    *pCaps = kCapabilities;
    return S_OK;
}
