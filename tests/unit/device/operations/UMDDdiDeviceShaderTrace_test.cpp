// The trace of shaders, declarations and their constants.
#include "OperationTraceFixture.h"

using namespace tesslo::test;

namespace
{
constexpr UINT kCode[] = {0xFFFE0200, 0x0000FFFF};
constexpr FLOAT kFloats[4] = {};
constexpr INT kIntegers[4] = {};
constexpr BOOL kBooleans[4] = {};

class UMDDdiDeviceShaderTraceTest : public OperationTraceFixture
{
protected:
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

    const D3DDDIARG_SETPIXELSHADERCONST m_Constants = {0, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTI m_ConstantsI = {0, 1};
    const D3DDDIARG_SETPIXELSHADERCONSTB m_ConstantsB = {0, 1};
    const std::vector<Operation> m_Operations = {
        {"SetPixelShaderConst", "SetPixelShaderConstantF",
            "UMDDdiDevice::SetPixelShaderConst SetConst failed! 0x8876086a\n",
            [this] { return Device().SetPixelShaderConst(&m_Constants, kFloats); }},
        {"SetPixelShaderConstI", "SetPixelShaderConstantI",
            "UMDDdiDevice::SetPixelShaderConstI SetConstI failed! 0x8876086a\n",
            [this] { return Device().SetPixelShaderConstI(&m_ConstantsI, kIntegers); }},
        {"SetPixelShaderConstB", "SetPixelShaderConstantB",
            "UMDDdiDevice::SetPixelShaderConstB SetConstB failed! 0x8876086a\n",
            [this] { return Device().SetPixelShaderConstB(&m_ConstantsB, kBooleans); }},
    };
    const std::vector<Operation> m_DeletesOfNothing = {
        {"DeletePixelShader", nullptr, nullptr, [this] { return Device().DeletePixelShader(nullptr); }},
        {"DeleteVertexShaderFunc", nullptr, nullptr, [this] { return Device().DeleteVertexShaderFunc(nullptr); }},
        {"DeleteVertexShaderDecl", nullptr, nullptr, [this] { return Device().DeleteVertexShaderDecl(nullptr); }},
    };
};
}  // namespace

TEST_F(UMDDdiDeviceShaderTraceTest, PixelConstants_Set_EnterAndLeave)
{
    ExpectEntersAndLeaves(m_Operations);
}

TEST_F(UMDDdiDeviceShaderTraceTest, PixelConstants_Refused_EnterAndTellTheError)
{
    ExpectEntersAndTellsTheError(m_Operations);
}

TEST_F(UMDDdiDeviceShaderTraceTest, VertexConstants_Refused_LeaveAllTheSame)
{
    m_Fake.Fail("SetVertexShaderConstantF", kRefused);
    const D3DDDIARG_SETVERTEXSHADERCONST constants = {0, 1};
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().SetVertexShaderConst(&constants, kFloats), kRefused); }),
        (Lines{"0x4 >>> UMDDdiDevice::SetVertexShaderConst\n",
            "0x1 UMDDdiDevice::SetVertexShaderConst SetConst failed! 0x8876086a\n",
            "0x8 <<< UMDDdiDevice::SetVertexShaderConst\n"}));
}

TEST_F(UMDDdiDeviceShaderTraceTest, PixelShader_CreatedSetAndDeleted_EntersAndLeaves)
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
}

TEST_F(UMDDdiDeviceShaderTraceTest, VertexShader_CreatedSetAndDeleted_EntersAndLeaves)
{
    EXPECT_EQ(DeviceTrace([&] {
        const HANDLE hShader = CreateVertexShader();
        EXPECT_EQ(Device().SetVertexShaderFunc(hShader), S_OK);
        EXPECT_EQ(Device().DeleteVertexShaderFunc(hShader), S_OK);
    }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderFunc\n",
            "0x8 <<< UMDDdiDevice::CreateVertexShaderFunc ShaderHandle:0x#\n",
            "0x4 >>> UMDDdiDevice::SetVertexShaderFunc\n", "0x8 <<< UMDDdiDevice::SetVertexShaderFunc\n",
            "0x4 >>> UMDDdiDevice::DeleteVertexShaderFunc\n", "0x8 <<< UMDDdiDevice::DeleteVertexShaderFunc\n"}));
}

