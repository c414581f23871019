// What resource objects answer when they are asked directly, where the entries fold or hide it: the codes of Create,
// what Destroy leaves before the object itself goes, and the values of members that no argument sets.
#include "ImportPatch.h"
#include "ResourceFixture.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscFactory.h"
#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"
#include "resources/UMDRscZBuffer.h"

#include <memory>

using namespace tesslo::test;

namespace
{
const HANDLE kContext = reinterpret_cast<HANDLE>(0x7000);

/// A surface that keeps what a blit present copies into it.
class CopyProbe : public UMDRscSurface
{
public:
    using UMDRscSurface::UMDRscSurface;

    HRESULT CopyFrom(const BYTE* pSrc, UINT width, UINT height, UINT bytesPerPixel, UINT srcPitch) override
    {
        m_pSrc = pSrc;
        m_Arguments = {width, height, bytesPerPixel, srcPitch};
        return S_OK;
    }

    const BYTE* m_pSrc = nullptr;
    std::vector<UINT> m_Arguments;
};

/// The least that can be rendered into: everything else is its base's.
class BareTarget : public UMDRscRenderTargetCapable
{
public:
    explicit BareTarget(UMDDdiDevice* pDevice)
        : UMDRscRenderTargetCapable(pDevice, nullptr, UMDRESOURCETYPE_RENDERTARGET, FALSE)
    {
    }

    HRESULT CopyFrom(const BYTE*, UINT, UINT, UINT, UINT) override { return S_OK; }
    HRESULT CopyTo(BYTE*, UINT, UINT, UINT, UINT) override { return S_OK; }

    UINT BytesPerPixel() const { return m_BytesPerPixel; }
    bool AnyFlag() const { return m_bIsRenderTarget || m_bIsPrimary || m_bIsSharedResource || m_bIsOpenedShared; }
};

class UMDRscLifeTest : public ResourceFixture
{
protected:
    /// An object of the class that the flags ask for, not yet created.
    std::unique_ptr<UMDRscBase> Make(const CreateRequest& request)
    {
        return UMDRscFactoryNew(&Device(), &request.m_Arg);
    }
};

std::vector<DWORD> g_Pauses;

void WINAPI KeepPause(DWORD milliseconds)
{
    g_Pauses.push_back(milliseconds);
}
}  // namespace

TEST_F(UMDRscLifeTest, Create_EveryClassAndDelegatedCall_ReturnsTheCodeItself)
{
    const struct
    {
        UINT Flags;
        const char* pCall;
    } rows[] = {{kFlagVertexBuffer, "CreateVertexBuffer"}, {kFlagIndexBuffer, "CreateIndexBuffer"},
        {kFlagZBuffer, "CreateDepthStencilSurface"}, {kFlagCubeMap, "CreateCubeTexture"},
        {kFlagCubeMap, "cube.GetCubeMapSurface"}, {kFlagCubeMap, "cube.GetDesc"}, {kFlagTexture, "CreateTexture"},
        {kFlagTexture, "texture.GetSurfaceLevel"}, {kFlagRenderTarget, "CreateRenderTarget"},
        {0, "CreateOffscreenPlainSurface"}};
    for (const auto& row : rows)
    {
        CreateRequest request(row.Flags, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
        const auto pResource = Make(request);
        m_Fake.Fail(row.pCall, kRefused, 1);
        EXPECT_EQ(pResource->Create(), kRefused) << row.pCall;
        pResource->Destroy();
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{}) << row.pCall;
    }
    for (UINT flags : kEveryClass)
    {
        CreateRequest request(flags, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
        const auto pResource = Make(request);
        EXPECT_EQ(pResource->Create(), S_OK) << flags;
        EXPECT_NE(m_Fake.LiveObjects(), Lines{});
        pResource->Destroy();
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{}) << "before the object itself goes";

        request.m_Arg.SurfCount = 0;
        const auto pEmpty = Make(request);
        EXPECT_EQ(pEmpty->Create(), E_FAIL) << flags;
        pEmpty->Destroy();
    }
}

