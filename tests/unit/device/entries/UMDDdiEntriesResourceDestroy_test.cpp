// Destroying resources: always answered with a failure, and what the device forgets with them.
#include "ResourceFixture.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
constexpr D3DDDI_POOL kVideo = D3DDDIPOOL_LOCALVIDMEM;
const std::string kStop = "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[";

class UMDDdiDestroyResourceTest : public ResourceFixture
{
protected:
    UMDRscBase* CreatePrimary(UINT source)
    {
        CreateRequest request(kFlagRenderTarget | kFlagPrimary, kVideo, D3DDDIFMT_A8R8G8B8, 16, 16);
        request.m_Arg.VidPnSourceId = source;
        return CreateAny(request);
    }

    HRESULT Flip(UMDRscBase* pResource)
    {
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = ToHandle(pResource);
        present.Flags.Flip = 1;
        return UMDDdiPresent(DeviceHandle(), &present);
    }
};
}  // namespace

TEST_F(UMDDdiDestroyResourceTest, EveryClass_AnswersFailAndFreesAll)
{
    for (UINT flags : {kFlagVertexBuffer, kFlagIndexBuffer, kFlagZBuffer, kFlagCubeMap, kFlagTexture, kFlagRenderTarget,
             0U, kFlagPrimary, kFlagTexture | kFlagRenderTarget | kFlagSharedResource})
    {
        CreateRequest request(flags, kVideo, D3DDDIFMT_A8R8G8B8, 16, 16);
        UMDRscBase* pResource = CreateAny(request);
        m_Trace.Clear();
        char entry[100], method[100];
        snprintf(entry, sizeof entry, "=> UMDDdiDestroyResource hResource:0x%x\n", UMDLow32(pResource));
        snprintf(method, sizeof method, ">>> UMDDdiDevice::DestroyResource hSrcResource:0x%x\n", UMDLow32(pResource));
        Destroy(pResource);
        EXPECT_EQ(m_Trace.Lines().front(), entry);
        EXPECT_EQ(m_Trace.Count(method), 1U);
        EXPECT_EQ(m_Trace.LinesContaining("   ~hResource driver:").size(), 1U);
        EXPECT_EQ(m_Trace.LinesContaining(kStop).size(), 0U);
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{}) << flags;
        EXPECT_EQ(m_Kernel.AllocationCount(), 0U) << flags;
    }
}

TEST_F(UMDDdiDestroyResourceTest, NullHandle_AnswersFail)
{
    EXPECT_EQ(UMDDdiDestroyResource(DeviceHandle(), nullptr), E_FAIL);
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{"=> UMDDdiDestroyResource hResource:0x0\n", ">>> UMDDdiDevice::DestroyResource hSrcResource:0x0\n"}));
}

TEST_F(UMDDdiDestroyResourceTest, PrimaryOfSourceThree_StopsAllSixThreadsAndForgetsAllSix)
{
    UMDRscBase* const pFirst = CreatePrimary(0);
    UMDRscBase* const pThird = CreatePrimary(3);
    ASSERT_EQ(Flip(pFirst), S_OK);
    ASSERT_EQ(Flip(pThird), S_OK);
    m_Trace.Clear();
    Destroy(pThird);
    Lines stops;
    for (int i = 0; i < 6; i++)
        stops.push_back(kStop + std::to_string(i) + "] RequestExit\n");
    EXPECT_EQ(m_Trace.LinesContaining(kStop), stops);

    // Source 0 is forgotten too: its next flip starts the threads again, which has no effect on stopped ones.
    m_Trace.Clear();
    EXPECT_EQ(Flip(pFirst), E_FAIL);
    EXPECT_EQ(m_Trace.LinesContaining("UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer[").size(), 6U);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n"), 1U);
}

TEST_F(UMDDdiDestroyResourceTest, RenderTargetThatIsNoPrimary_StopsNothing)
{
    UMDRscBase* const pPrimary = CreatePrimary(2);
    UMDRscBase* const pOther = CreatePrimary(2);
    ASSERT_EQ(Flip(pPrimary), S_OK);
    m_Trace.Clear();
    Destroy(pOther);
    EXPECT_EQ(m_Trace.LinesContaining(kStop), Lines{});
}

TEST_F(UMDDdiDestroyResourceTest, BoundVertexBuffer_IsUnboundSoThatNoDrawReadsIt)
{
    CreateRequest request(kFlagVertexBuffer, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_VERTEXDATA, 64, 1);
    request.WithMemory(1, 0);
    UMDRscBase* pBuffer = CreateAny(request);
    D3DDDIARG_SETSTREAMSOURCE stream = {};
    stream.hVertexBuffer = ToHandle(pBuffer);
    stream.Stride = 16;
    ASSERT_EQ(UMDDdiSetStreamSource(DeviceHandle(), &stream), S_OK);
    Destroy(pBuffer);
    ForgetCalls();
    D3DDDIARG_DRAWPRIMITIVE draw = {};
    draw.PrimitiveType = D3DPT_TRIANGLELIST;
    draw.PrimitiveCount = 1;
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiDrawPrimitive(DeviceHandle(), &draw, nullptr), E_FAIL); }),
        Lines{"UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
}
