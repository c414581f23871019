// The trace of draws.
#include "OperationTraceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDeviceDrawTraceTest : public OperationTraceFixture
{
protected:
    void SetUp() override
    {
        OperationTraceFixture::SetUp();
        m_hVertices = CreateVertices();
    }

    void BindMemory()
    {
        const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, 16};
        const TraceMask quiet(0);
        Device().SetStreamSourceUM(&stream, m_Memory);
    }
    void BindBuffer()
    {
        const D3DDDIARG_SETSTREAMSOURCE stream = {0, m_hVertices, 0, 16};
        const TraceMask quiet(0);
        Device().SetStreamSource(&stream);
    }

    HRESULT Draw()
    {
        const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
        return Device().DrawPrimitive(&arg);
    }
    HRESULT Draw2()
    {
        const D3DDDIARG_DRAWPRIMITIVE2 arg = {D3DPT_POINTLIST, 0, 1};
        return Device().DrawPrimitive2(&arg);
    }
    HRESULT DrawIndexed()
    {
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
        return Device().DrawIndexedPrimitive(&arg);
    }
    HRESULT DrawIndexed2()
    {
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
        static constexpr USHORT kIndices[3] = {};
        return Device().DrawIndexedPrimitive2(&arg, 2, kIndices);
    }

    HANDLE m_hVertices = nullptr;
    const std::vector<Operation> m_FromMemory = {
        {"DrawPrimitive", "DrawPrimitiveUP", "UMDDdiDevice::DrawPrimitive DrawPrimitiveUP failed! 0x8876086a\n",
            [this] { return Draw(); }},
        {"DrawPrimitive2", "DrawPrimitiveUP", "UMDDdiDevice::DrawPrimitive2 DrawPrimitiveUP failed! 0x8876086a\n",
            [this] { return Draw2(); }},
        {"DrawIndexedPrimitive2", "DrawIndexedPrimitiveUP",
            "UMDDdiDevice::DrawIndexedPrimitive2 DrawIndexedPrimitive failed! 0x8876086a\n",
            [this] { return DrawIndexed2(); }},
    };
    const std::vector<Operation> m_FromBuffer = {
        {"DrawPrimitive", "DrawPrimitive",
            "UMDDdiDevice::DrawPrimitive m_ThreadGpuD3D9.DrawPrimitive failed! 0x8876086a\n",
            [this] { return Draw(); }},
        {"DrawPrimitive2", "DrawPrimitive", "UMDDdiDevice::DrawPrimitive2 DrawPrimitive failed! 0x8876086a\n",
            [this] { return Draw2(); }},
        {"DrawIndexedPrimitive", "DrawIndexedPrimitive",
            "UMDDdiDevice::DrawIndexedPrimitive DrawIndexedPrimitive failed! 0x8876086a\n",
            [this] { return DrawIndexed(); }},
    };
};
}  // namespace

TEST_F(UMDDdiDeviceDrawTraceTest, FromMemory_Succeeds_EntersAndLeaves)
{
    BindMemory();
    ExpectEntersAndLeaves(m_FromMemory);
}

TEST_F(UMDDdiDeviceDrawTraceTest, FromMemory_DelegatedCallRefused_EntersAndTellsTheError)
{
    BindMemory();
    ExpectEntersAndTellsTheError(m_FromMemory);
}

TEST_F(UMDDdiDeviceDrawTraceTest, FromABuffer_Succeeds_EntersAndLeaves)
{
    BindBuffer();
    ExpectEntersAndLeaves(m_FromBuffer);
}

TEST_F(UMDDdiDeviceDrawTraceTest, FromABuffer_DelegatedCallRefused_EntersAndTellsTheError)
{
    BindBuffer();
    ExpectEntersAndTellsTheError(m_FromBuffer);
}

TEST_F(UMDDdiDeviceDrawTraceTest, StreamZero_NotSet_IsToldWithoutALeave)
{
    ExpectDeclined({
        {E_FAIL, [&] { return Draw(); },
            {"0x4 >>> UMDDdiDevice::DrawPrimitive\n", "0x1 UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n"}},
        {E_FAIL, [&] { return Draw2(); },
            {"0x4 >>> UMDDdiDevice::DrawPrimitive2\n",
                "0x1 UMDDdiDevice::DrawPrimitive2 failed! stream 0 is not set\n"}},
        {E_FAIL, [&] { return DrawIndexed2(); },
            {"0x4 >>> UMDDdiDevice::DrawIndexedPrimitive2\n",
                "0x1 UMDDdiDevice::DrawIndexedPrimitive2 failed! stream 0 is not set\n"}},
    });
}
