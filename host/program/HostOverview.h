// One picture of all sources side by side, each above a few lines that explain it.
#pragma once

#include "host/runtime/HostImage.h"

#include <string>
#include <vector>

struct HostOverviewTile
{
    HostImage m_Frame;  ///< as it was delivered; empty if nothing was
    std::vector<std::string> m_Caption;
};

/// Makes frames as small as they must be to stand in one row. Without tiles there is no picture.
HostImage HostMakeOverview(const std::vector<HostOverviewTile>& tiles);

/// Makes a picture smaller: each pixel becomes the mean of those that it stands for.
/// @param width, height not larger than the picture's.
HostImage HostShrink(const HostImage& image, UINT width, UINT height);
