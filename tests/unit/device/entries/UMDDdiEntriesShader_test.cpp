// What the shader entries trace: creating ones tell the handle that the runtime left in the record.
#include "EntryTrace.h"
#include "ResourceFixture.h"

using namespace tesslo::test;

namespace
{
constexpr UINT kCode[] = {0xFFFE0200, 0x0000FFFF};

class UMDDdiEntriesShaderTest : public ResourceFixture
{
protected:
    const HANDLE m_hBefore = reinterpret_cast<HANDLE>(UINT_PTR{0x51});
};
}  // namespace

TEST_F(UMDDdiEntriesShaderTest, PixelShader_CreatedSetAndDeleted_HandlesStandWhereTheyBelong)
{
    D3DDDIARG_CREATEPIXELSHADER arg = {sizeof kCode, m_hBefore};
    const Lines lines = EntryLines([&] {
        UMDDdiCreatePixelShader(DeviceHandle(), &arg, kCode);
        UMDDdiSetPixelShader(DeviceHandle(), arg.ShaderHandle);
        UMDDdiDeletePixelShader(DeviceHandle(), arg.ShaderHandle);
    });
    EXPECT_EQ(Named(Containing(lines, "=> UMDDdi"), {{"code", kCode}, {"record", &arg}, {"shader", arg.ShaderHandle}}),
        (Lines{"=> UMDDdiCreatePixelShader pShader:code pDDICreateShader:record CodeSize:8 ShaderHandle:0x51\n",
            "=> UMDDdiSetPixelShader hPixelShader:shader\n", "=> UMDDdiDeletePixelShader hPixelShader:shader\n"}));
}

TEST_F(UMDDdiEntriesShaderTest, VertexShader_CreatedSetAndDeleted_HandlesStandWhereTheyBelong)
{
    D3DDDIARG_CREATEVERTEXSHADERFUNC arg = {sizeof kCode, m_hBefore};
    const Lines lines = EntryLines([&] {
        UMDDdiCreateVertexShaderFunc(DeviceHandle(), &arg, kCode);
        UMDDdiSetVertexShaderFunc(DeviceHandle(), arg.ShaderHandle);
        UMDDdiDeleteVertexShaderFunc(DeviceHandle(), arg.ShaderHandle);
    });
    EXPECT_EQ(Named(Containing(lines, "=> UMDDdi"), {{"code", kCode}, {"record", &arg}, {"shader", arg.ShaderHandle}}),
        (Lines{"=> UMDDdiCreateVertexShaderFunc pCode:code pDDICreateVSFunc:record ShaderHandle:0x51\n",
            "=> UMDDdiSetVertexShaderFunc hVSFunc:shader\n", "=> UMDDdiDeleteVertexShaderFunc hVSFunc:shader\n"}));
}

TEST_F(UMDDdiEntriesShaderTest, Declaration_OfNoElements_TracesNoneThoughThereIsMemory)
{
    D3DDDIARG_CREATEVERTEXSHADERDECL arg = {0, nullptr};
    const D3DDDIVERTEXELEMENT elements[] = {{1, 2, 3, 4, 5, 6}};
    const Lines lines = EntryLines([&] { UMDDdiCreateVertexShaderDecl(DeviceHandle(), &arg, elements); });
    EXPECT_EQ(
        Containing(lines, "=> UMDDdi"), Lines{"=> UMDDdiCreateVertexShaderDecl M:0 O:0 S:0 T:0 U:0 I:0 N:0 S:0x0\n"});
    UMDDdiDeleteVertexShaderDecl(DeviceHandle(), arg.ShaderHandle);
}

TEST_F(UMDDdiEntriesShaderTest, Declaration_CreatedSetAndDeleted_HandlesStandWhereTheyBelong)
{
    D3DDDIARG_CREATEVERTEXSHADERDECL arg = {0, m_hBefore};
    const Lines lines = EntryLines([&] {
        UMDDdiCreateVertexShaderDecl(DeviceHandle(), &arg, nullptr);
        UMDDdiSetVertexShaderDecl(DeviceHandle(), arg.ShaderHandle);
        UMDDdiDeleteVertexShaderDecl(DeviceHandle(), arg.ShaderHandle);
    });
    EXPECT_EQ(Named(Containing(lines, "=> UMDDdi"), {{"declaration", arg.ShaderHandle}}),
        (Lines{"=> UMDDdiCreateVertexShaderDecl M:0 O:0 S:0 T:0 U:0 I:0 N:0 S:0x51\n",
            "=> UMDDdiSetVertexShaderDecl hVSDecl:declaration\n",
            "=> UMDDdiDeleteVertexShaderDecl hVSDecl:declaration\n"}));
}
