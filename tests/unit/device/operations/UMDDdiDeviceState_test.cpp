// State changes: what reaches the delegated device, with which arguments, and what does not.
#include "Faults.h"
#include "ResourceFixture.h"
#include "TraceText.h"

using namespace tesslo::test;

namespace
{

constexpr char kRefusedText[] = "0x8876086a\n";

class UMDDdiDeviceState : public ResourceFixture
{
protected:
    HRESULT SetRenderState(UINT state, UINT value)
    {
        const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(state), value};
        return UMDDdiSetRenderState(DeviceHandle(), &arg);
    }
    HRESULT SetStageState(UINT stage, UINT state, UINT value)
    {
        const D3DDDIARG_TEXTURESTAGESTATE arg = {stage, static_cast<D3DDDITEXTURESTAGESTATETYPE>(state), value};
        return UMDDdiSetTextureStageState(DeviceHandle(), &arg);
    }
    HRESULT SetViewport(UINT width, UINT height)
    {
        const D3DDDIARG_VIEWPORTINFO arg = {3, 4, width, height};
        return UMDDdiSetViewport(DeviceHandle(), &arg);
    }
    HRESULT SetRenderTarget(HANDLE hTarget, UINT index = 0, UINT subResource = 0)
    {
        const D3DDDIARG_SETRENDERTARGET arg = {index, hTarget, subResource};
        return UMDDdiSetRenderTarget(DeviceHandle(), &arg);
    }
    HRESULT SetDepth(HANDLE hDepth)
    {
        const D3DDDIARG_SETDEPTHSTENCIL arg = {hDepth};
        return UMDDdiSetDepthStencil(DeviceHandle(), &arg);
    }
};

// A device without its delegated device: its threads were never started.
class UMDDdiDeviceWithoutDelegated : public testing::Test
{
protected:
    TraceMask m_Mask{0x1};
    FakeKernel m_Kernel;
    D3DDDI_DEVICECALLBACKS m_Callbacks = FakeKernel::Callbacks();
    UMDDdiDevice m_Device{m_Kernel.RuntimeHandle(), 9, 0x2003, nullptr, nullptr, &m_Callbacks};
    TraceCapture m_Trace;
};

}  // namespace

TEST_F(UMDDdiDeviceState, SetRenderState_EveryState_OnlyTheRuntimesOwnAreIgnored)
{
    for (UINT state = 0; state < 256; ++state)
    {
        m_Fake.ClearLines();
        EXPECT_EQ(SetRenderState(state, 7), S_OK) << state;
        Lines expected = {"SetRenderState(" + std::to_string(state) + ", 7)"};
        if (state >= 64 && state <= 95)
            expected = {};
        if (state == 62)
            expected = {"EndScene()"};
        EXPECT_EQ(DeviceLines(), expected) << state;
    }
    EXPECT_EQ(Trace(), Lines{});
}

TEST_F(UMDDdiDeviceState, SetRenderState_SceneCapture_BeginsOnlyWithOne)
{
    for (UINT value : {1u, 0u, 2u, 0xFFFFFFFFu})
        EXPECT_EQ(SetRenderState(D3DDDIRS_SCENECAPTURE, value), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"BeginScene()", "EndScene()", "EndScene()", "EndScene()"}));
}

TEST_F(UMDDdiDeviceState, SetRenderState_DelegatedCallFails_TracesAndReturnsItsCode)
{
    m_Fake.Fail("SetRenderState", kRefused);
    m_Fake.Fail("BeginScene", kRefused);
    m_Fake.Fail("EndScene", kRefused);
    for (auto [state, value] : {std::pair{7u, 1u}, {62u, 1u}, {62u, 0u}})
    {
        m_Trace.Clear();
        EXPECT_EQ(SetRenderState(state, value), kRefused);
        EXPECT_EQ(Trace(), Lines{std::string("UMDDdiDevice::SetRenderState failed! ") + kRefusedText});
    }
}

