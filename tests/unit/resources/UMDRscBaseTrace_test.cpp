// What every resource and shader class traces in its life, each line with its level.
#include "ResourceFixture.h"
#include "TraceLevels.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"
#include "resources/UMDRscZBuffer.h"
#include "resources/UMDShaderPixel.h"
#include "resources/UMDShaderVertex.h"

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
constexpr D3DDDI_POOL kVideo = D3DDDIPOOL_LOCALVIDMEM;
constexpr D3DDDI_POOL kSystem = D3DDDIPOOL_SYSTEMMEM;

class UMDResourceTraceTest : public ResourceFixture
{
protected:
    void* m_pData = nullptr;
    UINT m_Pitch = 0;
};
}  // namespace

TEST_F(UMDResourceTraceTest, VertexBuffer_Life_EachLineHasItsLevel)
{
    CreateRequest request(kFlagVertexBuffer, kVideo, D3DDDIFMT_UNKNOWN, 64, 1);
    request.WithMemory(1, 0);
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscVertexBuffer buffer(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE,
                          D3DUSAGE_WRITEONLY, D3DPOOL_DEFAULT);
                      buffer.Create();
                      buffer.Lock(0, 0, 64, &m_pData, &m_Pitch, 0);
                      buffer.Unlock();
                      buffer.WriteToDelegated(0);
                      buffer.Destroy();
                  }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x200 UMDRscVertexBuffer::Create Length=64 Usage=8 Pool=0 IndexBuffer:0x# this:0x#\n",
            "0x20 UMDRscVertexBuffer::VertexBuffer 0x#\n", "0x20 UMDRscVertexBuffer::Unlock VertexBuffer 0x#\n",
            "0x200 UMDRscVertexBuffer::WriteToDelegated VertexBuffer 0x#\n",
            "0x200 UMDRscVertexBuffer::Destroy m_pVertexBuffer:0x# this:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDResourceTraceTest, IndexBuffer_Life_EachLineHasItsLevel)
{
    CreateRequest request(kFlagIndexBuffer, kSystem, D3DDDIFMT_INDEX32, 64, 1);
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscIndexBuffer buffer(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE,
                          D3DUSAGE_WRITEONLY, D3DPOOL_SYSTEMMEM);
                      buffer.Create();
                      buffer.Lock(0, 0, 64, &m_pData, &m_Pitch, 0);
                      buffer.Unlock();
                      buffer.Destroy();
                  }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x200 UMDRscIndexBuffer::Create Length=64 Usage=8 Format=102 Pool=2 IndexBuffer:0x# this:0x#\n",
            "0x20 UMDRscIndexBuffer::Lock 0x# m_Pool:2\n", "0x20 UMDRscIndexBuffer::Lock 0x#\n",
            "0x200 UMDRscIndexBuffer::Destroy m_pIndexBuffer:0x# this:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDResourceTraceTest, ZBuffer_Life_EachLineHasItsLevel)
{
    CreateRequest request(kFlagZBuffer, kVideo, D3DDDIFMT_D24S8, 32, 16);
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscZBuffer buffer(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE);
                      buffer.Create();
                      buffer.Destroy();
                  }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x200 UMDRscZBuffer::Create Width=32 Height=16 Format=75 Surface:0x# this:0x#\n",
            "0x200 UMDRscZBuffer::Destroy m_pSurface:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDResourceTraceTest, Surface_Life_EachLineHasItsLevel)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 4);
    request.WithMemory(4, 0).m_Arg.VidPnSourceId = 3;
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscSurface surface(
                          &Device(), request.m_Arg.hResource, &request.m_Arg, FALSE, D3DPOOL_DEFAULT, false);
                      surface.Create();
                      surface.Lock(0, 0, 0, &m_pData, &m_Pitch, 0);
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

TEST_F(UMDResourceTraceTest, Surface_ReadBack_EachLineHasItsLevel)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 4);
    auto* pTarget = Create<UMDRscSurface>(request);
    m_Fake.SetRenderTarget(0, pTarget->GetSurface(0, 0));
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      IDirect3DSurface9* pSurface = nullptr;
                      D3DLOCKED_RECT locked = {};
                      D3DSURFACE_DESC desc = {};
                      EXPECT_EQ(pTarget->RenderTargetDataLock(&pSurface, &locked, &desc), S_OK);
                      pTarget->RenderTargetDataUnlock(&pSurface);
                      pTarget->GetSurface(0, 0)->Release();  // the reference that a read-back leaves
                  }),
        (Lines{"0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock 0x#\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock Width 0x# Height 0x#\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataLock pRenderTarget 0x#\n",
            "0x200 UMDRscRenderTargetCapable::RenderTargetDataLock LockedRect.pBits 0x#\n",
            "0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataUnlock\n"}));
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      IDirect3DSurface9* pSurface = nullptr;
                      pTarget->RenderTargetDataUnlock(&pSurface);
                  }),
        (Lines{"0x200 >>> UMDRscRenderTargetCapable::RenderTargetDataUnlock\n",
            "0x1 UMDRscRenderTargetCapable::RenderTargetDataUnlock *ppRenderTarget is NULL\n"}));
    m_Fake.SetRenderTarget(0, nullptr);
}

