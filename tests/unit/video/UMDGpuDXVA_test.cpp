// The video processor's owner on a fake delegated device and a stand-in for the platform's video service: what lives
// after each order of calls, and what each failing call leaves.
#include "FakeDxva2.h"
#include "ResourceFixture.h"

#include "resources/UMDRscRenderTargetCapable.h"
#include "video/UMDGpuDXVA.h"

#include <memory>
#include <optional>

using namespace tesslo::test;

namespace
{
constexpr GUID kProcessor = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
constexpr UINT kVideoAndErrors = UMDTRACE_VIDEO | UMDTRACE_ERROR;
const HANDLE kVideoHandle = reinterpret_cast<HANDLE>(0x12345678000ABCD0);

const Lines kCreated = {"DXVA2CreateVideoService", "CreateVideoProcessor"};
const Lines kFreed = {"processor freed", "service freed"};

Lines Joined(Lines first, const Lines& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class UMDGpuDXVATest : public ResourceFixture
{
protected:
    void SetUp() override
    {
        ResourceFixture::SetUp();
        ASSERT_NE(Device().GetDevice(), nullptr) << "the hidden window needs a display";
        m_Target.emplace(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 64, 32);
        m_Source.emplace(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 16, 16);
        m_pTarget = Create<UMDRscRenderTargetCapable>(*m_Target);
        m_pSource = Create<UMDRscRenderTargetCapable>(*m_Source);
        m_pVideo = std::make_unique<UMDGpuDXVA>(&Device());
        ForgetCalls();
    }

    void TearDown() override
    {
        m_pVideo.reset();
        EXPECT_EQ(m_Dxva2.LiveObjects, 0);
        m_Fake.SetRenderTarget(0, nullptr);
        ResourceFixture::TearDown();
    }

    HRESULT CreateVideo()
    {
        D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = {};
        create.pVideoProcGuid = &kProcessor;
        create.RenderTargetFormat = D3DDDIFMT_X8R8G8B8;
        create.MaxSubStreams = 3;
        return m_pVideo->Create(&create);
    }

    HRESULT SetTarget(UMDRscBase* pTarget)
    {
        const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET set = {kVideoHandle, ToHandle(pTarget), 0};
        return m_pVideo->SetRenderTarget(&set);
    }

    HRESULT BltOnce()
    {
        DXVADDI_VIDEOSAMPLE sample = {};
        sample.SrcResource = ToHandle(m_pSource);
        D3DDDIARG_VIDEOPROCESSBLT blt = {};
        blt.hVideoProcess = kVideoHandle;
        blt.pSrcSurfaces = &sample;
        blt.NumSrcSurfaces = 1;
        return m_pVideo->Blt(&blt);
    }

    /// What the operation prints on the video and error levels.
    static Lines TraceOf(const std::function<void()>& operation) { return TraceAt(kVideoAndErrors, operation); }

    FakeDxva2 m_Dxva2;
    std::optional<CreateRequest> m_Target;
    std::optional<CreateRequest> m_Source;
    UMDRscRenderTargetCapable* m_pTarget = nullptr;
    UMDRscRenderTargetCapable* m_pSource = nullptr;
    std::unique_ptr<UMDGpuDXVA> m_pVideo;
};

const Lines kBltEntry = {
    ">>> UMDGpuDXVA::Blt hVideoProcess:0xabcd0 NumSrcSurfaces:1\n",
    ">>> UMDGpuDXVA::InternalSetBltParams\n",
    ">>> UMDGpuDXVA::InternalSetBltSamples\n",
};

TEST_F(UMDGpuDXVATest, Create_Succeeds_ServiceIsOfTheDelegatedDeviceAndNothingElseIsCalled)
{
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(CreateVideo(), S_OK); }), Lines{">>> UMDGpuDXVA::Create 22 3\n"});
    EXPECT_EQ(m_Dxva2.Calls, kCreated);
    EXPECT_EQ(m_Dxva2.pServiceDevice, &m_Fake);
    EXPECT_TRUE(IsEqualGUID(m_Dxva2.ProcessorGuid, kProcessor));
    EXPECT_EQ(m_Dxva2.LiveObjects, 2);
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDGpuDXVATest, Create_Twice_FirstPairIsReleasedOnceTheSecondStands)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    m_Dxva2.Calls.clear();
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(m_Dxva2.Calls, Joined(kCreated, kFreed));
    EXPECT_EQ(m_Dxva2.LiveObjects, 2);
}

