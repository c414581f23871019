// Shader and declaration objects: every operation, its trace line, its failure, and where the two classes differ.
#include "ResourceFixture.h"

#include "resources/UMDShaderPixel.h"
#include "resources/UMDShaderVertex.h"

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
const UINT kCode[] = {0xFFFF0200, 0x0000FFFF};
const D3DVERTEXELEMENT9 kElements[] = {{0, 0, D3DDECLTYPE_FLOAT3, 0, D3DDECLUSAGE_POSITION, 0},
    {0, 12, D3DDECLTYPE_D3DCOLOR, 0, D3DDECLUSAGE_COLOR, 0}, D3DDECL_END()};

class UMDShaderTest : public ResourceFixture
{
protected:
    void SetUp() override
    {
        ResourceFixture::SetUp();
        m_Fake.NameMemory(kCode, sizeof kCode, "code");
    }
};
}  // namespace

TEST_F(UMDShaderTest, Types_BothClasses_AreEightAndNine)
{
    UMDShaderPixel pixel(&Device());
    UMDShaderVertex vertex(&Device());
    EXPECT_EQ(static_cast<UINT>(pixel.GetType()), 8U);
    EXPECT_EQ(static_cast<UINT>(vertex.GetType()), 9U);
    void* pData = nullptr;
    UINT pitch = 0;
    for (UMDRscBase* pShader : {static_cast<UMDRscBase*>(&pixel), static_cast<UMDRscBase*>(&vertex)})
    {
        EXPECT_EQ(pShader->Lock(0, 0, 0, &pData, &pitch, 0), E_NOTIMPL);
        EXPECT_EQ(pShader->Unlock(), E_NOTIMPL);
        EXPECT_EQ(pShader->Create(), E_FAIL);
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDShaderTest, EveryOperation_Success_IsOneDelegatedCall)
{
    const float floats[] = {1, 2, 3, 4, 5, 6, 7, 8};
    const INT integers[] = {1, 2, 3, 4};
    const BOOL booleans[] = {TRUE, FALSE};
    const D3DDDIARG_SETPIXELSHADERCONST two = {5, 2};
    const D3DDDIARG_SETPIXELSHADERCONST one = {3, 1};
    const D3DDDIARG_SETVERTEXSHADERCONST vertexTwo = {9, 2};
    UMDShaderPixel pixel(&Device());
    UMDShaderVertex shader(&Device());
    UMDShaderVertex declaration(&Device());
    ForgetCalls();
    const TraceMask mask(UMDTRACE_DETAIL);
    EXPECT_EQ(pixel.Create(kCode), S_OK);
    EXPECT_EQ(pixel.Set(), S_OK);
    EXPECT_EQ(UMDShaderPixel::SetConst(&Device(), &two, floats), S_OK);
    EXPECT_EQ(UMDShaderPixel::SetConstI(&Device(), &one, integers), S_OK);
    EXPECT_EQ(UMDShaderPixel::SetConstB(&Device(), &two, booleans), S_OK);
    EXPECT_EQ(shader.Create(kCode), S_OK);
    EXPECT_EQ(shader.Set(), S_OK);
    EXPECT_EQ(declaration.CreateDecl(kElements), S_OK);
    EXPECT_EQ(declaration.SetDecl(), S_OK);
    EXPECT_EQ(UMDShaderVertex::SetConst(&Device(), &vertexTwo, floats), S_OK);
    EXPECT_EQ(m_Fake.LiveObjects(), (Lines{"pixelshader#1", "vertexshader#1", "declaration#1"}));
    pixel.Delete();
    shader.Delete();
    declaration.DeleteDecl();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(DeviceLines(),
        (Lines{"CreatePixelShader(code, out)", "SetPixelShader(pixelshader#1)",
            "SetPixelShaderConstantF(5, [1 2 3 4 5 6 7 8], 2)", "SetPixelShaderConstantI(3, [1 2 3 4], 1)",
            "SetPixelShaderConstantB(5, [1 0], 2)", "CreateVertexShader(code, out)", "SetVertexShader(vertexshader#1)",
            "CreateVertexDeclaration([0,0,2,0,0,0 0,12,4,0,10,0], out)", "SetVertexDeclaration(declaration#1)",
            "SetVertexShaderConstantF(9, [1 2 3 4 5 6 7 8], 2)"}));
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDShaderPixel::Create\n", ">>> UMDShaderPixel::Set\n", ">>> UMDShaderPixel::SetConst\n",
            ">>> UMDShaderPixel::SetConstI\n", ">>> UMDShaderPixel::SetConstB\n", ">>> UMDShaderVertex::Create\n",
            ">>> UMDShaderVertex::Set\n", ">>> UMDShaderVertex::CreateDecl\n", ">>> UMDShaderVertex::SetDecl\n",
            ">>> UMDShaderVertex::SetConst\n", ">>> UMDShaderPixel::Delete\n", ">>> UMDShaderVertex::Delete\n",
            ">>> UMDShaderVertex::DeleteDecl\n"}));
}

