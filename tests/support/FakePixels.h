// The memory behind a fake surface: rows of pixels with a settable padding, locked once at a time. Threads may meet.
#pragma once

#include "FakeRows.h"
#include "Fences.h"
#include "PixelBytes.h"

#include <d3d9.h>

#include <mutex>
#include <vector>

namespace tesslo::test
{

class FakePixels
{
public:
    FakePixels(D3DFORMAT format, UINT width, UINT height, FakeRows rows);

    /// Points into the memory; D3DERR_INVALIDCALL while it is locked, or where there is none. @param pRect null for all
    /// of it.
    HRESULT Lock(D3DLOCKED_RECT* pLockedRect, const RECT* pRect);
    /// The calling thread's next lock, of whatever surface, answers half a row for its pitch, as Direct3D never does.
    /// What it points to then has no more bytes than rows of that pitch, and ends where the memory does.
    static void ShortenNextLock();
    /// D3DERR_INVALIDCALL when it is not locked.
    HRESULT Unlock();
    bool IsLocked() const { return m_bLocked; }

    UINT Pitch() const { return m_Shape.Pitch; }
    const ImageShape& Shape() const { return m_Shape; }
    UINT RowCount() const { return m_RowCount; }
    /// Pitch times RowCount, zero at first; none when they are fenced.
    std::vector<BYTE>& Bytes() { return m_Bytes; }
    /// Takes over the other's pixels, row by row; both are of the same format and size.
    /// @return false while it is locked: then nothing is copied.
    bool CopyFrom(FakePixels& other);

private:
    size_t InternalSize() const { return m_Fenced.Size() + m_Bytes.size(); }
    BYTE* InternalData() { return m_Fenced.Get() ? m_Fenced.Get() : m_Bytes.data(); }

    UINT m_RowBytes;
    ImageShape m_Shape;
    UINT m_RowCount;
    std::mutex m_Mutex;
    bool m_bLocked = false;
    FencedBytes m_Fenced;
    std::vector<BYTE> m_Bytes;
};

}  // namespace tesslo::test