TEST_F(UMDGpuDXVATest, Create_SecondFails_FirstPairStaysAndBlits)
{
    struct Row
    {
        HRESULT Service;
        HRESULT Processor;
        Lines Calls;
    };
    const Row rows[] = {
        {kRefused, S_OK, {"DXVA2CreateVideoService"}},
        {S_OK, kRefused, {"DXVA2CreateVideoService", "CreateVideoProcessor", "service freed"}},
    };
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    for (const Row& row : rows)
    {
        SCOPED_TRACE(row.Calls.back());
        m_Dxva2.ServiceResult = row.Service;
        m_Dxva2.ProcessorResult = row.Processor;
        m_Dxva2.Calls.clear();
        EXPECT_EQ(CreateVideo(), kRefused);
        EXPECT_EQ(m_Dxva2.Calls, row.Calls);
        EXPECT_EQ(m_Dxva2.LiveObjects, 2);
        EXPECT_EQ(BltOnce(), S_OK);
    }
}

TEST_F(UMDGpuDXVATest, Create_ServiceCallFails_ItsCodeAndLineAndNothingLives)
{
    struct Row
    {
        HRESULT Service;
        HRESULT Processor;
        Lines Calls;
        std::string Error;
    };
    const Row rows[] = {
        {D3DERR_NOTAVAILABLE, S_OK, {"DXVA2CreateVideoService"},
            "UMDGpuDXVA::Create DXVA2CreateVideoService failed! 0x8876086a\n"},
        {S_OK, D3DERR_INVALIDCALL, {"DXVA2CreateVideoService", "CreateVideoProcessor", "service freed"},
            "UMDGpuDXVA::Create CreateVideoProcessor failed! 0x8876086c\n"},
    };
    for (const Row& row : rows)
    {
        m_Dxva2.ServiceResult = row.Service;
        m_Dxva2.ProcessorResult = row.Processor;
        m_Dxva2.Calls.clear();
        HRESULT hr = S_OK;
        EXPECT_EQ(TraceOf([&] { hr = CreateVideo(); }), (Lines{">>> UMDGpuDXVA::Create 22 3\n", row.Error}));
        EXPECT_EQ(hr, FAILED(row.Service) ? row.Service : row.Processor);
        EXPECT_EQ(m_Dxva2.Calls, row.Calls);
        EXPECT_EQ(m_Dxva2.LiveObjects, 0);
    }
}

TEST_F(UMDGpuDXVATest, Create_NoDelegatedDevice_RefusedBeforeTheService)
{
    UMDDdiDevice neverStarted(m_Kernel.RuntimeHandle(), 9, 0x2003, &m_Adapter, nullptr, &m_Callbacks);
    m_pVideo = std::make_unique<UMDGpuDXVA>(&neverStarted);
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(CreateVideo(), E_FAIL); }),
        (Lines{">>> UMDGpuDXVA::Create 22 3\n", "UMDGpuDXVA::Create DXVA2CreateVideoService failed! 0x80004005\n"}));
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
    m_pVideo.reset();
}

