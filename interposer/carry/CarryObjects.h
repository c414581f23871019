// Which object of the platform's the driver has what of. A record hangs in the object's private data and dies with it;
// what it held is then buried: given back to the driver before the next call is carried.
#pragma once

#include "interposer/carry/CarryResource.h"

#include <memory>
#include <utility>
#include <vector>

/// Hangs it on the object. What hung there before is buried.
/// @param surfaces those of a texture's levels, which are found as well as the texture itself; borrowed.
void CarryHang(IDirect3DResource9* pObject, std::shared_ptr<CarryResource> pResource,
    const std::vector<IDirect3DSurface9*>& surfaces = {});

/// A resource, and the level of it that a surface is.
struct CarryPlace
{
    std::shared_ptr<CarryResource> m_pResource;  ///< null if the driver has nothing of the object
    UINT m_Level = 0;

    explicit operator bool() const { return m_pResource != nullptr; }
    CarryResource* operator->() const { return m_pResource.get(); }
};
CarryPlace CarryFind(const void* pObject);

/// Those whose objects have died since the last call.
std::vector<std::shared_ptr<CarryResource>> CarryTakeDead();
