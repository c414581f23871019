// The platform's video service without the driver: the same blit on a device of its own, to compare with.
#pragma once

#include "host/runtime/HostImage.h"

#include <d3d9.h>
#include <dxva2api.h>

namespace tesslo::test
{

/// A filled rectangle of the source.
struct PlainVideoFill
{
    RECT Rect;
    D3DCOLOR Color;
};

struct PlainVideoBlt
{
    SIZE SourceSize;  ///< pixels
    SIZE TargetSize;  ///< pixels
    std::vector<PlainVideoFill> SourceFills;
    D3DCOLOR TargetColor;  ///< of the whole target, before the blit
    DXVA2_VideoDesc Desc;
    DXVA2_VideoProcessBltParams Params;
    DXVA2_VideoSample Sample;  ///< without its surface
};

/// The target after the blit. Throws HostError when any call fails.
HostImage RunPlainVideoBlt(const PlainVideoBlt& blt);

}  // namespace tesslo::test
