#include "FlagNames.h"
#include "Tables.h"

#include "adapter/UMDAdapterFormats.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace
{
#define FORMAT_NAME(name) {D3DDDIFMT_##name, #name}

constexpr struct
{
    D3DDDIFORMAT Format;
    const char* pName;
} kFormatNames[] = {
    FORMAT_NAME(A8R8G8B8),
    FORMAT_NAME(X8R8G8B8),
    FORMAT_NAME(R5G6B5),
    FORMAT_NAME(X1R5G5B5),
    FORMAT_NAME(A1R5G5B5),
    FORMAT_NAME(A4R4G4B4),
    FORMAT_NAME(A8),
    FORMAT_NAME(A2B10G10R10),
    FORMAT_NAME(G16R16),
    FORMAT_NAME(A2R10G10B10),
    FORMAT_NAME(A16B16G16R16),
    FORMAT_NAME(P8),
    FORMAT_NAME(L8),
    FORMAT_NAME(A8L8),
    FORMAT_NAME(V8U8),
    FORMAT_NAME(L6V5U5),
    FORMAT_NAME(X8L8V8U8),
    FORMAT_NAME(Q8W8V8U8),
    FORMAT_NAME(V16U16),
    FORMAT_NAME(W11V11U10),
    FORMAT_NAME(A2W10V10U10),
    FORMAT_NAME(D16_LOCKABLE),
    FORMAT_NAME(D24S8),
    FORMAT_NAME(D24X8),
    FORMAT_NAME(D16),
    FORMAT_NAME(L16),
    FORMAT_NAME(D32_LOCKABLE),
    FORMAT_NAME(S8_LOCKABLE),
    FORMAT_NAME(Q16W16V16U16),
    FORMAT_NAME(R16F),
    FORMAT_NAME(G16R16F),
    FORMAT_NAME(A16B16G16R16F),
    FORMAT_NAME(R32F),
    FORMAT_NAME(G32R32F),
    FORMAT_NAME(A32B32G32R32F),
    FORMAT_NAME(BINARYBUFFER),
};

std::vector<FORMATOP> Formats()
{
    std::vector<FORMATOP> formats(UMDGetAdapterFormatCount());
    UMDGetAdapterFormats(formats.data(), static_cast<UINT>(formats.size() * sizeof(FORMATOP)));
    return formats;
}
}  // namespace

std::string Text(const char* pFormat, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, pFormat);
    std::vsnprintf(text, sizeof(text), pFormat, arguments);
    va_end(arguments);
    return text;
}

std::string FormatName(D3DDDIFORMAT format)
{
    for (const auto& row : kFormatNames)
    {
        if (row.Format == format)
            return Text("%s (%u)", row.pName, format);
    }
    std::string code;
    for (int shift = 0; shift < 32; shift += 8)
        code += static_cast<char>(format >> shift);
    const bool isCode = std::all_of(code.begin(), code.end(), [](unsigned char c) { return std::isalnum(c); });
    return isCode ? "`" + code + "`" : Text("%u", format);
}

std::string FormatTable()
{
    std::string table = "| # | format | operations | flip types | blit types | bits |\n|---|---|---|---|---|---|\n";
    unsigned row = 0;
    for (const FORMATOP& format : Formats())
    {
        table += Text("| %u | %s | 0x%08X | 0x%X | 0x%X | %u |\n", ++row, FormatName(format.Format).c_str(),
            format.Operations, format.FlipMsTypes, format.BltMsTypes, format.PrivateFormatBitCount);
    }
    return table;
}

std::string OperationTable()
{
    std::vector<UINT> masks;
    for (const FORMATOP& format : Formats())
    {
        if (std::find(masks.begin(), masks.end(), format.Operations) == masks.end())
            masks.push_back(format.Operations);
    }
    std::sort(masks.begin(), masks.end());

    std::string table = "| operations | flags |\n|---|---|\n";
    for (UINT mask : masks)
        table += Text("| 0x%08X | ", mask) + NamesOf(kFlagsFormatOp, mask) + " |\n";
    return table;
}