TEST_F(UMDDdiDeviceWithoutDelegated, SetRenderState_AnyState_FailsWithItsText)
{
    for (UINT state : {7u, 62u, 80u})
    {
        m_Trace.Clear();
        const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(state), 0};
        EXPECT_EQ(m_Device.SetRenderState(&arg), E_FAIL);
        EXPECT_EQ(m_Trace.Lines(), Lines{">>> UMDDdiDevice::SetRenderState m_DeviceDelegated.GetDevice() is NULL\n"});
    }
}

TEST_F(UMDDdiDeviceWithoutDelegated, DrawPrimitive_Any_FailsWithItsText)
{
    const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
    EXPECT_EQ(m_Device.DrawPrimitive(&arg), E_FAIL);
    EXPECT_EQ(m_Trace.Lines(), Lines{"UMDDdiDevice::DrawPrimitive NULL == pDelegatedDevice\n"});
}

TEST_F(UMDDdiDeviceState, SetTextureStageState_EveryStage_ThoseAboveFifteenAreIgnored)
{
    for (UINT stage = 0; stage < 20; ++stage)
    {
        m_Fake.ClearLines();
        EXPECT_EQ(SetStageState(stage, 1, 4), S_OK) << stage;
        const Lines expected =
            stage > 15 ? Lines{} : Lines{"SetTextureStageState(" + std::to_string(stage) + ", 1, 4)"};
        EXPECT_EQ(DeviceLines(), expected) << stage;
    }
    EXPECT_EQ(Trace(), Lines{});
}

TEST_F(UMDDdiDeviceState, SetTextureStageState_DelegatedCallFails_TracesTheStateToo)
{
    m_Fake.Fail("SetTextureStageState", kRefused);
    EXPECT_EQ(SetStageState(2, 1, 4), kRefused);
    ASSERT_EQ(Trace().size(), 2u);
    EXPECT_EQ(Trace()[0], std::string("UMDDdiDevice::SetTextureStageState failed! ") + kRefusedText);
}

TEST_F(UMDDdiDeviceState, SetTexture_TextureAndNull_AreBound)
{
    const HANDLE hTexture = CreateTexture();
    EXPECT_EQ(UMDDdiSetTexture(DeviceHandle(), 257, hTexture), S_OK);
    EXPECT_EQ(UMDDdiSetTexture(DeviceHandle(), 1, nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"SetTexture(257, texture#1)", "SetTexture(1, null)"}));
    const std::string entry = Text("=> UMDDdiSetTexture Stage:257 hTexture:0x%x [Type:6 Pool:0]\n", UMDLow32(hTexture));
    EXPECT_EQ(Trace(), (Lines{entry, ">>> UMDDdiDevice::SetTexture\n", "<<< UMDDdiDevice::SetTexture\n",
                           "=> UMDDdiSetTexture Stage:1 hTexture:0x0 [Type:0 Pool:0]\n",
                           ">>> UMDDdiDevice::SetTexture\n", "<<< UMDDdiDevice::SetTexture\n"}));
}

TEST_F(UMDDdiDeviceState, SetTexture_NoTwoDimensionalTexture_FailsWithoutACall)
{
    for (HANDLE hResource : {CreateCube(), CreateTarget(), CreateVertices()})
    {
        ForgetCalls();
        EXPECT_EQ(UMDDdiSetTexture(DeviceHandle(), 0, hResource), E_FAIL);
        EXPECT_EQ(DeviceLines(), Lines{});
        EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetTexture pTexture is NULL\n"), 1u);
    }
}

TEST_F(UMDDdiDeviceState, SetTexture_SharedResource_IsAcceptedAndNotBound)
{
    UMDRscBase shared(&Device(), nullptr, UMDRESOURCETYPE_SHARED);
    EXPECT_EQ(UMDDdiSetTexture(DeviceHandle(), 0, ToHandle(&shared)), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetTexture SHARED RESOURCE\n"), 1u);
}

TEST_F(UMDDdiDeviceState, SetRenderTarget_SurfaceAndTexture_FirstSurfaceIsBoundAtTheIndex)
{
    const HANDLE hTarget = CreateTarget(), hTexture = CreateTexture();
    EXPECT_EQ(SetRenderTarget(hTarget, 0, 5), S_OK);
    EXPECT_EQ(SetRenderTarget(hTexture, 3), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"SetRenderTarget(0, surface#1)", "SetRenderTarget(3, texture#1[0])"}));
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::SetRenderTarget\n"), 2u);
}