TEST_F(UMDRscLifeTest, Upload_AfterDestroy_IsRefused)
{
    CreateRequest surfaceRequest(0, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest textureRequest(kFlagTexture, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    surfaceRequest.WithMemory(4, 0);
    textureRequest.WithMemory(4, 0);
    UMDRscSurface surface(&Device(), nullptr, &surfaceRequest.m_Arg, FALSE, D3DPOOL_DEFAULT, true);
    UMDRscTexture texture(&Device(), nullptr, &textureRequest.m_Arg,
        UMDRscTextureTraits{FALSE, 0, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE});
    surface.Destroy();
    texture.Destroy();
    EXPECT_EQ(surface.WriteToDelegated(0, nullptr), E_FAIL);
    EXPECT_EQ(texture.WriteToDelegated(0, nullptr), E_FAIL);
    EXPECT_EQ(texture.WriteFromDelegated(0), E_FAIL);
}

TEST_F(UMDRscLifeTest, ReadBackSurface_AfterDestroy_IsReleased)
{
    CreateRequest targetRequest(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pBound = Create<UMDRscSurface>(targetRequest);
    m_Fake.SetRenderTarget(0, pBound->GetSurface(0, 0));
    const Lines before = m_Fake.LiveObjects();
    for (UINT flags : {kFlagRenderTarget, kFlagTexture, kFlagCubeMap})
    {
        CreateRequest request(flags, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
        const auto pResource = Make(request);
        auto* pReader = dynamic_cast<UMDRscRenderTargetCapable*>(pResource.get());
        ASSERT_NO_FATAL_FAILURE(ReadBack(*pReader));
        pBound->GetSurface(0, 0)->Release();  // the reference that a read-back leaves
        EXPECT_NE(m_Fake.LiveObjects(), before);
        pReader->Destroy();
        EXPECT_EQ(m_Fake.LiveObjects(), before) << flags;
    }
}

TEST_F(UMDRscLifeTest, PlainSurface_OfARenderTargetsFlags_IsNoRenderTargetOnceCreated)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    UMDRscSurface surface(&Device(), nullptr, &request.m_Arg, FALSE, D3DPOOL_DEFAULT, true);
    EXPECT_TRUE(surface.IsRenderTarget());
    EXPECT_EQ(surface.Create(), S_OK);
    EXPECT_FALSE(surface.IsRenderTarget());
    surface.Destroy();
}

TEST_F(UMDRscLifeTest, BareTarget_NothingSet_HasTheFirstValues)
{
    BareTarget target(&Device());
    EXPECT_EQ(target.GetSurface(0, 0), nullptr);
    EXPECT_EQ(target.Blt(nullptr, &target, nullptr), E_NOTIMPL);
    EXPECT_EQ(target.Rotation(), 1U);  // identity
    EXPECT_EQ(target.VidPnSourceId(), 0U);
    EXPECT_EQ(target.BytesPerPixel(), 4U);
    EXPECT_FALSE(target.AnyFlag());
    EXPECT_EQ(target.Create(), E_FAIL);
    target.KernelModeSetDisplayModeCb();
    EXPECT_EQ(KernelLines(), Lines{"pfnSetDisplayModeCb(allocation:0)"});
}

TEST_F(UMDRscLifeTest, BltPresent_TargetSmallerThanTheSource_CopiesWhatTheTargetHas)
{
    CreateRequest boundRequest(kFlagRenderTarget, kVideo, D3DDDIFMT_R5G6B5, 6, 3);
    auto* pBound = Create<UMDRscSurface>(boundRequest);
    m_Fake.SetRenderTarget(0, pBound->GetSurface(0, 0));
    m_Fake.SetPitchPadding(8);
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_R5G6B5, 20, 10);
    CopyProbe probe(&Device(), nullptr, &request.m_Arg, FALSE, D3DPOOL_DEFAULT, false);
    ASSERT_EQ(probe.Create(), S_OK);
    EXPECT_EQ(probe.KernelModePresentCbBLT(kContext), S_OK);
    EXPECT_NE(probe.m_pSrc, nullptr);
    EXPECT_EQ(probe.m_Arguments, (std::vector<UINT>{6, 3, 2, 20}));
    probe.Destroy();
    pBound->GetSurface(0, 0)->Release();  // the reference that a read-back leaves
}

TEST_F(UMDRscLifeTest, FlipPresent_AnyResult_AsksForTenMilliseconds)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pTarget = Create<UMDRscSurface>(request);
    const ImportPatch patch(nullptr, "kernel32.dll", "Sleep", KeepPause);
    g_Pauses.clear();
    EXPECT_EQ(pTarget->KernelModePresentCbFLIP(kContext), S_OK);
    m_Kernel.Fail("pfnPresentCb", kRefused, 1);
    EXPECT_EQ(pTarget->KernelModePresentCbFLIP(kContext), S_OK);
    EXPECT_EQ(g_Pauses, (std::vector<DWORD>{10, 10}));
}

TEST_F(UMDRscLifeTest, Upload_FormatThatIsReckonedWithFourBytes_CopiesItsEight)
{
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A16B16G16R16, 4, 1);
    request.WithMemory(8, 0);
    auto* pSurface = Create<UMDRscSurface>(request);
    const RECT rect = {1, 0, 2, 1};
    EXPECT_EQ(pSurface->WriteToDelegated(0, &rect), S_OK);
    const std::vector<BYTE>& pixels = m_Fake.Find<FakeSurface>("surface#1").Pixels().Bytes();
    for (size_t i = 0; i < pixels.size(); ++i)
        EXPECT_EQ(pixels[i], i >= 8 && i < 16 ? request.Memory(0)[i] : 0) << i;
}
