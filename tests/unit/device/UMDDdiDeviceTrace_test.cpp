// The trace of every device method, each line with its level: after success, after a refusal by the delegated device,
// and where the method declines by itself.
#include "DeviceObjects.h"
#include "TraceLevels.h"

#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscSurface.h"

namespace
{

using tesslo::test::LevelledTrace;

constexpr HRESULT kRefused = static_cast<HRESULT>(0x8876086C);
constexpr UINT kCode[] = {0xFFFE0200, 0x0000FFFF};

class UMDDdiDeviceTrace : public DeviceObjects
{
protected:
    /// The lines of the device's methods: what the resources below them trace is not theirs.
    Lines DeviceTrace(const std::function<void()>& operation)
    {
        Lines lines = LevelledTrace(m_Trace, operation);
        std::erase_if(lines, [](const std::string& line) { return line.find("UMDDdiDevice::") == std::string::npos; });
        return lines;
    }

    HANDLE CreatePixelShader()
    {
        D3DDDIARG_CREATEPIXELSHADER arg = {sizeof(kCode), nullptr};
        Device().CreatePixelShader(&arg, kCode);
        return arg.ShaderHandle;
    }
    HANDLE CreateVertexShader()
    {
        D3DDDIARG_CREATEVERTEXSHADERFUNC arg = {sizeof(kCode), nullptr};
        Device().CreateVertexShaderFunc(&arg, kCode);
        return arg.ShaderHandle;
    }
    HANDLE CreateDeclaration()
    {
        D3DDDIARG_CREATEVERTEXSHADERDECL arg = {0, nullptr};
        Device().CreateVertexShaderDecl(&arg, nullptr);
        return arg.ShaderHandle;
    }