TEST_F(UMDDdiDeviceState, SetRenderTarget_NullRecordOrNoTarget_FailsWithItsText)
{
    EXPECT_EQ(UMDDdiSetRenderTarget(DeviceHandle(), nullptr), E_FAIL);
    EXPECT_EQ(Trace(),
        (Lines{"=> UMDDdiSetRenderTarget hRenderTarget:0x0 [Type:0] RenderTargetIndex:0 SubResourceIndex:0x0\n",
            ">>> UMDDdiDevice::SetRenderTarget\n", "UMDDdiDevice::SetRenderTarget pSetRT is NULL\n"}));
    for (HANDLE hResource : {HANDLE{nullptr}, CreateVertices(), CreateDepth()})
    {
        ForgetCalls();
        EXPECT_EQ(SetRenderTarget(hResource), E_FAIL);
        EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetRenderTarget pResourceRenderTargetCapable is NULL\n"), 1u);
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceState, SetDepthStencil_BufferAndNull_AreBound)
{
    const HANDLE hDepth = CreateDepth();
    EXPECT_EQ(SetDepth(hDepth), S_OK);
    EXPECT_EQ(SetDepth(nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"SetDepthStencilSurface(surface#1)", "SetDepthStencilSurface(null)"}));
}

TEST_F(UMDDdiDeviceState, SetViewport_AnySize_DepthIsAlwaysZeroToOne)
{
    const D3DDDIARG_ZRANGE range = {0.25f, 0.5f};
    EXPECT_EQ(UMDDdiSetZRange(DeviceHandle(), &range), S_OK);
    EXPECT_EQ(SetViewport(20, 30), S_OK);
    ASSERT_EQ(DeviceLines().size(), 1u);
    m_Fake.ClearLines();
    const D3DVIEWPORT9 viewport = {3, 4, 20, 30, 0.0f, 1.0f};
    m_Fake.SetViewport(&viewport);
    const Lines expected = DeviceLines();
    m_Fake.ClearLines();
    EXPECT_EQ(SetViewport(20, 30), S_OK);
    EXPECT_EQ(DeviceLines(), expected);
}

TEST_F(UMDDdiDeviceState, SetViewport_NoWidthOrNoHeight_IsNotForwarded)
{
    EXPECT_EQ(SetViewport(0, 5), S_OK);
    EXPECT_EQ(SetViewport(5, 0), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceState, ScissorTransformClipPlane_Any_AreForwardedUnchanged)
{
    const RECT rect = {1, 2, 3, 4};
    EXPECT_EQ(UMDDdiSetScissorRect(DeviceHandle(), &rect), S_OK);
    D3DDDIARG_SETTRANSFORM transform{};
    transform.TransformType = static_cast<D3DTRANSFORMSTATETYPE>(256);
    transform.Matrix._11 = 2.5f;
    transform.Matrix._44 = -1;
    EXPECT_EQ(UMDDdiSetTransform(DeviceHandle(), &transform), S_OK);
    const D3DDDIARG_SETCLIPPLANE plane = {5, {1, 0.5f, -2, 4}};
    EXPECT_EQ(UMDDdiSetClipPlane(DeviceHandle(), &plane), S_OK);
    EXPECT_EQ(
        DeviceLines(), (Lines{"SetScissorRect(1,2,3,4)", "SetTransform(256, [2.5 0 0 0 0 0 0 0 0 0 0 0 0 0 0 -1])",
                           "SetClipPlane(5, [1 0.5 -2 4])"}));
}

TEST_F(UMDDdiDeviceState, ValidateDevice_Succeeds_WritesThePassesAndTracesThem)
{
    D3DDDIARG_VALIDATETEXTURESTAGESTATE arg = {77};
    EXPECT_EQ(UMDDdiValidateDevice(DeviceHandle(), &arg), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"ValidateDevice(out)"});
    EXPECT_EQ(arg.NumPasses, 0u);
    EXPECT_EQ(Trace(), (Lines{"=> UMDDdiValidateDevice NumPasses:77\n", ">>> UMDDdiDevice::ValidateDevice\n",
                           "<<< UMDDdiDevice::ValidateDevice 0\n"}));
}

