// The six video-process entries of the DLL, on a stand-in for the platform's video service.

#include "FakeDxva2.h"
#include "ImportPatch.h"
#include "TraceLines.h"
#include "TraceText.h"
#include "VideoCalls.h"
#include "host/runtime/HostSession.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace tesslo::test;

namespace
{
using Calls = Lines;

constexpr UINT kMask = 0x103;  ///< errors, entries, video

std::vector<LONG> Edges(const RECT& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

class VideoProcess : public testing::Test
{
protected:
    explicit VideoProcess(UINT mask = kMask) : m_Session({L"TessloWddmUmode.dll", std::nullopt, mask}) {}

    HANDLE CreateVideo()
    {
        D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
        EXPECT_EQ(m_Video.Create(create), S_OK);
        m_Dxva2.Calls.clear();
        return create.hVideoProcess;
    }

    /// A video process device whose target is set.
    HANDLE CreateVideoWithTarget()
    {
        HANDLE hVideo = CreateVideo();
        EXPECT_EQ(m_Video.SetRenderTarget(hVideo, m_pTarget->Handle()), S_OK);
        return hVideo;
    }

    HRESULT BltOnce(HANDLE hVideo)
    {
        DXVADDI_VIDEOSAMPLE sample = VideoCalls::DistinctSample();
        sample.SrcResource = m_pSource->Handle();
        return m_Video.Blt(VideoCalls::DistinctBlt(hVideo, &sample, 1));
    }

    HostSession m_Session;
    FakeDxva2 m_Dxva2{m_Session.Driver().Module()};
    VideoCalls m_Video{m_Session.Device()};
    std::unique_ptr<HostResource> m_pTarget = m_Session.Device().CreateRenderTarget(64, 32);
    std::unique_ptr<HostResource> m_pSource = m_Session.Device().CreateRenderTarget(16, 16);
};

class VideoProcessDetail : public VideoProcess
{
protected:
    VideoProcessDetail() : VideoProcess(0x200) {}
};

/// Replaced malloc of the DLL: refuses one size, and counts what is not freed.
std::size_t g_RefusedSize = 0;
int g_LiveBlocks = 0;

void* CountingMalloc(std::size_t size)
{
    if (size == g_RefusedSize)
        return nullptr;
    ++g_LiveBlocks;
    return std::malloc(size);
}

void CountingFree(void* pBlock)
{
    g_LiveBlocks -= pBlock != nullptr;
    std::free(pBlock);
}

class VideoProcessMemory : public VideoProcess
{
protected:
    void SetUp() override { g_LiveBlocks = 0; }
    void TearDown() override { g_RefusedSize = 0; }

    ImportPatch m_Malloc{m_Session.Driver().Module(), "msvcrt.dll", "malloc", CountingMalloc};
    ImportPatch m_Free{m_Session.Driver().Module(), "msvcrt.dll", "free", CountingFree};
};
}  // namespace

TEST_F(VideoProcess, Create_Succeeds_ProcessorIsMadeAsTheRuntimeAsked)
{
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
    TraceLines trace;
    EXPECT_EQ(m_Video.Create(create), S_OK);

    EXPECT_EQ(trace.Lines(),
        (Lines{"=> UMDDdiCreateVideoProcessDevice", ">>> UMDDdiDeviceVideo::Create", ">>> UMDGpuDXVA::Create 22 3"}));
    EXPECT_EQ(m_Dxva2.Calls, (Calls{"DXVA2CreateVideoService", "CreateVideoProcessor"}));
    const GUID service = {0xFC51A552, 0xD5E7, 0x11D9, {0xAF, 0x55, 0x00, 0x05, 0x4E, 0x43, 0xFF, 0x02}};
    EXPECT_TRUE(IsEqualGUID(m_Dxva2.ServiceIid, service));
    EXPECT_NE(m_Dxva2.pServiceDevice, nullptr);
    EXPECT_TRUE(IsEqualGUID(m_Dxva2.ProcessorGuid, VideoCalls::kProgressive));
    UINT words[10];
    static_assert(sizeof(words) == sizeof(m_Dxva2.ProcessorDesc));
    std::memcpy(words, &m_Dxva2.ProcessorDesc, sizeof(words));
    for (UINT i = 0; i < 10; ++i)
        EXPECT_EQ(words[i], 101 + i) << "word " << i;
    EXPECT_EQ(m_Dxva2.ProcessorFormat, D3DFMT_X8R8G8B8);
    EXPECT_EQ(m_Dxva2.ProcessorSubStreams, 3u);
    EXPECT_NE(create.hVideoProcess, nullptr);
    m_Video.Destroy(create.hVideoProcess);
}

TEST_F(VideoProcess, Create_ServiceFails_CodePassedAndNothingLeft)
{
    m_Dxva2.ServiceResult = D3DERR_NOTAVAILABLE;
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
    TraceLines trace;
    EXPECT_EQ(m_Video.Create(create), D3DERR_NOTAVAILABLE);

    EXPECT_EQ(trace.Lines(),
        (Lines{"=> UMDDdiCreateVideoProcessDevice", ">>> UMDDdiDeviceVideo::Create", ">>> UMDGpuDXVA::Create 22 3",
            "UMDGpuDXVA::Create DXVA2CreateVideoService failed! 0x8876086a",
            "UMDDdiCreateVideoProcessDevice pDeviceVideo->Create failed! 0x8876086a"}));
    EXPECT_EQ(m_Dxva2.Calls, Calls{"DXVA2CreateVideoService"});
    EXPECT_EQ(m_Dxva2.LiveObjects, 0);
    EXPECT_EQ(create.hVideoProcess, nullptr);
}

TEST_F(VideoProcess, Create_ProcessorFails_ServiceReleasedAndCodePassed)
{
    m_Dxva2.ProcessorResult = D3DERR_INVALIDCALL;
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
    TraceLines trace;
    EXPECT_EQ(m_Video.Create(create), D3DERR_INVALIDCALL);

    EXPECT_EQ(
        trace.Lines(), (Lines{"=> UMDDdiCreateVideoProcessDevice", ">>> UMDDdiDeviceVideo::Create",
                           ">>> UMDGpuDXVA::Create 22 3", "UMDGpuDXVA::Create CreateVideoProcessor failed! 0x8876086c",
                           "UMDDdiCreateVideoProcessDevice pDeviceVideo->Create failed! 0x8876086c"}));
    EXPECT_EQ(m_Dxva2.Calls, (Calls{"DXVA2CreateVideoService", "CreateVideoProcessor", "service freed"}));
    EXPECT_EQ(m_Dxva2.LiveObjects, 0);
    EXPECT_EQ(create.hVideoProcess, nullptr);
}

TEST_F(VideoProcess, Destroy_ProcessorThenServiceReleased)
{
    HANDLE hVideo = CreateVideo();
    TraceLines trace;
    EXPECT_EQ(m_Video.Destroy(hVideo), S_OK);

    EXPECT_EQ(trace.Lines(), (Lines{"=> UMDDdiDestroyVideoProcessDevice", ">>> UMDDdiDevice::DeviceVideoProcessDestroy",
                                 ">>> UMDDdiDevice::DeviceVideoProcessDestroy"}));
    EXPECT_EQ(m_Dxva2.Calls, (Calls{"processor freed", "service freed"}));
    EXPECT_EQ(m_Dxva2.LiveObjects, 0);
}

TEST_F(VideoProcessMemory, CreateAndDestroy_ManyTimes_NothingLeft)
{
    for (int round = 0; round < 200; ++round)
    {
        D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
        m_Dxva2.ServiceResult = round % 4 == 1 ? E_FAIL : S_OK;
        m_Dxva2.ProcessorResult = round % 4 == 2 ? E_FAIL : S_OK;
        if (SUCCEEDED(m_Video.Create(create)))
        {
            EXPECT_GT(g_LiveBlocks, 0);
            m_Video.Destroy(create.hVideoProcess);
        }
    }
    EXPECT_EQ(g_LiveBlocks, 0);
    EXPECT_EQ(m_Dxva2.LiveObjects, 0);
}

TEST_F(VideoProcessMemory, Create_NoMemoryForTheObject_RefusedBeforeTheService)
{
    g_RefusedSize = sizeof(void*);  // the object holds one pointer
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
    TraceLines trace;
    EXPECT_EQ(m_Video.Create(create), E_OUTOFMEMORY);

    EXPECT_EQ(
        trace.Lines(), (Lines{"=> UMDDdiCreateVideoProcessDevice", "UMDDdiCreateVideoProcessDevice E_OUTOFMEMORY"}));
    EXPECT_EQ(m_Dxva2.Calls, Calls{});
}

TEST_F(VideoProcessMemory, Create_NoMemoryForTheProcessorsOwner_RefusedAndNothingLeft)
{
    g_RefusedSize = 4 * sizeof(void*);  // device, processor, service, target
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
    TraceLines trace;
    EXPECT_EQ(m_Video.Create(create), E_OUTOFMEMORY);

    EXPECT_EQ(trace.Lines(), (Lines{"=> UMDDdiCreateVideoProcessDevice", "UMDDdiDeviceVideo::UMDDdiDeviceVideo failed!",
                                 ">>> UMDDdiDeviceVideo::Create",
                                 "UMDDdiCreateVideoProcessDevice pDeviceVideo->Create failed! 0x8007000e"}));
    EXPECT_EQ(m_Dxva2.Calls, Calls{});
    const int liveBlocks = g_LiveBlocks;  // the first refusal of a process leaves what the C++ library keeps for good
    EXPECT_EQ(m_Video.Create(create), E_OUTOFMEMORY);
    EXPECT_EQ(g_LiveBlocks, liveBlocks);
}

TEST_F(VideoProcess, SetRenderTarget_Surface_IsTheDevicesRenderTargetToo)
{
    HANDLE hVideo = CreateVideo();
    TraceLines trace;
    EXPECT_EQ(m_Video.SetRenderTarget(hVideo, m_pTarget->Handle()), S_OK);

    EXPECT_EQ(trace.Lines(), (Lines{"=> UMDDdiVideoProcessSetRenderTarget RT:" + Low(m_pTarget->Handle()),
                                 ">>> UMDDdiDeviceVideo::SetRenderTarget",
                                 ">>> UMDGpuDXVA::SetRenderTarget hVideoProcess:" + Low(hVideo) +
                                     " hRenderTarget:" + Low(m_pTarget->Handle())}));
    m_Session.Device().Clear(0x123456);
    HostImage expected(64, 32);
    expected.Fill(m_pTarget->Rect(), 0x123456);
    EXPECT_EQ(m_Session.Device().ReadBack(*m_pTarget), expected);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, SetRenderTarget_NoSurface_RefusedAndTargetBeforeStays)
{
    HostResourceDescription buffer;
    buffer.m_Width = 256;
    buffer.m_Flags.VertexBuffer = 1;
    HostResource vertices(m_Session.Device(), buffer);
    HANDLE hVideo = CreateVideoWithTarget();
    ASSERT_EQ(BltOnce(hVideo), S_OK);
    IDirect3DSurface9* const pSurfaceBefore = m_Dxva2.pBltTarget;

    for (HANDLE hTarget : {vertices.Handle(), HANDLE{nullptr}})
    {
        TraceLines trace;
        EXPECT_EQ(m_Video.SetRenderTarget(hVideo, hTarget), E_FAIL);
        EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::SetRenderTarget pSurface is NULL");
        EXPECT_EQ(trace.Lines().size(), 4u);
        EXPECT_EQ(BltOnce(hVideo), S_OK);
        EXPECT_EQ(m_Dxva2.pBltTarget, pSurfaceBefore);
    }
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, SetRenderTarget_DeviceRefuses_CodePassedAndTargetIsTheNewOne)
{
    HostResourceDescription plain;
    plain.m_Width = 64;
    plain.m_Height = 32;
    HostResource noTarget(m_Session.Device(), plain);
    HANDLE hVideo = CreateVideoWithTarget();
    ASSERT_EQ(BltOnce(hVideo), S_OK);
    IDirect3DSurface9* const pSurfaceBefore = m_Dxva2.pBltTarget;

    TraceLines trace;
    EXPECT_EQ(m_Video.SetRenderTarget(hVideo, noTarget.Handle()), D3DERR_INVALIDCALL);
    EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::SetRenderTarget SetRenderTarget failed! 0x8876086c");
    EXPECT_EQ(BltOnce(hVideo), S_OK);
    EXPECT_NE(m_Dxva2.pBltTarget, pSurfaceBefore);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, BeginAndEndFrame_OnlyTraced)
{
    HANDLE hVideo = CreateVideo();
    HANDLE hComplete = reinterpret_cast<HANDLE>(0x5A5A5A5A);
    TraceLines trace;
    EXPECT_EQ(m_Video.BeginFrame(hVideo), S_OK);
    EXPECT_EQ(m_Video.EndFrame(hVideo, &hComplete), S_OK);

    EXPECT_EQ(trace.Lines(),
        (Lines{"=> UMDDdiVideoProcessBeginFrame", ">>> UMDDdiDeviceVideo::BeginFrame",
            ">>> UMDGpuDXVA::BeginFrame hVideoProcess:" + Low(hVideo), "=> UMDDdiVideoProcessEndFrame",
            ">>> UMDDdiDeviceVideo::EndFrame", ">>> UMDGpuDXVA::EndFrame hVideoProcess:" + Low(hVideo)}));
    EXPECT_EQ(hComplete, reinterpret_cast<HANDLE>(0x5A5A5A5A));
    EXPECT_EQ(m_Dxva2.Calls, Calls{});
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, Blt_OneSample_EveryFieldArrives)
{
    HANDLE hVideo = CreateVideoWithTarget();
    TraceLines trace;
    ASSERT_EQ(BltOnce(hVideo), S_OK);

    EXPECT_EQ(trace.Lines(), (Lines{"=> UMDDdiVideoProcessBlt", ">>> UMDDdiDeviceVideo::Blt",
                                 ">>> UMDGpuDXVA::Blt hVideoProcess:" + Low(hVideo) + " NumSrcSurfaces:1",
                                 ">>> UMDGpuDXVA::InternalSetBltParams", ">>> UMDGpuDXVA::InternalSetBltSamples"}));
    EXPECT_EQ(m_Dxva2.Calls, Calls{"VideoProcessBlt"});
    EXPECT_EQ(m_Dxva2.BltSampleCount, 1u);
    EXPECT_FALSE(m_Dxva2.BltHasCompletion);

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

TEST_F(VideoProcessDetail, Blt_OneSample_EveryFieldPrintedByName)
{
    HANDLE hVideo = CreateVideoWithTarget();
    TraceLines trace;
    ASSERT_EQ(BltOnce(hVideo), S_OK);

    // clang-format off
    EXPECT_EQ(trace.Lines(), (Lines{
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
            "SrcResource: " + Low(m_pSource->Handle())}));
    // clang-format on
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, Blt_SurfacesAreTheTargetsAndTheSources)
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

TEST_F(VideoProcess, Blt_NoTargetSet_Refused)
{
    HANDLE hVideo = CreateVideo();
    TraceLines trace;
    EXPECT_EQ(BltOnce(hVideo), E_FAIL);
    EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::Blt pCurrentVideoSurface is NULL");
    EXPECT_EQ(m_Dxva2.Calls, Calls{});
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, Blt_AnyNumberOfSamplesButOne_RefusedBeforeTheService)
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
        EXPECT_EQ(m_Dxva2.Calls, Calls{});
    }
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, Blt_SampleWithoutSurface_Refused)
{
    HostResourceDescription buffer;
    buffer.m_Width = 256;
    buffer.m_Flags.VertexBuffer = 1;
    HostResource vertices(m_Session.Device(), buffer);
    HANDLE hVideo = CreateVideoWithTarget();
    for (HANDLE hSource : {vertices.Handle(), HANDLE{nullptr}})
    {
        DXVADDI_VIDEOSAMPLE sample = VideoCalls::DistinctSample();
        sample.SrcResource = hSource;
        TraceLines trace;
        EXPECT_EQ(m_Video.Blt(VideoCalls::DistinctBlt(hVideo, &sample, 1)), E_FAIL);
        EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::Blt pSurface is NULL");
        EXPECT_EQ(m_Dxva2.Calls, Calls{});
    }
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, Blt_ProcessorFails_CodePassed)
{
    HANDLE hVideo = CreateVideoWithTarget();
    m_Dxva2.BltResult = D3DERR_DEVICELOST;
    TraceLines trace;
    EXPECT_EQ(BltOnce(hVideo), D3DERR_DEVICELOST);
    EXPECT_EQ(trace.Lines().back(), "UMDGpuDXVA::Blt UMDDdiVideoProcessBlt failed! 0x88760868");
    EXPECT_EQ(trace.Lines().size(), 6u);
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, EveryEntry_NullHandle_Refused)
{
    EXPECT_EQ(m_Video.SetRenderTarget(nullptr, m_pTarget->Handle()), E_FAIL);
    EXPECT_EQ(m_Video.BeginFrame(nullptr), E_FAIL);
    EXPECT_EQ(m_Video.EndFrame(nullptr), E_FAIL);
    EXPECT_EQ(BltOnce(nullptr), E_FAIL);
    EXPECT_EQ(m_Video.Destroy(nullptr), E_FAIL);
    EXPECT_EQ(m_Dxva2.Calls, Calls{});
}
