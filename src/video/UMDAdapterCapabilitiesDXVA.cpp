#include "video/UMDAdapterCapabilitiesDXVA.h"

#include "util/UMDFourCC.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

#include <algorithm>
#include <iterator>

namespace
{
/// DXVA2_VideoProcProgressiveDevice.
constexpr GUID kProcessorGuids[] = {
    {0x5A54A0C9, 0xC7EC, 0x4BD9, {0x8E, 0xDE, 0xF3, 0xC7, 0x5D, 0xC4, 0x39, 0x3B}},
};

constexpr D3DDDIFORMAT kTargetFormats[] = {
    D3DDDIFMT_X8R8G8B8,
    UMDFourCC("NV12"),
};

constexpr D3DDDIFORMAT kSubstreamFormats[] = {
    UMDFourCC("AYUV"),
};

// clang-format off
constexpr DXVADDI_VIDEOPROCESSORCAPS kProcessorCaps = {
    .InputPool = D3DDDIPOOL_LOCALVIDMEM,
    .NumForwardRefSamples = 0,
    .NumBackwardRefSamples = 0,
    .OutputFormat = UMDFourCC("NV12"),
    .DeinterlaceTechnology = DXVADDI_DEINTERLACETECH_UNKNOWN,
    .ProcAmpControlCaps = DXVADDI_PROCAMP_BRIGHTNESS
        | DXVADDI_PROCAMP_CONTRAST
        | DXVADDI_PROCAMP_HUE
        | DXVADDI_PROCAMP_SATURATION,
    .VideoProcessorOperations = DXVADDI_VIDEOPROCESS_YUV2RGB
        | DXVADDI_VIDEOPROCESS_STRETCHX
        | DXVADDI_VIDEOPROCESS_STRETCHY
        | DXVADDI_VIDEOPROCESS_SUBRECTS
        | DXVADDI_VIDEOPROCESS_SUBSTREAMS
        | DXVADDI_VIDEOPROCESS_SUBSTREAMSEXTENDED
        | DXVADDI_VIDEOPROCESS_YUV2RGBEXTENDED
        | DXVADDI_VIDEOPROCESS_CONSTRICTION,
    .NoiseFilterTechnology = DXVADDI_NOISEFILTERTECH_UNSUPPORTED,
    .DetailFilterTechnology = DXVADDI_DETAILFILTERTECH_UNSUPPORTED,
};
// clang-format on
static_assert(kProcessorCaps.InputPool == 3);
static_assert(kProcessorCaps.DeinterlaceTechnology == 0);
static_assert(kProcessorCaps.ProcAmpControlCaps == 15);
static_assert(kProcessorCaps.VideoProcessorOperations == 0x2F7);
static_assert(kProcessorCaps.NoiseFilterTechnology == 0);
static_assert(kProcessorCaps.DetailFilterTechnology == 0);

/// A signed 16.16 fixed-point number from its raw word.
constexpr DXVADDI_FIXED32 Raw(UINT word)
{
    return {.ll = static_cast<LONG>(word)};
}

// Minimum, maximum, default, step. The smallest contrast and saturation, and their step, are 6/65536.
constexpr DXVADDI_VALUERANGE kProcAmpRanges[] = {
    {Raw(0xFF9C0000), Raw(0x00640000), Raw(0x00000000), Raw(0x00001999)},  // brightness: -100 to 100, 0, 0.1
    {Raw(0x00000006), Raw(0x00020000), Raw(0x00010000), Raw(0x00000006)},  // contrast: 0 to 2, 1
    {Raw(0xFF4C0000), Raw(0x00B40000), Raw(0x00000000), Raw(0x00001999)},  // hue: -180 to 180, 0, 0.1
    {Raw(0x00000006), Raw(0x00030000), Raw(0x00010000), Raw(0x00000006)},  // saturation: 0 to 3, 1
};

/// Which range is answered next. Plain: capability queries come from the runtime's thread.
UINT g_ProcAmpRangeNext = 0;

void PrintInput(const DXVADDI_VIDEODESC* pVideoDesc)
{
    if (pVideoDesc)
        UMDUtilDebugTracePrintVideoDesc(pVideoDesc);
}

void PrintInput(const DXVADDI_VIDEOPROCESSORINPUT* pInput)
{
    if (pInput)
        UMDUtilDebugTracePrintVideoProcessorInput(pInput);
}
}  // namespace

