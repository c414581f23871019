// What the blits between resources trace, each line with its level.
#include "ResourceFixture.h"
#include "TraceLevels.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"

using namespace tesslo::test;

namespace
{
class UMDRscRenderTargetCapableBltTraceTest : public ResourceFixture
{
protected:
    struct Row
    {
        UMDRscRenderTargetCapable* m_pSrc;
        UMDRscBase* m_pDst;
        Lines m_Trace;
    };

    void SetUp() override
    {
        ResourceFixture::SetUp();
        m_pVideo = Create<UMDRscSurface>(m_VideoRequest);
        m_pSystem = Create<UMDRscSurface>(m_SystemRequest);
        m_pSmall = Create<UMDRscSurface>(m_SmallRequest);
    }

    /// Blits four by four pixels.
    static void ExpectTraced(const std::vector<Row>& rows)
    {
        const RECT rect = {0, 0, 4, 4};
        for (const Row& row : rows)
            EXPECT_EQ(LevelledTrace([&] { row.m_pSrc->Blt(&rect, row.m_pDst, &rect); }), row.m_Trace);
    }

    CreateRequest m_VideoRequest{kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8};
    CreateRequest m_SystemRequest{0, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8};
    CreateRequest m_SmallRequest{0, kSystem, D3DDDIFMT_X8R8G8B8, 4, 4};
    UMDRscSurface* m_pVideo = nullptr;
    UMDRscSurface* m_pSystem = nullptr;
    UMDRscSurface* m_pSmall = nullptr;
};
}  // namespace

TEST_F(UMDRscRenderTargetCapableBltTraceTest, FromASurface_EveryWay_IsToldAtTheDetailLevel)
{
    CreateRequest plainRequest(0, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest otherFormatRequest(0, kSystem, D3DDDIFMT_R5G6B5, 4, 4);
    auto* pOther = Create<UMDRscSurface>(m_VideoRequest);
    auto* pPlain = Create<UMDRscSurface>(plainRequest);
    auto* pOtherFormat = Create<UMDRscSurface>(otherFormatRequest);
    ExpectTraced({
        {m_pVideo, pOther,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO VIDEO\n"}},
        {m_pVideo, pPlain,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO VIDEO plain\n"}},
        {pPlain, m_pVideo,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO VIDEO plain NEW\n"}},
        {m_pSystem, m_pVideo,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:2\n",
                "0x200 UMDRscSurface::Blt SYSTEM TO VIDEO\n",
                "0x200 UMDRscSurface::Blt SYSTEM TO VIDEO similar 22 22\n",
                "0x200 UMDRscSurface::WriteToDelegated 0\n"}},
        {pOtherFormat, m_pVideo,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:2\n",
                "0x200 UMDRscSurface::Blt SYSTEM TO VIDEO\n",
                "0x1 UMDRscSurface::Blt SYSTEM TO VIDEO different 23 22\n"}},
        {m_pVideo, m_pSystem,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:2 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n"}},
        {m_pVideo, pOtherFormat,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:2 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO SYSTEM different resolution\n"}},
    });
}

TEST_F(UMDRscRenderTargetCapableBltTraceTest, FromATexture_EveryWay_IsToldAtTheDetailLevel)
{
    CreateRequest videoRequest(kFlagTexture | kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest systemRequest(kFlagTexture, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pVideoTexture = Create<UMDRscTexture>(videoRequest);
    auto* pSystemTexture = Create<UMDRscTexture>(systemRequest);
    ExpectTraced({
        {pVideoTexture, m_pVideo,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:0 IsRenderTarget:1\n",
                "0x200 UMDRscTexture::Blt VIDEO TO VIDEO\n"}},
        {pVideoTexture, pSystemTexture,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:2 IsRenderTarget:0 SRC Resource:0x# Pool:0 IsRenderTarget:1\n",
                "0x200 UMDRscTexture::Blt VIDEO TO SYSTEM same dimension\n",
                "0x200 UMDRscTexture::WriteFromDelegated 0\n"}},
        {pVideoTexture, m_pSmall,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:2 IsRenderTarget:0 SRC Resource:0x# Pool:0 IsRenderTarget:1\n",
                "0x200 UMDRscTexture::Blt VIDEO TO SYSTEM different dimension\n"}},
        {pSystemTexture, pVideoTexture,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:2 IsRenderTarget:0\n",
                "0x200 UMDRscTexture::Blt SYSTEM TO VIDEO\n",
                "0x200 UMDRscTexture::TexBlt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:2 IsRenderTarget:0\n",
                "0x200 UMDRscTexture::WriteToDelegated 0\n"}},
    });
}

// No pixels in the destination's rectangle: what the way by the processor would read does not exist.
TEST_F(UMDRscRenderTargetCapableBltTraceTest, FromASystemTextureToASystemSurface_NothingToWrite_IsToldAsErrors)
{
    CreateRequest request(kFlagTexture, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pTexture = Create<UMDRscTexture>(request);
    const RECT srcRect = {0, 0, 4, 4}, none = {};
    EXPECT_EQ(LevelledTrace([&] { pTexture->Blt(&srcRect, m_pSystem, &none); }),
        (Lines{
            "0x200 UMDRscTexture::Blt DST Resource:0x# Pool:2 IsRenderTarget:0 SRC Resource:0x# Pool:2 IsRenderTarget:0\n",
            "0x1 UMDRscTexture::Blt failed! SRC Resource:0x# Pool:2 RenderTarget:0 DST Resource:0x# Pool:2 RenderTarget:0\n",
            "0x1 DST Width:8 Height:8 Width:0 Height:0\n", "0x1 SRC Width:8 Height:8 Width:4 Height:4\n"}));
}

TEST_F(UMDRscRenderTargetCapableBltTraceTest, FromACube_IsToldAtTheDetailLevel)
{
    CreateRequest systemRequest(kFlagCubeMap, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest videoRequest(kFlagCubeMap | kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pSystem = Create<UMDRscCubeTexture>(systemRequest);
    auto* pVideo = Create<UMDRscCubeTexture>(videoRequest);
    EXPECT_EQ(LevelledTrace([&] { pSystem->TexBlt(nullptr, pVideo, nullptr); }),
        Lines{
            "0x200 UMDRscCubeTexture::TexBlt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:2 IsRenderTarget:0\n"});
}