TEST_F(UMDDdiDeviceShaderTraceTest, Declaration_CreatedSetAndDeleted_EntersAndLeaves)
{
    EXPECT_EQ(DeviceTrace([&] {
        const HANDLE hDeclaration = CreateDeclaration();
        EXPECT_EQ(Device().SetVertexShaderDecl(hDeclaration), S_OK);
        EXPECT_EQ(Device().DeleteVertexShaderDecl(hDeclaration), S_OK);
    }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderDecl\n", "0x8 <<< UMDDdiDevice::CreateVertexShaderDecl 0x#\n",
            "0x4 >>> UMDDdiDevice::SetVertexShaderDecl\n", "0x8 <<< UMDDdiDevice::SetVertexShaderDecl\n",
            "0x4 >>> UMDDdiDevice::DeleteVertexShaderDecl\n", "0x8 <<< UMDDdiDevice::DeleteVertexShaderDecl\n"}));
}

TEST_F(UMDDdiDeviceShaderTraceTest, DeleteOfNothing_EntersAndLeaves)
{
    ExpectEntersAndLeaves(m_DeletesOfNothing);
}

TEST_F(UMDDdiDeviceShaderTraceTest, Creation_Refused_EntersAndTellsTheError)
{
    for (const char* pCall : {"CreatePixelShader", "CreateVertexShader", "CreateVertexDeclaration"})
        m_Fake.Fail(pCall, kRefused);
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(CreatePixelShader(), nullptr); }),
        (Lines{"0x4 >>> UMDDdiDevice::CreatePixelShader\n",
            "0x1 UMDDdiDevice::CreatePixelShader Create failed! 0x8876086a\n"}));
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(CreateVertexShader(), nullptr); }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderFunc\n",
            "0x1 UMDDdiDevice::CreateVertexShaderFunc Create failed! 0x8876086a\n"}));
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(CreateDeclaration(), nullptr); }),
        (Lines{"0x4 >>> UMDDdiDevice::CreateVertexShaderDecl\n",
            "0x1 UMDDdiDevice::CreateVertexShaderDecl CreateDecl failed! 0x8876086a\n"}));
}

TEST_F(UMDDdiDeviceShaderTraceTest, VertexShader_BindingRefused_TellsTheErrorAndLetsGo)
{
    m_Fake.Fail("SetVertexShader", kRefused);
    const Lines trace = DeviceTrace([&] {
        const HANDLE hShader = CreateVertexShader();
        EXPECT_EQ(Device().SetVertexShaderFunc(hShader), kRefused);
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
        Device().DeleteVertexShaderFunc(hShader);
    });
    EXPECT_EQ(Containing(trace, "::SetVertex"), (Lines{"0x4 >>> UMDDdiDevice::SetVertexShaderFunc\n",
                                                    "0x1 UMDDdiDevice::SetVertexShaderFunc Set failed! 0x8876086a\n"}));
}

TEST_F(UMDDdiDeviceShaderTraceTest, Declaration_BindingRefused_TellsTheErrorAndLetsGo)
{
    m_Fake.Fail("SetVertexDeclaration", kRefused);
    const Lines trace = DeviceTrace([&] {
        const HANDLE hDeclaration = CreateDeclaration();
        EXPECT_EQ(Device().SetVertexShaderDecl(hDeclaration), kRefused);
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
        Device().DeleteVertexShaderDecl(hDeclaration);
    });
    EXPECT_EQ(
        Containing(trace, "::SetVertex"), (Lines{"0x4 >>> UMDDdiDevice::SetVertexShaderDecl\n",
                                              "0x1 UMDDdiDevice::SetVertexShaderFunc SetDecl failed! 0x8876086a\n"}));
}

TEST_F(UMDDdiDeviceShaderTraceTest, Null_SetOrCreated_LeavesWithoutALine)
{
    ExpectDeclined({
        {S_OK, [&] { return Device().SetPixelShader(nullptr); }, {"0x4 >>> UMDDdiDevice::SetPixelShader\n"}},
        {S_OK, [&] { return Device().SetVertexShaderFunc(nullptr); }, {"0x4 >>> UMDDdiDevice::SetVertexShaderFunc\n"}},
        {S_OK, [&] { return Device().SetVertexShaderDecl(nullptr); }, {"0x4 >>> UMDDdiDevice::SetVertexShaderDecl\n"}},
        {S_OK, [&] { return Device().CreateVertexShaderFunc(nullptr, kCode); },
            {"0x4 >>> UMDDdiDevice::CreateVertexShaderFunc\n"}},
        {S_OK, [&] { return Device().CreateVertexShaderDecl(nullptr, nullptr); },
            {"0x4 >>> UMDDdiDevice::CreateVertexShaderDecl\n"}},
    });
}