TEST_F(UMDShaderTest, EmptyObjects_PixelUnbindsAndVertexDoesNothing)
{
    UMDShaderPixel pixel(&Device());
    UMDShaderVertex vertex(&Device());
    UMDShaderVertex declaration(&Device());
    ASSERT_EQ(declaration.CreateDecl(kElements), S_OK);
    const D3DDDIARG_SETVERTEXSHADERCONST two = {9, 2};
    ForgetCalls();
    EXPECT_EQ(vertex.Set(), S_OK);
    EXPECT_EQ(vertex.SetDecl(), S_OK);
    EXPECT_EQ(declaration.Set(), S_OK);
    EXPECT_EQ(UMDShaderVertex::SetConst(&Device(), &two, nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(pixel.Set(), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"SetPixelShader(null)"});
    // A pixel constant without data reaches the delegated device all the same.
    const D3DDDIARG_SETPIXELSHADERCONST none = {1, 0};
    EXPECT_EQ(UMDShaderPixel::SetConst(&Device(), &none, nullptr), S_OK);
    EXPECT_EQ(m_Fake.Calls("SetPixelShaderConstantF"), 1U);
}

TEST_F(UMDShaderTest, EveryOperation_Refused_IsTracedAndReturned)
{
    const float floats[4] = {};
    const INT integers[4] = {};
    const BOOL booleans[1] = {};
    const D3DDDIARG_SETPIXELSHADERCONST one = {0, 1};
    const D3DDDIARG_SETVERTEXSHADERCONST vertexOne = {0, 1};
    UMDShaderPixel pixel(&Device());
    UMDShaderVertex vertex(&Device());
    ASSERT_EQ(vertex.Create(kCode), S_OK);
    ASSERT_EQ(vertex.CreateDecl(kElements), S_OK);
    UMDShaderVertex fresh(&Device());
    const struct
    {
        const char* pCall;
        std::function<HRESULT()> Operation;
        const char* pError;
    } rows[] = {
        {"CreatePixelShader", [&] { return pixel.Create(kCode); }, "UMDShaderPixel::Create CreatePixelShader"},
        {"SetPixelShader", [&] { return pixel.Set(); }, "UMDShaderPixel::Set SetPixelShader"},
        {"SetPixelShaderConstantF", [&] { return UMDShaderPixel::SetConst(&Device(), &one, floats); },
            "UMDShaderPixel::SetConst SetPixelShaderConstantF"},
        {"SetPixelShaderConstantI", [&] { return UMDShaderPixel::SetConstI(&Device(), &one, integers); },
            "UMDShaderPixel::SetConstI SetPixelShaderConstantI"},
        {"SetPixelShaderConstantB", [&] { return UMDShaderPixel::SetConstB(&Device(), &one, booleans); },
            "UMDShaderPixel::SetConstB SetPixelShaderConstantB"},
        {"CreateVertexShader", [&] { return fresh.Create(kCode); }, "UMDShaderVertex::Create CreateVertexShader"},
        {"SetVertexShader", [&] { return vertex.Set(); }, "UMDShaderVertex::Create SetVertexShader"},
        {"CreateVertexDeclaration", [&] { return fresh.CreateDecl(kElements); },
            "UMDShaderVertex::CreateDecl CreateVertexDeclaration"},
        {"SetVertexDeclaration", [&] { return vertex.SetDecl(); }, "UMDShaderVertex::SetDecl SetVertexDeclaration"},
        {"SetVertexShaderConstantF", [&] { return UMDShaderVertex::SetConst(&Device(), &vertexOne, floats); },
            "UMDShaderVertex::SetConst SetVertexShaderConstantF"},
    };
    for (const auto& row : rows)
    {
        m_Fake.Fail(row.pCall, kRefused, 1);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(row.Operation(), kRefused); }),
            Lines{std::string(row.pError) + " failed! 0x8876086a\n"});
    }
    vertex.Delete();
    vertex.DeleteDecl();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}
