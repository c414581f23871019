// The end of a frame: present by flip and by blit, flush, display mode.
#include "ImportPatch.h"
#include "ResourceFixture.h"

#include "resources/UMDRscRenderTargetCapable.h"

#include <gmock/gmock.h>

using namespace tesslo::test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr UINT kFlip = 4;
constexpr UINT kBlt = 1;

class UMDDdiDevicePresentTest : public ResourceFixture
{
protected:
    HRESULT Present(HANDLE hSrc, UINT flags) { return Present(Device(), hSrc, flags); }
    static HRESULT Present(UMDDdiDevice& device, HANDLE hSrc, UINT flags)
    {
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = hSrc;
        present.Flags.Value = flags;
        return device.Present(&present);
    }

    Lines ErrorLines()
    {
        Lines lines = Trace();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("failed!") == std::string::npos && line.find("is NULL") == std::string::npos &&
                   line.find("has exited!") == std::string::npos;
        });
        return lines;
    }
};

}  // namespace

TEST_F(UMDDdiDevicePresentTest, Present_NullSource_Fails)
{
    EXPECT_EQ(Present(nullptr, kFlip), E_FAIL);
    EXPECT_THAT(Trace(), ElementsAre(">>> UMDDdiDevice::Present FLIP:1 BLT:0 hSrcResource:0x0\n",
                             "UMDDdiDevice::Present pResource is NULL\n"));
    EXPECT_THAT(KernelLines(), IsEmpty());
}

TEST_F(UMDDdiDevicePresentTest, Present_SourceThatCannotBePresented_Fails)
{
    EXPECT_EQ(Present(CreateVertices(), kFlip), E_FAIL);
    EXPECT_THAT(Trace(), Contains("UMDDdiDevice::Present pResource is NULL\n"));
}

TEST_F(UMDDdiDevicePresentTest, Present_Flip_CopiesTheFrameThenReportsToTheKernel)
{
    const HANDLE hPrimary = CreatePrimary(0);
    EXPECT_EQ(Present(hPrimary, kFlip), S_OK);
    EXPECT_EQ(m_Fake.Calls("GetRenderTargetData"), 1u);
    EXPECT_THAT(m_Kernel.LinesContaining("pfnPresentCb"), ElementsAre("pfnPresentCb(src:1 dst:0 context:7000)"));
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::Present\n"), 1u);
}

TEST_F(UMDDdiDevicePresentTest, Present_FlipAndBlt_IsAFlip)
{
    const HANDLE hPrimary = CreatePrimary(1);
    EXPECT_EQ(Present(hPrimary, kFlip | kBlt), S_OK);
    EXPECT_EQ(m_Trace.LinesContaining("FrameBufferAvailable\n").size(), 1u);
    EXPECT_EQ(m_Fake.Calls("GetRenderTarget"), 0u);  // the blit's read-back
}

TEST_F(UMDDdiDevicePresentTest, Present_NeitherFlag_DoesNothingAndAnswersOk)
{
    const HANDLE hPrimary = CreatePrimary(0);
    EXPECT_EQ(Present(hPrimary, 0), S_OK);
    EXPECT_THAT(KernelLines(), IsEmpty());
    EXPECT_THAT(DeviceLines(), IsEmpty());
}

TEST_F(UMDDdiDevicePresentTest, Present_FirstFlipOfASource_StartsTheThreadsOnce)
{
    const HANDLE hPrimary = CreatePrimary(2);
    ASSERT_EQ(Present(hPrimary, kFlip), S_OK);
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), UMD_VIDPN_SOURCE_COUNT);
    m_Kernel.ClearLines();
    Present(hPrimary, kFlip);  // refused if the worker, without a client library, has already ended
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), 0u);
}

