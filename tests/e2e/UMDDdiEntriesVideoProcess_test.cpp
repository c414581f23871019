// The six video-process entries of the DLL: life, render target, frame. Blits have a file of their own.
#include "VideoProcessFixture.h"

#include "ImportPatch.h"
#include "TraceLines.h"
#include "TraceText.h"

#include <cstdlib>
#include <cstring>

using namespace tesslo::test;

namespace
{
using VideoProcess = VideoProcessFixture;

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
    EXPECT_EQ(m_Dxva2.Calls, (Lines{"DXVA2CreateVideoService", "CreateVideoProcessor"}));
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
    EXPECT_EQ(m_Dxva2.Calls, Lines{"DXVA2CreateVideoService"});
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
    EXPECT_EQ(m_Dxva2.Calls, (Lines{"DXVA2CreateVideoService", "CreateVideoProcessor", "service freed"}));
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
    EXPECT_EQ(m_Dxva2.Calls, (Lines{"processor freed", "service freed"}));
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
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
}

TEST_F(VideoProcessMemory, Create_NoMemoryForTheProcessorsOwner_RefusedAndNothingLeft)
{
    g_RefusedSize = 5 * sizeof(void*);  // device, processor, service, target and its surface
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
    TraceLines trace;
    EXPECT_EQ(m_Video.Create(create), E_OUTOFMEMORY);

    EXPECT_EQ(trace.Lines(), (Lines{"=> UMDDdiCreateVideoProcessDevice", "UMDDdiDeviceVideo::UMDDdiDeviceVideo failed!",
                                 ">>> UMDDdiDeviceVideo::Create",
                                 "UMDDdiCreateVideoProcessDevice pDeviceVideo->Create failed! 0x8007000e"}));
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
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
    HostResource vertices(m_Session.Device(), VertexBuffer());
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
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
    m_Video.Destroy(hVideo);
}

TEST_F(VideoProcess, EveryEntry_NullHandle_Refused)
{
    EXPECT_EQ(m_Video.SetRenderTarget(nullptr, m_pTarget->Handle()), E_FAIL);
    EXPECT_EQ(m_Video.BeginFrame(nullptr), E_FAIL);
    EXPECT_EQ(m_Video.EndFrame(nullptr), E_FAIL);
    EXPECT_EQ(BltOnce(nullptr), E_FAIL);
    EXPECT_EQ(m_Video.Destroy(nullptr), E_FAIL);
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
}
