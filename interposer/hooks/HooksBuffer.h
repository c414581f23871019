// IDirect3DVertexBuffer9 and IDirect3DIndexBuffer9, which are locked alike.
#pragma once

#include "interposer/carry/CarryLocks.h"
#include "interposer/hooks/HookCarried.h"

template <typename Buffer>
struct HooksBuffer
{
    static void OnLocked(Buffer* pThis, UINT offset, UINT size, void** ppData, DWORD flags)
    {
        if (const CarryPlace place = CarryFind(pThis))
            *ppData = CarryBufferLocked(*place.m_pResource, *ppData, offset, size, flags);
    }

    static void OnUnlocking(Buffer* pThis)
    {
        if (const CarryPlace place = CarryFind(pThis))
            CarryFor(pThis, [&](CarryDevice&) { CarryBufferUnlocking(*place.m_pResource); });
    }

    static void Install(Buffer* pBuffer)
    {
        const HookRow rows[] = {HookMethod<&Buffer::Lock>::template RowBehind<OnLocked>(),
            HookMethod<&Buffer::Unlock>::template RowAround<OnUnlocking>()};
        HookInstall(pBuffer, rows);
    }
};
