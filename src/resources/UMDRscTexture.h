// A mip-mapped two-dimensional texture, perhaps shared between processes.
//
// Owns the delegated texture and the delegated surface of every level. A shared render target also has a kernel-mode
// allocation, whose private record carries the shared handle to the process that opens it. Runtime's thread only.
#pragma once

#include "resources/UMDRscRenderTargetCapable.h"
#include "resources/UMDSurfaceCopy.h"
#include "resources/UMDSurfaceList.h"
#include "util/UMDUtilDebugTrace.h"

/// What whoever makes a texture decides for the delegated one.
struct UMDRscTextureTraits
{
    BOOL OpenResource;  ///< non-zero: the object mirrors a texture that another process shares
    DWORD Usage;        ///< D3DUSAGE
    D3DPOOL Pool;
    UMDRESOURCETYPE Type;  ///< UMDRESOURCETYPE_TEXTURE, or the derived class's
};

class UMDRscTexture : public UMDRscRenderTargetCapable
{
public:
    /// A new texture.
    UMDRscTexture(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
        const UMDRscTextureTraits& traits);
    /// The mirror of a texture that another process shares. Everything is read from the first allocation's private
    /// record; usage and pool stand only while there is no record of ours.
    UMDRscTexture(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_OPENRESOURCE* pOpen,
        const UMDRscTextureTraits& traits);
    ~UMDRscTexture() override;

    /// Locks level 0 whole, but only when areaValid is set; else nothing is locked and nothing is written.
    HRESULT Lock(UINT areaValid, UINT offset, UINT size, void** ppData, UINT* pPitch, DWORD flags) override;
    HRESULT Unlock() override;
    D3DPOOL GetPool() const override { return m_Pool; }
    D3DDDIFORMAT GetFormat() const override { return m_Format; }
    HRESULT Create() override;
    void Destroy() override;
    /// Selects the surface of a level and gives it out, borrowed; null beyond the last level.
    IDirect3DSurface9* GetSurface(UINT face, UINT level) override;
    HRESULT Blt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstRect) override;
    HRESULT CopyFrom(const BYTE* pSrc, UINT width, UINT height, UINT bytesPerPixel, UINT srcPitch) override;
    HRESULT CopyTo(BYTE* pDst, UINT width, UINT height, UINT bytesPerPixel, UINT dstPitch) override;

    /// Opens the texture of the other process; stands in for Create.
    virtual HRESULT Open();
    /// Uploads every level from the runtime's memory into a video-memory texture.
    /// @param pSrcRect  pixels of level 0; the other levels are copied whole.
    /// @param pDstPoint where the rectangle goes: its left and top are read, as a point.
    virtual HRESULT TexBlt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstPoint);

    /// Uploads the runtime's pixels of one sub-resource. @param pRect pixels; null for all, only level 0 minds it.
    HRESULT WriteToDelegated(UINT level, const RECT* pRect);
    /// Refreshes the runtime's pixels of one sub-resource.
    HRESULT WriteFromDelegated(UINT level);

    /// The delegated texture, borrowed; null until Create.
    IDirect3DTexture9* GetTexture() const { return m_pTexture.Get(); }

protected:
    /// What the private record says of the delegated object.
    struct Shared
    {
        UMDRESOURCETYPE Type;
        D3DPOOL Pool;
        DWORD Usage;  ///< D3DUSAGE
        UINT Levels;  ///< of one face
        HANDLE SharedHandle;
    };
    /// Asks for the kernel-mode allocation, whose record tells another process how to open the object.
    void InternalAllocate(const Shared& shared);

    /// What a lock prints when there is no delegated object, or when it refuses.
    struct LockTexts
    {
        const wchar_t* pNoObject;
        const wchar_t* pRefused;
    };
    /// The runtime's lock of level 0, of one face for cubes.
    /// @param exists   whether there is a delegated object.
    /// @param lockRect locks it, into a D3DLOCKED_RECT.
    template <typename LockRect>
    HRESULT InternalLock(
        bool exists, UINT areaValid, void** ppData, UINT* pPitch, const LockTexts& texts, LockRect lockRect);
    /// Its unlock, which succeeds even where the delegated object refuses.
    template <typename UnlockRect>
    HRESULT InternalUnlock(bool exists, const wchar_t* pRefused, UnlockRect unlockRect);

    UINT m_Levels;                         ///< sub-resources of the create arguments
    DWORD m_Usage;                         ///< D3DUSAGE
    UMDSurfaceList m_pSurfList;            ///< null when memory was short
    UINT m_SurfCount;                      ///< entries of the runtime's list
    bool m_bLocked;                        ///< level 0 is locked
    IDirect3DSurface9* m_pCurrentSurface;  ///< the sub-resource selected last, borrowed

private:
    static constexpr UINT kMaxLevels = 11;  ///< a largest edge of 1024 pixels down to 1

    /// What a copy between the runtime's pixels and a level prints.
    struct LevelTexts
    {
        const wchar_t* pNoLevel;
        UMDLockTexts Lock;
    };
    /// Runs a copy while a level is locked; none when the runtime has no memory for it.
    /// @param copy called with the D3DLOCKED_RECT and the runtime's entry.
    template <typename Copy>
    HRESULT InternalCopyLevel(UINT level, const LevelTexts& texts, Copy copy);

    void InternalTakeOpened(const D3DDDI_OPENALLOCATIONINFO& allocation);
    HRESULT InternalGetLevels();
    HRESULT InternalBltVideoToVideo(IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface);
    HRESULT InternalBltVideoToSystem(const RECT* pSrcRect, IDirect3DSurface9* pSrcSurface, UMDRscBase* pDst,
        IDirect3DSurface9* pDstSurface, const RECT* pDstRect);
    HRESULT InternalStretchAndReadBack(
        const RECT* pSrcRect, IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface, const RECT* pDstRect);
    HRESULT InternalReadBack(IDirect3DSurface9* pSrcSurface, IDirect3DSurface9* pDstSurface);
    HRESULT InternalBltFallback(const RECT* pSrcRect, IDirect3DSurface9* pSrcSurface, UMDRscRenderTargetCapable* pDst,
        IDirect3DSurface9* pDstSurface, const RECT* pDstRect);

    UMDComPtr<IDirect3DTexture9> m_pTexture;
    UMDComPtr<IDirect3DSurface9> m_pLevelSurface[kMaxLevels];  ///< index is the level
    HANDLE m_SharedHandle;                                     ///< of the delegated texture, null when it is not shared
};

template <typename LockRect>
HRESULT UMDRscTexture::InternalLock(
    bool exists, UINT areaValid, void** ppData, UINT* pPitch, const LockTexts& texts, LockRect lockRect)
{
    if (!exists)
        return UMDFail(E_FAIL, texts.pNoObject);
    if (!areaValid)
        return S_OK;
    D3DLOCKED_RECT locked = {};
    if (HRESULT hr = lockRect(&locked); FAILED(hr))
        return UMDFail(hr, texts.pRefused);
    *ppData = locked.pBits;
    *pPitch = static_cast<UINT>(locked.Pitch);
    m_bLocked = true;
    return S_OK;
}

template <typename UnlockRect>
HRESULT UMDRscTexture::InternalUnlock(bool exists, const wchar_t* pRefused, UnlockRect unlockRect)
{
    if (!exists)
        return E_FAIL;
    if (!m_bLocked)
        return S_OK;
    if (FAILED(unlockRect()))
        UMD_TRACE(UMDTRACE_ERROR, pRefused);
    m_bLocked = false;
    return S_OK;
}
