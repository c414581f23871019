// Blits, fills and clears: which objects take part, and what reaches the delegated device.
#include "ResourceFixture.h"
#include "TraceText.h"

#include "resources/UMDRscTexture.h"

using namespace tesslo::test;

namespace
{

class UMDDdiDeviceBlt : public ResourceFixture
{
protected:
    HRESULT Blt(HANDLE hSrc, HANDLE hDst)
    {
        D3DDDIARG_BLT arg{};
        arg.hSrcResource = hSrc;
        arg.SrcRect = {1, 2, 5, 6};
        arg.hDstResource = hDst;
        arg.DstRect = {3, 4, 11, 8};
        return UMDDdiBlt(DeviceHandle(), &arg);
    }
    HRESULT TexBlt(HANDLE hSrc, HANDLE hDst)
    {
        D3DDDIARG_TEXBLT arg{};
        arg.hSrcResource = hSrc;
        arg.hDstResource = hDst;
        arg.SrcRect = {1, 2, 5, 6};
        arg.DstPoint = {7, 1};
        return UMDDdiTexBlt(DeviceHandle(), &arg);
    }
    HRESULT BufBlt(HANDLE hSrc, HANDLE hDst)
    {
        D3DDDIARG_BUFFERBLT arg{};
        arg.hSrcResource = hSrc;
        arg.hDstResource = hDst;
        return UMDDdiBufBlt(DeviceHandle(), &arg);
    }
    HRESULT ColorFill(HANDLE hResource)
    {
        D3DDDIARG_COLORFILL arg{};
        arg.hResource = hResource;
        arg.SubResourceIndex = 3;
        arg.DstRect = {1, 2, 3, 4};
        arg.Color = 0x80102030;
        return UMDDdiColorFill(DeviceHandle(), &arg);
    }
    HRESULT Clear(UINT flags, std::vector<RECT> rects = {})
    {
        const D3DDDIARG_CLEAR arg = {flags, 0xFF102030, 0.5f, 0x77};
        return UMDDdiClear(DeviceHandle(), &arg, static_cast<UINT>(rects.size()), rects.data());
    }
};

}  // namespace

TEST_F(UMDDdiDeviceBlt, Blt_OntoItself_DoesNothingAndLeavesAtTheEntryLevel)
{
    const HANDLE hTarget = CreateTarget(), hCube = CreateCube();
    for (HANDLE hResource : {hTarget, hCube})
    {
        ForgetCalls();
        TraceMask mask(UMDTRACE_ENTER);
        EXPECT_EQ(Blt(hResource, hResource), S_OK);
        EXPECT_EQ(Trace(), (Lines{">>> UMDDdiDevice::Blt\n", "<<< UMDDdiDevice::Blt\n"}));
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceBlt, Blt_SurfacesAndTextures_SourceBlits)
{
    const HANDLE hFrom = CreateTarget(), hTo = CreateTarget(), hTexture = CreateTexture();
    EXPECT_EQ(Blt(hFrom, hTo), S_OK);
    EXPECT_EQ(Blt(hTexture, hTo), S_OK);
    EXPECT_EQ(m_Fake.LinesContaining("StretchRect"), (Lines{"StretchRect(surface#1, 1,2,5,6, surface#2, 3,4,11,8, 0)",
                                                         "StretchRect(texture#1[0], null, surface#2, null, 0)"}));
    TraceMask mask(UMDTRACE_LEAVE);
    m_Trace.Clear();
    EXPECT_EQ(Blt(hFrom, hTo), S_OK);
    EXPECT_EQ(Trace(), Lines{"<<< UMDDdiDevice::Blt\n"});
}

TEST_F(UMDDdiDeviceBlt, Blt_Traced_PrintsBothSides)
{
    const HANDLE hFrom = CreateTexture(), hTo = CreateTarget();
    TraceMask mask(UMDTRACE_DDI);
    D3DDDIARG_BLT arg{};
    arg.hSrcResource = hFrom;
    arg.SrcRect = {1, 2, 5, 6};
    arg.hDstResource = hTo;
    arg.DstRect = {3, 4, 11, 8};
    arg.ColorKey = 9;
    arg.Flags.Value = 2;
    EXPECT_EQ(UMDDdiBlt(DeviceHandle(), &arg), S_OK);
    const std::string entry =
        Text("=> UMDDdiBlt Color:9 Flags:2 DST l:3 t:4 r:11 b:8 Rsc:0x%x [Type:5 Pool:0] SRC l:1 t:2 r:5 b:6 Rsc:0x%x "
             "[Type:6 Pool:0]\n",
            UMDLow32(hTo), UMDLow32(hFrom));
    ASSERT_FALSE(Trace().empty());
    EXPECT_EQ(Trace()[0], entry);
}

TEST_F(UMDDdiDeviceBlt, Blt_OtherTypes_AreRefusedWithTheirTypes)
{
    const HANDLE hTarget = CreateTarget(), hCube = CreateCube(), hVertices = CreateVertices();
    UMDRscBase shared(&Device(), nullptr, UMDRESOURCETYPE_SHARED);
    const std::tuple<HANDLE, HANDLE, const char*> rows[] = {{hTarget, hCube, "TypeDst:7 TypeSrc:5\n"},
        {hCube, hTarget, "TypeDst:5 TypeSrc:7\n"}, {hVertices, hTarget, "TypeDst:5 TypeSrc:4\n"},
        {hTarget, ToHandle(&shared), "TypeDst:1 TypeSrc:5\n"}};
    for (const auto& [hSrc, hDst, pTypes] : rows)
    {
        m_Trace.Clear();
        EXPECT_EQ(Blt(hSrc, hDst), E_NOTIMPL);
        EXPECT_EQ(m_Trace.Count(std::string("UMDDdiDevice::Blt failed! SHARED RESOURCE unexpected ") + pTypes), 1u);
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceBlt, Blt_SourceFails_ReturnsItsCode)
{
    const HANDLE hFrom = CreateTarget(), hTo = CreateTarget();
    m_Fake.Fail("StretchRect", kRefused);
    EXPECT_EQ(Blt(hFrom, hTo), kRefused);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::Blt Blt failed! 0x8876086a\n"), 1u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::Blt\n"), 0u);
}

