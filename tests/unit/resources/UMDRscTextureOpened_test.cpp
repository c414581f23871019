// A texture built from another process's private record: every member that the record gives, and none without one.
#include "OpenRequestFixture.h"
#include "TraceLevels.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"

using namespace tesslo::test;

namespace
{
/// An opened texture that shows its members.
class OpenedProbe : public UMDRscTexture
{
public:
    OpenedProbe(UMDDdiDevice* pDevice, const D3DDDIARG_OPENRESOURCE* pOpen)
        : UMDRscTexture(
              pDevice, nullptr, pOpen, UMDRscTextureTraits{TRUE, 0x55, D3DPOOL_SYSTEMMEM, UMDRESOURCETYPE_TEXTURE})
    {
    }

    /// Flags, size, format, pool, usage, levels, surfaces, allocation, in words.
    std::vector<UINT> Members() const
    {
        return {m_bIsRenderTarget, m_bIsPrimary, m_bIsSharedResource, m_bIsOpenedShared, m_Width, m_Height,
            static_cast<UINT>(m_Format), static_cast<UINT>(m_Pool), m_Usage, m_Levels, m_SurfCount, m_hAllocation};
    }
    bool HasList() const { return m_pSurfList != nullptr; }
    const D3DDDI_SURFACEINFO& Surface(UINT index) const { return m_pSurfList[index]; }
    UINT BytesPerPixel() const { return m_BytesPerPixel; }
    bool IsLocked() const { return m_bLocked; }
};

class UMDRscTextureOpenedTest : public OpenRequestFixture
{
protected:
    UMDRscTextureOpenedTest()
    {
        m_Record.Format = 23;
        m_Record.ResourceFlags = 0xFFFFFFFF;
        m_Allocation.hAllocation = 0x80;
    }
};
}  // namespace

TEST_F(UMDRscTextureOpenedTest, DriversRecord_EveryMemberIsTaken)
{
    const OpenedProbe texture(&Device(), &m_Open);
    EXPECT_EQ(texture.Members(), (std::vector<UINT>{1, 0, 0, 1, 64, 32, 23, 0, 1, 2, 2, 0x80}));
    ASSERT_TRUE(texture.HasList());
    EXPECT_EQ(texture.Surface(0).Width, 64U);
    EXPECT_EQ(texture.Surface(0).Height, 32U);
    EXPECT_EQ(texture.Surface(1).Width, 0U);
    EXPECT_FALSE(texture.IsLocked());

    m_Record.ResourceFlags = 0xFFFFFFFE;
    EXPECT_FALSE(OpenedProbe(&Device(), &m_Open).IsRenderTarget());
}

TEST_F(UMDRscTextureOpenedTest, NotTheDriversTexture_TheCreatorsValuesStand)
{
    const std::function<void()> changes[] = {[&] { m_Record.Kind = 5; }, [&] { m_Record.TextureKind = 7; },
        [&] { m_Record.TextureKind = 5; }, [&] { m_Allocation.PrivateDriverDataSize = 75; },
        [&] { m_Allocation.PrivateDriverDataSize = 77; }, [&] { m_Allocation.pPrivateDriverData = nullptr; },
        [&] { m_Open.NumAllocations = 0; }, [&] { m_Open.pOpenAllocationInfo = nullptr; }};
    ForEachChange(changes, [&] {
        OpenedProbe texture(&Device(), &m_Open);
        EXPECT_EQ(texture.Members(), (std::vector<UINT>{0, 0, 0, 0, 0, 0, 0, 2, 0x55, 0, 0, 0}));
        EXPECT_FALSE(texture.HasList());
        EXPECT_EQ(texture.Open(), E_FAIL);
    });
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDRscTextureOpenedTest, Levels_OneToEleven_OpenAndOthersGetNoList)
{
    for (UINT levels = 1; levels <= 11; ++levels)
    {
        m_Record.Width = m_Record.Height = 1024;
        m_Record.Levels = levels;
        OpenedProbe texture(&Device(), &m_Open);
        EXPECT_TRUE(texture.HasList());
        EXPECT_EQ(texture.Open(), S_OK) << levels;
        EXPECT_NE(texture.GetSurface(0, levels - 1), nullptr);
        texture.Destroy();
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    }
    for (UINT levels : {0U, 12U, 0xFFFFFFFFU})
    {
        m_Record.Levels = levels;
        OpenedProbe texture(&Device(), &m_Open);
        EXPECT_FALSE(texture.HasList()) << levels;
        EXPECT_EQ(texture.Open(), E_FAIL);
    }
}