    struct Row
    {
        const char* m_pMethod;         ///< of the device
        const char* m_pDelegatedCall;  ///< null when nothing of its can fail
        const char* m_pError;          ///< the error line when the delegated call is refused with kRefused
        std::function<HRESULT()> m_Call;
    };
    std::vector<Row> Rows();
};

std::vector<UMDDdiDeviceTrace::Row> UMDDdiDeviceTrace::Rows()
{
    UMDDdiDevice& device = Device();
    const HANDLE hTexture = CreateTexture(), hTarget = CreateTarget(), hOther = CreateTarget(), hDepth = CreateDepth();
    const HANDLE hVertices = CreateVertices(), hIndices = CreateIndices();
    const HANDLE hSystemTexture = CreateResource({.Texture = 1}, D3DDDIPOOL_SYSTEMMEM, m_Memory, 2, 2);
    const HANDLE hVideoTexture = CreateResource({.Texture = 1}, D3DDDIPOOL_VIDEOMEMORY, nullptr, 2, 2);
    static const FLOAT constants[4] = {};
    static const INT integers[4] = {};
    static const BOOL booleans[4] = {};
    static const RECT rect = {0, 0, 2, 2};
    static const D3DDDIARG_SETTRANSFORM transform = {};
    static const D3DDDIARG_SETCLIPPLANE plane = {};
    static const USHORT indices[3] = {};
    const auto userMemory = [this, &device] {
        const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, 16};
        const tesslo::test::TraceMask quiet(0);
        device.SetStreamSourceUM(&stream, m_Memory);
    };
    const auto buffer = [hVertices, &device] {
        const D3DDDIARG_SETSTREAMSOURCE stream = {0, hVertices, 0, 16};
        const tesslo::test::TraceMask quiet(0);
        device.SetStreamSource(&stream);
    };
    return {
        {"SetTexture", "SetTexture", "UMDDdiDevice::SetTexture SetTexture failed! 0x8876086c\n",
            [=, &device] { return device.SetTexture(0, hTexture); }},
        {"SetRenderTarget", "SetRenderTarget", "UMDDdiDevice::SetRenderTarget SetRenderTarget failed! 0x8876086c\n",
            [=, &device] {
                const D3DDDIARG_SETRENDERTARGET arg = {0, hTarget, 0};
                return device.SetRenderTarget(&arg);
            }},
        {"SetDepthStencil", "SetDepthStencilSurface", "UMDDdiDevice::SetDepthStencil failed! 0x8876086c\n",
            [=, &device] {
                const D3DDDIARG_SETDEPTHSTENCIL arg = {hDepth};
                return device.SetDepthStencil(&arg);
            }},
        {"SetViewport", "SetViewport", "UMDDdiDevice::SetViewport SetViewport failed! 0x8876086c\n",
            [&device] {
                const D3DDDIARG_VIEWPORTINFO arg = {0, 0, 2, 2};
                return device.SetViewport(&arg);
            }},
        {"SetScissorRect", "SetScissorRect", "UMDDdiDevice::SetScissorRect SetScissorRect failed! 0x8876086c\n",
            [&device] { return device.SetScissorRect(&rect); }},
        {"SetTransform", "SetTransform", "UMDDdiDevice::SetTransform SetTransform failed! 0x8876086c\n",
            [&device] { return device.SetTransform(&transform); }},
        {"SetClipPlane", "SetClipPlane", "UMDDdiDevice::SetClipPlane ->SetClipPlane failed! 0x8876086c\n",
            [&device] { return device.SetClipPlane(&plane); }},
        {"SetStreamSource", "SetStreamSource", "UMDDdiDevice::SetStreamSource SetStreamSource failed! 0x8876086c\n",
            [=, &device] {
                const D3DDDIARG_SETSTREAMSOURCE arg = {0, hVertices, 0, 16};
                return device.SetStreamSource(&arg);
            }},
        {"SetIndices", "SetIndices", "UMDDdiDevice::SetIndices SetIndices failed! 0x8876086c\n",
            [=, &device] {
                const D3DDDIARG_SETINDICES arg = {hIndices, 2};
                return device.SetIndices(&arg);
            }},
        {"SetPixelShaderConst", "SetPixelShaderConstantF",
            "UMDDdiDevice::SetPixelShaderConst SetConst failed! 0x8876086c\n",
            [&device] {
                const D3DDDIARG_SETPIXELSHADERCONST arg = {0, 1};
                return device.SetPixelShaderConst(&arg, constants);
            }},
        {"SetPixelShaderConstI", "SetPixelShaderConstantI",
            "UMDDdiDevice::SetPixelShaderConstI SetConstI failed! 0x8876086c\n",
            [&device] {
                const D3DDDIARG_SETPIXELSHADERCONSTI arg = {0, 1};
                return device.SetPixelShaderConstI(&arg, integers);
            }},
        {"SetPixelShaderConstB", "SetPixelShaderConstantB",
            "UMDDdiDevice::SetPixelShaderConstB SetConstB failed! 0x8876086c\n",
            [&device] {
                const D3DDDIARG_SETPIXELSHADERCONSTB arg = {0, 1};
                return device.SetPixelShaderConstB(&arg, booleans);
            }},
        {"DeletePixelShader", nullptr, nullptr, [&device] { return device.DeletePixelShader(nullptr); }},
        {"DeleteVertexShaderFunc", nullptr, nullptr, [&device] { return device.DeleteVertexShaderFunc(nullptr); }},
        {"DeleteVertexShaderDecl", nullptr, nullptr, [&device] { return device.DeleteVertexShaderDecl(nullptr); }},
        {"DeleteQuery", nullptr, nullptr, [&device] { return device.DeleteQuery(nullptr); }},
        {"DrawPrimitive", "DrawPrimitiveUP", "UMDDdiDevice::DrawPrimitive DrawPrimitiveUP failed! 0x8876086c\n",
            [=, &device] {
                userMemory();
                const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
                return device.DrawPrimitive(&arg);
            }},
        {"DrawPrimitive", "DrawPrimitive",
            "UMDDdiDevice::DrawPrimitive m_ThreadGpuD3D9.DrawPrimitive failed! 0x8876086c\n",
            [=, &device] {
                buffer();
                const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
                return device.DrawPrimitive(&arg);
            }},
        {"DrawPrimitive2", "DrawPrimitiveUP", "UMDDdiDevice::DrawPrimitive2 DrawPrimitiveUP failed! 0x8876086c\n",
            [=, &device] {
                userMemory();
                const D3DDDIARG_DRAWPRIMITIVE2 arg = {D3DPT_POINTLIST, 0, 1};
                return device.DrawPrimitive2(&arg);
            }},
        {"DrawPrimitive2", "DrawPrimitive", "UMDDdiDevice::DrawPrimitive2 DrawPrimitive failed! 0x8876086c\n",
            [=, &device] {
                buffer();
                const D3DDDIARG_DRAWPRIMITIVE2 arg = {D3DPT_POINTLIST, 0, 1};
                return device.DrawPrimitive2(&arg);
            }},
        {"DrawIndexedPrimitive", "DrawIndexedPrimitive",
            "UMDDdiDevice::DrawIndexedPrimitive DrawIndexedPrimitive failed! 0x8876086c\n",
            [&device] {
                const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
                return device.DrawIndexedPrimitive(&arg);
            }},
        {"DrawIndexedPrimitive2", "DrawIndexedPrimitiveUP",
            "UMDDdiDevice::DrawIndexedPrimitive2 DrawIndexedPrimitive failed! 0x8876086c\n",
            [=, &device] {
                userMemory();
                const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
                return device.DrawIndexedPrimitive2(&arg, 2, indices);
            }},
        {"Blt", "StretchRect", "UMDDdiDevice::Blt Blt failed! 0x8876086c\n",
            [=, &device] {
                D3DDDIARG_BLT arg = {};
                arg.hSrcResource = hTarget;
                arg.hDstResource = hOther;
                return device.Blt(&arg);
            }},
        {"TexBlt", "UpdateSurface", "UMDDdiDevice::TexBlt TexBlt failed 0x8876086c\n",
            [=, &device] {
                D3DDDIARG_TEXBLT arg = {};
                arg.hSrcResource = hSystemTexture;
                arg.hDstResource = hVideoTexture;
                arg.SrcRect = rect;
                return device.TexBlt(&arg);
            }},
        {"ColorFill", "ColorFill", "UMDDdiDevice::ColorFill ColorFill failed! 0x8876086c\n",
            [=, &device] {
                D3DDDIARG_COLORFILL arg = {};
                arg.hResource = hTarget;
                return device.ColorFill(&arg);
            }},
        {"SetDisplayMode", nullptr, nullptr,
            [=, &device] {
                const D3DDDIARG_SETDISPLAYMODE arg = {hTarget, 0};
                return device.SetDisplayMode(&arg);
            }},
    };
}

}  // namespace

