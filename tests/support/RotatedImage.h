// What an output that hangs turned makes of a picture.
#pragma once

#include "host/runtime/HostImage.h"

#include "ddi/ddi.h"

namespace tesslo::test
{

/// The picture that an output turned by `rotation` shows: what the driver makes of the presented one.
inline HostImage RotatedImage(const HostImage& image, D3DDDI_ROTATION rotation)
{
    const UINT width = image.m_Width, height = image.m_Height;
    const bool bTurned = rotation == D3DDDI_ROTATION_90 || rotation == D3DDDI_ROTATION_270;
    HostImage result(bTurned ? height : width, bTurned ? width : height);
    for (UINT y = 0; y < height; ++y)
        for (UINT x = 0; x < width; ++x)
        {
            UINT toX = x, toY = y;
            if (rotation == D3DDDI_ROTATION_90)
                toX = y, toY = width - 1 - x;
            else if (rotation == D3DDDI_ROTATION_180)
                toX = width - 1 - x, toY = height - 1 - y;
            else if (rotation == D3DDDI_ROTATION_270)
                toX = height - 1 - y, toY = x;
            result.m_Pixels[size_t{toY} * result.m_Width + toX] = image.At(x, y);
        }
    return result;
}

}  // namespace tesslo::test
