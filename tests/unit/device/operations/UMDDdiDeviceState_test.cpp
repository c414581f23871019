// State changes: what reaches the delegated device, with which arguments, and what does not.
#include "DeviceObjects.h"
#include "Faults.h"

namespace
{

constexpr HRESULT kRefused = static_cast<HRESULT>(0x8876086C);
constexpr char kRefusedText[] = "0x8876086c\n";

class UMDDdiDeviceState : public DeviceObjects
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
    tesslo::test::TraceMask m_Mask{0x1};
    tesslo::test::FakeKernel m_Kernel;
    D3DDDI_DEVICECALLBACKS m_Callbacks = tesslo::test::FakeKernel::Callbacks();
    UMDDdiDevice m_Device{m_Kernel.RuntimeHandle(), 9, 0x2003, nullptr, nullptr, &m_Callbacks};
    tesslo::test::TraceCapture m_Trace;
};

}  // namespace

TEST_F(UMDDdiDeviceState, SetRenderState_EveryState_OnlyTheRuntimesOwnAreIgnored)
{
    for (UINT state = 0; state < 256; ++state)
    {
        m_Fake.ClearLines();
        EXPECT_EQ(S_OK, SetRenderState(state, 7)) << state;
        Lines expected = {"SetRenderState(" + std::to_string(state) + ", 7)"};
        if (state >= 64 && state <= 95)
            expected = {};
        if (state == 62)
            expected = {"EndScene()"};
        EXPECT_EQ(expected, Calls()) << state;
    }
    EXPECT_EQ(Lines{}, Trace());
}

TEST_F(UMDDdiDeviceState, SetRenderState_SceneCapture_BeginsOnlyWithOne)
{
    for (UINT value : {1u, 0u, 2u, 0xFFFFFFFFu})
        EXPECT_EQ(S_OK, SetRenderState(D3DDDIRS_SCENECAPTURE, value));
    EXPECT_EQ((Lines{"BeginScene()", "EndScene()", "EndScene()", "EndScene()"}), Calls());
}

TEST_F(UMDDdiDeviceState, SetRenderState_DelegatedCallFails_TracesAndReturnsItsCode)
{
    m_Fake.Fail("SetRenderState", kRefused);
    m_Fake.Fail("BeginScene", kRefused);
    m_Fake.Fail("EndScene", kRefused);
    for (auto [state, value] : {std::pair{7u, 1u}, {62u, 1u}, {62u, 0u}})
    {
        m_Trace.Clear();
        EXPECT_EQ(kRefused, SetRenderState(state, value));
        EXPECT_EQ(Lines{std::string("UMDDdiDevice::SetRenderState failed! ") + kRefusedText}, Trace());
    }
}

TEST_F(UMDDdiDeviceWithoutDelegated, SetRenderState_AnyState_FailsWithItsText)
{
    for (UINT state : {7u, 62u, 80u})
    {
        m_Trace.Clear();
        const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(state), 0};
        EXPECT_EQ(E_FAIL, m_Device.SetRenderState(&arg));
        EXPECT_EQ(std::vector<std::string>{">>> UMDDdiDevice::SetRenderState m_DeviceDelegated.GetDevice() is NULL\n"},
            m_Trace.Lines());
    }
}

TEST_F(UMDDdiDeviceWithoutDelegated, DrawPrimitive_Any_FailsWithItsText)
{
    const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
    EXPECT_EQ(E_FAIL, m_Device.DrawPrimitive(&arg));
    EXPECT_EQ(std::vector<std::string>{"UMDDdiDevice::DrawPrimitive NULL == pDelegatedDevice\n"}, m_Trace.Lines());
}

TEST_F(UMDDdiDeviceState, SetTextureStageState_EveryStage_ThoseAboveFifteenAreIgnored)
{
    for (UINT stage = 0; stage < 20; ++stage)
    {
        m_Fake.ClearLines();
        EXPECT_EQ(S_OK, SetStageState(stage, 1, 4)) << stage;
        const Lines expected =
            stage > 15 ? Lines{} : Lines{"SetTextureStageState(" + std::to_string(stage) + ", 1, 4)"};
        EXPECT_EQ(expected, Calls()) << stage;
    }
    EXPECT_EQ(Lines{}, Trace());
}

TEST_F(UMDDdiDeviceState, SetTextureStageState_DelegatedCallFails_TracesTheStateToo)
{
    m_Fake.Fail("SetTextureStageState", kRefused);
    EXPECT_EQ(kRefused, SetStageState(2, 1, 4));
    ASSERT_EQ(2u, Trace().size());
    EXPECT_EQ(std::string("UMDDdiDevice::SetTextureStageState failed! ") + kRefusedText, Trace()[0]);
}

