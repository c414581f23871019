#include "FakePixels.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tesslo::test
{

namespace
{

thread_local bool t_bShorten;  ///< its next lock

UINT RowCountOf(const ImageShape& image)
{
    return image.Pitch ? static_cast<UINT>((ImageBytes(image) + image.Pitch - 1) / image.Pitch) : 0;
}

/// Rows that are too short are all that there is; others end with the last pixel.
size_t FencedSizeOf(const ImageShape& image, UINT rowCount, UINT rowBytes)
{
    return image.Pitch < rowBytes ? std::max<size_t>(size_t{image.Pitch} * rowCount, 1) : ImageBytes(image);
}

}  // namespace

FakePixels::FakePixels(D3DFORMAT format, UINT width, UINT height, FakeRows rows)
    : m_RowBytes(TightPitch(static_cast<D3DDDIFORMAT>(format), width)),
      m_Shape{static_cast<D3DDDIFORMAT>(format), width, height,
          m_RowBytes + rows.m_Padding - std::min(rows.m_Shortage, m_RowBytes)},
      m_RowCount(RowCountOf({m_Shape.Format, width, height, m_RowBytes + rows.m_Padding})),
      m_Fenced(rows.m_bFenced ? FencedSizeOf(m_Shape, m_RowCount, m_RowBytes) : 0),
      m_Bytes(rows.m_bFenced ? 0 : size_t{m_Shape.Pitch} * m_RowCount)
{
    if (rows.m_bFenced && m_Fenced.Size() > 0)
        memset(m_Fenced.Get(), 0, m_Fenced.Size());
}

void FakePixels::ShortenNextLock()
{
    t_bShorten = true;
}

HRESULT FakePixels::Lock(D3DLOCKED_RECT* pLockedRect, const RECT* pRect)
{
    ImageShape shape = m_Shape;
    size_t begin = 0;
    if (std::exchange(t_bShorten, false))
    {
        shape.Pitch = m_RowBytes / 2;
        begin = InternalSize() - size_t{shape.Pitch} * m_RowCount;
    }
    const size_t offset =
        begin +
        (pRect ? BytesOfPixel(shape, static_cast<UINT>(pRect->left), static_cast<UINT>(pRect->top)).First().Offset : 0);
    const std::lock_guard lock(m_Mutex);
    if (m_bLocked || (pRect && offset >= InternalSize()))
        return D3DERR_INVALIDCALL;
    m_bLocked = true;
    pLockedRect->Pitch = static_cast<INT>(shape.Pitch);
    pLockedRect->pBits = InternalData() + offset;
    return S_OK;
}

HRESULT FakePixels::Unlock()
{
    const std::lock_guard lock(m_Mutex);
    if (!m_bLocked)
        return D3DERR_INVALIDCALL;
    m_bLocked = false;
    return S_OK;
}

bool FakePixels::CopyFrom(FakePixels& other)
{
    const std::lock_guard lock(m_Mutex);
    if (m_bLocked)
        return false;
    for (UINT row = 0; row < m_RowCount; row++)
    {
        const size_t to = std::min(size_t{row} * Pitch(), InternalSize());
        const size_t from = std::min(size_t{row} * other.Pitch(), other.InternalSize());
        const size_t count = std::min({size_t{m_RowBytes}, InternalSize() - to, other.InternalSize() - from});
        memcpy(InternalData() + to, other.InternalData() + from, count);
    }
    return true;
}

}  // namespace tesslo::test
