#include "PixelBytes.h"

#include "util/UMDFourCC.h"

#include <algorithm>
#include <cstring>

namespace tesslo::test
{

namespace
{

constexpr D3DDDIFORMAT kYv12 = UMDFourCC("YV12");
constexpr D3DDDIFORMAT kYvu9 = UMDFourCC("YVU9");
constexpr D3DDDIFORMAT kIf09 = UMDFourCC("IF09");
constexpr D3DDDIFORMAT kNv11 = UMDFourCC("NV11");
constexpr D3DDDIFORMAT kNv12 = UMDFourCC("NV12");
constexpr D3DDDIFORMAT kNv21 = UMDFourCC("NV21");
constexpr D3DDDIFORMAT kImc4 = UMDFourCC("IMC4");

bool IsAnyOf(D3DDDIFORMAT format, std::initializer_list<D3DDDIFORMAT> formats)
{
    return std::ranges::find(formats, format) != formats.end();
}

bool IsCompressed(D3DDDIFORMAT format)
{
    return IsAnyOf(format, {D3DDDIFMT_DXT1, D3DDDIFMT_DXT2, D3DDDIFMT_DXT3, D3DDDIFMT_DXT4, D3DDDIFMT_DXT5});
}

bool IsPair(D3DDDIFORMAT format)
{
    return IsAnyOf(format, {D3DDDIFMT_YUY2, D3DDDIFMT_UYVY});
}

bool IsPlanar(D3DDDIFORMAT format)
{
    return IsAnyOf(format, {kYv12, kYvu9, kIf09, kNv11, kNv12, kNv21, kImc4});
}

/// Bytes of a pixel that shares none of them.
std::size_t OwnBytes(D3DDDIFORMAT format)
{
    if (format == UMDFourCC("DF16"))
        return 2;
    switch (format)
    {
    case D3DDDIFMT_L8:
    case D3DDDIFMT_P8:
    case D3DDDIFMT_A8:
    case D3DDDIFMT_S8_LOCKABLE:
    case D3DDDIFMT_BINARYBUFFER:
    case D3DDDIFMT_R3G3B2:
        return 1;
    case D3DDDIFMT_R5G6B5:
    case D3DDDIFMT_X1R5G5B5:
    case D3DDDIFMT_A1R5G5B5:
    case D3DDDIFMT_A4R4G4B4:
    case D3DDDIFMT_V8U8:
    case D3DDDIFMT_L6V5U5:
    case D3DDDIFMT_D16:
    case D3DDDIFMT_D16_LOCKABLE:
    case D3DDDIFMT_A8L8:
    case D3DDDIFMT_L16:
    case D3DDDIFMT_R16F:
    case D3DDDIFMT_X4R4G4B4:
    case D3DDDIFMT_A8P8:
        return 2;
    case D3DDDIFMT_R8G8B8:
        return 3;
    case D3DDDIFMT_Q16W16V16U16:
    case D3DDDIFMT_A16B16G16R16F:
    case D3DDDIFMT_A16B16G16R16:
    case D3DDDIFMT_G32R32F:
        return 8;
    case D3DDDIFMT_A32B32G32R32F:
        return 16;
    default:
        return 4;
    }
}

/// Adds the colours of a planar format: planes of their own behind the luma.
void AddColours(const ImageShape& image, std::size_t x, std::size_t y, ByteRuns& runs)
{
    const auto [width, height] = GroupOf(image.Format);
    const std::size_t pitch = image.Pitch;
    const std::size_t row = y / height, rows = image.Height / height, column = x / width;
    const std::size_t luma = pitch * image.Height;
    if (row >= rows)
        return;
    if (image.Format == kNv11)
        return runs.Add({luma + row * (pitch / 2) + column * 2, 2});
    if (image.Format == kNv12 || image.Format == kNv21)
        return runs.Add({luma + row * pitch + column * 2, 2});
    if (image.Format == kImc4)
    {
        runs.Add({luma + row * pitch + column, 1});
        return runs.Add({luma + row * pitch + pitch / 2 + column, 1});
    }
    const std::size_t part = pitch / width;
    for (std::size_t plane = 0; plane < (image.Format == kIf09 ? 3U : 2U); ++plane)
        runs.Add({luma + (plane * rows + row) * part + column, 1});
}

}  // namespace

const std::vector<D3DDDIFORMAT> kPixelFormats = {D3DDDIFMT_R8G8B8, D3DDDIFMT_X1R5G5B5, D3DDDIFMT_A1R5G5B5,
    D3DDDIFMT_A4R4G4B4, D3DDDIFMT_R5G6B5, D3DDDIFMT_V8U8, D3DDDIFMT_L6V5U5, D3DDDIFMT_X8L8V8U8, D3DDDIFMT_Q8W8V8U8,
    D3DDDIFMT_V16U16, D3DDDIFMT_W11V11U10, D3DDDIFMT_A2W10V10U10, D3DDDIFMT_Q16W16V16U16, D3DDDIFMT_X8R8G8B8,
    D3DDDIFMT_A8R8G8B8, D3DDDIFMT_L8, D3DDDIFMT_P8, D3DDDIFMT_D32_LOCKABLE, D3DDDIFMT_S8_LOCKABLE,
    D3DDDIFMT_BINARYBUFFER, D3DDDIFMT_YUY2, D3DDDIFMT_UYVY, kYv12, kYvu9, kIf09, kNv11, kNv12, kNv21, kImc4,
    UMDFourCC("AYUV"), UMDFourCC("SORT"), D3DDDIFMT_DXT1, D3DDDIFMT_DXT2, D3DDDIFMT_DXT3, D3DDDIFMT_DXT4,
    D3DDDIFMT_DXT5, UMDFourCC("DF16"), D3DDDIFMT_D16, D3DDDIFMT_D16_LOCKABLE, D3DDDIFMT_D24X8, D3DDDIFMT_D24S8,
    D3DDDIFMT_A8, D3DDDIFMT_A8L8, D3DDDIFMT_G16R16, D3DDDIFMT_L16, D3DDDIFMT_A2R10G10B10, D3DDDIFMT_A2B10G10R10,
    D3DDDIFMT_A16B16G16R16F, D3DDDIFMT_A16B16G16R16, D3DDDIFMT_R16F, D3DDDIFMT_G16R16F, D3DDDIFMT_R32F,
    D3DDDIFMT_G32R32F, D3DDDIFMT_A32B32G32R32F};

std::string FormatName(D3DDDIFORMAT format)
{
    const auto code = static_cast<UINT>(format);
    if (code < 0x20000000)
        return std::to_string(code);
    char text[5] = {};
    std::memcpy(text, &code, 4);
    return text;
}

PixelGroup GroupOf(D3DDDIFORMAT format)
{
    if (IsCompressed(format) || format == kYvu9 || format == kIf09)
        return {4, 4};
    if (IsPair(format))
        return {2, 1};
    if (format == kNv11)
        return {4, 1};
    return IsPlanar(format) ? PixelGroup{2, 2} : PixelGroup{1, 1};
}

ByteRuns BytesOfPixel(const ImageShape& image, UINT x, UINT y)
{
    const std::size_t column = x, row = y, pitch = image.Pitch;
    if (IsCompressed(image.Format))
    {
        const std::size_t block = image.Format == D3DDDIFMT_DXT1 ? 8 : 16;
        return {{row / 4 * pitch + column / 4 * block, block}};
    }
    if (IsPair(image.Format))
        return {{row * pitch + column / 2 * 4, 4}};
    if (IsPlanar(image.Format))
    {
        ByteRuns runs = {{row * pitch + column, 1}};
        AddColours(image, x, y, runs);
        return runs;
    }
    const std::size_t own = OwnBytes(image.Format);
    return {{row * pitch + column * own, own}};
}

UINT TightPitch(D3DDDIFORMAT format, UINT width)
{
    if (IsCompressed(format))
        return (width + 3) / 4 * (format == D3DDDIFMT_DXT1 ? 8 : 16);
    if (IsPair(format))
        return (width + 1) / 2 * 4;
    if (IsPlanar(format))
        return (width + 3) / 4 * 4;
    return width * static_cast<UINT>(OwnBytes(format));
}

std::size_t ImageBytes(const ImageShape& image)
{
    // No group is larger than four by four, and the last one of a plane may be cut short.
    constexpr UINT kLast = 8;
    std::size_t end = 0;
    for (UINT y = image.Height - std::min(image.Height, kLast); y < image.Height; ++y)
        for (UINT x = image.Width - std::min(image.Width, kLast); x < image.Width; ++x)
            for (const ByteRun& run : BytesOfPixel(image, x, y))
                end = std::max(end, run.Offset + run.Count);
    return end;
}

std::vector<BYTE> WithPixels(
    std::vector<BYTE> bytes, const ImageShape& dst, const BYTE* pSrc, const ImageShape& src, const RECT* pRect)
{
    const auto [groupWidth, groupHeight] = GroupOf(dst.Format);
    const RECT all = {0, 0, static_cast<LONG>(dst.Width), static_cast<LONG>(dst.Height)};
    RECT rect = pRect ? *pRect : all;
    rect = {std::max(rect.left, LONG{0}), std::max(rect.top, LONG{0}), std::min(rect.right, all.right),
        std::min(rect.bottom, all.bottom)};
    const auto touches = [](LONG first, LONG last, UINT pixel, UINT group) {
        const LONG begin = static_cast<LONG>(pixel / group * group);
        return first < last && begin < last && begin + static_cast<LONG>(group) > first;
    };
    for (UINT y = 0; y < dst.Height; ++y)
        for (UINT x = 0; x < dst.Width; ++x)
        {
            if (!touches(rect.left, rect.right, x, groupWidth) || !touches(rect.top, rect.bottom, y, groupHeight))
                continue;
            const ByteRuns to = BytesOfPixel(dst, x, y), from = BytesOfPixel(src, x, y);
            for (const ByteRun *pTo = to.begin(), *pFrom = from.begin(); pTo != to.end(); ++pTo, ++pFrom)
                std::memcpy(&bytes.at(pTo->Offset), pSrc + pFrom->Offset, pTo->Count);
        }
    return bytes;
}

}  // namespace tesslo::test