TEST_F(UMDGpuDXVATest, Destroy_Twice_ReleasedOnceInOrderAndBothSucceed)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    m_Dxva2.Calls.clear();
    for (int round = 0; round < 2; round++)
    {
        EXPECT_EQ(TraceOf([&] { EXPECT_EQ(m_pVideo->Destroy(), S_OK); }),
            Lines{">>> UMDDdiDevice::DeviceVideoProcessDestroy\n"});
        EXPECT_EQ(m_Dxva2.Calls, kFreed);
        EXPECT_EQ(m_Dxva2.LiveObjects, 0);
    }
}

TEST_F(UMDGpuDXVATest, Destroy_WithoutCreate_SucceedsAndCallsNothing)
{
    EXPECT_EQ(
        TraceOf([&] { EXPECT_EQ(m_pVideo->Destroy(), S_OK); }), Lines{">>> UMDDdiDevice::DeviceVideoProcessDestroy\n"});
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDGpuDXVATest, Destroy_ThenCreate_BlitsAgain)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    EXPECT_EQ(m_pVideo->Destroy(), S_OK);
    EXPECT_EQ(CreateVideo(), S_OK);
    m_Dxva2.Calls.clear();
    EXPECT_EQ(BltOnce(), S_OK);
    EXPECT_EQ(m_Dxva2.Calls, Lines{"VideoProcessBlt"});
}

TEST_F(UMDGpuDXVATest, Destructor_WithoutDestroy_ReleasesProcessorThenServiceSilently)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    m_Dxva2.Calls.clear();
    EXPECT_EQ(TraceOf([&] { m_pVideo.reset(); }), Lines{});
    EXPECT_EQ(m_Dxva2.Calls, kFreed);
    EXPECT_EQ(m_Dxva2.LiveObjects, 0);
}

TEST_F(UMDGpuDXVATest, SetRenderTarget_Surface_IsRenderTargetZeroOfTheDelegatedDevice)
{
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"SetRenderTarget(0, surface#1)"});
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
}

TEST_F(UMDGpuDXVATest, SetRenderTarget_DeviceFails_ItsCodeAndLineAndBlitsGoToTheNewTarget)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    m_Fake.Fail("SetRenderTarget", kRefused, 1);
    HRESULT hr = S_OK;
    EXPECT_EQ(ErrorsOf([&] { hr = SetTarget(m_pSource); }),
        Lines{"UMDGpuDXVA::SetRenderTarget SetRenderTarget failed! 0x8876086a\n"});
    EXPECT_EQ(hr, kRefused);
    EXPECT_EQ(BltOnce(), S_OK);
    EXPECT_EQ(m_Dxva2.pBltTarget, m_pSource->GetSurface(0, 0));
}

TEST_F(UMDGpuDXVATest, SetRenderTarget_NoDelegatedDevice_RefusedAndTheTargetIsTheNewOne)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    Device().DestroyThreads();
    ForgetCalls();
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(SetTarget(m_pTarget), E_FAIL); }),
        Lines{"UMDGpuDXVA::SetRenderTarget SetRenderTarget failed! 0x80004005\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(BltOnce(), S_OK);
    EXPECT_EQ(m_Dxva2.pBltTarget, m_pTarget->GetSurface(0, 0));
}

TEST_F(UMDGpuDXVATest, Blt_TargetWasDestroyed_GoesToTheSurfaceThatItHad)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    const IDirect3DSurface9* pSurface = m_pTarget->GetSurface(0, 0);
    m_Fake.SetRenderTarget(0, nullptr);
    Destroy(m_pTarget);
    EXPECT_EQ(BltOnce(), S_OK);
    EXPECT_EQ(m_Dxva2.pBltTarget, pSurface);
    m_pVideo.reset();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{"surface#2"});
}

