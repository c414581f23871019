// A ring of three system-memory copies of an output's presented frames, and which of them is the newest.
//
// Belongs to the presenting thread. What the worker reads is held by references of its own (UMDFrame), so the ring may
// be deleted or re-make a slot at any time.
#pragma once

#include "output/UMDFrame.h"
#include "output/UMDGpuDx9Surface.h"

/// Slots of the ring: one being written, one newest, one still being read.
inline constexpr UINT UMD_FRAMEBUFFER_SLOT_COUNT = 3;

class UMDFrameBuffer
{
public:
    /// @param pDevice the delegated device; borrowed.
    explicit UMDFrameBuffer(IDirect3DDevice9Ex* pDevice);
    ~UMDFrameBuffer();

    UMDFrameBuffer(const UMDFrameBuffer&) = delete;
    UMDFrameBuffer& operator=(const UMDFrameBuffer&) = delete;

    /// Copies a render target into the next slot. The slot is used up even when the copy fails.
    HRESULT DuplicateFrameBuffer(IDirect3DSurface9* pSrcSurface, UINT width, UINT height, D3DFORMAT format);

    /// Gives a frame references on the newest complete copy and its buffer; only after a successful
    /// DuplicateFrameBuffer.
    void ShareNewest(UMDFrame* pFrame) const;

    // What the worker reads of the frame that it took. Not of the ring: that may be gone by then. Worker's thread.

    /// The frame's copy. Borrowed, as long as the frame holds it.
    static IDirect3DSurface9* GetDuplicateFrameBuffer(const UMDFrame& frame);
    /// The buffer for the frame's rotated image. Borrowed, as long as the frame holds it.
    static BYTE* GetDuplicateFrameBufferMalloc(const UMDFrame& frame);

private:
    IDirect3DDevice9Ex* m_pDevice;  ///< borrowed
    UMDGpuDx9Surface m_Surface;
    // Each slot is a pair that m_Surface makes when it is first needed, and destroys. The buffer is missing beside its
    // surface when memory was short.
    IDirect3DSurface9* m_pSurface[UMD_FRAMEBUFFER_SLOT_COUNT];     ///< owned
    UMDFrameMemory* m_pSurfaceMalloc[UMD_FRAMEBUFFER_SLOT_COUNT];  ///< owned
    UINT m_nIndex;                                                 ///< slot last written
    UINT m_nIndexReady;  ///< slot of the newest complete copy; means nothing before the first
};
