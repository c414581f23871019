// The end of a frame: present by flip and by blit, flush, display mode.
#include "DeviceFixture.h"
#include "ImportPatch.h"
#include "TraceLevels.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tesslo::test
{
namespace
{
constexpr UINT kFlip = 4;
constexpr UINT kBlt = 1;

class DevicePresent : public DeviceFixture
{
protected:
    void TearDown() override
    {
        for (auto& pSurface : m_Surfaces)
            pSurface->Destroy();
        m_Surfaces.clear();
        DeviceFixture::TearDown();
    }

    /// A primary of a source, created on the fake device.
    UMDRscSurface* MakePrimary(
        UINT source, UINT rotation = D3DDDI_ROTATION_IDENTITY, D3DDDIFORMAT format = D3DDDIFMT_X8R8G8B8)
    {
        D3DDDI_SURFACEINFO info = {};
        info.Width = 8;
        info.Height = 4;
        D3DDDIARG_CREATERESOURCE create = {};
        create.Format = format;
        create.pSurfList = &info;
        create.SurfCount = 1;
        create.VidPnSourceId = source;
        create.Rotation = static_cast<D3DDDI_ROTATION>(rotation);
        create.Flags.RenderTarget = 1;
        create.Flags.Primary = 1;
        m_Surfaces.push_back(
            std::make_unique<UMDRscSurface>(&Device(), nullptr, &create, FALSE, D3DPOOL_DEFAULT, false));
        EXPECT_EQ(m_Surfaces.back()->Create(), S_OK);
        ForgetCalls();
        return m_Surfaces.back().get();
    }

    HRESULT Present(HANDLE hSrc, UINT flags)
    {
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = hSrc;
        present.Flags.Value = flags;
        return Device().Present(&present);
    }

    std::vector<std::string> ErrorLines()
    {
        std::vector<std::string> lines = m_Trace.LinesOfThisThread();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("failed!") == std::string::npos && line.find("is NULL") == std::string::npos &&
                   line.find("has exited!") == std::string::npos;
        });
        return lines;
    }

    std::vector<std::unique_ptr<UMDRscSurface>> m_Surfaces;
};

TEST_F(DevicePresent, Present_NullSource_Fails)
{
    EXPECT_EQ(Present(nullptr, kFlip), E_FAIL);
    EXPECT_THAT(m_Trace.LinesOfThisThread(), ElementsAre(">>> UMDDdiDevice::Present FLIP:1 BLT:0 hSrcResource:0x0\n",
                                                 "UMDDdiDevice::Present pResource is NULL\n"));
    EXPECT_THAT(m_Kernel.Lines(), IsEmpty());
}

TEST_F(DevicePresent, Present_SourceThatCannotBePresented_Fails)
{
    D3DDDI_SURFACEINFO info = {};
    info.Width = 16;
    info.Height = 1;
    D3DDDIARG_CREATERESOURCE create = {};
    create.pSurfList = &info;
    create.SurfCount = 1;
    UMDRscVertexBuffer buffer(&Device(), nullptr, &create, FALSE, 0, D3DPOOL_DEFAULT);
    EXPECT_EQ(Present(ToHandle(&buffer), kFlip), E_FAIL);
    EXPECT_THAT(m_Trace.LinesOfThisThread(), Contains("UMDDdiDevice::Present pResource is NULL\n"));
}

TEST_F(DevicePresent, Present_Flip_CopiesTheFrameThenReportsToTheKernel)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    EXPECT_EQ(Present(ToHandle(pPrimary), kFlip), S_OK);
    EXPECT_EQ(m_Fake.Calls("GetRenderTargetData"), 1u);
    EXPECT_THAT(m_Kernel.LinesContaining("pfnPresentCb"), ElementsAre("pfnPresentCb(src:1 dst:0 context:7000)"));
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::Present\n"), 1u);
}

TEST_F(DevicePresent, Present_FlipAndBlt_IsAFlip)
{
    UMDRscSurface* pPrimary = MakePrimary(1);
    EXPECT_EQ(Present(ToHandle(pPrimary), kFlip | kBlt), S_OK);
    EXPECT_EQ(m_Trace.LinesContaining("FrameBufferAvailable\n").size(), 1u);
    EXPECT_EQ(m_Fake.Calls("GetRenderTarget"), 0u);  // the blit's read-back
}

