// The surface format table: which formats the driver supports, and for what. Fixed data.
#pragma once

#include "ddi/ddi.h"

/// Records that UMDGetAdapterFormats writes.
UINT UMDGetAdapterFormatCount();

/// Writes every record of the table.
/// @param size bytes of the buffer; only traced, because the runtime sizes it by the count.
/// @return S_OK, always.
HRESULT UMDGetAdapterFormats(FORMATOP* pFormats, UINT size);
