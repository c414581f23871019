// Shaders, vertex declarations and shader constants.
#include "FailNthAllocation.h"
#include "ResourceFixture.h"
#include "TraceText.h"

using namespace tesslo::test;

namespace
{

constexpr UINT kCode[] = {0xFFFE0200, 0x0000FFFF};

class UMDDdiDeviceShader : public ResourceFixture
{
protected:
    UMDDdiDeviceShader() { m_Fake.NameMemory(kCode, sizeof(kCode), "code"); }

    HANDLE CreatePixelShader()
    {
        D3DDDIARG_CREATEPIXELSHADER arg = {sizeof(kCode), nullptr};
        m_LastResult = UMDDdiCreatePixelShader(DeviceHandle(), &arg, kCode);
        return arg.ShaderHandle;
    }
    HANDLE CreateVertexShader()
    {
        D3DDDIARG_CREATEVERTEXSHADERFUNC arg = {sizeof(kCode), nullptr};
        m_LastResult = UMDDdiCreateVertexShaderFunc(DeviceHandle(), &arg, kCode);
        return arg.ShaderHandle;
    }
    HANDLE CreateDeclaration(const std::vector<D3DDDIVERTEXELEMENT>& elements)
    {
        D3DDDIARG_CREATEVERTEXSHADERDECL arg = {static_cast<UINT>(elements.size()), nullptr};
        m_LastResult = UMDDdiCreateVertexShaderDecl(DeviceHandle(), &arg, elements.data());
        return arg.ShaderHandle;
    }
    /// What the fake prints for these elements and an end marker.
    std::string DeclarationLine(std::vector<D3DVERTEXELEMENT9> elements)
    {
        elements.push_back(D3DDECL_END());
        return "CreateVertexDeclaration(" + FormatElements(elements.data()) + ", out)";
    }

    /// Sets constants of every kind. @return the four results.
    std::vector<HRESULT> SetConstants()
    {
        const float floats[] = {1, 2, 3, 4, 5.5f, 6, 7, 8};
        const INT integers[] = {1, -2, 3, 4};
        const BOOL booleans[] = {TRUE, FALSE, TRUE};
        const D3DDDIARG_SETVERTEXSHADERCONST vertex = {3, 2};
        const D3DDDIARG_SETPIXELSHADERCONST pixel = {4, 1};
        const D3DDDIARG_SETPIXELSHADERCONSTI pixelI = {5, 1};
        const D3DDDIARG_SETPIXELSHADERCONSTB pixelB = {6, 3};
        return {UMDDdiSetVertexShaderConst(DeviceHandle(), &vertex, floats),
            UMDDdiSetPixelShaderConst(DeviceHandle(), &pixel, floats),
            UMDDdiSetPixelShaderConstI(DeviceHandle(), &pixelI, integers),
            UMDDdiSetPixelShaderConstB(DeviceHandle(), &pixelB, booleans)};
    }

    static constexpr D3DDDIVERTEXELEMENT kElement = {1, 2, 3, 4, 5, 6};
    static constexpr D3DVERTEXELEMENT9 kElement9 = {1, 2, 3, 4, 5, 6};
    HRESULT m_LastResult = S_OK;
};

}  // namespace

TEST_F(UMDDdiDeviceShader, PixelShader_Life_CreatedSetDeleted)
{
    const HANDLE hShader = CreatePixelShader();
    EXPECT_EQ(m_LastResult, S_OK);
    ASSERT_NE(hShader, nullptr);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{"pixelshader#1"});
    EXPECT_EQ(UMDDdiSetPixelShader(DeviceHandle(), hShader), S_OK);
    EXPECT_EQ(UMDDdiDeletePixelShader(DeviceHandle(), hShader), S_OK);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(DeviceLines(), (Lines{"CreatePixelShader(code, out)", "SetPixelShader(pixelshader#1)"}));
    const std::string created = Text("<<< UMDDdiDevice::CreatePixelShader ShaderHandle:0x%x\n", UMDLow32(hShader));
    EXPECT_EQ(m_Trace.Count(created), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::SetPixelShader\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::DeletePixelShader\n"), 1u);
}

