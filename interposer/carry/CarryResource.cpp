#include "interposer/carry/CarryResource.h"

#include "interposer/carry/CarryDevice.h"
#include "util/UMDPixelLayout.h"

#include <algorithm>
#include <cstring>

namespace
{

const UMDPixelLayout& LayoutOf(D3DFORMAT format)
{
    return UMDPixelLayoutOf(static_cast<D3DDDIFORMAT>(format));
}

}  // namespace

RECT CarryResource::Rect(UINT level) const
{
    return {0, 0, static_cast<LONG>(std::max(1u, m_Desc.Width >> level)),
        static_cast<LONG>(std::max(1u, m_Desc.Height >> level))};
}

void CarryResource::Write(UINT level, const RECT& rect, const void* pBits, UINT pitch)
{
    if (m_pSystem == nullptr || m_pSystem->SystemMemory(level) == nullptr)
        return;
    // The memory is still read.
    CarryThread::Get().Wait(m_Uploading);
    CarryCopyPixels(m_Desc.Format, rect, m_pSystem->SystemMemory(level),
        m_pSystem->Description().m_LevelMemory[level].m_Pitch, pBits, pitch);
    // The driver uploads the smaller levels whole, but only with a part of the first.
    const RECT part = level == 0 ? rect : RECT{0, 0, 1, 1};
    if (m_bDirty)
        UnionRect(&m_Dirty, &m_Dirty, &part);
    else
        m_Dirty = part;
    m_bDirty = true;
}

void CarryResource::Upload()
{
    if (!m_bDirty || m_pVideo == nullptr)
        return;
    m_bDirty = false;
    const UMDPixelLayout& layout = LayoutOf(m_Desc.Format);
    const RECT all = Rect(0);
    const auto width = static_cast<LONG>(layout.GroupWidth), height = static_cast<LONG>(layout.GroupHeight);
    const RECT groups = {m_Dirty.left / width * width, m_Dirty.top / height * height,
        std::min((m_Dirty.right + width - 1) / width * width, all.right),
        std::min((m_Dirty.bottom + height - 1) / height * height, all.bottom)};
    D3DDDIARG_TEXBLT arg{};
    arg.hDstResource = m_pVideo->Handle();
    arg.hSrcResource = m_pSystem->Handle();
    arg.SrcRect = groups;
    arg.DstPoint = {groups.left, groups.top};
    m_Uploading = m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnTexBlt, &arg); });
}

void CarryCopyPixels(D3DFORMAT format, const RECT& rect, void* pTo, UINT toPitch, const void* pFrom, UINT fromPitch)
{
    const UMDPixelPlane& plane = LayoutOf(format).Planes[0];
    const UINT left = static_cast<UINT>(rect.left) / plane.BlockWidth * plane.BlockBytes;
    const UINT bytes = LayoutOf(format).RowBytes(0, static_cast<UINT>(rect.right)) - left;
    const UINT bottom = LayoutOf(format).Rows(0, static_cast<UINT>(rect.bottom));
    for (UINT y = static_cast<UINT>(rect.top) / plane.BlockHeight; y < bottom; ++y)
        std::memcpy(static_cast<BYTE*>(pTo) + size_t{y} * toPitch + left,
            static_cast<const BYTE*>(pFrom) + size_t{y} * fromPitch + left, bytes);
}

bool CarryIsPlanar(D3DFORMAT format)
{
    return LayoutOf(format).PlaneCount > 1;
}

HostLevelMemory CarryMemoryOf(D3DFORMAT format, UINT width, UINT height)
{
    const UMDPixelLayout& layout = LayoutOf(format);
    if (layout.PlaneCount != 1)
        return {};
    return {layout.RowBytes(0, width), layout.Rows(0, height)};
}

BYTE* CarryFirst(D3DFORMAT format, BYTE* pBits, UINT pitch, LONG x, LONG y)
{
    const HostLevelMemory before = CarryMemoryOf(format, static_cast<UINT>(x), static_cast<UINT>(y));
    return pBits - before.m_Pitch - size_t{before.m_Rows} * pitch;
}