TEST_F(UMDDdiDeviceTrace, EveryMethod_Succeeds_EntersAndLeaves)
{
    for (const Row& row : Rows())
    {
        const std::string name = std::string("UMDDdiDevice::") + row.m_pMethod + "\n";
        EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(row.m_Call(), S_OK) << row.m_pMethod; }),
            (Lines{"0x4 >>> " + name, "0x8 <<< " + name}));
    }
}

TEST_F(UMDDdiDeviceTrace, EveryMethod_DelegatedCallRefused_EntersAndTellsTheError)
{
    for (const Row& row : Rows())
    {
        if (!row.m_pDelegatedCall)
            continue;
        const bool ownCode = row.m_pMethod == std::string("TexBlt");
        const Lines expected = {
            std::string("0x4 >>> UMDDdiDevice::") + row.m_pMethod + "\n", std::string("0x1 ") + row.m_pError};
        row.m_Call();  // a stream that is bound stays bound
        EXPECT_EQ(DeviceTrace([&] {
            m_Fake.ClearScripts();
            m_Fake.Fail(row.m_pDelegatedCall, kRefused);
            EXPECT_EQ(row.m_Call(), ownCode ? E_FAIL : kRefused) << row.m_pMethod;
        }),
            expected);
        m_Fake.ClearScripts();
    }
}