TEST_F(UMDDdiDeviceShader, VertexShader_Life_CreatedSetDeleted)
{
    const HANDLE hShader = CreateVertexShader();
    EXPECT_EQ(m_LastResult, S_OK);
    ASSERT_NE(hShader, nullptr);
    EXPECT_EQ(UMDDdiSetVertexShaderFunc(DeviceHandle(), hShader), S_OK);
    // It is no declaration: to set it as one does nothing.
    EXPECT_EQ(UMDDdiSetVertexShaderDecl(DeviceHandle(), hShader), S_OK);
    EXPECT_EQ(UMDDdiDeleteVertexShaderFunc(DeviceHandle(), hShader), S_OK);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(DeviceLines(), (Lines{"CreateVertexShader(code, out)", "SetVertexShader(vertexshader#1)"}));
    const std::string created = Text("<<< UMDDdiDevice::CreateVertexShaderFunc ShaderHandle:0x%x\n", UMDLow32(hShader));
    EXPECT_EQ(m_Trace.Count(created), 1u);
}

TEST_F(UMDDdiDeviceShader, Declaration_Life_CreatedSetDeleted)
{
    const HANDLE hDeclaration = CreateDeclaration({kElement});
    EXPECT_EQ(m_LastResult, S_OK);
    EXPECT_EQ(UMDDdiSetVertexShaderDecl(DeviceHandle(), hDeclaration), S_OK);
    EXPECT_EQ(UMDDdiSetVertexShaderFunc(DeviceHandle(), hDeclaration), S_OK);
    EXPECT_EQ(UMDDdiDeleteVertexShaderDecl(DeviceHandle(), hDeclaration), S_OK);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(DeviceLines(), (Lines{DeclarationLine({kElement9}), "SetVertexDeclaration(declaration#1)"}));
    const std::string created = Text("<<< UMDDdiDevice::CreateVertexShaderDecl 0x%x\n", UMDLow32(hDeclaration));
    EXPECT_EQ(m_Trace.Count("=> UMDDdiCreateVertexShaderDecl M:4 O:2 S:1 T:3 U:5 I:6 N:1 S:0x0\n"), 1u);
    EXPECT_EQ(m_Trace.Count(created), 1u);
}

TEST_F(UMDDdiDeviceShader, CreateDeclaration_WithOrWithoutEndMarker_DelegatedListHasOne)
{
    constexpr D3DDDIVERTEXELEMENT end = {0xFF, 0, D3DDECLTYPE_UNUSED, 0, 0, 0};
    std::vector<D3DDDIVERTEXELEMENT> full(64, kElement);  // the longest, and what is behind its end marker counts not
    full.insert(full.end(), {end, kElement});
    const HANDLE handles[] = {CreateDeclaration({kElement, kElement}), CreateDeclaration({kElement, end, kElement}),
        CreateDeclaration({}), CreateDeclaration(std::vector<D3DDDIVERTEXELEMENT>(64, kElement)),
        CreateDeclaration(full)};
    EXPECT_EQ(DeviceLines(), (Lines{DeclarationLine({kElement9, kElement9}), DeclarationLine({kElement9}),
                                 DeclarationLine({}), DeclarationLine(std::vector<D3DVERTEXELEMENT9>(64, kElement9)),
                                 DeclarationLine(std::vector<D3DVERTEXELEMENT9>(64, kElement9))}));
    for (HANDLE hDeclaration : handles)
        UMDDdiDeleteVertexShaderDecl(DeviceHandle(), hDeclaration);
}