TEST_F(UMDGpuDXVATest, Blt_TexturesWithLevels_TargetAndSourceAreLevelZeroWhateverTheIndices)
{
    constexpr UINT kFlags = kFlagTexture | kFlagRenderTarget;
    CreateRequest targetRequest(kFlags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 64, 32, 3);
    CreateRequest sourceRequest(kFlags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 16, 16, 3);
    auto* pTarget = Create<UMDRscRenderTargetCapable>(targetRequest);
    auto* pSource = Create<UMDRscRenderTargetCapable>(sourceRequest);
    EXPECT_EQ(CreateVideo(), S_OK);
    const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET set = {kVideoHandle, ToHandle(pTarget), 1};
    EXPECT_EQ(m_pVideo->SetRenderTarget(&set), S_OK);
    DXVADDI_VIDEOSAMPLE sample = {};
    sample.SrcResource = ToHandle(pSource);
    sample.SrcSubResourceIndex = 2;
    D3DDDIARG_VIDEOPROCESSBLT blt = {};
    blt.pSrcSurfaces = &sample;
    blt.NumSrcSurfaces = 1;
    EXPECT_EQ(m_pVideo->Blt(&blt), S_OK);
    EXPECT_EQ(m_Dxva2.pBltTarget, pTarget->GetSurface(0, 0));
    EXPECT_EQ(m_Dxva2.BltSample.SrcSurface, pSource->GetSurface(0, 0));
}

TEST_F(UMDGpuDXVATest, Blt_NoProcessor_RefusedWithItsLine)
{
    const auto destroyed = [&] {
        EXPECT_EQ(CreateVideo(), S_OK);
        EXPECT_EQ(m_pVideo->Destroy(), S_OK);
    };
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    for (const std::function<void()>& prepare : {std::function<void()>([] {}), std::function<void()>(destroyed)})
    {
        prepare();
        m_Dxva2.Calls.clear();
        EXPECT_EQ(TraceOf([&] { EXPECT_EQ(BltOnce(), E_FAIL); }),
            Joined(kBltEntry, {"UMDGpuDXVA::Blt m_pVideoProcessor is NULL\n"}));
        EXPECT_EQ(m_Dxva2.Calls, Lines{});
    }
}

TEST_F(UMDGpuDXVATest, Blt_AnyNumberOfSamplesButOne_ConvertsAndPrintsNone)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    m_Dxva2.Calls.clear();
    DXVADDI_VIDEOSAMPLE samples[3] = {};
    for (DXVADDI_VIDEOSAMPLE& sample : samples)
        sample.SrcResource = ToHandle(m_pSource);
    for (UINT count : {0U, 2U, 3U})
    {
        D3DDDIARG_VIDEOPROCESSBLT blt = {};
        blt.pSrcSurfaces = samples;
        blt.NumSrcSurfaces = count;
        const TraceMask mask(UMDTRACE_DETAIL);
        m_Trace.Clear();
        EXPECT_EQ(m_pVideo->Blt(&blt), E_NOTIMPL);
        EXPECT_EQ(m_Trace.LinesOfThisThread().size(), 13U) << "the blit's own groups";
        EXPECT_EQ(m_Trace.LinesContaining("SrcResource"), Lines{});
    }
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
}

TEST_F(UMDGpuDXVATest, Blt_ServiceFails_ItsCodeAndLineAndNextBlitSucceeds)
{
    EXPECT_EQ(CreateVideo(), S_OK);
    EXPECT_EQ(SetTarget(m_pTarget), S_OK);
    m_Dxva2.Calls.clear();
    m_Dxva2.BltResult = D3DERR_DEVICELOST;
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(BltOnce(), D3DERR_DEVICELOST); }),
        Joined(kBltEntry, {"UMDGpuDXVA::Blt UMDDdiVideoProcessBlt failed! 0x88760868\n"}));
    m_Dxva2.BltResult = S_OK;
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(BltOnce(), S_OK); }), kBltEntry);
    EXPECT_EQ(m_Dxva2.Calls, (Lines{"VideoProcessBlt", "VideoProcessBlt"}));
    EXPECT_EQ(m_Dxva2.LiveObjects, 2);
    EXPECT_EQ(m_Dxva2.BltSample.SrcSurface, m_pSource->GetSurface(0, 0));
}
}  // namespace
