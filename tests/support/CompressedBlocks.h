// Compressed images whose every pixel has an exact colour: no block mixes its two, so that no decoder rounds.
#pragma once

#include "PixelBytes.h"

namespace tesslo::test
{

/// Makes any bytes of a compressed image, DXT1 to DXT5, such ones.
void KeepPureColours(const ImageShape& image, BYTE* pBytes);

/// The pixel of such an image: alpha, red, green, blue from the high byte down.
UINT PureColourOf(const ImageShape& image, const BYTE* pBytes, UINT x, UINT y);

}  // namespace tesslo::test