TEST_F(UMDDdiDeviceTrace, StateCalls_Refused_TraceTheErrorAlone)
{
    m_Fake.Fail("SetRenderState", kRefused);
    m_Fake.Fail("SetTextureStageState", kRefused);
    const D3DDDIARG_RENDERSTATE renderState = {D3DDDIRS_ZENABLE, 1};
    EXPECT_EQ(LevelledTrace(m_Trace, [&] { EXPECT_EQ(Device().SetRenderState(&renderState), kRefused); }),
        Lines{"0x1 UMDDdiDevice::SetRenderState failed! 0x8876086c\n"});
    const D3DDDIARG_TEXTURESTAGESTATE stageState = {2, D3DDDITSS_COLOROP, 4};
    EXPECT_EQ(LevelledTrace(m_Trace, [&] { EXPECT_EQ(Device().SetTextureStageState(&stageState), kRefused); }),
        (Lines{
            "0x1 UMDDdiDevice::SetTextureStageState failed! 0x8876086c\n", "0x1 D3DDDITSS_COLOROP Stage:2 Value:4\n"}));
}

TEST_F(UMDDdiDeviceTrace, ExitLinesWithNumbers_AreOfTheExitLevel)
{
    D3DDDIARG_VALIDATETEXTURESTAGESTATE validate = {};
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().ValidateDevice(&validate), S_OK); }),
        (Lines{"0x4 >>> UMDDdiDevice::ValidateDevice\n", "0x8 <<< UMDDdiDevice::ValidateDevice 0\n"}));
    const D3DDDIARG_SETSTREAMSOURCEUM stream = {0, 16};
    EXPECT_EQ(DeviceTrace([&] {
        EXPECT_EQ(Device().SetStreamSourceUM(&stream, reinterpret_cast<const void*>(UINT_PTR{0x10})), S_OK);
    }),
        (Lines{"0x4 >>> UMDDdiDevice::SetStreamSourceUM\n",
            "0x200 UMDDdiDevice::SetStreamSourceUM Resource:0x# Pointer:0x# Stride:16\n",
            "0x8 <<< UMDDdiDevice::SetStreamSourceUM\n"}));
}

TEST_F(UMDDdiDeviceTrace, Shaders_CreatedSetAndDeleted_EnterAndLeave)
{
    EXPECT_EQ(DeviceTrace([&] {
        const HANDLE hShader = CreatePixelShader();
        EXPECT_EQ(Device().SetPixelShader(hShader), S_OK);
        EXPECT_EQ(Device().DeletePixelShader(hShader), S_OK);
    }),
        (Lines{"0x4 >>> UMDDdiDevice::CreatePixelShader\n",
            "0x8 <<< UMDDdiDevice::CreatePixelShader ShaderHandle:0x#\n", "0x4 >>> UMDDdiDevice::SetPixelShader\n",
            "0x8 <<< UMDDdiDevice::SetPixelShader\n", "0x4 >>> UMDDdiDevice::DeletePixelShader\n",
            "0x8 <<< UMDDdiDevice::DeletePixelShader\n"}));
    EXPECT_EQ(DeviceTrace([&] {
        const HANDLE hShader = CreateVertexShader();
        EXPECT_EQ(Device().SetVertexShaderFunc(hShader), S_OK);
        EXPECT_EQ(Device().DeleteVertexShaderFunc(hShader), S_OK);
    }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderFunc\n",
            "0x8 <<< UMDDdiDevice::CreateVertexShaderFunc ShaderHandle:0x#\n",
            "0x4 >>> UMDDdiDevice::SetVertexShaderFunc\n", "0x8 <<< UMDDdiDevice::SetVertexShaderFunc\n",
            "0x4 >>> UMDDdiDevice::DeleteVertexShaderFunc\n", "0x8 <<< UMDDdiDevice::DeleteVertexShaderFunc\n"}));
    EXPECT_EQ(DeviceTrace([&] {
        const HANDLE hDeclaration = CreateDeclaration();
        EXPECT_EQ(Device().SetVertexShaderDecl(hDeclaration), S_OK);
        EXPECT_EQ(Device().DeleteVertexShaderDecl(hDeclaration), S_OK);
    }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderDecl\n", "0x8 <<< UMDDdiDevice::CreateVertexShaderDecl 0x#\n",
            "0x4 >>> UMDDdiDevice::SetVertexShaderDecl\n", "0x8 <<< UMDDdiDevice::SetVertexShaderDecl\n",
            "0x4 >>> UMDDdiDevice::DeleteVertexShaderDecl\n", "0x8 <<< UMDDdiDevice::DeleteVertexShaderDecl\n"}));
}

