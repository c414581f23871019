// Index buffers.
#include "BufferFixture.h"
#include "TraceText.h"

#include "resources/UMDRscIndexBuffer.h"

using namespace tesslo::test;

namespace
{
class UMDRscIndexBufferTest : public BufferFixture<UMDRscIndexBuffer>
{
protected:
    UMDRscIndexBufferTest() : BufferFixture("UMDRscIndexBuffer", "indexbuffer") {}
};
}  // namespace

TEST_F(UMDRscIndexBufferTest, AnyPool_IsLockedOnTheDelegatedDevice)
{
    for (D3DDDI_POOL pool : {kVideo, kSystem})
    {
        m_Fake.RestartNames();
        CreateRequest request(kFlagIndexBuffer | kFlagWriteOnly, pool, D3DDDIFMT_INDEX16, 40, 2);
        request.WithMemory(1, 0);
        ForgetCalls();
        auto* pBuffer = Create<UMDRscIndexBuffer>(request);
        const std::string number = pool == kSystem ? "2" : "0";
        EXPECT_EQ(DeviceLines(), Lines{"CreateIndexBuffer(80, 8, 101, " + number + ", out, null)"});
        const std::string low = Low(pBuffer->GetIndexBuffer());
        EXPECT_EQ(m_Trace.Count("UMDRscIndexBuffer::Create Length=80 Usage=8 Format=101 Pool=" + number +
                                " IndexBuffer:" + low + " this:" + Low(pBuffer) + "\n"),
            1U);
        ForgetCalls();
        void* pData = nullptr;
        EXPECT_EQ(pBuffer->Lock(1, 4, 12, &pData, nullptr, D3DLOCK_DISCARD), S_OK);
        EXPECT_EQ(pData, m_Fake.Find<FakeIndexBuffer>("indexbuffer#1").Bytes().data() + 4);
        EXPECT_EQ(pBuffer->Unlock(), S_OK);
        EXPECT_EQ(DeviceLines(), (Lines{"indexbuffer#1.Lock(4, 12, out, 8192)", "indexbuffer#1.Unlock()"}));
        EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDRscIndexBuffer::Lock " + low + " m_Pool:" + number + "\n",
                                       "UMDRscIndexBuffer::Lock " + low + "\n"}));
        DestroyAll();
        EXPECT_EQ(
            m_Trace.Count("UMDRscIndexBuffer::Destroy m_pIndexBuffer:" + low + " this:" + Low(pBuffer) + "\n"), 1U);
    }
}

TEST_F(UMDRscIndexBufferTest, EachFailure_IsTracedAndReturned)
{
    CreateRequest request(kFlagIndexBuffer, kVideo, D3DDDIFMT_INDEX32, 64, 1);
    ExpectLockAndUnlockPassCodesOn(request);
    ExpectDestroyedIsRefused(request, {"UMDRscIndexBuffer::Lock Lock not supported!\n"}, {});
}

TEST_F(UMDRscIndexBufferTest, Life_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagIndexBuffer, kSystem, D3DDDIFMT_INDEX32, 64, 1);
    EXPECT_EQ(TraceOfLife(request, D3DPOOL_SYSTEMMEM, [](UMDRscIndexBuffer&) {}),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x200 UMDRscIndexBuffer::Create Length=64 Usage=8 Format=102 Pool=2 IndexBuffer:0x# this:0x#\n",
            "0x20 UMDRscIndexBuffer::Lock 0x# m_Pool:2\n", "0x20 UMDRscIndexBuffer::Lock 0x#\n",
            "0x200 UMDRscIndexBuffer::Destroy m_pIndexBuffer:0x# this:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDRscIndexBufferTest, BuiltByOpen_StaysEmpty)
{
    UMDRscIndexBuffer buffer(&Device(), nullptr, nullptr, TRUE, 8, D3DPOOL_SYSTEMMEM);
    EXPECT_EQ(buffer.GetIndexBuffer(), nullptr);
    EXPECT_EQ(buffer.Create(), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
}
