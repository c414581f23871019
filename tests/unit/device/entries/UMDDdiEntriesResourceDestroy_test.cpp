// Destroying resources: always answered with a failure, and what the device forgets with them.
#include "EntryTrace.h"
#include "ResourceFixture.h"
#include "TraceLevels.h"
#include "TraceText.h"

using namespace tesslo::test;

namespace
{
const std::string kStop = "UMDDdiDevice::InterFrameBufferThreadsStop m_ThreadFrameBuffer[";

class UMDDdiDestroyResourceTest : public ResourceFixture
{
protected:
    HRESULT Flip(HANDLE hResource)
    {
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = hResource;
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
        SCOPED_TRACE(flags);
        CreateRequest request(flags, kVideo, D3DDDIFMT_A8R8G8B8, 16, 16);
        UMDRscBase* pResource = CreateAny(request);
        m_Trace.Clear();
        Destroy(pResource);
        EXPECT_EQ(m_Trace.Lines().front(), "=> UMDDdiDestroyResource hResource:" + Low(pResource) + "\n");
        EXPECT_EQ(m_Trace.Count(">>> UMDDdiDevice::DestroyResource hSrcResource:" + Low(pResource) + "\n"), 1U);
        EXPECT_EQ(m_Trace.LinesContaining("   ~hResource driver:").size(), 1U);
        EXPECT_EQ(m_Trace.LinesContaining(kStop).size(), 0U);
        ExpectNothingLeft();
    }
}

TEST_F(UMDDdiDestroyResourceTest, NullHandle_AnswersFail)
{
    const auto destroy = [&] { EXPECT_EQ(UMDDdiDestroyResource(DeviceHandle(), nullptr), E_FAIL); };
    EXPECT_EQ(TraceAt(kAllLevels, destroy),
        (Lines{"=> UMDDdiDestroyResource hResource:0x0\n", ">>> UMDDdiDevice::DestroyResource hSrcResource:0x0\n"}));
    EXPECT_EQ(LevelledTrace(destroy), (Lines{"0x22 => UMDDdiDestroyResource hResource:0x#\n",
                                          "0x4 >>> UMDDdiDevice::DestroyResource hSrcResource:0x#\n"}));
}

TEST_F(UMDDdiDestroyResourceTest, PrimaryOfSourceThree_StopsAllSixThreadsAndForgetsAllSix)
{
    const HANDLE hFirst = CreatePrimary(0);
    const HANDLE hThird = CreatePrimary(3);
    ASSERT_EQ(Flip(hFirst), S_OK);
    ASSERT_EQ(Flip(hThird), S_OK);
    m_Trace.Clear();
    Destroy(hThird);
    Lines stops;
    for (int i = 0; i < 6; i++)
        stops.push_back(kStop + std::to_string(i) + "] RequestExit\n");
    EXPECT_EQ(m_Trace.LinesContaining(kStop), stops);

    // Source 0 is forgotten too: its next flip starts the threads again, which has no effect on stopped ones.
    m_Trace.Clear();
    EXPECT_EQ(Flip(hFirst), E_FAIL);
    EXPECT_EQ(m_Trace.LinesContaining("UMDDdiDevice::InterFrameBufferThreadsStart m_ThreadFrameBuffer[").size(), 6U);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::InternalProcessPresentFLIP FrameBufferAvailable failed!\n"), 1U);
}

TEST_F(UMDDdiDestroyResourceTest, RenderTargetThatIsNoPrimary_StopsNothing)
{
    const HANDLE hPrimary = CreatePrimary(2);
    const HANDLE hOther = CreatePrimary(2);
    ASSERT_EQ(Flip(hPrimary), S_OK);
    m_Trace.Clear();
    Destroy(hOther);
    EXPECT_EQ(m_Trace.LinesContaining(kStop), Lines{});
}

TEST_F(UMDDdiDestroyResourceTest, BoundVertexBuffer_IsUnboundSoThatNoDrawReadsIt)
{
    const HANDLE hBuffer = CreateSystemVertices();
    D3DDDIARG_SETSTREAMSOURCE stream = {};
    stream.hVertexBuffer = hBuffer;
    stream.Stride = 16;
    ASSERT_EQ(UMDDdiSetStreamSource(DeviceHandle(), &stream), S_OK);
    Destroy(hBuffer);
    ForgetCalls();
    D3DDDIARG_DRAWPRIMITIVE draw = {};
    draw.PrimitiveType = D3DPT_TRIANGLELIST;
    draw.PrimitiveCount = 1;
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiDrawPrimitive(DeviceHandle(), &draw, nullptr), E_FAIL); }),
        Lines{"UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDestroyResourceTest, EveryClass_TellsItsKind)
{
    const struct
    {
        HANDLE hResource;
        const char* pKind;
    } rows[] = {{CreateTexture(), "   Texture\n"}, {CreateTarget(), "   RenderTarget\n"},
        {CreateVertices(), "   VertexBuffer\n"}, {CreateIndices(), "   IndexBuffer\n"}, {CreateDepth(), "   ZBuffer\n"},
        {CreateCube(), "   CubeTexture\n"}};
    for (const auto& row : rows)
    {
        Lines lines = EntryLines({{"object", row.hResource}}, [&] { Destroy(row.hResource); });
        ASSERT_GE(lines.size(), 2u);
        lines.resize(2);
        EXPECT_EQ(lines, (Lines{"=> UMDDdiDestroyResource hResource:object\n", row.pKind}));
    }
}