TEST_F(UMDDdiDeviceState, SetTexture_TextureAndNull_AreBound)
{
    const HANDLE hTexture = CreateTexture();
    EXPECT_EQ(S_OK, UMDDdiSetTexture(DeviceHandle(), 257, hTexture));
    EXPECT_EQ(S_OK, UMDDdiSetTexture(DeviceHandle(), 1, nullptr));
    EXPECT_EQ((Lines{"SetTexture(257, texture#1)", "SetTexture(1, null)"}), Calls());
    char entry[120];
    snprintf(entry, sizeof(entry), "=> UMDDdiSetTexture Stage:257 hTexture:0x%x [Type:6 Pool:0]\n", UMDLow32(hTexture));
    EXPECT_EQ((Lines{entry, ">>> UMDDdiDevice::SetTexture\n", "<<< UMDDdiDevice::SetTexture\n",
                  "=> UMDDdiSetTexture Stage:1 hTexture:0x0 [Type:0 Pool:0]\n", ">>> UMDDdiDevice::SetTexture\n",
                  "<<< UMDDdiDevice::SetTexture\n"}),
        Trace());
}

TEST_F(UMDDdiDeviceState, SetTexture_NoTwoDimensionalTexture_FailsWithoutACall)
{
    for (HANDLE hResource : {CreateCube(), CreateTarget(), CreateVertices()})
    {
        ForgetCalls();
        EXPECT_EQ(E_FAIL, UMDDdiSetTexture(DeviceHandle(), 0, hResource));
        EXPECT_EQ(Lines{}, Calls());
        EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetTexture pTexture is NULL\n"));
    }
}

TEST_F(UMDDdiDeviceState, SetTexture_SharedResource_IsAcceptedAndNotBound)
{
    UMDRscBase shared(&Device(), nullptr, UMDRESOURCETYPE_SHARED);
    EXPECT_EQ(S_OK, UMDDdiSetTexture(DeviceHandle(), 0, ToHandle(&shared)));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetTexture SHARED RESOURCE\n"));
}

TEST_F(UMDDdiDeviceState, SetRenderTarget_SurfaceAndTexture_FirstSurfaceIsBoundAtTheIndex)
{
    const HANDLE hTarget = CreateTarget(), hTexture = CreateTexture();
    EXPECT_EQ(S_OK, SetRenderTarget(hTarget, 0, 5));
    EXPECT_EQ(S_OK, SetRenderTarget(hTexture, 3));
    EXPECT_EQ((Lines{"SetRenderTarget(0, surface#1)", "SetRenderTarget(3, texture#1[0])"}), Calls());
    EXPECT_EQ(2u, m_Trace.Count("<<< UMDDdiDevice::SetRenderTarget\n"));
}

TEST_F(UMDDdiDeviceState, SetRenderTarget_NullRecordOrNoTarget_FailsWithItsText)
{
    EXPECT_EQ(E_FAIL, UMDDdiSetRenderTarget(DeviceHandle(), nullptr));
    EXPECT_EQ((Lines{"=> UMDDdiSetRenderTarget hRenderTarget:0x0 [Type:0] RenderTargetIndex:0 SubResourceIndex:0x0\n",
                  ">>> UMDDdiDevice::SetRenderTarget\n", "UMDDdiDevice::SetRenderTarget pSetRT is NULL\n"}),
        Trace());
    for (HANDLE hResource : {HANDLE{nullptr}, CreateVertices(), CreateDepth()})
    {
        ForgetCalls();
        EXPECT_EQ(E_FAIL, SetRenderTarget(hResource));
        EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetRenderTarget pResourceRenderTargetCapable is NULL\n"));
    }
    EXPECT_EQ(Lines{}, Calls());
}

TEST_F(UMDDdiDeviceState, SetDepthStencil_BufferAndNull_AreBound)
{
    const HANDLE hDepth = CreateDepth();
    EXPECT_EQ(S_OK, SetDepth(hDepth));
    EXPECT_EQ(S_OK, SetDepth(nullptr));
    EXPECT_EQ((Lines{"SetDepthStencilSurface(surface#1)", "SetDepthStencilSurface(null)"}), Calls());
}

TEST_F(UMDDdiDeviceState, SetViewport_AnySize_DepthIsAlwaysZeroToOne)
{
    const D3DDDIARG_ZRANGE range = {0.25f, 0.5f};
    EXPECT_EQ(S_OK, UMDDdiSetZRange(DeviceHandle(), &range));
    EXPECT_EQ(S_OK, SetViewport(20, 30));
    ASSERT_EQ(1u, Calls().size());
    m_Fake.ClearLines();
    const D3DVIEWPORT9 viewport = {3, 4, 20, 30, 0.0f, 1.0f};
    m_Fake.SetViewport(&viewport);
    const Lines expected = Calls();
    m_Fake.ClearLines();
    EXPECT_EQ(S_OK, SetViewport(20, 30));
    EXPECT_EQ(expected, Calls());
}

