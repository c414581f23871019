// Vertex shader and declaration objects: every operation, its trace line and its failure.
#include "ShaderFixture.h"

#include "resources/UMDShaderVertex.h"

using namespace tesslo::test;

namespace
{
constexpr D3DVERTEXELEMENT9 kElements[] = {{0, 0, D3DDECLTYPE_FLOAT3, 0, D3DDECLUSAGE_POSITION, 0},
    {0, 12, D3DDECLTYPE_D3DCOLOR, 0, D3DDECLUSAGE_COLOR, 0}, D3DDECL_END()};

class UMDShaderVertexTest : public ShaderFixture
{
protected:
    const D3DDDIARG_SETVERTEXSHADERCONST m_Floats = {9, 2};
};
}  // namespace

TEST_F(UMDShaderVertexTest, NewObject_IsNoResourceToCreateOrLock)
{
    UMDShaderVertex shader(&Device());
    EXPECT_EQ(static_cast<UINT>(shader.GetType()), 9U);
    ExpectNothingToCreateOrLock(shader);
}

TEST_F(UMDShaderVertexTest, Shader_CreatedSetAndDeleted_IsOneDelegatedCallEach)
{
    UMDShaderVertex shader(&Device());
    ExpectLife([&] { return shader.Create(kCode); }, [&] { return shader.Set(); }, [&] { shader.Delete(); },
        "vertexshader#1", {"CreateVertexShader(code, out)", "SetVertexShader(vertexshader#1)"});
}

TEST_F(UMDShaderVertexTest, Declaration_CreatedSetAndDeleted_IsOneDelegatedCallEach)
{
    UMDShaderVertex declaration(&Device());
    ExpectLife([&] { return declaration.CreateDecl(kElements); }, [&] { return declaration.SetDecl(); },
        [&] { declaration.DeleteDecl(); }, "declaration#1",
        {"CreateVertexDeclaration([0,0,2,0,0,0 0,12,4,0,10,0], out)", "SetVertexDeclaration(declaration#1)"});
}

TEST_F(UMDShaderVertexTest, SetConst_IsOneDelegatedCall)
{
    EXPECT_EQ(UMDShaderVertex::SetConst(&Device(), &m_Floats, kFloats), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"SetVertexShaderConstantF(9, [1 2 3 4 5 6 7 8], 2)"});
}

TEST_F(UMDShaderVertexTest, NothingToSet_DoesNothing)
{
    UMDShaderVertex empty(&Device());
    UMDShaderVertex declaration(&Device());
    ASSERT_EQ(declaration.CreateDecl(kElements), S_OK);
    ForgetCalls();
    EXPECT_EQ(empty.Set(), S_OK);
    EXPECT_EQ(empty.SetDecl(), S_OK);
    EXPECT_EQ(declaration.Set(), S_OK);
    EXPECT_EQ(UMDShaderVertex::SetConst(&Device(), &m_Floats, nullptr), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDShaderVertexTest, EveryOperation_IsToldAtTheDetailLevel)
{
    UMDShaderVertex shader(&Device());
    EXPECT_EQ(LevelledTrace([&] {
        shader.Create(kCode);
        shader.Set();
        shader.Delete();
        shader.CreateDecl(kElements);
        shader.SetDecl();
        shader.DeleteDecl();
        UMDShaderVertex::SetConst(&Device(), &m_Floats, kFloats);
    }),
        (Lines{"0x200 >>> UMDShaderVertex::Create\n", "0x200 >>> UMDShaderVertex::Set\n",
            "0x200 >>> UMDShaderVertex::Delete\n", "0x200 >>> UMDShaderVertex::CreateDecl\n",
            "0x200 >>> UMDShaderVertex::SetDecl\n", "0x200 >>> UMDShaderVertex::DeleteDecl\n",
            "0x200 >>> UMDShaderVertex::SetConst\n"}));
}

TEST_F(UMDShaderVertexTest, EveryOperation_Refused_IsTracedAndReturned)
{
    UMDShaderVertex shader(&Device()), fresh(&Device());
    ASSERT_EQ(shader.Create(kCode), S_OK);
    ASSERT_EQ(shader.CreateDecl(kElements), S_OK);
    ExpectRefusedCalls({
        {"CreateVertexShader", [&] { return fresh.Create(kCode); },
            "UMDShaderVertex::Create CreateVertexShader failed! 0x8876086a\n"},
        {"SetVertexShader", [&] { return shader.Set(); },
            "UMDShaderVertex::Create SetVertexShader failed! 0x8876086a\n"},
        {"CreateVertexDeclaration", [&] { return fresh.CreateDecl(kElements); },
            "UMDShaderVertex::CreateDecl CreateVertexDeclaration failed! 0x8876086a\n"},
        {"SetVertexDeclaration", [&] { return shader.SetDecl(); },
            "UMDShaderVertex::SetDecl SetVertexDeclaration failed! 0x8876086a\n"},
        {"SetVertexShaderConstantF", [&] { return UMDShaderVertex::SetConst(&Device(), &m_Floats, kFloats); },
            "UMDShaderVertex::SetConst SetVertexShaderConstantF failed! 0x8876086a\n"},
    });
    shader.Delete();
    shader.DeleteDecl();
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}
