// The Direct3D 9 user-mode display driver interface, whole. Include this one.
// With TESSLO_USE_PLATFORM_KIT the platform kit's own header stands in for the records of this folder, whose proofs it
// must pass.
#pragma once

#include <d3d9.h>
#include <windows.h>

#if defined(TESSLO_USE_PLATFORM_KIT)
#include <d3dumddi.h>

#include "ddi/ddi_proofs.h"
#else
#include "ddi/ddi_constants.h"
#include "ddi/ddi_enums.h"
#include "ddi/ddi_functions.h"
#include "ddi/ddi_records_arguments.h"
#include "ddi/ddi_records_callbacks.h"
#include "ddi/ddi_records_common.h"
#include "ddi/ddi_records_tables.h"
#include "ddi/ddi_records_video.h"
#endif
