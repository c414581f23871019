// Vertex buffers.
#include "BufferFixture.h"
#include "TraceText.h"

#include "resources/UMDRscVertexBuffer.h"

using namespace tesslo::test;

namespace
{
class UMDRscVertexBufferTest : public BufferFixture<UMDRscVertexBuffer>
{
protected:
    UMDRscVertexBufferTest() : BufferFixture("UMDRscVertexBuffer", "vertexbuffer") {}
};
}  // namespace

TEST_F(UMDRscVertexBufferTest, Create_LengthIsWidthTimesHeight)
{
    CreateRequest request(kFlagVertexBuffer | kFlagDynamic | kFlagWriteOnly, kVideo, D3DDDIFMT_VERTEXDATA, 96, 3);
    request.m_Arg.Fvf = 0x142;
    auto* pBuffer = Create<UMDRscVertexBuffer>(request);
    EXPECT_EQ(DeviceLines(), Lines{"CreateVertexBuffer(288, 520, 322, 0, out, null)"});
    EXPECT_EQ(m_Trace.Count("UMDRscVertexBuffer::Create Length=288 Usage=520 Pool=0 IndexBuffer:" +
                            Low(pBuffer->GetVertexBuffer()) + " this:" + Low(pBuffer) + "\n"),
        1U);
    EXPECT_EQ(pBuffer->GetPool(), D3DPOOL_DEFAULT);
    EXPECT_EQ(pBuffer->GetFormat(), D3DDDIFMT_X8R8G8B8);
    const std::string destroy = "UMDRscVertexBuffer::Destroy m_pVertexBuffer:" + Low(pBuffer->GetVertexBuffer()) +
                                " this:" + Low(pBuffer) + "\n";
    IDirect3DVertexBuffer9* pDelegated = pBuffer->GetVertexBuffer();
    pDelegated->AddRef();
    pBuffer->Destroy();
    pBuffer->Destroy();
    EXPECT_EQ(m_Trace.Count(destroy), 1U);
    EXPECT_EQ(pDelegated->Release(), 0U);
    EXPECT_EQ(KernelLines(), Lines{});
}

TEST_F(UMDRscVertexBufferTest, SystemMemory_LockGivesTheRuntimesMemoryAndCallsNothing)
{
    CreateRequest request(kFlagVertexBuffer, kSystem, D3DDDIFMT_VERTEXDATA, 64, 1);
    request.WithMemory(1, 0);
    auto* pBuffer = Create<UMDRscVertexBuffer>(request);
    ForgetCalls();
    void* pData = nullptr;
    UINT pitch = 77;
    EXPECT_EQ(pBuffer->Lock(0, 8, 16, &pData, &pitch, D3DLOCK_DISCARD), S_OK);
    EXPECT_EQ(pData, request.Memory(0).data());
    EXPECT_EQ(pitch, 77U);
    EXPECT_EQ(pBuffer->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(pBuffer->SystemMemory(), request.Memory(0).data());
    const std::string low = Low(pBuffer->GetVertexBuffer());
    EXPECT_EQ(m_Trace.Lines(), (Lines{"UMDRscVertexBuffer::VertexBuffer " + low + "\n",
                                   "UMDRscVertexBuffer::Unlock VertexBuffer " + low + "\n"}));
}

TEST_F(UMDRscVertexBufferTest, VideoMemory_LockPassesRangeAndFlags)
{
    CreateRequest request(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 64, 1);
    auto* pBuffer = Create<UMDRscVertexBuffer>(request);
    ForgetCalls();
    void* pData = nullptr;
    EXPECT_EQ(pBuffer->Lock(1, 8, 16, &pData, nullptr, D3DLOCK_NOOVERWRITE), S_OK);
    EXPECT_EQ(pData, m_Fake.Find<FakeVertexBuffer>("vertexbuffer#1").Bytes().data() + 8);
    EXPECT_EQ(pBuffer->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"vertexbuffer#1.Lock(8, 16, out, 4096)", "vertexbuffer#1.Unlock()"}));
}

