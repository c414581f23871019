#include "RandomResources.h"

#include "CreateRequest.h"
#include "RandomRecords.h"

#include "kernel/UMDAllocationPrivateData.h"

#include <algorithm>

namespace tesslo::test
{

namespace
{

constexpr UINT kExtent = 65;  ///< pixels: more than one block of the driver's walks, and an odd rest
constexpr size_t kMost = 40;  ///< things that live at a time
constexpr GUID kProgressive = {0x5a54a0c9, 0xc7ec, 0x4bd9, {0x8e, 0xde, 0xf3, 0xc7, 0x5d, 0xc4, 0x39, 0x3b}};

struct Resource
{
    RandomKind m_Kind;
    UINT m_Flags;
};

constexpr Resource kResources[] = {
    {RandomKind::Texture, kFlagTexture},
    {RandomKind::Texture, kFlagTexture | kFlagDynamic},
    {RandomKind::Texture, kFlagTexture | kFlagRenderTarget},
    {RandomKind::Texture, kFlagTexture | kFlagRenderTarget | kFlagSharedResource},
    {RandomKind::Cube, kFlagTexture | kFlagCubeMap},
    {RandomKind::Surface, 0},
    {RandomKind::Surface, kFlagDecodeRenderTarget},
    {RandomKind::Target, kFlagRenderTarget},
    {RandomKind::Target, kFlagRenderTarget | kFlagPrimary},
    {RandomKind::Target, kFlagRenderTarget | kFlagVideoProcessRenderTarget},
    {RandomKind::Depth, kFlagZBuffer},
    {RandomKind::Vertices, kFlagVertexBuffer},
    {RandomKind::Vertices, kFlagVertexBuffer | kFlagDynamic | kFlagWriteOnly},
    {RandomKind::Indices, kFlagIndexBuffer},
};

bool IsBuffer(RandomKind kind)
{
    return kind == RandomKind::Vertices || kind == RandomKind::Indices;
}

/// The runtime's memory of a surface: it ends with the last pixel. Now and then its rows are too short, and it ends
/// with the last of them.
FencedBytes MakeMemory(RandomWorld& world, D3DDDIFORMAT format, D3DDDI_SURFACEINFO& surface)
{
    const ImageShape tight{format, surface.Width, surface.Height, TightPitch(format, surface.Width)};
    constexpr UINT kPaddings[] = {0, 0, 4, 13};
    surface.SysMemPitch = tight.Pitch + kPaddings[world.Below(std::size(kPaddings))];
    size_t size = ImageBytes({format, tight.Width, tight.Height, surface.SysMemPitch});
    if (tight.Pitch > 0 && world.Chance(5))
    {
        surface.SysMemPitch = world.Below(tight.Pitch);
        size = (ImageBytes(tight) + tight.Pitch - 1) / tight.Pitch * surface.SysMemPitch;
    }
    FencedBytes memory(std::max<size_t>(size, 1));
    surface.pSysMem = memory.Get();
    return memory;
}

FencedBytes MakeBufferMemory(RandomWorld& world, D3DDDI_SURFACEINFO& surface)
{
    surface.SysMemPitch = surface.Width + (world.Chance(10) ? world.Below(9) : 0);
    FencedBytes memory(std::max(surface.SysMemPitch, 1U));
    surface.pSysMem = memory.Get();
    return memory;
}

D3DDDIFORMAT FormatOf(RandomWorld& world, RandomKind kind)
{
    switch (kind)
    {
    case RandomKind::Vertices:
        return D3DDDIFMT_VERTEXDATA;
    case RandomKind::Indices:
        return world.Chance(50) ? D3DDDIFMT_INDEX16 : D3DDDIFMT_INDEX32;
    case RandomKind::Depth:
        return world.Chance(50) ? D3DDDIFMT_D24S8 : D3DDDIFMT_D16;
    default:
        return world.Format();
    }
}

void CreateResource(RandomWorld& world)
{
    const Resource& resource = kResources[world.Below(std::size(kResources))];
    const UINT levels = IsBuffer(resource.m_Kind) ? 1 : 1 + world.Below(4);
    const D3DDDI_POOL pool = world.Chance(50) ? kSystem : kVideo;
    const D3DDDIFORMAT format = FormatOf(world, resource.m_Kind);
    const UINT width = IsBuffer(resource.m_Kind) ? world.Below(300) : world.Below(kExtent);
    const UINT height = IsBuffer(resource.m_Kind) ? 1 : world.Below(kExtent);
    CreateRequest request(resource.m_Flags, pool, format, width, height, levels);
    std::list<FencedBytes> memory;
    for (D3DDDI_SURFACEINFO& surface : request.m_Surfaces)
        if (pool == kSystem && !world.Chance(2))
            memory.push_back(
                IsBuffer(resource.m_Kind) ? MakeBufferMemory(world, surface) : MakeMemory(world, format, surface));
    // The list ends at a fence, too; now and then the runtime says less of it, or counts other levels.
    auto* pSurfaces =
        reinterpret_cast<D3DDDI_SURFACEINFO*>(world.Bytes(request.m_Surfaces.size() * sizeof(D3DDDI_SURFACEINFO)));
    std::ranges::copy(request.m_Surfaces, pSurfaces);
    request.m_Arg.pSurfList = world.Chance(1) ? nullptr : pSurfaces;
    if (world.Chance(5))
        request.m_Arg.SurfCount = world.Below(request.m_Arg.SurfCount + 1);
    if (world.Chance(5))
        request.m_Arg.MipLevels = world.Number();
    request.m_Arg.VidPnSourceId = world.Chance(90) ? world.Below(6) : world.Number();
    request.m_Arg.Rotation = static_cast<D3DDDI_ROTATION>(world.Chance(95) ? 1 + world.Below(4) : world.Number());
    if (world.Lies())
        request.m_Arg.SurfCount = world.Number();
    auto* pCreate = world.Keep(request.m_Arg);
    if (world.Functions().pfnCreateResource(world.Device(), pCreate) == S_OK &&
        pCreate->hResource != request.m_Arg.hResource)
        world.Add(resource.m_Kind, pCreate->hResource, std::move(memory));
}

void DestroyResource(RandomWorld& world)
{
    const HANDLE handle =
        world.Chance(60) ? world.Image() : world.Handle(RandomKind::Vertices, RandomKind::Indices, RandomKind::Depth);
    world.Functions().pfnDestroyResource(world.Device(), handle);
    world.Remove(handle);
}

void CreateOrDestroy(RandomWorld& world)
{
    if (world.Count() < kMost)
        CreateResource(world);
    else
        DestroyResource(world);
}

void OpenResource(RandomWorld& world)
{
    UMDAllocationPrivateData record{};
    record.Kind = world.Chance(90) ? UMDALLOCATIONKIND_OTHER : world.Number();
    record.Width = world.Below(kExtent);
    record.Height = world.Below(kExtent);
    record.Format = world.Format();
    record.Levels = world.Chance(90) ? 1 + world.Below(4) : world.Number();
    record.TextureKind = world.Chance(90) ? 6 : world.Number();
    record.SharedHandle = world.Number();
    const size_t size = world.Chance(90) ? sizeof(record) : world.Below(100);
    BYTE* pData = world.Bytes(size);
    if (pData)
        std::memcpy(pData, &record, std::min(size, sizeof(record)));
    D3DDDI_OPENALLOCATIONINFO info{};
    info.hAllocation = world.Number();
    info.pPrivateDriverData = pData;
    info.PrivateDriverDataSize = static_cast<UINT>(size);
    if (world.Lies())
        info.pPrivateDriverData = world.Garbage();
    D3DDDIARG_OPENRESOURCE open{};
    open.NumAllocations = 1;
    open.pOpenAllocationInfo = world.Keep(info);
    open.hResource = reinterpret_cast<HANDLE>(0x77);
    auto* pOpen = world.Keep(open);
    if (world.Functions().pfnOpenResource(world.Device(), pOpen) == S_OK && pOpen->hResource != open.hResource)
        world.Add(RandomKind::Texture, pOpen->hResource);
}

template <auto kCreate, typename Record, RandomKind kKind>
void CreateShader(RandomWorld& world)
{
    if (world.Count() >= kMost)
        return;
    const UINT words = 2 + world.Below(20);
    auto* pCode = reinterpret_cast<UINT*>(world.Bytes(words * sizeof(UINT)));
    pCode[0] = 0xFFFE0200;
    pCode[words - 1] = 0x0000FFFF;
    auto* pCreate = world.Keep(Record{words * static_cast<UINT>(sizeof(UINT)), nullptr});
    if ((world.Functions().*kCreate)(world.Device(), pCreate, pCode) == S_OK)
        world.Add(kKind, pCreate->ShaderHandle);
}

void CreateDeclaration(RandomWorld& world)
{
    if (world.Count() >= kMost)
        return;
    const UINT count = world.Chance(95) ? 1 + world.Below(10) : 60 + world.Below(10);
    const auto* pElements =
        reinterpret_cast<const D3DDDIVERTEXELEMENT*>(world.Bytes(count * sizeof(D3DDDIVERTEXELEMENT)));
    auto* pCreate = world.Keep(D3DDDIARG_CREATEVERTEXSHADERDECL{count, nullptr});
    if (world.Functions().pfnCreateVertexShaderDecl(world.Device(), pCreate, pElements) == S_OK)
        world.Add(RandomKind::Declaration, pCreate->ShaderHandle);
}

/// Calls an entry whose argument is a handle of one kind. @tparam kEnds whether the handle is no more behind it.
template <auto kEntry, RandomKind kKind, bool kEnds>
void CallHandle(RandomWorld& world)
{
    const HANDLE handle = world.Handle(kKind);
    (world.Functions().*kEntry)(world.Device(), handle);
    if (kEnds)
        world.Remove(handle);
}

void CreateVideo(RandomWorld& world)
{
    if (world.Count() >= kMost)
        return;
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create{};
    create.pVideoProcGuid = world.Keep(kProgressive);
    create.RenderTargetFormat = world.Format();
    create.VideoDesc.SampleWidth = world.Below(kExtent);
    create.VideoDesc.SampleHeight = world.Below(kExtent);
    create.MaxSubStreams = world.Number();
    auto* pCreate = world.Keep(create);
    if (world.Functions().pfnCreateVideoProcessDevice(world.Device(), pCreate) == S_OK)
        world.Add(RandomKind::Video, pCreate->hVideoProcess);
}

}  // namespace

const std::vector<RandomEntry>& RandomResourceEntries()
{
    using F = D3DDDI_DEVICEFUNCS;
    using K = RandomKind;
    static const std::vector<RandomEntry> entries{
        {"pfnCreateResource", 30, CreateOrDestroy},
        {"pfnDestroyResource", 15, DestroyResource},
        {"pfnOpenResource", 4, OpenResource},
        {"pfnCreateVertexShaderFunc", 3,
            CreateShader<&F::pfnCreateVertexShaderFunc, D3DDDIARG_CREATEVERTEXSHADERFUNC, K::VertexShader>},
        {"pfnCreatePixelShader", 3,
            CreateShader<&F::pfnCreatePixelShader, D3DDDIARG_CREATEPIXELSHADER, K::PixelShader>},
        {"pfnCreateVertexShaderDecl", 3, CreateDeclaration},
        {"pfnSetVertexShaderFunc", 3, CallHandle<&F::pfnSetVertexShaderFunc, K::VertexShader, false>},
        {"pfnSetPixelShader", 3, CallHandle<&F::pfnSetPixelShader, K::PixelShader, false>},
        {"pfnSetVertexShaderDecl", 3, CallHandle<&F::pfnSetVertexShaderDecl, K::Declaration, false>},
        {"pfnDeleteVertexShaderFunc", 3, CallHandle<&F::pfnDeleteVertexShaderFunc, K::VertexShader, true>},
        {"pfnDeletePixelShader", 3, CallHandle<&F::pfnDeletePixelShader, K::PixelShader, true>},
        {"pfnDeleteVertexShaderDecl", 3, CallHandle<&F::pfnDeleteVertexShaderDecl, K::Declaration, true>},
        {"pfnCreateVideoProcessDevice", 2, CreateVideo},
        {"pfnVideoProcessBeginFrame", 2, CallHandle<&F::pfnVideoProcessBeginFrame, K::Video, false>},
        {"pfnDestroyVideoProcessDevice", 2, CallHandle<&F::pfnDestroyVideoProcessDevice, K::Video, true>},
    };
    return entries;
}

}  // namespace tesslo::test
