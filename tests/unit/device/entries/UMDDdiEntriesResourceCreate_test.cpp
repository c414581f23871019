// What create-resource makes of the runtime's flags: the class, shown by the delegated call that follows.
#include "EntryTrace.h"
#include "ResourceFixture.h"
#include "TraceLevels.h"

#include <typeinfo>

using namespace tesslo::test;

namespace
{
class UMDDdiCreateResourceTest : public ResourceFixture
{
};

/// The delegated calls of a resource of 8 by 4 with these flags, in one sub-resource for each face.
Lines ExpectedCalls(UINT flags, bool systemMemory)
{
    const std::string pool = systemMemory ? "2" : "0";
    UINT bufferUsage = 0;
    if (flags & kFlagDynamic)
        bufferUsage += 0x200;
    if (flags & kFlagWriteOnly)
        bufferUsage += 8;
    const std::string buffer = std::to_string(bufferUsage);
    const std::string usage = (flags & kFlagTexture) && (flags & kFlagDynamic) ? "512" : "0";
    if (flags & kFlagVertexBuffer)
        return {"CreateVertexBuffer(32, " + buffer + ", 322, " + pool + ", out, null)"};
    if (flags & kFlagIndexBuffer)
        return {"CreateIndexBuffer(32, " + buffer + ", 22, " + pool + ", out, null)"};
    if (flags & kFlagZBuffer)
        return {"CreateDepthStencilSurface(8, 4, 22, 0, 0, 0, out, null)"};
    if (flags & kFlagCubeMap)
    {
        Lines lines = {"CreateCubeTexture(8, 1, " + usage + ", 22, " + pool + ", out, null)"};
        for (int face = 0; face < 6; face++)
        {
            lines.push_back("GetCubeMapSurface(" + std::to_string(face) + ", 0, out)");
            lines.push_back("GetDesc(out)");
        }
        return lines;
    }
    if (flags & kFlagTexture)
    {
        const std::string shared = flags & kFlagSharedResource ? "out" : "null";
        if (flags & kFlagRenderTarget)
            return {"CreateTexture(8, 4, 1, 1, 22, 0, out, " + shared + ")", "GetSurfaceLevel(0, out)"};
        return {
            "CreateTexture(8, 4, 1, " + usage + ", 22, " + pool + ", out, " + shared + ")", "GetSurfaceLevel(0, out)"};
    }
    if (flags & kFlagRenderTarget)
        return {"CreateRenderTarget(8, 4, 22, 0, 0, 0, out, null)"};
    if (flags == 0 || (flags & kFlagDecodeRenderTarget))
        return {"CreateOffscreenPlainSurface(8, 4, 22, " + pool + ", out, null)"};
    return {};
}

struct RefusedCall
{
    UINT m_Flags;
    const char* m_pCall;
    unsigned m_Nth;  ///< which call of that name, and the number of the resource's levels
    const char* m_pError;
};

constexpr RefusedCall kRefusedCalls[] = {
    {kFlagVertexBuffer, "CreateVertexBuffer", 1, "UMDRscVertexBuffer::Create CreateVertexBuffer failed! 0x8876086a\n"},
    {kFlagIndexBuffer, "CreateIndexBuffer", 1, "UMDRscIndexBuffer::Create CreateIndexBuffer failed! 0x8876086a\n"},
    {kFlagZBuffer, "CreateDepthStencilSurface", 1,
        "UMDRscZBuffer::Create CreateDepthStencilSurface failed! 0x8876086a\n"},
    {kFlagCubeMap, "CreateCubeTexture", 1, "UMDRscCubeTexture::Create CreateCubeTexture failed! 0x8876086a\n"},
    {kFlagCubeMap, "cube.GetCubeMapSurface", 1, "UMDRscCubeTexture::Create GetCubeMapSurface failed! 0x8876086a\n"},
    {kFlagCubeMap, "cube.GetCubeMapSurface", 2, "UMDRscCubeTexture::Create GetCubeMapSurface failed! 0x8876086a\n"},
    {kFlagCubeMap, "cube.GetDesc", 1, "UMDRscCubeTexture::Create GetDesc failed! 0x8876086a\n"},
    {kFlagCubeMap, "cube.GetDesc", 2, "UMDRscCubeTexture::Create GetDesc failed! 0x8876086a\n"},
    {kFlagTexture, "CreateTexture", 1, "UMDRscTexture::Create CreateTexture failed! 0x8876086a\n"},
    {kFlagTexture, "texture.GetSurfaceLevel", 1, "UMDRscTexture::Open GetSurfaceLevel failed! 0x8876086a\n"},
    {kFlagTexture, "texture.GetSurfaceLevel", 2, "UMDRscTexture::Open GetSurfaceLevel failed! 0x8876086a\n"},
    {kFlagRenderTarget, "CreateRenderTarget", 1, "UMDRscSurface::Create CreateRenderTarget failed! 0x8876086a\n"},
    {0, "CreateOffscreenPlainSurface", 1, "UMDRscSurface::Create CreateRenderTarget failed! 0x8876086a\n"},
};

/// The calls without the names of the objects, whose numbers run on.
Lines WithoutNames(Lines lines)
{
    for (std::string& line : lines)
    {
        const size_t dot = line.find('.');
        if (dot < line.find('('))
            line.erase(0, dot + 1);
    }
    return lines;
}
}  // namespace

