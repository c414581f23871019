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
#define FIELD(name, ...) {#name, offsetof(D3DCAPS9, name) __VA_OPT__(, ) __VA_ARGS__}
    FIELD(DeviceType),
    FIELD(AdapterOrdinal),
    FIELD(Caps, Form::Flags, &kFlagsCaps),
    FIELD(Caps2, Form::Flags, &kFlagsCaps2),
    FIELD(Caps3, Form::Flags, &kFlagsCaps3),
    FIELD(PresentationIntervals),
    FIELD(CursorCaps),
    FIELD(DevCaps, Form::Flags, &kFlagsDevCaps),
    FIELD(PrimitiveMiscCaps, Form::Flags, &kFlagsPrimitiveMisc),
    FIELD(RasterCaps, Form::Flags, &kFlagsRaster),
    FIELD(ZCmpCaps, Form::Flags, &kFlagsCompare),
    FIELD(SrcBlendCaps, Form::Flags, &kFlagsBlend),
    FIELD(DestBlendCaps, Form::Flags, &kFlagsBlend),
    FIELD(AlphaCmpCaps, Form::Flags, &kFlagsCompare),
    FIELD(ShadeCaps, Form::Flags, &kFlagsShade),
    FIELD(TextureCaps, Form::Flags, &kFlagsTexture),
    FIELD(TextureFilterCaps, Form::Flags, &kFlagsFilter),
    FIELD(CubeTextureFilterCaps, Form::Flags, &kFlagsFilter),
    FIELD(VolumeTextureFilterCaps, Form::Flags, &kFlagsFilter),
    FIELD(TextureAddressCaps, Form::Flags, &kFlagsAddress),
    FIELD(VolumeTextureAddressCaps, Form::Flags, &kFlagsAddress),
    FIELD(LineCaps, Form::Flags, &kFlagsLine),
    FIELD(MaxTextureWidth),
    FIELD(MaxTextureHeight),
    FIELD(MaxVolumeExtent),
    FIELD(MaxTextureRepeat),
    FIELD(MaxTextureAspectRatio),
    FIELD(MaxAnisotropy),
    FIELD(MaxVertexW, Form::Fraction),
    FIELD(GuardBandLeft, Form::Fraction),
    FIELD(GuardBandTop, Form::Fraction),
    FIELD(GuardBandRight, Form::Fraction),
    FIELD(GuardBandBottom, Form::Fraction),
    FIELD(ExtentsAdjust, Form::Fraction),
    FIELD(StencilCaps, Form::Flags, &kFlagsStencil),
    FIELD(FVFCaps, Form::VertexFormat, &kFlagsFVF),
    FIELD(TextureOpCaps, Form::Flags, &kFlagsTextureOp),
    FIELD(MaxTextureBlendStages),
    FIELD(MaxSimultaneousTextures),
    FIELD(VertexProcessingCaps),
    FIELD(MaxActiveLights),
    FIELD(MaxUserClipPlanes),
    FIELD(MaxVertexBlendMatrices),
    FIELD(MaxVertexBlendMatrixIndex),
    FIELD(MaxPointSize, Form::Fraction),
    FIELD(MaxPrimitiveCount),
    FIELD(MaxVertexIndex),
    FIELD(MaxStreams),
    FIELD(MaxStreamStride),
    FIELD(VertexShaderVersion, Form::Version),
    FIELD(MaxVertexShaderConst),
    FIELD(PixelShaderVersion, Form::Version),
    FIELD(PixelShader1xMaxValue, Form::Fraction),
    FIELD(DevCaps2, Form::Flags, &kFlagsDevCaps2),
    FIELD(MaxNpatchTessellationLevel, Form::Fraction),
    FIELD(Reserved5),
    FIELD(MasterAdapterOrdinal),
    FIELD(AdapterOrdinalInGroup),
    FIELD(NumberOfAdaptersInGroup),
    FIELD(DeclTypes, Form::Flags, &kFlagsDeclType),
    FIELD(NumSimultaneousRTs),
    FIELD(StretchRectFilterCaps, Form::Flags, &kFlagsFilter),
    FIELD(VS20Caps.Caps),
    FIELD(VS20Caps.DynamicFlowControlDepth),
    FIELD(VS20Caps.NumTemps),
    FIELD(VS20Caps.StaticFlowControlDepth),
    FIELD(PS20Caps.Caps),
    FIELD(PS20Caps.DynamicFlowControlDepth),
    FIELD(PS20Caps.NumTemps),
    FIELD(PS20Caps.StaticFlowControlDepth),
    FIELD(PS20Caps.NumInstructionSlots),
    FIELD(VertexTextureFilterCaps, Form::Flags, &kFlagsFilter),
    FIELD(MaxVShaderInstructionsExecuted),
    FIELD(MaxPShaderInstructionsExecuted),
    FIELD(MaxVertexShader30InstructionSlots),
    FIELD(MaxPixelShader30InstructionSlots),
#undef FIELD
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
