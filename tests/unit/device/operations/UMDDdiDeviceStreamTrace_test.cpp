// The trace of binding streams and indices.
#include "OperationTraceFixture.h"

#include "resources/UMDRscIndexBuffer.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDeviceStreamTraceTest : public OperationTraceFixture
{
protected:
    void SetUp() override
    {
        OperationTraceFixture::SetUp();
        m_hVertices = CreateVertices();
        m_hIndices = CreateIndices();
    }

    HRESULT SetStreamSource(UINT stream)
    {
        const D3DDDIARG_SETSTREAMSOURCE arg = {stream, m_hVertices, 0, 16};
        return Device().SetStreamSource(&arg);
    }
    HRESULT SetStreamSourceUM(UINT stream)
    {
        const D3DDDIARG_SETSTREAMSOURCEUM arg = {stream, 16};
        return Device().SetStreamSourceUM(&arg, m_Memory);
    }
    HRESULT SetIndices(HANDLE hIndices)
    {
        const D3DDDIARG_SETINDICES arg = {hIndices, 2};
        return Device().SetIndices(&arg);
    }

    HANDLE m_hVertices = nullptr, m_hIndices = nullptr;
    const std::vector<Operation> m_Operations = {
        {"SetStreamSource", "SetStreamSource", "UMDDdiDevice::SetStreamSource SetStreamSource failed! 0x8876086a\n",
            [this] { return SetStreamSource(0); }},
        {"SetIndices", "SetIndices", "UMDDdiDevice::SetIndices SetIndices failed! 0x8876086a\n",
            [this] { return SetIndices(m_hIndices); }},
    };
};
}  // namespace

TEST_F(UMDDdiDeviceStreamTraceTest, EveryMethod_Succeeds_EntersAndLeaves)
{
    ExpectEntersAndLeaves(m_Operations);
}

TEST_F(UMDDdiDeviceStreamTraceTest, EveryMethod_DelegatedCallRefused_EntersAndTellsTheError)
{
    ExpectEntersAndTellsTheError(m_Operations);
}

TEST_F(UMDDdiDeviceStreamTraceTest, SetStreamSourceUM_Data_TellsItAtTheDetailLevel)
{
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(SetStreamSourceUM(0), S_OK); }),
        (Lines{"0x4 >>> UMDDdiDevice::SetStreamSourceUM\n",
            "0x200 UMDDdiDevice::SetStreamSourceUM Resource:0x# Pointer:0x# Stride:16\n",
            "0x8 <<< UMDDdiDevice::SetStreamSourceUM\n"}));
}

TEST_F(UMDDdiDeviceStreamTraceTest, Streams_OtherThanZeroOrNothing_AreToldWithoutALeave)
{
    ExpectDeclined({
        {E_NOTIMPL, [&] { return SetStreamSource(1); },
            {"0x4 >>> UMDDdiDevice::SetStreamSource\n",
                "0x1 UMDDdiDevice::SetStreamSource stream not implemented! 1\n"}},
        {S_OK, [&] { return Device().SetStreamSourceUM(nullptr, m_Memory); },
            {"0x4 >>> UMDDdiDevice::SetStreamSourceUM\n",
                "0x1 UMDDdiDevice::SetStreamSourceUM pSetUMStream | pData is NULL\n"}},
        {E_NOTIMPL, [&] { return SetStreamSourceUM(1); },
            {"0x4 >>> UMDDdiDevice::SetStreamSourceUM\n", "0x1 UMDDdiDevice::SetStreamSourceUM Steam is not 0 1\n"}},
    });
}

TEST_F(UMDDdiDeviceStreamTraceTest, SetIndices_Nothing_IsToldWithoutALeave)
{
    UMDRscIndexBuffer empty(&Device(), nullptr, nullptr, TRUE, 0, D3DPOOL_DEFAULT);
    ExpectDeclined({
        {S_OK, [&] { return Device().SetIndices(nullptr); },
            {"0x4 >>> UMDDdiDevice::SetIndices\n", "0x1 UMDDdiDevice::SetIndices pSetIndices is NULL\n"}},
        {S_OK, [&] { return SetIndices(ToHandle(&empty)); },
            {"0x4 >>> UMDDdiDevice::SetIndices\n", "0x1 UMDDdiDevice::SetIndices pIndexBuffer is NULL\n"}},
    });
}
