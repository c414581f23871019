#include "FakePixels.h"

#include <cstring>

namespace tesslo::test
{

namespace
{

/// Bytes of one block and the edge of a block: compressed formats have blocks of 4 by 4 pixels.
struct BlockLayout
{
    UINT m_Bytes;
    UINT m_Edge;
};

BlockLayout LayoutOf(D3DFORMAT format)
{
    switch (static_cast<DWORD>(format))
    {
    case D3DFMT_A8:
    case D3DFMT_L8:
    case D3DFMT_P8:
    case D3DFMT_R3G3B2:
        return {1, 1};
    case D3DFMT_R5G6B5:
    case D3DFMT_X1R5G5B5:
    case D3DFMT_A1R5G5B5:
    case D3DFMT_A4R4G4B4:
    case D3DFMT_X4R4G4B4:
    case D3DFMT_A8L8:
    case D3DFMT_A8P8:
    case D3DFMT_L16:
    case D3DFMT_R16F:
    case D3DFMT_V8U8:
    case D3DFMT_D16:
    case D3DFMT_D16_LOCKABLE:
    case D3DFMT_YUY2:
    case D3DFMT_UYVY:
        return {2, 1};
    case D3DFMT_R8G8B8:
        return {3, 1};
    case D3DFMT_A16B16G16R16F:
    case D3DFMT_A16B16G16R16:
    case D3DFMT_G32R32F:
        return {8, 1};
    case D3DFMT_A32B32G32R32F:
        return {16, 1};
    case D3DFMT_DXT1:
        return {8, 4};
    case D3DFMT_DXT2:
    case D3DFMT_DXT3:
    case D3DFMT_DXT4:
    case D3DFMT_DXT5:
        return {16, 4};
    default:
        return {4, 1};
    }
}

}  // namespace

FakePixels::FakePixels(D3DFORMAT format, UINT width, UINT height, UINT padding) : m_Format(format)
{
    const BlockLayout layout = LayoutOf(format);
    m_RowBytes = (width + layout.m_Edge - 1) / layout.m_Edge * layout.m_Bytes;
    m_RowCount = (height + layout.m_Edge - 1) / layout.m_Edge;
    m_Pitch = m_RowBytes + padding;
    m_Bytes.resize(size_t{m_Pitch} * m_RowCount);
}

HRESULT FakePixels::Lock(D3DLOCKED_RECT* pLockedRect, const RECT* pRect)
{
    if (m_bLocked)
        return D3DERR_INVALIDCALL;
    const BlockLayout layout = LayoutOf(m_Format);
    const size_t offset =
        pRect ? pRect->top / layout.m_Edge * m_Pitch + pRect->left / layout.m_Edge * layout.m_Bytes : size_t{0};
    m_bLocked = true;
    pLockedRect->Pitch = static_cast<INT>(m_Pitch);
    pLockedRect->pBits = m_Bytes.data() + offset;
    return S_OK;
}

HRESULT FakePixels::Unlock()
{
    if (!m_bLocked)
        return D3DERR_INVALIDCALL;
    m_bLocked = false;
    return S_OK;
}

void FakePixels::CopyFrom(const FakePixels& other)
{
    for (UINT row = 0; row < m_RowCount; row++)
        memcpy(&m_Bytes[size_t{row} * m_Pitch], &other.m_Bytes[size_t{row} * other.m_Pitch], m_RowBytes);
}

}  // namespace tesslo::test
