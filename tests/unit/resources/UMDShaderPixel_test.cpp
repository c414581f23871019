// Pixel shader objects: every operation, its trace line and its failure.
#include "ShaderFixture.h"

#include "resources/UMDShaderPixel.h"

using namespace tesslo::test;

namespace
{
constexpr INT kIntegers[] = {1, 2, 3, 4};
constexpr BOOL kBooleans[] = {TRUE, FALSE};

class UMDShaderPixelTest : public ShaderFixture
{
protected:
    const D3DDDIARG_SETPIXELSHADERCONST m_Floats = {5, 2};
    const D3DDDIARG_SETPIXELSHADERCONSTI m_Integers = {3, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTB m_Booleans = {5, 2};
};
}  // namespace

TEST_F(UMDShaderPixelTest, NewObject_IsNoResourceToCreateOrLock)
{
    UMDShaderPixel shader(&Device());
    EXPECT_EQ(static_cast<UINT>(shader.GetType()), 8U);
    ExpectNothingToCreateOrLock(shader);
}

TEST_F(UMDShaderPixelTest, CreateSetAndDelete_AreOneDelegatedCallEach)
{
    UMDShaderPixel shader(&Device());
    ExpectLife([&] { return shader.Create(kCode); }, [&] { return shader.Set(); }, [&] { shader.Delete(); },
        "pixelshader#1", {"CreatePixelShader(code, out)", "SetPixelShader(pixelshader#1)"});
}

TEST_F(UMDShaderPixelTest, Constants_EveryKind_AreOneDelegatedCall)
{
    EXPECT_EQ(UMDShaderPixel::SetConst(&Device(), &m_Floats, kFloats), S_OK);
    EXPECT_EQ(UMDShaderPixel::SetConstI(&Device(), &m_Integers, kIntegers), S_OK);
    EXPECT_EQ(UMDShaderPixel::SetConstB(&Device(), &m_Booleans, kBooleans), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"SetPixelShaderConstantF(5, [1 2 3 4 5 6 7 8], 2)",
                                 "SetPixelShaderConstantI(3, [1 2 3 4], 1)", "SetPixelShaderConstantB(5, [1 0], 2)"}));
}

TEST_F(UMDShaderPixelTest, SetConst_NoData_ReachesTheDelegatedDeviceAllTheSame)
{
    const D3DDDIARG_SETPIXELSHADERCONST none = {1, 0};
    EXPECT_EQ(UMDShaderPixel::SetConst(&Device(), &none, nullptr), S_OK);
    EXPECT_EQ(m_Fake.Calls("SetPixelShaderConstantF"), 1U);
}

TEST_F(UMDShaderPixelTest, Set_EmptyObject_Unbinds)
{
    UMDShaderPixel shader(&Device());
    EXPECT_EQ(shader.Set(), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"SetPixelShader(null)"});
}

TEST_F(UMDShaderPixelTest, EveryOperation_IsToldAtTheDetailLevel)
{
    UMDShaderPixel shader(&Device());
    EXPECT_EQ(LevelledTrace([&] {
        shader.Create(kCode);
        shader.Set();
        UMDShaderPixel::SetConst(&Device(), &m_Floats, kFloats);
        UMDShaderPixel::SetConstI(&Device(), &m_Integers, kIntegers);
        UMDShaderPixel::SetConstB(&Device(), &m_Booleans, kBooleans);
        shader.Delete();
    }),
        (Lines{"0x200 >>> UMDShaderPixel::Create\n", "0x200 >>> UMDShaderPixel::Set\n",
            "0x200 >>> UMDShaderPixel::SetConst\n", "0x200 >>> UMDShaderPixel::SetConstI\n",
            "0x200 >>> UMDShaderPixel::SetConstB\n", "0x200 >>> UMDShaderPixel::Delete\n"}));
}

TEST_F(UMDShaderPixelTest, EveryOperation_Refused_IsTracedAndReturned)
{
    UMDShaderPixel shader(&Device());
    ExpectRefusedCalls({
        {"CreatePixelShader", [&] { return shader.Create(kCode); },
            "UMDShaderPixel::Create CreatePixelShader failed! 0x8876086a\n"},
        {"SetPixelShader", [&] { return shader.Set(); }, "UMDShaderPixel::Set SetPixelShader failed! 0x8876086a\n"},
        {"SetPixelShaderConstantF", [&] { return UMDShaderPixel::SetConst(&Device(), &m_Floats, kFloats); },
            "UMDShaderPixel::SetConst SetPixelShaderConstantF failed! 0x8876086a\n"},
        {"SetPixelShaderConstantI", [&] { return UMDShaderPixel::SetConstI(&Device(), &m_Integers, kIntegers); },
            "UMDShaderPixel::SetConstI SetPixelShaderConstantI failed! 0x8876086a\n"},
        {"SetPixelShaderConstantB", [&] { return UMDShaderPixel::SetConstB(&Device(), &m_Booleans, kBooleans); },
            "UMDShaderPixel::SetConstB SetPixelShaderConstantB failed! 0x8876086a\n"},
    });
}
