// The one video processor that the driver offers, the progressive one: fixed answers, one function of the family
// UMDGetAdapterCapabilitiesDXVA a question.
//
// No input changes an answer; inputs are only traced and may be null.
#pragma once

#include "ddi/ddi.h"

/// Number of video processor GUIDs, not an HRESULT.
UINT UMDGetAdapterCapabilitiesDXVAGuidCnt(const DXVADDI_VIDEODESC* pVideoDesc);
/// @param pGuids receives UMDGetAdapterCapabilitiesDXVAGuidCnt GUIDs.
HRESULT UMDGetAdapterCapabilitiesDXVAGuid(const DXVADDI_VIDEODESC* pVideoDesc, GUID* pGuids);

/// Number of render target formats, not an HRESULT.
UINT UMDGetAdapterCapabilitiesDXVAFmtCnt(const DXVADDI_VIDEOPROCESSORINPUT* pInput);
/// @param pFormats receives UMDGetAdapterCapabilitiesDXVAFmtCnt formats.
HRESULT UMDGetAdapterCapabilitiesDXVAFmt(const DXVADDI_VIDEOPROCESSORINPUT* pInput, D3DDDIFORMAT* pFormats);

/// Number of substream formats, not an HRESULT.
UINT UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt(const DXVADDI_VIDEOPROCESSORINPUT* pInput);
/// @param pFormats receives UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt formats.
HRESULT UMDGetAdapterCapabilitiesDXVARTSubstreamFmt(const DXVADDI_VIDEOPROCESSORINPUT* pInput, D3DDDIFORMAT* pFormats);

HRESULT UMDGetAdapterCapabilitiesDXVACaps(const DXVADDI_VIDEOPROCESSORINPUT* pInput, DXVADDI_VIDEOPROCESSORCAPS* pCaps);

/// One control's range a call, in turn: brightness, contrast, hue, saturation, and again from the start. The turn is
/// the process's, not the adapter's. Which control the query names is not looked at.
HRESULT UMDGetAdapterCapabilitiesDXVAProcAmpRange(const DXVADDI_QUERYPROCAMPINPUT* pInput, DXVADDI_VALUERANGE* pRange);
