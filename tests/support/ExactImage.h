// An image that ends with its last pixel's last byte, between pages without access, filled with noise.
#pragma once

#include "ImageMemory.h"
#include "PixelBytes.h"

#include <cstring>

namespace tesslo::test
{

class ExactImage
{
public:
    /// @param padding bytes behind each row but the last.
    /// @param edge    the page that follows or precedes at once.
    ExactImage(D3DDDIFORMAT format, UINT width, UINT height, UINT padding, std::uint32_t seed,
        GuardedBytes::Edge edge = GuardedBytes::Edge::Back)
        : Shape{format, width, height, TightPitch(format, width) + padding}, Size(ImageBytes(Shape)),
          m_Memory(Size, edge)
    {
        FillWithNoise(Bits(), Size, seed);
    }

    BYTE* Bits() const { return m_Memory.Get(); }
    std::vector<BYTE> Bytes() const { return {Bits(), Bits() + Size}; }
    /// What the runtime's list says of the image.
    D3DDDI_SURFACEINFO Info() const { return {Shape.Width, Shape.Height, 0, Bits(), Shape.Pitch, 0}; }

    const ImageShape Shape;
    const std::size_t Size;  ///< bytes

private:
    GuardedBytes m_Memory;
};

}  // namespace tesslo::test
