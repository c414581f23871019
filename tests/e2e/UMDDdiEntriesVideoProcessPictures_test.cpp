// Video-processing blits through the six entries, on the platform's own service: pictures against pictures.

#include "PlainVideo.h"
#include "VideoCalls.h"
#include "host/runtime/HostSession.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
constexpr LONG kOne = 1 << 16;  ///< as a 16.16 fixed-point number

/// A picture of four colours that is scaled into a part of the target; the rest of the target rectangle becomes the
/// background colour, and what lies outside of it stays as it was.
PlainVideoBlt Scaled()
{
    PlainVideoBlt blt = {};
    blt.SourceSize = {32, 32};
    blt.TargetSize = {96, 64};
    blt.SourceFills = {{{0, 0, 16, 16}, 0xE03030}, {{16, 0, 32, 16}, 0x30C040}, {{0, 16, 16, 32}, 0x3060E0},
        {{16, 16, 32, 32}, 0xF0F0F0}};
    blt.TargetColor = 0x102030;
    blt.Desc.SampleWidth = 32;
    blt.Desc.SampleHeight = 32;
    blt.Desc.SampleFormat.SampleFormat = DXVA2_SampleProgressiveFrame;
    blt.Desc.Format = D3DFMT_X8R8G8B8;
    blt.Desc.InputSampleFreq = {30, 1};
    blt.Desc.OutputFrameFreq = {60, 1};
    blt.Params.TargetRect = {8, 4, 88, 60};
    blt.Params.ConstrictionSize = {80, 56};
    blt.Params.BackgroundColor = {0x8000, 0x8000, 0x4000, 0xFFFF};
    blt.Params.DestFormat.SampleFormat = DXVA2_SampleProgressiveFrame;
    blt.Params.ProcAmpValues.Contrast.ll = kOne;
    blt.Params.ProcAmpValues.Saturation.ll = kOne;
    blt.Params.Alpha.ll = kOne;
    blt.Sample.End = 1;
    blt.Sample.SampleFormat.SampleFormat = DXVA2_SampleProgressiveFrame;
    blt.Sample.SrcRect = {0, 0, 32, 32};
    blt.Sample.DstRect = {16, 0, 80, 64};
    blt.Sample.PlanarAlpha.ll = kOne;
    return blt;
}

/// The same records as the runtime writes them: member by member, so that the driver's copies are not trusted.
D3DDDIARG_CREATEVIDEOPROCESSDEVICE DdiCreate(const DXVA2_VideoDesc& desc)
{
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = {};
    create.pVideoProcGuid = &VideoCalls::kProgressive;
    create.VideoDesc.SampleWidth = desc.SampleWidth;
    create.VideoDesc.SampleHeight = desc.SampleHeight;
    create.VideoDesc.SampleFormat.Value = desc.SampleFormat.value;
    create.VideoDesc.Format = static_cast<D3DDDIFORMAT>(desc.Format);
    create.VideoDesc.InputSampleFreq = {desc.InputSampleFreq.Numerator, desc.InputSampleFreq.Denominator};
    create.VideoDesc.OutputFrameFreq = {desc.OutputFrameFreq.Numerator, desc.OutputFrameFreq.Denominator};
    create.RenderTargetFormat = D3DDDIFMT_X8R8G8B8;
    return create;
}

DXVADDI_VIDEOSAMPLE DdiSample(const DXVA2_VideoSample& sample, HANDLE hSource)
{
    DXVADDI_VIDEOSAMPLE ddi = {};
    ddi.Start = sample.Start;
    ddi.End = sample.End;
    ddi.SampleFormat.Value = sample.SampleFormat.value;
    ddi.SrcResource = hSource;
    ddi.SrcRect = sample.SrcRect;
    ddi.DstRect = sample.DstRect;
    ddi.PlanarAlpha.ll = sample.PlanarAlpha.ll;
    return ddi;
}

