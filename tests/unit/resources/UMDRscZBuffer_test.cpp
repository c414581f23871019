// Depth buffers.
#include "ResourceFixture.h"
#include "TraceLevels.h"
#include "TraceText.h"

#include "resources/UMDRscZBuffer.h"

using namespace tesslo::test;

namespace
{
class UMDRscZBufferTest : public ResourceFixture
{
};
}  // namespace

TEST_F(UMDRscZBufferTest, Life_CreatesAndReleasesAndIsNeverLocked)
{
    CreateRequest request(kFlagZBuffer, kVideo, D3DDDIFMT_D24S8, 40, 30);
    request.m_Arg.MultisampleType = D3DDDIMULTISAMPLE_2_SAMPLES;
    request.m_Arg.MultisampleQuality = 1;
    auto* pBuffer = Create<UMDRscZBuffer>(request);
    EXPECT_EQ(DeviceLines(), Lines{"CreateDepthStencilSurface(40, 30, 75, 2, 1, 0, out, null)"});
    const std::string low = Low(pBuffer->GetSurface());
    EXPECT_EQ(m_Trace.Count(
                  "UMDRscZBuffer::Create Width=40 Height=30 Format=75 Surface:" + low + " this:" + Low(pBuffer) + "\n"),
        1U);
    void* pData = nullptr;
    UINT pitch = 0;
    EXPECT_EQ(pBuffer->Lock(0, 0, 0, &pData, &pitch, 0), E_NOTIMPL);
    EXPECT_EQ(pBuffer->Unlock(), E_NOTIMPL);
    IDirect3DSurface9* pDelegated = pBuffer->GetSurface();
    pDelegated->AddRef();
    pBuffer->Destroy();
    pBuffer->Destroy();
    EXPECT_EQ(m_Trace.Count("UMDRscZBuffer::Destroy m_pSurface:" + low + "\n"), 1U);
    EXPECT_EQ(pDelegated->Release(), 0U);
}

TEST_F(UMDRscZBufferTest, Life_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagZBuffer, kVideo, D3DDDIFMT_D24S8, 32, 16);
    EXPECT_EQ(LevelledTrace([&] {
        UMDRscZBuffer buffer(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE);
        buffer.Create();
        buffer.Destroy();
    }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x200 UMDRscZBuffer::Create Width=32 Height=16 Format=75 Surface:0x# this:0x#\n",
            "0x200 UMDRscZBuffer::Destroy m_pSurface:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDRscZBufferTest, BuiltByOpen_StaysEmpty)
{
    UMDRscZBuffer buffer(&Device(), nullptr, nullptr, TRUE);
    EXPECT_EQ(buffer.GetSurface(), nullptr);
    EXPECT_EQ(buffer.Create(), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
}
