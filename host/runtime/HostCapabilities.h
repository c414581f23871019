// What the runtime asks an adapter before it creates a device, and what the driver answers.
#pragma once

#include "ddi/ddi.h"

#include <vector>

class HostAdapter;

struct HostCapabilities
{
    std::vector<FORMATOP> m_Formats;
    std::vector<D3DDDIQUERYTYPE> m_QueryTypes;
    D3DCAPS9 m_Record{};
    std::vector<GUID> m_Processors;  ///< video processors; what follows is of the first one
    std::vector<D3DDDIFORMAT> m_TargetFormats;
    std::vector<D3DDDIFORMAT> m_SubstreamFormats;
    DXVADDI_VIDEOPROCESSORCAPS m_ProcessorCaps{};
    DXVADDI_VALUERANGE m_ProcAmpRanges[4]{};  ///< brightness, contrast, hue, saturation
};

/// Asks in the runtime's order. Throws HostError when the driver refuses an answer.
HostCapabilities HostAskCapabilities(const HostAdapter& adapter);
