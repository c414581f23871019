// The device's function table.
#pragma once

#include "ddi/ddi.h"

/// Writes all 121 slots of the runtime's table. The optional asynchronous lock slots stay null.
void UMDDdiFillDeviceFuncs(D3DDDI_DEVICEFUNCS* pDeviceFuncs);
