// Root of everything that the runtime creates through the driver: resources, shaders and vertex declarations.
//
// The object's address is the handle that the runtime holds. Each object mirrors one object of the delegated device.
// Runtime's thread only.
#pragma once

#include "ddi/ddi.h"
#include "util/UMDResourceType.h"

class UMDDdiDevice;

class UMDRscBase
{
public:
    /// @param pDevice     the owning device; borrowed, it outlives the object.
    /// @param hResourceOS the runtime's own handle, null for shaders.
    UMDRscBase(UMDDdiDevice* pDevice, HANDLE hResourceOS, UMDRESOURCETYPE type);

    // Virtual operations, in slot order.
    virtual ~UMDRscBase();

    /// Makes the bits accessible. The base answers E_NOTIMPL.
    /// @param areaValid    non-zero for an area lock.
    /// @param offset, size the request's range in bytes (for an area lock the area's left and top).
    /// @param ppData, pPitch receive the address and the bytes from row to row.
    /// @param flags        D3DLOCK flags.
    virtual HRESULT Lock(UINT areaValid, UINT offset, UINT size, void** ppData, UINT* pPitch, DWORD flags);
    virtual HRESULT Unlock();

    /// The delegated pool: D3DPOOL_DEFAULT or D3DPOOL_SYSTEMMEM.
    virtual D3DPOOL GetPool() const;
    virtual D3DDDIFORMAT GetFormat() const;

    /// Creates the delegated object. The base answers E_FAIL.
    virtual HRESULT Create();

    /// Releases the delegated object and the kernel-mode allocation.
    virtual void Destroy();

    /// True for a surface that is not a render target.
    virtual bool IsOffscreenPlain() const;

    UMDRESOURCETYPE GetType() const { return m_Type; }

protected:
    UMDDdiDevice* m_pDevice;                 ///< borrowed
    IDirect3DDevice9Ex* m_pDeviceDelegated;  ///< borrowed; null when the delegated device does not exist
    HANDLE m_hResourceOS;                    ///< the runtime's handle of this object
    UMDRESOURCETYPE m_Type;
};

/// Resource handles become resource objects, and objects handles, here and nowhere else. Null stays null.
inline UMDRscBase* ToResource(HANDLE hResource)
{
    return static_cast<UMDRscBase*>(hResource);
}

inline HANDLE ToHandle(UMDRscBase* pResource)
{
    return pResource;
}

// What a trace shows of a handle that may be null.
inline UMDRESOURCETYPE ResourceTypeOrNone(HANDLE hResource)
{
    return hResource ? ToResource(hResource)->GetType() : UMDRESOURCETYPE_NONE;
}

inline UINT ResourceTypeOrZero(HANDLE hResource)
{
    return hResource ? static_cast<UINT>(ToResource(hResource)->GetType()) : 0;
}

inline UINT ResourcePoolOrZero(HANDLE hResource)
{
    return hResource ? ToResource(hResource)->GetPool() : 0;
}
