// Sampler states as the driver interface has them: as texture stage states.
#pragma once

#include "ddi/ddi.h"

#include <d3d9.h>

#include <algorithm>
#include <iterator>

/// By the sampler state's number; there is none of number 0.
inline constexpr DWORD kRunSamplers[] = {0, D3DDDITSS_ADDRESSU, D3DDDITSS_ADDRESSV, D3DDDITSS_ADDRESSW,
    D3DDDITSS_BORDERCOLOR, D3DDDITSS_MAGFILTER, D3DDDITSS_MINFILTER, D3DDDITSS_MIPFILTER, D3DDDITSS_MIPMAPLODBIAS,
    D3DDDITSS_MAXMIPLEVEL, D3DDDITSS_MAXANISOTROPY, D3DDDITSS_SRGBTEXTURE, D3DDDITSS_ELEMENTINDEX,
    D3DDDITSS_DMAPOFFSET};

/// The sampler state that a stage state is; 0 for what is a stage state.
inline D3DSAMPLERSTATETYPE RunSamplerOf(DWORD stageState)
{
    const auto found = std::ranges::find(kRunSamplers, stageState);
    return static_cast<D3DSAMPLERSTATETYPE>(found != std::end(kRunSamplers) ? found - kRunSamplers : 0);
}
