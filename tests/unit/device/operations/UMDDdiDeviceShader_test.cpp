// Shaders, vertex declarations and shader constants.
#include "DeviceObjects.h"
#include "FailNthAllocation.h"

namespace
{

constexpr HRESULT kRefused = static_cast<HRESULT>(0x8876086C);
constexpr UINT kCode[] = {0xFFFE0200, 0x0000FFFF};

class UMDDdiDeviceShader : public DeviceObjects
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
        return "CreateVertexDeclaration(" + tesslo::test::FormatElements(elements.data()) + ", out)";
    }

    static constexpr D3DDDIVERTEXELEMENT kElement = {1, 2, 3, 4, 5, 6};
    static constexpr D3DVERTEXELEMENT9 kElement9 = {1, 2, 3, 4, 5, 6};
    HRESULT m_LastResult = S_OK;
};

}  // namespace

TEST_F(UMDDdiDeviceShader, PixelShader_Life_CreatedSetDeleted)
{
    const HANDLE hShader = CreatePixelShader();
    EXPECT_EQ(S_OK, m_LastResult);
    ASSERT_NE(nullptr, hShader);
    EXPECT_EQ(Lines{"pixelshader#1"}, m_Fake.LiveObjects());
    EXPECT_EQ(S_OK, UMDDdiSetPixelShader(DeviceHandle(), hShader));
    EXPECT_EQ(S_OK, UMDDdiDeletePixelShader(DeviceHandle(), hShader));
    EXPECT_EQ(Lines{}, m_Fake.LiveObjects());
    EXPECT_EQ((Lines{"CreatePixelShader(code, out)", "SetPixelShader(pixelshader#1)"}), Calls());
    char created[100];
    snprintf(created, sizeof(created), "<<< UMDDdiDevice::CreatePixelShader ShaderHandle:0x%x\n", UMDLow32(hShader));
    EXPECT_EQ(1u, m_Trace.Count(created));
    EXPECT_EQ(1u, m_Trace.Count("<<< UMDDdiDevice::SetPixelShader\n"));
    EXPECT_EQ(1u, m_Trace.Count("<<< UMDDdiDevice::DeletePixelShader\n"));
}

TEST_F(UMDDdiDeviceShader, VertexShader_Life_CreatedSetDeleted)
{
    const HANDLE hShader = CreateVertexShader();
    EXPECT_EQ(S_OK, m_LastResult);
    ASSERT_NE(nullptr, hShader);
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderFunc(DeviceHandle(), hShader));
    // It is no declaration: to set it as one does nothing.
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderDecl(DeviceHandle(), hShader));
    EXPECT_EQ(S_OK, UMDDdiDeleteVertexShaderFunc(DeviceHandle(), hShader));
    EXPECT_EQ(Lines{}, m_Fake.LiveObjects());
    EXPECT_EQ((Lines{"CreateVertexShader(code, out)", "SetVertexShader(vertexshader#1)"}), Calls());
    char created[100];
    snprintf(
        created, sizeof(created), "<<< UMDDdiDevice::CreateVertexShaderFunc ShaderHandle:0x%x\n", UMDLow32(hShader));
    EXPECT_EQ(1u, m_Trace.Count(created));
}

TEST_F(UMDDdiDeviceShader, Declaration_Life_CreatedSetDeleted)
{
    const HANDLE hDeclaration = CreateDeclaration({kElement});
    EXPECT_EQ(S_OK, m_LastResult);
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderDecl(DeviceHandle(), hDeclaration));
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderFunc(DeviceHandle(), hDeclaration));
    EXPECT_EQ(S_OK, UMDDdiDeleteVertexShaderDecl(DeviceHandle(), hDeclaration));
    EXPECT_EQ(Lines{}, m_Fake.LiveObjects());
    EXPECT_EQ((Lines{DeclarationLine({kElement9}), "SetVertexDeclaration(declaration#1)"}), Calls());
    char created[100];
    snprintf(created, sizeof(created), "<<< UMDDdiDevice::CreateVertexShaderDecl 0x%x\n", UMDLow32(hDeclaration));
    EXPECT_EQ(1u, m_Trace.Count("=> UMDDdiCreateVertexShaderDecl M:4 O:2 S:1 T:3 U:5 I:6 N:1 S:0x0\n"));
    EXPECT_EQ(1u, m_Trace.Count(created));
}

