// Stream 0 and the index buffer.
#include "ResourceFixture.h"
#include "TraceText.h"

using namespace tesslo::test;

namespace
{

class UMDDdiDeviceStream : public ResourceFixture
{
protected:
    HRESULT SetStream(HANDLE hBuffer, UINT stream = 0, UINT offset = 0, UINT stride = 16)
    {
        const D3DDDIARG_SETSTREAMSOURCE arg = {stream, hBuffer, offset, stride};
        return UMDDdiSetStreamSource(DeviceHandle(), &arg);
    }
    HRESULT SetStreamUM(const void* pData, UINT stream = 0, UINT stride = 16)
    {
        const D3DDDIARG_SETSTREAMSOURCEUM arg = {stream, stride};
        return UMDDdiSetStreamSourceUM(DeviceHandle(), &arg, pData);
    }
    HRESULT SetIndices(HANDLE hBuffer)
    {
        const D3DDDIARG_SETINDICES arg = {hBuffer, 2};
        return UMDDdiSetIndices(DeviceHandle(), &arg);
    }
    /// The call that a draw of one point makes: it tells what stream 0 is.
    Lines DrawnFrom()
    {
        ForgetCalls();
        const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
        UMDDdiDrawPrimitive(DeviceHandle(), &arg, nullptr);
        return DeviceLines();
    }
};

}  // namespace

TEST_F(UMDDdiDeviceStream, SetStreamSource_Buffer_IsBoundWithOffsetAndStride)
{
    const HANDLE hVertices = CreateVertices();
    EXPECT_EQ(SetStream(hVertices, 0, 32, 16), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"SetStreamSource(0, vertexbuffer#1, 32, 16)"});
    const std::string entry =
        Text("=> UMDDdiSetStreamSource hVertexBuffer:0x%x Stream:0 Offset:32 Stride:16 \n", UMDLow32(hVertices));
    EXPECT_EQ(Trace(), (Lines{entry, ">>> UMDDdiDevice::SetStreamSource\n", "<<< UMDDdiDevice::SetStreamSource\n"}));
}

