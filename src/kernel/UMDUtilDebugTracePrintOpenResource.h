// Trace formatter of an open-resource request, with what the creating process stored in the allocations' records.
#pragma once

#include "ddi/ddi.h"

/// Changes nothing, and prints nothing while its level is off.
void UMDUtilDebugTracePrintOpenResource(const D3DDDIARG_OPENRESOURCE* pOpenResource);
