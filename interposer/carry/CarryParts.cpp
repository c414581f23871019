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

/// By the type's number, from points on; there is none of number 0.
constexpr Shape kShapes[] = {{}, {1, 0}, {2, 0}, {1, 1}, {3, 0}, {1, 2}, {1, 2}};

}  // namespace

void CarryParts(D3DPRIMITIVETYPE type, UINT count, const std::function<void(UINT skipped, UINT count)>& part)
{
    // Every second triangle of a strip turns the other way round.
    const UINT most = type == D3DPT_TRIANGLESTRIP ? kCarryMostPrimitives - 1 : kCarryMostPrimitives;
    for (UINT done = 0; done < count; done += most)
        part(done * kShapes[type].m_Each, std::min(most, count - done));
}

std::vector<BYTE> CarryPartOf(D3DPRIMITIVETYPE type, const void* pFirst, UINT size, UINT skipped, UINT count)
{
    const auto* pBytes = static_cast<const BYTE*>(pFirst);
    const auto [each, more] = kShapes[type];
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
