#include "VideoCalls.h"

namespace tesslo::test
{

const GUID VideoCalls::kProgressive = {0x5A54A0C9, 0xC7EC, 0x4BD9, {0x8E, 0xDE, 0xF3, 0xC7, 0x5D, 0xC4, 0x39, 0x3B}};

D3DDDIARG_CREATEVIDEOPROCESSDEVICE VideoCalls::DistinctCreate()
{
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = {};
    create.pVideoProcGuid = &kProgressive;
    create.VideoDesc.SampleWidth = 101;
    create.VideoDesc.SampleHeight = 102;
    create.VideoDesc.SampleFormat.Value = 103;
    create.VideoDesc.Format = static_cast<D3DDDIFORMAT>(104);
    create.VideoDesc.InputSampleFreq = {105, 106};
    create.VideoDesc.OutputFrameFreq = {107, 108};
    create.VideoDesc.UABProtectionLevel = 109;
    create.VideoDesc.Reserved = 110;
    create.RenderTargetFormat = D3DDDIFMT_X8R8G8B8;
    create.MaxSubStreams = 3;
    return create;
}

DXVADDI_VIDEOSAMPLE VideoCalls::DistinctSample()
{
    DXVADDI_VIDEOSAMPLE sample = {};
    sample.Start = 0x0000020100000202;
    sample.End = 0x0000020300000204;
    sample.SampleFormat = {{{2, 3, 1, 4, 5, 6, 7}}};
    sample.SampleFlags.Value = 0xBEEF0015;  // three of the low flags, and data
    sample.SrcSubResourceIndex = 9;         // not looked at
    sample.SrcRect = {211, 212, 213, 214};
    sample.DstRect = {221, 222, 223, 224};
    for (UINT i = 0; i < 16; ++i)
    {
        const auto base = static_cast<UCHAR>(4 * i);
        sample.Pal[i] = {
            base, static_cast<UCHAR>(base + 1), static_cast<UCHAR>(base + 2), static_cast<UCHAR>(base + 3)};
    }
    sample.PlanarAlpha.ll = 0x00E700E8;
    return sample;
}

D3DDDIARG_VIDEOPROCESSBLT VideoCalls::DistinctBlt(HANDLE hVideo, DXVADDI_VIDEOSAMPLE* pSamples, UINT count)
{
    D3DDDIARG_VIDEOPROCESSBLT blt = {};
    blt.TargetFrame = 0x0000012D0000012E;
    blt.hVideoProcess = hVideo;
    blt.TargetRect = {303, 304, 305, 306};
    blt.ConstrictionSize = {307, 308};
    blt.StreamingFlags = 309;
    blt.BackgroundColor = {310, 311, 312, 313};
    blt.DestFormat.Value = 0x91827364;
    blt.DestFlags.Value = 0xCAFE000A;  // two of the low flags, and data
    blt.ProcAmpValues.Brightness.ll = 314 << 16 | 315;
    blt.ProcAmpValues.Contrast.ll = 316 << 16 | 317;
    blt.ProcAmpValues.Hue.ll = 318 << 16 | 319;
    blt.ProcAmpValues.Saturation.ll = 320 << 16 | 321;
    blt.Alpha.ll = 322 << 16 | 323;
    LONG next = 324;
    for (DXVADDI_FILTERVALUES* pFilter :
        {&blt.NoiseFilterLuma, &blt.NoiseFilterChroma, &blt.DetailFilterLuma, &blt.DetailFilterChroma})
    {
        for (DXVADDI_FIXED32* pValue : {&pFilter->Level, &pFilter->Threshold, &pFilter->Radius})
        {
            pValue->ll = next << 16 | (next + 1);
            next += 2;
        }
    }
    blt.pSrcSurfaces = pSamples;
    blt.NumSrcSurfaces = count;
    return blt;
}

}  // namespace tesslo::test