TEST_F(UMDDdiDeviceTrace, Shaders_RefusedByTheDelegatedDevice_EnterAndTellTheError)
{
    for (const char* pCall : {"CreatePixelShader", "CreateVertexShader", "CreateVertexDeclaration"})
        m_Fake.Fail(pCall, kRefused);
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(CreatePixelShader(), nullptr); }),
        (Lines{"0x4 >>> UMDDdiDevice::CreatePixelShader\n",
            "0x1 UMDDdiDevice::CreatePixelShader Create failed! 0x8876086c\n"}));
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(CreateVertexShader(), nullptr); }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderFunc\n",
            "0x1 UMDDdiDevice::CreateVertexShaderFunc Create failed! 0x8876086c\n"}));
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(CreateDeclaration(), nullptr); }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderDecl\n",
            "0x1 UMDDdiDevice::CreateVertexShaderDecl CreateDecl failed! 0x8876086c\n"}));
}

TEST_F(UMDDdiDeviceTrace, VertexShaders_BindingRefused_TellTheErrorAndAreDestroyed)
{
    m_Fake.Fail("SetVertexShader", kRefused);
    m_Fake.Fail("SetVertexDeclaration", kRefused);
    const auto set = [](Lines lines) {
        std::erase_if(lines, [](const std::string& line) { return line.find("::SetVertex") == std::string::npos; });
        return lines;
    };
    EXPECT_EQ(set(DeviceTrace([&] { EXPECT_EQ(Device().SetVertexShaderFunc(CreateVertexShader()), kRefused); })),
        (Lines{"0x4 >>> UMDDdiDevice::SetVertexShaderFunc\n",
            "0x1 UMDDdiDevice::SetVertexShaderFunc Set failed! 0x8876086c\n"}));
    EXPECT_EQ(set(DeviceTrace([&] { EXPECT_EQ(Device().SetVertexShaderDecl(CreateDeclaration()), kRefused); })),
        (Lines{"0x4 >>> UMDDdiDevice::SetVertexShaderDecl\n",
            "0x1 UMDDdiDevice::SetVertexShaderFunc SetDecl failed! 0x8876086c\n"}));
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(UMDDdiDeviceTrace, ConstantsAndClear_Refused_LeaveAllTheSame)
{
    m_Fake.Fail("SetVertexShaderConstantF", kRefused);
    m_Fake.Fail("Clear", kRefused);
    const D3DDDIARG_SETVERTEXSHADERCONST constants = {0, 1};
    const FLOAT data[4] = {};
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().SetVertexShaderConst(&constants, data), kRefused); }),
        (Lines{"0x4 >>> UMDDdiDevice::SetVertexShaderConst\n",
            "0x1 UMDDdiDevice::SetVertexShaderConst SetConst failed! 0x8876086c\n",
            "0x8 <<< UMDDdiDevice::SetVertexShaderConst\n"}));
    const D3DDDIARG_CLEAR clear = {D3DCLEAR_TARGET, 0, 0, 0};
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().Clear(&clear, 0, nullptr), kRefused); }),
        (Lines{"0x4 >>> UMDDdiDevice::Clear\n", "0x1 UMDDdiDevice::Clear failed! 0x8876086c\n",
            "0x8 <<< UMDDdiDevice::Clear\n"}));
    m_Fake.ClearScripts();
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().Clear(&clear, 0, nullptr), S_OK); }),
        (Lines{"0x4 >>> UMDDdiDevice::Clear\n", "0x8 <<< UMDDdiDevice::Clear\n"}));
}

