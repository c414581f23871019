// Blits of the video-process entry of the DLL, field by field.
#include "VideoProcessFixture.h"

#include "TraceLines.h"
#include "TraceText.h"

using namespace tesslo::test;

namespace
{
using VideoProcessBlt = VideoProcessFixture;

std::vector<LONG> Edges(const RECT& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

/// The fields of the blit and of its sample, all but the sample's resource.
const Lines kPrinted = {
    "Alpha: 323 322 21102915",
    "BackgroundColor: 310 311 312 313",
    "ConstrictionSize: 307 308",
    "DestData: 51966",
    "SampleFormat: -1853721756 100 3 7 4 0 6 18",
    "DetailFilterChroma: 343 342 22413655  345 344 22544729  347 346 22675803",
    "DetailFilterLuma: 337 336 22020433  339 338 22151507  341 340 22282581",
    "NoiseFilterChroma: 331 330 21627211  333 332 21758285  335 334 21889359",
    "NoiseFilterLuma: 325 324 21233989  327 326 21365063  329 328 21496137",
    "ProcAmpValues: 315 314 20578619  317 316 20709693  319 318 20840767  321 320 20971841",
    "StreamingFlags: 309",
    "TargetFrame: 0x12e",
    "TargetRect: 303 304 305 306",
    "Start: 0x202",
    "End: 0x204",
    "SrcRect: 211 212 213 214",
    "DstRect: 221 222 223 224",
    "Pal[00]: 0x00 0x01 0x02 0x03",
    "Pal[01]: 0x04 0x05 0x06 0x07",
    "Pal[02]: 0x08 0x09 0x0a 0x0b",
    "Pal[03]: 0x0c 0x0d 0x0e 0x0f",
    "Pal[04]: 0x10 0x11 0x12 0x13",
    "Pal[05]: 0x14 0x15 0x16 0x17",
    "Pal[06]: 0x18 0x19 0x1a 0x1b",
    "Pal[07]: 0x1c 0x1d 0x1e 0x1f",
    "Pal[08]: 0x20 0x21 0x22 0x23",
    "Pal[09]: 0x24 0x25 0x26 0x27",
    "Pal[10]: 0x28 0x29 0x2a 0x2b",
    "Pal[11]: 0x2c 0x2d 0x2e 0x2f",
    "Pal[12]: 0x30 0x31 0x32 0x33",
    "Pal[13]: 0x34 0x35 0x36 0x37",
    "Pal[14]: 0x38 0x39 0x3a 0x3b",
    "Pal[15]: 0x3c 0x3d 0x3e 0x3f",
    "PlanarAlpha: 232 231 15139048",
    "SampleFormat: 966136578 2 3 1 4 5 6 7",
    "SampleFlags: 1 0 1 0 1 0 48879",
};

class VideoProcessBltDetail : public VideoProcessFixture
{
protected:
    VideoProcessBltDetail() : VideoProcessFixture(0x200) {}
};
}  // namespace

TEST_F(VideoProcessBlt, OneSample_IsOneCallOfTheService)
{
    HANDLE hVideo = CreateVideoWithTarget();
    TraceLines trace;
    ASSERT_EQ(BltOnce(hVideo), S_OK);

    EXPECT_EQ(trace.Lines(), (Lines{"=> UMDDdiVideoProcessBlt", ">>> UMDDdiDeviceVideo::Blt",
                                 ">>> UMDGpuDXVA::Blt hVideoProcess:" + Low(hVideo) + " NumSrcSurfaces:1",
                                 ">>> UMDGpuDXVA::InternalSetBltParams", ">>> UMDGpuDXVA::InternalSetBltSamples"}));
    EXPECT_EQ(m_Dxva2.Calls, Lines{"VideoProcessBlt"});
    EXPECT_EQ(m_Dxva2.BltSampleCount, 1u);
    EXPECT_FALSE(m_Dxva2.BltHasCompletion);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, Parameters_EveryField_Arrives)
{
    HANDLE hVideo = CreateVideoWithTarget();
    ASSERT_EQ(BltOnce(hVideo), S_OK);
    const DXVA2_VideoProcessBltParams& params = m_Dxva2.BltParams;
    EXPECT_EQ(params.TargetFrame, 0x0000012D0000012E);
    EXPECT_EQ(Edges(params.TargetRect), (std::vector<LONG>{303, 304, 305, 306}));
    EXPECT_EQ(params.ConstrictionSize.cx, 307);
    EXPECT_EQ(params.ConstrictionSize.cy, 308);
    EXPECT_EQ(params.StreamingFlags, 309u);
    EXPECT_EQ(params.BackgroundColor.Cr, 310);
    EXPECT_EQ(params.BackgroundColor.Cb, 311);
    EXPECT_EQ(params.BackgroundColor.Y, 312);
    EXPECT_EQ(params.BackgroundColor.Alpha, 313);
    EXPECT_EQ(params.DestFormat.value, 0x91827364u);
    EXPECT_EQ(params.DestData, 0xCAFEu);
    const DXVA2_Fixed32* pFixed = &params.ProcAmpValues.Brightness;  // and all after it up to the last filter's radius
    for (LONG i = 0; i < 17; ++i)
        EXPECT_EQ(pFixed[i].ll, (314 + 2 * i) << 16 | (315 + 2 * i)) << "fixed-point number " << i;
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, Sample_EveryField_Arrives)
{
    HANDLE hVideo = CreateVideoWithTarget();
    ASSERT_EQ(BltOnce(hVideo), S_OK);
    const DXVA2_VideoSample& sample = m_Dxva2.BltSample;
    EXPECT_EQ(sample.Start, 0x0000020100000202);
    EXPECT_EQ(sample.End, 0x0000020300000204);
    EXPECT_EQ(sample.SampleFormat.value, 2u | 3 << 8 | 1 << 12 | 4 << 15 | 5 << 18 | 6 << 22 | 7u << 27);
    EXPECT_EQ(Edges(sample.SrcRect), (std::vector<LONG>{211, 212, 213, 214}));
    EXPECT_EQ(Edges(sample.DstRect), (std::vector<LONG>{221, 222, 223, 224}));
    const auto* pPalette = reinterpret_cast<const BYTE*>(sample.Pal);
    for (UINT i = 0; i < 64; ++i)
        EXPECT_EQ(pPalette[i], i) << "palette byte " << i;
    EXPECT_EQ(sample.PlanarAlpha.ll, 0x00E700E8);
    EXPECT_EQ(sample.SampleData, 0xBEEFu);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBltDetail, OneSample_EveryFieldPrintedByName)
{
    HANDLE hVideo = CreateVideoWithTarget();
    TraceLines trace;
    ASSERT_EQ(BltOnce(hVideo), S_OK);

    Lines expected = kPrinted;
    expected.push_back("SrcResource: " + Low(m_pSource->Handle()));
    EXPECT_EQ(trace.Lines(), expected);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, SurfacesAreTheTargetsAndTheSources)
{
    HANDLE hVideo = CreateVideoWithTarget();
    ASSERT_EQ(BltOnce(hVideo), S_OK);
    D3DSURFACE_DESC target = {};
    D3DSURFACE_DESC source = {};
    ASSERT_EQ(m_Dxva2.pBltTarget->GetDesc(&target), S_OK);
    ASSERT_EQ(m_Dxva2.BltSample.SrcSurface->GetDesc(&source), S_OK);
    EXPECT_EQ(target.Width, 64u);
    EXPECT_EQ(target.Height, 32u);
    EXPECT_EQ(source.Width, 16u);
    EXPECT_EQ(source.Height, 16u);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, NoTargetSet_Refused)
{
    HANDLE hVideo = CreateVideo();
    TraceLines trace;
    EXPECT_EQ(BltOnce(hVideo), E_FAIL);
    EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::Blt pCurrentVideoSurface is NULL");
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, AnyNumberOfSamplesButOne_RefusedBeforeTheService)
{
    HANDLE hVideo = CreateVideoWithTarget();
    DXVADDI_VIDEOSAMPLE samples[3] = {};
    for (DXVADDI_VIDEOSAMPLE& sample : samples)
        sample.SrcResource = m_pSource->Handle();
    for (UINT count : {0u, 2u, 3u})
    {
        TraceLines trace;
        EXPECT_EQ(m_Video.Blt(VideoCalls::DistinctBlt(hVideo, samples, count)), E_NOTIMPL);
        EXPECT_EQ(trace.Lines(),
            (Lines{"=> UMDDdiVideoProcessBlt", ">>> UMDDdiDeviceVideo::Blt",
                ">>> UMDGpuDXVA::Blt hVideoProcess:" + Low(hVideo) + " NumSrcSurfaces:" + std::to_string(count),
                ">>> UMDGpuDXVA::InternalSetBltParams", ">>> UMDGpuDXVA::InternalSetBltSamples",
                "UMDGpuDXVA::Blt NumSrcSurfaces:" + std::to_string(count) + " failed!"}));
        EXPECT_EQ(m_Dxva2.Calls, Lines{});
    }
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, SampleWithoutSurface_Refused)
{
    HostResource vertices(m_Session.Device(), VertexBuffer());
    HANDLE hVideo = CreateVideoWithTarget();
    for (HANDLE hSource : {vertices.Handle(), HANDLE{nullptr}})
    {
        TraceLines trace;
        EXPECT_EQ(BltFrom(hVideo, hSource), E_FAIL);
        EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::Blt pSurface is NULL");
        EXPECT_EQ(m_Dxva2.Calls, Lines{});
    }
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcessBlt, ProcessorFails_CodePassed)
{
    HANDLE hVideo = CreateVideoWithTarget();
    m_Dxva2.BltResult = D3DERR_DEVICELOST;
    TraceLines trace;
    EXPECT_EQ(BltOnce(hVideo), D3DERR_DEVICELOST);
    EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::Blt UMDDdiVideoProcessBlt failed! 0x88760868");
    EXPECT_EQ(trace.Lines().size(), 6u);
    m_Video.Destroy(hVideo);
}
