#include "FakePixels.h"

#include <cstring>

namespace tesslo::test
{

FakePixels::FakePixels(D3DFORMAT format, UINT width, UINT height, UINT padding)
    : m_RowBytes(TightPitch(static_cast<D3DDDIFORMAT>(format), width)),
      m_Shape{static_cast<D3DDDIFORMAT>(format), width, height, m_RowBytes + padding},
      m_RowCount(m_Shape.Pitch ? static_cast<UINT>((ImageBytes(m_Shape) + m_Shape.Pitch - 1) / m_Shape.Pitch) : 0),
      m_Bytes(size_t{m_Shape.Pitch} * m_RowCount)
{
}

HRESULT FakePixels::Lock(D3DLOCKED_RECT* pLockedRect, const RECT* pRect)
{
    const std::lock_guard lock(m_Mutex);
    if (m_bLocked)
        return D3DERR_INVALIDCALL;
    m_bLocked = true;
    pLockedRect->Pitch = static_cast<INT>(m_Shape.Pitch);
    pLockedRect->pBits = m_Bytes.data();
    if (pRect)
        pLockedRect->pBits = &m_Bytes.at(
            BytesOfPixel(m_Shape, static_cast<UINT>(pRect->left), static_cast<UINT>(pRect->top)).First().Offset);
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

bool FakePixels::CopyFrom(const FakePixels& other)
{
    const std::lock_guard lock(m_Mutex);
    if (m_bLocked)
        return false;
    for (UINT row = 0; row < m_RowCount; row++)
        memcpy(&m_Bytes[size_t{row} * Pitch()], &other.m_Bytes[size_t{row} * other.Pitch()], m_RowBytes);
    return true;
}

}  // namespace tesslo::test
