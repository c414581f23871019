// One presented frame, as it travels from the presenting thread to the worker.
#pragma once

#include "output/UMDFrameMemory.h"
#include "util/UMDComPtr.h"

#include <d3d9.h>

#include <utility>

/// A frame's copy, the buffer for its rotated image, and its geometry. Copy and buffer are held by references of the
/// frame's own: both outlive the ring that they came from.
struct UMDFrame
{
    UMDComPtr<IDirect3DSurface9> m_pSurface;
    UMDComPtr<UMDFrameMemory> m_pMemory;
    UINT m_Width = 0;          ///< pixels, before rotation
    UINT m_Height = 0;         ///< pixels, before rotation
    UINT m_Pitch = 0;          ///< bytes per row: width * 4
    UINT m_BytesPerPixel = 0;  ///< 4
    UINT m_Rotation = 0;       ///< D3DDDI_ROTATION
    bool m_bToBeRead = false;  ///< EndRead is due

    /// Says that the copy is to be read: until EndRead the ring does not write over it.
    void BeginRead()
    {
        m_pMemory->BeginRead();
        m_bToBeRead = true;
    }

    /// Says that the copy is read no more. The buffer stays.
    void EndRead()
    {
        if (std::exchange(m_bToBeRead, false))
            m_pMemory->EndRead();
    }

    /// Gives the references back.
    void Clear()
    {
        EndRead();
        m_pSurface.Reset();
        m_pMemory.Reset();
    }
};
