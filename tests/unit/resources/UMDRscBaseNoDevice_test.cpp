// Resources and shaders while there is no delegated device: refused, each with its line, and nothing left behind.
#include "ResourceFixture.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"
#include "resources/UMDRscZBuffer.h"
#include "resources/UMDShaderPixel.h"
#include "resources/UMDShaderVertex.h"

using namespace tesslo::test;

namespace
{
class UMDResourceNoDeviceTest : public ResourceFixture
{
protected:
    void PrepareStart() override { m_Factory.m_hCreateResult = kRefused; }
};
}  // namespace

TEST_F(UMDResourceNoDeviceTest, Create_EveryClass_IsRefusedWithItsLine)
{
    const struct
    {
        UINT Flags;
        const char* pClass;
    } rows[] = {{kFlagVertexBuffer, "UMDRscVertexBuffer"}, {kFlagIndexBuffer, "UMDRscIndexBuffer"},
        {kFlagZBuffer, "UMDRscZBuffer"}, {kFlagCubeMap, "UMDRscCubeTexture"}, {kFlagTexture, "UMDRscTexture"},
        {kFlagRenderTarget, "UMDRscSurface"}, {0, "UMDRscSurface"}};
    for (const auto& row : rows)
    {
        CreateRequest request(row.Flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 16, 16);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL); }),
            Lines{std::string(row.pClass) + "::Create failed! m_pDeviceDelegated = NULL\n"});
        EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
    }
}

TEST_F(UMDResourceNoDeviceTest, Create_AskedDirectly_AnswersFail)
{
    const CreateRequest request(0, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 16, 16);
    UMDDdiDevice* pDevice = &Device();
    const D3DDDIARG_CREATERESOURCE* pCreate = &request.m_Arg;
    UMDRscSurface surface(pDevice, nullptr, pCreate, FALSE, D3DPOOL_DEFAULT, true);
    EXPECT_EQ(surface.Create(), E_FAIL);
    surface.Destroy();
    EXPECT_EQ(UMDRscVertexBuffer(pDevice, nullptr, pCreate, FALSE, 0, D3DPOOL_DEFAULT).Create(), E_FAIL);
    EXPECT_EQ(UMDRscIndexBuffer(pDevice, nullptr, pCreate, FALSE, 0, D3DPOOL_DEFAULT).Create(), E_FAIL);
    EXPECT_EQ(UMDRscZBuffer(pDevice, nullptr, pCreate, FALSE).Create(), E_FAIL);
    EXPECT_EQ(UMDRscCubeTexture(pDevice, nullptr, pCreate, FALSE, 0, D3DPOOL_DEFAULT).Create(), E_FAIL);
    EXPECT_EQ(UMDRscTexture(
                  pDevice, nullptr, pCreate, UMDRscTextureTraits{FALSE, 0, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE})
                  .Create(),
        E_FAIL);
}

TEST_F(UMDResourceNoDeviceTest, Open_Texture_IsRefusedWithItsLine)
{
    const D3DDDIARG_OPENRESOURCE open = {};
    UMDRscTexture texture(
        &Device(), nullptr, &open, UMDRscTextureTraits{TRUE, 1, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(texture.Open(), E_FAIL); }),
        Lines{"UMDRscTexture::Open failed! m_pDeviceDelegated = NULL\n"});
}

TEST_F(UMDResourceNoDeviceTest, ShaderCreate_BothClasses_IsRefusedWithItsLine)
{
    const UINT code[] = {0xFFFF0200, 0x0000FFFF};
    UMDShaderPixel pixel(&Device());
    UMDShaderVertex vertex(&Device());
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pixel.Create(code), E_FAIL); }),
        Lines{"UMDShaderPixel::Create failed! m_pDeviceDelegated = NULL\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(vertex.Create(code), E_FAIL); }),
        Lines{"UMDShaderVertex::Create failed! m_pDeviceDelegated = NULL\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(vertex.CreateDecl(nullptr), E_FAIL); }),
        Lines{"UMDShaderVertex::CreateDecl failed! m_pDeviceDelegated = NULL\n"});
}
