// What the capability tables must answer, word by word: written down on its own, not taken from the driver.
#pragma once

#include <windows.h>

namespace caps_expected
{
/// The words of the Direct3D 9 capability record, in the record's order. Fractions stand as their bits.
struct RecordWord
{
    const char* pField;
    UINT Word;
};

inline constexpr RecordWord kRecord[] = {
    {"DeviceType", 1},
    {"AdapterOrdinal", 0},
    {"Caps", 0x00020000},
    {"Caps2", 0x204A0000},
    {"Caps3", 0x00000120},
    {"PresentationIntervals", 0},
    {"CursorCaps", 0},
    {"DevCaps", 0x0E18AEF1},
    {"PrimitiveMiscCaps", 0x000E68F2},
    {"RasterCaps", 0x077263B1},
    {"ZCmpCaps", 0xFF},
    {"SrcBlendCaps", 0x3FFF},
    {"DestBlendCaps", 0x23FF},
    {"AlphaCmpCaps", 0xFF},
    {"ShadeCaps", 0x00084208},
    {"TextureCaps", 0x0007ED4F},
    {"TextureFilterCaps", 0x03030700},
    {"CubeTextureFilterCaps", 0},
    {"VolumeTextureFilterCaps", 0},
    {"TextureAddressCaps", 0x3F},
    {"VolumeTextureAddressCaps", 0},
    {"LineCaps", 0x1F},
    {"MaxTextureWidth", 2048},
    {"MaxTextureHeight", 2048},
    {"MaxVolumeExtent", 512},
    {"MaxTextureRepeat", 128},
    {"MaxTextureAspectRatio", 0},
    {"MaxAnisotropy", 8},
    {"MaxVertexW", 0x501502F9},       // 1.0e10
    {"GuardBandLeft", 0xC5340000},    // -2880.0
    {"GuardBandTop", 0xC5340000},     // -2880.0
    {"GuardBandRight", 0x45340000},   // 2880.0
    {"GuardBandBottom", 0x45340000},  // 2880.0
    {"ExtentsAdjust", 0x00000000},    // 0.0
    {"StencilCaps", 0x1FF},
    {"FVFCaps", 0x00180008},
    {"TextureOpCaps", 0x00FFFFFF},
    {"MaxTextureBlendStages", 8},
    {"MaxSimultaneousTextures", 8},
    {"VertexProcessingCaps", 0},
    {"MaxActiveLights", 8},
    {"MaxUserClipPlanes", 6},
    {"MaxVertexBlendMatrices", 4},
    {"MaxVertexBlendMatrixIndex", 0},
    {"MaxPointSize", 0x42800000},  // 64.0
    {"MaxPrimitiveCount", 0xFFFF},
    {"MaxVertexIndex", 0x3FFFF},
    {"MaxStreams", 16},
    {"MaxStreamStride", 255},
    {"VertexShaderVersion", 0xFFFE0200},
    {"MaxVertexShaderConst", 256},
    {"PixelShaderVersion", 0xFFFF0200},
    {"PixelShader1xMaxValue", 0x3F800000},  // 1.0
    {"DevCaps2", 0x11},
    {"MaxNpatchTessellationLevel", 0x00000000},  // 0.0
    {"Reserved5", 0},
    {"MasterAdapterOrdinal", 0},
    {"AdapterOrdinalInGroup", 0},
    {"NumberOfAdaptersInGroup", 0},
    {"DeclTypes", 0x30F},
    {"NumSimultaneousRTs", 1},
    {"StretchRectFilterCaps", 0x03000300},
    {"VS20Caps.Caps", 0},
    {"VS20Caps.DynamicFlowControlDepth", 0},
    {"VS20Caps.NumTemps", 12},
    {"VS20Caps.StaticFlowControlDepth", 1},
    {"PS20Caps.Caps", 0},
    {"PS20Caps.DynamicFlowControlDepth", 0},
    {"PS20Caps.NumTemps", 12},
    {"PS20Caps.StaticFlowControlDepth", 0},
    {"PS20Caps.NumInstructionSlots", 96},
    {"VertexTextureFilterCaps", 0},
    {"MaxVShaderInstructionsExecuted", 0},
    {"MaxPShaderInstructionsExecuted", 0},
    {"MaxVertexShader30InstructionSlots", 0},
    {"MaxPixelShader30InstructionSlots", 0},
};

/// The format table, in the order that the runtime sees.
struct FormatRow
{
    UINT Format;
    UINT Operations;
    UINT FlipMsTypes;
    UINT BltMsTypes;
    UINT PrivateFormatBitCount;
};

inline constexpr FormatRow kFormats[] = {
    {24, 0x0440601F, 0, 0, 16},          // 1 X1R5G5B5
    {25, 0x0440601F, 0, 0, 16},          // 2 A1R5G5B5
    {26, 0x0050E01F, 0, 0, 16},          // 3 A4R4G4B4
    {23, 0x04486C1F, 0x2B, 0x2B, 16},    // 4 R5G6B5
    {60, 0x00010007, 0, 0, 16},          // 5 V8U8
    {61, 0x00010007, 0, 0, 16},          // 6 L6V5U5
    {62, 0x00010007, 0, 0, 32},          // 7 X8L8V8U8
    {63, 0x00010007, 0, 0, 32},          // 8 Q8W8V8U8
    {64, 0x00010007, 0, 0, 32},          // 9 V16U16
    {65, 0x00010007, 0, 0, 32},          // 10 W11V11U10
    {67, 0x00010007, 0, 0, 32},          // 11 A2W10V10U10
    {110, 0x00010007, 0, 0, 64},         // 12 Q16W16V16U16
    {22, 0x0458EC1F, 0x2B, 0x2B, 32},    // 13 X8R8G8B8
    {21, 0x045AE11F, 0x2B, 0x2B, 32},    // 14 A8R8G8B8
    {50, 0x0000E007, 0, 0, 8},           // 15 L8
    {0x49504145, 0x00004000, 0, 0, 0},   // 16 EAPI
    {41, 0x00004000, 0, 0, 8},           // 17 P8
    {84, 0x00004000, 0, 0, 32},          // 18 D32_LOCKABLE
    {85, 0x00004000, 0, 0, 8},           // 19 S8_LOCKABLE
    {199, 0x00004000, 0, 0, 8},          // 20 BINARYBUFFER
    {0x4149324D, 0x00004000, 0, 0, 0},   // 21 M2IA
    {0x32595559, 0x04004000, 0, 0, 0},   // 22 YUY2
    {0x59565955, 0x04004000, 0, 0, 0},   // 23 UYVY
    {0x32315659, 0x04006000, 0, 0, 0},   // 24 YV12
    {0x39555659, 0x00004000, 0, 0, 0},   // 25 YVU9
    {0x39304649, 0x00004000, 0, 0, 0},   // 26 IF09
    {0x3131564E, 0x04004000, 0, 0, 0},   // 27 NV11
    {0x3231564E, 0x04006000, 0, 0, 0},   // 28 NV12
    {0x3132564E, 0x00004000, 0, 0, 0},   // 29 NV21
    {0x434E4558, 0x00004000, 0, 0, 0},   // 30 XENC
    {0x34434D49, 0x00004000, 0, 0, 0},   // 31 IMC4
    {0x56555941, 0x00007000, 0, 0, 32},  // 32 AYUV
    {0x44494256, 0x00004000, 0, 0, 0},   // 33 VBID
    {0x43495441, 0x00004000, 0, 0, 0},   // 34 ATIC
    {0x54524F53, 0x0040601F, 0, 0, 32},  // 35 SORT
    {0x59565955, 0x04006007, 0, 0, 8},   // 36 UYVY
    {0x32595559, 0x04006007, 0, 0, 8},   // 37 YUY2
    {0x31545844, 0x0000E007, 0, 0, 0},   // 38 DXT1
    {0x32545844, 0x0000E007, 0, 0, 0},   // 39 DXT2
    {0x33545844, 0x0000E007, 0, 0, 0},   // 40 DXT3
    {0x34545844, 0x0000E007, 0, 0, 0},   // 41 DXT4
    {0x35545844, 0x0000E007, 0, 0, 0},   // 42 DXT5
    {0x54534E49, 0x00006000, 0, 0, 0},   // 43 INST
    {0x42563252, 0x00006000, 0, 0, 0},   // 44 R2VB
    {0x36314644, 0x000040C1, 0, 0, 16},  // 45 DF16
    {80, 0x000040C0, 0x2B, 0x2B, 16},    // 46 D16
    {70, 0x000040C0, 0, 0, 16},          // 47 D16_LOCKABLE
    {77, 0x000040C0, 0x2B, 0x2B, 32},    // 48 D24X8
    {75, 0x000040C0, 0x2B, 0x2B, 32},    // 49 D24S8
    {28, 0x00006007, 0, 0, 8},           // 50 A8
    {51, 0x0000E007, 0, 0, 16},          // 51 A8L8
    {34, 0x0062601F, 0, 0, 32},          // 52 G16R16
    {81, 0x00006007, 0, 0, 16},          // 53 L16
    {35, 0x0060601F, 0, 0, 32},          // 54 A2R10G10B10
    {31, 0x0060601F, 0, 0, 32},          // 55 A2B10G10R10
    {113, 0x0066601F, 0, 0, 64},         // 56 A16B16G16R16F
    {36, 0x0062601F, 0, 0, 64},          // 57 A16B16G16R16
    {111, 0x0064601F, 0, 0, 16},         // 58 R16F
    {112, 0x0066601F, 0, 0, 32},         // 59 G16R16F
    {114, 0x0066601F, 0, 0, 32},         // 60 R32F
    {115, 0x0066601F, 0, 0, 64},         // 61 G32R32F
    {116, 0x0066601F, 0, 0, 128},        // 62 A32B32G32R32F
};
}  // namespace caps_expected
