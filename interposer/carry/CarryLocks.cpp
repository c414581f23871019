#include "interposer/carry/CarryLocks.h"

#include "interposer/carry/CarryCopies.h"
#include "interposer/carry/CarryDevice.h"

#include <algorithm>

/// The level's first pixel: the bits are those of the rectangle's.
static BYTE* FirstOf(const CarryPlace& place, const CarryLock& lock)
{
    return CarryFirst(place->m_Desc.Format, lock.m_pBits, lock.m_Pitch, lock.m_Rect.left, lock.m_Rect.top);
}

void CarryLocked(const CarryPlace& place, const D3DLOCKED_RECT& locked, const RECT* pRect, DWORD flags)
{
    if (place.m_Level >= place->Levels())
        return;
    CarryLock& lock = place->m_Locks[place.m_Level];
    lock = {static_cast<BYTE*>(locked.pBits), static_cast<UINT>(locked.Pitch),
        pRect != nullptr ? *pRect : place->Rect(place.m_Level), flags};
    if (place->m_Kind == CarryKind::Target)
        CarryTargetRead(*place.m_pResource, lock.m_Rect, FirstOf(place, lock), lock.m_Pitch);
}

void CarryUnlocking(const CarryPlace& place)
{
    if (place.m_Level >= place->Levels())
        return;
    const CarryLock lock = std::exchange(place->m_Locks[place.m_Level], {});
    if (lock.m_pBits == nullptr || (lock.m_Flags & D3DLOCK_READONLY))
        return;
    const BYTE* pFirst = FirstOf(place, lock);
    if (place->m_pSystem != nullptr)
        place->Write(place.m_Level, lock.m_Rect, pFirst, lock.m_Pitch);
    else
        CarryWriteVideo(*place.m_pResource, lock.m_Rect, pFirst, lock.m_Pitch);
}

void* CarryBufferLocked(CarryResource& buffer, void* pData, UINT offset, UINT size, DWORD flags)
{
    if (flags & D3DLOCK_READONLY)
        return pData;
    const UINT end = size != 0 ? offset + size : buffer.m_Desc.Width;
    buffer.m_Locks[0] = {
        static_cast<BYTE*>(pData), 0, {static_cast<LONG>(offset), 0, static_cast<LONG>(end), 1}, flags};
    return buffer.m_Shadow.data() + offset;
}

void CarryBufferUnlocking(CarryResource& buffer)
{
    const CarryLock lock = std::exchange(buffer.m_Locks[0], {});
    if (lock.m_pBits == nullptr)
        return;
    const auto offset = static_cast<UINT>(lock.m_Rect.left);
    const auto bytes = static_cast<UINT>(lock.m_Rect.right) - offset;
    std::vector<BYTE> written(buffer.m_Shadow.begin() + offset, buffer.m_Shadow.begin() + offset + bytes);
    std::ranges::copy(written, lock.m_pBits);
    D3DDDI_LOCKFLAGS flags{};
    flags.Discard = (lock.m_Flags & D3DLOCK_DISCARD) != 0;
    flags.NoOverwrite = (lock.m_Flags & D3DLOCK_NOOVERWRITE) != 0;
    buffer.Device().Post([pVideo = buffer.m_pVideo, offset, flags, written = std::move(written)](HostDevice& driver) {
        driver.WriteBuffer(*pVideo, offset, written.data(), static_cast<UINT>(written.size()), flags);
    });
}