TEST_F(UMDResourceTraceTest, Texture_Life_EachLineHasItsLevel)
{
    CreateRequest request(kFlagTexture, kSystem, D3DDDIFMT_X8R8G8B8, 8, 4);
    request.WithMemory(4, 0);
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscTexture texture(&Device(), request.m_Arg.hResource, &request.m_Arg,
                          UMDRscTextureTraits{FALSE, 0, D3DPOOL_SYSTEMMEM, UMDRESOURCETYPE_TEXTURE});
                      texture.Create();
                      texture.Lock(1, 0, 0, &m_pData, &m_Pitch, 0);
                      texture.Unlock();
                      texture.WriteToDelegated(0, nullptr);
                      texture.WriteFromDelegated(0);
                      texture.Destroy();
                  }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x20 UMDRscTexture::Create Resource:0x# m_pTexture 0x# m_bIsRenderTarget 0 m_bIsSharedResource 0 pSharedHandle=0x# *pSharedHandle=0x#\n",
            "0x20    Lock: Texture 0x# AreaValid:1\n", "0x20    Unlock: Texture 0x#\n",
            "0x200 UMDRscTexture::WriteToDelegated 0\n", "0x200 UMDRscTexture::WriteFromDelegated 0\n",
            "0x200 UMDRscTexture::Destroy m_pTexture:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDResourceTraceTest, CubeTexture_Life_EachLineHasItsLevel)
{
    CreateRequest request(kFlagCubeMap, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8, 2);
    Lines lines = {"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"};
    for (int i = 0; i < 12; ++i)
    {
        const int size = i % 2 ? 4 : 8;
        char line[120];
        snprintf(line, sizeof line,
            "0x200 UMDRscCubeTexture::Create %02d Face:%02d Level:%02d 0x# Width:%d Height:%d\n", i, i / 2, i % 2, size,
            size);
        lines.push_back(line);
    }
    lines.insert(
        lines.end(), {"0x22    KMode Handle - m_hAllocation:0x# m_hKMResource:0x#\n",
                         "0x200 UMDRscCubeTexture::Create m_pTexture:0x# this:0x#\n", "0x20    Lock: CubeTexture 0x#\n",
                         "0x20    Unlock: CubeTexture 0x#\n", "0x200 UMDRscCubeTexture::Destroy() m_pTexture:0x#\n",
                         "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"});
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscCubeTexture cube(
                          &Device(), request.m_Arg.hResource, &request.m_Arg, FALSE, 0, D3DPOOL_DEFAULT);
                      cube.Create();
                      cube.Lock(1, 0, 0, &m_pData, &m_Pitch, 0);
                      cube.Unlock();
                      cube.Destroy();
                  }),
        lines);
}

TEST_F(UMDResourceTraceTest, OpenedTexture_Life_EachLineHasItsLevel)
{
    UMDAllocationPrivateData record = {};
    record.Kind = 6;
    record.TextureKind = 6;
    record.Width = record.Height = 16;
    record.Format = 21;
    record.Levels = 1;
    D3DDDI_OPENALLOCATIONINFO allocation = {};
    allocation.pPrivateDriverData = &record;
    allocation.PrivateDriverDataSize = sizeof record;
    D3DDDIARG_OPENRESOURCE open = {};
    open.NumAllocations = 1;
    open.pOpenAllocationInfo = &allocation;
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      UMDRscTexture texture(&Device(), open.hResource, &open,
                          UMDRscTextureTraits{TRUE, 0, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE});
                      texture.Open();
                      texture.Destroy();
                  }),
        (Lines{"0x20    hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n",
            "0x20 UMDRscTexture::Open Resource:0x# m_pTexture 0x# Width:16 Height:16 Format:21 SharedHandle:0x# hAllocation:0x#\n",
            "0x200 UMDRscTexture::Destroy m_pTexture:0x#\n",
            "0x20    ~hResource driver:0x# (own) <==> hResource OS:0x# (saved)\n"}));
}