TEST_F(UMDRscTextureOpenedTest, Open_KnowsTheFormatsSizeAndReturnsTheDelegatedCodes)
{
    OpenedProbe texture(&Device(), &m_Open);
    EXPECT_EQ(texture.BytesPerPixel(), 4U);
    EXPECT_EQ(texture.Open(), S_OK);
    EXPECT_EQ(texture.BytesPerPixel(), 2U);
    texture.Destroy();
    for (const char* pCall : {"CreateTexture", "texture.GetSurfaceLevel"})
    {
        m_Fake.Fail(pCall, kRefused, 1);
        EXPECT_EQ(texture.Open(), kRefused) << pCall;
        texture.Destroy();
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    }
}

// The other process's record may name a pool that no creation of this driver's chooses for such a texture.
TEST_F(UMDRscTextureOpenedTest, BltFromAnyPool_NoRowOfTheTable_FallsBack)
{
    CreateRequest videoRequest(kFlagTexture, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_R5G6B5, 64, 32);
    CreateRequest systemRequest(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_R5G6B5, 64, 32);
    const RECT none = {};
    for (auto& [pool, pRequest] : {std::pair{2U, &systemRequest}, {1U, &videoRequest}, {1U, &systemRequest}})
    {
        m_Record.Pool = pool;
        auto* pDst = Create<UMDRscTexture>(*pRequest);
        OpenedProbe texture(&Device(), &m_Open);
        ASSERT_EQ(texture.Open(), S_OK);
        const Lines errors = ErrorsOf([&] { EXPECT_EQ(texture.Blt(&none, pDst, &none), E_FAIL); });
        EXPECT_EQ(errors.size(), 3U) << pool;
        texture.Destroy();
    }
}

TEST_F(UMDRscTextureOpenedTest, SurfaceBltToAnotherPool_NoRowOfTheTable_IsRefusedWithThreeErrors)
{
    CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_R5G6B5, 16, 8);
    auto* pSource = Create<UMDRscSurface>(request);
    m_Record.Pool = 1;
    OpenedProbe texture(&Device(), &m_Open);
    ASSERT_EQ(texture.Open(), S_OK);
    const RECT srcRect = {1, 2, 4, 6}, dstRect = {0, 0, 5, 6};
    EXPECT_EQ(LevelledTrace([&] { EXPECT_EQ(pSource->Blt(&srcRect, &texture, &dstRect), E_FAIL); }),
        (Lines{"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:1 SRC Resource:0x# Pool:0\n",
            "0x1 UMDRscSurface::Blt failed! SRC Resource:0x# DST Resource:0x# Pool:1 RenderTarget:1\n",
            "0x1 DST Width:64 Height:32 Width:5 Height:6\n", "0x1 SRC Width:16 Height:8 Width:3 Height:4\n"}));
    texture.Destroy();
}

TEST_F(UMDRscTextureOpenedTest, Life_Trace_EachLineHasItsLevel)
{
    EXPECT_EQ(LevelledTrace([&] {
        UMDRscTexture texture(&Device(), m_Open.hResource, &m_Open,
            UMDRscTextureTraits{TRUE, 0, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE});
        texture.Open();
        texture.Destroy();
    }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x20 UMDRscTexture::Open Resource:0x# m_pTexture 0x# Width:64 Height:32 Format:23 SharedHandle:0x# hAllocation:0x#\n",
            "0x200 UMDRscTexture::Destroy m_pTexture:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}