TEST_F(UMDDdiCreateResourceTest, EveryFlagAloneAndInPairs_AllPools_TheFirstOfTheOrderDecides)
{
    const TraceMask quiet(0);
    std::vector<UINT> combinations = {0};
    for (UINT i = 0; i < 32; i++)
        for (UINT j = i; j < 32; j++)
            combinations.push_back(1U << i | 1U << j);
    for (UINT flags : combinations)
    {
        for (UINT pool = 0; pool <= 5; pool++)
        {
            CreateRequest request(flags, static_cast<D3DDDI_POOL>(pool), D3DDDIFMT_X8R8G8B8, 8, 4);
            request.m_Arg.Fvf = 322;
            ForgetCalls();
            CreateAny(request);
            ASSERT_EQ(WithoutNames(DeviceLines()), ExpectedCalls(flags, pool == D3DDDIPOOL_SYSTEMMEM))
                << std::hex << flags << " pool " << pool;
            DestroyAll();
        }
    }
}

TEST_F(UMDDdiCreateResourceTest, EveryFlagOfTheOrderWithAllLaterOnes_TheFirstOfTheOrderDecides)
{
    const TraceMask quiet(0);
    const UINT order[] = {kFlagVertexBuffer, kFlagIndexBuffer, kFlagZBuffer, kFlagCubeMap, kFlagTexture,
        kFlagRenderTarget, kFlagDecodeRenderTarget};
    UINT later = 0xFFFFFFFF;
    for (UINT flag : order)
    {
        CreateRequest request(later, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_X8R8G8B8, 8, 4);
        if (!(later & kFlagCubeMap))
        {
            ASSERT_EQ(request.m_Arg.SurfCount, 1U);
        }
        request.m_Arg.Fvf = 322;
        ForgetCalls();
        CreateAny(request);
        EXPECT_EQ(WithoutNames(DeviceLines()), ExpectedCalls(later, true)) << std::hex << later;
        DestroyAll();
        later &= ~flag;
    }
}

TEST_F(UMDDdiCreateResourceTest, UnhandledFlags_MakeABareObjectThatIsTraced)
{
    CreateRequest request(kFlagPrimary, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 8, 4);
    UMDRscBase* pResource = nullptr;
    EXPECT_EQ(ErrorsOf([&] { pResource = CreateAny(request); }), Lines{"UMDDdiCreateResource unhandled resource\n"});
    EXPECT_TRUE(typeid(*pResource) == typeid(UMDRscBase));
    EXPECT_EQ(pResource->GetType(), UMDRESOURCETYPE_UNKNOWN);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(KernelLines(), Lines{});
}

