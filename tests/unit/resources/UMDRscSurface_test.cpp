// Surfaces: creation, locks, copies into and out of the kernel-mode allocation, uploads.
#include "ResourceFixture.h"
#include "TraceLevels.h"
#include "TraceText.h"

#include "resources/UMDRscSurface.h"

using namespace tesslo::test;

namespace
{
class UMDRscSurfaceTest : public ResourceFixture
{
protected:
    FakePixels& PixelsOf(const std::string& name) { return m_Fake.Find<FakeSurface>(name).Pixels(); }
};

}  // namespace

TEST_F(UMDRscSurfaceTest, Create_MultisampledTarget_PassesEveryArgument)
{
    CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_R5G6B5, 640, 480);
    request.m_Arg.MultisampleType = D3DDDIMULTISAMPLE_4_SAMPLES;
    request.m_Arg.MultisampleQuality = 2;
    request.m_Arg.VidPnSourceId = 3;
    request.m_Arg.Rotation = D3DDDI_ROTATION_90;
    auto* pSurface = Create<UMDRscSurface>(request);
    EXPECT_EQ(DeviceLines(), Lines{"CreateRenderTarget(640, 480, 23, 4, 2, 0, out, null)"});
    EXPECT_EQ(KernelLines(), Lines{"pfnAllocateCb(resource:abcde0 count:1)"});
    EXPECT_EQ(pSurface->VidPnSourceId(), 3U);
    EXPECT_EQ(pSurface->Rotation(), 2U);
    EXPECT_TRUE(pSurface->IsRenderTarget());
    EXPECT_FALSE(pSurface->IsOffscreenPlain());
    EXPECT_EQ(pSurface->GetFormat(), D3DDDIFMT_R5G6B5);
    EXPECT_EQ(pSurface->GetPool(), D3DPOOL_DEFAULT);
    EXPECT_EQ(m_Trace.Count("UMDRscSurface::Create m_pSurface: " + Low(pSurface->GetSurface(0, 0)) + " Resource:" +
                            Low(pSurface) + " m_VidPnSourceId:3 m_hAllocation:0x1 m_Width:640 m_Height:480\n"),
        1U);
}

TEST_F(UMDRscSurfaceTest, Create_Plain_IsNoRenderTargetWhateverItsFlags)
{
    CreateRequest request(kFlagDecodeRenderTarget, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_YUY2, 16, 8);
    auto* pSurface = Create<UMDRscSurface>(request);
    EXPECT_EQ(DeviceLines(), Lines{"CreateOffscreenPlainSurface(16, 8, 844715353, 2, out, null)"});
    EXPECT_TRUE(pSurface->IsOffscreenPlain());
    EXPECT_FALSE(pSurface->IsRenderTarget());
    EXPECT_EQ(pSurface->GetPool(), D3DPOOL_SYSTEMMEM);
    EXPECT_EQ(pSurface->GetSurface(5, 9), pSurface->GetSurface(0, 0));
}

TEST_F(UMDRscSurfaceTest, Destroy_AnyNumberOfTimes_ReleasesOnce)
{
    CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    IDirect3DSurface9* pDelegated = pSurface->GetSurface(0, 0);
    const std::string first =
        "UMDRscSurface::Destroy() this:" + Low(pSurface) + " m_pSurface:" + Low(pDelegated) + " \n";
    pDelegated->AddRef();
    pSurface->Destroy();
    pSurface->Destroy();
    EXPECT_EQ(m_Fake.Find<FakeSurface>("surface#1").ReferenceCount(), 1U);
    EXPECT_EQ(m_Trace.Count(first), 1U);
    EXPECT_EQ(m_Kernel.Calls("pfnDeallocateCb"), 1U);
    EXPECT_EQ(pSurface->GetSurface(0, 0), nullptr);
    pDelegated->Release();
}

TEST_F(UMDRscSurfaceTest, Lock_AnyAreaAndFlags_LocksTheWholeAndGivesBitsAndPitch)
{
    m_Fake.SetPitchPadding(8);
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 5, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    ForgetCalls();
    const std::string low = Low(pSurface->GetSurface(0, 0));
    void* pData = nullptr;
    UINT pitch = 0;
    EXPECT_EQ(pSurface->Lock(1, 2, 3, &pData, &pitch, D3DLOCK_READONLY), S_OK);
    EXPECT_EQ(pData, PixelsOf("surface#1").Bytes().data());
    EXPECT_EQ(pitch, 28U);
    EXPECT_EQ(pSurface->Unlock(), S_OK);
    EXPECT_EQ(DeviceLines(), (Lines{"surface#1.LockRect(out, null, 0)", "surface#1.UnlockRect()"}));
    EXPECT_EQ(m_Trace.Lines(), (Lines{"   Lock: RenderTarget " + low + "\n", "   Unlock: RenderTarget " + low + "\n"}));
}