TEST_F(UMDResourceTraceTest, Blits_EveryPath_IsToldAtTheDetailLevel)
{
    CreateRequest videoRequest(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest plainRequest(0, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest systemRequest(0, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest smallRequest(0, kSystem, D3DDDIFMT_R5G6B5, 4, 4);
    CreateRequest smallerRequest(0, kSystem, D3DDDIFMT_X8R8G8B8, 4, 4);
    CreateRequest videoTextureRequest(kFlagTexture | kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest systemTextureRequest(kFlagTexture, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pVideo = Create<UMDRscSurface>(videoRequest);
    auto* pOther = Create<UMDRscSurface>(videoRequest);
    auto* pPlain = Create<UMDRscSurface>(plainRequest);
    auto* pSystem = Create<UMDRscSurface>(systemRequest);
    auto* pSmall = Create<UMDRscSurface>(smallRequest);
    auto* pSmaller = Create<UMDRscSurface>(smallerRequest);
    auto* pVideoTexture = Create<UMDRscTexture>(videoTextureRequest);
    auto* pSystemTexture = Create<UMDRscTexture>(systemTextureRequest);
    const struct
    {
        UMDRscRenderTargetCapable* pSrc;
        UMDRscBase* pDst;
        Lines Expected;
    } rows[] = {
        {pVideo, pOther,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO VIDEO\n"}},
        {pVideo, pPlain,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO VIDEO plain\n"}},
        {pPlain, pVideo,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO VIDEO plain NEW\n"}},
        {pSystem, pVideo,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:2\n",
                "0x200 UMDRscSurface::Blt SYSTEM TO VIDEO\n",
                "0x200 UMDRscSurface::Blt SYSTEM TO VIDEO similar 22 22\n",
                "0x200 UMDRscSurface::WriteToDelegated 0\n"}},
        {pSmall, pVideo,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:0 SRC Resource:0x# Pool:2\n",
                "0x200 UMDRscSurface::Blt SYSTEM TO VIDEO\n",
                "0x1 UMDRscSurface::Blt SYSTEM TO VIDEO different 23 22\n"}},
        {pVideo, pSystem,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:2 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO SYSTEM similar dimension\n"}},
        {pVideo, pSmall,
            {"0x200 UMDRscSurface::Blt DST Resource:0x# Pool:2 SRC Resource:0x# Pool:0\n",
                "0x200 UMDRscSurface::Blt VIDEO TO SYSTEM different resolution\n"}},
        {pVideoTexture, pVideo,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:0 IsRenderTarget:1\n",
                "0x200 UMDRscTexture::Blt VIDEO TO VIDEO\n"}},
        {pVideoTexture, pSystemTexture,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:2 IsRenderTarget:0 SRC Resource:0x# Pool:0 IsRenderTarget:1\n",
                "0x200 UMDRscTexture::Blt VIDEO TO SYSTEM same dimension\n",
                "0x200 UMDRscTexture::WriteFromDelegated 0\n"}},
        {pVideoTexture, pSmaller,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:2 IsRenderTarget:0 SRC Resource:0x# Pool:0 IsRenderTarget:1\n",
                "0x200 UMDRscTexture::Blt VIDEO TO SYSTEM different dimension\n"}},
        {pSystemTexture, pVideoTexture,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:2 IsRenderTarget:0\n",
                "0x200 UMDRscTexture::Blt SYSTEM TO VIDEO\n",
                "0x200 UMDRscTexture::TexBlt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:2 IsRenderTarget:0\n",
                "0x200 UMDRscTexture::WriteToDelegated 0\n"}},
        // No pixels in the destination's rectangle: what the way by the processor would read does not exist.
        {pSystemTexture, pSystem,
            {"0x200 UMDRscTexture::Blt DST Resource:0x# Pool:2 IsRenderTarget:0 SRC Resource:0x# Pool:2 IsRenderTarget:0\n",
                "0x1 UMDRscTexture::Blt failed! SRC Resource:0x# Pool:2 RenderTarget:0 DST Resource:0x# Pool:2 RenderTarget:0\n",
                "0x1 DST Width:8 Height:8 Width:0 Height:0\n", "0x1 SRC Width:8 Height:8 Width:4 Height:4\n"}},
    };
    const RECT srcRect = {0, 0, 4, 4};
    for (const auto& row : rows)
    {
        const bool empty = row.pSrc->GetPool() == D3DPOOL_SYSTEMMEM && row.pDst->GetPool() == D3DPOOL_SYSTEMMEM;
        const RECT dstRect = empty ? RECT{} : srcRect;
        EXPECT_EQ(LevelledTrace(m_Trace, [&] { row.pSrc->Blt(&srcRect, row.pDst, &dstRect); }), row.Expected);
    }
}

TEST_F(UMDResourceTraceTest, CubeBlit_IsToldAtTheDetailLevel)
{
    CreateRequest systemRequest(kFlagCubeMap, kSystem, D3DDDIFMT_X8R8G8B8, 8, 8);
    CreateRequest videoRequest(kFlagCubeMap | kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    auto* pSystem = Create<UMDRscCubeTexture>(systemRequest);
    auto* pVideo = Create<UMDRscCubeTexture>(videoRequest);
    EXPECT_EQ(LevelledTrace(m_Trace, [&] { pSystem->TexBlt(nullptr, pVideo, nullptr); }),
        Lines{
            "0x200 UMDRscCubeTexture::TexBlt DST Resource:0x# Pool:0 IsRenderTarget:1 SRC Resource:0x# Pool:2 IsRenderTarget:0\n"});
}

TEST_F(UMDResourceTraceTest, Shaders_EveryOperation_IsToldAtTheDetailLevel)
{
    const UINT code[] = {0xFFFF0200, 0x0000FFFF};
    const FLOAT floats[4] = {};
    const INT integers[4] = {};
    const BOOL booleans[4] = {};
    const D3DVERTEXELEMENT9 end = D3DDECL_END();
    UMDShaderPixel pixel(&Device());
    UMDShaderVertex vertex(&Device());
    EXPECT_EQ(LevelledTrace(m_Trace,
                  [&] {
                      const D3DDDIARG_SETPIXELSHADERCONST pixelConst = {0, 1};
                      const D3DDDIARG_SETPIXELSHADERCONSTI pixelConstI = {0, 1};
                      const D3DDDIARG_SETPIXELSHADERCONSTB pixelConstB = {0, 1};
                      const D3DDDIARG_SETVERTEXSHADERCONST vertexConst = {0, 1};
                      pixel.Create(code);
                      pixel.Set();
                      UMDShaderPixel::SetConst(&Device(), &pixelConst, floats);
                      UMDShaderPixel::SetConstI(&Device(), &pixelConstI, integers);
                      UMDShaderPixel::SetConstB(&Device(), &pixelConstB, booleans);
                      pixel.Delete();
                      vertex.Create(code);
                      vertex.Set();
                      vertex.Delete();
                      vertex.CreateDecl(&end);
                      vertex.SetDecl();
                      vertex.DeleteDecl();
                      UMDShaderVertex::SetConst(&Device(), &vertexConst, floats);
                  }),
        (Lines{"0x200 >>> UMDShaderPixel::Create\n", "0x200 >>> UMDShaderPixel::Set\n",
            "0x200 >>> UMDShaderPixel::SetConst\n", "0x200 >>> UMDShaderPixel::SetConstI\n",
            "0x200 >>> UMDShaderPixel::SetConstB\n", "0x200 >>> UMDShaderPixel::Delete\n",
            "0x200 >>> UMDShaderVertex::Create\n", "0x200 >>> UMDShaderVertex::Set\n",
            "0x200 >>> UMDShaderVertex::Delete\n", "0x200 >>> UMDShaderVertex::CreateDecl\n",
            "0x200 >>> UMDShaderVertex::SetDecl\n", "0x200 >>> UMDShaderVertex::DeleteDecl\n",
            "0x200 >>> UMDShaderVertex::SetConst\n"}));
}

TEST_F(UMDResourceTraceTest, UnhandledResource_IsToldAsAnError)
{
    CreateRequest request(kFlagPrimary, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    Lines lines = LevelledTrace(m_Trace, [&] { Destroy(CreateAny(request)); });
    std::erase_if(lines, [](const std::string& line) { return line.find("unhandled") == std::string::npos; });
    EXPECT_EQ(lines, Lines{"0x1 UMDDdiCreateResource unhandled resource\n"});
}

TEST_F(UMDResourceTraceTest, CreateAndOpen_TheHandle_IsOfTheEntryAndTheResourceLevel)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    Lines lines = LevelledTrace(m_Trace, [&] { Destroy(CreateAny(request)); });
    std::erase_if(lines, [](const std::string& line) { return line.find("   Handle:") == std::string::npos; });
    EXPECT_EQ(lines, Lines{"0x22    Handle: 0x#\n"});
    D3DDDIARG_OPENRESOURCE open = {};
    lines = LevelledTrace(m_Trace, [&] { UMDDdiOpenResource(DeviceHandle(), &open); });
    std::erase_if(lines, [](const std::string& line) { return line.find("   Handle:") == std::string::npos; });
    EXPECT_EQ(lines, Lines{"0x22    Handle:0x#\n"});
}

TEST_F(UMDResourceTraceTest, AllocationRefused_IsToldAsAnError)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    m_Kernel.Fail("pfnAllocateCb", kRefused);
    Lines lines = LevelledTrace(m_Trace, [&] { Destroy(CreateAny(request)); });
    std::erase_if(lines, [](const std::string& line) { return line.find("pfnAllocateCb") == std::string::npos; });
    EXPECT_EQ(lines,
        Lines{"0x1 UMDRscRenderTargetCapable::KernelModeAllocateCb pfnAllocateCb failed! hResult 0x8876086a \n"});
}
