#include "resources/UMDSurfaceList.h"

#include <algorithm>
#include <new>

UINT UMDSurfaceCount(const D3DDDIARG_CREATERESOURCE* pCreate)
{
    return pCreate->pSurfList ? pCreate->SurfCount : 0;
}

D3DDDI_SURFACEINFO UMDFirstSurface(const D3DDDIARG_CREATERESOURCE* pCreate)
{
    return UMDSurfaceCount(pCreate) ? pCreate->pSurfList[0] : D3DDDI_SURFACEINFO{};
}

UMDSurfaceList UMDNewSurfaceList(UINT count)
{
    return UMDSurfaceList(new (std::nothrow) D3DDDI_SURFACEINFO[count]());
}

UMDSurfaceList UMDCopySurfaceList(const D3DDDIARG_CREATERESOURCE* pCreate)
{
    const UINT count = UMDSurfaceCount(pCreate);
    if (!count)
        return nullptr;
    UMDSurfaceList pSurfList = UMDNewSurfaceList(count);
    if (pSurfList)
        std::copy_n(pCreate->pSurfList, count, pSurfList.get());
    return pSurfList;
}

void UMDFitSurfaceList(D3DDDI_SURFACEINFO* pSurfList, UINT count, UINT width, UINT height, UINT levels)
{
    for (UINT i = 0; pSurfList && i < count; ++i)
    {
        D3DDDI_SURFACEINFO& surface = pSurfList[i];
        surface.Width = std::min(surface.Width, std::max(width >> i % levels, 1u));
        surface.Height = std::min(surface.Height, std::max(height >> i % levels, 1u));
    }
}
