// The capability dispatch: one row a query type, with what it traces and what it answers.
//
// Sizes are not checked where an answer has a size of its own: the runtime gives each type the buffer that it needs.

#include "adapter/UMDAdapter.h"

#include "adapter/UMDAdapterCapabilitiesD3D9.h"
#include "adapter/UMDAdapterFormats.h"
#include "util/UMDUtilDebugTrace.h"
#include "video/UMDAdapterCapabilitiesDXVA.h"

#include <cstring>
#include <iterator>

namespace
{
// dwSize of the records of older runtimes: what their size was when the runtimes were published.
constexpr UINT kD3D3CapsSize = 200;
constexpr UINT kD3D7CapsSize = 116;

constexpr D3DDDIQUERYTYPE kQueryTypes[] = {
    D3DDDIQUERYTYPE_VCACHE,
    D3DDDIQUERYTYPE_RESOURCEMANAGER,
    D3DDDIQUERYTYPE_VERTEXSTATS,
    D3DDDIQUERYTYPE_DDISTATS,
    D3DDDIQUERYTYPE_EVENT,
    D3DDDIQUERYTYPE_OCCLUSION,
    D3DDDIQUERYTYPE_TIMESTAMP,
    D3DDDIQUERYTYPE_TIMESTAMPDISJOINT,
    D3DDDIQUERYTYPE_TIMESTAMPFREQ,
    D3DDDIQUERYTYPE_PIPELINETIMINGS,
    D3DDDIQUERYTYPE_INTERFACETIMINGS,
    D3DDDIQUERYTYPE_VERTEXTIMINGS,
    D3DDDIQUERYTYPE_PIXELTIMINGS,
    D3DDDIQUERYTYPE_BANDWIDTHTIMINGS,
    D3DDDIQUERYTYPE_CACHEUTILIZATION,
};
static_assert(std::size(kQueryTypes) == 15);

/// The one decoder that is announced. Every question about it is answered with E_NOTIMPL.
constexpr GUID kDecodeGuid = {0xBF22AD00, 0x03EA, 0x4690, {0x80, 0x77, 0x47, 0x33, 0x46, 0x20, 0x9B, 0x7E}};
constexpr UINT kDecodeGuidCount = 1;

HRESULT AnswerWord(const D3DDDIARG_GETCAPS* pGetCaps, UINT word)
{
    *static_cast<UINT*>(pGetCaps->pData) = word;
    return S_OK;
}

/// Zero as far as the buffer goes: "nothing of this is supported".
HRESULT AnswerNothing(const D3DDDIARG_GETCAPS* pGetCaps)
{
    if (pGetCaps->DataSize)
        std::memset(pGetCaps->pData, 0, pGetCaps->DataSize);
    return S_OK;
}

HRESULT AnswerSizeOnly(const D3DDDIARG_GETCAPS* pGetCaps, UINT recordSize)
{
    AnswerNothing(pGetCaps);
    return AnswerWord(pGetCaps, recordSize);
}

HRESULT AnswerRefused(const D3DDDIARG_GETCAPS*)
{
    return E_NOTIMPL;
}

HRESULT AnswerFormatCount(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, UMDGetAdapterFormatCount());
}

HRESULT AnswerFormats(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterFormats(static_cast<FORMATOP*>(pGetCaps->pData), pGetCaps->DataSize);
}

/// No multisampling: the format asked about stays, the rest of the record is zero.
HRESULT AnswerMultisampleQualityLevels(const D3DDDIARG_GETCAPS* pGetCaps)
{
    auto* pLevels = static_cast<DDIMULTISAMPLEQUALITYLEVELSDATA*>(pGetCaps->pData);
    *pLevels = {.Format = pLevels->Format, .Flip = FALSE, .MsType = D3DDDIMULTISAMPLE_NONE, .QualityLevels = 0};
    return S_OK;
}

HRESULT AnswerQueryCount(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, std::size(kQueryTypes));
}

HRESULT AnswerQueryTypes(const D3DDDIARG_GETCAPS* pGetCaps)
{
    std::memcpy(pGetCaps->pData, kQueryTypes, sizeof(kQueryTypes));
    return S_OK;
}

HRESULT AnswerD3D3Caps(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerSizeOnly(pGetCaps, kD3D3CapsSize);
}

