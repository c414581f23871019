// What the entries trace of real resources: which handle stands where, with its type and pool, and the dumps behind it.
#include "DeviceObjects.h"

#include "kernel/UMDAllocationPrivateData.h"
#include "resources/UMDRscTexture.h"

namespace
{

class UMDDdiEntryTrace : public DeviceObjects
{
protected:
    /// The lines of an entry's own levels, with the handles by their names; the created objects' lines are left out.
    Lines EntryLines(const std::vector<std::pair<std::string, HANDLE>>& names, const std::function<void()>& operation)
    {
        const tesslo::test::TraceMask entriesOnly(UMDTRACE_DDI | UMDTRACE_RESOURCE);
        m_Trace.Clear();
        operation();
        Lines lines = Trace();
        for (std::string& line : lines)
            for (const auto& [name, handle] : names)
                Replace(line, handle, name);
        return lines;
    }

    static void Replace(std::string& line, HANDLE handle, const std::string& name)
    {
        char text[16];
        snprintf(text, sizeof(text), "0x%x", UMDLow32(handle));
        for (size_t at; (at = line.find(text)) != std::string::npos;)
            line.replace(at, strlen(text), name);
    }
};

}  // namespace

TEST_F(UMDDdiEntryTrace, Blt_BothObjects_WithTypePoolAndKind)
{
    const HANDLE hTarget = CreateTarget();
    const HANDLE hTexture = CreateResource({.Texture = 1}, D3DDDIPOOL_SYSTEMMEM);
    D3DDDIARG_BLT arg = {};
    arg.hSrcResource = hTexture;
    arg.SrcRect = {1, 2, 3, 4};
    arg.hDstResource = hTarget;
    arg.DstRect = {5, 6, 7, 8};
    arg.ColorKey = 9;
    arg.Flags.Value = 10;
    EXPECT_EQ(EntryLines({{"target", hTarget}, {"texture", hTexture}}, [&] { UMDDdiBlt(DeviceHandle(), &arg); }),
        (Lines{
            "=> UMDDdiBlt Color:9 Flags:10 DST l:5 t:6 r:7 b:8 Rsc:target [Type:5 Pool:0] SRC l:1 t:2 r:3 b:4 Rsc:texture [Type:6 Pool:2]\n",
            "   RenderTarget\n", "   Texture\n"}));
    std::swap(arg.hSrcResource, arg.hDstResource);
    EXPECT_EQ(EntryLines({{"target", hTarget}, {"texture", hTexture}}, [&] { UMDDdiBlt(DeviceHandle(), &arg); }),
        (Lines{
            "=> UMDDdiBlt Color:9 Flags:10 DST l:5 t:6 r:7 b:8 Rsc:texture [Type:6 Pool:2] SRC l:1 t:2 r:3 b:4 Rsc:target [Type:5 Pool:0]\n",
            "   Texture\n", "   RenderTarget\n"}));
}

TEST_F(UMDDdiEntryTrace, TexBlt_BothObjects_WithTypePoolAndKind)
{
    const HANDLE hTarget = CreateTarget();
    const HANDLE hTexture = CreateResource({.Texture = 1}, D3DDDIPOOL_SYSTEMMEM);
    D3DDDIARG_TEXBLT arg = {};
    arg.hSrcResource = hTexture;
    arg.hDstResource = hTarget;
    arg.SrcRect = {1, 2, 3, 4};
    arg.DstPoint = {5, 6};
    EXPECT_EQ(EntryLines({{"target", hTarget}, {"texture", hTexture}}, [&] { UMDDdiTexBlt(DeviceHandle(), &arg); }),
        (Lines{
            "=> UMDDdiTexBlt hSrcResource:texture [Type:6 Pool:2] hDstResource:target [Type:5 Pool:0] SrcRect l:1 t:2 r:3 b:4 DstPoint x:5 y:6\n",
            "   Texture\n", "   RenderTarget\n"}));
    std::swap(arg.hSrcResource, arg.hDstResource);
    EXPECT_EQ(EntryLines({{"target", hTarget}, {"texture", hTexture}}, [&] { UMDDdiTexBlt(DeviceHandle(), &arg); }),
        (Lines{
            "=> UMDDdiTexBlt hSrcResource:target [Type:5 Pool:0] hDstResource:texture [Type:6 Pool:2] SrcRect l:1 t:2 r:3 b:4 DstPoint x:5 y:6\n",
            "   RenderTarget\n", "   Texture\n"}));
}

