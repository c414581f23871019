// Vertex, index and depth buffers.
#include "ResourceFixture.h"

#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscVertexBuffer.h"
#include "resources/UMDRscZBuffer.h"

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
constexpr D3DDDI_POOL kVideo = D3DDDIPOOL_LOCALVIDMEM;
constexpr D3DDDI_POOL kSystem = D3DDDIPOOL_SYSTEMMEM;

class UMDRscBuffersTest : public ResourceFixture
{
};

std::string Low(const void* pointer)
{
    char text[16];
    snprintf(text, sizeof text, "0x%x", UMDLow32(pointer));
    return text;
}
}  // namespace

TEST_F(UMDRscBuffersTest, VertexBuffer_Create_LengthIsWidthTimesHeight)
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

TEST_F(UMDRscBuffersTest, VertexBuffer_SystemMemory_LockGivesTheRuntimesMemoryAndCallsNothing)
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

TEST_F(UMDRscBuffersTest, VertexBuffer_VideoMemory_LockPassesRangeAndFlags)
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

TEST_F(UMDRscBuffersTest, VertexBuffer_WriteToDelegated_CopiesTheStartOfMemoryToTheOffset)
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

TEST_F(UMDRscBuffersTest, VertexBuffer_WriteToDelegatedWithoutMemory_DoesNothing)
{
    CreateRequest request(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 64, 1);
    auto* pBuffer = Create<UMDRscVertexBuffer>(request);
    ForgetCalls();
    EXPECT_EQ(pBuffer->WriteToDelegated(0), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Lines(),
        Lines{"UMDRscVertexBuffer::WriteToDelegated VertexBuffer " + Low(pBuffer->GetVertexBuffer()) + "\n"});
}

TEST_F(UMDRscBuffersTest, VertexBuffer_EachFailure_IsTracedAndReturned)
{
    CreateRequest video(kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 64, 1);
    CreateRequest system(kFlagVertexBuffer, kSystem, D3DDDIFMT_VERTEXDATA, 64, 1);
    system.WithMemory(1, 0);
    UMDRscVertexBuffer* pBuffer = nullptr;
    void* pData = nullptr;
    const std::string prefix = "UMDRscVertexBuffer::";
    ExpectFailures(
        {{"vertexbuffer.Lock", 1, kRefused, {prefix + "Lock Lock failed! 0x8876086a\n"}}},
        [&] { pBuffer = Create<UMDRscVertexBuffer>(video); },
        [&] { return pBuffer->Lock(0, 0, 4, &pData, nullptr, 0); });
    ExpectFailures(
        {{"vertexbuffer.Unlock", 1, kRefused, {prefix + "Unlock Unlock failed! 0x8876086a\n"}}},
        [&] {
            pBuffer = Create<UMDRscVertexBuffer>(video);
            pBuffer->Lock(0, 0, 4, &pData, nullptr, 0);
        },
        [&] { return pBuffer->Unlock(); });
    ExpectFailures(
        {{"vertexbuffer.Lock", 1, kRefused, {prefix + "WriteToDelegated Lock failed! 0x8876086a\n"}},
            {"vertexbuffer.Unlock", 1, kRefused, {prefix + "WriteToDelegated Unlock failed! 0x8876086a\n"}}},
        [&] { pBuffer = Create<UMDRscVertexBuffer>(system); }, [&] { return pBuffer->WriteToDelegated(0); });

    pBuffer = Create<UMDRscVertexBuffer>(system);
    pBuffer->Destroy();
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pBuffer->Lock(0, 0, 4, &pData, nullptr, 0), E_FAIL); }),
        Lines{prefix + "Lock NULL == m_pVertexBuffer\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pBuffer->Unlock(), E_FAIL); }),
        Lines{prefix + "Unlock failed! NULL == m_pVertexBuffer\n"});
}

TEST_F(UMDRscBuffersTest, IndexBuffer_AnyPool_IsLockedOnTheDelegatedDevice)
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

TEST_F(UMDRscBuffersTest, IndexBuffer_EachFailure_IsTracedAndReturned)
{
    CreateRequest request(kFlagIndexBuffer, kVideo, D3DDDIFMT_INDEX32, 64, 1);
    UMDRscIndexBuffer* pBuffer = nullptr;
    void* pData = nullptr;
    ExpectFailures(
        {{"indexbuffer.Lock", 1, kRefused, {"UMDRscIndexBuffer::Lock Lock failed! 0x8876086a\n"}}},
        [&] { pBuffer = Create<UMDRscIndexBuffer>(request); },
        [&] { return pBuffer->Lock(0, 0, 4, &pData, nullptr, 0); });
    ExpectFailures(
        {{"indexbuffer.Unlock", 1, kRefused, {"UMDRscIndexBuffer::Unlock Unlock failed! 0x8876086a\n"}}},
        [&] {
            pBuffer = Create<UMDRscIndexBuffer>(request);
            pBuffer->Lock(0, 0, 4, &pData, nullptr, 0);
        },
        [&] { return pBuffer->Unlock(); });
    pBuffer = Create<UMDRscIndexBuffer>(request);
    pBuffer->Destroy();
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pBuffer->Lock(0, 0, 4, &pData, nullptr, 0), E_FAIL); }),
        Lines{"UMDRscIndexBuffer::Lock Lock not supported!\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pBuffer->Unlock(), E_FAIL); }), Lines{});
}

TEST_F(UMDRscBuffersTest, ZBuffer_Life_CreatesAndReleasesAndIsNeverLocked)
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

TEST_F(UMDRscBuffersTest, BuiltByOpen_EveryClass_StaysEmpty)
{
    UMDRscVertexBuffer vertexBuffer(&Device(), nullptr, nullptr, TRUE, 8, D3DPOOL_SYSTEMMEM);
    UMDRscIndexBuffer indexBuffer(&Device(), nullptr, nullptr, TRUE, 8, D3DPOOL_SYSTEMMEM);
    UMDRscZBuffer depthBuffer(&Device(), nullptr, nullptr, TRUE);
    EXPECT_EQ(vertexBuffer.GetVertexBuffer(), nullptr);
    EXPECT_EQ(vertexBuffer.SystemMemory(), nullptr);
    EXPECT_EQ(indexBuffer.GetIndexBuffer(), nullptr);
    EXPECT_EQ(depthBuffer.GetSurface(), nullptr);
    EXPECT_EQ(vertexBuffer.Create(), E_FAIL);
    EXPECT_EQ(indexBuffer.Create(), E_FAIL);
    EXPECT_EQ(depthBuffer.Create(), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
}
