#include "tools/painters/DifferentialPicture.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wunused-function"
#pragma clang diagnostic ignored "-Wmissing-field-initializers"
#endif
#include <stb/stb_image_write.h>
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace
{

struct Rgb
{
    BYTE m_Channel[3];
};

Rgb ToRgb(const DifferentialPicture& picture, UINT x, UINT y)
{
    const UINT pixel = picture.At(x, y);
    if (picture.m_Format == D3DFMT_R5G6B5)
        return {
            {static_cast<BYTE>(pixel >> 11 << 3), static_cast<BYTE>(pixel >> 5 << 2), static_cast<BYTE>(pixel << 3)}};
    return {{static_cast<BYTE>(pixel >> 16), static_cast<BYTE>(pixel >> 8), static_cast<BYTE>(pixel)}};
}

std::filesystem::path OutFolder()
{
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto folder = std::filesystem::path(program).parent_path().parent_path() / "out";
    std::filesystem::create_directories(folder);
    return folder;
}

void WriteBytes(void* pFile, void* pData, int size)
{
    static_cast<std::ofstream*>(pFile)->write(static_cast<const char*>(pData), size);
}

template <typename PixelAt>
void WritePng(const std::string& name, UINT width, UINT height, PixelAt pixelAt)
{
    std::vector<Rgb> pixels;
    for (UINT y = 0; y < height; ++y)
        for (UINT x = 0; x < width; ++x)
            pixels.push_back(pixelAt(x, y));
    std::ofstream file(OutFolder() / (name + ".png"), std::ios::binary);
    stbi_write_png_to_func(WriteBytes, &file, static_cast<int>(width), static_cast<int>(height), 3, pixels.data(), 0);
}

}  // namespace

DifferentialPicture::DifferentialPicture(UINT width, UINT height, D3DFORMAT format)
    : m_Width(width), m_Height(height), m_Format(format)
{
    m_Bytes.resize(size_t{Pitch()} * height);
}

UINT DifferentialPicture::At(UINT x, UINT y) const
{
    UINT pixel = 0;
    std::memcpy(&pixel, Row(y) + size_t{x} * BytesPerPixel(), BytesPerPixel());
    return pixel;
}

void DifferentialPicture::Set(UINT x, UINT y, UINT pixel)
{
    std::memcpy(Row(y) + size_t{x} * BytesPerPixel(), &pixel, BytesPerPixel());
}

bool DifferentialPicture::IsOneColor() const
{
    for (UINT y = 0; y < m_Height; ++y)
        for (UINT x = 0; x < m_Width; ++x)
            if (At(x, y) != At(0, 0))
                return false;
    return true;
}

DifferentialPicture DifferentialPattern(UINT width, UINT height, D3DFORMAT format)
{
    DifferentialPicture picture(width, height, format);
    for (UINT y = 0; y < height; ++y)
        for (UINT x = 0; x < width; ++x)
            picture.Set(x, y,
                format == D3DFMT_R5G6B5 ? (x * 2113 + y * 4649 + 77) & 0xFFFF
                                        : 0xFF000000 | (x * 0x0B0703 + y * 0x05110D + 0x204060));
    return picture;
}

std::string DifferentialCompare(
    const std::string& name, const DifferentialPicture& fromDriver, const DifferentialPicture& plain)
{
    if (fromDriver == plain)
        return {};
    WritePng(name + "-driver", fromDriver.m_Width, fromDriver.m_Height,
        [&](UINT x, UINT y) { return ToRgb(fromDriver, x, y); });
    WritePng(name + "-plain", plain.m_Width, plain.m_Height, [&](UINT x, UINT y) { return ToRgb(plain, x, y); });
    if (fromDriver.m_Width != plain.m_Width || fromDriver.m_Height != plain.m_Height ||
        fromDriver.m_Format != plain.m_Format)
        return "the pictures differ in size or format";

    UINT count = 0;
    std::string first;
    WritePng(name + "-difference", plain.m_Width, plain.m_Height, [&](UINT x, UINT y) {
        const UINT driverPixel = fromDriver.At(x, y), plainPixel = plain.At(x, y);
        if (driverPixel == plainPixel)
            return Rgb{};
        char text[100];
        std::snprintf(text, sizeof(text), ", first at %u,%u: driver %08X, plain %08X", x, y, driverPixel, plainPixel);
        if (count++ == 0)
            first = text;
        const Rgb a = ToRgb(fromDriver, x, y), b = ToRgb(plain, x, y);
        Rgb difference;
        for (int i = 0; i < 3; ++i)
            difference.m_Channel[i] = static_cast<BYTE>(std::abs(a.m_Channel[i] - b.m_Channel[i]));
        return difference;
    });
    return std::to_string(count) + " pixels differ" + first;
}
