// Which bytes of an image belong to a pixel, told pixel by pixel: what the driver's copies by rows of blocks are held
// against.
#pragma once

#include "ddi/ddi.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

namespace tesslo::test
{

/// Every format that the driver offers and that holds pixels, and R8G8B8.
extern const std::vector<D3DDDIFORMAT> kPixelFormats;

/// "DXT1", or the number of a format that is no four-character code.
std::string FormatName(D3DDDIFORMAT format);

/// Pixels that cannot be written one without the other.
struct PixelGroup
{
    UINT Width;
    UINT Height;
};
PixelGroup GroupOf(D3DDDIFORMAT format);

/// A format in memory: sizes in pixels, bytes from row to row of its first plane.
struct ImageShape
{
    D3DDDIFORMAT Format;
    UINT Width;
    UINT Height;
    UINT Pitch;
};

struct ByteRun
{
    std::size_t Offset;
    std::size_t Count;
};

/// A run in each plane, luma's first.
class ByteRuns
{
public:
    ByteRuns(std::initializer_list<ByteRun> runs)
    {
        for (const ByteRun& run : runs)
            Add(run);
    }
    void Add(const ByteRun& run) { m_Runs.at(m_Count++) = run; }

    const ByteRun* begin() const { return m_Runs.data(); }
    const ByteRun* end() const { return m_Runs.data() + m_Count; }
    const ByteRun& First() const { return m_Runs[0]; }

private:
    std::array<ByteRun, 4> m_Runs{};
    std::size_t m_Count = 0;
};

/// Bytes of the pixel. A group of rows that the image has only half of has no colour of its own.
ByteRuns BytesOfPixel(const ImageShape& image, UINT x, UINT y);

/// The smallest pitch that every plane's rows fit into.
UINT TightPitch(D3DDDIFORMAT format, UINT width);

/// Bytes from the first to the last that belong to a pixel.
std::size_t ImageBytes(const ImageShape& image);

/// What a destination holds when the pixels of a rectangle, and those of their groups, came from a source of equal
/// size.
/// @param bytes of the destination before. @param pSrc the source's first byte. @param pRect null for all.
std::vector<BYTE> WithPixels(
    std::vector<BYTE> bytes, const ImageShape& dst, const BYTE* pSrc, const ImageShape& src, const RECT* pRect);

}  // namespace tesslo::test