UINT UMDGetAdapterCapabilitiesDXVAGuidCnt(const DXVADDI_VIDEODESC* pVideoDesc)
{
    constexpr UINT count = std::size(kProcessorGuids);
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesDXVAGuidCnt %d\n", count);
    PrintInput(pVideoDesc);
    return count;
}

HRESULT UMDGetAdapterCapabilitiesDXVAGuid(const DXVADDI_VIDEODESC* pVideoDesc, GUID* pGuids)
{
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesDXVAGuid\n");
    PrintInput(pVideoDesc);
    std::copy(std::begin(kProcessorGuids), std::end(kProcessorGuids), pGuids);
    return S_OK;
}

UINT UMDGetAdapterCapabilitiesDXVAFmtCnt(const DXVADDI_VIDEOPROCESSORINPUT* pInput)
{
    constexpr UINT count = std::size(kTargetFormats);
    PrintInput(pInput);
    UMD_TRACE(UMDTRACE_CAPS, L"<<< UMDGetAdapterCapabilitiesDXVAFmtCnt %d\n", count);
    return count;
}

HRESULT UMDGetAdapterCapabilitiesDXVAFmt(const DXVADDI_VIDEOPROCESSORINPUT* pInput, D3DDDIFORMAT* pFormats)
{
    PrintInput(pInput);
    std::copy(std::begin(kTargetFormats), std::end(kTargetFormats), pFormats);
    UMD_TRACE(UMDTRACE_CAPS, L"<<< UMDGetAdapterCapabilitiesDXVAFmt:\n");
    for (D3DDDIFORMAT format : kTargetFormats)
        UMD_TRACE(UMDTRACE_CAPS, L">>> %d\n", format);
    return S_OK;
}

UINT UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt(const DXVADDI_VIDEOPROCESSORINPUT* pInput)
{
    constexpr UINT count = std::size(kSubstreamFormats);
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt %d\n", count);
    PrintInput(pInput);
    return count;
}

HRESULT UMDGetAdapterCapabilitiesDXVARTSubstreamFmt(const DXVADDI_VIDEOPROCESSORINPUT* pInput, D3DDDIFORMAT* pFormats)
{
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesDXVARTSubstreamFmt\n");
    PrintInput(pInput);
    std::copy(std::begin(kSubstreamFormats), std::end(kSubstreamFormats), pFormats);
    return S_OK;
}

HRESULT UMDGetAdapterCapabilitiesDXVACaps(const DXVADDI_VIDEOPROCESSORINPUT* pInput, DXVADDI_VIDEOPROCESSORCAPS* pCaps)
{
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesDXVACaps\n");
    PrintInput(pInput);
    *pCaps = kProcessorCaps;
    UMDUtilDebugTracePrintVideoProcessorCaps(pCaps);
    return S_OK;
}

HRESULT UMDGetAdapterCapabilitiesDXVAProcAmpRange(const DXVADDI_QUERYPROCAMPINPUT*, DXVADDI_VALUERANGE* pRange)
{
    UMD_TRACE(UMDTRACE_CAPS, L">>> UMDGetAdapterCapabilitiesDXVAProcAmpRange\n");
    *pRange = kProcAmpRanges[g_ProcAmpRangeNext];
    g_ProcAmpRangeNext = (g_ProcAmpRangeNext + 1) % std::size(kProcAmpRanges);
    UMDUtilDebugTracePrintValueRange(pRange);
    return S_OK;
}
