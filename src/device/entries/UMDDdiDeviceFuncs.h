// The device's function table.
#pragma once

#include "ddi/ddi.h"

/// Writes all 121 slots of the runtime's table. Three that are optional stay null: asynchronous locks and renaming.
void UMDDdiFillDeviceFuncs(D3DDDI_DEVICEFUNCS* pDeviceFuncs);
