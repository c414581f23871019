// Draws: which delegated call each makes, with what vertices, and what is uploaded before it.
#include "DeviceObjects.h"

namespace
{

constexpr HRESULT kRefused = static_cast<HRESULT>(0x8876086C);
constexpr UINT16 kIndices[] = {0, 1, 2};

class UMDDdiDeviceDraw : public DeviceObjects
{
protected:
    UMDDdiDeviceDraw()
    {
        m_Fake.NameMemory(m_Memory, sizeof(m_Memory), "memory");
        m_Fake.NameMemory(kIndices, sizeof(kIndices), "indices");
    }

    void BindMemory(UINT stride = 16)
    {
        const D3DDDIARG_SETSTREAMSOURCEUM arg = {0, stride};
        ASSERT_EQ(S_OK, UMDDdiSetStreamSourceUM(DeviceHandle(), &arg, m_Memory));
        ForgetCalls();
    }
    void BindBuffer(HANDLE hBuffer, UINT offset = 0, UINT stride = 16)
    {
        const D3DDDIARG_SETSTREAMSOURCE arg = {0, hBuffer, offset, stride};
        ASSERT_EQ(S_OK, UMDDdiSetStreamSource(DeviceHandle(), &arg));
        ForgetCalls();
    }
    HRESULT Draw(UINT start = 0)
    {
        const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_TRIANGLELIST, start, 5};
        return UMDDdiDrawPrimitive(DeviceHandle(), &arg, nullptr);
    }
    HRESULT Draw2(UINT firstByte = 0)
    {
        const D3DDDIARG_DRAWPRIMITIVE2 arg = {D3DPT_LINESTRIP, firstByte, 6};
        return UMDDdiDrawPrimitive2(DeviceHandle(), &arg);
    }
    HRESULT DrawIndexed()
    {
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {D3DPT_TRIANGLEFAN, -3, 1, 7, 9, 2};
        return UMDDdiDrawIndexedPrimitive(DeviceHandle(), &arg);
    }
    HRESULT DrawIndexed2(INT baseByte = 0, UINT indexSize = 2)
    {
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {D3DPT_TRIANGLESTRIP, baseByte, 1, 7, 4, 2};
        return UMDDdiDrawIndexedPrimitive2(DeviceHandle(), &arg, indexSize, kIndices, nullptr);
    }
    /// The calls of an upload: a lock and an unlock.
    static Lines Upload(UINT offset, const std::string& draw)
    {
        return {"vertexbuffer#1.Lock(" + std::to_string(offset) + ", 64, out, 0)", "vertexbuffer#1.Unlock()", draw};
    }
    std::vector<BYTE> Uploaded() { return m_Fake.Find<tesslo::test::FakeVertexBuffer>("vertexbuffer#1").Bytes(); }
};

}  // namespace

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_Memory_StartsAtTheVertex)
{
    BindMemory();
    EXPECT_EQ(S_OK, Draw(0));
    EXPECT_EQ(S_OK, Draw(3));
    EXPECT_EQ((Lines{"DrawPrimitiveUP(4, 5, memory, 16)", "DrawPrimitiveUP(4, 5, memory+48, 16)"}), Calls());
    EXPECT_EQ((Lines{"=> UMDDdiDrawPrimitive pEdgeFlags:0x0 PrimitiveCount:5 PrimitiveType:4 VStart:0\n",
                  ">>> UMDDdiDevice::DrawPrimitive\n", "<<< UMDDdiDevice::DrawPrimitive\n",
                  "=> UMDDdiDrawPrimitive pEdgeFlags:0x0 PrimitiveCount:5 PrimitiveType:4 VStart:3\n",
                  ">>> UMDDdiDevice::DrawPrimitive\n", "<<< UMDDdiDevice::DrawPrimitive\n"}),
        Trace());
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_SystemBuffer_UploadsAtTheOffsetAndDraws)
{
    BindBuffer(CreateSystemVertices());
    EXPECT_EQ(S_OK, Draw(2));
    EXPECT_EQ(Upload(0, "DrawPrimitive(4, 2, 5)"), Calls());
    EXPECT_EQ(std::vector<BYTE>(m_Memory, m_Memory + 64), Uploaded());
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_SystemBufferWithOffset_UploadsBehindTheEndAndFails)
{
    BindBuffer(CreateSystemVertices(), 32);
    EXPECT_EQ(D3DERR_INVALIDCALL, Draw());
    EXPECT_EQ(Lines{"vertexbuffer#1.Lock(32, 64, out, 0)"}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::DrawPrimitive WriteToDelegated failed! 0x8876086c\n"));
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_VideoBuffer_OnlyDraws)
{
    BindBuffer(CreateVertices(), 32);
    EXPECT_EQ(S_OK, Draw(2));
    EXPECT_EQ(Lines{"DrawPrimitive(4, 2, 5)"}, Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_Memory_ByteOffsetIsNotApplied)
{
    BindMemory();
    EXPECT_EQ(S_OK, Draw2(48));
    EXPECT_EQ(Lines{"DrawPrimitiveUP(3, 6, memory, 16)"}, Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_Buffer_UploadsAtZeroAndDividesByTheStride)
{
    BindBuffer(CreateSystemVertices(), 32);
    EXPECT_EQ(S_OK, Draw2(47));
    EXPECT_EQ(Upload(0, "DrawPrimitive(3, 2, 6)"), Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_UploadFails_DrawsAllTheSame)
{
    BindBuffer(CreateSystemVertices());
    m_Fake.Fail("vertexbuffer.Lock", kRefused);
    EXPECT_EQ(S_OK, Draw2(16));
    EXPECT_EQ((Lines{"vertexbuffer#1.Lock(0, 64, out, 0)", "DrawPrimitive(3, 1, 6)"}), Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_StrideOfZero_FaultIsAnsweredWithOk)
{
    BindBuffer(CreateVertices(), 0, 0);
    EXPECT_EQ(S_OK, Draw2(16));
    EXPECT_EQ(Lines{}, Calls());
    const Lines lines = Trace();
    ASSERT_LT(2u, lines.size());
    EXPECT_EQ("EXCEPTION_INT_DIVIDE_BY_ZERO\n", lines[lines.size() - 2]);
    EXPECT_EQ("Exception in DDI function! UMDDdiDrawPrimitive2 failed!\n", lines.back());
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive_Any_ForwardsSixFieldsAndUploadsNothing)
{
    BindBuffer(CreateSystemVertices());
    EXPECT_EQ(S_OK, DrawIndexed());
    EXPECT_EQ(Lines{"DrawIndexedPrimitive(6, -3, 1, 7, 9, 2)"}, Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_Memory_BaseIsSignedAndIndexStartIsNotApplied)
{
    BindMemory();
    EXPECT_EQ(S_OK, DrawIndexed2(32));
    EXPECT_EQ(Lines{"DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory+32, 16)"}, Calls());
    const D3DDDIARG_SETSTREAMSOURCEUM arg = {0, 16};
    UMDDdiSetStreamSourceUM(DeviceHandle(), &arg, m_Memory + 40);
    m_Fake.ClearLines();
    EXPECT_EQ(S_OK, DrawIndexed2(-16));
    EXPECT_EQ(Lines{"DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory+24, 16)"}, Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_IndexSize_OnlyTwoIsSixteenBits)
{
    BindMemory();
    for (UINT size : {2u, 4u, 0u, 1u, 8u})
    {
        m_Fake.ClearLines();
        EXPECT_EQ(S_OK, DrawIndexed2(0, size));
        const std::string format = size == 2 ? "101" : "102";
        EXPECT_EQ(Lines{"DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, " + format + ", memory, 16)"}, Calls()) << size;
    }
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_SystemBuffer_CachesItsMemoryUntilTheNextStream)
{
    const HANDLE hBuffer = CreateSystemVertices();
    BindBuffer(hBuffer, 32);
    EXPECT_EQ(S_OK, DrawIndexed2());
    EXPECT_EQ(Upload(0, "DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory, 16)"), Calls());
    m_Fake.ClearLines();
    EXPECT_EQ(S_OK, Draw(1));
    EXPECT_EQ(S_OK, DrawIndexed2());
    EXPECT_EQ(
        (Lines{"DrawPrimitiveUP(4, 5, memory+16, 16)", "DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory, 16)"}),
        Calls());
    m_Fake.ClearLines();
    EXPECT_EQ(S_OK, Draw2(16));
    EXPECT_EQ(Upload(0, "DrawPrimitive(3, 1, 6)"), Calls());
    BindBuffer(hBuffer);
    EXPECT_EQ(S_OK, Draw());
    EXPECT_EQ(Upload(0, "DrawPrimitive(4, 0, 5)"), Calls());
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_VideoBuffer_HasNoMemoryAndFails)
{
    BindBuffer(CreateVertices());
    EXPECT_EQ(E_FAIL, DrawIndexed2());
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::DrawIndexedPrimitive2 m_pStreamSource0VertexBufferPointer is NULL\n"));
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_UploadFails_ReturnsItsCode)
{
    BindBuffer(CreateSystemVertices());
    m_Fake.Fail("vertexbuffer.Unlock", kRefused);
    EXPECT_EQ(kRefused, DrawIndexed2());
    EXPECT_EQ(
        1u, m_Trace.Count("UMDDdiDevice::DrawIndexedPrimitive2 m_pStreamSource0VertexBufferResource->WriteToDelegated "
                          "failed! 0x8876086c\n"));
}

TEST_F(UMDDdiDeviceDraw, DelegatedCallFails_EveryPath_TracesItsTextAndReturnsTheCode)
{
    for (const char* pMethod : {"DrawPrimitive", "DrawPrimitiveUP", "DrawIndexedPrimitive", "DrawIndexedPrimitiveUP"})
        m_Fake.Fail(pMethod, kRefused);
    BindMemory();
    EXPECT_EQ(kRefused, Draw());
    EXPECT_EQ(kRefused, Draw2());
    EXPECT_EQ(kRefused, DrawIndexed());
    EXPECT_EQ(kRefused, DrawIndexed2());
    EXPECT_EQ((Lines{"UMDDdiDevice::DrawPrimitive DrawPrimitiveUP failed! 0x8876086c\n",
                  "UMDDdiDevice::DrawPrimitive2 DrawPrimitiveUP failed! 0x8876086c\n",
                  "UMDDdiDevice::DrawIndexedPrimitive DrawIndexedPrimitive failed! 0x8876086c\n",
                  "UMDDdiDevice::DrawIndexedPrimitive2 DrawIndexedPrimitive failed! 0x8876086c\n"}),
        m_Trace.LinesContaining("failed!"));
    BindBuffer(CreateVertices());
    EXPECT_EQ(kRefused, Draw());
    EXPECT_EQ(kRefused, Draw2());
    EXPECT_EQ((Lines{"UMDDdiDevice::DrawPrimitive m_ThreadGpuD3D9.DrawPrimitive failed! 0x8876086c\n",
                  "UMDDdiDevice::DrawPrimitive2 DrawPrimitive failed! 0x8876086c\n"}),
        m_Trace.LinesContaining("failed!"));
    EXPECT_EQ(Lines{}, m_Trace.LinesContaining("<<<"));
}