TEST_F(UMDDdiDeviceShader, CreateDeclaration_WithOrWithoutEndMarker_DelegatedListHasOne)
{
    constexpr D3DDDIVERTEXELEMENT end = {0xFF, 0, D3DDECLTYPE_UNUSED, 0, 0, 0};
    std::vector<D3DDDIVERTEXELEMENT> full(64, kElement);  // the longest, and what is behind its end marker counts not
    full.insert(full.end(), {end, kElement});
    const HANDLE handles[] = {CreateDeclaration({kElement, kElement}), CreateDeclaration({kElement, end, kElement}),
        CreateDeclaration({}), CreateDeclaration(std::vector<D3DDDIVERTEXELEMENT>(64, kElement)),
        CreateDeclaration(full)};
    EXPECT_EQ((Lines{DeclarationLine({kElement9, kElement9}), DeclarationLine({kElement9}), DeclarationLine({}),
                  DeclarationLine(std::vector<D3DVERTEXELEMENT9>(64, kElement9)),
                  DeclarationLine(std::vector<D3DVERTEXELEMENT9>(64, kElement9))}),
        Calls());
    for (HANDLE hDeclaration : handles)
        UMDDdiDeleteVertexShaderDecl(DeviceHandle(), hDeclaration);
}

TEST_F(UMDDdiDeviceShader, CreateDeclaration_TooManyOrNoElements_FailsWithoutACall)
{
    EXPECT_EQ(nullptr, CreateDeclaration(std::vector<D3DDDIVERTEXELEMENT>(65, kElement)));
    EXPECT_EQ(E_FAIL, m_LastResult);
    D3DDDIARG_CREATEVERTEXSHADERDECL arg = {2, nullptr};
    EXPECT_EQ(E_FAIL, UMDDdiCreateVertexShaderDecl(DeviceHandle(), &arg, nullptr));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::CreateVertexShaderDecl failed! NumVertexElements:65\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::CreateVertexShaderDecl failed! NumVertexElements:2\n"));
}

TEST_F(UMDDdiDeviceShader, NullHandlesAndRecords_EveryEntry_OkWithoutACall)
{
    const HANDLE hDevice = DeviceHandle();
    EXPECT_EQ(S_OK, UMDDdiSetPixelShader(hDevice, nullptr));
    EXPECT_EQ(S_OK, UMDDdiDeletePixelShader(hDevice, nullptr));
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderFunc(hDevice, nullptr));
    EXPECT_EQ(S_OK, UMDDdiDeleteVertexShaderFunc(hDevice, nullptr));
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderDecl(hDevice, nullptr));
    EXPECT_EQ(S_OK, UMDDdiDeleteVertexShaderDecl(hDevice, nullptr));
    EXPECT_EQ(S_OK, UMDDdiCreateVertexShaderFunc(hDevice, nullptr, kCode));
    EXPECT_EQ(S_OK, UMDDdiCreateVertexShaderDecl(hDevice, nullptr, nullptr));
    EXPECT_EQ(Lines{}, Calls());
    EXPECT_EQ(0u, m_Trace.LinesContaining("Exception").size());
    EXPECT_EQ(1u, m_Trace.Count("=> UMDDdiCreateVertexShaderDecl M:0 O:0 S:0 T:0 U:0 I:0 N:0 S:0x0\n"));
}

TEST_F(UMDDdiDeviceShader, Create_DelegatedCallFails_ReturnsItsCodeAndNoHandle)
{
    m_Fake.Fail("CreatePixelShader", kRefused);
    m_Fake.Fail("CreateVertexShader", kRefused);
    m_Fake.Fail("CreateVertexDeclaration", kRefused);
    EXPECT_EQ(nullptr, CreatePixelShader());
    EXPECT_EQ(kRefused, m_LastResult);
    EXPECT_EQ(nullptr, CreateVertexShader());
    EXPECT_EQ(kRefused, m_LastResult);
    EXPECT_EQ(nullptr, CreateDeclaration({kElement}));
    EXPECT_EQ(kRefused, m_LastResult);
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::CreatePixelShader Create failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::CreateVertexShaderFunc Create failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::CreateVertexShaderDecl CreateDecl failed! 0x8876086c\n"));
    EXPECT_EQ(3u, m_Trace.LinesContaining("   ~hResource driver:").size()) << "every object is destroyed";
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
        tesslo::test::TraceMask mask(UMDTRACE_ERROR);  // the capture of other lines would take the memory
        m_Trace.Clear();
        m_LastResult = S_OK;
        {
            tesslo::test::FailNthAllocation fail(1);
            create();
        }
        EXPECT_EQ(E_FAIL, m_LastResult) << pText;
        EXPECT_EQ(Lines{pText}, Trace());
    }
    EXPECT_EQ(Lines{}, Calls());
}

