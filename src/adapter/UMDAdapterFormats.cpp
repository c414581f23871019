#include "adapter/UMDAdapterFormats.h"

#include "util/UMDFourCC.h"
#include "util/UMDUtilDebugTrace.h"

#include <algorithm>
#include <iterator>

namespace
{
// What a format can be used for: one name for each combination that occurs.
constexpr UINT kOpsPlain = FORMATOP_OFFSCREENPLAIN;
constexpr UINT kOpsConvert = kOpsPlain | FORMATOP_CONVERT_TO_ARGB;
constexpr UINT kOpsPixelsize = kOpsConvert | FORMATOP_PIXELSIZE;

constexpr UINT kMaps = FORMATOP_TEXTURE | FORMATOP_VOLUMETEXTURE | FORMATOP_CUBETEXTURE;
constexpr UINT kOpsBump = kMaps | FORMATOP_BUMPMAP;
constexpr UINT kOpsTexture = kMaps | kOpsConvert;
constexpr UINT kOpsTextureSrgb = kOpsTexture | FORMATOP_SRGBREAD;

constexpr UINT kOpsDepth = kOpsPlain | FORMATOP_ZSTENCIL | FORMATOP_ZSTENCIL_WITH_ARBITRARY_COLOR_DEPTH;
constexpr UINT kOpsDepthTexture = kOpsDepth | FORMATOP_TEXTURE;

constexpr UINT kOpsTarget =
    kOpsTexture | FORMATOP_OFFSCREEN_RENDERTARGET | FORMATOP_SAME_FORMAT_RENDERTARGET | FORMATOP_AUTOGENMIPMAP;
constexpr UINT kOpsTargetSrgb = kOpsTarget | FORMATOP_SRGBREAD | FORMATOP_SRGBWRITE;
constexpr UINT kOpsTargetOpaque = kOpsTarget | FORMATOP_NOALPHABLEND;
constexpr UINT kOpsTargetOpaqueDmap = kOpsTargetOpaque | FORMATOP_DMAP;
constexpr UINT kOpsTargetPoint = kOpsTargetOpaque | FORMATOP_NOFILTER;
constexpr UINT kOpsTargetPointDmap = kOpsTargetPoint | FORMATOP_DMAP;

constexpr UINT kOpsOverlayPlain = kOpsPlain | FORMATOP_OVERLAY;
constexpr UINT kOpsOverlayConvert = kOpsConvert | FORMATOP_OVERLAY;
constexpr UINT kOpsOverlayTexture = kOpsTexture | FORMATOP_OVERLAY;
constexpr UINT kOpsOverlayTarget = kOpsTarget | FORMATOP_OVERLAY;

constexpr UINT kOpsDisplay =
    kOpsOverlayTarget | FORMATOP_DISPLAYMODE | FORMATOP_3DACCELERATION | FORMATOP_MEMBEROFGROUP_ARGB;
constexpr UINT kOpsDisplaySrgb = kOpsDisplay | FORMATOP_SRGBREAD | FORMATOP_SRGBWRITE;
constexpr UINT kOpsDisplayAlpha = kOpsOverlayTarget | FORMATOP_SAME_FORMAT_UP_TO_ALPHA_RENDERTARGET |
                                  FORMATOP_SRGBREAD | FORMATOP_SRGBWRITE | FORMATOP_DMAP | FORMATOP_MEMBEROFGROUP_ARGB;

// The names against the words: an operation added or lost above does not compile.
static_assert(kOpsPlain == 0x00004000);
static_assert(kOpsConvert == 0x00006000);
static_assert(kOpsPixelsize == 0x00007000);
static_assert(kOpsBump == 0x00010007);
static_assert(kOpsTexture == 0x00006007);
static_assert(kOpsTextureSrgb == 0x0000E007);
static_assert(kOpsDepth == 0x000040C0);
static_assert(kOpsDepthTexture == 0x000040C1);
static_assert(kOpsTarget == 0x0040601F);
static_assert(kOpsTargetSrgb == 0x0050E01F);
static_assert(kOpsTargetOpaque == 0x0060601F);
static_assert(kOpsTargetOpaqueDmap == 0x0062601F);
static_assert(kOpsTargetPoint == 0x0064601F);
static_assert(kOpsTargetPointDmap == 0x0066601F);
static_assert(kOpsOverlayPlain == 0x04004000);
static_assert(kOpsOverlayConvert == 0x04006000);
static_assert(kOpsOverlayTexture == 0x04006007);
static_assert(kOpsOverlayTarget == 0x0440601F);
static_assert(kOpsDisplay == 0x04486C1F);
static_assert(kOpsDisplaySrgb == 0x0458EC1F);
static_assert(kOpsDisplayAlpha == 0x045AE11F);

/// A multisample type's bit: type 1 is bit 0.
constexpr UINT MsBit(D3DDDIMULTISAMPLE_TYPE type)
{
    return 1u << (type - 1);
}

constexpr UINT kMs1_2_4_6 = MsBit(D3DDDIMULTISAMPLE_NONMASKABLE) | MsBit(D3DDDIMULTISAMPLE_2_SAMPLES) |
                            MsBit(D3DDDIMULTISAMPLE_4_SAMPLES) | MsBit(D3DDDIMULTISAMPLE_6_SAMPLES);
static_assert(kMs1_2_4_6 == 0x2B);

// The runtime sees this order. YUY2 and UYVY stand twice: once to be overlaid, once to be sampled.
// Format, operations, multisample types of flips, of blits, bits per pixel (0 where that says nothing).
constexpr FORMATOP kFormats[] = {
    {D3DDDIFMT_X1R5G5B5, kOpsOverlayTarget, 0, 0, 16},
    {D3DDDIFMT_A1R5G5B5, kOpsOverlayTarget, 0, 0, 16},
    {D3DDDIFMT_A4R4G4B4, kOpsTargetSrgb, 0, 0, 16},
    {D3DDDIFMT_R5G6B5, kOpsDisplay, kMs1_2_4_6, kMs1_2_4_6, 16},
    {D3DDDIFMT_V8U8, kOpsBump, 0, 0, 16},
    {D3DDDIFMT_L6V5U5, kOpsBump, 0, 0, 16},
    {D3DDDIFMT_X8L8V8U8, kOpsBump, 0, 0, 32},
    {D3DDDIFMT_Q8W8V8U8, kOpsBump, 0, 0, 32},
    {D3DDDIFMT_V16U16, kOpsBump, 0, 0, 32},
    {D3DDDIFMT_W11V11U10, kOpsBump, 0, 0, 32},
    {D3DDDIFMT_A2W10V10U10, kOpsBump, 0, 0, 32},
    {D3DDDIFMT_Q16W16V16U16, kOpsBump, 0, 0, 64},
    {D3DDDIFMT_X8R8G8B8, kOpsDisplaySrgb, kMs1_2_4_6, kMs1_2_4_6, 32},
    {D3DDDIFMT_A8R8G8B8, kOpsDisplayAlpha, kMs1_2_4_6, kMs1_2_4_6, 32},
    {D3DDDIFMT_L8, kOpsTextureSrgb, 0, 0, 8},
    {UMDFourCC("EAPI"), kOpsPlain, 0, 0, 0},
    {D3DDDIFMT_P8, kOpsPlain, 0, 0, 8},
    {D3DDDIFMT_D32_LOCKABLE, kOpsPlain, 0, 0, 32},
    {D3DDDIFMT_S8_LOCKABLE, kOpsPlain, 0, 0, 8},
    {D3DDDIFMT_BINARYBUFFER, kOpsPlain, 0, 0, 8},
    {UMDFourCC("M2IA"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("YUY2"), kOpsOverlayPlain, 0, 0, 0},
    {UMDFourCC("UYVY"), kOpsOverlayPlain, 0, 0, 0},
    {UMDFourCC("YV12"), kOpsOverlayConvert, 0, 0, 0},
    {UMDFourCC("YVU9"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("IF09"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("NV11"), kOpsOverlayPlain, 0, 0, 0},
    {UMDFourCC("NV12"), kOpsOverlayConvert, 0, 0, 0},
    {UMDFourCC("NV21"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("XENC"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("IMC4"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("AYUV"), kOpsPixelsize, 0, 0, 32},
    {UMDFourCC("VBID"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("ATIC"), kOpsPlain, 0, 0, 0},
    {UMDFourCC("SORT"), kOpsTarget, 0, 0, 32},
    {UMDFourCC("UYVY"), kOpsOverlayTexture, 0, 0, 8},
    {UMDFourCC("YUY2"), kOpsOverlayTexture, 0, 0, 8},
    {UMDFourCC("DXT1"), kOpsTextureSrgb, 0, 0, 0},
    {UMDFourCC("DXT2"), kOpsTextureSrgb, 0, 0, 0},
    {UMDFourCC("DXT3"), kOpsTextureSrgb, 0, 0, 0},
    {UMDFourCC("DXT4"), kOpsTextureSrgb, 0, 0, 0},
    {UMDFourCC("DXT5"), kOpsTextureSrgb, 0, 0, 0},
    {UMDFourCC("INST"), kOpsConvert, 0, 0, 0},
    {UMDFourCC("R2VB"), kOpsConvert, 0, 0, 0},
    {UMDFourCC("DF16"), kOpsDepthTexture, 0, 0, 16},
    {D3DDDIFMT_D16, kOpsDepth, kMs1_2_4_6, kMs1_2_4_6, 16},
    {D3DDDIFMT_D16_LOCKABLE, kOpsDepth, 0, 0, 16},
    {D3DDDIFMT_D24X8, kOpsDepth, kMs1_2_4_6, kMs1_2_4_6, 32},
    {D3DDDIFMT_D24S8, kOpsDepth, kMs1_2_4_6, kMs1_2_4_6, 32},
    {D3DDDIFMT_A8, kOpsTexture, 0, 0, 8},
    {D3DDDIFMT_A8L8, kOpsTextureSrgb, 0, 0, 16},
    {D3DDDIFMT_G16R16, kOpsTargetOpaqueDmap, 0, 0, 32},
    {D3DDDIFMT_L16, kOpsTexture, 0, 0, 16},
    {D3DDDIFMT_A2R10G10B10, kOpsTargetOpaque, 0, 0, 32},
    {D3DDDIFMT_A2B10G10R10, kOpsTargetOpaque, 0, 0, 32},
    {D3DDDIFMT_A16B16G16R16F, kOpsTargetPointDmap, 0, 0, 64},
    {D3DDDIFMT_A16B16G16R16, kOpsTargetOpaqueDmap, 0, 0, 64},
    {D3DDDIFMT_R16F, kOpsTargetPoint, 0, 0, 16},
    {D3DDDIFMT_G16R16F, kOpsTargetPointDmap, 0, 0, 32},
    {D3DDDIFMT_R32F, kOpsTargetPointDmap, 0, 0, 32},
    {D3DDDIFMT_G32R32F, kOpsTargetPointDmap, 0, 0, 64},
    {D3DDDIFMT_A32B32G32R32F, kOpsTargetPointDmap, 0, 0, 128},
};
static_assert(std::size(kFormats) == 62);
}  // namespace

UINT UMDGetAdapterFormatCount()
{
    constexpr UINT count = std::size(kFormats);
    UMD_TRACE(UMDTRACE_CAPS, L"UMDGetAdapterFormatCount %d\n", count);
    return count;
}

HRESULT UMDGetAdapterFormats(FORMATOP* pFormats, UINT size)
{
    UMD_TRACE(UMDTRACE_CAPS, L"UMDGetAdapterFormats %d\n", size / static_cast<UINT>(sizeof(FORMATOP)));
    std::copy(std::begin(kFormats), std::end(kFormats), pFormats);
    return S_OK;
}
