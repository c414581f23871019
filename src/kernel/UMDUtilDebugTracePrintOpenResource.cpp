#include "kernel/UMDUtilDebugTracePrintOpenResource.h"

#include "kernel/UMDAllocationPrivateData.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

namespace
{
constexpr UINT kLevel = UMDTRACE_RESOURCE | UMDTRACE_DDI;

// What the creating process stored; it keeps nothing of single surfaces.
void PrintPrivateDescription(const UMDAllocationPrivateData& data)
{
    UMD_TRACE(kLevel, L"   ResourceHandle: 0x%x\n", data.DriverHandle);
    UMD_TRACE(kLevel, L"   %s Format:%d MultisampleType:%d MultisampleQuality:%d SurfCount:%d\n",
        L"D3DDDIPOOL_VIDEOMEMORY", data.Format, 0, 0, data.Levels);
    D3DDDI_SURFACEINFO surface = {};
    surface.Width = data.Width;
    surface.Height = data.Height;
    surface.Depth = data.Levels;  // the count stands for the depth
    for (UINT i = 0; i < data.Levels; ++i)
        UMDUtilDebugTracePrintSurface(i, surface);
    const D3DDDI_RESOURCEFLAGS flags = {.Value = data.ResourceFlags};
    UMD_TRACE(kLevel, L"   Flags: %s %s\n", flags.RenderTarget ? L"RenderTarget | " : L"",
        flags.Texture ? L"Texture | " : L"");
}
}  // namespace

void UMDUtilDebugTracePrintOpenResource(const D3DDDIARG_OPENRESOURCE* pOpenResource)
{
    if (!(g_DebugLevelUMD & kLevel))
        return;
    UMD_TRACE(kLevel, L"   OpenResource hResource: 0x%x hKMResource: 0x%x PrivateDriverDataSize: %d Flags: 0x%x\n",
        UMDLow32(pOpenResource->hResource), pOpenResource->hKMResource, pOpenResource->PrivateDriverDataSize,
        pOpenResource->Flags.Value);
    if (pOpenResource->Flags.Fullscreen)
        UMD_TRACE(kLevel, L"   Fullscreen\n");
    if (pOpenResource->Flags.AlphaOverride)
        UMD_TRACE(kLevel, L"   AlphaOverride\n");
    for (UINT i = 0; i < pOpenResource->NumAllocations; ++i)
    {
        const D3DDDI_OPENALLOCATIONINFO& allocation = pOpenResource->pOpenAllocationInfo[i];
        UMD_TRACE(kLevel, L"   - Allocation %d: hAllocation:0x%x PrivateDriverDataSize:%d\n", i, allocation.hAllocation,
            allocation.PrivateDriverDataSize);
        UMDAllocationPrivateData record = {};
        if (UMDReadAllocationPrivateData(allocation.pPrivateDriverData, allocation.PrivateDriverDataSize, &record))
            PrintPrivateDescription(record);
    }
}