TEST_F(UMDDdiDeviceTrace, BufBlt_EveryPair_TellsItAsAnErrorAndLeaves)
{
    const struct
    {
        HANDLE hSrc, hDst;
        const char* pError;
    } rows[] = {
        {CreateVertices(), CreateVertices(),
            "0x1 UMDDdiDevice::BufBlt UMDRESOURCETYPE_VERTEXBUFFER == TypeDst && UMDRESOURCETYPE_VERTEXBUFFER == TypeSrc\n"},
        {CreateIndices(), CreateIndices(),
            "0x1 UMDDdiDevice::BufBlt UMDRESOURCETYPE_INDEXBUFFER == TypeDst && UMDRESOURCETYPE_INDEXBUFFER == TypeSrc\n"},
        {CreateIndices(), CreateVertices(), "0x1 UMDDdiDevice::BufBlt unexpected condition\n"},
    };
    for (const auto& row : rows)
    {
        D3DDDIARG_BUFFERBLT arg = {};
        arg.hSrcResource = row.hSrc;
        arg.hDstResource = row.hDst;
        EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().BufBlt(&arg), E_NOTIMPL); }),
            (Lines{"0x4 >>> UMDDdiDevice::BufBlt\n", row.pError, "0x8 <<< UMDDdiDevice::BufBlt\n"}));
    }
}