TEST_F(UMDDdiDeviceBlt, TexBlt_SystemToVideo_UpdatesTheRectangleAtThePoint)
{
    const HANDLE hFrom = CreateSystemTexture(), hTo = CreateTexture();
    EXPECT_EQ(TexBlt(hFrom, hTo), S_OK);
    EXPECT_EQ(
        m_Fake.LinesContaining("UpdateSurface"), Lines{"UpdateSurface(texture#1[0], 1,2,5,6, texture#2[0], 7,1)"});
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::TexBlt\n"), 1u);
}

TEST_F(UMDDdiDeviceBlt, TexBlt_AnyFailure_AnswersEFail)
{
    const HANDLE hFrom = CreateSystemTexture(), hTo = CreateTexture(), hTarget = CreateTarget();
    m_Fake.Fail("UpdateSurface", kRefused);
    EXPECT_EQ(TexBlt(hFrom, hTo), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::TexBlt TexBlt failed 0x8876086a\n"), 1u);
    EXPECT_EQ(TexBlt(hTo, hFrom), E_FAIL);
    EXPECT_EQ(TexBlt(hTarget, hTo), E_FAIL);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::TexBlt TexBlt failed 0x80004005\n"), 2u);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::TexBlt\n"), 0u);
}

TEST_F(UMDDdiDeviceBlt, BufBlt_AnyTypes_IsReportedAndNeverDone)
{
    const HANDLE hVertices = CreateVertices(), hOther = CreateVertices(), hIndices = CreateIndices();
    const std::tuple<HANDLE, HANDLE, const char*> rows[] = {
        {hVertices, hOther,
            "UMDDdiDevice::BufBlt UMDRESOURCETYPE_VERTEXBUFFER == TypeDst && UMDRESOURCETYPE_VERTEXBUFFER == TypeSrc\n"},
        {hIndices, hIndices,
            "UMDDdiDevice::BufBlt UMDRESOURCETYPE_INDEXBUFFER == TypeDst && UMDRESOURCETYPE_INDEXBUFFER == TypeSrc\n"},
        {hVertices, hIndices, "UMDDdiDevice::BufBlt unexpected condition\n"}};
    for (const auto& [hSrc, hDst, pText] : rows)
    {
        m_Trace.Clear();
        EXPECT_EQ(BufBlt(hSrc, hDst), E_NOTIMPL);
        EXPECT_EQ(m_Trace.Count(pText), 1u);
        EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::BufBlt\n"), 1u);
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceBlt, ColorFill_SurfaceAndTexture_FillsTheFirstSurface)
{
    const HANDLE hTarget = CreateTarget(), hTexture = CreateTexture();
    EXPECT_EQ(ColorFill(hTarget), S_OK);
    EXPECT_EQ(ColorFill(hTexture), S_OK);
    EXPECT_EQ(DeviceLines(),
        (Lines{"ColorFill(surface#1, 1,2,3,4, 0x80102030)", "ColorFill(texture#1[0], 1,2,3,4, 0x80102030)"}));
    const std::string entry =
        Text("=> UMDDdiColorFill hResource:0x%x SubResourceIndex:0x3 Color:0x80102030 l:1 r:3  t:2 b:4\n",
            UMDLow32(hTarget));
    EXPECT_EQ(m_Trace.Count(entry), 1u);
}

TEST_F(UMDDdiDeviceBlt, ColorFill_NoTargetOrRefused_FailsWithItsText)
{
    for (HANDLE hResource : {HANDLE{nullptr}, CreateVertices()})
    {
        ForgetCalls();
        EXPECT_EQ(ColorFill(hResource), E_FAIL);
        EXPECT_EQ(m_Trace.Count("UMDDdiDevice::ColorFill pResourceRenderTargetCapable is NULL\n"), 1u);
    }
    const HANDLE hTarget = CreateTarget();
    m_Fake.Fail("ColorFill", kRefused);
    EXPECT_EQ(ColorFill(hTarget), kRefused);
    EXPECT_EQ(m_Trace.Count("UMDDdiDevice::ColorFill ColorFill failed! 0x8876086a\n"), 1u);
}

TEST_F(UMDDdiDeviceBlt, Clear_EveryFlag_DepthAndStencilOnlyWithTheirs)
{
    for (UINT flags = 0; flags < 8; ++flags)
    {
        m_Fake.ClearLines();
        EXPECT_EQ(Clear(flags), S_OK);
        EXPECT_EQ(DeviceLines().size(), 1u);
        const std::string depth = flags & D3DCLEAR_ZBUFFER ? "0.5" : "0";
        const std::string stencil = flags & D3DCLEAR_STENCIL ? "119" : "0";
        EXPECT_NE(DeviceLines()[0].find(", " + std::to_string(flags) + ", 0xff102030, " + depth + ", " + stencil + ")"),
            std::string::npos)
            << DeviceLines()[0];
    }
}

TEST_F(UMDDdiDeviceBlt, Clear_Rectangles_AreForwardedAndTraced)
{
    EXPECT_EQ(Clear(D3DCLEAR_TARGET, {{1, 2, 3, 4}, {5, 6, 7, 8}}), S_OK);
    EXPECT_EQ(DeviceLines(), Lines{"Clear(2, [1,2,3,4 5,6,7,8], 1, 0xff102030, 0, 0)"});
    EXPECT_EQ(Trace(),
        (Lines{"=> UMDDdiClear ClrCount: 2 Flags:1 FillColor:ff102030 FillDepth:3f000000 FillStencil:77 \n",
            "Rectangle index:0 left:1 top:2 right:3 bottom:4\n", "Rectangle index:1 left:5 top:6 right:7 bottom:8\n",
            ">>> UMDDdiDevice::Clear\n", "<<< UMDDdiDevice::Clear\n"}));
}

TEST_F(UMDDdiDeviceBlt, Clear_DelegatedCallFails_TracesTheExitToo)
{
    m_Fake.Fail("Clear", kRefused);
    EXPECT_EQ(Clear(D3DCLEAR_TARGET), kRefused);
    const Lines lines = Trace();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[2], "UMDDdiDevice::Clear failed! 0x8876086a\n");
    EXPECT_EQ(lines[3], "<<< UMDDdiDevice::Clear\n");
}