TEST_F(UMDDdiDeviceShader, Set_DelegatedCallFails_VertexObjectsAreDeletedPixelShadersAreNot)
{
    const HANDLE hPixelShader = CreatePixelShader();
    const HANDLE hVertexShader = CreateVertexShader();
    const HANDLE hDeclaration = CreateDeclaration({kElement});
    m_Fake.Fail("SetPixelShader", kRefused);
    m_Fake.Fail("SetVertexShader", kRefused);
    m_Fake.Fail("SetVertexDeclaration", kRefused);
    EXPECT_EQ(kRefused, UMDDdiSetPixelShader(DeviceHandle(), hPixelShader));
    EXPECT_EQ((Lines{"pixelshader#1", "vertexshader#1", "declaration#1"}), m_Fake.LiveObjects());
    EXPECT_EQ(kRefused, UMDDdiSetVertexShaderFunc(DeviceHandle(), hVertexShader));
    EXPECT_EQ((Lines{"pixelshader#1", "declaration#1"}), m_Fake.LiveObjects());
    EXPECT_EQ(kRefused, UMDDdiSetVertexShaderDecl(DeviceHandle(), hDeclaration));
    EXPECT_EQ(Lines{"pixelshader#1"}, m_Fake.LiveObjects());
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetPixelShader Set failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetVertexShaderFunc Set failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetVertexShaderFunc SetDecl failed! 0x8876086c\n"));
    UMDDdiDeletePixelShader(DeviceHandle(), hPixelShader);
}

TEST_F(UMDDdiDeviceShader, Constants_AllKinds_AreForwardedWithRegisterAndCount)
{
    const float floats[] = {1, 2, 3, 4, 5.5f, 6, 7, 8};
    const INT integers[] = {1, -2, 3, 4};
    const BOOL booleans[] = {TRUE, FALSE, TRUE};
    const D3DDDIARG_SETVERTEXSHADERCONST vertex = {3, 2};
    const D3DDDIARG_SETPIXELSHADERCONST pixel = {4, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTI pixelI = {5, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTB pixelB = {6, 3};
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderConst(DeviceHandle(), &vertex, floats));
    EXPECT_EQ(S_OK, UMDDdiSetPixelShaderConst(DeviceHandle(), &pixel, floats));
    EXPECT_EQ(S_OK, UMDDdiSetPixelShaderConstI(DeviceHandle(), &pixelI, integers));
    EXPECT_EQ(S_OK, UMDDdiSetPixelShaderConstB(DeviceHandle(), &pixelB, booleans));
    EXPECT_EQ((Lines{"SetVertexShaderConstantF(3, [1 2 3 4 5.5 6 7 8], 2)", "SetPixelShaderConstantF(4, [1 2 3 4], 1)",
                  "SetPixelShaderConstantI(5, [1 -2 3 4], 1)", "SetPixelShaderConstantB(6, [1 0 1], 3)"}),
        Calls());
    EXPECT_EQ(1u, m_Trace.Count("=> UMDDdiSetPixelShaderConst C:1 R:4\n"));
}

TEST_F(UMDDdiDeviceShader, VertexConstants_NoData_OkWithoutACall)
{
    const D3DDDIARG_SETVERTEXSHADERCONST vertex = {3, 2};
    EXPECT_EQ(S_OK, UMDDdiSetVertexShaderConst(DeviceHandle(), &vertex, nullptr));
    EXPECT_EQ(Lines{}, Calls());
}

TEST_F(UMDDdiDeviceShader, Constants_DelegatedCallFails_OnlyVertexConstantsTraceTheExit)
{
    for (const char* pMethod :
        {"SetVertexShaderConstantF", "SetPixelShaderConstantF", "SetPixelShaderConstantI", "SetPixelShaderConstantB"})
        m_Fake.Fail(pMethod, kRefused);
    const float floats[4] = {};
    const INT integers[4] = {};
    const BOOL booleans[1] = {};
    const D3DDDIARG_SETVERTEXSHADERCONST vertex = {0, 1};
    const D3DDDIARG_SETPIXELSHADERCONST pixel = {0, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTI pixelI = {0, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTB pixelB = {0, 1};
    EXPECT_EQ(kRefused, UMDDdiSetVertexShaderConst(DeviceHandle(), &vertex, floats));
    EXPECT_EQ(kRefused, UMDDdiSetPixelShaderConst(DeviceHandle(), &pixel, floats));
    EXPECT_EQ(kRefused, UMDDdiSetPixelShaderConstI(DeviceHandle(), &pixelI, integers));
    EXPECT_EQ(kRefused, UMDDdiSetPixelShaderConstB(DeviceHandle(), &pixelB, booleans));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetVertexShaderConst SetConst failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetPixelShaderConst SetConst failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetPixelShaderConstI SetConstI failed! 0x8876086c\n"));
    EXPECT_EQ(1u, m_Trace.Count("UMDDdiDevice::SetPixelShaderConstB SetConstB failed! 0x8876086c\n"));
    EXPECT_EQ(Lines{"<<< UMDDdiDevice::SetVertexShaderConst\n"}, m_Trace.LinesContaining("<<<"));
}