TEST_F(UMDDdiDeviceState, SetViewport_NoWidthOrNoHeight_IsNotForwarded)
{
    EXPECT_EQ(S_OK, SetViewport(0, 5));
    EXPECT_EQ(S_OK, SetViewport(5, 0));
    EXPECT_EQ(Lines{}, Calls());
}

TEST_F(UMDDdiDeviceState, ScissorTransformClipPlane_Any_AreForwardedUnchanged)
{
    const RECT rect = {1, 2, 3, 4};
    EXPECT_EQ(S_OK, UMDDdiSetScissorRect(DeviceHandle(), &rect));
    D3DDDIARG_SETTRANSFORM transform{};
    transform.TransformType = static_cast<D3DTRANSFORMSTATETYPE>(256);
    transform.Matrix._11 = 2.5f;
    transform.Matrix._44 = -1;
    EXPECT_EQ(S_OK, UMDDdiSetTransform(DeviceHandle(), &transform));
    const D3DDDIARG_SETCLIPPLANE plane = {5, {1, 0.5f, -2, 4}};
    EXPECT_EQ(S_OK, UMDDdiSetClipPlane(DeviceHandle(), &plane));
    EXPECT_EQ((Lines{"SetScissorRect(1,2,3,4)", "SetTransform(256, [2.5 0 0 0 0 0 0 0 0 0 0 0 0 0 0 -1])",
                  "SetClipPlane(5, [1 0.5 -2 4])"}),
        Calls());
}

TEST_F(UMDDdiDeviceState, ValidateDevice_Succeeds_WritesThePassesAndTracesThem)
{
    D3DDDIARG_VALIDATETEXTURESTAGESTATE arg = {77};
    EXPECT_EQ(S_OK, UMDDdiValidateDevice(DeviceHandle(), &arg));
    EXPECT_EQ(Lines{"ValidateDevice(out)"}, Calls());
    EXPECT_EQ(0u, arg.NumPasses);
    EXPECT_EQ((Lines{"=> UMDDdiValidateDevice NumPasses:77\n", ">>> UMDDdiDevice::ValidateDevice\n",
                  "<<< UMDDdiDevice::ValidateDevice 0\n"}),
        Trace());
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
        EXPECT_EQ(kRefused, row.m_Call()) << row.m_pMethod;
        const Lines lines = Trace();
        ASSERT_EQ(3u, lines.size()) << row.m_pMethod;
        EXPECT_EQ(std::string("UMDDdiDevice::") + row.m_pText + " failed! " + kRefusedText, lines[2]);
    }
    EXPECT_EQ(77u, validate.NumPasses);
}

TEST_F(UMDDdiDeviceState, EntryTraces_SpecialArguments_PrintDefinedNumbers)
{
    const D3DDDIARG_ZRANGE range = {0.75f, 1.0f};
    UMDDdiSetZRange(DeviceHandle(), &range);
    const D3DDDIARG_SETCLIPPLANE plane = {5, {}};
    UMDDdiSetClipPlane(DeviceHandle(), &plane);
    const RECT rect = {1, 2, 3, 4};
    UMDDdiSetScissorRect(DeviceHandle(), &rect);
    char clip[120], scissor[120];
    snprintf(clip, sizeof(clip), "=> UMDDdiSetClipPlane pSetClipPlane:0x%x Index:5 Plane:%d\n", UMDLow32(&plane),
        static_cast<int>(UMDLow32(plane.Plane)));
    snprintf(scissor, sizeof(scissor), "=> UMDDdiSetScissorRect pRect:0x%x left:1 right:3 top:2 bottom:4\n",
        UMDLow32(&rect));
    EXPECT_EQ(1u, m_Trace.Count("=> UMDDdiSetZRange MinZ:0 MaxZ:1\n"));
    EXPECT_EQ(1u, m_Trace.Count(clip));
    EXPECT_EQ(1u, m_Trace.Count(scissor));
}

TEST_F(UMDDdiDeviceState, AnyEntry_FaultInTheDelegatedDevice_AnswersOkWithTwoLines)
{
    m_Fake.On("SetScissorRect", tesslo::test::RaiseAccessViolation);
    const RECT rect{};
    m_Trace.Clear();
    EXPECT_EQ(S_OK, UMDDdiSetScissorRect(DeviceHandle(), &rect));
    const Lines lines = Trace();
    ASSERT_EQ(4u, lines.size());
    EXPECT_EQ("EXCEPTION_ACCESS_VIOLATION\n", lines[2]);
    EXPECT_EQ("Exception in DDI function! UMDDdiSetScissorRect failed!\n", lines[3]);
}
