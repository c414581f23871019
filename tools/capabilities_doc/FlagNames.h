// Published names of the bits that capability words are made of.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

struct FlagName
{
    DWORD Bit;
    const char* pName;  ///< without the family's prefix
};

/// A family of flags: one prefix, many bits.
struct FlagFamily
{
    const char* pPrefix;
    const FlagName* pNames;
    std::size_t Count;
};

extern const FlagFamily kFlagsCaps;
extern const FlagFamily kFlagsCaps2;
extern const FlagFamily kFlagsCaps3;
extern const FlagFamily kFlagsDevCaps;
extern const FlagFamily kFlagsDevCaps2;
extern const FlagFamily kFlagsPrimitiveMisc;
extern const FlagFamily kFlagsRaster;
extern const FlagFamily kFlagsCompare;
extern const FlagFamily kFlagsBlend;
extern const FlagFamily kFlagsShade;
extern const FlagFamily kFlagsTexture;
extern const FlagFamily kFlagsFilter;
extern const FlagFamily kFlagsAddress;
extern const FlagFamily kFlagsLine;
extern const FlagFamily kFlagsStencil;
extern const FlagFamily kFlagsFVF;
extern const FlagFamily kFlagsTextureOp;
extern const FlagFamily kFlagsDeclType;
extern const FlagFamily kFlagsFormatOp;
extern const FlagFamily kFlagsProcAmp;
extern const FlagFamily kFlagsVideoProcess;

/// "`PREFIX_`: ONE, TWO, unnamed 0x00000010"; empty for 0.
std::string NamesOf(const FlagFamily& family, DWORD word);