TEST_F(UMDDdiEntryTrace, BufBlt_BothObjects_WithKind)
{
    const HANDLE hVertices = CreateVertices(), hIndices = CreateIndices();
    D3DDDIARG_BUFFERBLT arg = {};
    arg.hSrcResource = hVertices;
    arg.hDstResource = hIndices;
    EXPECT_EQ(EntryLines({{"vertices", hVertices}, {"indices", hIndices}}, [&] { UMDDdiBufBlt(DeviceHandle(), &arg); }),
        (Lines{
            "=> UMDDdiBufBlt hDstResource:indices hSrcResource:vertices Offset:0 SrcRange.Offset:0 SrcRange.Size:0\n",
            "   IndexBuffer\n", "   VertexBuffer\n"}));
}

TEST_F(UMDDdiEntryTrace, StateEntries_RealObjects_ShowHandleTypeAndPool)
{
    const HANDLE hTexture = CreateResource({.Texture = 1}, D3DDDIPOOL_SYSTEMMEM);
    const HANDLE hDepth = CreateDepth();
    const D3DDDIARG_SETRENDERTARGET target = {0, hTexture, 3};
    const D3DDDIARG_SETDEPTHSTENCIL depth = {hDepth};
    EXPECT_EQ(EntryLines({{"texture", hTexture}, {"depth", hDepth}},
                  [&] {
                      UMDDdiSetTexture(DeviceHandle(), 2, hTexture);
                      UMDDdiSetRenderTarget(DeviceHandle(), &target);
                      UMDDdiSetDepthStencil(DeviceHandle(), &depth);
                  }),
        (Lines{"=> UMDDdiSetTexture Stage:2 hTexture:texture [Type:6 Pool:2]\n",
            "=> UMDDdiSetRenderTarget hRenderTarget:texture [Type:6] RenderTargetIndex:0 SubResourceIndex:0x3\n",
            "=> UMDDdiSetDepthStencil hZBuffer:depth\n"}));
}

TEST_F(UMDDdiEntryTrace, ShaderAndStreamEntries_Handles_StandWhereTheyBelong)
{
    const HANDLE hIndices = CreateIndices();
    const UINT code[] = {0xFFFE0200, 0x0000FFFF};
    const HANDLE hBefore = reinterpret_cast<HANDLE>(UINT_PTR{0x51});
    D3DDDIARG_CREATEPIXELSHADER pixel = {sizeof(code), hBefore};
    D3DDDIARG_CREATEVERTEXSHADERFUNC vertex = {sizeof(code), hBefore};
    D3DDDIARG_CREATEVERTEXSHADERDECL declaration = {0, hBefore};
    const D3DDDIARG_SETINDICES indices = {hIndices, 2};
    const D3DDDIARG_DRAWPRIMITIVE draw = {D3DPT_POINTLIST, 0, 1};
    const UINT edges[] = {1};
    Lines lines = EntryLines({{"indices", hIndices}, {"edges", const_cast<UINT*>(edges)}}, [&] {
        UMDDdiCreatePixelShader(DeviceHandle(), &pixel, code);
        UMDDdiCreateVertexShaderFunc(DeviceHandle(), &vertex, code);
        UMDDdiCreateVertexShaderDecl(DeviceHandle(), &declaration, nullptr);
        UMDDdiSetPixelShader(DeviceHandle(), pixel.ShaderHandle);
        UMDDdiSetVertexShaderFunc(DeviceHandle(), vertex.ShaderHandle);
        UMDDdiSetVertexShaderDecl(DeviceHandle(), declaration.ShaderHandle);
        UMDDdiDeletePixelShader(DeviceHandle(), pixel.ShaderHandle);
        UMDDdiDeleteVertexShaderFunc(DeviceHandle(), vertex.ShaderHandle);
        UMDDdiDeleteVertexShaderDecl(DeviceHandle(), declaration.ShaderHandle);
        UMDDdiSetIndices(DeviceHandle(), &indices);
        UMDDdiDrawPrimitive(DeviceHandle(), &draw, edges);
    });
    for (std::string& line : lines)
    {
        Replace(line, const_cast<UINT*>(code), "code");
        Replace(line, &pixel, "pixelRecord");
        Replace(line, &vertex, "vertexRecord");
        Replace(line, const_cast<D3DDDIARG_SETINDICES*>(&indices), "indicesRecord");
        if (!line.starts_with("=> UMDDdiCreate"))
        {
            Replace(line, pixel.ShaderHandle, "pixel");
            Replace(line, vertex.ShaderHandle, "vertex");
            Replace(line, declaration.ShaderHandle, "declaration");
        }
    }
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with("=> "); });
    EXPECT_EQ(lines,
        (Lines{"=> UMDDdiCreatePixelShader pShader:code pDDICreateShader:pixelRecord CodeSize:8 ShaderHandle:0x51\n",
            "=> UMDDdiCreateVertexShaderFunc pCode:code pDDICreateVSFunc:vertexRecord ShaderHandle:0x51\n",
            "=> UMDDdiCreateVertexShaderDecl M:0 O:0 S:0 T:0 U:0 I:0 N:0 S:0x51\n",
            "=> UMDDdiSetPixelShader hPixelShader:pixel\n", "=> UMDDdiSetVertexShaderFunc hVSFunc:vertex\n",
            "=> UMDDdiSetVertexShaderDecl hVSDecl:declaration\n", "=> UMDDdiDeletePixelShader hPixelShader:pixel\n",
            "=> UMDDdiDeleteVertexShaderFunc hVSFunc:vertex\n", "=> UMDDdiDeleteVertexShaderDecl hVSDecl:declaration\n",
            "=> UMDDdiSetIndices pSetIndices:indicesRecord Stride:2 hIndexBuffer:indices\n",
            "=> UMDDdiDrawPrimitive pEdgeFlags:edges PrimitiveCount:1 PrimitiveType:1 VStart:0\n"}));
}

