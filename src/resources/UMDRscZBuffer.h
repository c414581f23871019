// A depth buffer, perhaps with a stencil. It cannot be locked. Runtime's thread only.
#pragma once

#include "resources/UMDRscBase.h"
#include "util/UMDComPtr.h"

class UMDRscZBuffer : public UMDRscBase
{
public:
    /// @param openResource non-zero leaves the object empty: depth buffers are not shared.
    UMDRscZBuffer(
        UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate, BOOL openResource);
    ~UMDRscZBuffer() override;

    HRESULT Create() override;
    void Destroy() override;

    /// The delegated depth-stencil surface, borrowed; null until Create.
    IDirect3DSurface9* GetSurface() const { return m_pSurface.Get(); }

private:
    UINT m_Width;   ///< pixels
    UINT m_Height;  ///< pixels
    D3DDDIFORMAT m_Format;
    D3DMULTISAMPLE_TYPE m_MultisampleType;
    UINT m_MultisampleQuality;
    UMDComPtr<IDirect3DSurface9> m_pSurface;
    UINT m_SurfCount;  ///< entries of the runtime's list
};