namespace
{
/// A texture that keeps what it is asked to upload.
class TexBltProbe : public UMDRscTexture
{
public:
    TexBltProbe(UMDDdiDevice* pDevice, const D3DDDIARG_CREATERESOURCE* pCreate)
        : UMDRscTexture(
              pDevice, nullptr, pCreate, UMDRscTextureTraits{FALSE, 0, D3DPOOL_SYSTEMMEM, UMDRESOURCETYPE_TEXTURE})
    {
    }

    HRESULT TexBlt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstPoint) override
    {
        m_SrcRect = *pSrcRect;
        m_pDst = pDst;
        m_DstRect = *pDstPoint;
        return S_OK;
    }

    RECT m_SrcRect{};
    RECT m_DstRect{};
    UMDRscBase* m_pDst = nullptr;
};
}  // namespace

TEST_F(UMDDdiDeviceBlt, TexBlt_AnyRectangle_DestinationIsOfItsSizeAtThePoint)
{
    const D3DDDIARG_CREATERESOURCE create = {};
    TexBltProbe probe(&Device(), &create);
    const HANDLE hTarget = CreateTarget();
    EXPECT_EQ(TexBlt(ToHandle(&probe), hTarget), S_OK);
    EXPECT_EQ(ToHandle(probe.m_pDst), hTarget);
    const RECT srcRect = {1, 2, 5, 6}, dstRect = {7, 1, 11, 5};
    EXPECT_TRUE(EqualRect(&probe.m_SrcRect, &srcRect));
    EXPECT_TRUE(EqualRect(&probe.m_DstRect, &dstRect));
}
