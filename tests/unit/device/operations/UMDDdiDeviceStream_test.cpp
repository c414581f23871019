// Stream 0 and the index buffer.
#include "DeviceObjects.h"

namespace
{

constexpr HRESULT kRefused = static_cast<HRESULT>(0x8876086C);

class UMDDdiDeviceStream : public DeviceObjects
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
        return Calls();
    }
};

}  // namespace

TEST_F(UMDDdiDeviceStream, SetStreamSource_Buffer_IsBoundWithOffsetAndStride)
{
    const HANDLE hVertices = CreateVertices();
    EXPECT_EQ(S_OK, SetStream(hVertices, 0, 32, 16));
    EXPECT_EQ(Lines{"SetStreamSource(0, vertexbuffer#1, 32, 16)"}, Calls());
    char entry[120];
    snprintf(entry, sizeof(entry), "=> UMDDdiSetStreamSource hVertexBuffer:0x%x Stream:0 Offset:32 Stride:16 \n",
        UMDLow32(hVertices));
    EXPECT_EQ((Lines{entry, ">>> UMDDdiDevice::SetStreamSource\n", "<<< UMDDdiDevice::SetStreamSource\n"}), Trace());
}

TEST_F(UMDDdiDeviceStream, SetStreamSource_NullBuffer_KeepsTheBinding)
{
    SetStreamUM(m_Memory);
    m_Fake.NameMemory(m_Memory, sizeof(m_Memory), "memory");
    EXPECT_EQ(S_OK, SetStream(nullptr, 0, 8, 8));
    EXPECT_EQ(S_OK, SetStream(nullptr, 3));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(Lines{"DrawPrimitiveUP(1, 1, memory, 16)"}, DrawnFrom());
}

TEST_F(UMDDdiDeviceStream, SetStreamSource_OtherStream_IsRefusedAndKeepsTheBinding)
{
    const HANDLE hVertices = CreateVertices();
    SetStreamUM(m_Memory);
    m_Fake.NameMemory(m_Memory, sizeof(m_Memory), "memory");
    m_Trace.Clear();
    EXPECT_EQ(E_NOTIMPL, SetStream(hVertices, 1));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetStreamSource stream not implemented! 1\n"));
    EXPECT_EQ(Lines{"DrawPrimitiveUP(1, 1, memory, 16)"}, DrawnFrom());
}

TEST_F(UMDDdiDeviceStream, SetStreamSource_DelegatedCallFails_KeepsTheBinding)
{
    const HANDLE hVertices = CreateVertices();
    SetStreamUM(m_Memory);
    m_Fake.NameMemory(m_Memory, sizeof(m_Memory), "memory");
    m_Fake.Fail("SetStreamSource", kRefused);
    EXPECT_EQ(kRefused, SetStream(hVertices));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetStreamSource SetStreamSource failed! 0x8876086c\n"));
    EXPECT_EQ(Lines{"DrawPrimitiveUP(1, 1, memory, 16)"}, DrawnFrom());
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_Data_IsRememberedWithoutACall)
{
    EXPECT_EQ(S_OK, SetStreamUM(m_Memory, 0, 20));
    EXPECT_EQ(Lines{}, Calls());
    char entry[100], detail[120];
    snprintf(entry, sizeof(entry), "=> UMDDdiSetStreamSourceUM Stream:0 Stride:20 pData:0x%x\n", UMDLow32(m_Memory));
    snprintf(detail, sizeof(detail), "UMDDdiDevice::SetStreamSourceUM Resource:0x0 Pointer:0x%x Stride:20\n",
        UMDLow32(m_Memory));
    EXPECT_EQ((Lines{entry, ">>> UMDDdiDevice::SetStreamSourceUM\n", detail, "<<< UMDDdiDevice::SetStreamSourceUM\n"}),
        Trace());
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_NullRecordOrData_IsAcceptedAndTold)
{
    EXPECT_EQ(S_OK, UMDDdiSetStreamSourceUM(DeviceHandle(), nullptr, m_Memory));
    EXPECT_EQ(S_OK, SetStreamUM(nullptr, 3));
    EXPECT_EQ(2u, m_Trace.Count("UMDDdiDevice::SetStreamSourceUM pSetUMStream | pData is NULL\n"));
    EXPECT_EQ(Lines{}, DrawnFrom());
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_OtherStream_IsRefused)
{
    EXPECT_EQ(E_NOTIMPL, SetStreamUM(m_Memory, 2));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetStreamSourceUM Steam is not 0 2\n"));
    EXPECT_EQ(Lines{}, DrawnFrom());
}