HRESULT AnswerD3D7Caps(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerSizeOnly(pGetCaps, kD3D7CapsSize);
}

HRESULT AnswerD3D9Caps(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterCapabilitiesD3D9(static_cast<D3DCAPS9*>(pGetCaps->pData));
}

HRESULT AnswerDecodeGuidCount(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, kDecodeGuidCount);
}

HRESULT AnswerDecodeGuids(const D3DDDIARG_GETCAPS* pGetCaps)
{
    *static_cast<GUID*>(pGetCaps->pData) = kDecodeGuid;
    return S_OK;
}

const DXVADDI_VIDEODESC* VideoDesc(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return static_cast<const DXVADDI_VIDEODESC*>(pGetCaps->pInfo);
}

const DXVADDI_VIDEOPROCESSORINPUT* ProcessorInput(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return static_cast<const DXVADDI_VIDEOPROCESSORINPUT*>(pGetCaps->pInfo);
}

HRESULT AnswerProcessorGuidCount(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, UMDGetAdapterCapabilitiesDXVAGuidCnt(VideoDesc(pGetCaps)));
}

HRESULT AnswerProcessorGuids(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterCapabilitiesDXVAGuid(VideoDesc(pGetCaps), static_cast<GUID*>(pGetCaps->pData));
}

HRESULT AnswerTargetFormatCount(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, UMDGetAdapterCapabilitiesDXVAFmtCnt(ProcessorInput(pGetCaps)));
}

HRESULT AnswerTargetFormats(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterCapabilitiesDXVAFmt(ProcessorInput(pGetCaps), static_cast<D3DDDIFORMAT*>(pGetCaps->pData));
}

HRESULT AnswerSubstreamFormatCount(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt(ProcessorInput(pGetCaps)));
}

HRESULT AnswerSubstreamFormats(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterCapabilitiesDXVARTSubstreamFmt(
        ProcessorInput(pGetCaps), static_cast<D3DDDIFORMAT*>(pGetCaps->pData));
}

HRESULT AnswerProcessorCaps(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterCapabilitiesDXVACaps(
        ProcessorInput(pGetCaps), static_cast<DXVADDI_VIDEOPROCESSORCAPS*>(pGetCaps->pData));
}

HRESULT AnswerProcAmpRange(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return UMDGetAdapterCapabilitiesDXVAProcAmpRange(static_cast<const DXVADDI_QUERYPROCAMPINPUT*>(pGetCaps->pInfo),
        static_cast<DXVADDI_VALUERANGE*>(pGetCaps->pData));
}

HRESULT AnswerGammaRamp(const D3DDDIARG_GETCAPS* pGetCaps)
{
    return AnswerWord(pGetCaps, D3DDDI_GAMMARAMP_DEFAULT);
}

struct Query
{
    D3DDDICAPS_TYPE Type;
    HRESULT (*pAnswer)(const D3DDDIARG_GETCAPS* pGetCaps);
    const wchar_t* pText;  ///< takes DataSize in units, and the constant, as far as it has places for them
    UINT Unit = 1;         ///< bytes
    UINT Constant = 0;     ///< traced, and compared with nothing
};

