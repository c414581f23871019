// Flush: what it submits, and the buffers that the runtime gives for the next one.
#include "DeviceFixture.h"

using namespace tesslo::test;

namespace
{
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

class UMDDdiDevicePresentFlushTest : public DeviceFixture
{
    void PrepareStart() override
    {
        g_Renders.clear();
        m_Callbacks.pfnRenderCb = AnswerOtherSizes;
    }
};
}  // namespace

TEST_F(UMDDdiDevicePresentFlushTest, Flush_RuntimeAnswersOtherSizes_NextFlushUsesThem)
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

TEST_F(UMDDdiDevicePresentFlushTest, Flush_Refused_KeepsTheOldBuffer)
{
    g_NextCommandBufferSize = 0;
    EXPECT_EQ(Device().Flush(), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::Flush pfnRenderCb failed! 0x80004005\n"), 1u);
    EXPECT_EQ(Device().Flush(), E_FAIL);
    EXPECT_EQ(g_Renders.back().CommandLength, FakeKernel::kCommandBufferSize);
}
