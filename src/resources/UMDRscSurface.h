// A plain surface or render target, the primaries that reach the virtual monitor among them.
//
// Owns one delegated surface and a kernel-mode allocation, which exists from construction to Destroy. Runtime's thread
// only.
#pragma once

#include "resources/UMDRscRenderTargetCapable.h"
#include "resources/UMDSurfaceList.h"

class UMDRscSurface : public UMDRscRenderTargetCapable
{
public:
    /// @param openResource  non-zero leaves the object empty: only textures can be opened.
    /// @param offscreenPlain true: Create makes a plain surface, not a render target.
    UMDRscSurface(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate, BOOL openResource,
        D3DPOOL pool, bool offscreenPlain);
    ~UMDRscSurface() override;

    /// Locks the whole surface, whatever the area and the flags say.
    HRESULT Lock(UINT areaValid, UINT offset, UINT size, void** ppData, UINT* pPitch, DWORD flags) override;
    HRESULT Unlock() override;
    D3DPOOL GetPool() const override { return m_Pool; }
    D3DDDIFORMAT GetFormat() const override { return m_Format; }
    HRESULT Create() override;
    void Destroy() override;
    bool IsOffscreenPlain() const override { return m_bOffscreenPlain; }
    IDirect3DSurface9* GetSurface(UINT face, UINT level) override;
    HRESULT Blt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstRect) override;
    HRESULT CopyFrom(const BYTE* pSrc, UINT width, UINT height, UINT bytesPerPixel, UINT srcPitch) override;
    HRESULT CopyTo(BYTE* pDst, UINT width, UINT height, UINT bytesPerPixel, UINT dstPitch) override;

    /// Uploads the runtime's pixels of one sub-resource into the delegated surface.
    /// @param pRect pixels; null for all. Only sub-resource 0 minds it.
    HRESULT WriteToDelegated(UINT index, const RECT* pRect);

private:
    void InternalAllocate(const D3DDDIARG_CREATERESOURCE* pCreate);
    HRESULT InternalStretchRect(const RECT* pSrcRect, IDirect3DSurface9* pDstSurface, const RECT* pDstRect);
    HRESULT InternalBltVideoToPlain(IDirect3DSurface9* pDstSurface);
    HRESULT InternalBltSystemToVideo(
        const RECT* pSrcRect, UMDRscBase* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect);
    HRESULT InternalBltVideoToSystem(
        const RECT* pSrcRect, UMDRscBase* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect);
    HRESULT InternalReadBack(IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface);
    HRESULT InternalStretchAndReadBack(
        const RECT* pSrcRect, IDirect3DSurface9* pDstSurface, const D3DSURFACE_DESC& dstDesc, const RECT* pDstRect);
    HRESULT InternalBltRefused(
        const RECT* pSrcRect, UMDRscRenderTargetCapable* pDst, IDirect3DSurface9* pDstSurface, const RECT* pDstRect);

    D3DMULTISAMPLE_TYPE m_MultisampleType;
    UINT m_MultisampleQuality;
    UMDComPtr<IDirect3DSurface9> m_pSurface;  ///< the delegated surface, null until Create
    D3DLOCKED_RECT m_LockedRect;              ///< filled by Lock
    bool m_bIsVideoProcessRenderTarget;
    bool m_bOffscreenPlain;
    UMDSurfaceList m_pSurfList;  ///< null when memory was short
    UINT m_SurfCount;            ///< entries of the runtime's list
};