TEST_F(UMDRscVertexBufferTest, WriteToDelegated_CopiesTheStartOfMemoryToTheOffset)
{
    CreateRequest request(kFlagVertexBuffer, kSystem, D3DDDIFMT_VERTEXDATA, 32, 2);
    request.WithMemory(1, 0);
    auto* pBuffer = Create<UMDRscVertexBuffer>(request);
    auto& bytes = m_Fake.Find<FakeVertexBuffer>("vertexbuffer#1").Bytes();
    bytes.resize(96);  // room behind the length, to see what an offset does
    ForgetCalls();
    EXPECT_EQ(pBuffer->WriteToDelegated(24), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"vertexbuffer#1.Lock(24, 64, out, 0)", "vertexbuffer#1.Unlock()"}));
    for (UINT i = 0; i < 96; i++)
        ASSERT_EQ(bytes[i], i >= 24 && i < 88 ? request.Memory(0)[i - 24] : 0) << i;
}

TEST_F(UMDRscVertexBufferTest, WriteToDelegatedWithoutMemory_DoesNothing)
{
    CreateRequest request(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 64, 1);
    auto* pBuffer = Create<UMDRscVertexBuffer>(request);
    ForgetCalls();
    EXPECT_EQ(pBuffer->WriteToDelegated(0), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Lines(),
        Lines{"UMDRscVertexBuffer::WriteToDelegated VertexBuffer " + Low(pBuffer->GetVertexBuffer()) + "\n"});
}

TEST_F(UMDRscVertexBufferTest, EachFailure_IsTracedAndReturned)
{
    CreateRequest video(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 64, 1);
    CreateRequest system(kFlagVertexBuffer, kSystem, D3DDDIFMT_VERTEXDATA, 64, 1);
    system.WithMemory(1, 0);
    UMDRscVertexBuffer* pBuffer = nullptr;
    ExpectLockAndUnlockPassCodesOn(video);
    ExpectFailures(
        {{"vertexbuffer.Lock", 1, kRefused, {"UMDRscVertexBuffer::WriteToDelegated Lock failed! 0x8876086a\n"}},
            {"vertexbuffer.Unlock", 1, kRefused, {"UMDRscVertexBuffer::WriteToDelegated Unlock failed! 0x8876086a\n"}}},
        [&] { pBuffer = Create<UMDRscVertexBuffer>(system); }, [&] { return pBuffer->WriteToDelegated(0); });
    ExpectDestroyedIsRefused(system, {"UMDRscVertexBuffer::Lock NULL == m_pVertexBuffer\n"},
        {"UMDRscVertexBuffer::Unlock failed! NULL == m_pVertexBuffer\n"});
}

TEST_F(UMDRscVertexBufferTest, Life_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagVertexBuffer, kVideo, D3DDDIFMT_UNKNOWN, 64, 1);
    request.WithMemory(1, 0);
    EXPECT_EQ(TraceOfLife(request, D3DPOOL_DEFAULT, [](UMDRscVertexBuffer& buffer) { buffer.WriteToDelegated(0); }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x200 UMDRscVertexBuffer::Create Length=64 Usage=8 Pool=0 IndexBuffer:0x# this:0x#\n",
            "0x20 UMDRscVertexBuffer::VertexBuffer 0x#\n", "0x20 UMDRscVertexBuffer::Unlock VertexBuffer 0x#\n",
            "0x200 UMDRscVertexBuffer::WriteToDelegated VertexBuffer 0x#\n",
            "0x200 UMDRscVertexBuffer::Destroy m_pVertexBuffer:0x# this:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDRscVertexBufferTest, BuiltByOpen_StaysEmpty)
{
    UMDRscVertexBuffer buffer(&Device(), nullptr, nullptr, TRUE, 8, D3DPOOL_SYSTEMMEM);
    EXPECT_EQ(buffer.GetVertexBuffer(), nullptr);
    EXPECT_EQ(buffer.SystemMemory(), nullptr);
    EXPECT_EQ(buffer.Create(), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
}