TEST_F(DevicePresent, Present_NeitherFlag_DoesNothingAndAnswersOk)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    EXPECT_EQ(Present(ToHandle(pPrimary), 0), S_OK);
    EXPECT_THAT(m_Kernel.Lines(), IsEmpty());
    EXPECT_THAT(m_Fake.Lines(), IsEmpty());
}

TEST_F(DevicePresent, Present_FirstFlipOfASource_StartsTheThreadsOnce)
{
    UMDRscSurface* pPrimary = MakePrimary(2);
    ASSERT_EQ(Present(ToHandle(pPrimary), kFlip), S_OK);
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), UMD_VIDPN_SOURCE_COUNT);
    m_Kernel.ClearLines();
    Present(ToHandle(pPrimary), kFlip);  // refused if the worker, without a client library, has already ended
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), 0u);
}

TEST_F(DevicePresent, Present_EachWay_EachLineOfTheDeviceHasItsLevel)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    UMDRscSurface* pElsewhere = MakePrimary(6);
    std::vector<std::string> lines = LevelledTrace(m_Trace, [&] {
        Present(ToHandle(pPrimary), 0);
        Present(ToHandle(pElsewhere), kFlip);
        Present(ToHandle(pPrimary), kBlt);  // without a render target
        Device().Flush();
    });
    std::erase_if(lines, [](const std::string& line) { return line.find(" UMDDdiDevice::") == std::string::npos; });
    EXPECT_THAT(
        lines, ElementsAre("0x4 >>> UMDDdiDevice::Present FLIP:0 BLT:0 hSrcResource:0x#\n",
                   "0x8 <<< UMDDdiDevice::Present\n", "0x4 >>> UMDDdiDevice::Present FLIP:1 BLT:0 hSrcResource:0x#\n",
                   "0x1 UMDDdiDevice::InternalProcessPresentFLIP failed! VidPnSourceId:6\n",
                   "0x1 UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n",
                   "0x4 >>> UMDDdiDevice::Present FLIP:0 BLT:1 hSrcResource:0x#\n",
                   "0x1 UMDDdiDevice::Present InternalProcessPresentBLT failed! hResult: 0x88760866\n",
                   "0x4 >>> UMDDdiDevice::Flush\n"));
}

TEST_F(DevicePresent, Present_ThreadsCannotBeStarted_FailsAndRecordsNoPrimary)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    UMDDdiDevice unstarted(
        m_Kernel.RuntimeHandle(), 9, 0x2003, m_pAdapter.get(), m_Kernel.RuntimeHandle(), &m_Callbacks);
    const FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    D3DDDIARG_PRESENT present = {};
    present.hSrcResource = ToHandle(pPrimary);
    present.Flags.Value = kFlip;
    EXPECT_EQ(unstarted.Present(&present), E_FAIL);
    EXPECT_THAT(ErrorLines(), ElementsAre("UMDThreadFrameBuffer::Start UMDBaseThread::Start failed!\n",
                                  "UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer 0 failed!\n",
                                  "UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n"));
    EXPECT_EQ(m_Kernel.Calls("pfnPresentCb"), 0u);

    // Not recorded: the next flip tries to start them again.
    m_Kernel.ClearLines();
    unstarted.Present(&present);
    EXPECT_GT(m_Kernel.Calls("pfnEscapeCb"), 0u);
    unstarted.InterFrameBufferThreadsStop();
}

TEST_F(DevicePresent, Present_GetDescFails_FailsBeforeTheKernelHears)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    m_Fake.Fail("surface.GetDesc", D3DERR_INVALIDCALL);
    EXPECT_EQ(Present(ToHandle(pPrimary), kFlip), E_FAIL);
    EXPECT_THAT(ErrorLines(), ElementsAre("UMDDdiDevice::InternalProcessPresentFLIP GetDesc failed!\n",
                                  "UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n"));
    EXPECT_THAT(m_Kernel.LinesContaining("pfnPresentCb"), IsEmpty());
}

TEST_F(DevicePresent, Present_NoSurface_Fails)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    pPrimary->Destroy();
    EXPECT_EQ(Present(ToHandle(pPrimary), kFlip), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InternalProcessPresentFLIP GetDesc failed!\n"), 1u);
}

