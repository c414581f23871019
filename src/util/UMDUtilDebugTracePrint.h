// Trace formatters: print the runtime's argument records line by line under the entry that received them. They change
// nothing, and print nothing while their level is off.
#pragma once

#include "ddi/ddi.h"
#include "util/UMDResourceType.h"

/// One line that names the state. @param level the level to print at.
void UMDUtilDebugTracePrintTextureStageState(UINT level, const D3DDDIARG_TEXTURESTAGESTATE* pTextureStageState);

/// The type's name; nothing for a type without a name. UMDRESOURCETYPE_NONE stands for a null object.
void UMDUtilDebugTracePrintResourceType(UMDRESOURCETYPE type);

void UMDUtilDebugTracePrintCreateResource(const D3DDDIARG_CREATERESOURCE* pCreateResource);
/// One line of a surface list.
void UMDUtilDebugTracePrintSurface(UINT index, const D3DDDI_SURFACEINFO& surface);
/// @param type the kind of the locked resource.
void UMDUtilDebugTracePrintLock(const D3DDDIARG_LOCK* pLock, UMDRESOURCETYPE type);

void UMDUtilDebugTracePrintVideoDesc(const DXVADDI_VIDEODESC* pVideoDesc);
void UMDUtilDebugTracePrintGUID(const GUID* pGUID);
void UMDUtilDebugTracePrintVideoProcessorInput(const DXVADDI_VIDEOPROCESSORINPUT* pInput);
void UMDUtilDebugTracePrintValueRange(const DXVADDI_VALUERANGE* pValueRange);
/// The nine-value group: the video processor's capabilities.
void UMDUtilDebugTracePrintVideoProcessorCaps(const DXVADDI_VIDEOPROCESSORCAPS* pCaps);

/// Every field of a video-process blit but its samples.
void UMDUtilDebugTracePrintVideoProcessBlt(const D3DDDIARG_VIDEOPROCESSBLT* pBlt);
/// Every field of one input sample.
void UMDUtilDebugTracePrintVideoSample(const DXVADDI_VIDEOSAMPLE* pSample);