TEST_F(UMDDdiDeviceShader, CreateDeclaration_TooManyOrNoElements_FailsWithoutACall)
{
    EXPECT_EQ(CreateDeclaration(std::vector<D3DDDIVERTEXELEMENT>(65, kElement)), nullptr);
    EXPECT_EQ(m_LastResult, E_FAIL);
    D3DDDIARG_CREATEVERTEXSHADERDECL arg = {2, nullptr};
    EXPECT_EQ(UMDDdiCreateVertexShaderDecl(DeviceHandle(), &arg, nullptr), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::CreateVertexShaderDecl failed! NumVertexElements:65\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::CreateVertexShaderDecl failed! NumVertexElements:2\n"), 1u);
}

TEST_F(UMDDdiDeviceShader, NullHandlesAndRecords_EveryEntry_OkWithoutACall)
{
    const HANDLE hDevice = DeviceHandle();
    EXPECT_EQ(UMDDdiSetPixelShader(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiDeletePixelShader(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiSetVertexShaderFunc(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiDeleteVertexShaderFunc(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiSetVertexShaderDecl(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiDeleteVertexShaderDecl(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiCreateVertexShaderFunc(hDevice, nullptr, kCode), S_OK);
    EXPECT_EQ(UMDDdiCreateVertexShaderDecl(hDevice, nullptr, nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.LinesContaining("Exception").size(), 0u);
    EXPECT_EQ(m_Trace.Count("=> UMDDdiCreateVertexShaderDecl M:0 O:0 S:0 T:0 U:0 I:0 N:0 S:0x0\n"), 1u);
}

TEST_F(UMDDdiDeviceShader, Create_DelegatedCallFails_ReturnsItsCodeAndNoHandle)
{
    m_Fake.Fail("CreatePixelShader", kRefused);
    m_Fake.Fail("CreateVertexShader", kRefused);
    m_Fake.Fail("CreateVertexDeclaration", kRefused);
    EXPECT_EQ(CreatePixelShader(), nullptr);
    EXPECT_EQ(m_LastResult, kRefused);
    EXPECT_EQ(CreateVertexShader(), nullptr);
    EXPECT_EQ(m_LastResult, kRefused);
    EXPECT_EQ(CreateDeclaration({kElement}), nullptr);
    EXPECT_EQ(m_LastResult, kRefused);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::CreatePixelShader Create failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::CreateVertexShaderFunc Create failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::CreateVertexShaderDecl CreateDecl failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.LinesContaining("   ~hResource driver:").size(), 3u) << "every object is destroyed";
}

TEST_F(UMDDdiDeviceShader, Create_NoMemory_FailsWithItsText)
{
    const std::pair<std::function<void()>, const char*> rows[] = {
        {[&] { CreatePixelShader(); }, "UMDDdiDevice::CreatePixelShader NULL == pPixelShader\n"},
        {[&] { CreateVertexShader(); }, "UMDDdiDevice::CreateVertexShaderFunc NULL == pShader\n"},
        {[&] {
             D3DDDIARG_CREATEVERTEXSHADERDECL arg = {1, nullptr};
             m_LastResult = UMDDdiCreateVertexShaderDecl(DeviceHandle(), &arg, &kElement);
         },
            "UMDDdiDevice::CreateVertexShaderDecl NULL == pShader\n"},
    };
    for (const auto& [create, pText] : rows)
    {
        TraceMask mask(UMDTRACE_ERROR);  // the capture of other lines would take the memory
        m_Trace.Clear();
        m_LastResult = S_OK;
        {
            FailNthAllocation fail(1);
            create();
        }
        EXPECT_EQ(m_LastResult, E_FAIL) << pText;
        EXPECT_EQ(Trace(), Lines{pText});
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceShader, Set_DelegatedCallFails_VertexObjectsLetGoPixelShadersDoNot)
{
    const HANDLE hPixelShader = CreatePixelShader();
    const HANDLE hVertexShader = CreateVertexShader();
    const HANDLE hDeclaration = CreateDeclaration({kElement});
    m_Fake.Fail("SetPixelShader", kRefused);
    m_Fake.Fail("SetVertexShader", kRefused);
    m_Fake.Fail("SetVertexDeclaration", kRefused);
    EXPECT_EQ(UMDDdiSetPixelShader(DeviceHandle(), hPixelShader), kRefused);
    EXPECT_EQ(m_Fake.LiveObjects(), (Lines{"pixelshader#1", "vertexshader#1", "declaration#1"}));
    EXPECT_EQ(UMDDdiSetVertexShaderFunc(DeviceHandle(), hVertexShader), kRefused);
    EXPECT_EQ(m_Fake.LiveObjects(), (Lines{"pixelshader#1", "declaration#1"}));
    EXPECT_EQ(UMDDdiSetVertexShaderDecl(DeviceHandle(), hDeclaration), kRefused);
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{"pixelshader#1"});
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetPixelShader Set failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetVertexShaderFunc Set failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetVertexShaderFunc SetDecl failed! 0x8876086a\n"), 1u);
    UMDDdiDeletePixelShader(DeviceHandle(), hPixelShader);
    UMDDdiDeleteVertexShaderFunc(DeviceHandle(), hVertexShader);
    UMDDdiDeleteVertexShaderDecl(DeviceHandle(), hDeclaration);
}

TEST_F(UMDDdiDeviceShader, Handle_BindingWasRefused_IsBoundWithoutACallAndDeletedAsAnyOther)
{
    const HANDLE hVertexShader = CreateVertexShader();
    const HANDLE hDeclaration = CreateDeclaration({kElement});
    m_Fake.Fail("SetVertexShader", kRefused);
    m_Fake.Fail("SetVertexDeclaration", kRefused);
    EXPECT_EQ(UMDDdiSetVertexShaderFunc(DeviceHandle(), hVertexShader), kRefused);
    EXPECT_EQ(UMDDdiSetVertexShaderDecl(DeviceHandle(), hDeclaration), kRefused);
    m_Fake.ClearScripts();
    m_Fake.ClearLines();
    EXPECT_EQ(UMDDdiSetVertexShaderFunc(DeviceHandle(), hVertexShader), S_OK);
    EXPECT_EQ(UMDDdiSetVertexShaderDecl(DeviceHandle(), hDeclaration), S_OK);
    EXPECT_EQ(UMDDdiDeleteVertexShaderFunc(DeviceHandle(), hVertexShader), S_OK);
    EXPECT_EQ(UMDDdiDeleteVertexShaderDecl(DeviceHandle(), hDeclaration), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(m_Trace.Count("EXCEPTION_ACCESS_VIOLATION\n"), 0u);
}

TEST_F(UMDDdiDeviceShader, Constants_AllKinds_AreForwardedWithRegisterAndCount)
{
    EXPECT_EQ(SetConstants(), std::vector<HRESULT>(4, S_OK));
    EXPECT_EQ(DeviceLines(),
        (Lines{"SetVertexShaderConstantF(3, [1 2 3 4 5.5 6 7 8], 2)", "SetPixelShaderConstantF(4, [1 2 3 4], 1)",
            "SetPixelShaderConstantI(5, [1 -2 3 4], 1)", "SetPixelShaderConstantB(6, [1 0 1], 3)"}));
    EXPECT_EQ(m_Trace.Count("=> UMDDdiSetPixelShaderConst C:1 R:4\n"), 1u);
}

TEST_F(UMDDdiDeviceShader, VertexConstants_NoData_OkWithoutACall)
{
    const D3DDDIARG_SETVERTEXSHADERCONST vertex = {3, 2};
    EXPECT_EQ(UMDDdiSetVertexShaderConst(DeviceHandle(), &vertex, nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceShader, Constants_DelegatedCallFails_OnlyVertexConstantsTraceTheExit)
{
    for (const char* pMethod :
        {"SetVertexShaderConstantF", "SetPixelShaderConstantF", "SetPixelShaderConstantI", "SetPixelShaderConstantB"})
        m_Fake.Fail(pMethod, kRefused);
    EXPECT_EQ(SetConstants(), std::vector<HRESULT>(4, kRefused));
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetVertexShaderConst SetConst failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetPixelShaderConst SetConst failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetPixelShaderConstI SetConstI failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::SetPixelShaderConstB SetConstB failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.LinesContaining("<<<"), Lines{"<<< UMDDdiDevice::SetVertexShaderConst\n"});
}
