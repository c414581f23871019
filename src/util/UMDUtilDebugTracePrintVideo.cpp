#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

#include <cstring>

namespace
{
// Each helper spells one group of three or more values; a fixed-point number shows as fraction, whole part and word.
void PrintSampleFormat(const DXVADDI_EXTENDEDFORMAT& format)
{
    UMD_TRACE(UMDTRACE_DETAIL, L"SampleFormat: %d %d %d %d %d %d %d %d\n", format.Value, format.SampleFormat,
        format.VideoChromaSubsampling, format.NominalRange, format.VideoTransferMatrix, format.VideoLighting,
        format.VideoPrimaries, format.VideoTransferFunction);
}

void PrintFilter(const wchar_t* pText, const DXVADDI_FILTERVALUES& filter)
{
    UMD_TRACE(UMDTRACE_DETAIL, pText, filter.Level.Fraction, filter.Level.Value, filter.Level.ll,
        filter.Threshold.Fraction, filter.Threshold.Value, filter.Threshold.ll, filter.Radius.Fraction,
        filter.Radius.Value, filter.Radius.ll);
}

void PrintRect(const wchar_t* pText, const RECT& rect)
{
    UMD_TRACE(UMDTRACE_DETAIL, pText, rect.left, rect.top, rect.right, rect.bottom);
}

void PrintPalette(const DXVADDI_AYUVSAMPLE8* pPal, UINT count)
{
    if (!pPal)
    {
        UMD_TRACE(UMDTRACE_DETAIL, L"Pal is NULL\n");
        return;
    }
    for (UINT i = 0; i < count; ++i)
        UMD_TRACE(UMDTRACE_DETAIL, L"Pal[%02d]: 0x%02x 0x%02x 0x%02x 0x%02x\n", i, pPal[i].Cr, pPal[i].Cb, pPal[i].Y,
            pPal[i].Alpha);
}

UINT LowWord(REFERENCE_TIME time)
{
    return static_cast<UINT>(time);
}
}  // namespace

void UMDUtilDebugTracePrintVideoDesc(const DXVADDI_VIDEODESC* pVideoDesc)
{
    const DXVADDI_EXTENDEDFORMAT& format = pVideoDesc->SampleFormat;
    UMD_TRACE(UMDTRACE_CAPS, L"UMDUtilDebugTracePrintVideoDesc\n");
    UMD_TRACE(UMDTRACE_CAPS, L"SampleWidth: %d  SampleHeight: %d  Format: %d\n", pVideoDesc->SampleWidth,
        pVideoDesc->SampleHeight, pVideoDesc->Format);
    UMD_TRACE(UMDTRACE_CAPS,
        L"[SampleFormat: %d]  SampleFormat:%d  VideoChromaSubsampling:%d  NominalRange:%d  VideoTransferMatrix:%d  VideoLighting:%d  VideoPrimaries:%d  VideoTransferFunction:%d\n",
        format.Value, format.SampleFormat, format.VideoChromaSubsampling, format.NominalRange,
        format.VideoTransferMatrix, format.VideoLighting, format.VideoPrimaries, format.VideoTransferFunction);
    UMD_TRACE(UMDTRACE_CAPS, L"InputSampleFreq: %d %d  OutputFrameFreq: %d %d  UABProtectionLevel: %d\n",
        pVideoDesc->InputSampleFreq.Numerator, pVideoDesc->InputSampleFreq.Denominator,
        pVideoDesc->OutputFrameFreq.Numerator, pVideoDesc->OutputFrameFreq.Denominator, pVideoDesc->UABProtectionLevel);
}

void UMDUtilDebugTracePrintGUID(const GUID* pGUID)
{
    UINT tail[2] = {};
    static_assert(sizeof(tail) == sizeof(pGUID->Data4));
    std::memcpy(tail, pGUID->Data4, sizeof(tail));
    UMD_TRACE(UMDTRACE_CAPS, L"UMDUtilDebugTracePrintGUID\n");
    UMD_TRACE(UMDTRACE_CAPS, L"pGUID: %u %u %u %u %u\n", pGUID->Data1, pGUID->Data2, pGUID->Data3, tail[0], tail[1]);
}

void UMDUtilDebugTracePrintVideoProcessorInput(const DXVADDI_VIDEOPROCESSORINPUT* pInput)
{
    UMD_TRACE(UMDTRACE_CAPS, L"UMDUtilDebugTracePrintVideoProcessorInput\n");
    UMDUtilDebugTracePrintVideoDesc(&pInput->VideoDesc);
    UMD_TRACE(UMDTRACE_CAPS, L"RenderTargetFormat: %d\n", pInput->RenderTargetFormat);
}

void UMDUtilDebugTracePrintValueRange(const DXVADDI_VALUERANGE* pValueRange)
{
    UMD_TRACE(UMDTRACE_CAPS, L"UMDUtilDebugTracePrintValueRange\n");
    UMD_TRACE(UMDTRACE_CAPS, L">>> %u %u %u %u\n", pValueRange->MinValue.ll, pValueRange->MaxValue.ll,
        pValueRange->DefaultValue.ll, pValueRange->StepSize.ll);
}

