// The trace of blits, fills and clears.
#include "OperationTraceFixture.h"

#include "resources/UMDRscSurface.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDeviceBltTraceTest : public OperationTraceFixture
{
protected:
    void SetUp() override
    {
        OperationTraceFixture::SetUp();
        m_hTarget = CreateTarget();
        m_hOther = CreateTarget();
        m_hTexture = CreateTexture();
        m_hSystemTexture = CreateSystemTexture();
    }

    HRESULT Blt(HANDLE hSrc, HANDLE hDst)
    {
        D3DDDIARG_BLT arg = {};
        arg.hSrcResource = hSrc;
        arg.hDstResource = hDst;
        return Device().Blt(&arg);
    }
    HRESULT TexBlt()
    {
        D3DDDIARG_TEXBLT arg = {};
        arg.hSrcResource = m_hSystemTexture;
        arg.hDstResource = m_hTexture;
        arg.SrcRect = {0, 0, 2, 2};
        return Device().TexBlt(&arg);
    }
    HRESULT ColorFill(HANDLE hResource)
    {
        D3DDDIARG_COLORFILL arg = {};
        arg.hResource = hResource;
        return Device().ColorFill(&arg);
    }
    HRESULT Clear()
    {
        const D3DDDIARG_CLEAR arg = {D3DCLEAR_TARGET, 0, 0, 0};
        return Device().Clear(&arg, 0, nullptr);
    }

    HANDLE m_hTarget = nullptr, m_hOther = nullptr, m_hTexture = nullptr, m_hSystemTexture = nullptr;
    const std::vector<Operation> m_Operations = {
        {"Blt", "StretchRect", "UMDDdiDevice::Blt Blt failed! 0x8876086a\n",
            [this] { return Blt(m_hTarget, m_hOther); }},
        {"TexBlt", "UpdateSurface", "UMDDdiDevice::TexBlt TexBlt failed 0x8876086a\n", [this] { return TexBlt(); },
            E_FAIL},
        {"ColorFill", "ColorFill", "UMDDdiDevice::ColorFill ColorFill failed! 0x8876086a\n",
            [this] { return ColorFill(m_hTarget); }},
    };
};
}  // namespace

TEST_F(UMDDdiDeviceBltTraceTest, EveryMethod_Succeeds_EntersAndLeaves)
{
    ExpectEntersAndLeaves(m_Operations);
}

TEST_F(UMDDdiDeviceBltTraceTest, EveryMethod_DelegatedCallRefused_EntersAndTellsTheError)
{
    ExpectEntersAndTellsTheError(m_Operations);
}

TEST_F(UMDDdiDeviceBltTraceTest, Clear_DoneOrRefused_LeavesAllTheSame)
{
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Clear(), S_OK); }),
        (Lines{"0x4 >>> UMDDdiDevice::Clear\n", "0x8 <<< UMDDdiDevice::Clear\n"}));
    m_Fake.Fail("Clear", kRefused);
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Clear(), kRefused); }),
        (Lines{"0x4 >>> UMDDdiDevice::Clear\n", "0x1 UMDDdiDevice::Clear failed! 0x8876086a\n",
            "0x8 <<< UMDDdiDevice::Clear\n"}));
}

TEST_F(UMDDdiDeviceBltTraceTest, BufBlt_EveryPair_TellsItAsAnErrorAndLeaves)
{
    const struct
    {
        HANDLE hSrc, hDst;
        const char* pError;
    } rows[] = {
        {CreateVertices(), CreateVertices(),
            "0x1 UMDDdiDevice::BufBlt UMDRESOURCETYPE_VERTEXBUFFER == TypeDst && UMDRESOURCETYPE_VERTEXBUFFER == TypeSrc\n"},
        {CreateIndices(), CreateIndices(),
            "0x1 UMDDdiDevice::BufBlt UMDRESOURCETYPE_INDEXBUFFER == TypeDst && UMDRESOURCETYPE_INDEXBUFFER == TypeSrc\n"},
        {CreateIndices(), CreateVertices(), "0x1 UMDDdiDevice::BufBlt unexpected condition\n"},
    };
    for (const auto& row : rows)
    {
        D3DDDIARG_BUFFERBLT arg = {};
        arg.hSrcResource = row.hSrc;
        arg.hDstResource = row.hDst;
        EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(Device().BufBlt(&arg), E_NOTIMPL); }),
            (Lines{"0x4 >>> UMDDdiDevice::BufBlt\n", row.pError, "0x8 <<< UMDDdiDevice::BufBlt\n"}));
    }
}

TEST_F(UMDDdiDeviceBltTraceTest, Blt_OntoItselfOrFromACube_IsToldWithoutALeave)
{
    const HANDLE hCube = CreateCube();
    ExpectDeclined({
        {E_NOTIMPL, [&] { return Blt(hCube, m_hTarget); },
            {"0x4 >>> UMDDdiDevice::Blt\n",
                "0x1 UMDDdiDevice::Blt failed! SHARED RESOURCE unexpected TypeDst:5 TypeSrc:7\n"}},
        {S_OK, [&] { return Blt(m_hTarget, m_hTarget); },
            {"0x4 >>> UMDDdiDevice::Blt\n", "0x4 <<< UMDDdiDevice::Blt\n"}},
    });
}

TEST_F(UMDDdiDeviceBltTraceTest, ColorFill_NothingToFill_IsToldWithoutALeave)
{
    const HANDLE hVertices = CreateVertices();
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_A8R8G8B8, 8, 8);
    UMDRscSurface neverCreated(&Device(), nullptr, &request.m_Arg, FALSE, D3DPOOL_DEFAULT, false);
    ExpectDeclined({
        {E_FAIL, [&] { return ColorFill(hVertices); },
            {"0x4 >>> UMDDdiDevice::ColorFill\n",
                "0x1 UMDDdiDevice::ColorFill pResourceRenderTargetCapable is NULL\n"}},
        {E_FAIL, [&] { return ColorFill(ToHandle(&neverCreated)); },
            {"0x4 >>> UMDDdiDevice::ColorFill\n", "0x1 UMDDdiDevice::ColorFill pSurface is NULL\n"}},
    });
    neverCreated.Destroy();
}