TEST_F(UMDDdiDevicePresentTest, Present_ThreadsCannotBeStarted_FailsAndRecordsNoPrimary)
{
    const HANDLE hPrimary = CreatePrimary(0);
    const auto pUnstarted = MakeDevice();
    const FailingImport noThread(nullptr, "kernel32.dll", "CreateThread", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(Present(*pUnstarted, hPrimary, kFlip), E_FAIL);
    EXPECT_THAT(ErrorLines(), ElementsAre("UMDThreadFrameBuffer::Start UMDBaseThread::Start failed!\n",
                                  "UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer 0 failed!\n",
                                  "UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n"));
    EXPECT_EQ(m_Kernel.Calls("pfnPresentCb"), 0u);

    // Not recorded: the next flip tries to start them again.
    m_Kernel.ClearLines();
    Present(*pUnstarted, hPrimary, kFlip);
    EXPECT_GT(m_Kernel.Calls("pfnEscapeCb"), 0u);
    pUnstarted->InterFrameBufferThreadsStop();
}

TEST_F(UMDDdiDevicePresentTest, Present_GetDescFails_FailsBeforeTheKernelHears)
{
    const HANDLE hPrimary = CreatePrimary(0);
    m_Fake.Fail("surface.GetDesc", D3DERR_INVALIDCALL);
    EXPECT_EQ(Present(hPrimary, kFlip), E_FAIL);
    EXPECT_THAT(ErrorLines(), ElementsAre("UMDDdiDevice::InternalProcessPresentFLIP GetDesc failed!\n",
                                  "UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n"));
    EXPECT_THAT(m_Kernel.LinesContaining("pfnPresentCb"), IsEmpty());
}

TEST_F(UMDDdiDevicePresentTest, Present_NoSurface_Fails)
{
    const HANDLE hPrimary = CreatePrimary(0);
    ToResource(hPrimary)->Destroy();
    EXPECT_EQ(Present(hPrimary, kFlip), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InternalProcessPresentFLIP GetDesc failed!\n"), 1u);
}

TEST_F(UMDDdiDevicePresentTest, Present_FormatWithoutSnapshot_FailsBeforeTheKernelHears)
{
    const HANDLE hPrimary = CreatePrimary(0, D3DDDIFMT_R5G6B5);
    EXPECT_EQ(Present(hPrimary, kFlip), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n"), 1u);
    EXPECT_THAT(m_Kernel.LinesContaining("pfnPresentCb"), IsEmpty());
}

TEST_F(UMDDdiDevicePresentTest, Present_SourceThatDoesNotExist_FailsAndTouchesNothing)
{
    for (UINT source : {6u, 7u, 0xFFFFFFFFu})
    {
        const HANDLE hPrimary = CreatePrimary(source);
        EXPECT_EQ(Present(hPrimary, kFlip), E_FAIL) << source;
        EXPECT_THAT(DeviceLines(), IsEmpty()) << source;
    }
}

TEST_F(UMDDdiDevicePresentTest, Present_KernelRefusesFlip_AnswersOkAllTheSame)
{
    const HANDLE hPrimary = CreatePrimary(0);
    m_Kernel.Fail("pfnPresentCb", E_FAIL);
    EXPECT_EQ(Present(hPrimary, kFlip), S_OK);
    EXPECT_EQ(m_Trace.LinesContaining("pfnPresentCb failed!").size(), 1u);
}

TEST_F(UMDDdiDevicePresentTest, Present_AfterItsPrimaryDied_RecordsTheNewOneAndFails)
{
    const HANDLE hFirst = CreatePrimary(3);
    ASSERT_EQ(Present(hFirst, kFlip), S_OK);
    Destroy(hFirst);

    const HANDLE hSecond = CreatePrimary(3);
    EXPECT_EQ(Present(hSecond, kFlip), E_FAIL);
    EXPECT_THAT(ErrorLines(), ElementsAre("UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n",
                                  "UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n",
                                  "UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n"));
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), UMD_VIDPN_SOURCE_COUNT);  // it tried to start them again

    m_Kernel.ClearLines();
    EXPECT_EQ(Present(hSecond, kFlip), E_FAIL);
    EXPECT_EQ(m_Kernel.Calls("pfnEscapeCb"), 0u);  // the new primary is known
}

TEST_F(UMDDdiDevicePresentTest, Present_Blt_ReadsBackCopiesAndReports)
{
    const HANDLE hPrimary = CreatePrimary(0);
    IDirect3DSurface9* pSurface = dynamic_cast<UMDRscRenderTargetCapable*>(ToResource(hPrimary))->GetSurface(0, 0);
    m_Fake.SetRenderTarget(0, pSurface);
    m_Fake.ClearLines();
    EXPECT_EQ(Present(hPrimary, kBlt), S_OK);
    EXPECT_THAT(ErrorLines(), IsEmpty());
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::Present\n"), 1u);
    EXPECT_THAT(KernelLines(), ElementsAre("pfnLockCb(allocation:1 flags:0x10)", "pfnUnlockCb(count:1 first:1)",
                                   "pfnPresentCb(src:1 dst:0 context:7000)"));
    EXPECT_EQ(m_Trace.LinesContaining("FrameBufferAvailable").size(), 0u);  // nothing for the virtual monitor
    pSurface->Release();                                                    // the reference that each read-back leaves
}

TEST_F(UMDDdiDevicePresentTest, Present_BltWithoutRenderTarget_FailsUnderTheBltText)
{
    const HANDLE hPrimary = CreatePrimary(0);
    EXPECT_EQ(Present(hPrimary, kBlt), D3DERR_NOTFOUND);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::Present InternalProcessPresentBLT failed! hResult: 0x88760866\n"), 1u);
    EXPECT_THAT(KernelLines(), IsEmpty());
}

TEST_F(UMDDdiDevicePresentTest, Flush_Served_SubmitsTheWholeBufferAndTakesTheNewOne)
{
    EXPECT_EQ(Device().Flush(), S_OK);
    EXPECT_EQ(Device().Flush(), S_OK);
    EXPECT_THAT(KernelLines(), ElementsAre("pfnRenderCb(length:4096 offset:0 allocations:0 patches:0 context:7000)",
                                   "pfnRenderCb(length:4096 offset:0 allocations:0 patches:0 context:7000)"));
    EXPECT_THAT(Trace(), ElementsAre(">>> UMDDdiDevice::Flush\n", ">>> UMDDdiDevice::Flush\n"));  // no exit line
}

TEST_F(UMDDdiDevicePresentTest, SetDisplayMode_NullResource_AnswersOkAndSaysSo)
{
    const D3DDDIARG_SETDISPLAYMODE mode = {};
    EXPECT_EQ(Device().SetDisplayMode(&mode), S_OK);
    EXPECT_THAT(Trace(), ElementsAre(">>> UMDDdiDevice::SetDisplayMode\n",
                             "UMDDdiDevice::SetDisplayMode pResourceRenderTarget is NULL\n"));
}

TEST_F(UMDDdiDevicePresentTest, SetDisplayMode_Primary_PassesItsAllocation)
{
    D3DDDIARG_SETDISPLAYMODE mode = {};
    mode.hResource = CreatePrimary(0);
    mode.SubResourceIndex = 5;  // not used
    EXPECT_EQ(Device().SetDisplayMode(&mode), S_OK);
    EXPECT_EQ(m_Kernel.Calls("pfnSetDisplayModeCb"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::SetDisplayMode\n"), 1u);
}

TEST_F(UMDDdiDevicePresentTest, SetDisplayMode_Refused_PassesTheCodeOn)
{
    D3DDDIARG_SETDISPLAYMODE mode = {};
    mode.hResource = CreatePrimary(0);
    m_Kernel.Fail("pfnSetDisplayModeCb", E_OUTOFMEMORY);
    EXPECT_EQ(Device().SetDisplayMode(&mode), E_OUTOFMEMORY);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetDisplayMode failed! 0x8007000e\n"), 1u);
}
