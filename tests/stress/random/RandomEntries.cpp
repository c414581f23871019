#include "RandomEntries.h"

#include "RandomRecords.h"
#include "RandomResources.h"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace tesslo::test
{

namespace
{

template <typename Argument>
Argument MakeArgument(RandomWorld& world)
{
    using Pointee = std::remove_const_t<std::remove_pointer_t<Argument>>;
    if constexpr (std::is_same_v<Argument, HANDLE>)
        return world.Handle();  // of queries, decoders and others that there are none of
    else if constexpr (std::is_pointer_v<Argument> && std::is_class_v<Pointee>)
        return MakeRecord<Pointee>(world);
    else if constexpr (std::is_pointer_v<Argument>)
        return reinterpret_cast<Argument>(world.Bytes((1 + world.Below(64)) * sizeof(UINT64)));
    else
        return static_cast<Argument>(world.Number());
}

/// Any entry whose arguments are independent of each other.
template <auto kEntry, typename... Arguments>
void CallWith(RandomWorld& world, HRESULT(APIENTRY* pEntry)(HANDLE, Arguments...))
{
    if (!pEntry)
        return;  // a slot that the driver leaves empty
    // Braces, so that the arguments are made from left to right.
    const std::tuple<Arguments...> arguments{MakeArgument<Arguments>(world)...};
    std::apply([&](auto... values) { pEntry(world.Device(), values...); }, arguments);
}

template <auto kEntry>
void CallAny(RandomWorld& world)
{
    CallWith<kEntry>(world, world.Functions().*kEntry);
}

// Shader constants: as many bytes as there are registers.
template <auto kEntry, typename Record, typename Data, UINT kPerRegister>
void SetConstants(RandomWorld& world)
{
    const UINT count = 1 + world.Below(32);
    const auto* pData = reinterpret_cast<const Data*>(world.Bytes(count * kPerRegister * sizeof(UINT)));
    (world.Functions().*kEntry)(world.Device(), world.Keep(Record{world.Number(), count}), pData);
}

void Clear(RandomWorld& world)
{
    const UINT count = world.Below(4);
    auto* pRects = reinterpret_cast<RECT*>(world.Bytes(count * sizeof(RECT)));
    for (UINT i = 0; i < count; ++i)
        pRects[i] = world.Rect();
    world.Functions().pfnClear(world.Device(), MakeRecord<D3DDDIARG_CLEAR>(world), count, pRects);
}

void SetTexture(RandomWorld& world)
{
    const HANDLE hTexture = world.Chance(80) ? world.Handle(RandomKind::Texture, RandomKind::Cube) : world.Image();
    world.Functions().pfnSetTexture(world.Device(), world.Number(), hTexture);
}

void DestroyQuery(RandomWorld& world)
{
    const HANDLE handle = world.Handle();
    world.Functions().pfnDestroyQuery(world.Device(), handle);
    world.Remove(handle);
}

void Present(RandomWorld& world)
{
    const HANDLE hSource = world.Chance(80) ? world.Handle(RandomKind::Target) : world.Image();
    if (world.Chance(30))
    {
        world.Driver().PresentBlit(hSource);
        return;
    }
    D3DDDIARG_PRESENT present{};
    present.hSrcResource = hSource;
    present.SrcSubResourceIndex = world.Number();
    present.Flags.Flip = world.Chance(95);
    world.Functions().pfnPresent(world.Device(), world.Keep(present));
}

void SetStreamSourceUm(RandomWorld& world)
{
    FencedBytes vertices(1 + world.Below(200));
    const D3DDDIARG_SETSTREAMSOURCEUM stream{world.Chance(90) ? 0 : world.Number(), world.Below(33)};
    world.Functions().pfnSetStreamSourceUm(world.Device(), world.Keep(stream), vertices.Get());
    world.SetUserVertices(std::move(vertices));
}

void VideoBlt(RandomWorld& world)
{
    const UINT count = 1 + world.Below(3);
    auto* pSamples = reinterpret_cast<DXVADDI_VIDEOSAMPLE*>(world.Bytes(count * sizeof(DXVADDI_VIDEOSAMPLE)));
    for (UINT i = 0; i < count; ++i)
    {
        pSamples[i].SrcResource = world.Image();
        pSamples[i].SrcRect = world.Rect();
        pSamples[i].DstRect = world.Rect();
    }
    D3DDDIARG_VIDEOPROCESSBLT blt{};
    blt.hVideoProcess = world.Handle(RandomKind::Video);
    blt.TargetRect = world.Rect();
    blt.pSrcSurfaces = pSamples;
    blt.NumSrcSurfaces = count;
    world.Functions().pfnVideoProcessBlt(world.Device(), world.Keep(blt));
}

/// Bytes of an answer: what the runtime gives each type of query.
UINT AnswerSize(RandomWorld& world, D3DDDICAPS_TYPE type)
{
    constexpr UINT kFormats = 62, kQueries = 15, kRoom = 4096;
    switch (type)
    {
    case D3DDDICAPS_DDRAW:
    case D3DDDICAPS_DDRAW_MODE_SPECIFIC:
    case D3DDDICAPS_GETD3D8CAPS:
        return 1 + world.Below(kRoom);
    case D3DDDICAPS_GETFORMATDATA:
        return kFormats * sizeof(FORMATOP);
    case D3DDDICAPS_GETD3DQUERYDATA:
        return kQueries * sizeof(D3DDDIQUERYTYPE);
    case D3DDDICAPS_GETD3D9CAPS:
        return sizeof(D3DCAPS9);
    default:
        return kRoom;
    }
}

// The adapter's functions are called without a guard: nothing lies here.
void GetCaps(RandomWorld& world)
{
    constexpr UINT kInput = 256;
    D3DDDIARG_GETCAPS caps{};
    caps.Type = static_cast<D3DDDICAPS_TYPE>(world.Chance(90) ? world.Below(46) : world.Number());
    caps.DataSize = AnswerSize(world, caps.Type);
    caps.pData = world.Bytes(caps.DataSize);
    // The inputs begin with the processor's name, where they have one.
    caps.pInfo = world.Bytes(kInput);
    const GUID* pGuid = world.Keep(GUID{world.Number(), 0, 0, {}});
    std::memcpy(caps.pInfo, &pGuid, sizeof(pGuid));
    DriverDll& dll = *world.Driver().m_Dll;
    dll.m_AdapterFuncs.pfnGetCaps(dll.m_hAdapter, world.Keep(caps));
}

/// Rows in place of those that are made without knowing what they are about.
std::vector<RandomEntry> KnownEntries()
{
    using F = D3DDDI_DEVICEFUNCS;
    std::vector<RandomEntry> entries{
        {"pfnSetVertexShaderConst", 2,
            SetConstants<&F::pfnSetVertexShaderConst, D3DDDIARG_SETVERTEXSHADERCONST, void, 4>},
        {"pfnSetPixelShaderConst", 2,
            SetConstants<&F::pfnSetPixelShaderConst, D3DDDIARG_SETPIXELSHADERCONST, FLOAT, 4>},
        {"pfnSetPixelShaderConstI", 2,
            SetConstants<&F::pfnSetPixelShaderConstI, D3DDDIARG_SETPIXELSHADERCONSTI, INT, 4>},
        {"pfnSetPixelShaderConstB", 2,
            SetConstants<&F::pfnSetPixelShaderConstB, D3DDDIARG_SETPIXELSHADERCONSTB, BOOL, 1>},
        {"pfnClear", 3, Clear},
        {"pfnSetTexture", 3, SetTexture},
        {"pfnDestroyQuery", 1, DestroyQuery},
        {"pfnPresent", 5, Present},
        {"pfnSetStreamSourceUm", 3, SetStreamSourceUm},
        {"pfnVideoProcessBlt", 3, VideoBlt},
        {"pfnBlt", 15, CallAny<&F::pfnBlt>},
        {"pfnTexBlt", 15, CallAny<&F::pfnTexBlt>},
        {"pfnLock", 10, CallAny<&F::pfnLock>},
        {"pfnUnlock", 10, CallAny<&F::pfnUnlock>},
        {"pfnColorFill", 4, CallAny<&F::pfnColorFill>},
        {"pfnSetStreamSource", 4, CallAny<&F::pfnSetStreamSource>},
        {"pfnDrawPrimitive", 4, CallAny<&F::pfnDrawPrimitive>},
        {"pfnDrawPrimitive2", 4, CallAny<&F::pfnDrawPrimitive2>},
        {"pfnDrawIndexedPrimitive2", 4, CallAny<&F::pfnDrawIndexedPrimitive2>},
        {"pfnSetRenderTarget", 4, CallAny<&F::pfnSetRenderTarget>},
        // Belongs to the end of a run.
        {"pfnDestroyDevice", 0, CallAny<&F::pfnDestroyDevice>},
    };
    std::ranges::copy(RandomResourceEntries(), std::back_inserter(entries));
    return entries;
}

std::vector<RandomEntry> AllEntries()
{
    std::vector<RandomEntry> entries{
#define TESSLO_ENTRY(name) {"pfn" #name, 1, CallAny<&D3DDDI_DEVICEFUNCS::pfn##name>},
#include "DeviceEntries.inc"
#undef TESSLO_ENTRY
    };
    static_assert(sizeof(D3DDDI_DEVICEFUNCS) == 121 * sizeof(void*));
    for (const RandomEntry& known : KnownEntries())
        *std::ranges::find(entries, std::string_view(known.m_pName),
            [](const RandomEntry& entry) { return std::string_view(entry.m_pName); }) = known;
    entries.push_back({"pfnGetCaps", 5, GetCaps});
    return entries;
}

}  // namespace

const std::vector<RandomEntry>& RandomEntries()
{
    static const std::vector<RandomEntry> entries = AllEntries();
    return entries;
}

}  // namespace tesslo::test
