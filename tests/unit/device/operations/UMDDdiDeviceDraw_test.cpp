// Draws: which delegated call each makes, with what vertices, and what is uploaded before it.
#include "ResourceFixture.h"

using namespace tesslo::test;

namespace
{

constexpr UINT16 kIndices[] = {0, 1, 2};

class UMDDdiDeviceDraw : public ResourceFixture
{
protected:
    UMDDdiDeviceDraw() { m_Fake.NameMemory(kIndices, sizeof(kIndices), "indices"); }

    void BindMemory(UINT stride = 16)
    {
        const D3DDDIARG_SETSTREAMSOURCEUM arg = {0, stride};
        ASSERT_EQ(UMDDdiSetStreamSourceUM(DeviceHandle(), &arg, m_Memory), S_OK);
        ForgetCalls();
    }
    void BindBuffer(HANDLE hBuffer, UINT offset = 0, UINT stride = 16)
    {
        const D3DDDIARG_SETSTREAMSOURCE arg = {0, hBuffer, offset, stride};
        ASSERT_EQ(UMDDdiSetStreamSource(DeviceHandle(), &arg), S_OK);
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
    std::vector<BYTE> Uploaded() { return m_Fake.Find<FakeVertexBuffer>("vertexbuffer#1").Bytes(); }
};

}  // namespace

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_Memory_StartsAtTheVertex)
{
    BindMemory();
    EXPECT_EQ(Draw(0), S_OK);
    EXPECT_EQ(Draw(3), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"DrawPrimitiveUP(4, 5, memory, 16)", "DrawPrimitiveUP(4, 5, memory+48, 16)"}));
    EXPECT_EQ(Trace(), (Lines{"=> UMDDdiDrawPrimitive pEdgeFlags:0x0 PrimitiveCount:5 PrimitiveType:4 VStart:0\n",
                           ">>> UMDDdiDevice::DrawPrimitive\n", "<<< UMDDdiDevice::DrawPrimitive\n",
                           "=> UMDDdiDrawPrimitive pEdgeFlags:0x0 PrimitiveCount:5 PrimitiveType:4 VStart:3\n",
                           ">>> UMDDdiDevice::DrawPrimitive\n", "<<< UMDDdiDevice::DrawPrimitive\n"}));
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_SystemBuffer_UploadsAtTheOffsetAndDraws)
{
    BindBuffer(CreateSystemVertices());
    EXPECT_EQ(Draw(2), S_OK);
    EXPECT_EQ(DeviceLines(), Upload(0, "DrawPrimitive(4, 2, 5)"));
    EXPECT_EQ(Uploaded(), std::vector<BYTE>(m_Memory, m_Memory + 64));
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_SystemBufferWithOffset_UploadsBehindTheEndAndFails)
{
    BindBuffer(CreateSystemVertices(), 32);
    EXPECT_EQ(Draw(), D3DERR_INVALIDCALL);
    EXPECT_EQ(DeviceLines(), Lines{"vertexbuffer#1.Lock(32, 64, out, 0)"});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::DrawPrimitive WriteToDelegated failed! 0x8876086c\n"), 1u);
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive_VideoBuffer_OnlyDraws)
{
    BindBuffer(CreateVertices(), 32);
    EXPECT_EQ(Draw(2), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"DrawPrimitive(4, 2, 5)"});
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_Memory_ByteOffsetIsNotApplied)
{
    BindMemory();
    EXPECT_EQ(Draw2(48), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"DrawPrimitiveUP(3, 6, memory, 16)"});
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_Buffer_UploadsAtZeroAndDividesByTheStride)
{
    BindBuffer(CreateSystemVertices(), 32);
    EXPECT_EQ(Draw2(47), S_OK);
    EXPECT_EQ(DeviceLines(), Upload(0, "DrawPrimitive(3, 2, 6)"));
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_UploadFails_DrawsAllTheSame)
{
    BindBuffer(CreateSystemVertices());
    m_Fake.Fail("vertexbuffer.Lock", kRefused);
    EXPECT_EQ(Draw2(16), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"vertexbuffer#1.Lock(0, 64, out, 0)", "DrawPrimitive(3, 1, 6)"}));
}