TEST_F(UMDDdiCreateResourceTest, Types_EveryClass_CarryTheirNumber)
{
    const struct
    {
        UINT Flags;
        UMDRESOURCETYPE Type;
    } rows[] = {{kFlagVertexBuffer, UMDRESOURCETYPE_VERTEXBUFFER}, {kFlagIndexBuffer, UMDRESOURCETYPE_INDEXBUFFER},
        {kFlagZBuffer, UMDRESOURCETYPE_ZBUFFER}, {kFlagCubeMap, UMDRESOURCETYPE_CUBETEXTURE},
        {kFlagTexture, UMDRESOURCETYPE_TEXTURE}, {kFlagRenderTarget, UMDRESOURCETYPE_RENDERTARGET},
        {0, UMDRESOURCETYPE_RENDERTARGET}, {kFlagRenderTarget | kFlagTexture, UMDRESOURCETYPE_TEXTURE},
        {kFlagZBuffer | kFlagTexture, UMDRESOURCETYPE_ZBUFFER}};
    for (const auto& row : rows)
    {
        CreateRequest request(row.Flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 8, 8);
        EXPECT_EQ(CreateAny(request)->GetType(), row.Type) << row.Flags;
    }
}

TEST_F(UMDDdiCreateResourceTest, Success_TracesEntryAndHandleAndReturnsTheObject)
{
    CreateRequest request(kFlagZBuffer, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_D24S8, 8, 8);
    UMDRscBase* pResource = CreateAny(request);
    const Lines lines = m_Trace.Lines();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines.front(), "=> UMDDdiCreateResource\n");
    EXPECT_EQ(lines.back(), "   Handle: " + Low(pResource) + "\n");
}

TEST_F(UMDDdiCreateResourceTest, TraceLevels_EachBitOfTheMask_PrintsTheLinesOfItsLevel)
{
    CreateRequest request(kFlagZBuffer, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_D24S8, 8, 8);
    for (UINT bit : {UMDTRACE_DDI, UMDTRACE_RESOURCE})
    {
        const TraceMask mask(bit);
        m_Trace.Clear();
        CreateAny(request);
        EXPECT_EQ(m_Trace.Count("=> UMDDdiCreateResource\n"), 1U) << bit;
        EXPECT_EQ(m_Trace.LinesContaining("   Handle: 0x").size(), 1U) << bit;
    }
    const TraceMask mask(UMDTRACE_ERROR | UMDTRACE_DETAIL);
    m_Trace.Clear();
    CreateAny(request);
    EXPECT_EQ(m_Trace.Count("=> UMDDdiCreateResource\n"), 0U);
    EXPECT_EQ(m_Trace.LinesContaining("   Handle: 0x").size(), 0U);
}