TEST_F(UMDRscSurfaceTest, Lock_RefusedOrDestroyed_SaysSoAndWritesNothing)
{
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 5, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    void* pData = this;
    UINT pitch = 77;
    m_Fake.Fail("surface.LockRect", kRefused, 1);
    m_Fake.Fail("surface.UnlockRect", kRefused, 1);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->Lock(0, 0, 0, &pData, &pitch, 0), kRefused); }),
        Lines{"UMDRscSurface::LockRect failed 0x8876086a\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->Unlock(), kRefused); }),
        Lines{"UMDRscSurface::UnlockRect failed 0x8876086a\n"});
    pSurface->Destroy();
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->Lock(0, 0, 0, &pData, &pitch, 0), E_FAIL); }),
        Lines{"UMDRscSurface::Lock NULL == m_pSurface!\n"});
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->Unlock(), E_FAIL); }), Lines{});
    EXPECT_EQ(pData, this);
    EXPECT_EQ(pitch, 77U);
}

TEST_F(UMDRscSurfaceTest, CopyFrom_SizesAround_WritesThePackedIntersection)
{
    const struct
    {
        UINT Width, Height, Padding;
    } rows[] = {{5, 4, 0}, {5, 4, 8}, {9, 9, 4}, {9, 2, 0}, {3, 3, 12}, {3, 3, 0}, {0, 0, 4}};
    for (const auto& row : rows)
    {
        CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 4);
        auto* pSurface = Create<UMDRscSurface>(request);
        const UINT pitch = row.Width * 4 + row.Padding;
        std::vector<BYTE> source(size_t{pitch} * row.Height + 1);
        for (size_t i = 0; i < source.size(); i++)
            source[i] = static_cast<BYTE>(i * 7 + 3);
        const D3DKMT_HANDLE hAllocation = static_cast<D3DKMT_HANDLE>(m_Kernel.Calls("pfnAllocateCb"));
        EXPECT_EQ(pSurface->CopyFrom(source.data(), row.Width, row.Height, 4, pitch), S_OK);
        const std::vector<BYTE>& memory = m_Kernel.FindAllocation(hAllocation).m_Memory;
        const UINT width = std::min(row.Width, 5U), height = std::min(row.Height, 4U);
        constexpr UINT dstPitch = 20;
        for (UINT y = 0; y < height; y++)
            for (UINT x = 0; x < width * 4; x++)
                ASSERT_EQ(memory[y * dstPitch + x], source[y * pitch + x]) << row.Width << ' ' << y << ' ' << x;
        for (UINT y = 0; y < height; y++)
            for (UINT x = width * 4; x < dstPitch; x++)
                ASSERT_EQ(memory[y * dstPitch + x], 0) << row.Width << ' ' << y << ' ' << x;
        for (size_t i = size_t{height} * dstPitch; i < 200; i++)
            ASSERT_EQ(memory[i], 0) << i;
        EXPECT_FALSE(m_Kernel.FindAllocation(hAllocation).m_bLocked);
        DestroyAll();
    }
}

TEST_F(UMDRscSurfaceTest, CopyFrom_RowsShorterThanTheirPixels_StopsAtTheLastWholePixel)
{
    CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 1);
    auto* pSurface = Create<UMDRscSurface>(request);
    const std::vector<BYTE> source(20, 0x77);
    EXPECT_EQ(pSurface->CopyFrom(source.data(), 5, 1, 4, 19), S_OK);
    for (size_t i = 0; i < 24; i++)
        EXPECT_EQ(m_Kernel.FindAllocation(1).m_Memory[i], i < 16 ? 0x77 : 0) << i;
}

TEST_F(UMDRscSurfaceTest, CopyFrom_NoAllocation_IsRefused)
{
    m_Kernel.Fail("pfnAllocateCb", kRefused, 1);
    CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    BYTE pixels[80] = {};
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->CopyFrom(pixels, 5, 4, 4, 20), E_FAIL); }),
        Lines{"UMDRscSurface::CopyFrom m_hAllocation is NULL\n"});
}

