#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

#include <wchar.h>

namespace
{
constexpr UINT kLevel = UMDTRACE_RESOURCE | UMDTRACE_DDI;

/// Names of the resource flags, bit 0 first.
constexpr const wchar_t* kResourceFlagNames[32] = {
    L"RenderTarget | ",
    L"ZBuffer | ",
    L"Dynamic | ",
    L"HintStatic | ",
    L"AutogenMipmap | ",
    L"DMap | ",
    L"WriteOnly | ",
    L"NotLockable | ",
    L"Points | ",
    L"RtPatches | ",
    L"NPatches | ",
    L"SharedResource | ",
    L"DiscardRenderTarget | ",
    L"Video | ",
    L"CaptureBuffer | ",
    L"Primary | ",
    L"Texture | ",
    L"CubeMap | ",
    L"Volume | ",
    L"VertexBuffer | ",
    L"IndexBuffer | ",
    L"DecodeRenderTarget | ",
    L"DecodeCompressedBuffer | ",
    L"VideoProcessRenderTarget | ",
    L"CpuOptimized | ",
    L"MightDrawFromLocked | ",
    L"Overlay | ",
    L"MatchGdiPrimary | ",
    L"InterlacedRefresh | ",
    L"TextApi | ",
    L"RestrictedContent | ",
    L"RestrictSharedAccess",
};

/// Lines of the types that have a name here, UMDRESOURCETYPE_UNKNOWN first.
constexpr const wchar_t* kTypeTexts[] = {
    L"   Unknown\n",
    L"   Shared\n",
    L"   ZBuffer\n",
    L"   IndexBuffer\n",
    L"   VertexBuffer\n",
    L"   RenderTarget\n",
    L"   Texture\n",
    L"   CubeTexture\n",
};
static_assert(ARRAYSIZE(kTypeTexts) == UMDRESOURCETYPE_CUBETEXTURE + 1);

const wchar_t* PoolName(D3DDDI_POOL pool)
{
    switch (pool)
    {
    case D3DDDIPOOL_SYSTEMMEM:
        return L"D3DDDIPOOL_SYSTEMMEM";
    case D3DDDIPOOL_VIDEOMEMORY:
        return L"D3DDDIPOOL_VIDEOMEMORY";
    case D3DDDIPOOL_LOCALVIDMEM:
        return L"D3DDDIPOOL_LOCALVIDMEM";
    case D3DDDIPOOL_NONLOCALVIDMEM:
        return L"D3DDDIPOOL_NONLOCALVIDMEM";
    default:
        return L"D3DDDIPOOL_ invalid value!";
    }
}

// 32 slots, filled from the front by the flags that are set, with a blank between two slots.
void PrintResourceFlags(UINT flags)
{
    wchar_t slots[1024] = {};
    UINT empty = 32;
    for (UINT bit = 0; bit < 32; ++bit)
    {
        if (!(flags & (1u << bit)))
            continue;
        if (empty != 32)
            wcscat_s(slots, ARRAYSIZE(slots), L" ");
        wcscat_s(slots, ARRAYSIZE(slots), kResourceFlagNames[bit]);
        --empty;
    }
    for (UINT blank = empty == 32 ? 31 : empty; blank > 0; --blank)
        wcscat_s(slots, ARRAYSIZE(slots), L" ");
    UMD_TRACE(kLevel, L"   Flags: %s\n", slots);
}

}  // namespace

void UMDUtilDebugTracePrintSurface(UINT index, const D3DDDI_SURFACEINFO& surface)
{
    UMD_TRACE(kLevel, L"   - Surface %d: width=%d height=%d depth=%d pSysMem=0x%x SysMemPitch=%d SysMemSlicePitch=%d\n",
        index, surface.Width, surface.Height, surface.Depth, UMDLow32(surface.pSysMem), surface.SysMemPitch,
        surface.SysMemSlicePitch);
}

void UMDUtilDebugTracePrintResourceType(UMDRESOURCETYPE type)
{
    if (type < ARRAYSIZE(kTypeTexts))
        UMD_TRACE(UMDTRACE_RESOURCE, kTypeTexts[type]);
}

void UMDUtilDebugTracePrintCreateResource(const D3DDDIARG_CREATERESOURCE* pCreateResource)
{
    if (!(g_DebugLevelUMD & kLevel))
        return;
    UMD_TRACE(kLevel, L"   %s Format:%d MultisampleType:%d MultisampleQuality:%d SurfCount:%d VidPnSourceId:%d\n",
        PoolName(pCreateResource->Pool), pCreateResource->Format, pCreateResource->MultisampleType,
        pCreateResource->MultisampleQuality, pCreateResource->SurfCount, pCreateResource->VidPnSourceId);
    for (UINT i = 0; i < pCreateResource->SurfCount; ++i)
        UMDUtilDebugTracePrintSurface(i, pCreateResource->pSurfList[i]);
    PrintResourceFlags(pCreateResource->Flags.Value);
}