TEST_F(UMDDdiDeviceDraw, DrawPrimitive2_StrideOfZero_FaultIsAnsweredWithOk)
{
    BindBuffer(CreateVertices(), 0, 0);
    EXPECT_EQ(Draw2(16), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    const Lines lines = Trace();
    ASSERT_GT(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "EXCEPTION_INT_DIVIDE_BY_ZERO\n");
    EXPECT_EQ(lines.back(), "Exception in DDI function! UMDDdiDrawPrimitive2 failed!\n");
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive_Any_ForwardsSixFieldsAndUploadsNothing)
{
    BindBuffer(CreateSystemVertices());
    EXPECT_EQ(DrawIndexed(), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"DrawIndexedPrimitive(6, -3, 1, 7, 9, 2)"});
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_Memory_BaseIsSignedAndIndexStartIsNotApplied)
{
    BindMemory();
    EXPECT_EQ(DrawIndexed2(32), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory+32, 16)"});
    const D3DDDIARG_SETSTREAMSOURCEUM arg = {0, 16};
    UMDDdiSetStreamSourceUM(DeviceHandle(), &arg, m_Memory + 40);
    m_Fake.ClearLines();
    EXPECT_EQ(DrawIndexed2(-16), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory+24, 16)"});
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_IndexSize_OnlyTwoIsSixteenBits)
{
    BindMemory();
    for (UINT size : {2u, 4u, 0u, 1u, 8u})
    {
        m_Fake.ClearLines();
        EXPECT_EQ(DrawIndexed2(0, size), S_OK);
        const std::string format = size == 2 ? "101" : "102";
        EXPECT_EQ(DeviceLines(), Lines{"DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, " + format + ", memory, 16)"})
            << size;
    }
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_SystemBuffer_CachesItsMemoryUntilTheNextStream)
{
    const HANDLE hBuffer = CreateSystemVertices();
    BindBuffer(hBuffer, 32);
    EXPECT_EQ(DrawIndexed2(), S_OK);
    EXPECT_EQ(DeviceLines(), Upload(0, "DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory, 16)"));
    m_Fake.ClearLines();
    EXPECT_EQ(Draw(1), S_OK);
    EXPECT_EQ(DrawIndexed2(), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"DrawPrimitiveUP(4, 5, memory+16, 16)",
                                 "DrawIndexedPrimitiveUP(5, 1, 7, 2, indices, 101, memory, 16)"}));
    m_Fake.ClearLines();
    EXPECT_EQ(Draw2(16), S_OK);
    EXPECT_EQ(DeviceLines(), Upload(0, "DrawPrimitive(3, 1, 6)"));
    BindBuffer(hBuffer);
    EXPECT_EQ(Draw(), S_OK);
    EXPECT_EQ(DeviceLines(), Upload(0, "DrawPrimitive(4, 0, 5)"));
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_VideoBuffer_HasNoMemoryAndFails)
{
    BindBuffer(CreateVertices());
    EXPECT_EQ(DrawIndexed2(), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::DrawIndexedPrimitive2 m_pStreamSource0VertexBufferPointer is NULL\n"), 1u);
}

TEST_F(UMDDdiDeviceDraw, DrawIndexedPrimitive2_UploadFails_ReturnsItsCode)
{
    BindBuffer(CreateSystemVertices());
    m_Fake.Fail("vertexbuffer.Unlock", kRefused);
    EXPECT_EQ(DrawIndexed2(), kRefused);
    EXPECT_EQ(
        m_Trace.Count("UMDDdiDevice::DrawIndexedPrimitive2 m_pStreamSource0VertexBufferResource->WriteToDelegated "
                      "failed! 0x8876086a\n"),
        1u);
}

TEST_F(UMDDdiDeviceDraw, DelegatedCallFails_EveryPath_TracesItsTextAndReturnsTheCode)
{
    for (const char* pMethod : {"DrawPrimitive", "DrawPrimitiveUP", "DrawIndexedPrimitive", "DrawIndexedPrimitiveUP"})
        m_Fake.Fail(pMethod, kRefused);
    BindMemory();
    EXPECT_EQ(Draw(), kRefused);
    EXPECT_EQ(Draw2(), kRefused);
    EXPECT_EQ(DrawIndexed(), kRefused);
    EXPECT_EQ(DrawIndexed2(), kRefused);
    EXPECT_EQ(m_Trace.LinesContaining("failed!"),
        (Lines{"UMDDdiDevice::DrawPrimitive DrawPrimitiveUP failed! 0x8876086a\n",
            "UMDDdiDevice::DrawPrimitive2 DrawPrimitiveUP failed! 0x8876086a\n",
            "UMDDdiDevice::DrawIndexedPrimitive DrawIndexedPrimitive failed! 0x8876086a\n",
            "UMDDdiDevice::DrawIndexedPrimitive2 DrawIndexedPrimitive failed! 0x8876086a\n"}));
    BindBuffer(CreateVertices());
    EXPECT_EQ(Draw(), kRefused);
    EXPECT_EQ(Draw2(), kRefused);
    EXPECT_EQ(m_Trace.LinesContaining("failed!"),
        (Lines{"UMDDdiDevice::DrawPrimitive m_ThreadGpuD3D9.DrawPrimitive failed! 0x8876086a\n",
            "UMDDdiDevice::DrawPrimitive2 DrawPrimitive failed! 0x8876086a\n"}));
    EXPECT_EQ(m_Trace.LinesContaining("<<<"), Lines{});
}