TEST_F(UMDRscSurfaceTest, CopyTo_SizesAround_CopiesTheIntersectionOfTheRenderTarget)
{
    CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 5, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    auto& target = m_Fake.Find<FakeSurface>("surface#1");
    for (size_t i = 0; i < target.Pixels().Bytes().size(); i++)
        target.Pixels().Bytes()[i] = static_cast<BYTE>(i * 5 + 2);
    m_Fake.SetRenderTarget(0, &target);
    m_Fake.SetPitchPadding(4);
    const struct
    {
        UINT Width, Height, Pitch;
    } rows[] = {{5, 4, 24}, {3, 2, 16}, {50, 40, 24}};
    for (const auto& row : rows)
    {
        std::vector<BYTE> copy(24 * 6, 0xEE);
        EXPECT_EQ(pSurface->CopyTo(copy.data(), row.Width, row.Height, 4, row.Pitch), S_OK);
        const UINT width = std::min(row.Width, 5U), height = std::min(row.Height, 4U);
        for (UINT y = 0; y < height; y++)
            for (UINT x = 0; x < row.Pitch; x++)
                ASSERT_EQ(copy[y * row.Pitch + x], x < width * 4 ? target.Pixels().Bytes()[y * 20 + x] : 0xEE);
        for (size_t i = size_t{height} * row.Pitch; i < copy.size(); i++)
            ASSERT_EQ(copy[i], 0xEE) << i;
        EXPECT_FALSE(PixelsOf("surface#2").IsLocked());
        target.Release();  // the reference that a read-back leaves
    }
    m_Fake.Fail("GetRenderTarget", kRefused, 1);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->CopyTo(nullptr, 5, 4, 4, 20), kRefused); }),
        (Lines{"UMDRscRenderTargetCapable::RenderTargetDataLock GetRenderTarget failed! hResult: 0x8876086a\n",
            "UMDRscSurface::CopyTo RenderTargetDataLock failed! hResult: 0x8876086a\n"}));
}

TEST_F(UMDRscSurfaceTest, WriteToDelegated_EveryFormatAndRectangle_UploadsThosePixels)
{
    const struct
    {
        D3DDDIFORMAT Format;
        UINT BytesPerPixel;
    } formats[] = {{D3DDDIFMT_A8R8G8B8, 4}, {D3DDDIFMT_R8G8B8, 3}, {D3DDDIFMT_R5G6B5, 2}, {D3DDDIFMT_L8, 1}};
    const RECT whole = {0, 0, 7, 5};
    const RECT part = {2, 1, 5, 4};
    for (const auto& format : formats)
    {
        for (const RECT* pRect : {static_cast<const RECT*>(nullptr), &whole, &part})
        {
            m_Fake.SetPitchPadding(3);
            CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, format.Format, 7, 5);
            request.WithMemory(format.BytesPerPixel, 5);
            auto* pSurface = Create<UMDRscSurface>(request);
            const std::string name = m_Fake.LiveObjects().front();
            ForgetCalls();
            EXPECT_EQ(pSurface->WriteToDelegated(0, pRect), S_OK);
            EXPECT_EQ(DeviceLines(), (Lines{name + ".LockRect(out, null, 0)", name + ".UnlockRect()"}));
            const RECT area = pRect ? *pRect : whole;
            const FakePixels& pixels = PixelsOf(name);
            for (LONG y = 0; y < 5; y++)
                for (UINT x = 0; x < pixels.Pitch(); x++)
                {
                    const LONG column = static_cast<LONG>(x / format.BytesPerPixel);
                    const bool inside = column >= area.left && column < area.right && y >= area.top && y < area.bottom;
                    const UINT row = static_cast<UINT>(y);
                    ASSERT_EQ(PixelsOf(name).Bytes()[row * pixels.Pitch() + x],
                        inside ? request.Memory(0)[row * request.m_Surfaces[0].SysMemPitch + x] : 0);
                }
            DestroyAll();
        }
    }
}

