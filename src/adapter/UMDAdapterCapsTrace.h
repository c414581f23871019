// The second trace line of a capability query: decode and video-processor queries are told by name.
#pragma once

#include "ddi/ddi.h"

/// Traces the type of a decode or video-processor query; nothing for every other type.
void UMDAdapterTraceVideoCapsType(const D3DDDIARG_GETCAPS* pGetCaps);
