// DXVA2's records beside the driver interface's: the same fields under other names, copied bit for bit.
//
// Everything that UMDGpuDXVA copies is proven here: that the platform's records lie where its video service reads them,
// and that both sides of a copy agree field by field.
#pragma once

#include "ddi/ddi.h"

#include <dxva2api.h>

/// A member that both records name alike lies at the same place in both.
#define UMD_SAME_MEMBER(ours, theirs, member)                                              \
    static_assert(offsetof(ours, member) == offsetof(theirs, member), #ours "::" #member); \
    static_assert(sizeof(ours::member) == sizeof(theirs::member), #ours "::" #member)

/// A member that both records name alike has the same size in both; the records around it differ.
#define UMD_SAME_SIZE(ours, theirs, member) \
    static_assert(sizeof(ours::member) == sizeof(theirs::member), #ours "::" #member)

UMD_LAYOUT(DXVA2_ExtendedFormat, sizeof(DXVADDI_EXTENDEDFORMAT), alignof(DXVADDI_EXTENDEDFORMAT));
static_assert(offsetof(DXVA2_ExtendedFormat, value) == offsetof(DXVADDI_EXTENDEDFORMAT, Value));

UMD_LAYOUT(DXVA2_Frequency, sizeof(DXVADDI_FREQUENCY), alignof(DXVADDI_FREQUENCY));
UMD_SAME_MEMBER(DXVADDI_FREQUENCY, DXVA2_Frequency, Numerator);
UMD_SAME_MEMBER(DXVADDI_FREQUENCY, DXVA2_Frequency, Denominator);

UMD_LAYOUT(DXVA2_Fixed32, sizeof(DXVADDI_FIXED32), alignof(DXVADDI_FIXED32));
UMD_SAME_MEMBER(DXVADDI_FIXED32, DXVA2_Fixed32, Fraction);
UMD_SAME_MEMBER(DXVADDI_FIXED32, DXVA2_Fixed32, Value);
UMD_SAME_MEMBER(DXVADDI_FIXED32, DXVA2_Fixed32, ll);

UMD_LAYOUT(DXVA2_AYUVSample8, sizeof(DXVADDI_AYUVSAMPLE8), alignof(DXVADDI_AYUVSAMPLE8));
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE8, DXVA2_AYUVSample8, Cr);
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE8, DXVA2_AYUVSample8, Cb);
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE8, DXVA2_AYUVSample8, Y);
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE8, DXVA2_AYUVSample8, Alpha);

UMD_LAYOUT(DXVA2_AYUVSample16, sizeof(DXVADDI_AYUVSAMPLE16), alignof(DXVADDI_AYUVSAMPLE16));
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE16, DXVA2_AYUVSample16, Cr);
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE16, DXVA2_AYUVSample16, Cb);
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE16, DXVA2_AYUVSample16, Y);
UMD_SAME_MEMBER(DXVADDI_AYUVSAMPLE16, DXVA2_AYUVSample16, Alpha);

UMD_LAYOUT(DXVA2_ProcAmpValues, sizeof(DXVADDI_PROCAMPVALUES), alignof(DXVADDI_PROCAMPVALUES));
UMD_SAME_MEMBER(DXVADDI_PROCAMPVALUES, DXVA2_ProcAmpValues, Brightness);
UMD_SAME_MEMBER(DXVADDI_PROCAMPVALUES, DXVA2_ProcAmpValues, Contrast);
UMD_SAME_MEMBER(DXVADDI_PROCAMPVALUES, DXVA2_ProcAmpValues, Hue);
UMD_SAME_MEMBER(DXVADDI_PROCAMPVALUES, DXVA2_ProcAmpValues, Saturation);

UMD_LAYOUT(DXVA2_FilterValues, sizeof(DXVADDI_FILTERVALUES), alignof(DXVADDI_FILTERVALUES));
UMD_SAME_MEMBER(DXVADDI_FILTERVALUES, DXVA2_FilterValues, Level);
UMD_SAME_MEMBER(DXVADDI_FILTERVALUES, DXVA2_FilterValues, Threshold);
UMD_SAME_MEMBER(DXVADDI_FILTERVALUES, DXVA2_FilterValues, Radius);

UMD_LAYOUT(DXVA2_VideoDesc, sizeof(DXVADDI_VIDEODESC), alignof(DXVADDI_VIDEODESC));
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, SampleWidth);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, SampleHeight);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, SampleFormat);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, Format);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, InputSampleFreq);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, OutputFrameFreq);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, UABProtectionLevel);
UMD_SAME_MEMBER(DXVADDI_VIDEODESC, DXVA2_VideoDesc, Reserved);

// The driver interface adds the processor's handle and its own flags, so only sizes agree.
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, TargetFrame);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, TargetRect);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, ConstrictionSize);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, StreamingFlags);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, BackgroundColor);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, DestFormat);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, ProcAmpValues);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, Alpha);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, NoiseFilterLuma);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, NoiseFilterChroma);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, DetailFilterLuma);
UMD_SAME_SIZE(D3DDDIARG_VIDEOPROCESSBLT, DXVA2_VideoProcessBltParams, DetailFilterChroma);
UMD_LAYOUT(DXVA2_VideoProcessBltParams, 120, 8);
UMD_OFFSET(DXVA2_VideoProcessBltParams, TargetFrame, 0);
UMD_OFFSET(DXVA2_VideoProcessBltParams, TargetRect, 8);
UMD_OFFSET(DXVA2_VideoProcessBltParams, ConstrictionSize, 24);
UMD_OFFSET(DXVA2_VideoProcessBltParams, StreamingFlags, 32);
UMD_OFFSET(DXVA2_VideoProcessBltParams, BackgroundColor, 36);
UMD_OFFSET(DXVA2_VideoProcessBltParams, DestFormat, 44);
UMD_OFFSET(DXVA2_VideoProcessBltParams, ProcAmpValues, 48);
UMD_OFFSET(DXVA2_VideoProcessBltParams, Alpha, 64);
UMD_OFFSET(DXVA2_VideoProcessBltParams, NoiseFilterLuma, 68);
UMD_OFFSET(DXVA2_VideoProcessBltParams, NoiseFilterChroma, 80);
UMD_OFFSET(DXVA2_VideoProcessBltParams, DetailFilterLuma, 92);
UMD_OFFSET(DXVA2_VideoProcessBltParams, DetailFilterChroma, 104);
UMD_OFFSET(DXVA2_VideoProcessBltParams, DestData, 116);

// A surface stands where the driver interface has flags and a resource handle.
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, Start);
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, End);
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, SampleFormat);
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, SrcRect);
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, DstRect);
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, Pal);
UMD_SAME_SIZE(DXVADDI_VIDEOSAMPLE, DXVA2_VideoSample, PlanarAlpha);
UMD_LAYOUT(DXVA2_VideoSample, 136, 8);
UMD_OFFSET(DXVA2_VideoSample, Start, 0);
UMD_OFFSET(DXVA2_VideoSample, End, 8);
UMD_OFFSET(DXVA2_VideoSample, SampleFormat, 16);
UMD_OFFSET(DXVA2_VideoSample, SrcSurface, 24);
UMD_OFFSET(DXVA2_VideoSample, SrcRect, 32);
UMD_OFFSET(DXVA2_VideoSample, DstRect, 48);
UMD_OFFSET(DXVA2_VideoSample, Pal, 64);
UMD_OFFSET(DXVA2_VideoSample, PlanarAlpha, 128);
UMD_OFFSET(DXVA2_VideoSample, SampleData, 132);
