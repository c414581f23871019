// What create-resource makes of the runtime's flags: the class, shown by the delegated call that follows.
#include "ResourceFixture.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscSurface.h"

#include <typeinfo>

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
class UMDDdiCreateResourceTest : public ResourceFixture
{
protected:
    void TearDown() override
    {
        m_Trace.Clear();
        ResourceFixture::TearDown();
    }
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
    char handle[32];
    snprintf(handle, sizeof handle, "   Handle: 0x%x\n", UMDLow32(pResource));
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines.front(), "=> UMDDdiCreateResource\n");
    EXPECT_EQ(lines.back(), handle);
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
        for (bool withList : {false, true})
        {
            CreateRequest request(row.Flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 8, 8);
            if (withList)
                request.m_Arg.SurfCount = 0;
            else
            {
                request.m_Arg.pSurfList = nullptr;
                request.m_Arg.SurfCount = 0;
            }
            const HANDLE hBefore = request.m_Arg.hResource;
            HRESULT hr = S_OK;
            EXPECT_EQ(ErrorsOf([&] { hr = UMDDdiCreateResource(DeviceHandle(), &request.m_Arg); }), Lines{row.pError});
            EXPECT_EQ(hr, E_FAIL);
            EXPECT_EQ(request.m_Arg.hResource, hBefore);
            EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
        }
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

TEST_F(UMDDdiCreateResourceTest, DelegatedDeviceRefuses_EveryClass_AnswersFailAndLeavesNothing)
{
    const struct
    {
        UINT Flags;
        const char* pCall;
        const char* pError;
    } rows[] = {
        {kFlagVertexBuffer, "CreateVertexBuffer", "UMDRscVertexBuffer::Create CreateVertexBuffer failed! 0x8876086a\n"},
        {kFlagIndexBuffer, "CreateIndexBuffer", "UMDRscIndexBuffer::Create CreateIndexBuffer failed! 0x8876086a\n"},
        {kFlagZBuffer, "CreateDepthStencilSurface",
            "UMDRscZBuffer::Create CreateDepthStencilSurface failed! 0x8876086a\n"},
        {kFlagCubeMap, "CreateCubeTexture", "UMDRscCubeTexture::Create CreateCubeTexture failed! 0x8876086a\n"},
        {kFlagCubeMap, "cube.GetCubeMapSurface", "UMDRscCubeTexture::Create GetCubeMapSurface failed! 0x8876086a\n"},
        {kFlagCubeMap, "cube.GetDesc", "UMDRscCubeTexture::Create GetDesc failed! 0x8876086a\n"},
        {kFlagTexture, "CreateTexture", "UMDRscTexture::Create CreateTexture failed! 0x8876086a\n"},
        {kFlagTexture, "texture.GetSurfaceLevel", "UMDRscTexture::Open GetSurfaceLevel failed! 0x8876086a\n"},
        {kFlagRenderTarget, "CreateRenderTarget", "UMDRscSurface::Create CreateRenderTarget failed! 0x8876086a\n"},
        {0, "CreateOffscreenPlainSurface", "UMDRscSurface::Create CreateRenderTarget failed! 0x8876086a\n"},
    };
    for (const auto& row : rows)
    {
        for (UINT nth : {1U, 2U})
        {
            m_Fake.ClearScripts();
            m_Fake.Fail(row.pCall, kRefused, nth);
            CreateRequest request(row.Flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 8, 8, nth);
            HRESULT hr = S_OK;
            const Lines errors = ErrorsOf([&] { hr = UMDDdiCreateResource(DeviceHandle(), &request.m_Arg); });
            if (nth == 2 && std::string(row.pCall).find('.') == std::string::npos)
            {
                // Only one such call a resource: the second resource's is refused.
                ASSERT_EQ(hr, S_OK);
                UMDDdiDestroyResource(DeviceHandle(), request.m_Arg.hResource);
                continue;
            }
            EXPECT_EQ(errors, Lines{row.pError});
            EXPECT_EQ(hr, E_FAIL);
            EXPECT_EQ(m_Fake.LiveObjects(), Lines{}) << row.pCall;
            EXPECT_EQ(m_Kernel.AllocationCount(), 0U) << row.pCall;
        }
        m_Fake.ClearScripts();
        m_Fake.Fail(row.pCall, kRefused);
        CreateRequest request(row.Flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 8, 8);
        m_Trace.Clear();
        EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL);
        EXPECT_EQ(m_Trace.LinesContaining("   hResource driver:").size(), 1U) << row.pCall;
        EXPECT_EQ(m_Trace.LinesContaining("   ~hResource driver:").size(), 1U) << "the object is destroyed";
    }
}