TEST_F(UMDRscSurfaceTest, WriteToDelegated_SecondSurface_IsCopiedWholeWhateverTheRectangle)
{
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
    request.m_Surfaces = {{4, 4, 0, nullptr, 0, 0}, {4, 4, 0, nullptr, 0, 0}};
    request.m_Arg.pSurfList = request.m_Surfaces.data();
    request.m_Arg.SurfCount = 2;
    request.WithMemory(4, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    const RECT part = {1, 1, 2, 2};
    EXPECT_EQ(pSurface->WriteToDelegated(1, &part), S_OK);
    for (UINT y = 0; y < 4; y++)
        EXPECT_EQ(memcmp(&PixelsOf("surface#1").Bytes()[y * 16], &request.Memory(1)[y * 20], 16), 0);
}

TEST_F(UMDRscSurfaceTest, WriteToDelegated_BeyondTheListOrWithoutMemory_TouchesNothing)
{
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
    auto* pSurface = Create<UMDRscSurface>(request);
    ForgetCalls();
    EXPECT_EQ(pSurface->WriteToDelegated(0, nullptr), S_OK);  // no memory of the runtime's to upload
    for (UINT index : {1U, 2U, 0xFFFFFFFFU})
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->WriteToDelegated(index, nullptr), E_FAIL); }),
            Lines{"UMDRscSurface::WriteToDelegated failed! m_SurfCount = 1\n"});
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDRscSurfaceTest, WriteToDelegated_EachCallFails_ReturnsItsCode)
{
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 4, 4);
    request.WithMemory(4, 0);
    UMDRscSurface* pSurface = nullptr;
    ExpectFailures(
        {{"surface.LockRect", 1, kRefused, {"UMDRscSurface::WriteToDelegated Lock failed! 0x8876086a\n"}},
            {"surface.UnlockRect", 1, kRefused, {"UMDRscSurface::WriteToDelegated Unlock failed! 0x8876086a\n"}}},
        [&] { pSurface = Create<UMDRscSurface>(request); }, [&] { return pSurface->WriteToDelegated(0, nullptr); });
}

TEST_F(UMDRscSurfaceTest, Life_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 4);
    request.WithMemory(4, 0).m_Arg.VidPnSourceId = 3;
    void* pData = nullptr;
    UINT pitch = 0;
    EXPECT_EQ(LevelledTrace([&] {
        UMDRscSurface surface(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE, D3DPOOL_DEFAULT, false);
        surface.Create();
        surface.Lock(0, 0, 0, &pData, &pitch, 0);
        surface.Unlock();
        surface.WriteToDelegated(0, nullptr);
        surface.KernelModeSetDisplayModeCb();
        surface.Destroy();
    }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x22    KMode Handle - m_hAllocation:0x# m_hKMResource:0x#\n",
            "0x200 UMDRscSurface::Create m_pSurface: 0x# Resource:0x# m_VidPnSourceId:3 m_hAllocation:0x# m_Width:8 m_Height:4\n",
            "0x20    Lock: RenderTarget 0x#\n", "0x20    Unlock: RenderTarget 0x#\n",
            "0x200 UMDRscSurface::WriteToDelegated 0\n",
            "0x20 UMDRscRenderTargetCapable::KernelModeSetDisplayModeCb DeviceContext:0x# Resource:0x# VidPnSourceId:3 m_hAllocation:0x#\n",
            "0x200 UMDRscSurface::Destroy() this:0x# m_pSurface:0x# \n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDRscSurfaceTest, ReadBack_Trace_EachLineHasItsLevel)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 4);
    auto* pTarget = Create<UMDRscSurface>(request);
    m_Fake.SetRenderTarget(0, pTarget->GetSurface(0, 0));
    EXPECT_EQ(LevelledTrace([&] {
        ReadBack(*pTarget);
        pTarget->GetSurface(0, 0)->Release();  // the reference that a read-back leaves
    }),
        (Lines{"0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock 0x#\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock Width 0x# Height 0x#\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock pRenderTarget 0x#\n",
            "0x200 UMDRscRenderTargetCapable::RenderTargetDataLock LockedRect.pBits 0x#\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataUnlock\n"}));
    EXPECT_EQ(LevelledTrace([&] {
        IDirect3DSurface9* pSurface = nullptr;
        pTarget->RenderTargetDataUnlock(&pSurface);
    }),
        (Lines{"0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataUnlock\n",
            "0x1 UMDRscRenderTargetCapable::RenderTargetDataUnlock *ppRenderTarget is NULL\n"}));
}