void UMDUtilDebugTracePrintVideoProcessorCaps(const DXVADDI_VIDEOPROCESSORCAPS* pCaps)
{
    UMD_TRACE(UMDTRACE_CAPS, L">>> %d %d %d %d %d %d %d %d %d\n", pCaps->InputPool, pCaps->NumForwardRefSamples,
        pCaps->NumBackwardRefSamples, pCaps->OutputFormat, pCaps->DeinterlaceTechnology, pCaps->ProcAmpControlCaps,
        pCaps->VideoProcessorOperations, pCaps->NoiseFilterTechnology, pCaps->DetailFilterTechnology);
}

// By the names of the fields, not in the record's order.
void UMDUtilDebugTracePrintVideoProcessBlt(const D3DDDIARG_VIDEOPROCESSBLT* pBlt)
{
    const DXVADDI_PROCAMPVALUES& amp = pBlt->ProcAmpValues;
    UMD_TRACE(UMDTRACE_DETAIL, L"Alpha: %d %d %d\n", pBlt->Alpha.Fraction, pBlt->Alpha.Value, pBlt->Alpha.ll);
    UMD_TRACE(UMDTRACE_DETAIL, L"BackgroundColor: %d %d %d %d\n", pBlt->BackgroundColor.Cr, pBlt->BackgroundColor.Cb,
        pBlt->BackgroundColor.Y, pBlt->BackgroundColor.Alpha);
    UMD_TRACE(UMDTRACE_DETAIL, L"ConstrictionSize: %d %d\n", pBlt->ConstrictionSize.cx, pBlt->ConstrictionSize.cy);
    UMD_TRACE(UMDTRACE_DETAIL, L"DestData: %d\n", pBlt->DestFlags.DestData);
    PrintSampleFormat(pBlt->DestFormat);
    PrintFilter(L"DetailFilterChroma: %d %d %d  %d %d %d  %d %d %d\n", pBlt->DetailFilterChroma);
    PrintFilter(L"DetailFilterLuma: %d %d %d  %d %d %d  %d %d %d\n", pBlt->DetailFilterLuma);
    PrintFilter(L"NoiseFilterChroma: %d %d %d  %d %d %d  %d %d %d\n", pBlt->NoiseFilterChroma);
    PrintFilter(L"NoiseFilterLuma: %d %d %d  %d %d %d  %d %d %d\n", pBlt->NoiseFilterLuma);
    UMD_TRACE(UMDTRACE_DETAIL, L"ProcAmpValues: %d %d %d  %d %d %d  %d %d %d  %d %d %d\n", amp.Brightness.Fraction,
        amp.Brightness.Value, amp.Brightness.ll, amp.Contrast.Fraction, amp.Contrast.Value, amp.Contrast.ll,
        amp.Hue.Fraction, amp.Hue.Value, amp.Hue.ll, amp.Saturation.Fraction, amp.Saturation.Value, amp.Saturation.ll);
    UMD_TRACE(UMDTRACE_DETAIL, L"StreamingFlags: %d\n", pBlt->StreamingFlags);
    UMD_TRACE(UMDTRACE_DETAIL, L"TargetFrame: 0x%x\n", LowWord(pBlt->TargetFrame));
    PrintRect(L"TargetRect: %d %d %d %d\n", pBlt->TargetRect);
}

void UMDUtilDebugTracePrintVideoSample(const DXVADDI_VIDEOSAMPLE* pSample)
{
    const DXVADDI_VIDEOSAMPLEFLAGS& flags = pSample->SampleFlags;
    UMD_TRACE(UMDTRACE_DETAIL, L"Start: 0x%x\n", LowWord(pSample->Start));
    UMD_TRACE(UMDTRACE_DETAIL, L"End: 0x%x\n", LowWord(pSample->End));
    PrintRect(L"SrcRect: %d %d %d %d\n", pSample->SrcRect);
    PrintRect(L"DstRect: %d %d %d %d\n", pSample->DstRect);
    PrintPalette(pSample->Pal, ARRAYSIZE(pSample->Pal));
    UMD_TRACE(UMDTRACE_DETAIL, L"PlanarAlpha: %d %d %d\n", pSample->PlanarAlpha.Fraction, pSample->PlanarAlpha.Value,
        pSample->PlanarAlpha.ll);
    PrintSampleFormat(pSample->SampleFormat);
    UMD_TRACE(UMDTRACE_DETAIL, L"SampleFlags: %d %d %d %d %d %d %d\n", flags.PaletteChanged, flags.SrcRectChanged,
        flags.DstRectChanged, flags.ColorDataChanged, flags.PlanarAlphaChanged, flags.Reserved, flags.SampleData);
    UMD_TRACE(UMDTRACE_DETAIL, L"SrcResource: 0x%x\n", UMDLow32(pSample->SrcResource));
}
