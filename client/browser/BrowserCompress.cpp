#include "BrowserCompress.h"

#include "BrowserTileCodec.h"

#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

namespace
{

constexpr int kChannels = 4;
constexpr int kQuality = 85;  ///< of 100

void Append(void* pContext, void* pData, int size)
{
    const uint8_t* const pBytes = static_cast<const uint8_t*>(pData);
    static_cast<BrowserBytes*>(pContext)->insert(
        static_cast<BrowserBytes*>(pContext)->end(), pBytes, pBytes + static_cast<size_t>(size));
}

/// Packed rows of a part that is made of whole tiles.
BrowserWords Pixels(const BrowserSnapshot& snapshot, const BrowserRect& part)
{
    BrowserWords pixels(static_cast<size_t>(part.m_Width) * part.m_Height);
    for (uint32_t i = 0; i < snapshot.m_Tiles.size(); ++i)
    {
        BrowserRect rect = snapshot.m_Grid.Rect(i);
        rect.m_X -= part.m_X;  // what lies before the part wraps around, and so lies behind it
        rect.m_Y -= part.m_Y;
        if (rect.m_X < part.m_Width && rect.m_Y < part.m_Height)
            BrowserTileDecode(*snapshot.m_Tiles[i].m_pWords, pixels.data(), part.m_Width, rect);
    }
    return pixels;
}

}  // namespace

BrowserBytes BrowserPng(const BrowserSnapshot& snapshot)
{
    const int width = static_cast<int>(snapshot.m_Grid.m_Width);
    const int height = static_cast<int>(snapshot.m_Grid.m_Height);
    const BrowserWords pixels = Pixels(snapshot, {0, 0, snapshot.m_Grid.m_Width, snapshot.m_Grid.m_Height});
    BrowserBytes bytes;
    // The fastest that the encoder has.
    stbi_write_png_compression_level = 5;
    stbi_write_force_png_filter = 0;
    stbi_write_png_to_func(Append, &bytes, width, height, kChannels, pixels.data(), width * kChannels);
    return bytes;
}

BrowserBytes BrowserJpeg(const BrowserSnapshot& snapshot, const BrowserRect& rect)
{
    const BrowserWords pixels = Pixels(snapshot, rect);
    BrowserBytes bytes;
    stbi_write_jpg_to_func(Append, &bytes, static_cast<int>(rect.m_Width), static_cast<int>(rect.m_Height), kChannels,
        pixels.data(), kQuality);
    return bytes;
}