TEST_F(UMDDdiDeviceStream, SetIndices_Buffer_IsBound)
{
    const HANDLE hIndices = CreateIndices();
    EXPECT_EQ(S_OK, SetIndices(hIndices));
    EXPECT_EQ(Lines{"SetIndices(indexbuffer#1)"}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("<<< UMDDdiDevice::SetIndices\n"));
}

TEST_F(UMDDdiDeviceStream, SetIndices_NullRecordOrNullBuffer_IsAcceptedWithoutACall)
{
    EXPECT_EQ(S_OK, UMDDdiSetIndices(DeviceHandle(), nullptr));
    EXPECT_EQ((Lines{"=> UMDDdiSetIndices pSetIndices:0x0 Stride:0 hIndexBuffer:0x0\n",
                  ">>> UMDDdiDevice::SetIndices\n", "UMDDdiDevice::SetIndices pSetIndices is NULL\n"}),
        Trace());
    EXPECT_EQ(S_OK, SetIndices(nullptr));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(Lines{}, m_Trace.LinesContaining("Exception in"));
}

TEST_F(UMDDdiDeviceStream, SetIndices_BufferWithoutDelegatedBuffer_IsAcceptedAndTold)
{
    const HANDLE hIndices = CreateIndices();
    ToResource(hIndices)->Destroy();
    EXPECT_EQ(S_OK, SetIndices(hIndices));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetIndices pIndexBuffer is NULL\n"));
}

TEST_F(UMDDdiDeviceStream, SetIndices_DelegatedCallFails_ReturnsItsCode)
{
    const HANDLE hIndices = CreateIndices();
    m_Fake.Fail("SetIndices", kRefused);
    EXPECT_EQ(kRefused, SetIndices(hIndices));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetIndices SetIndices failed! 0x8876086c\n"));
}

TEST_F(UMDDdiDeviceStream, DestroyResource_BufferOfStreamZero_LaterDrawsFail)
{
    const HANDLE hVertices = CreateSystemVertices();
    SetStream(hVertices);
    // The draw from memory caches the address of the buffer's memory; it must go with the buffer.
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 indexed = {D3DPT_POINTLIST, 0, 0, 1, 0, 1};
    const UINT16 index = 0;
    EXPECT_EQ(S_OK, UMDDdiDrawIndexedPrimitive2(DeviceHandle(), &indexed, 2, &index, nullptr));
    DestroyResource(hVertices);

    const D3DDDIARG_DRAWPRIMITIVE draw = {D3DPT_POINTLIST, 0, 1};
    const D3DDDIARG_DRAWPRIMITIVE2 draw2 = {D3DPT_POINTLIST, 0, 1};
    EXPECT_EQ(E_FAIL, UMDDdiDrawPrimitive(DeviceHandle(), &draw, nullptr));
    EXPECT_EQ(E_FAIL, UMDDdiDrawPrimitive2(DeviceHandle(), &draw2));
    EXPECT_EQ(E_FAIL, UMDDdiDrawIndexedPrimitive2(DeviceHandle(), &indexed, 2, &index, nullptr));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::DrawPrimitive2 failed! stream 0 is not set\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::DrawIndexedPrimitive2 failed! stream 0 is not set\n"));
}

TEST_F(UMDDdiDeviceStream, DestroyResource_AnotherBuffer_KeepsTheBinding)
{
    const HANDLE hVertices = CreateVertices(), hOther = CreateVertices();
    SetStream(hVertices);
    DestroyResource(hOther);
    EXPECT_EQ(Lines{"DrawPrimitive(1, 0, 1)"}, DrawnFrom());
}

TEST_F(UMDDdiDeviceStream, SetStreamSourceUM_AfterABuffer_TheBufferIsForgotten)
{
    m_Fake.NameMemory(m_Memory, sizeof(m_Memory), "memory");
    SetStream(CreateVertices());
    EXPECT_EQ(S_OK, SetStreamUM(m_Memory));
    ForgetCalls();
    const D3DDDIARG_DRAWPRIMITIVE2 arg = {D3DPT_POINTLIST, 0, 1};
    EXPECT_EQ(S_OK, UMDDdiDrawPrimitive2(DeviceHandle(), &arg));
    EXPECT_EQ(Lines{"DrawPrimitiveUP(1, 1, memory, 16)"}, Calls());
}