TEST_F(UMDDdiCreateResourceTest, NoSurfaces_EveryMirroredClass_IsRefusedAndLeavesNothing)
{
    const struct
    {
        UINT Flags;
        const char* pError;
    } rows[] = {{kFlagVertexBuffer, "UMDRscVertexBuffer::Create failed! m_SurfCount = 0\n"},
        {kFlagIndexBuffer, "UMDRscIndexBuffer::Create failed! m_SurfCount = 0\n"},
        {kFlagZBuffer, "UMDRscZBuffer::Create failed! m_SurfCount = 0\n"},
        {kFlagCubeMap, "UMDRscCubeTexture::Create failed! m_SurfCount = 0\n"},
        {kFlagTexture, "UMDRscTexture::Create failed! m_SurfCount = 0\n"},
        {kFlagRenderTarget, "UMDRscSurface::Create failed! m_SurfCount = 0\n"},
        {0, "UMDRscSurface::Create failed! m_SurfCount = 0\n"}};
    for (const auto& row : rows)
    {
        CreateRequest request(row.Flags, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
        request.m_Arg.SurfCount = 0;
        ExpectRefused(request, {row.pError});
        request.m_Arg.pSurfList = nullptr;
        ExpectRefused(request, {row.pError});
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiCreateResourceTest, NoSurfaces_UnhandledFlags_StillMakesTheBareObject)
{
    CreateRequest request(kFlagPrimary, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 8, 8);
    request.m_Arg.SurfCount = 0;
    request.m_Arg.pSurfList = nullptr;
    EXPECT_NE(CreateAny(request), nullptr);
}

TEST_F(UMDDdiCreateResourceTest, DelegatedDeviceRefuses_EveryCall_AnswersFailAndLeavesNothing)
{
    for (const RefusedCall& row : kRefusedCalls)
    {
        m_Fake.ClearScripts();
        m_Fake.Fail(row.m_pCall, kRefused, row.m_Nth);
        CreateRequest request(row.m_Flags, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8, row.m_Nth);
        ExpectRefused(request, {row.m_pError});
    }
}

TEST_F(UMDDdiCreateResourceTest, DelegatedDeviceRefuses_EveryCall_TheObjectIsDestroyed)
{
    for (const RefusedCall& row : kRefusedCalls)
    {
        m_Fake.ClearScripts();
        m_Fake.Fail(row.m_pCall, kRefused, row.m_Nth);
        CreateRequest request(row.m_Flags, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8, row.m_Nth);
        m_Trace.Clear();
        EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL);
        EXPECT_EQ(m_Trace.LinesContaining("   hResource driver:").size(), 1U) << row.m_pCall;
        EXPECT_EQ(m_Trace.LinesContaining("   ~hResource driver:").size(), 1U) << row.m_pCall;
    }
}

TEST_F(UMDDdiCreateResourceTest, EveryClass_DumpsTheRequestAndTheRuntimesHandle)
{
    const struct
    {
        UINT Flags;
        const char* pFlags;
    } rows[] = {{kFlagVertexBuffer, "VertexBuffer | "}, {kFlagIndexBuffer, "IndexBuffer | "},
        {kFlagZBuffer, "ZBuffer | "}, {kFlagCubeMap, "CubeMap | "}, {kFlagTexture, "Texture | "},
        {kFlagRenderTarget, "RenderTarget | "}, {0, ""}, {kFlagPrimary, "Primary | "}};
    for (const auto& row : rows)
    {
        CreateRequest request(row.Flags, D3DDDIPOOL_VIDEOMEMORY, D3DDDIFMT_A8R8G8B8, 8, 8);
        UMDRscBase* pResource = nullptr;
        Lines lines = EntryLines([&] { pResource = CreateAny(request); });
        lines = Named(Without(Without(lines, "   KMode"), "   - Surface"), {{"object", pResource}});
        EXPECT_EQ(lines,
            (Lines{"=> UMDDdiCreateResource\n",
                "   D3DDDIPOOL_VIDEOMEMORY Format:21 MultisampleType:0 MultisampleQuality:0 SurfCount:" +
                    std::to_string(request.m_Arg.SurfCount) + " VidPnSourceId:0\n",
                "   Flags: " + std::string(row.pFlags) + std::string(31, ' ') + "\n",
                "   hResource driver:object (own) <==> hResource OS:0xabcde0 (saved)\n", "   Handle: object\n"}));
    }
}

TEST_F(UMDDdiCreateResourceTest, UnhandledResource_IsToldAsAnError)
{
    CreateRequest request(kFlagPrimary, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    const Lines lines = LevelledTrace([&] { Destroy(CreateAny(request)); });
    EXPECT_EQ(Containing(lines, "unhandled"), Lines{"0x1 UMDDdiCreateResource unhandled resource\n"});
}

TEST_F(UMDDdiCreateResourceTest, TheHandle_IsOfTheEntryAndTheResourceLevel)
{
    CreateRequest request(kFlagRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, 8, 8);
    const Lines lines = LevelledTrace([&] { Destroy(CreateAny(request)); });
    EXPECT_EQ(Containing(lines, "   Handle:"), Lines{"0x22    Handle: 0x#\n"});
}
