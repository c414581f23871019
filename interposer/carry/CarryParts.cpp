#include "interposer/carry/CarryParts.h"

#include <algorithm>

namespace
{

/// How many vertices each further primitive takes, and the first one takes more than that.
struct Shape
{
    UINT m_Each;
    UINT m_More;
};

Shape ShapeOf(D3DPRIMITIVETYPE type)
{
    switch (type)
    {
    case D3DPT_LINELIST:
        return {2, 0};
    case D3DPT_LINESTRIP:
        return {1, 1};
    case D3DPT_TRIANGLELIST:
        return {3, 0};
    case D3DPT_TRIANGLESTRIP:
    case D3DPT_TRIANGLEFAN:
        return {1, 2};
    default:
        return {1, 0};
    }
}

}  // namespace

void CarryParts(D3DPRIMITIVETYPE type, UINT count, const std::function<void(UINT skipped, UINT count)>& part)
{
    // Every second triangle of a strip turns the other way round.
    const UINT most = type == D3DPT_TRIANGLESTRIP ? kCarryMostPrimitives - 1 : kCarryMostPrimitives;
    for (UINT done = 0; done < count; done += most)
        part(done * ShapeOf(type).m_Each, std::min(most, count - done));
}

std::vector<BYTE> CarryPartOf(D3DPRIMITIVETYPE type, const void* pFirst, UINT size, UINT skipped, UINT count)
{
    const auto* pBytes = static_cast<const BYTE*>(pFirst);
    const auto [each, more] = ShapeOf(type);
    UINT wanted = count * each + more;
    std::vector<BYTE> part;
    part.reserve(size_t{wanted} * size);
    if (type == D3DPT_TRIANGLEFAN)
    {
        part.assign(pBytes, pBytes + size);
        ++skipped;
        --wanted;
    }
    const BYTE* pPart = pBytes + size_t{skipped} * size;
    part.insert(part.end(), pPart, pPart + size_t{wanted} * size);
    return part;
}
