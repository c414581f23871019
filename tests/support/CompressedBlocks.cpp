#include "CompressedBlocks.h"

#include <cstring>
#include <utility>

namespace tesslo::test
{

namespace
{

/// The half of a block that tells colours; the other one, if any, lies in front and tells alpha.
struct ColourBlock
{
    WORD Colours[2];  // five bits of red, six of green, five of blue
    UINT Indices;     // two bits a pixel
};

constexpr std::size_t kHalf = 8;  // bytes

std::size_t ColourOffset(D3DDDIFORMAT format)
{
    return format == D3DDDIFMT_DXT1 ? 0 : kHalf;
}

template <typename Value>
Value Read(const BYTE* pBytes)
{
    Value value;
    std::memcpy(&value, pBytes, sizeof(value));
    return value;
}

/// Two alphas and three bits a pixel: only the lowest of the three stays.
void KeepPureAlphas(BYTE* pBlock)
{
    for (int pixel = 0; pixel < 16; ++pixel)
        for (int bit = 1; bit < 3; ++bit)
            pBlock[2 + (pixel * 3 + bit) / 8] &= static_cast<BYTE>(~(1 << (pixel * 3 + bit) % 8));
}

UINT AlphaOf(D3DDDIFORMAT format, const BYTE* pBlock, UINT pixel)
{
    if (format == D3DDDIFMT_DXT1)
        return 0xFF;
    if (format == D3DDDIFMT_DXT2 || format == D3DDDIFMT_DXT3)
        return (pBlock[pixel / 2] >> pixel % 2 * 4 & 0xF) * 0x11;
    return pBlock[pBlock[2 + pixel * 3 / 8] >> pixel * 3 % 8 & 1];
}

UINT Widened(UINT value, UINT bits)
{
    return value << (8 - bits) | value >> (2 * bits - 8);
}

}  // namespace

void KeepPureColours(const ImageShape& image, BYTE* pBytes)
{
    for (UINT y = 0; y < image.Height; y += 4)
        for (UINT x = 0; x < image.Width; x += 4)
        {
            BYTE* pBlock = pBytes + BytesOfPixel(image, x, y).First().Offset;
            BYTE* pColours = pBlock + ColourOffset(image.Format);
            auto block = Read<ColourBlock>(pColours);
            block.Indices &= 0x55555555;
            // With the larger one in front no index means transparent.
            if (block.Colours[0] < block.Colours[1])
                std::swap(block.Colours[0], block.Colours[1]);
            std::memcpy(pColours, &block, sizeof(block));
            if (image.Format == D3DDDIFMT_DXT4 || image.Format == D3DDDIFMT_DXT5)
                KeepPureAlphas(pBlock);
        }
}

UINT PureColourOf(const ImageShape& image, const BYTE* pBytes, UINT x, UINT y)
{
    const BYTE* pBlock = pBytes + BytesOfPixel(image, x, y).First().Offset;
    const auto block = Read<ColourBlock>(pBlock + ColourOffset(image.Format));
    const UINT pixel = y % 4 * 4 + x % 4;
    const UINT colour = block.Colours[block.Indices >> pixel * 2 & 1];
    return AlphaOf(image.Format, pBlock, pixel) << 24 | Widened(colour >> 11, 5) << 16 |
           Widened(colour >> 5 & 0x3F, 6) << 8 | Widened(colour & 0x1F, 5);
}

}  // namespace tesslo::test
