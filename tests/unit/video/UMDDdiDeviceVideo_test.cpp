// The object behind a video process handle: what it prints on which level, that results pass unchanged, and what is
// left to say when memory ran out.
#include "DeviceFixture.h"
#include "FailNthAllocation.h"
#include "FakeDxva2.h"

#include "video/UMDDdiDeviceVideo.h"

#include <functional>

using namespace tesslo::test;

namespace
{
const HANDLE kHandle = reinterpret_cast<HANDLE>(0x12345678000ABCD0);

const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET kSetTarget = {kHandle, nullptr, 0};
const D3DDDIARG_VIDEOPROCESSENDFRAME kEndFrame = {kHandle, nullptr};

D3DDDIARG_CREATEVIDEOPROCESSDEVICE CreateArguments()
{
    static constexpr GUID processor = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = {};
    create.pVideoProcGuid = &processor;
    return create;
}

D3DDDIARG_VIDEOPROCESSBLT BltArguments()
{
    D3DDDIARG_VIDEOPROCESSBLT blt = {};
    blt.hVideoProcess = kHandle;
    return blt;
}

/// One operation, what it prints on the video level, and what it answers: with a processor's owner and without.
struct Operation
{
    std::function<HRESULT(UMDDdiDeviceVideo&)> Call;
    std::string Line;
    Lines OwnersLines;  ///< behind it
    HRESULT Result;
    HRESULT ResultWithoutOwner;
};

class UMDDdiDeviceVideoTest : public DeviceFixture
{
protected:
    void SetUp() override
    {
        DeviceFixture::SetUp();
        ASSERT_NE(Device().GetDevice(), nullptr) << "the hidden window needs a display";
        m_Dxva2.ServiceResult = kRefused;  // no result but a passed one is this code
    }

    const std::vector<Operation> m_Operations = {
        {[](auto& video) {
             auto create = CreateArguments();
             return video.Create(&create);
         },
            ">>> UMDDdiDeviceVideo::Create\n", {">>> UMDGpuDXVA::Create 0 0\n"}, kRefused, E_OUTOFMEMORY},
        {[](auto& video) { return video.Destroy(); }, ">>> UMDDdiDevice::DeviceVideoProcessDestroy\n",
            {">>> UMDDdiDevice::DeviceVideoProcessDestroy\n"}, S_OK, E_FAIL},
        {[](auto& video) { return video.SetRenderTarget(&kSetTarget); }, ">>> UMDDdiDeviceVideo::SetRenderTarget\n",
            {">>> UMDGpuDXVA::SetRenderTarget hVideoProcess:0xabcd0 hRenderTarget:0x0\n"}, E_FAIL, E_FAIL},
        {[](auto& video) { return video.BeginFrame(kHandle); }, ">>> UMDDdiDeviceVideo::BeginFrame\n",
            {">>> UMDGpuDXVA::BeginFrame hVideoProcess:0xabcd0\n"}, S_OK, E_FAIL},
        {[](auto& video) { return video.EndFrame(&kEndFrame); }, ">>> UMDDdiDeviceVideo::EndFrame\n",
            {">>> UMDGpuDXVA::EndFrame hVideoProcess:0xabcd0\n"}, S_OK, E_FAIL},
        {[](auto& video) {
             const auto blt = BltArguments();
             return video.Blt(&blt);
         },
            ">>> UMDDdiDeviceVideo::Blt\n",
            {">>> UMDGpuDXVA::Blt hVideoProcess:0xabcd0 NumSrcSurfaces:0\n", ">>> UMDGpuDXVA::InternalSetBltParams\n",
                ">>> UMDGpuDXVA::InternalSetBltSamples\n"},
            E_FAIL, E_FAIL},
    };

    FakeDxva2 m_Dxva2;
};

TEST_F(UMDDdiDeviceVideoTest, Operations_Each_PrintOnTheVideoLevelAloneAndPassTheResult)
{
    UMDDdiDeviceVideo video(&Device());
    for (const Operation& operation : m_Operations)
    {
        SCOPED_TRACE(operation.Line);
        {
            const TraceMask others(kAllLevels & ~(UMDTRACE_VIDEO | UMDTRACE_ERROR | UMDTRACE_DETAIL));
            m_Trace.Clear();
            EXPECT_EQ(operation.Call(video), operation.Result);
            EXPECT_EQ(m_Trace.LinesOfThisThread(), Lines{});
        }
        const TraceMask mask(UMDTRACE_VIDEO);
        m_Trace.Clear();
        EXPECT_EQ(operation.Call(video), operation.Result);
        Lines expected = {operation.Line};
        expected.insert(expected.end(), operation.OwnersLines.begin(), operation.OwnersLines.end());
        EXPECT_EQ(m_Trace.LinesOfThisThread(), expected);
    }
}

TEST_F(UMDDdiDeviceVideoTest, Operations_NoMemoryForTheOwner_AreRefusedAndCallNothing)
{
    const TraceMask errors(UMDTRACE_ERROR);
    std::unique_ptr<UMDDdiDeviceVideo> pVideo;
    m_Trace.Clear();
    {
        const FailNthAllocation fail(2);  // the first is the object's own
        pVideo = std::make_unique<UMDDdiDeviceVideo>(&Device());
    }
    EXPECT_EQ(m_Trace.LinesOfThisThread(), Lines{"UMDDdiDeviceVideo::UMDDdiDeviceVideo failed!\n"});
    const TraceMask mask(UMDTRACE_ERROR | UMDTRACE_VIDEO);
    for (const Operation& operation : m_Operations)
    {
        m_Trace.Clear();
        EXPECT_EQ(operation.Call(*pVideo), operation.ResultWithoutOwner) << operation.Line;
        EXPECT_EQ(m_Trace.LinesOfThisThread(), Lines{operation.Line});
    }
    EXPECT_EQ(m_Dxva2.Calls, Lines{});
    EXPECT_EQ(m_Fake.Lines(), Lines{});
}

TEST_F(UMDDdiDeviceVideoTest, Destructor_AfterCreate_ReleasesProcessorAndService)
{
    m_Dxva2.ServiceResult = S_OK;
    {
        UMDDdiDeviceVideo video(&Device());
        auto create = CreateArguments();
        EXPECT_EQ(video.Create(&create), S_OK);
        EXPECT_EQ(m_Dxva2.LiveObjects, 2);
    }
    EXPECT_EQ(m_Dxva2.LiveObjects, 0);
}
}  // namespace