TEST_F(UMDDdiDeviceStream, SetStreamSource_NullBuffer_KeepsTheBinding)
{
    SetStreamUM(m_Memory);
    EXPECT_EQ(SetStream(nullptr, 0, 8, 8), S_OK);
    EXPECT_EQ(SetStream(nullptr, 3), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(DrawnFrom(), Lines{"DrawPrimitiveUP(1, 1, memory, 16)"});
}

TEST_F(UMDDdiDeviceStream, SetStreamSource_OtherStream_IsRefusedAndKeepsTheBinding)
{
    const HANDLE hVertices = CreateVertices();
    SetStreamUM(m_Memory);
    m_Trace.Clear();
    EXPECT_EQ(SetStream(hVertices, 1), E_NOTIMPL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetStreamSource stream not implemented! 1\n"), 1u);
    EXPECT_EQ(DrawnFrom(), Lines{"DrawPrimitiveUP(1, 1, memory, 16)"});
}

TEST_F(UMDDdiDeviceStream, SetStreamSource_DelegatedCallFails_KeepsTheBinding)
{
    const HANDLE hVertices = CreateVertices();
    SetStreamUM(m_Memory);
    m_Fake.Fail("SetStreamSource", kRefused);
    EXPECT_EQ(SetStream(hVertices), kRefused);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetStreamSource SetStreamSource failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(DrawnFrom(), Lines{"DrawPrimitiveUP(1, 1, memory, 16)"});
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_Data_IsRememberedWithoutACall)
{
    EXPECT_EQ(SetStreamUM(m_Memory, 0, 20), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    const std::string entry = Text("=> UMDDdiSetStreamSourceUM Stream:0 Stride:20 pData:0x%x\n", UMDLow32(m_Memory));
    const std::string detail =
        Text("UMDDdiDevice::SetStreamSourceUM Resource:0x0 Pointer:0x%x Stride:20\n", UMDLow32(m_Memory));
    EXPECT_EQ(Trace(),
        (Lines{entry, ">>> UMDDdiDevice::SetStreamSourceUM\n", detail, "<<< UMDDdiDevice::SetStreamSourceUM\n"}));
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_NullRecordOrData_IsAcceptedAndTold)
{
    EXPECT_EQ(UMDDdiSetStreamSourceUM(DeviceHandle(), nullptr, m_Memory), S_OK);
    EXPECT_EQ(SetStreamUM(nullptr, 3), S_OK);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetStreamSourceUM pSetUMStream | pData is NULL\n"), 2u);
    EXPECT_EQ(DrawnFrom(), Lines{});
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_OtherStream_IsRefused)
{
    EXPECT_EQ(SetStreamUM(m_Memory, 2), E_NOTIMPL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetStreamSourceUM Steam is not 0 2\n"), 1u);
    EXPECT_EQ(DrawnFrom(), Lines{});
}

TEST_F(UMDDdiDeviceStream, SetIndices_Buffer_IsBound)
{
    const HANDLE hIndices = CreateIndices();
    EXPECT_EQ(SetIndices(hIndices), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"SetIndices(indexbuffer#1)"});
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::SetIndices\n"), 1u);
}

TEST_F(UMDDdiDeviceStream, SetIndices_NullRecordOrNullBuffer_IsAcceptedWithoutACall)
{
    EXPECT_EQ(UMDDdiSetIndices(DeviceHandle(), nullptr), S_OK);
    EXPECT_EQ(Trace(), (Lines{"=> UMDDdiSetIndices pSetIndices:0x0 Stride:0 hIndexBuffer:0x0\n",
                           ">>> UMDDdiDevice::SetIndices\n", "UMDDdiDevice::SetIndices pSetIndices is NULL\n"}));
    EXPECT_EQ(SetIndices(nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.LinesContaining("Exception in"), Lines{});
}

TEST_F(UMDDdiDeviceStream, SetIndices_BufferWithoutDelegatedBuffer_IsAcceptedAndTold)
{
    const HANDLE hIndices = CreateIndices();
    ToResource(hIndices)->Destroy();
    EXPECT_EQ(SetIndices(hIndices), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetIndices pIndexBuffer is NULL\n"), 1u);
}

TEST_F(UMDDdiDeviceStream, SetIndices_DelegatedCallFails_ReturnsItsCode)
{
    const HANDLE hIndices = CreateIndices();
    m_Fake.Fail("SetIndices", kRefused);
    EXPECT_EQ(SetIndices(hIndices), kRefused);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetIndices SetIndices failed! 0x8876086a\n"), 1u);
}

TEST_F(UMDDdiDeviceStream, DestroyResource_BufferOfStreamZero_LaterDrawsFail)
{
    const HANDLE hVertices = CreateSystemVertices();
    SetStream(hVertices);
    // The draw from memory caches the address of the buffer's memory; it must go with the buffer.
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 indexed = {D3DPT_POINTLIST, 0, 0, 1, 0, 1};
    const UINT16 index = 0;
    EXPECT_EQ(UMDDdiDrawIndexedPrimitive2(DeviceHandle(), &indexed, 2, &index, nullptr), S_OK);
    Destroy(hVertices);
    ForgetCalls();

    const D3DDDIARG_DRAWPRIMITIVE draw = {D3DPT_POINTLIST, 0, 1};
    const D3DDDIARG_DRAWPRIMITIVE2 draw2 = {D3DPT_POINTLIST, 0, 1};
    EXPECT_EQ(UMDDdiDrawPrimitive(DeviceHandle(), &draw, nullptr), E_FAIL);
    EXPECT_EQ(UMDDdiDrawPrimitive2(DeviceHandle(), &draw2), E_FAIL);
    EXPECT_EQ(UMDDdiDrawIndexedPrimitive2(DeviceHandle(), &indexed, 2, &index, nullptr), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::DrawPrimitive2 failed! stream 0 is not set\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::DrawIndexedPrimitive2 failed! stream 0 is not set\n"), 1u);
}

TEST_F(UMDDdiDeviceStream, DestroyResource_AnotherBuffer_KeepsTheBinding)
{
    const HANDLE hVertices = CreateVertices(), hOther = CreateVertices();
    SetStream(hVertices);
    Destroy(hOther);
    ForgetCalls();
    EXPECT_EQ(DrawnFrom(), Lines{"DrawPrimitive(1, 0, 1)"});
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_AfterABuffer_TheBufferIsForgotten)
{
    SetStream(CreateVertices());
    EXPECT_EQ(SetStreamUM(m_Memory), S_OK);
    ForgetCalls();
    const D3DDDIARG_DRAWPRIMITIVE2 arg = {D3DPT_POINTLIST, 0, 1};
    EXPECT_EQ(UMDDdiDrawPrimitive2(DeviceHandle(), &arg), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"DrawPrimitiveUP(1, 1, memory, 16)"});
}