// clang-format off
constexpr Query kQueries[] = {
    {D3DDDICAPS_DDRAW, AnswerNothing, L"UMDAdapter::GetCaps D3DDDICAPS_DDRAW\n"},
    {D3DDDICAPS_DDRAW_MODE_SPECIFIC, AnswerNothing, L"UMDAdapter::GetCaps D3DDDICAPS_DDRAW_MODE_SPECIFIC\n"},
    {D3DDDICAPS_GETFORMATCOUNT, AnswerFormatCount, L"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATCOUNT\n"},
    {D3DDDICAPS_GETFORMATDATA, AnswerFormats, L"UMDAdapter::GetCaps D3DDDICAPS_GETFORMATDATA\n"},
    {D3DDDICAPS_GETMULTISAMPLEQUALITYLEVELS, AnswerMultisampleQualityLevels,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETMULTISAMPLEQUALITYLEVELS\n"},
    {D3DDDICAPS_GETD3DQUERYCOUNT, AnswerQueryCount, L"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYCOUNT\n"},
    {D3DDDICAPS_GETD3DQUERYDATA, AnswerQueryTypes,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count %d\n", sizeof(D3DDDIQUERYTYPE)},
    {D3DDDICAPS_GETD3D3CAPS, AnswerD3D3Caps, L"UMDAdapter::GetCaps D3DDDICAPS_GETD3D3CAPS\n"},
    {D3DDDICAPS_GETD3D7CAPS, AnswerD3D7Caps, L"UMDAdapter::GetCaps D3DDDICAPS_GETD3D7CAPS\n"},
    {D3DDDICAPS_GETD3D8CAPS, AnswerNothing, L"UMDAdapter::GetCaps D3DDDICAPS_GETD3D8CAPS\n"},
    {D3DDDICAPS_GETD3D9CAPS, AnswerD3D9Caps, L"UMDAdapter::GetCaps D3DDDICAPS_GETD3D9CAPS\n"},
    {D3DDDICAPS_GETDECODEGUIDCOUNT, AnswerDecodeGuidCount,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODEGUIDCOUNT %d\n"},
    {D3DDDICAPS_GETDECODEGUIDS, AnswerDecodeGuids, L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODEGUIDS %d %d\n", 1, 32},
    {D3DDDICAPS_GETDECODERTFORMATCOUNT, AnswerRefused,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODERTFORMATCOUNT %d\n"},
    {D3DDDICAPS_GETDECODERTFORMATS, AnswerRefused, L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODERTFORMATS\n"},
    {D3DDDICAPS_GETDECODECOMPRESSEDBUFFERINFOCOUNT, AnswerRefused,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECOMPRESSEDBUFFERINFOCOUNT\n"},
    {D3DDDICAPS_GETDECODECOMPRESSEDBUFFERINFO, AnswerRefused,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECOMPRESSEDBUFFERINFO\n"},
    {D3DDDICAPS_GETDECODECONFIGURATIONCOUNT, AnswerRefused,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECONFIGURATIONCOUNT\n"},
    {D3DDDICAPS_GETDECODECONFIGURATIONS, AnswerRefused,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETDECODECONFIGURATIONS\n"},
    {D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDCOUNT, AnswerProcessorGuidCount,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDCOUNT %d\n"},
    {D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDS, AnswerProcessorGuids,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDS %d %d\n", 1, 32},
    {D3DDDICAPS_GETVIDEOPROCESSORRTFORMATCOUNT, AnswerTargetFormatCount,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTFORMATCOUNT %d\n"},
    {D3DDDICAPS_GETVIDEOPROCESSORRTFORMATS, AnswerTargetFormats,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTFORMATS %d %d\n", 1, 12},
    {D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATCOUNT, AnswerSubstreamFormatCount,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATCOUNT %d\n"},
    {D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATS, AnswerSubstreamFormats,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATS %d %d\n", 1, 8},
    {D3DDDICAPS_GETVIDEOPROCESSORCAPS, AnswerProcessorCaps,
        L"UMDAdapter::GetCaps D3DDDICAPS_GETVIDEOPROCESSORCAPS %d %d\n", 1, 36},
    {D3DDDICAPS_GETPROCAMPRANGE, AnswerProcAmpRange, L"UMDAdapter::GetCaps D3DDDICAPS_GETPROCAMPRANGE\n"},
    {D3DDDICAPS_GETGAMMARAMPCAPS, AnswerGammaRamp, L"UMDAdapter::GetCaps D3DDDICAPS_GETGAMMARAMPCAPS\n"},
};
// clang-format on
}  // namespace

HRESULT UMDAdapter::GetCaps(const D3DDDIARG_GETCAPS* pGetCaps)
{
    for (const Query& query : kQueries)
    {
        if (query.Type == pGetCaps->Type)
        {
            UMD_TRACE(UMDTRACE_CAPS, query.pText, pGetCaps->DataSize / query.Unit, query.Constant);
            return query.pAnswer(pGetCaps);
        }
    }
    UMD_TRACE(UMDTRACE_ERROR | UMDTRACE_CAPS, L"UMDAdapter::GetCaps unknown caps 0x%x\n", pGetCaps->Type);
    return AnswerNothing(pGetCaps);
}