TEST_F(DevicePresent, Present_FormatWithoutSnapshot_FailsBeforeTheKernelHears)
{
    UMDRscSurface* pPrimary = MakePrimary(0, D3DDDI_ROTATION_IDENTITY, D3DDDIFMT_R5G6B5);
    EXPECT_EQ(Present(ToHandle(pPrimary), kFlip), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n"), 1u);
    EXPECT_THAT(m_Kernel.LinesContaining("pfnPresentCb"), IsEmpty());
}

TEST_F(DevicePresent, Present_SourceThatDoesNotExist_FailsAndTouchesNothing)
{
    for (UINT source : {6u, 7u, 0xFFFFFFFFu})
    {
        UMDRscSurface* pPrimary = MakePrimary(source);
        EXPECT_EQ(Present(ToHandle(pPrimary), kFlip), E_FAIL) << source;
        EXPECT_THAT(m_Fake.Lines(), IsEmpty()) << source;
    }
}

TEST_F(DevicePresent, Present_KernelRefusesFlip_AnswersOkAllTheSame)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    m_Kernel.Fail("pfnPresentCb", E_FAIL);
    EXPECT_EQ(Present(ToHandle(pPrimary), kFlip), S_OK);
    EXPECT_EQ(m_Trace.LinesContaining("pfnPresentCb failed!").size(), 1u);
}

TEST_F(DevicePresent, Present_AfterItsPrimaryDied_RecordsTheNewOneAndFails)
{
    UMDRscSurface* pFirst = MakePrimary(3);
    ASSERT_EQ(Present(ToHandle(pFirst), kFlip), S_OK);
    m_Surfaces.back().release();  // deleted by the device
    m_Surfaces.pop_back();
    ASSERT_EQ(Device().DestroyResource(ToHandle(pFirst)), E_FAIL);

    UMDRscSurface* pSecond = MakePrimary(3);
    EXPECT_EQ(Present(ToHandle(pSecond), kFlip), E_FAIL);
    EXPECT_THAT(ErrorLines(), ElementsAre("UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n",
                                  "UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n",
                                  "UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n"));
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), UMD_VIDPN_SOURCE_COUNT);  // it tried to start them again

    m_Kernel.ClearLines();
    EXPECT_EQ(Present(ToHandle(pSecond), kFlip), E_FAIL);
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), 0u);  // the new primary is known
}

TEST_F(DevicePresent, Present_Blt_ReadsBackCopiesAndReports)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    m_Fake.SetRenderTarget(0, pPrimary->GetSurface(0, 0));
    m_Fake.ClearLines();
    EXPECT_EQ(Present(ToHandle(pPrimary), kBlt), S_OK);
    EXPECT_THAT(ErrorLines(), IsEmpty());
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::Present\n"), 1u);
    EXPECT_THAT(m_Kernel.Lines(), ElementsAre("pfnLockCb(allocation:1 flags:0x10)", "pfnUnlockCb(count:1 first:1)",
                                      "pfnPresentCb(src:1 dst:0 context:7000)"));
    EXPECT_EQ(m_Trace.LinesContaining("FrameBufferAvailable").size(), 0u);  // nothing for the virtual monitor
    pPrimary->GetSurface(0, 0)->Release();                                  // the reference that each read-back leaves
    m_Fake.SetRenderTarget(0, nullptr);
}

TEST_F(DevicePresent, Present_BltWithoutRenderTarget_FailsUnderTheBltText)
{
    UMDRscSurface* pPrimary = MakePrimary(0);
    EXPECT_EQ(Present(ToHandle(pPrimary), kBlt), D3DERR_NOTFOUND);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::Present InternalProcessPresentBLT failed! hResult: 0x88760866\n"), 1u);
    EXPECT_THAT(m_Kernel.Lines(), IsEmpty());
}

TEST_F(DevicePresent, Flush_Served_SubmitsTheWholeBufferAndTakesTheNewOne)
{
    EXPECT_EQ(Device().Flush(), S_OK);
    EXPECT_EQ(Device().Flush(), S_OK);
    EXPECT_THAT(m_Kernel.Lines(), ElementsAre("pfnRenderCb(length:4096 offset:0 allocations:0 patches:0 context:7000)",
                                      "pfnRenderCb(length:4096 offset:0 allocations:0 patches:0 context:7000)"));
    EXPECT_THAT(m_Trace.LinesOfThisThread(),
        ElementsAre(">>> UMDDdiDevice::Flush\n", ">>> UMDDdiDevice::Flush\n"));  // no exit line
}