TEST_F(UMDDdiEntryTrace, Create_EveryClass_DumpsTheRequestAndTheRuntimesHandle)
{
    const struct
    {
        D3DDDI_RESOURCEFLAGS Flags;
        const char* pFlags;
    } rows[] = {{{.VertexBuffer = 1}, "VertexBuffer | "}, {{.IndexBuffer = 1}, "IndexBuffer | "},
        {{.ZBuffer = 1}, "ZBuffer | "}, {{.CubeMap = 1}, "CubeMap | "}, {{.Texture = 1}, "Texture | "},
        {{.RenderTarget = 1}, "RenderTarget | "}, {{}, ""}, {{.Primary = 1}, "Primary | "}};
    for (const auto& row : rows)
    {
        const std::vector<D3DDDI_SURFACEINFO> surfaces(6, {8, 8, 1, nullptr, 0, 0});
        D3DDDIARG_CREATERESOURCE arg = {};
        arg.Format = D3DDDIFMT_A8R8G8B8;
        arg.Pool = D3DDDIPOOL_VIDEOMEMORY;
        arg.pSurfList = surfaces.data();
        arg.SurfCount = row.Flags.CubeMap ? 6 : 1;
        arg.hResource = reinterpret_cast<HANDLE>(0x1234500000ABCDE0);
        arg.Flags = row.Flags;
        Lines lines = EntryLines({}, [&] { EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &arg), S_OK); });
        for (std::string& line : lines)
            Replace(line, arg.hResource, "object");
        std::erase_if(lines, [](const std::string& line) {
            return line.starts_with("   KMode") || line.starts_with("UMDRsc") || line.starts_with("   - Surface");
        });
        const std::string slots = row.pFlags + std::string(31, ' ');
        EXPECT_EQ(lines,
            (Lines{"=> UMDDdiCreateResource\n",
                "   D3DDDIPOOL_VIDEOMEMORY Format:21 MultisampleType:0 MultisampleQuality:0 SurfCount:" +
                    std::to_string(arg.SurfCount) + " VidPnSourceId:0\n",
                "   Flags: " + slots + "\n", "   hResource driver:object (own) <==> hResource OS:0xabcde0 (saved)\n",
                "   Handle: object\n"}));
        DestroyResource(arg.hResource);
    }
}

