#include "FlagNames.h"
#include "Tables.h"

#include "video/UMDAdapterCapabilitiesDXVA.h"

#include <vector>

namespace
{
std::string FormatList(const std::vector<D3DDDIFORMAT>& formats)
{
    std::string text;
    for (D3DDDIFORMAT format : formats)
        text += (text.empty() ? "" : ", ") + FormatName(format);
    return text;
}

std::string Row(const char* pName, const std::string& value)
{
    return Text("| %s | ", pName) + value + " |\n";
}

std::string Number(UINT number)
{
    return Text("%u", number);
}

std::string CapsRows()
{
    DXVADDI_VIDEOPROCESSORCAPS caps;
    UMDGetAdapterCapabilitiesDXVACaps(nullptr, &caps);
    return Row("InputPool", Number(caps.InputPool)) + Row("NumForwardRefSamples", Number(caps.NumForwardRefSamples)) +
           Row("NumBackwardRefSamples", Number(caps.NumBackwardRefSamples)) +
           Row("OutputFormat", FormatName(caps.OutputFormat)) +
           Row("DeinterlaceTechnology", Number(caps.DeinterlaceTechnology)) +
           Row("ProcAmpControlCaps",
               Text("0x%X: ", caps.ProcAmpControlCaps) + NamesOf(kFlagsProcAmp, caps.ProcAmpControlCaps)) +
           Row("VideoProcessorOperations", Text("0x%X: ", caps.VideoProcessorOperations) +
                                               NamesOf(kFlagsVideoProcess, caps.VideoProcessorOperations)) +
           Row("NoiseFilterTechnology", Number(caps.NoiseFilterTechnology)) +
           Row("DetailFilterTechnology", Number(caps.DetailFilterTechnology));
}

/// A 16.16 fixed-point number: its value and the raw word.
std::string Fixed(DXVADDI_FIXED32 number)
{
    return Text("%.5g (0x%08lX)", number.ll / 65536.0, static_cast<DWORD>(number.ll));
}
}  // namespace

std::string GuidText(const GUID& guid)
{
    return Text("{%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1, guid.Data2, guid.Data3,
        guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3], guid.Data4[4], guid.Data4[5], guid.Data4[6],
        guid.Data4[7]);
}

std::string ProcessorTable()
{
    std::vector<GUID> guids(UMDGetAdapterCapabilitiesDXVAGuidCnt(nullptr));
    UMDGetAdapterCapabilitiesDXVAGuid(nullptr, guids.data());
    std::vector<D3DDDIFORMAT> targets(UMDGetAdapterCapabilitiesDXVAFmtCnt(nullptr));
    UMDGetAdapterCapabilitiesDXVAFmt(nullptr, targets.data());
    std::vector<D3DDDIFORMAT> substreams(UMDGetAdapterCapabilitiesDXVARTSubstreamFmtCnt(nullptr));
    UMDGetAdapterCapabilitiesDXVARTSubstreamFmt(nullptr, substreams.data());

    std::string table = "| question | answer |\n|---|---|\n";
    for (const GUID& guid : guids)
        table += Row("processor", GuidText(guid));
    return table + Row("render target formats", FormatList(targets)) +
           Row("substream formats", FormatList(substreams)) + CapsRows();
}

std::string ProcAmpTable()
{
    std::string table = "| control | minimum | maximum | default | step |\n|---|---|---|---|---|\n";
    for (const char* pControl : {"brightness", "contrast", "hue", "saturation"})
    {
        DXVADDI_VALUERANGE range;
        UMDGetAdapterCapabilitiesDXVAProcAmpRange(nullptr, &range);
        table += Text("| %s | ", pControl) + Fixed(range.MinValue) + " | " + Fixed(range.MaxValue) + " | " +
                 Fixed(range.DefaultValue) + " | " + Fixed(range.StepSize) + " |\n";
    }
    return table;
}
