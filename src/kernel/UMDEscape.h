// Escapes to the kernel-mode driver: the private data that pfnEscapeCb carries. Wire records, little-endian.
#pragma once

#include "ddi/ddi_layout.h"

#include <windows.h>

/// Asks which video-present source belongs to an index. Zeroed before use.
struct UMDESCAPE_VIDPNSOURCE
{
    UINT Command;        ///< 0
    UINT Index;          ///< in: 0 to 5
    UINT Reserved1;      ///< 0
    UINT Reserved2;      ///< 0
    UINT VidPnSourceId;  ///< out: written by the kernel-mode driver
    UINT Reserved3[5];   ///< 0
};
UMD_LAYOUT(UMDESCAPE_VIDPNSOURCE, 40, 4);
UMD_OFFSET(UMDESCAPE_VIDPNSOURCE, Command, 0);
UMD_OFFSET(UMDESCAPE_VIDPNSOURCE, Index, 4);
UMD_OFFSET(UMDESCAPE_VIDPNSOURCE, Reserved1, 8);
UMD_OFFSET(UMDESCAPE_VIDPNSOURCE, Reserved2, 12);
UMD_OFFSET(UMDESCAPE_VIDPNSOURCE, VidPnSourceId, 16);
UMD_OFFSET(UMDESCAPE_VIDPNSOURCE, Reserved3, 20);