TEST_F(UMDDdiEntryTrace, Open_OfTheDriversRecord_DumpsItAndTheRuntimesHandle)
{
    UMDAllocationPrivateData record = {};
    record.Kind = record.TextureKind = 6;
    record.Width = 16;
    record.Height = 8;
    record.Format = 21;
    record.Levels = 1;
    record.ResourceFlags = 0x10801;
    record.DriverHandle = 0x77;
    D3DDDI_OPENALLOCATIONINFO allocation = {};
    allocation.hAllocation = 0x88;
    allocation.pPrivateDriverData = &record;
    allocation.PrivateDriverDataSize = sizeof(record);
    D3DDDIARG_OPENRESOURCE arg = {};
    arg.NumAllocations = 1;
    arg.pOpenAllocationInfo = &allocation;
    arg.hResource = reinterpret_cast<HANDLE>(UINT_PTR{0x99});
    Lines lines = EntryLines({}, [&] { EXPECT_EQ(UMDDdiOpenResource(DeviceHandle(), &arg), S_OK); });
    for (std::string& line : lines)
        Replace(line, arg.hResource, "object");
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("UMDRsc"); });
    EXPECT_EQ(lines, (Lines{"=> UMDDdiOpenResource \n",
                         "   OpenResource hResource: 0x99 hKMResource: 0x0 PrivateDriverDataSize: 0 Flags: 0x0\n",
                         "   - Allocation 0: hAllocation:0x88 PrivateDriverDataSize:76\n", "   ResourceHandle: 0x77\n",
                         "   D3DDDIPOOL_VIDEOMEMORY Format:21 MultisampleType:0 MultisampleQuality:0 SurfCount:1\n",
                         "   - Surface 0: width=16 height=8 depth=1 pSysMem=0x0 SysMemPitch=0 SysMemSlicePitch=0\n",
                         "   Flags: RenderTarget |  Texture | \n",
                         "   hResource driver:object (own) <==> hResource OS:0x99 (saved)\n", "   Handle:object\n"}));
    DestroyResource(arg.hResource);
}

TEST_F(UMDDdiEntryTrace, LockAndDestroy_EveryClass_TellTheKind)
{
    const struct
    {
        HANDLE hResource;
        const char* pLocked;
        const char* pDestroyed;
    } rows[] = {{CreateTexture(), "TEXTURE | ", "   Texture\n"},
        {CreateTarget(), "RENDERTARGET | ", "   RenderTarget\n"},
        {CreateVertices(), "VERTEXBUFFER | ", "   VertexBuffer\n"},
        {CreateIndices(), "INDEXBUFFER | ", "   IndexBuffer\n"}, {CreateDepth(), "", "   ZBuffer\n"},
        {CreateCube(), "", "   CubeTexture\n"}};
    for (const auto& row : rows)
    {
        D3DDDIARG_LOCK arg = {};
        arg.hResource = row.hResource;
        arg.SubResourceIndex = 2;
        arg.Flags.ReadOnly = 1;
        Lines lines = EntryLines({{"object", row.hResource}}, [&] { UMDDdiLock(DeviceHandle(), &arg); });
        ASSERT_GE(lines.size(), 3u);
        lines.resize(3);
        const std::string kind = row.pLocked;
        const std::string slots =
            kind.empty() ? "ReadOnly | " + std::string(10, ' ') : kind + " ReadOnly | " + std::string(9, ' ');
        EXPECT_EQ(
            lines, (Lines{"=> UMDDdiLock hResource:object\n",
                       "   Lock: hResource:object SubResourceIndex:2 Offset:0 Size:0 left:0 right:0 top:0 bottom:0\n",
                       "   Flags: " + slots + "\n"}));
        const D3DDDIARG_UNLOCK unlock = {row.hResource, 2, {}};
        EXPECT_EQ(EntryLines({{"object", row.hResource}}, [&] { UMDDdiUnlock(DeviceHandle(), &unlock); }).front(),
            "=> UMDDdiUnlock hResource:object\n");
        const Lines destroyed = EntryLines({{"object", row.hResource}}, [&] { DestroyResourceTraced(row.hResource); });
        ASSERT_GE(destroyed.size(), 2u);
        EXPECT_EQ(destroyed[0], "=> UMDDdiDestroyResource hResource:object\n");
        EXPECT_EQ(destroyed[1], row.pDestroyed);
    }
}
