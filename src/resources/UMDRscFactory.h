// Chooses and makes the object that mirrors a resource of the runtime.
//
// A resource that could not be made gives back what it holds before it goes: nothing is left behind a failure.
#pragma once

#include "resources/UMDRscBase.h"

#include <memory>

/// Makes the object of the class that the flags ask for, not yet created: the first flag of the factory's order
/// decides.
/// @return null when memory is short.
std::unique_ptr<UMDRscBase> UMDRscFactoryNew(UMDDdiDevice* pDevice, const D3DDDIARG_CREATERESOURCE* pCreate);

/// Makes and creates the object of the class that the flags ask for. Flags that no class mirrors give a bare object,
/// which the runtime can name and destroy, no more.
/// @param ppResource receives the object; untouched on failure.
/// @return E_OUTOFMEMORY, or E_FAIL when the delegated object could not be created (traced by its class).
HRESULT UMDRscFactoryCreate(
    UMDDdiDevice* pDevice, const D3DDDIARG_CREATERESOURCE* pCreate, std::unique_ptr<UMDRscBase>* ppResource);

/// Opens the texture behind the first allocation, if it is one of this driver's. Somebody else's allocation, like a
/// shortage of memory, gives no object and no failure.
/// @param ppResource receives the object; null when there is none.
HRESULT UMDRscFactoryOpen(
    UMDDdiDevice* pDevice, const D3DDDIARG_OPENRESOURCE* pOpen, std::unique_ptr<UMDRscBase>* ppResource);
