// Base of everything that can be rendered into or presented: surfaces, textures and cube textures.
//
// Owns the kernel-mode allocation, wraps the runtime's callbacks for it, and reads the delegated device's render
// target back into system memory. Runtime's thread only.
#pragma once

#include "kernel/UMDAllocationPrivateData.h"
#include "resources/UMDPixelCopy.h"
#include "resources/UMDRscBase.h"
#include "util/UMDComPtr.h"

class UMDRscRenderTargetCapable : public UMDRscBase
{
public:
    /// @param openResource non-zero: the object mirrors an opened allocation instead of create arguments.
    UMDRscRenderTargetCapable(UMDDdiDevice* pDevice, HANDLE hResourceOS, UMDRESOURCETYPE type, BOOL openResource);

    // Virtual operations, in slot order behind the base's.

    /// The delegated surface of a sub-resource, null when there is none. Borrowed.
    virtual IDirect3DSurface9* GetSurface(UINT face, UINT level);

    /// Copies this object's pixels to another one on the delegated device. Rectangles in pixels.
    virtual HRESULT Blt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstRect);

    // Sizes in pixels, pitches in bytes. bytesPerPixel is what the caller reckons with, often enough not the true size:
    // both copies go by the format's layout.

    /// Copies system-memory pixels of the object's format into the kernel-mode allocation.
    virtual HRESULT CopyFrom(const BYTE* pSrc, UINT width, UINT height, UINT bytesPerPixel, UINT srcPitch) = 0;
    /// Copies the delegated device's render target out, in its own format.
    virtual HRESULT CopyTo(BYTE* pDst, UINT width, UINT height, UINT bytesPerPixel, UINT dstPitch) = 0;

    // Wrappers of the runtime's callbacks; failures are traced.
    void KernelModeAllocateCb(UMDAllocationPrivateData* pPrivateData);
    void KernelModeDellocateCb();
    HRESULT KernelModeSetDisplayModeCb();
    HRESULT KernelModeLockCb(void** ppData);
    HRESULT KernelModeUnlockCb();
    /// S_OK even when the callback fails.
    HRESULT KernelModePresentCb(HANDLE hContext);
    /// Copies the delegated render target into the allocation and reports a blit present.
    HRESULT KernelModePresentCbBLT(HANDLE hContext);
    /// Reports a flip present and pauses 10 milliseconds, which paces the flip model.
    HRESULT KernelModePresentCbFLIP(HANDLE hContext);

    /// Reads the delegated device's render target 0 into a reused system-memory surface and locks it.
    /// @param ppSurface receives that surface, borrowed, for RenderTargetDataUnlock.
    HRESULT RenderTargetDataLock(IDirect3DSurface9** ppSurface, D3DLOCKED_RECT* pLockedRect, D3DSURFACE_DESC* pDesc);
    void RenderTargetDataUnlock(IDirect3DSurface9** ppSurface);

    UINT VidPnSourceId() const { return m_VidPnSourceId; }
    UINT Rotation() const { return m_Rotation; }
    bool IsRenderTarget() const { return m_bIsRenderTarget; }

protected:
    /// Takes what create arguments say to every class.
    void InternalTakeCreate(const D3DDDIARG_CREATERESOURCE* pCreate, D3DPOOL pool);

    /// Describes two delegated surfaces, in this order.
    /// @param pFailed what to trace when one refuses; takes the result.
    static HRESULT InternalDescribe(IDirect3DSurface9* pFirst, D3DSURFACE_DESC* pFirstDesc, IDirect3DSurface9* pSecond,
        D3DSURFACE_DESC* pSecondDesc, const wchar_t* pFailed);

    /// What a class says when its pixels do not reach the allocation.
    struct CopyFromTexts
    {
        const wchar_t* pNoAllocation;
        const wchar_t* pLockFailed;    ///< takes the result
        const wchar_t* pUnlockFailed;  ///< takes the result
    };
    /// CopyFrom for every class.
    HRESULT InternalCopyFrom(const CopyFromTexts& texts, const UMDImage<const BYTE>& src);

    /// Gives the kernel-mode allocation back, once, if it was ever asked for.
    void InternalReleaseAllocation();

    D3DKMT_HANDLE m_hAllocation;  ///< zero until allocated or opened
    D3DKMT_HANDLE m_hKMResource;
    D3DDDIFORMAT m_Format;
    UINT m_Width;                                   ///< pixels, top level
    UINT m_Height;                                  ///< pixels, top level
    UINT m_Rotation;                                ///< D3DDDI_ROTATION
    UMDComPtr<IDirect3DSurface9> m_pSysMemSurface;  ///< read-back target, made when first needed
    UINT m_VidPnSourceId;
    bool m_bIsRenderTarget;
    bool m_bIsPrimary;
    bool m_bIsSharedResource;
    bool m_bIsOpenedShared;  ///< built from an allocation that another process shared
    UINT m_BytesPerPixel;
    BOOL m_OpenResource;  ///< built by open-resource
    D3DPOOL m_Pool;

private:
    /// Makes the read-back surface equal a render target in size and format, anew if need be.
    HRESULT InternalFitSysMemSurface(const D3DSURFACE_DESC& desc);

    bool m_bAllocationRequested;  ///< asked of the runtime and not given back
};
