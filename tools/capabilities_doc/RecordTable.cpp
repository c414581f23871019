#include "FlagNames.h"
#include "Tables.h"

#include "adapter/UMDAdapterCapabilitiesD3D9.h"

#include <cstring>

namespace
{
enum class Form
{
    Number,
    Flags,
    VertexFormat,  ///< flags above a count of texture coordinate sets in the low word
    Version,
    Fraction,
};

struct Field
{
    const char* pName;
    std::size_t Offset;  ///< bytes
    Form Kind = Form::Number;
    const FlagFamily* pFlags = nullptr;
};

constexpr Field kFields[] = {
    {"DeviceType", offsetof(D3DCAPS9, DeviceType)},
    {"AdapterOrdinal", offsetof(D3DCAPS9, AdapterOrdinal)},
    {"Caps", offsetof(D3DCAPS9, Caps), Form::Flags, &kFlagsCaps},
    {"Caps2", offsetof(D3DCAPS9, Caps2), Form::Flags, &kFlagsCaps2},
    {"Caps3", offsetof(D3DCAPS9, Caps3), Form::Flags, &kFlagsCaps3},
    {"PresentationIntervals", offsetof(D3DCAPS9, PresentationIntervals)},
    {"CursorCaps", offsetof(D3DCAPS9, CursorCaps)},
    {"DevCaps", offsetof(D3DCAPS9, DevCaps), Form::Flags, &kFlagsDevCaps},
    {"PrimitiveMiscCaps", offsetof(D3DCAPS9, PrimitiveMiscCaps), Form::Flags, &kFlagsPrimitiveMisc},
    {"RasterCaps", offsetof(D3DCAPS9, RasterCaps), Form::Flags, &kFlagsRaster},
    {"ZCmpCaps", offsetof(D3DCAPS9, ZCmpCaps), Form::Flags, &kFlagsCompare},
    {"SrcBlendCaps", offsetof(D3DCAPS9, SrcBlendCaps), Form::Flags, &kFlagsBlend},
    {"DestBlendCaps", offsetof(D3DCAPS9, DestBlendCaps), Form::Flags, &kFlagsBlend},
    {"AlphaCmpCaps", offsetof(D3DCAPS9, AlphaCmpCaps), Form::Flags, &kFlagsCompare},
    {"ShadeCaps", offsetof(D3DCAPS9, ShadeCaps), Form::Flags, &kFlagsShade},
    {"TextureCaps", offsetof(D3DCAPS9, TextureCaps), Form::Flags, &kFlagsTexture},
    {"TextureFilterCaps", offsetof(D3DCAPS9, TextureFilterCaps), Form::Flags, &kFlagsFilter},
    {"CubeTextureFilterCaps", offsetof(D3DCAPS9, CubeTextureFilterCaps), Form::Flags, &kFlagsFilter},
    {"VolumeTextureFilterCaps", offsetof(D3DCAPS9, VolumeTextureFilterCaps), Form::Flags, &kFlagsFilter},
    {"TextureAddressCaps", offsetof(D3DCAPS9, TextureAddressCaps), Form::Flags, &kFlagsAddress},
    {"VolumeTextureAddressCaps", offsetof(D3DCAPS9, VolumeTextureAddressCaps), Form::Flags, &kFlagsAddress},
    {"LineCaps", offsetof(D3DCAPS9, LineCaps), Form::Flags, &kFlagsLine},
    {"MaxTextureWidth", offsetof(D3DCAPS9, MaxTextureWidth)},
    {"MaxTextureHeight", offsetof(D3DCAPS9, MaxTextureHeight)},
    {"MaxVolumeExtent", offsetof(D3DCAPS9, MaxVolumeExtent)},
    {"MaxTextureRepeat", offsetof(D3DCAPS9, MaxTextureRepeat)},
    {"MaxTextureAspectRatio", offsetof(D3DCAPS9, MaxTextureAspectRatio)},
    {"MaxAnisotropy", offsetof(D3DCAPS9, MaxAnisotropy)},
    {"MaxVertexW", offsetof(D3DCAPS9, MaxVertexW), Form::Fraction},
    {"GuardBandLeft", offsetof(D3DCAPS9, GuardBandLeft), Form::Fraction},
    {"GuardBandTop", offsetof(D3DCAPS9, GuardBandTop), Form::Fraction},
    {"GuardBandRight", offsetof(D3DCAPS9, GuardBandRight), Form::Fraction},
    {"GuardBandBottom", offsetof(D3DCAPS9, GuardBandBottom), Form::Fraction},
    {"ExtentsAdjust", offsetof(D3DCAPS9, ExtentsAdjust), Form::Fraction},
    {"StencilCaps", offsetof(D3DCAPS9, StencilCaps), Form::Flags, &kFlagsStencil},
    {"FVFCaps", offsetof(D3DCAPS9, FVFCaps), Form::VertexFormat, &kFlagsFVF},
    {"TextureOpCaps", offsetof(D3DCAPS9, TextureOpCaps), Form::Flags, &kFlagsTextureOp},
    {"MaxTextureBlendStages", offsetof(D3DCAPS9, MaxTextureBlendStages)},
    {"MaxSimultaneousTextures", offsetof(D3DCAPS9, MaxSimultaneousTextures)},
    {"VertexProcessingCaps", offsetof(D3DCAPS9, VertexProcessingCaps)},
    {"MaxActiveLights", offsetof(D3DCAPS9, MaxActiveLights)},
    {"MaxUserClipPlanes", offsetof(D3DCAPS9, MaxUserClipPlanes)},
    {"MaxVertexBlendMatrices", offsetof(D3DCAPS9, MaxVertexBlendMatrices)},
    {"MaxVertexBlendMatrixIndex", offsetof(D3DCAPS9, MaxVertexBlendMatrixIndex)},
    {"MaxPointSize", offsetof(D3DCAPS9, MaxPointSize), Form::Fraction},
    {"MaxPrimitiveCount", offsetof(D3DCAPS9, MaxPrimitiveCount)},
    {"MaxVertexIndex", offsetof(D3DCAPS9, MaxVertexIndex)},
    {"MaxStreams", offsetof(D3DCAPS9, MaxStreams)},
    {"MaxStreamStride", offsetof(D3DCAPS9, MaxStreamStride)},
    {"VertexShaderVersion", offsetof(D3DCAPS9, VertexShaderVersion), Form::Version},
    {"MaxVertexShaderConst", offsetof(D3DCAPS9, MaxVertexShaderConst)},
    {"PixelShaderVersion", offsetof(D3DCAPS9, PixelShaderVersion), Form::Version},
    {"PixelShader1xMaxValue", offsetof(D3DCAPS9, PixelShader1xMaxValue), Form::Fraction},
    {"DevCaps2", offsetof(D3DCAPS9, DevCaps2), Form::Flags, &kFlagsDevCaps2},
    {"MaxNpatchTessellationLevel", offsetof(D3DCAPS9, MaxNpatchTessellationLevel), Form::Fraction},
    {"Reserved5", offsetof(D3DCAPS9, Reserved5)},
    {"MasterAdapterOrdinal", offsetof(D3DCAPS9, MasterAdapterOrdinal)},
    {"AdapterOrdinalInGroup", offsetof(D3DCAPS9, AdapterOrdinalInGroup)},
    {"NumberOfAdaptersInGroup", offsetof(D3DCAPS9, NumberOfAdaptersInGroup)},
    {"DeclTypes", offsetof(D3DCAPS9, DeclTypes), Form::Flags, &kFlagsDeclType},
    {"NumSimultaneousRTs", offsetof(D3DCAPS9, NumSimultaneousRTs)},
    {"StretchRectFilterCaps", offsetof(D3DCAPS9, StretchRectFilterCaps), Form::Flags, &kFlagsFilter},
    {"VS20Caps.Caps", offsetof(D3DCAPS9, VS20Caps.Caps)},
    {"VS20Caps.DynamicFlowControlDepth", offsetof(D3DCAPS9, VS20Caps.DynamicFlowControlDepth)},
    {"VS20Caps.NumTemps", offsetof(D3DCAPS9, VS20Caps.NumTemps)},
    {"VS20Caps.StaticFlowControlDepth", offsetof(D3DCAPS9, VS20Caps.StaticFlowControlDepth)},
    {"PS20Caps.Caps", offsetof(D3DCAPS9, PS20Caps.Caps)},
    {"PS20Caps.DynamicFlowControlDepth", offsetof(D3DCAPS9, PS20Caps.DynamicFlowControlDepth)},
    {"PS20Caps.NumTemps", offsetof(D3DCAPS9, PS20Caps.NumTemps)},
    {"PS20Caps.StaticFlowControlDepth", offsetof(D3DCAPS9, PS20Caps.StaticFlowControlDepth)},
    {"PS20Caps.NumInstructionSlots", offsetof(D3DCAPS9, PS20Caps.NumInstructionSlots)},
    {"VertexTextureFilterCaps", offsetof(D3DCAPS9, VertexTextureFilterCaps), Form::Flags, &kFlagsFilter},
    {"MaxVShaderInstructionsExecuted", offsetof(D3DCAPS9, MaxVShaderInstructionsExecuted)},
    {"MaxPShaderInstructionsExecuted", offsetof(D3DCAPS9, MaxPShaderInstructionsExecuted)},
    {"MaxVertexShader30InstructionSlots", offsetof(D3DCAPS9, MaxVertexShader30InstructionSlots)},
    {"MaxPixelShader30InstructionSlots", offsetof(D3DCAPS9, MaxPixelShader30InstructionSlots)},
};

/// Every field is a word, and every word of the record stands in the list, in the record's order.
constexpr bool ListIsWhole()
{
    std::size_t offset = 0;
    for (const Field& field : kFields)
    {
        if (field.Offset != offset)
            return false;
        offset += sizeof(DWORD);
    }
    return offset == sizeof(D3DCAPS9);
}
static_assert(ListIsWhole());

std::string Value(const Field& field, DWORD word)
{
    switch (field.Kind)
    {
    case Form::Flags:
        return Text("0x%08lX | ", word) + NamesOf(*field.pFlags, word);
    case Form::VertexFormat:
        return Text("0x%08lX | %lu coordinate sets, ", word, word & D3DFVFCAPS_TEXCOORDCOUNTMASK) +
               NamesOf(*field.pFlags, word & ~D3DFVFCAPS_TEXCOORDCOUNTMASK);
    case Form::Version:
        return Text("0x%08lX | %lu.%lu", word, word >> 8 & 0xFF, word & 0xFF);
    case Form::Fraction:
    {
        float fraction;
        std::memcpy(&fraction, &word, sizeof(fraction));
        return Text("%.1f | ", fraction);
    }
    case Form::Number:
        break;
    }
    return Text("%lu | ", word);
}
}  // namespace

std::string RecordTable()
{
    D3DCAPS9 caps;
    UMDGetAdapterCapabilitiesD3D9(&caps);

    std::string table = "| field | value | meaning |\n|---|---|---|\n";
    for (const Field& field : kFields)
    {
        DWORD word;
        std::memcpy(&word, reinterpret_cast<const BYTE*>(&caps) + field.Offset, sizeof(word));
        table += Text("| %s | ", field.pName) + Value(field, word) + " |\n";
    }
    return table;
}
