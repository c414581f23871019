// Published names of the bits that capability words are made of.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

struct FlagName
{
    DWORD Bit;
    const char* pName; ///< without the family's prefix
};

/// A family of flags: one prefix, many bits.
struct FlagFamily
{
    const char* pPrefix;
    const FlagName* pNames;
    std::size_t Count;
};

extern const FlagFamily FLAGS_CAPS;
extern const FlagFamily FLAGS_CAPS2;
extern const FlagFamily FLAGS_CAPS3;
extern const FlagFamily FLAGS_DEVCAPS;
extern const FlagFamily FLAGS_DEVCAPS2;
extern const FlagFamily FLAGS_PRIMITIVEMISC;
extern const FlagFamily FLAGS_RASTER;
extern const FlagFamily FLAGS_COMPARE;
extern const FlagFamily FLAGS_BLEND;
extern const FlagFamily FLAGS_SHADE;
extern const FlagFamily FLAGS_TEXTURE;
extern const FlagFamily FLAGS_FILTER;
extern const FlagFamily FLAGS_ADDRESS;
extern const FlagFamily FLAGS_LINE;
extern const FlagFamily FLAGS_STENCIL;
extern const FlagFamily FLAGS_FVF;
extern const FlagFamily FLAGS_TEXTUREOP;
extern const FlagFamily FLAGS_DECLTYPE;
extern const FlagFamily FLAGS_FORMATOP;
extern const FlagFamily FLAGS_PROCAMP;
extern const FlagFamily FLAGS_VIDEOPROCESS;

/// "`PREFIX_`: ONE, TWO, unnamed 0x00000010"; empty for 0.
std::string NamesOf(const FlagFamily& family, DWORD word);
