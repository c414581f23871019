#include "host/runtime/HostCapabilities.h"

#include "host/runtime/HostAdapter.h"

namespace
{

void Ask(const HostAdapter& adapter, D3DDDICAPS_TYPE type, void* pInfo, void* pData, size_t size)
{
    D3DDDIARG_GETCAPS arg{};
    arg.Type = type;
    arg.pInfo = pInfo;
    arg.pData = pData;
    arg.DataSize = static_cast<UINT>(size);
    HostCheck(adapter.Functions().pfnGetCaps(adapter.Handle(), &arg), "pfnGetCaps");
}

/// Asks how many there are, then for all of them.
template <typename Entry>
std::vector<Entry> AskList(
    const HostAdapter& adapter, D3DDDICAPS_TYPE countType, D3DDDICAPS_TYPE listType, void* pInfo = nullptr)
{
    UINT count = 0;
    Ask(adapter, countType, pInfo, &count, sizeof(count));
    std::vector<Entry> entries(count);
    Ask(adapter, listType, pInfo, entries.data(), count * sizeof(Entry));
    return entries;
}

/// A film of usual size, as a player describes it.
DXVADDI_VIDEODESC FilmDescription()
{
    DXVADDI_VIDEODESC desc{};
    desc.SampleWidth = 1280;
    desc.SampleHeight = 720;
    desc.SampleFormat.SampleFormat = 2;  // progressive frames
    desc.Format = D3DDDIFMT_YUY2;
    desc.InputSampleFreq = {24, 1};
    desc.OutputFrameFreq = {60, 1};
    return desc;
}

void AskProcessor(const HostAdapter& adapter, const DXVADDI_VIDEODESC& desc, HostCapabilities& capabilities)
{
    DXVADDI_VIDEOPROCESSORINPUT input{capabilities.m_Processors.data(), desc, D3DDDIFMT_X8R8G8B8};
    capabilities.m_TargetFormats = AskList<D3DDDIFORMAT>(
        adapter, D3DDDICAPS_GETVIDEOPROCESSORRTFORMATCOUNT, D3DDDICAPS_GETVIDEOPROCESSORRTFORMATS, &input);
    capabilities.m_SubstreamFormats = AskList<D3DDDIFORMAT>(adapter, D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATCOUNT,
        D3DDDICAPS_GETVIDEOPROCESSORRTSUBSTREAMFORMATS, &input);
    Ask(adapter, D3DDDICAPS_GETVIDEOPROCESSORCAPS, &input, &capabilities.m_ProcessorCaps,
        sizeof(capabilities.m_ProcessorCaps));
    for (UINT control = 0; control < 4; ++control)
    {
        DXVADDI_QUERYPROCAMPINPUT range{input.pVideoProcGuid, desc, input.RenderTargetFormat, 1u << control};
        Ask(adapter, D3DDDICAPS_GETPROCAMPRANGE, &range, &capabilities.m_ProcAmpRanges[control],
            sizeof(capabilities.m_ProcAmpRanges[control]));
    }
}

}  // namespace

HostCapabilities HostAskCapabilities(const HostAdapter& adapter)
{
    HostCapabilities capabilities;
    capabilities.m_Formats = AskList<FORMATOP>(adapter, D3DDDICAPS_GETFORMATCOUNT, D3DDDICAPS_GETFORMATDATA);
    capabilities.m_QueryTypes =
        AskList<D3DDDIQUERYTYPE>(adapter, D3DDDICAPS_GETD3DQUERYCOUNT, D3DDDICAPS_GETD3DQUERYDATA);
    Ask(adapter, D3DDDICAPS_GETD3D9CAPS, nullptr, &capabilities.m_Record, sizeof(capabilities.m_Record));

    DXVADDI_VIDEODESC desc = FilmDescription();
    capabilities.m_Processors = AskList<GUID>(
        adapter, D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDCOUNT, D3DDDICAPS_GETVIDEOPROCESSORDEVICEGUIDS, &desc);
    if (!capabilities.m_Processors.empty())
        AskProcessor(adapter, desc, capabilities);
    return capabilities;
}