TEST_F(UMDDdiDeviceTrace, WhatAMethodDeclinesItself_IsToldWithoutALeave)
{
    UMDDdiDevice& device = Device();
    UMDRscBase shared(&device, nullptr, UMDRESOURCETYPE_SHARED);
    const HANDLE hCube = CreateCube(), hTarget = CreateTarget(), hVertices = CreateVertices();
    UMDRscIndexBuffer emptyIndices(&device, nullptr, nullptr, TRUE, 0, D3DPOOL_DEFAULT);
    const D3DDDIARG_SETINDICES noIndices = {ToHandle(&emptyIndices), 2};
    D3DDDIARG_BLT ontoItself = {};
    ontoItself.hSrcResource = ontoItself.hDstResource = hTarget;
    const D3DDDIARG_SETSTREAMSOURCEUM otherStreamUM = {1, 16};
    const D3DDDIARG_SETSTREAMSOURCE otherStream = {1, hVertices, 0, 16};
    D3DDDIARG_BLT blt = {};
    blt.hSrcResource = hCube;
    blt.hDstResource = hTarget;
    D3DDDIARG_COLORFILL fill = {};
    fill.hResource = hVertices;
    const D3DDDIARG_SETRENDERTARGET noTarget = {0, hVertices, 0};
    const D3DDDIARG_DRAWPRIMITIVE draw = {};
    const D3DDDIARG_DRAWPRIMITIVE2 draw2 = {};
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 indexed2 = {};
    const D3DDDIARG_PRESENT present = {};
    const D3DDDIARG_SETDISPLAYMODE mode = {};
    const struct
    {
        HRESULT Result;
        std::function<HRESULT()> Call;
        Lines Expected;
    } rows[] = {
        {S_OK, [&] { return device.SetTexture(0, ToHandle(&shared)); },
            {"0x4 >>> UMDDdiDevice::SetTexture\n", "0x1 UMDDdiDevice::SetTexture SHARED RESOURCE\n"}},
        {E_FAIL, [&] { return device.SetTexture(0, hCube); },
            {"0x4 >>> UMDDdiDevice::SetTexture\n", "0x1 UMDDdiDevice::SetTexture pTexture is NULL\n"}},
        {E_FAIL, [&] { return device.SetRenderTarget(nullptr); },
            {"0x4 >>> UMDDdiDevice::SetRenderTarget\n", "0x1 UMDDdiDevice::SetRenderTarget pSetRT is NULL\n"}},
        {E_FAIL, [&] { return device.SetRenderTarget(&noTarget); },
            {"0x4 >>> UMDDdiDevice::SetRenderTarget\n",
                "0x1 UMDDdiDevice::SetRenderTarget pResourceRenderTargetCapable is NULL\n"}},
        {E_NOTIMPL, [&] { return device.SetStreamSource(&otherStream); },
            {"0x4 >>> UMDDdiDevice::SetStreamSource\n",
                "0x1 UMDDdiDevice::SetStreamSource stream not implemented! 1\n"}},
        {S_OK, [&] { return device.SetStreamSourceUM(nullptr, m_Memory); },
            {"0x4 >>> UMDDdiDevice::SetStreamSourceUM\n",
                "0x1 UMDDdiDevice::SetStreamSourceUM pSetUMStream | pData is NULL\n"}},
        {E_NOTIMPL, [&] { return device.SetStreamSourceUM(&otherStreamUM, m_Memory); },
            {"0x4 >>> UMDDdiDevice::SetStreamSourceUM\n", "0x1 UMDDdiDevice::SetStreamSourceUM Steam is not 0 1\n"}},
        {S_OK, [&] { return device.SetIndices(nullptr); },
            {"0x4 >>> UMDDdiDevice::SetIndices\n", "0x1 UMDDdiDevice::SetIndices pSetIndices is NULL\n"}},
        {S_OK, [&] { return device.SetIndices(&noIndices); },
            {"0x4 >>> UMDDdiDevice::SetIndices\n", "0x1 UMDDdiDevice::SetIndices pIndexBuffer is NULL\n"}},
        {E_FAIL, [&] { return device.DrawPrimitive(&draw); },
            {"0x4 >>> UMDDdiDevice::DrawPrimitive\n", "0x1 UMDDdiDevice::DrawPrimitive failed! stream 0 is not set\n"}},
        {E_FAIL, [&] { return device.DrawPrimitive2(&draw2); },
            {"0x4 >>> UMDDdiDevice::DrawPrimitive2\n",
                "0x1 UMDDdiDevice::DrawPrimitive2 failed! stream 0 is not set\n"}},
        {E_FAIL, [&] { return device.DrawIndexedPrimitive2(&indexed2, 2, nullptr); },
            {"0x4 >>> UMDDdiDevice::DrawIndexedPrimitive2\n",
                "0x1 UMDDdiDevice::DrawIndexedPrimitive2 failed! stream 0 is not set\n"}},
        {E_NOTIMPL, [&] { return device.Blt(&blt); },
            {"0x4 >>> UMDDdiDevice::Blt\n",
                "0x1 UMDDdiDevice::Blt failed! SHARED RESOURCE unexpected TypeDst:5 TypeSrc:7\n"}},
        {S_OK, [&] { return device.Blt(&ontoItself); }, {"0x4 >>> UMDDdiDevice::Blt\n", "0x4 <<< UMDDdiDevice::Blt\n"}},
        {E_FAIL, [&] { return device.ColorFill(&fill); },
            {"0x4 >>> UMDDdiDevice::ColorFill\n",
                "0x1 UMDDdiDevice::ColorFill pResourceRenderTargetCapable is NULL\n"}},
        {E_FAIL, [&] { return device.Present(&present); },
            {"0x4 >>> UMDDdiDevice::Present FLIP:0 BLT:0 hSrcResource:0x#\n",
                "0x1 UMDDdiDevice::Present pResource is NULL\n"}},
        {S_OK, [&] { return device.SetDisplayMode(&mode); },
            {"0x4 >>> UMDDdiDevice::SetDisplayMode\n",
                "0x1 UMDDdiDevice::SetDisplayMode pResourceRenderTarget is NULL\n"}},
        {E_FAIL, [&] { return device.DestroyResource(nullptr); },
            {"0x4 >>> UMDDdiDevice::DestroyResource hSrcResource:0x#\n"}},
        {E_FAIL,
            [&] {
                D3DDDIARG_CREATEQUERY query = {};
                return device.CreateQuery(&query);
            },
            {"0x4 >>> UMDDdiDevice::CreateQuery\n", "0x4 >>> UMDDdiDevice::CreateFence\n"}},
        {S_OK, [&] { return device.SetPixelShader(nullptr); }, {"0x4 >>> UMDDdiDevice::SetPixelShader\n"}},
        {S_OK, [&] { return device.SetVertexShaderFunc(nullptr); }, {"0x4 >>> UMDDdiDevice::SetVertexShaderFunc\n"}},
        {S_OK, [&] { return device.SetVertexShaderDecl(nullptr); }, {"0x4 >>> UMDDdiDevice::SetVertexShaderDecl\n"}},
        {S_OK, [&] { return device.CreateVertexShaderFunc(nullptr, kCode); },
            {"0x4 >>> UMDDdiDevice::CreateVertexShaderFunc\n"}},
        {S_OK, [&] { return device.CreateVertexShaderDecl(nullptr, nullptr); },
            {"0x4 >>> UMDDdiDevice::CreateVertexShaderDecl\n"}},
    };
    m_Fake.ClearLines();
    for (const auto& row : rows)
        EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(row.Call(), row.Result) << row.Expected[0]; }), row.Expected);
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(UMDDdiDeviceTrace, TargetWithoutASurface_SetOrFilled_IsRefused)
{
    const D3DDDI_SURFACEINFO info = {8, 8, 1, nullptr, 0, 0};
    D3DDDIARG_CREATERESOURCE create = {};
    create.pSurfList = &info;
    create.SurfCount = 1;
    UMDRscSurface surface(&Device(), nullptr, &create, FALSE, D3DPOOL_DEFAULT, false);
    const D3DDDIARG_SETRENDERTARGET target = {0, ToHandle(&surface), 0};
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().SetRenderTarget(&target), E_FAIL); }),
        (Lines{"0x4 >>> UMDDdiDevice::SetRenderTarget\n", "0x1 UMDDdiDevice::SetRenderTarget pSurface is NULL\n"}));
    D3DDDIARG_COLORFILL fill = {};
    fill.hResource = ToHandle(&surface);
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().ColorFill(&fill), E_FAIL); }),
        (Lines{"0x4 >>> UMDDdiDevice::ColorFill\n", "0x1 UMDDdiDevice::ColorFill pSurface is NULL\n"}));
    surface.Destroy();
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(UMDDdiDeviceTrace, CubeSetOrFilled_ItsFirstFaceIsTaken)
{
    const HANDLE hCube = CreateCube();
    const D3DDDIARG_SETRENDERTARGET target = {0, hCube, 4};
    EXPECT_EQ(Device().SetRenderTarget(&target), S_OK);
    D3DDDIARG_COLORFILL fill = {};
    fill.hResource = hCube;
    EXPECT_EQ(Device().ColorFill(&fill), S_OK);
    EXPECT_EQ(Calls(), (Lines{"SetRenderTarget(0, cube#1[0][0])", "ColorFill(cube#1[0][0], 0,0,0,0, 0x0)"}));
}

TEST_F(UMDDdiDeviceTrace, ClearEntry_Rectangles_AreOfTheEntrysLevel)
{
    const D3DDDIARG_CLEAR clear = {D3DCLEAR_TARGET, 0, 0, 0};
    const RECT rects[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    Lines lines = LevelledTrace(m_Trace, [&] { UMDDdiClear(DeviceHandle(), &clear, 2, rects); });
    std::erase_if(lines, [](const std::string& line) { return line.find("Rectangle") == std::string::npos; });
    EXPECT_EQ(lines, (Lines{"0x2 Rectangle index:0 left:1 top:2 right:3 bottom:4\n",
                         "0x2 Rectangle index:1 left:5 top:6 right:7 bottom:8\n"}));
}
