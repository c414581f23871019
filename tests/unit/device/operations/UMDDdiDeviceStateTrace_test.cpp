// The trace of state changes.
#include "OperationTraceFixture.h"

#include "resources/UMDRscSurface.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDeviceStateTraceTest : public OperationTraceFixture
{
protected:
    void SetUp() override
    {
        OperationTraceFixture::SetUp();
        m_hTexture = CreateTexture();
        m_hTarget = CreateTarget();
        m_hDepth = CreateDepth();
    }

    HRESULT SetRenderTarget(HANDLE hTarget)
    {
        const D3DDDIARG_SETRENDERTARGET arg = {0, hTarget, 0};
        return Device().SetRenderTarget(&arg);
    }
    HRESULT SetDepthStencil()
    {
        const D3DDDIARG_SETDEPTHSTENCIL arg = {m_hDepth};
        return Device().SetDepthStencil(&arg);
    }
    HRESULT SetViewport()
    {
        const D3DDDIARG_VIEWPORTINFO arg = {0, 0, 2, 2};
        return Device().SetViewport(&arg);
    }

    HANDLE m_hTexture = nullptr, m_hTarget = nullptr, m_hDepth = nullptr;
    const RECT m_Rect = {0, 0, 2, 2};
    const D3DDDIARG_SETTRANSFORM m_Transform = {};
    const D3DDDIARG_SETCLIPPLANE m_Plane = {};
    const std::vector<Operation> m_Operations = {
        {"SetTexture", "SetTexture", "UMDDdiDevice::SetTexture SetTexture failed! 0x8876086a\n",
            [this] { return Device().SetTexture(0, m_hTexture); }},
        {"SetRenderTarget", "SetRenderTarget", "UMDDdiDevice::SetRenderTarget SetRenderTarget failed! 0x8876086a\n",
            [this] { return SetRenderTarget(m_hTarget); }},
        {"SetDepthStencil", "SetDepthStencilSurface", "UMDDdiDevice::SetDepthStencil failed! 0x8876086a\n",
            [this] { return SetDepthStencil(); }},
        {"SetViewport", "SetViewport", "UMDDdiDevice::SetViewport SetViewport failed! 0x8876086a\n",
            [this] { return SetViewport(); }},
        {"SetScissorRect", "SetScissorRect", "UMDDdiDevice::SetScissorRect SetScissorRect failed! 0x8876086a\n",
            [this] { return Device().SetScissorRect(&m_Rect); }},
        {"SetTransform", "SetTransform", "UMDDdiDevice::SetTransform SetTransform failed! 0x8876086a\n",
            [this] { return Device().SetTransform(&m_Transform); }},
        {"SetClipPlane", "SetClipPlane", "UMDDdiDevice::SetClipPlane ->SetClipPlane failed! 0x8876086a\n",
            [this] { return Device().SetClipPlane(&m_Plane); }},
    };
};
}  // namespace

TEST_F(UMDDdiDeviceStateTraceTest, EveryMethod_Succeeds_EntersAndLeaves)
{
    ExpectEntersAndLeaves(m_Operations);
}

TEST_F(UMDDdiDeviceStateTraceTest, EveryMethod_DelegatedCallRefused_EntersAndTellsTheError)
{
    ExpectEntersAndTellsTheError(m_Operations);
}

TEST_F(UMDDdiDeviceStateTraceTest, SetRenderState_Refused_TracesTheErrorAlone)
{
    m_Fake.Fail("SetRenderState", kRefused);
    const D3DDDIARG_RENDERSTATE state = {D3DDDIRS_ZENABLE, 1};
    EXPECT_EQ(LevelledTrace([&] { EXPECT_EQ(Device().SetRenderState(&state), kRefused); }),
        Lines{"0x1 UMDDdiDevice::SetRenderState failed! 0x8876086a\n"});
}

TEST_F(UMDDdiDeviceStateTraceTest, SetTextureStageState_Refused_TracesTheErrorAndTheState)
{
    m_Fake.Fail("SetTextureStageState", kRefused);
    const D3DDDIARG_TEXTURESTAGESTATE state = {2, D3DDDITSS_COLOROP, 4};
    EXPECT_EQ(LevelledTrace([&] { EXPECT_EQ(Device().SetTextureStageState(&state), kRefused); }),
        (Lines{
            "0x1 UMDDdiDevice::SetTextureStageState failed! 0x8876086a\n", "0x1 D3DDDITSS_COLOROP Stage:2 Value:4\n"}));
}

TEST_F(UMDDdiDeviceStateTraceTest, ValidateDevice_Succeeds_LeavesWithTheNumberOfPasses)
{
    D3DDDIARG_VALIDATETEXTURESTAGESTATE validate = {};
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().ValidateDevice(&validate), S_OK); }),
        (Lines{"0x4 >>> UMDDdiDevice::ValidateDevice\n", "0x8 <<< UMDDdiDevice::ValidateDevice 0\n"}));
}

TEST_F(UMDDdiDeviceStateTraceTest, SetTexture_NothingToBind_IsToldWithoutALeave)
{
    UMDRscBase shared(&Device(), nullptr, UMDRESOURCETYPE_SHARED);
    const HANDLE hCube = CreateCube();
    ExpectDeclined({
        {S_OK, [&] { return Device().SetTexture(0, ToHandle(&shared)); },
            {"0x4 >>> UMDDdiDevice::SetTexture\n", "0x1 UMDDdiDevice::SetTexture SHARED RESOURCE\n"}},
        {E_FAIL, [&] { return Device().SetTexture(0, hCube); },
            {"0x4 >>> UMDDdiDevice::SetTexture\n", "0x1 UMDDdiDevice::SetTexture pTexture is NULL\n"}},
    });
}

TEST_F(UMDDdiDeviceStateTraceTest, SetRenderTarget_NothingToBind_IsToldWithoutALeave)
{
    const HANDLE hVertices = CreateVertices();
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_A8R8G8B8, 8, 8);
    UMDRscSurface neverCreated(&Device(), nullptr, &request.m_Arg, FALSE, D3DPOOL_DEFAULT, false);
    ExpectDeclined({
        {E_FAIL, [&] { return Device().SetRenderTarget(nullptr); },
            {"0x4 >>> UMDDdiDevice::SetRenderTarget\n", "0x1 UMDDdiDevice::SetRenderTarget pSetRT is NULL\n"}},
        {E_FAIL, [&] { return SetRenderTarget(hVertices); },
            {"0x4 >>> UMDDdiDevice::SetRenderTarget\n",
                "0x1 UMDDdiDevice::SetRenderTarget pResourceRenderTargetCapable is NULL\n"}},
        {E_FAIL, [&] { return SetRenderTarget(ToHandle(&neverCreated)); },
            {"0x4 >>> UMDDdiDevice::SetRenderTarget\n", "0x1 UMDDdiDevice::SetRenderTarget pSurface is NULL\n"}},
    });
    neverCreated.Destroy();
}
