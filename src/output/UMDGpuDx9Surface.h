// Makes and refreshes one system-memory copy of a render target.
//
// A copy is a pair that the caller owns and passes by address: a D3DPOOL_SYSTEMMEM surface and the byte buffer
// (width * height * 4 bytes, reference counted) that later holds the rotated image.
#pragma once

#include "output/UMDFrameMemory.h"

#include <d3d9.h>

class UMDGpuDx9Surface
{
public:
    UMDGpuDx9Surface();
    ~UMDGpuDx9Surface();

    UMDGpuDx9Surface(const UMDGpuDx9Surface&) = delete;
    UMDGpuDx9Surface& operator=(const UMDGpuDx9Surface&) = delete;

    /// Makes a pair. Only the two 32-bit formats A8R8G8B8 and X8R8G8B8 are accepted.
    /// After a failure *ppSurface may hold a surface all the same; the owner destroys the pair.
    HRESULT Create(IDirect3DDevice9Ex* pDevice9, IDirect3DSurface9** ppSurface, UMDFrameMemory** ppSurfaceMalloc,
        UINT width, UINT height, D3DFORMAT format);

    /// Copies a render target into an existing pair, which is re-made first if its size or format differs.
    /// A refused read-back is tried three times, 10 ms apart.
    HRESULT Duplicate(IDirect3DSurface9** ppDstSurface, UMDFrameMemory** ppDstSurfaceMalloc,
        IDirect3DSurface9* pSrcSurface, UINT width, UINT height, D3DFORMAT format);

    /// Gives up the pair's two references and nulls them.
    void Destroy(IDirect3DSurface9** ppSurface, UMDFrameMemory** ppSurfaceMalloc);

private:
    HRESULT InternalReadBack(IDirect3DSurface9* pDstSurface, IDirect3DSurface9* pSrcSurface);

    IDirect3DDevice9Ex* m_pDevice;  ///< borrowed; null until the first successful Create
};
