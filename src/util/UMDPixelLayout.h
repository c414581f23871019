// How the pixels of a format lie in memory. The one place that knows it: copies ask here, not UMDGetFormatBytes.
#pragma once

#include "ddi/ddi.h"

/// A part of an image: rows of blocks, each of which stands for so many pixels. Most formats have a block a pixel.
struct UMDPixelPlane
{
    UINT BlockWidth;    ///< pixels
    UINT BlockHeight;   ///< pixels
    UINT BlockBytes;    ///< in one row of the plane
    UINT PitchDivisor;  ///< the plane's rows lie this fraction of the image's pitch apart
};

/// The planes of a format, in the order in which they lie in memory, each right behind the last row of the one before.
struct UMDPixelLayout
{
    static constexpr UINT kMaxPlanes = 4;

    D3DDDIFORMAT Format;
    UINT GroupWidth;   ///< pixels that belong together, in every plane: rectangles are widened to whole groups
    UINT GroupHeight;  ///< pixels
    UINT PlaneCount;   ///< 0: there are no pixels that a copy could know
    UMDPixelPlane Planes[kMaxPlanes];

    /// Bytes of a plane's row of so many pixels; 0 of a plane that is none.
    UINT RowBytes(UINT plane, UINT width) const;
    /// Rows of a plane of so many rows of pixels; 0 of a plane that is none. An image ends with a whole block of its
    /// first plane, but a group that it has only a part of is in no other plane: nobody promises memory for it.
    UINT Rows(UINT plane, UINT height) const;
};

/// The layout of a format; one without planes for a format that the driver knows nothing of.
const UMDPixelLayout& UMDPixelLayoutOf(D3DDDIFORMAT format);