TEST_F(UMDDdiDeviceState, DelegatedCallFails_EveryMethod_TracesItsTextAndReturnsTheCode)
{
    struct Row
    {
        const char* m_pMethod;
        std::function<HRESULT()> m_Call;
        const char* m_pText;
    };
    const HANDLE hTexture = CreateTexture(), hTarget = CreateTarget();
    const RECT rect{};
    const D3DDDIARG_SETTRANSFORM transform{};
    const D3DDDIARG_SETCLIPPLANE plane{};
    D3DDDIARG_VALIDATETEXTURESTAGESTATE validate{77};
    const HANDLE hDevice = DeviceHandle();
    const Row rows[] = {
        {"SetTexture", [&] { return UMDDdiSetTexture(hDevice, 0, hTexture); }, "SetTexture SetTexture"},
        {"SetRenderTarget", [&] { return SetRenderTarget(hTarget); }, "SetRenderTarget SetRenderTarget"},
        {"SetDepthStencilSurface", [&] { return SetDepth(nullptr); }, "SetDepthStencil"},
        {"SetViewport", [&] { return SetViewport(1, 1); }, "SetViewport SetViewport"},
        {"SetScissorRect", [&] { return UMDDdiSetScissorRect(hDevice, &rect); }, "SetScissorRect SetScissorRect"},
        {"SetTransform", [&] { return UMDDdiSetTransform(hDevice, &transform); }, "SetTransform SetTransform"},
        {"SetClipPlane", [&] { return UMDDdiSetClipPlane(hDevice, &plane); }, "SetClipPlane ->SetClipPlane"},
        {"ValidateDevice", [&] { return UMDDdiValidateDevice(hDevice, &validate); }, "ValidateDevice ValidateDevice"},
    };
    for (const Row& row : rows)
    {
        m_Fake.Fail(row.m_pMethod, kRefused);
        m_Trace.Clear();
        EXPECT_EQ(row.m_Call(), kRefused) << row.m_pMethod;
        const Lines lines = Trace();
        ASSERT_EQ(lines.size(), 3u) << row.m_pMethod;
        EXPECT_EQ(lines[2], std::string("UMDDdiDevice::") + row.m_pText + " failed! " + kRefusedText);
    }
    EXPECT_EQ(validate.NumPasses, 77u);
}

TEST_F(UMDDdiDeviceState, EntryTraces_SpecialArguments_PrintDefinedNumbers)
{
    const D3DDDIARG_ZRANGE range = {0.75f, 1.0f};
    UMDDdiSetZRange(DeviceHandle(), &range);
    const D3DDDIARG_SETCLIPPLANE plane = {5, {}};
    UMDDdiSetClipPlane(DeviceHandle(), &plane);
    const RECT rect = {1, 2, 3, 4};
    UMDDdiSetScissorRect(DeviceHandle(), &rect);
    const std::string clip = Text("=> UMDDdiSetClipPlane pSetClipPlane:0x%x Index:5 Plane:%d\n", UMDLow32(&plane),
        static_cast<int>(UMDLow32(plane.Plane)));
    const std::string scissor =
        Text("=> UMDDdiSetScissorRect pRect:0x%x left:1 right:3 top:2 bottom:4\n", UMDLow32(&rect));
    EXPECT_EQ(m_Trace.Count("=> UMDDdiSetZRange MinZ:0 MaxZ:1\n"), 1u);
    EXPECT_EQ(m_Trace.Count(clip), 1u);
    EXPECT_EQ(m_Trace.Count(scissor), 1u);
}

TEST_F(UMDDdiDeviceState, AnyEntry_FaultInTheDelegatedDevice_AnswersOkWithTwoLines)
{
    m_Fake.On("SetScissorRect", RaiseAccessViolation);
    const RECT rect{};
    m_Trace.Clear();
    EXPECT_EQ(UMDDdiSetScissorRect(DeviceHandle(), &rect), S_OK);
    const Lines lines = Trace();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[2], "EXCEPTION_ACCESS_VIOLATION\n");
    EXPECT_EQ(lines[3], "Exception in DDI function! UMDDdiSetScissorRect failed!\n");
}
