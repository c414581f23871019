// The runtime's surface list: one record a sub-resource. Resources keep a copy, because the runtime's own list lives
// only as long as the create call. The pixels that the records point at stay the runtime's.
#pragma once

#include "ddi/ddi.h"

#include <memory>

using UMDSurfaceList = std::unique_ptr<D3DDDI_SURFACEINFO[]>;

/// Surfaces that create arguments really carry: none without a list, whatever the count says.
UINT UMDSurfaceCount(const D3DDDIARG_CREATERESOURCE* pCreate);

/// The first surface of create arguments, which gives a resource its size; all zero when there is none.
D3DDDI_SURFACEINFO UMDFirstSurface(const D3DDDIARG_CREATERESOURCE* pCreate);

/// A zeroed list. @return null when memory is short.
UMDSurfaceList UMDNewSurfaceList(UINT count);

/// Cuts what the list says of sizes to what the delegated object has, so that copies end with the smaller of both.
/// @param pSurfList may be null. @param width, height of level 0, pixels.
/// @param levels of one face: the sub-resources are its levels, over and over.
void UMDFitSurfaceList(D3DDDI_SURFACEINFO* pSurfList, UINT count, UINT width, UINT height, UINT levels);

/// A copy of the list of create arguments. @return null when there is none or memory is short.
UMDSurfaceList UMDCopySurfaceList(const D3DDDIARG_CREATERESOURCE* pCreate);