UINT g_NextCommandBufferSize = 0;
std::vector<D3DDDICB_RENDER> g_Renders;

HRESULT APIENTRY AnswerOtherSizes(HANDLE, D3DDDICB_RENDER* pRender)
{
    g_Renders.push_back(*pRender);
    pRender->NewCommandBufferSize = g_NextCommandBufferSize;
    pRender->NewAllocationListSize = g_NextCommandBufferSize / 2;
    pRender->NewPatchLocationListSize = g_NextCommandBufferSize / 4;
    return g_NextCommandBufferSize ? S_OK : E_FAIL;
}

class DeviceFlush : public DevicePresent
{
    void PrepareStart() override
    {
        g_Renders.clear();
        m_Callbacks.pfnRenderCb = AnswerOtherSizes;
    }
};

TEST_F(DeviceFlush, Flush_RuntimeAnswersOtherSizes_NextFlushUsesThem)
{
    g_NextCommandBufferSize = 512;
    ASSERT_EQ(Device().Flush(), S_OK);
    ASSERT_EQ(Device().Flush(), S_OK);
    EXPECT_EQ(g_Renders[0].CommandLength, FakeKernel::kCommandBufferSize);
    EXPECT_EQ(g_Renders[0].NewAllocationListSize, FakeKernel::kListSize);
    EXPECT_EQ(g_Renders[0].NewPatchLocationListSize, FakeKernel::kListSize);
    EXPECT_EQ(g_Renders[1].CommandLength, 512u);
    EXPECT_EQ(g_Renders[1].NewCommandBufferSize, 512u);
    EXPECT_EQ(g_Renders[1].NewAllocationListSize, 256u);
    EXPECT_EQ(g_Renders[1].NewPatchLocationListSize, 128u);
    EXPECT_EQ(g_Renders[1].Flags.Value, 0u);
    EXPECT_EQ(g_Renders[1].BroadcastContextCount, 0u);
}

TEST_F(DeviceFlush, Flush_Refused_KeepsTheOldBuffer)
{
    g_NextCommandBufferSize = 0;
    EXPECT_EQ(Device().Flush(), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::Flush pfnRenderCb failed! 0x80004005\n"), 1u);
    EXPECT_EQ(Device().Flush(), E_FAIL);
    EXPECT_EQ(g_Renders.back().CommandLength, FakeKernel::kCommandBufferSize);
}

TEST_F(DevicePresent, SetDisplayMode_NullResource_AnswersOkAndSaysSo)
{
    const D3DDDIARG_SETDISPLAYMODE mode = {};
    EXPECT_EQ(Device().SetDisplayMode(&mode), S_OK);
    EXPECT_THAT(m_Trace.LinesOfThisThread(), ElementsAre(">>> UMDDdiDevice::SetDisplayMode\n",
                                                 "UMDDdiDevice::SetDisplayMode pResourceRenderTarget is NULL\n"));
}

TEST_F(DevicePresent, SetDisplayMode_Primary_PassesItsAllocation)
{
    D3DDDIARG_SETDISPLAYMODE mode = {};
    mode.hResource = ToHandle(MakePrimary(0));
    mode.SubResourceIndex = 5;  // not used
    EXPECT_EQ(Device().SetDisplayMode(&mode), S_OK);
    EXPECT_EQ(m_Kernel.Calls("pfnSetDisplayModeCb"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::SetDisplayMode\n"), 1u);
}

TEST_F(DevicePresent, SetDisplayMode_Refused_PassesTheCodeOn)
{
    D3DDDIARG_SETDISPLAYMODE mode = {};
    mode.hResource = ToHandle(MakePrimary(0));
    m_Kernel.Fail("pfnSetDisplayModeCb", E_OUTOFMEMORY);
    EXPECT_EQ(Device().SetDisplayMode(&mode), E_OUTOFMEMORY);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetDisplayMode failed! 0x8007000e\n"), 1u);
}
}  // namespace
}  // namespace tesslo::test