D3DDDIARG_VIDEOPROCESSBLT DdiBlt(const DXVA2_VideoProcessBltParams& params, HANDLE hVideo, DXVADDI_VIDEOSAMPLE* pSample)
{
    D3DDDIARG_VIDEOPROCESSBLT ddi = {};
    ddi.hVideoProcess = hVideo;
    ddi.TargetRect = params.TargetRect;
    ddi.ConstrictionSize = params.ConstrictionSize;
    ddi.BackgroundColor = {
        params.BackgroundColor.Cr, params.BackgroundColor.Cb, params.BackgroundColor.Y, params.BackgroundColor.Alpha};
    ddi.DestFormat.Value = params.DestFormat.value;
    ddi.ProcAmpValues.Contrast.ll = params.ProcAmpValues.Contrast.ll;
    ddi.ProcAmpValues.Saturation.ll = params.ProcAmpValues.Saturation.ll;
    ddi.Alpha.ll = params.Alpha.ll;
    ddi.pSrcSurfaces = pSample;
    ddi.NumSrcSurfaces = 1;
    return ddi;
}

HostImage RunThroughTheDriver(const PlainVideoBlt& blt)
{
    HostSession session({L"TessloWddmUmode.dll", std::nullopt, 0});
    HostDevice& device = session.Device();
    const VideoCalls video(device);
    auto pSource = device.CreateRenderTarget(blt.SourceSize.cx, blt.SourceSize.cy);
    auto pTarget = device.CreateRenderTarget(blt.TargetSize.cx, blt.TargetSize.cy);
    for (const PlainVideoFill& fill : blt.SourceFills)
        device.ColorFill(*pSource, fill.Rect, fill.Color);
    device.ColorFill(*pTarget, pTarget->Rect(), blt.TargetColor);

    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = DdiCreate(blt.Desc);
    HostCheck(video.Create(create), "pfnCreateVideoProcessDevice");
    const HANDLE hVideo = create.hVideoProcess;
    HostCheck(video.SetRenderTarget(hVideo, pTarget->Handle()), "pfnSetVideoProcessRenderTarget");
    HostCheck(video.BeginFrame(hVideo), "pfnVideoProcessBeginFrame");
    DXVADDI_VIDEOSAMPLE sample = DdiSample(blt.Sample, pSource->Handle());
    HostCheck(video.Blt(DdiBlt(blt.Params, hVideo, &sample)), "pfnVideoProcessBlt");
    HostCheck(video.EndFrame(hVideo), "pfnVideoProcessEndFrame");
    HostCheck(video.Destroy(hVideo), "pfnDestroyVideoProcessDevice");
    return device.ReadBack(*pTarget);
}
}  // namespace

TEST(VideoProcessPicture, ScaledIntoAPart_SameAsThePlainService)
{
    const PlainVideoBlt blt = Scaled();
    const HostImage picture = RunThroughTheDriver(blt);
    EXPECT_EQ(picture, RunPlainVideoBlt(blt));

    EXPECT_EQ(picture.At(24, 8), 0xE03030u);  // well inside each of the four colours
    EXPECT_EQ(picture.At(72, 8), 0x30C040u);
    EXPECT_EQ(picture.At(24, 56), 0x3060E0u);
    EXPECT_EQ(picture.At(72, 56), 0xF0F0F0u);
    EXPECT_EQ(picture.At(2, 2), 0x102030u);    // outside of the target rectangle
    EXPECT_NE(picture.At(10, 30), 0x102030u);  // background
    EXPECT_EQ(picture.At(10, 30), picture.At(85, 30));
}

TEST(VideoProcessPicture, PartOfTheSource_SameAsThePlainService)
{
    PlainVideoBlt blt = Scaled();
    blt.Sample.SrcRect = {8, 20, 24, 32};
    blt.Sample.DstRect = {20, 10, 60, 50};
    const HostImage picture = RunThroughTheDriver(blt);
    EXPECT_EQ(picture, RunPlainVideoBlt(blt));
    EXPECT_EQ(picture.At(25, 30), 0x3060E0u);
    EXPECT_EQ(picture.At(55, 30), 0xF0F0F0u);
}

TEST(VideoProcessPicture, WholeTargetWithoutScaling_IsTheSource)
{
    PlainVideoBlt blt = Scaled();
    blt.TargetSize = {32, 32};
    blt.Params.TargetRect = {0, 0, 32, 32};
    blt.Params.ConstrictionSize = {32, 32};
    blt.Sample.DstRect = {0, 0, 32, 32};
    HostImage source(32, 32);
    for (const PlainVideoFill& fill : blt.SourceFills)
        source.Fill(fill.Rect, fill.Color);
    EXPECT_EQ(RunThroughTheDriver(blt), source);
}
